#include "views/camera/camera.h"
#include "views/camera/selection_drag.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <sstream>

#include "operations/transform_selection.h"
#include "support/fake_camera_host.h"
#include "support/random_user.h"
#include "support/small_map.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

// Keeps what it is given; what lies under a pixel is all that may.
class RendererRecorder : public CameraRenderer {
 public:
  void SetShape(ShapeName name, const Shape& shape) override {
    shapes[name] = shape;
    ++made;
  }
  void DropShape(ShapeName name) override { shapes.erase(name); }
  void DropAll() override { shapes.clear(); }
  void Draw(const CameraPicture& picture) override {
    seen.assign(picture.seen.begin(), picture.seen.end());
    tinted.assign(picture.tinted.begin(), picture.tinted.end());
    selected.assign(picture.selected.begin(), picture.selected.end());
  }
  std::vector<ShapeName> Pick(const CameraPicture& picture, Pixel) override {
    return {picture.seen.begin(), picture.seen.end()};
  }

  // What is drawn of the names, however they are numbered and whatever is drawn first.
  std::vector<std::string> Look(const std::vector<ShapeName>& names) const {
    std::vector<std::string> texts;
    for (const ShapeName name : names) {
      std::ostringstream text;
      for (const ShapePolygon& p : shapes.at(name).polygons) {
        text << p.texture << ' ' << int{p.colour.red} << ' ' << p.end << ' ';
      }
      for (const ShapePoint& p : shapes.at(name).points) {
        text << p.at.x << ' ' << p.at.y << ' ' << p.at.z << ' ' << p.s << ' ' << p.t << ' ';
      }
      for (const LightImage& light : shapes.at(name).light) {
        for (const std::uint8_t luxel : light.luxels) text << int{luxel} << ' ';
      }
      texts.push_back(text.str());
    }
    std::ranges::sort(texts);
    return texts;
  }

  std::map<ShapeName, Shape> shapes;
  std::vector<ShapeName> seen, tinted, selected;
  int made = 0;
};

// With its recorder.
struct RecordedCamera {
  RecordedCamera(Map& map, const Options& options) {
    auto made = std::make_unique<RendererRecorder>();
    renderer = made.get();
    camera = std::make_unique<Camera>(map, host, options, std::move(made));
    camera->SetTintsEntities(true);
    if (options.quakeLightingFlags != 0) camera->SetLighting(CameraLighting::Quake);
  }
  void PaintFrom(const DVec3& eye, double yaw, double pitch) {
    CameraPose pose;
    pose.eye = eye;
    pose.Face(yaw, pitch);
    camera->SetPose(pose);
    camera->Paint();
  }

  FakeCameraHost host;
  RendererRecorder* renderer;
  std::unique_ptr<Camera> camera;
};

TEST(Camera, ShowsAfterAnyChangeWhatAFreshOneWould) {
  int seen = 0, compared = 0;
  for (unsigned seed = 1; seed <= 6; ++seed) {
    TempDir dir;
    SmallMap small;
    small.data.shown.templates = true;
    Options options;
    options.quakeLightingFlags = seed % 4;
    for (int i = 0; i < 6; ++i) {
      const auto x = static_cast<float>(i * 96);
      entity& box = small.AddCuboid({x, 0, 0}, {x + 64, 64, 64});
      for (int face = 0; face < box.brush.getNumFaces(); ++face) {
        box.brush.face(face).texture = small.data.wads.Default().BadTexture();
      }
      small.Add({{"classname", "light"},
                 {"XMPferroflags", "2"},
                 {"origin", "0 128 32"},
                 {"angle", "45"}});
    }
    RecordedCamera kept(small.map, options);
    RandomUser user(small.map, dir.Path("group.xmp"), seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 60; ++round) {
      const std::string what = user.DoSomething();
      const DVec3 eye(static_cast<double>(random() % 800) - 400, -300, 200);
      RecordedCamera fresh(small.map, options);
      for (RecordedCamera* camera : {&kept, &fresh}) camera->PaintFrom(eye, 60, 20);
      const RendererRecorder& a = *kept.renderer;
      const RendererRecorder& b = *fresh.renderer;
      ASSERT_EQ(a.Look(a.seen), b.Look(b.seen)) << what << ' ' << seed << ' ' << round;
      ASSERT_EQ(a.Look(a.tinted), b.Look(b.tinted)) << what;
      ASSERT_EQ(a.Look(a.selected), b.Look(b.selected)) << what;
      ASSERT_EQ(a.shapes.size(), b.shapes.size()) << what;
      seen += static_cast<int>(a.seen.size());
      ++compared;
    }
  }
  EXPECT_GT(seen, 2 * compared) << "hardly anything was there to compare";
}

