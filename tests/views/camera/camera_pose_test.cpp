#include "views/camera/camera_pose.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace ferrowand {
namespace {

constexpr double HALF = 0.8660254037844386;  // the sine of 60 degrees

void ExpectNear(const DVec3& a, const DVec3& b, const char* what) {
  for (int axis = 0; axis < 3; ++axis) EXPECT_NEAR(a[axis], b[axis], 1e-9) << what << axis;
}

// From the origin, looking east.
TEST(CameraPoseTest, EveryMoveGoesWhereItsAxisPoints) {
  struct Case {
    const char* what;
    CameraMove move;
    DVec3 eye, direction, up;
  };
  const Case cases[] = {
      {"forward", {.forward = -40}, {40, 0, 0}, {1, 0, 0}, {0, 0, 1}},
      {"left is north", {.sideways = -40}, {0, 40, 0}, {1, 0, 0}, {0, 0, 1}},
      {"look right", {.yaw = 90}, {0, 0, 0}, {0, -1, 0}, {0, 0, 1}},
      {"look down", {.pitch = 30}, {0, 0, 0}, {HALF, 0, -0.5}, {0.5, 0, HALF}},
      {"tip to the left", {.roll = 90}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
      {"turned first, then gone", {.yaw = 90, .forward = -40}, {0, -40, 0}, {0, -1, 0}, {0, 0, 1}},
  };
  for (const Case& c : cases) {
    CameraPose pose;
    pose.Move(c.move, MoveMethod::Unrestricted);
    ExpectNear(pose.eye, c.eye, c.what);
    ExpectNear(pose.direction, c.direction, c.what);
    ExpectNear(pose.up, c.up, c.what);
  }
}

TEST(CameraPoseTest, LikeQuakeStandsUprightTurnsAboutTheVerticalAndStopsAtStraightUpAndDown) {
  CameraPose pose;
  pose.Move({.pitch = 30}, MoveMethod::LikeQuake);
  pose.Move({.yaw = -90, .roll = 20}, MoveMethod::LikeQuake);
  ExpectNear(pose.direction, {0, HALF, -0.5}, "no roll, and as low as before");
  ExpectNear(pose.up, {0, 0.5, HALF}, "upright");
  pose.Move({.pitch = 100}, MoveMethod::LikeQuake);
  ExpectNear(pose.direction, {0, 0, -1}, "straight down");
  pose.Move({.pitch = -90}, MoveMethod::LikeQuake);
  ExpectNear(pose.direction, {0, 1, 0}, "the way it was turned is not lost there");
  pose.Move({.roll = 90}, MoveMethod::Unrestricted);
  pose.Move({.forward = -40}, MoveMethod::LikeQuake);
  ExpectNear(pose.up, {0, 0, 1}, "however it stood before");
  ExpectNear(pose.eye, {0, 40, 0}, "");
}

TEST(CameraPoseTest, ItLooksAtPointsAndStaysInTheWorld) {
  CameraPose pose;
  pose.LookAt({0, 0, 0});
  ExpectNear(pose.direction, {1, 0, 0}, "a point at the eye");
  pose.LookAt({0, 10, 0});
  pose.LookAt({0, 0, 500});
  ExpectNear(pose.direction, {0, 0, 1}, "straight up");
  ExpectNear(pose.up, {0, -1, 0}, "turned as before");
  pose.Move({.forward = -40000}, MoveMethod::Unrestricted);
  EXPECT_EQ(pose.eye.z, 32767);
}

TEST(CameraPoseTest, AThousandTurnsLeaveTheAxesStraight) {
  std::mt19937 random(5);
  const auto any = [&] { return static_cast<int>(random() % 61) - 30; };
  CameraPose pose;
  for (int i = 0; i < 1000; ++i) {
    pose.Move({any(), any(), any(), any(), any(), any()}, MoveMethod::Unrestricted);
  }
  EXPECT_NEAR(Length(pose.direction), 1, 1e-12);
  EXPECT_NEAR(Length(pose.up), 1, 1e-12);
  EXPECT_NEAR(Dot(pose.direction, pose.up), 0, 1e-12);
}

}  // namespace
}  // namespace ferrowand
