// Flying in a camera's window: keys, the mouse, its wheel, the joystick.
#include <windowsx.h>

#include "base/command_table.h"
#include "base/key_bindings.h"
#include "shell/frame/frame.h"
#include "shell/windows/camera_joystick.h"
#include "shell/windows/camera_window.h"
#include "shell/windows/child_windows.h"
#include "views/tool.h"

namespace ferrowand {
namespace {

constexpr UINT_PTR JOYSTICK_TIMER = 2010;
constexpr UINT JOYSTICK_EVERY = 100;  // milliseconds
constexpr double JOYSTICK_SECONDS = 0.1;
constexpr double WHEEL_SECONDS = 0.1;
constexpr int WHEEL_STEP = 40;  // world units a notch

bool IsDown(int code) {
  return GetKeyState(code) < 0;
}

// Between two messages of a key that is held, in seconds: from 2.5 to 30 a second.
double RepeatSeconds() {
  constexpr double SLOWEST = 2.5, FASTEST = 30, SETTINGS = 31;
  DWORD setting = 31;
  SystemParametersInfoA(SPI_GETKEYBOARDSPEED, 0, &setting, 0);
  return 1 / (SLOWEST + (FASTEST - SLOWEST) * setting / SETTINGS);
}

Pixel ToPixel(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

}  // namespace

double CameraWindow::Now() const {
  LARGE_INTEGER ticks{}, perSecond{};
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&perSecond);
  return static_cast<double>(ticks.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

void CameraWindow::Moved(const CameraPose& from) {
  windows_.Views().CameraMoved(*camera_, from);
}

void CameraWindow::OptionsChanged() {
  ChildWindow::OptionsChanged();
  FollowJoystick();
}

void CameraWindow::FollowJoystick() {
  if (context_.joystick.IsOpen()) {
    SetTimer(Handle(), JOYSTICK_TIMER, JOYSTICK_EVERY, nullptr);
  } else {
    KillTimer(Handle(), JOYSTICK_TIMER);
  }
}

// Chords with Alt are the menu's, unless Alt is bound.
bool CameraWindow::IsCameraKey(UINT message, int key) const {
  const bool isSystem = message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
  if (!isSystem && message != WM_KEYDOWN) return false;
  if (!IsBound(context_.options, key)) return false;
  if (isSystem && key != VK_F10 && !IsBound(context_.options, VK_MENU)) return false;
  return !IsDown(VK_CONTROL) || key == VK_CONTROL;
}

// Its character goes with a bound key: Z goes to the left there, and leaves the grid alone.
bool CameraWindow::TakesMessage(MSG& message) {
  if (message.hwnd != Handle()) return false;
  if (NudgeFaces(message)) return true;
  if (!IsCameraKey(message.message, static_cast<int>(message.wParam))) return false;
  DispatchMessageW(&message);
  return true;
}

void CameraWindow::FollowKeys() {
  camera_->Fly(MoveOfKeys(context_.options, IsDown), RepeatSeconds());
}

bool CameraWindow::OnNavigation(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      if (!IsCameraKey(message, static_cast<int>(wParam))) return false;
      if (message == WM_SYSKEYDOWN) FollowKeys();
      return true;
    case WM_KEYDOWN:
      FollowKeys();
      return true;
    case WM_CHAR:
      return OnCharacter(static_cast<char>(wParam));
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      return StartLooking(ToPixel(lParam));
    case WM_MOUSEMOVE:
      OnMouseOver(Handle(), {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return LookTo(ToPixel(lParam), (wParam & MK_LBUTTON) != 0);
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
      EndLooking();
      return false;
    case WM_MOUSEWHEEL:
      if (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) return false;
      OnWheel(GET_WHEEL_DELTA_WPARAM(wParam));
      return true;
    case WM_TIMER:
      if (wParam != JOYSTICK_TIMER) return false;
      camera_->Fly(context_.joystick.Poll(), JOYSTICK_SECONDS);
      if (!context_.joystick.IsOpen()) FollowJoystick();
      return true;
  }
  return false;
}

bool CameraWindow::OnCharacter(char c) {
  const CameraCharacter meaning = MeaningOf(c);
  if (meaning == CameraCharacter::Other) return false;
  if (meaning == CameraCharacter::SelectNone) {
    SendMessageA(frame_.Handle(), WM_COMMAND, Id(Command::SelectNone), 0);
  } else {
    StepGrids(windows_.Views().ViewsOf(map_), meaning == CameraCharacter::GridLarger);
  }
  return true;
}

void CameraWindow::OnWheel(int turned) {
  wheelRest_ += turned;
  const int notches = wheelRest_ / WHEEL_DELTA;
  wheelRest_ -= notches * WHEEL_DELTA;
  camera_->Fly({.forward = -WHEEL_STEP * notches}, WHEEL_SECONDS);
}

// The press alone moves nothing.
bool CameraWindow::StartLooking(Pixel at) {
  if (!IsLookingByMouse(context_.options, IsDown)) return false;
  SetFocus(Handle());
  SetCapture(Handle());
  mouse_.Press(at);
  looks_ = true;
  return true;
}

bool CameraWindow::LookTo(Pixel at, bool isHeld) {
  // The key may come after the button, unless that is dragging something.
  if (isHeld && !looks_ && GetCapture() != Handle()) return StartLooking(at);
  if (looks_) FollowMouse(at, BUTTON_LEFT);
  return looks_;
}

void CameraWindow::EndLooking() {
  if (!looks_) return;
  looks_ = false;
  if (GetCapture() == Handle()) ReleaseCapture();
}

void CameraWindow::FollowMouse(Pixel at, int buttons) {
  camera_->Fly(mouse_.MoveTo(at, buttons, context_.options, IsDown), 0);
  const std::optional<Pixel> put = mouse_.Wrap(FrameAround(Handle()), DrawingArea());
  if (!put) return;
  POINT screen{put->x, put->y};
  ClientToScreen(Handle(), &screen);
  SetCursorPos(screen.x, screen.y);
}

}  // namespace ferrowand
