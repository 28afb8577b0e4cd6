#include "views/camera/camera_navigation.h"

#include <gtest/gtest.h>

#include <set>

#include "views/camera/camera_glide.h"
#include "views/tool.h"
#include "views/view_fixture.h"

namespace ferrowand {
namespace {

enum : int { SHIFT = 16, CONTROL = 17, END = 35, HOME, LEFT, UP, RIGHT, DOWN };

IsKeyDown Held(std::set<int> keys) {
  return [keys = std::move(keys)](int code) { return keys.contains(code); };
}

TEST(CameraNavigationTest, KeysMoveAsTheTableSaysAndTogether) {
  struct Case {
    std::set<int> keys;
    CameraMove move;
  };
  const Case cases[] = {
      {{SHIFT, CONTROL, 'Q'}, {}},
      {{UP}, {.forward = -40}},
      {{DOWN}, {.forward = 40}},
      {{LEFT}, {.yaw = -10}},
      {{RIGHT}, {.yaw = 10}},
      {{'W'}, {.vertical = -40}},
      {{'S'}, {.vertical = 40}},
      {{'Z'}, {.sideways = -40}},
      {{'X'}, {.sideways = 40}},
      {{'V'}, {.roll = 20}},
      {{'B'}, {.roll = -20}},
      {{HOME}, {.pitch = -10}},
      {{END}, {.pitch = 10}},
      {{UP, 'Z'}, {.sideways = -40, .forward = -40}},
      {{UP, LEFT, CONTROL}, {.yaw = -10, .forward = -160}},
      {{UP, DOWN}, {}},
  };
  Options options;
  for (const Case& c : cases) EXPECT_EQ(MoveOfKeys(options, Held(c.keys)), c.move);
  options.keys[0] = {'A', 'F'};
  EXPECT_EQ(MoveOfKeys(options, Held({'F', 'A', UP})), CameraMove{.forward = -40});
}

TEST(CameraNavigationTest, TheMouseLooksAroundOrGoesSidewaysSinceItsLastPlace) {
  const Options options;
  CameraMouse mouse;
  mouse.Press({100, 100});
  struct Case {
    Pixel at;
    int buttons;
    std::set<int> keys;
    CameraMove move;
  };
  const Case cases[] = {
      {{103, 98}, BUTTON_LEFT, {SHIFT}, {.yaw = 3, .pitch = -2}},
      {{110, 98}, BUTTON_LEFT, {}, {}},
      {{111, 99}, BUTTON_RIGHT, {}, {.sideways = 1, .vertical = 1}},
      {{112, 100}, BUTTON_RIGHT, {CONTROL, SHIFT}, {.sideways = 4, .vertical = 4}},
      {{112, 101}, BUTTON_LEFT | BUTTON_RIGHT, {SHIFT}, {.pitch = 1}},
      {{0, 0}, 0, {SHIFT}, {}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(mouse.MoveTo(c.at, c.buttons, options, Held(c.keys)), c.move);
  }
  const PixelRect frame{-50, -50, 850, 650};
  EXPECT_EQ(mouse.Wrap(frame, {400, 300}), std::nullopt);
  mouse.MoveTo({830, -45}, 0, options, Held({}));
  EXPECT_EQ(mouse.Wrap(frame, {400, 300}), (Pixel{200, 150}));
  EXPECT_EQ(mouse.MoveTo({201, 150}, BUTTON_RIGHT, options, Held({})), CameraMove{.sideways = 1});
}

TEST(CameraNavigationTest, AJoystickMovesByItsDeflectionFromRest) {
  Options options;  // 300
  const JoystickPosition rest{{30000, 32768, 100, 32768, 32768, 32768}, false};
  const auto moved = [&](std::array<int, 6> by, unsigned axes, bool button = false) {
    JoystickPosition now = rest;
    for (std::size_t i = 0; i < by.size(); ++i) now.axes[i] += by[i];
    now.button = button;
    return MoveOfJoystick(rest, now, axes, options);
  };
  const int whole = 32700, units = (32700 - 4096) / 300, degrees = units / 10;
  EXPECT_EQ(moved({4000, -4096, 4096, 0, 0, 0}, 3), CameraMove{}) << "the dead zone";
  EXPECT_EQ(moved({whole, -whole, 0, 0, 0, 0}, 2), (CameraMove{.yaw = degrees, .forward = -units}));
  EXPECT_EQ(moved({whole, -whole, 0, 0, 0, 0}, 2, true),
            (CameraMove{.sideways = units, .vertical = -units}));
  EXPECT_EQ(moved({0, 0, whole, 0, 0, 0}, 3), CameraMove{.pitch = degrees});
  EXPECT_EQ(moved({whole, whole, whole, whole, whole, whole}, 6),
            (CameraMove{degrees, degrees, degrees, units, units, units}));
  options.swapJoyPitch = 1;
  EXPECT_EQ(moved({0, 0, whole, 0, 0, 0}, 4), CameraMove{.pitch = -degrees});
  options.joystickSpeed = 0;  // as a stranger may have set it
  EXPECT_EQ(moved({whole, 0, 0, 0, 0, 0}, 2).yaw, (32700 - 4096) / 10);
}

TEST(CameraNavigationTest, TheGlideStartsWhereItWasAndEndsInTimeWhereItIs) {
  CameraPose from, to;
  to.eye = {100, 0, 0};
  to.Face(90, 0);
  CameraGlide glide;
  glide.Start(from, 10, 0.04);
  EXPECT_EQ(glide.At(10, to).eye, from.eye);
  const CameraPose half = glide.At(10.02, to);
  EXPECT_NEAR(half.eye.x, 50, 1e-6);
  EXPECT_NEAR(half.direction.x, half.direction.y, 1e-6);
  EXPECT_FALSE(glide.IsUnderWay(10.041));
  EXPECT_EQ(glide.At(10.041, to).eye, to.eye);
  to.Face(180, 0);
  glide.Start(from, 20, 0.04);
  EXPECT_EQ(glide.At(20.02, to).direction, to.direction) << "no way leads round";
}

using CameraGridTest = ViewTest;

TEST_F(CameraGridTest, ItsKeysStepTheGridOfEveryViewWithoutTheViewsLimit) {
  for (const char c : std::string("[{,<aA")) EXPECT_EQ(MeaningOf(c), CameraCharacter::GridSmaller);
  for (const char c : std::string("]}.>zZ")) EXPECT_EQ(MeaningOf(c), CameraCharacter::GridLarger);
  EXPECT_EQ(MeaningOf('g'), CameraCharacter::Other);
  view.gridu = 1;
  view.gridv = 12;
  StepGrids(list.Views(), true);
  EXPECT_EQ(view.gridu * 100 + view.gridv, 213);
  for (int i = 0; i < 20; ++i) StepGrids(list.Views(), true);
  EXPECT_EQ(view.gridv, 15) << "no line of it but the axes is in the world";
  for (int i = 0; i < 20; ++i) StepGrids(list.Views(), false);
  EXPECT_EQ(view.gridu * 100 + view.gridv, 101);
}

}  // namespace
}  // namespace ferrowand
