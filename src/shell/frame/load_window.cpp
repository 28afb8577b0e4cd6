#include "shell/frame/load_window.h"

#include <commctrl.h>

#include "base/path_text.h"
#include "base/report.h"
#include "platform/system.h"
#include "shell/system/display_scale.h"

namespace ferrowand {
namespace {

constexpr int NAME_TEXT = 1, COUNTER_TEXT = 2, BAR = 3;
constexpr int BAR_RANGE = 1000;

// At the usual size of letters.
constexpr int WIDTH = 400, HEIGHT = 150, LEFT = 70, TOP = 100;  // pixels
constexpr int MARGIN = 16, TEXT_WIDTH = 360, TEXT_HEIGHT = 18, BAR_HEIGHT = 20;
constexpr int NAME_TOP = 20, BAR_TOP = 52, COUNTER_TOP = 88;

constexpr DWORD SHOW_INTERVAL = 40;  // milliseconds; loads count faster than anyone reads

void CreateControls(HWND window, HINSTANCE instance) {
  const auto add = [&](const char* windowClass, DWORD style, int id, int y, int height) {
    const HWND control =
        CreateWindowExA(0, windowClass, "", WS_CHILD | WS_VISIBLE | style, Scaled(MARGIN),
                        Scaled(y), Scaled(TEXT_WIDTH), Scaled(height), window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
    SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
    return control;
  };
  add("STATIC", SS_LEFTNOWORDWRAP | SS_NOPREFIX, NAME_TEXT, NAME_TOP, TEXT_HEIGHT);
  const HWND bar = add(PROGRESS_CLASSA, 0, BAR, BAR_TOP, BAR_HEIGHT);
  SendMessageA(bar, PBM_SETRANGE32, 0, BAR_RANGE);
  add("STATIC", SS_LEFTNOWORDWRAP | SS_NOPREFIX, COUNTER_TEXT, COUNTER_TOP, TEXT_HEIGHT);
}

}  // namespace

LRESULT CALLBACK LoadWindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      CreateControls(window, reinterpret_cast<CREATESTRUCTA*>(lParam)->hInstance);
      return 0;
    case WM_CTLCOLORSTATIC:
      SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetStockObject(LTGRAY_BRUSH));
    case WM_CLOSE:
      return 0;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

LoadWindow::~LoadWindow() {
  if (window_) DestroyWindow(window_);
}

void LoadWindow::Begin(const std::string& fileName) {
  const std::string name = StripCommonPrefix(fileName, CurrentDirectory());
  BeginShowing("Loading", Format("Loading: %s ....", name.c_str()));
}

void LoadWindow::BeginWork(const std::string& name) {
  BeginShowing(name.c_str(), name);
}

void LoadWindow::BeginShowing(const char* title, const std::string& text) {
  texts_.push_back(text);
  if (!window_) {
    before_ = GetActiveWindow();
    if (owner_) EnableWindow(owner_, FALSE);
    window_ = CreateWindowExA(WS_EX_DLGMODALFRAME, LOAD_WINDOW_CLASS, title,
                              WS_POPUP | WS_VISIBLE | WS_DLGFRAME, Scaled(LEFT), Scaled(TOP),
                              Scaled(WIDTH), Scaled(HEIGHT), owner_, nullptr, instance_, nullptr);
  }
  ShowText();
}

void LoadWindow::ShowText() {
  SetDlgItemTextA(window_, NAME_TEXT, texts_.back().c_str());
  lastShown_ = 0;
  UpdateWindow(window_);
}

void LoadWindow::Step(const char* format, unsigned count, unsigned part, unsigned whole) {
  const DWORD now = GetTickCount();
  const bool isLast = whole > 0 && part >= whole;
  if (now - lastShown_ < SHOW_INTERVAL && !isLast) return;
  lastShown_ = now;
  char text[80];
  wsprintfA(text, format, count);
  SetDlgItemTextA(window_, COUNTER_TEXT, text);
  if (whole > 0) {
    const auto position = static_cast<WPARAM>(1.0 * BAR_RANGE * part / whole);
    SendDlgItemMessageA(window_, BAR, PBM_SETPOS, position, 0);
  }
  Pump();
}

void LoadWindow::Pump() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    DispatchMessageW(&message);
  }
}

void LoadWindow::End() {
  texts_.pop_back();
  if (!texts_.empty()) return ShowText();
  // In this order: a window that goes while its owner is disabled hands the focus to a stranger.
  if (owner_) EnableWindow(owner_, TRUE);
  DestroyWindow(window_);
  window_ = nullptr;
  if (IsWindowVisible(before_) && before_ != GetActiveWindow()) SetActiveWindow(before_);
}

}  // namespace ferrowand
