#include "shell/windows/side_windows.h"

#include <algorithm>
#include <utility>

#include "shell/system/handles.h"
#include "shell/system/text_box.h"

namespace ferrowand {
namespace {

bool IsClick(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
         message == WM_NCLBUTTONDOWN;
}

// A button that has turned grey gives the keys to nobody, or keeps them to itself.
void FindFocus(HWND window) {
  const HWND focus = GetFocus();
  if (!window || GetActiveWindow() != window || (focus && IsWindowEnabled(focus))) return;
  if (const HWND next = GetNextDlgTabItem(window, focus, FALSE)) SetFocus(next);
}

bool IsInput(UINT message) {
  return IsClick(message) || message == WM_LBUTTONDBLCLK || message == WM_KEYDOWN ||
         message == WM_SYSKEYDOWN || message == WM_CHAR;
}

}  // namespace

SideWindow::~SideWindow() {
  if (window_) SetObject(window_, nullptr);
}

void SideWindow::Bind(HWND window) {
  window_ = window;
  SetObject(window, this);
}

void SideWindow::Part() {
  SetObject(window_, nullptr);
  window_ = nullptr;
  windows_.Forget(*this);
}

LRESULT CALLBACK SideWindow::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    static_cast<SideWindow*>(create->lpCreateParams)->Bind(window);
  }
  auto* side = ObjectOf<SideWindow>(window);
  if (side && message != WM_NCDESTROY) return side->OnMessage(message, wParam, lParam);
  if (side) side->Part();
  return DefWindowProcA(window, message, wParam, lParam);
}

INT_PTR CALLBACK SideWindow::DispatchDialog(HWND dialog, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
  if (message == WM_INITDIALOG) reinterpret_cast<SideWindow*>(lParam)->Bind(dialog);
  auto* side = ObjectOf<SideWindow>(dialog);
  if (side && message != WM_NCDESTROY) return side->OnMessage(message, wParam, lParam);
  if (side) side->Part();
  return FALSE;
}

bool SideWindow::IsProgramKey(const MSG& message) {
  if (message.message == WM_SYSKEYDOWN) {
    return message.wParam == VK_RETURN || message.wParam == VK_BACK;
  }
  if (message.message != WM_KEYDOWN || IsTextKey(message)) return false;
  const bool isFunction = message.wParam >= VK_F3 && message.wParam <= VK_F12;
  return isFunction || GetKeyState(VK_CONTROL) < 0;
}

SideWindow* SideWindows::Add(std::unique_ptr<SideWindow> window) {
  if (!window->Handle()) return nullptr;
  return windows_.emplace_back(std::move(window)).get();
}

void SideWindows::Forget(const SideWindow& window) {
  std::erase_if(windows_, [&](const auto& open) { return open.get() == &window; });
}

SideWindow* SideWindows::WindowOf(HWND part) const {
  const auto side = std::ranges::find_if(windows_, [part](const auto& open) {
    return part == open->Handle() || IsChild(open->Handle(), part);
  });
  return side == windows_.end() ? nullptr : side->get();
}

bool SideWindows::TakesMessage(MSG& message) {
  SideWindow* side = WindowOf(message.hwnd);
  if (!side) isClickedBeside_ |= IsClick(message.message);
  if (!side || side->LeavesToProgram(message)) return false;
  if (IsInput(message.message)) {
    // Quick hands are ahead of the idle program: the window must not show, and change, what was
    // selected before.
    side->OnIdle();
    side = WindowOf(message.hwnd);
    if (!side) return true;
  }
  if (!IsDialogMessageW(side->Handle(), &message)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return true;
}

template <typename Tell>
void SideWindows::TellAll(const Tell& tell) {
  std::vector<HWND> handles;
  for (const auto& window : windows_) handles.push_back(window->Handle());
  for (const HWND handle : handles) {
    const auto side = std::ranges::find_if(
        windows_, [handle](const auto& open) { return open->Handle() == handle; });
    if (side != windows_.end()) tell(**side);
  }
}

void SideWindows::OnMapClosing(const Map& map) {
  TellAll([&](SideWindow& side) { side.OnMapClosing(map); });
}

// Some systems let a window that is clicked come in front of what it owns.
void SideWindows::OnIdle() {
  if (std::exchange(isClickedBeside_, false)) {
    for (const auto& side : windows_) {
      SetWindowPos(side->Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
  }
  TellAll([](SideWindow& side) { side.OnIdle(); });
  for (const auto& side : windows_) FindFocus(side->Handle());
}

void SideWindows::FinishTyping() {
  TellAll([](SideWindow& side) { side.FinishTyping(); });
}

void SideWindows::OnMapReplaced(const Map& map, Map& by) {
  TellAll([&](SideWindow& side) { side.OnMapReplaced(map, by); });
}

}  // namespace ferrowand
