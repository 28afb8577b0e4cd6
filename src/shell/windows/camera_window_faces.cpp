// Face edit in a camera's window.
#include <windowsx.h>

#include <algorithm>
#include <array>
#include <utility>

#include "document/map.h"
#include "shell/windows/camera_window.h"
#include "shell/windows/child_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

struct KeyMeaning {
  WPARAM key;
  bool control;
  FaceKey meaning;
};

constexpr std::array<KeyMeaning, 10> KEYS{{{VK_LEFT, false, FaceKey::Left},
                                           {VK_RIGHT, false, FaceKey::Right},
                                           {VK_UP, false, FaceKey::Up},
                                           {VK_DOWN, false, FaceKey::Down},
                                           {VK_PRIOR, false, FaceKey::TurnLeft},
                                           {VK_NEXT, false, FaceKey::TurnRight},
                                           {VK_LEFT, true, FaceKey::Narrower},
                                           {VK_RIGHT, true, FaceKey::Wider},
                                           {VK_DOWN, true, FaceKey::Lower},
                                           {VK_UP, true, FaceKey::Higher}}};

}  // namespace

// While faces are picked these keys are theirs, before the camera's own.
bool CameraWindow::NudgeFaces(const MSG& message) {
  if (message.message != WM_KEYDOWN || !camera_) return false;
  if (!context_.tools.IsFaceEdit() || map_.pickedFaces.empty()) return false;
  const auto key = std::ranges::find_if(KEYS, [&](const KeyMeaning& known) {
    return known.key == message.wParam && known.control == IsDown(VK_CONTROL);
  });
  if (key == KEYS.end()) return false;
  const bool finely = IsDown(VK_SHIFT);
  const FaceNudge::Eye eye{camera_->Pose().Right(), camera_->Pose().up,
                           finely ? 1 : 1 << Rules().grid,
                           finely ? 1 : int{context_.options.rotationStep}, finely};
  nudge_.Press(map_, key->meaning, eye, (HIWORD(message.lParam) & KF_REPEAT) != 0);
  return true;
}

bool CameraWindow::OnFaceMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SYSKEYUP && wParam == VK_MENU && std::exchange(altIsForFaces_, false)) {
    return true;
  }
  if (!context_.tools.IsFaceEdit()) return false;
  const Pixel at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  const bool alt = IsDown(VK_MENU), control = IsDown(VK_CONTROL);
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      SetFocus(Handle());
      SetCapture(Handle());
      altIsForFaces_ = altIsForFaces_ || alt;
      if (message == WM_LBUTTONDBLCLK && !alt) {
        faces_.DoubleClick(*camera_, at, control);
      } else {
        faces_.Press(*camera_, at, control, alt);
      }
      return true;
    case WM_MOUSEMOVE:
      if (faces_.IsDragging() && (wParam & MK_LBUTTON) != 0) faces_.Move(*camera_, at);
      return faces_.IsDragging();
    case WM_LBUTTONUP:
      faces_.Release();
      if (GetCapture() == Handle()) ReleaseCapture();
      return true;
    case WM_CAPTURECHANGED:
      faces_.Cancel();
      return false;
    case WM_CHAR:
      if (faces_.IsDragging() && wParam == VK_ESCAPE) {
        faces_.Cancel();
        return true;
      }
      return context_.tools.faceTool.KeyOf(map_, static_cast<char>(wParam));
    default:
      return false;
  }
}

}  // namespace ferrowand