TEST(Camera, MakesOnlyTheShapesAnewThatAreOthers) {
  SmallMap small;
  const Options options;
  entity& box = small.AddCuboid({100, -32, -32}, {164, 32, 32});
  small.AddCuboid({300, -32, -32}, {364, 32, 32});
  RecordedCamera recorded(small.map, options);
  const auto madeBy = [&](const std::function<void()>& change) {
    recorded.renderer->made = 0;
    change();
    recorded.camera->Paint();
    return recorded.renderer->made;
  };
  EXPECT_EQ(madeBy([] {}), 2);
  EXPECT_EQ(madeBy([&] { small.map.selection.Set({&box}); }), 0);
  EXPECT_EQ(madeBy([&] { MoveSelection(small.map, {64, 0, 0}, {}); }), 1);
  EXPECT_EQ(madeBy([&] { small.map.undo.Undo(); }), 1);
  EXPECT_EQ(madeBy([&] { recorded.camera->SetMode(RenderMode::Uncorrected); }), 0);
  EXPECT_EQ(madeBy([&] { recorded.camera->SetMode(RenderMode::OneMip); }), 2);
  const int repaints = recorded.host.repaints;
  small.map.MarkSaved();
  EXPECT_EQ(recorded.host.repaints, repaints) << "nothing is seen of that";
}

TEST(Camera, SeesWhatComesToItsPictureAndNothingBehindIt) {
  SmallMap small;
  Options options;
  options.backClip = 1000;
  std::mt19937 random(3);
  const auto number = [&random] { return static_cast<float>(random() % 4000) - 2000; };
  for (int i = 0; i < 400; ++i) {
    const Vec3 at(number(), number(), number());
    small.AddCuboid(at, at + Vec3(1, 1, 1));
  }
  RecordedCamera recorded(small.map, options);
  recorded.PaintFrom({0, 0, 0}, 30, -20);
  const CameraPose& pose = recorded.camera->Pose();
  std::size_t inPicture = 0;
  for (const auto& [name, shape] : recorded.renderer->shapes) {
    const DVec3 at(shape.points.front().at);
    const double depth = Dot(at, pose.direction);
    const double edge = depth * std::tan(std::numbers::pi / 6);
    const bool isSeen = depth > 1 && depth < 1000 && std::abs(Dot(at, pose.up)) < edge &&
                        std::abs(Dot(at, pose.Right())) < edge * 200 / 150;
    inPicture += isSeen ? 1 : 0;
    if (isSeen) {
      EXPECT_EQ(std::ranges::count(recorded.renderer->seen, name), 1);
    }
  }
  EXPECT_GT(inPicture, 3u);
  EXPECT_LT(recorded.renderer->seen.size(), inPicture + 6);
}

TEST(Camera, AClickSelectsByTheRulesOfTheViews) {
  SmallMap small;
  const Options options;
  entity& door = small.Add({{"classname", "func_door"}});
  entity& leaf = small.AddCuboid({100, -32, -32}, {110, 32, 32}, &door);
  entity& wall = small.AddCuboid({200, -32, -32}, {210, 32, 32});
  RecordedCamera recorded(small.map, options);
  Camera& camera = *recorded.camera;
  const auto& selection = small.map.selection;
  using Entities = std::vector<entity*>;
  camera.Click({100, 75}, PickLevel::Objects, false);
  EXPECT_EQ(selection, Entities{&door});
  camera.Click({100, 75}, PickLevel::Brushes, false);
  EXPECT_EQ(selection, Entities{&leaf});
  small.map.selection.Set({&wall});
  camera.Click({100, 75}, PickLevel::Objects, true);
  EXPECT_EQ(selection, (Entities{&wall, &door}));
  camera.Click({100, 75}, PickLevel::Objects, false);
  EXPECT_EQ(selection, (Entities{&wall, &door})) << "what is selected stays as it is";
  camera.Click({3, 3}, PickLevel::Objects, false);
  EXPECT_EQ(selection.size(), 2u) << "nothing is there";

  const CameraHit hit = camera.Pick({100, 75});
  EXPECT_EQ(hit.object, &leaf);
  EXPECT_NEAR(hit.point.x, 100, 1e-9);
  EXPECT_EQ(leaf.brush.face(hit.face).plane.normal, DVec3(-1, 0, 0));
}

