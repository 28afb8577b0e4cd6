#include "operations/face_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "support/brush_checks.h"
#include "support/recorder.h"

namespace ferrowand {
namespace {

class FaceCheckTest : public testing::Test {
 protected:
  // On the plane z = 0 unless a point says otherwise.
  Face Make(const std::vector<Vec3>& points) {
    Face face;
    face.plane = {{0, 0, 1}, 0};
    face.w = WindingOf(points, reporter);
    return face;
  }
  Face Square(const Vec3& at = {}, float size = 64) {
    return Make({at + Vec3(0, size, 0), at + Vec3(size, size, 0), at + Vec3(size, 0, 0), at});
  }
  std::vector<std::string> Said() {
    std::vector<std::string> texts;
    for (const Message& message : sink.messages) texts.push_back(message.text);
    return texts;
  }

  MessageRecorder sink;
  Reporter reporter{sink};
};

TEST_F(FaceCheckTest, TheFirstFaultIsTheCode) {
  constexpr float NONE = std::numeric_limits<float>::quiet_NaN();
  Face noNormal = Square();
  noNormal.plane.normal = {};
  Face noNumbers = Make({{NONE, NONE, NONE}, {NONE, NONE, NONE}, {NONE, NONE, NONE}});
  noNumbers.plane.normal = {NONE, NONE, NONE};
  const struct {
    const char* what;
    Face face;
    CheckCode expected;
  } cases[] = {
      {"sound", Square(), CheckCode::None},
      {"no winding", Face(), CheckCode::NoWinding},
      {"two points", Make({{0, 0, 0}, {8, 0, 0}}), CheckCode::TooFewPoints},
      {"at 20000", Square({20000, 0, 0}), CheckCode::BogusRange},
      {"at the bound of it", Square({18000 - 64, 0, 0}), CheckCode::MaxVisibleExtent},
      {"at 12000", Square({12000, 0, 0}), CheckCode::MaxVisibleExtent},
      {"at 10000", Square({-10000, 0, 0}), CheckCode::MaxVisibleExtent},
      {"just inside", Square({-9999, 0, 0}), CheckCode::None},
      {"a point off", Make({{0, 64, 0}, {64, 64, 0}, {64, 0, 0.2f}, {0, 0, 0}}),
       CheckCode::PointOffPlane},
      {"a short edge", Make({{0, 64, 0}, {0.05f, 64, 0}, {64, 0, 0}, {0, 0, 0}}),
       CheckCode::DegenerateEdge},
      {"a dent", Make({{0, 64, 0}, {16, 16, 0}, {64, 0, 0}, {0, 0, 0}}), CheckCode::NonConvex},
      {"no normal", std::move(noNormal), CheckCode::NoNormal},
      {"no numbers", std::move(noNumbers), CheckCode::NoNormal},
      {"cut to one point", Make({{0.1f, 0.9f, 0}, {0.9f, 0.9f, 0}, {0.9f, 0.1f, 0}}),
       CheckCode::NoNormal},
  };
  for (const auto& c : cases) EXPECT_EQ(FaceCheck(c.face, 0.1), c.expected) << c.what;
  const Face bent = Make({{0, 64, 0}, {64, 64, 0}, {64, 0, 0.05f}, {0, 0, 0}});
  EXPECT_EQ(FaceCheck(bent, 0.1), CheckCode::None);
  EXPECT_EQ(FaceCheck(bent, 0.01), CheckCode::PointOffPlane);
}

TEST_F(FaceCheckTest, EveryFaultIsAskedAboutAndTheCheckGoesOn) {
  CheckFace(Face(), reporter);
  EXPECT_EQ(Said(), std::vector<std::string>{"CheckFace: no winding"});
  EXPECT_EQ(sink.messages[0].title, "Error! Quit?");

  sink.messages.clear();
  CheckFace(Make({{0, 0, 0}, {18000, -18001, 0.5f}}), reporter);
  EXPECT_EQ(Said(), (std::vector<std::string>{"CheckFace: 2 points",
                                              "CheckFace: BUGUS_RANGE: -18001.000000",
                                              "CheckFace: point off plane"}));
  sink.messages.clear();
  CheckFace(Make({{0, 64, 0}, {16, 16, 0}, {64, 0, 0}, {0, 0, 0}, {0, 0.05f, 0}}), reporter);
  const auto said = Said();
  EXPECT_EQ(std::ranges::count(said, "CheckFace: degenerate edge"), 1);
  EXPECT_GE(std::ranges::count(said, "CheckFace: non-convex"), 2);  // once a point

  sink.messages.clear();
  CheckFace(Square(), reporter);
  EXPECT_TRUE(sink.messages.empty());
}

}  // namespace
}  // namespace ferrowand
