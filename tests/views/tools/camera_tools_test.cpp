// What the 2D views do with the camera of their map: showing, aiming and dragging it.
#include <cmath>

#include "support/fake_camera_host.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

class BlindRenderer : public CameraRenderer {
 public:
  explicit BlindRenderer(std::vector<CameraPose>& drawn) : drawn_(drawn) {}
  void SetShape(ShapeName, const Shape&) override {}
  void DropShape(ShapeName) override {}
  void DropAll() override {}
  void Draw(const CameraPicture& picture) override { drawn_.push_back(picture.pose); }
  std::vector<ShapeName> Pick(const CameraPicture&, Pixel) override { return {}; }

 private:
  std::vector<CameraPose>& drawn_;
};

class ListedHost : public FakeCameraHost {
 public:
  explicit ListedHost(ViewList& list) : list_(list) {}
  void Moved(const CameraPose& from) override { list_.CameraMoved(*camera, from); }

  const Camera* camera = nullptr;

 private:
  ViewList& list_;
};

class CameraToolsTest : public ToolTest {
 protected:
  CameraToolsTest() {
    cameraHost.camera = &camera;
    list.Add(camera);
    Stand(64, 64);
  }
  ~CameraToolsTest() override { list.Remove(camera); }

  void Stand(int x, int y) {
    CameraPose pose;
    pose.eye = DVec3(x, y, 40);
    pose.Face(0, 0);
    camera.SetPose(pose);
  }
  std::string Eye() const {
    const DVec3& eye = camera.Pose().eye;
    return Format("%g %g %g", eye.x, eye.y, eye.z);
  }
  int Yaw() const {
    const DVec3& d = camera.Pose().direction;
    return RoundToInt(std::atan2(d.y, d.x) * 180 / 3.14159265);
  }

  std::vector<CameraPose> drawn;
  ListedHost cameraHost{list};
  Camera camera{map, cameraHost, options, std::make_unique<BlindRenderer>(drawn)};
};

TEST_F(CameraToolsTest, AViewShowsTheCameraAndRepaintsWhereItWasAndIs) {
  SoftwareCanvas screen(window.area);
  const auto differs = [&] { return FreshPaint() != screen.Pixels(); };
  view.Paint(screen, {0, 0, window.area.width, window.area.height});
  const int before = window.invalidations;
  Stand(-64, 0);
  EXPECT_EQ(window.invalidations, before + 2);
  EXPECT_TRUE(differs());
  // Only the parts around both places have changed.
  const CameraPose& now = camera.Pose();
  CameraPose then = now;
  then.eye = {64, 64, 40};
  for (const CameraPose& pose : {then, now})
    view.Paint(screen, CameraMarkerBox(view.transform, pose));
  EXPECT_FALSE(differs());
}

TEST_F(CameraToolsTest, TheEyeAndTheArrowAreDraggedFromAnySelectorAndEscapeTakesThemBack) {
  for (Tool* tool :
       {static_cast<Tool*>(&tools.entitySelector), static_cast<Tool*>(&tools.brushSelector),
        static_cast<Tool*>(&tools.multiSelector)}) {
    tools.Use(*tool);
    Stand(64, 64);
    Drag(64, 64, -128, 32);
    EXPECT_EQ(Eye(), "-128 32 40");
    EXPECT_EQ(tools.Current(), tool);
    // The tip lies 36 pixels, 144 units, to the east.
    Drag(-128 + 144, 32, -128, 200);
    EXPECT_EQ(Yaw(), 90);
    EXPECT_EQ(Eye(), "-128 32 40");
    Press(-128, 32);
    MoveTo(0, 0);
    EXPECT_EQ(Eye(), "0 0 40");
    view.OnCharacter('\x1b', false);
    EXPECT_EQ(Eye(), "-128 32 40");
    EXPECT_EQ(tools.Current(), tool);
  }
  EXPECT_FALSE(map.undo.CanUndo());
  EXPECT_TRUE(Selected().empty());
}

TEST_F(CameraToolsTest, ThePositionerAimsOnceAndGivesTheMouseBack) {
  tools.Use(tools.brushTool);
  tools.PositionCamera();
  Press(0, 0);
  MoveTo(64, 192);
  EXPECT_TRUE(tools.cameraPositioner.HasPreview());
  Release(64, 192);
  EXPECT_EQ(Yaw(), 90);
  EXPECT_EQ(Status(), "Looking at: (64, 192, 0)");
  EXPECT_EQ(tools.Current(), &tools.brushTool);
  tools.PositionCamera();
  Press(0, 0, BUTTON_RIGHT);
  EXPECT_EQ(tools.Current(), &tools.brushTool);
  tools.PositionCamera();
  list.Remove(camera);
  Click(-200, 64);
  EXPECT_EQ(Yaw(), 90) << "no camera, nothing done";
  EXPECT_EQ(tools.Current(), &tools.cameraPositioner);
}

TEST_F(CameraToolsTest, FlyingIsDoneAtOnceWhileThePictureGlides) {
  camera.Paint();
  const int before = cameraHost.repaints;
  camera.Fly({}, 0.04);
  EXPECT_EQ(cameraHost.repaints, before) << "nothing moves, nothing is painted";
  camera.Fly({.forward = -40}, 0.04);
  EXPECT_EQ(Eye(), "104 64 40");
  std::vector<double> seen;
  for (const double after : {0.0, 0.01, 0.02, 0.05}) {
    cameraHost.now = 100 + after;
    camera.Paint();
    seen.push_back(std::round(drawn.back().eye.x));
  }
  EXPECT_EQ(seen, (std::vector<double>{64, 74, 84, 104}));
  EXPECT_EQ(cameraHost.repaints, before + 4) << "one for the move and one for each on the way";
  camera.Fly({.forward = -40}, 0.04);
  cameraHost.now += 0.02;
  camera.Fly({.yaw = 2}, 0);
  camera.Paint();
  EXPECT_NEAR(drawn.back().eye.x, 124, 1) << "the mouse does not cut it short";
  cameraHost.now += 0.04;
  const int still = cameraHost.repaints;
  camera.Paint();
  EXPECT_EQ(cameraHost.repaints, still);
  options.cameraMoveMethod = 1;
  camera.Fly({.roll = 20}, 0.04);
  EXPECT_EQ(cameraHost.repaints, still) << "like Quake there is no roll";
}

}  // namespace
}  // namespace ferrowand