TEST(Camera, GoesThroughWhatLiesUnderAPixel) {
  SmallMap small;
  const Options options;
  std::vector<entity*> walls;
  for (const float x : {100.0f, 200.0f, 300.0f}) {
    walls.push_back(&small.AddCuboid({x, -32, -32}, {x + 10, 32, 32}));
  }
  RecordedCamera recorded(small.map, options);
  const auto goesTo = [&](bool deeper) {
    recorded.camera->GoThrough({100, 75}, PickLevel::Objects, deeper);
    return small.map.selection.front();
  };
  for (entity* wall : {walls[0], walls[1], walls[2], walls[2]}) EXPECT_EQ(goesTo(true), wall);
  EXPECT_EQ(recorded.camera->PickSelected({100, 75}, PickLevel::Objects).object, walls[2]);
  for (entity* wall : {walls[1], walls[0], walls[0]}) EXPECT_EQ(goesTo(false), wall);
}

// What lies under a pixel on the floor of that height.
DVec3 OnFloor(const CameraPicture& picture, Pixel at, double height) {
  const DVec3 ray = DirectionThrough(picture, at);
  return picture.pose.eye + ray * ((height - picture.pose.eye.z) / ray.z);
}

TEST(SelectionDrag, GoesAlongTheFloorUnderTheCursorOrUpAndDown) {
  CameraPicture picture{.pose = {}, .size = {200, 150}, .backClip = 5000};
  picture.pose.eye = {40, -30, 250};
  picture.pose.Face(30, 40);
  const Pixel press{90, 80}, at{150, 30};
  const DVec3 grip = OnFloor(picture, press, 20), end = OnFloor(picture, at, 20);
  const SelectionDrag drag(grip);
  SpaceRules rules{.reference = {5, 6, 7}};
  EXPECT_EQ(drag.WayTo(press, picture, false, rules), Vec3(0, 0, 0));
  const Vec3 free = drag.WayTo(at, picture, false, rules);
  EXPECT_NEAR(free.x, end.x - grip.x, 0.51);
  EXPECT_NEAR(free.y, end.y - grip.y, 0.51);
  EXPECT_EQ(free.z, 0);
  rules.snap = true;
  rules.grid = 4;
  rules.limitedAxes = 1;
  const Vec3 steps = drag.WayTo(at, picture, false, rules);
  EXPECT_EQ(steps.x, 0) << "limited";
  EXPECT_EQ(std::fmod(steps.y, 16), 0);
  EXPECT_NEAR(steps.y, free.y, 8.1);
  rules.ontoGrid = true;
  EXPECT_EQ(std::fmod(6 + drag.WayTo(at, picture, false, rules).y, 16), 0);
  const Vec3 raised = drag.WayTo(at, picture, true, rules);
  EXPECT_EQ(raised.x, 0);
  EXPECT_GT(raised.z, 0);
  EXPECT_EQ(std::fmod(7 + raised.z, 16), 0);
}

TEST(SelectionDrag, StaysWithinReachWhereTheFloorIsSeenFromItsEdge) {
  CameraPicture picture{.pose = {}, .size = {200, 150}, .backClip = 5000};
  const SelectionDrag drag({200, 0, 0});  // at the height of the eye
  for (const Pixel at : {Pixel{110, 75}, {100, 60}, {100, 5}, {100, 145}}) {
    const Vec3 way = drag.WayTo(at, picture, false, {});
    EXPECT_LT(Length(DVec3(way)), 8000) << at.x << ' ' << at.y;
  }
  EXPECT_GT(drag.WayTo({100, 60}, picture, false, {}).x, 10) << "up is ahead";
  EXPECT_LT(drag.WayTo({100, 90}, picture, false, {}).x, -10);
  EXPECT_LT(drag.WayTo({110, 75}, picture, false, {}).y, -5) << "right is right";
}

TEST(Camera, StandsWhereAPlayerStarts) {
  SmallMap small;
  const Options options;
  RecordedCamera recorded(small.map, options);
  EXPECT_FALSE(recorded.camera->GoToStart());
  small.AddCuboid({-64, -64, -64}, {64, 64, 64});
  recorded.camera->GoToOpening();
  recorded.camera->Paint();
  EXPECT_EQ(recorded.renderer->seen.size(), 1u);
  small.Add({{"classname", "info_player_start"}, {"origin", "16 32 24"}, {"angle", "90"}});
  EXPECT_TRUE(recorded.camera->GoToStart());
  EXPECT_EQ(recorded.camera->Pose().eye, DVec3(16, 32, 46));
  EXPECT_NEAR(recorded.camera->Pose().direction.y, 1, 1e-9);
}

}  // namespace
}  // namespace ferrowand
