// Flying in the window of a camera: which keys are the camera's, the mouse, the joystick.
#include "shell/windows/camera_window.h"

#include <cmath>

#include "document/picking.h"
#include "shell/app_fixture.h"

namespace ferrowand {
namespace {

class CameraFlightTest : public AppTest {
 protected:
  void Open() {
    ASSERT_TRUE(Start());
    map = &OpenTwoBrushes();
    Give(Command::NewGLCamera);
    window = AnyCamera();
    ASSERT_NE(window, nullptr);
    app->Pump();
    CameraPose pose;  // at the origin, to the east
    window->GetCamera()->SetPose(pose);
  }
  void Press(int key) const {
    const HeldKey held(key);
    Post(window->Handle(), WM_KEYDOWN, static_cast<WPARAM>(key));
  }
  void Mouse(UINT message, int x, int y, WPARAM keys = 0) const {
    SendMessageA(window->Handle(), message, keys, MAKELPARAM(x, y));
  }
  // How far the eye has gone since this was asked last, and where it looks.
  std::string Gone() {
    const CameraPose& pose = window->GetCamera()->Pose();
    const DVec3 by = pose.eye - last;
    last = pose.eye;
    return Format("%i %i %i", RoundToInt(by.x), RoundToInt(by.y), RoundToInt(by.z));
  }
  int Yaw() const {
    const DVec3& d = window->GetCamera()->Pose().direction;
    return RoundToInt(std::atan2(d.y, d.x) * 180 / 3.14159265);
  }

  Map* map = nullptr;
  CameraWindow* window = nullptr;
  DVec3 last;
};

TEST_F(CameraFlightTest, BoundKeysGoBeforeCommandsAndChordsWithCtrlStayCommands) {
  Open();
  map->selection.Set(PickableObjects(*map, PickLevel::Objects));
  Give(Command::Duplicate);
  const std::string twice = ExtendedText(*map);
  const MapView& view = *parts->windows.Views().ViewsOf(*map).front();
  Press('S');
  EXPECT_EQ(Gone(), "0 0 -40");
  Press('Z');
  EXPECT_EQ(Gone(), "0 40 0");
  EXPECT_EQ(ExtendedText(*map), twice) << "nothing was carved";
  EXPECT_EQ(view.gridu, 6) << "nor is the grid larger";
  {
    const HeldKey control(VK_CONTROL);
    Press(VK_UP);
    EXPECT_EQ(Gone(), "160 0 0");
    Press('Z');
    EXPECT_EQ(Gone(), "0 0 0");
  }
  EXPECT_NE(ExtendedText(*map), twice) << "undone";
  map->selection.Set(PickableObjects(*map, PickLevel::Objects));
  Press('C');
  EXPECT_TRUE(map->selection.empty());
  SendMessageA(window->Handle(), WM_CHAR, ']', 0);
  EXPECT_EQ(view.gridu, 7);
  parts->options.keys[0] = {'C', VK_MENU};
  Press('C');
  EXPECT_EQ(Gone(), "40 0 0");
  {
    const HeldKey alt(VK_MENU);
    PostMessageA(window->Handle(), WM_SYSKEYDOWN, VK_MENU, 1 << 29);
    app->Pump();
  }
  EXPECT_EQ(Gone(), "40 0 0") << "Alt may be bound too";
}

TEST_F(CameraFlightTest, TheMouseLooksAroundGoesSidewaysAndItsWheelGoesAhead) {
  Open();
  {
    const HeldKey shift(VK_SHIFT);
    Mouse(WM_LBUTTONDOWN, 50, 50, MK_LBUTTON);
    Mouse(WM_MOUSEMOVE, 80, 50, MK_LBUTTON);
    EXPECT_EQ(Yaw(), -30);
    Mouse(WM_LBUTTONUP, 80, 50);
    Mouse(WM_MOUSEMOVE, 90, 50);
    EXPECT_EQ(Yaw(), -30) << "let go";
  }
  window->GetCamera()->SetPose({});
  Mouse(WM_RBUTTONDOWN, 50, 50, MK_RBUTTON);
  Mouse(WM_MOUSEMOVE, 60, 80, MK_RBUTTON);
  EXPECT_EQ(Gone(), "0 -10 -30");
  Mouse(WM_RBUTTONUP, 60, 80);
  EXPECT_TRUE(dialogs.tracked.empty()) << "a drag is no click";
  SendMessageA(window->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, 2 * WHEEL_DELTA), 0);
  EXPECT_EQ(Gone(), "80 0 0");
}

TEST_F(CameraFlightTest, AJoystickFliesAndOneThatIsUnpluggedIsSaidOnce) {
  joysticks.info = JoystickInfo{0, "Stick", 2};
  Open();
  const auto tick = [&] { SendMessageA(window->Handle(), WM_TIMER, 2010, 0); };
  tick();
  EXPECT_EQ(Gone(), "0 0 0") << "at rest";
  joysticks.position.axes[1] = -30000;
  tick();
  EXPECT_EQ(Gone(), "86 0 0");
  joysticks.reading = JoystickReading::Unplugged;
  tick();
  tick();
  EXPECT_EQ(sink.OnlyText(), "Joystick unplugged");
  EXPECT_EQ(sink.messages[0].title, "Joystick/SpaceOrb will not be available");
  Press(VK_UP);
  EXPECT_EQ(Gone(), "40 0 0");
  joysticks.info.reset();
  parts->joystick.Open();
  EXPECT_EQ(sink.messages.size(), 1u) << "there is none, and none is missed";
}

}  // namespace
}  // namespace ferrowand
