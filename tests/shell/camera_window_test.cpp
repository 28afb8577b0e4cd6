// The 3D camera in its real window.
#include "shell/windows/camera_window.h"

#include <algorithm>

#include "base/command_table.h"
#include "document/reach.h"
#include "shell/app_fixture.h"

namespace ferrowand {
namespace {

class CameraWindowTest : public AppTest {
 protected:
  CameraWindow& NewCamera() {
    Give(Command::NewGLCamera);
    app->Pump();
    return *AnyCamera();
  }
  static void SendMouse(const CameraWindow& window, UINT message, WPARAM keys, int x, int y) {
    SendMessageA(window.Handle(), message, keys, MAKELPARAM(x, y));
  }
  // How many of some pixels of the window on the screen are not black.
  static int CountLit(const CameraWindow& window) {
    UpdateWindow(window.Handle());
    const HDC dc = GetDC(window.Handle());
    const PixelSize size = window.DrawingArea();
    int lit = 0;
    for (int x = 4; x < size.width; x += 16) {
      for (int y = 4; y < size.height; y += 16) lit += GetPixel(dc, x, y) != 0 ? 1 : 0;
    }
    ReleaseDC(window.Handle(), dc);
    return lit;
  }
};

TEST_F(CameraWindowTest, AMapOpensWithOneWhereTheOptionsWantIt) {
  saved.useDirect3D = 1;
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  ASSERT_EQ(parts->windows.All().size(), 4u);
  ASSERT_TRUE(AnyCamera());
  EXPECT_EQ(TextOf(AnyCamera()->Handle()), "3DView: Two boxes");
  EXPECT_GT(CountLit(*AnyCamera()), 5) << "the boxes are seen on the screen";
  EXPECT_FALSE(parts->windows.ActiveWindow()->GetCamera());
}

TEST_F(CameraWindowTest, ThereIsOneForEachMapAndItCountsAsAWindowOfIt) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  EXPECT_FALSE(AnyCamera());
  Give(Command::CameraToStart);
  EXPECT_EQ(sink.messages.back().text, "You must have a 3D camera open");
  NewCamera();
  Give(Command::NewGLCamera);
  EXPECT_EQ(sink.messages.back().text, "You can only have one 3D view per map");
  EXPECT_EQ(sink.messages.back().title, "Cannot continue");
  Give(Command::CameraToStart);
  EXPECT_EQ(sink.messages.back().text, "No info_player_start entity!");

  Give(Command::Arrange3DLarge);
  RECT place;
  GetWindowRect(AnyCamera()->Handle(), &place);
  EXPECT_EQ(place.bottom - place.top, parts->frame.ClientSize().height);
  EXPECT_GT(CountLit(*AnyCamera()), 5) << "after another size";

  for (MapView* view : parts->windows.Views().ViewsOf(map)) {
    for (ChildWindow* window : parts->windows.WindowsOf(map)) {
      if (window->View() == view) parts->windows.Close(*window);
    }
  }
  ASSERT_EQ(parts->windows.WindowsOf(map).size(), 1u);
  dialogs.commands.assign({1000});
  Give(Command::Insert);  // has a place though there is no view
  ASSERT_TRUE(map.modified());
  sink.answers.assign(1, Answer::No);
  SendMessageA(AnyCamera()->Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(sink.messages.back().title, "Continue?");
  EXPECT_TRUE(AnyCamera());
  sink.answers.assign(1, Answer::Yes);
  SendMessageA(AnyCamera()->Handle(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(parts->documents.Maps().empty());
}

TEST_F(CameraWindowTest, ARightClickOffersTheModesAndAMovementDoesNot) {
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  CameraWindow& window = NewCamera();
  const auto rightClick = [&](int way) {
    dialogs.tracked.clear();
    SendMouse(window, WM_RBUTTONDOWN, MK_RBUTTON, 50, 50);
    SendMouse(window, WM_MOUSEMOVE, MK_RBUTTON, 50 + way, 50);
    SendMouse(window, WM_RBUTTONUP, 0, 50 + way, 50);
  };
  dialogs.commands.assign({1003, 1006});
  rightClick(0);
  EXPECT_EQ(window.GetCamera()->Mode(), RenderMode::OneMip);
  EXPECT_TRUE(dialogs.tracked[1002] & MF_CHECKED) << "the mode until then";
  rightClick(1);
  EXPECT_TRUE(window.GetCamera()->TintsEntities());
  rightClick(40);
  EXPECT_TRUE(dialogs.tracked.empty());
  dialogs.commands.assign({1000});
  Give(Command::ToolCameraDetail);
  EXPECT_EQ(window.GetCamera()->Mode(), RenderMode::Wireframe);
  EXPECT_GT(CountLit(window), 0);
  Give(Command::ToolRecolour3D);
  Give(Command::ToolUpdate3D);
  EXPECT_GT(CountLit(window), 0);
}

TEST_F(CameraWindowTest, AClickSelectsWhatItHits) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  CameraWindow& window = NewCamera();
  CameraPose pose;
  pose.eye = {-300, 0, 0};
  window.GetCamera()->SetPose(pose);
  const PixelSize size = window.DrawingArea();
  SendMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, size.width / 2, size.height / 2);
  ASSERT_EQ(map.selection.size(), 1u);
  EXPECT_EQ(map.selection.front()->GetBounds().maxs.x, 32) << "the nearer box";
  SendMouse(window, WM_LBUTTONUP, 0, size.width / 2, size.height / 2);
  EXPECT_FALSE(map.modified());
}

TEST_F(CameraWindowTest, ADragMovesTheSelectionInOneStepAndEscapeEndsItWithoutEffect) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  CameraWindow& window = NewCamera();
  CameraPose pose;
  pose.eye = {-200, 0, 150};
  pose.Face(0, 37);
  window.GetCamera()->SetPose(pose);
  const PixelSize size = window.DrawingArea();
  const int x = size.width / 2, y = size.height / 2;
  const std::string before = ExtendedText(map);
  const auto drag = [&](bool escapes) {
    SendMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, x, y);
    SendMouse(window, WM_MOUSEMOVE, MK_LBUTTON, x + 100, y);
    if (escapes) SendMessageA(window.Handle(), WM_CHAR, VK_ESCAPE, 0);
    SendMouse(window, WM_LBUTTONUP, 0, x + 100, y);
  };
  drag(true);
  EXPECT_EQ(ExtendedText(map), before);
  drag(false);
  ASSERT_EQ(map.selection.size(), 1u);
  const Bounds box = map.selection.front()->GetBounds();
  EXPECT_LT(box.mins.y, -32) << "to the right of who looks east";
  EXPECT_EQ(static_cast<int>(box.mins.y + 32) % 64, 0) << "on the grid";
  EXPECT_EQ(box.mins.z, -32);
  map.undo.Undo();
  EXPECT_EQ(ExtendedText(map), before);
  EXPECT_FALSE(map.undo.CanUndo());
}

TEST_F(CameraWindowTest, WhatIsNewStandsOnTheFaceUnderTheMouse) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  CameraWindow& window = NewCamera();
  CameraPose pose;
  pose.eye = {0, 0, 150};
  pose.Face(0, 90);
  window.GetCamera()->SetPose(pose);
  UpdateWindow(window.Handle());
  const PixelSize size = window.DrawingArea();
  const std::string before = ExtendedText(map);
  POINT middle{size.width / 2, size.height / 2};
  ClientToScreen(window.Handle(), &middle);
  SetCursorPos(middle.x, middle.y);
  const auto expectOnTop = [&](float height) {
    ASSERT_EQ(map.selection.size(), 1u);
    EXPECT_EQ(SeenBounds(*map.selection.front()).mins.z, 32);
    EXPECT_EQ(SeenBounds(*map.selection.front()).maxs.z, 32 + height);
  };
  dialogs.commands.assign({1000});  // the class "unknown"
  Give(Command::Insert);
  expectOnTop(16);
  map.selection.Set({map.currentLayer()->getEntityList().front().get()});
  Give(Command::Copy);
  const std::size_t steps = map.undo.StepCount();
  Give(Command::Paste);
  expectOnTop(64);
  EXPECT_EQ(map.undo.StepCount(), steps + 1);
  SetCursorPos(0, 0);
  Give(Command::Paste);
  EXPECT_EQ(SeenBounds(*map.selection.front()).mins.z, -32) << "where it was copied";

  while (map.undo.CanUndo()) map.undo.Undo();
  Give(Command::CreateCuboid);
  const int x = size.width / 2, y = size.height / 2;
  SendMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, x - 2, y - 2);
  SendMouse(window, WM_MOUSEMOVE, MK_LBUTTON, x + size.height / 2, y + size.height / 2);
  SendMouse(window, WM_LBUTTONUP, 0, x + size.height / 2, y + size.height / 2);
  expectOnTop(64);
  map.undo.Undo();
  EXPECT_EQ(ExtendedText(map), before);
}

TEST_F(CameraWindowTest, ManyOpenedAndClosedLeaveNothingBehind) {
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  const auto openAndClose = [this] {
    SendMessageA(NewCamera().Handle(), WM_CLOSE, 0, 0);
    app->Pump();
  };
  const auto count = [](DWORD kind) { return GetGuiResources(GetCurrentProcess(), kind); };
  for (int i = 0; i < 3; ++i) openAndClose();
  const DWORD gdi = count(GR_GDIOBJECTS), user = count(GR_USEROBJECTS);
  for (int i = 0; i < 200; ++i) openAndClose();
  EXPECT_EQ(count(GR_GDIOBJECTS), gdi);
  EXPECT_EQ(count(GR_USEROBJECTS), user);
  EXPECT_TRUE(sink.messages.empty());
}

}  // namespace
}  // namespace ferrowand
