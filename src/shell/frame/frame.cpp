#include "shell/frame/frame.h"

#include <commctrl.h>

#include <array>

#include "base/command_table.h"
#include "base/report.h"
#include "shell/documents/documents.h"
#include "shell/frame/command_target.h"
#include "shell/frame/load_window.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

constexpr UINT_PTR KEEP_TIMER = 1;
constexpr UINT MINUTE = 60'000, SOON = 1'000;  // milliseconds
constexpr UINT CAME_TO_FRONT = WM_APP;
constexpr char CAPTION[] = "Ferrowand";

// The popup of the menu bar that holds the command.
HMENU PopupWith(HMENU bar, unsigned command) {
  for (int i = 0; i < GetMenuItemCount(bar); ++i) {
    const HMENU popup = GetSubMenu(bar, i);
    if (popup && GetMenuState(popup, command, MF_BYCOMMAND) != static_cast<UINT>(-1)) return popup;
  }
  return nullptr;
}

}  // namespace

LRESULT CALLBACK WindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    auto* frame = static_cast<Frame*>(create->lpCreateParams);
    frame->window_ = window;
    SetObject(window, frame);
  }
  if (auto* frame = ObjectOf<Frame>(window)) return frame->Handle(message, wParam, lParam);
  return DefWindowProcA(window, message, wParam, lParam);
}

Frame::Frame(HINSTANCE instance, Options& options, Reporter& reporter, const LoadWindow& progress,
             CommandTarget& commands, Documents& documents)
    : instance_(instance),
      options_(options),
      reporter_(reporter),
      progress_(progress),
      commands_(commands),
      documents_(documents),
      primitivePopup_(instance) {}

bool Frame::Create(const char* clientClass) {
  clientClass_ = clientClass;
  return CreateWindowExA(WS_EX_ACCEPTFILES, FRAME_CLASS, CAPTION,
                         WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                         CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance_,
                         this) != nullptr;
}

void Frame::Show() {
  WINDOWPLACEMENT place{};
  place.length = sizeof place;
  place.rcNormalPosition = {options_.frameLeft, options_.frameTop, options_.frameRight,
                            options_.frameBottom};
  place.showCmd = options_.frameMaximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
  const RECT& rect = place.rcNormalPosition;
  const bool isKnown = rect.left < rect.right && rect.top < rect.bottom &&
                       MonitorFromRect(&rect, MONITOR_DEFAULTTONULL);
  if (!isKnown || !SetWindowPlacement(window_, &place)) ShowWindow(window_, SW_SHOWMAXIMIZED);
}

void Frame::KeepPlace() {
  WINDOWPLACEMENT place{};
  place.length = sizeof place;
  if (!GetWindowPlacement(window_, &place)) return;
  const RECT& rect = place.rcNormalPosition;
  options_.frameLeft = rect.left;
  options_.frameTop = rect.top;
  options_.frameRight = rect.right;
  options_.frameBottom = rect.bottom;
  const bool isMaximised =
      place.showCmd == SW_SHOWMAXIMIZED ||
      (place.showCmd == SW_SHOWMINIMIZED && (place.flags & WPF_RESTORETOMAXIMIZED));
  options_.frameMaximised = isMaximised ? 1 : 0;
}

void Frame::Destroy() {
  if (window_) DestroyWindow(window_);
}

void Frame::OnCreate(HWND window) {
  CLIENTCREATESTRUCT create{};
  create.hWindowMenu = PopupWith(GetMenu(window), Id(Command::TileWindows));
  create.idFirstChild = ID_FIRST_CHILD;
  client_ = CreateWindowExA(WS_EX_CLIENTEDGE, clientClass_, "",
                            WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_HSCROLL | WS_VSCROLL, 0, 0,
                            0, 0, window, nullptr, instance_, &create);
  if (options_.showToolbar) ShowToolbar(true);
  StartTimer(options_.autosaveMinutes * MINUTE);
}

PixelSize Frame::ClientSize() const {
  RECT area{};
  GetClientRect(client_, &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void Frame::ShowToolbar(bool shown) {
  if (!shown) {
    toolbar_.Destroy();
  } else if (!toolbar_.Exists() && !toolbar_.Create(window_, instance_)) {
    reporter_.Show("Error", Format("Toolbar failed to create, GetLastError=%lu", GetLastError()));
  }
  Refresh();
  OnSize();
}

void Frame::Refresh() {
  toolbar_.SetStates([this](unsigned id) { return commands_.IsAvailable(id); },
                     [this](unsigned id) { return commands_.IsChecked(id); });
  toolbar_.ShowRotationStep(options_.rotationStep);
  RefreshMenuBar();
  RefreshCaption();
}

// The bar's own items: nothing asks for their state when a menu opens.
void Frame::RefreshMenuBar() {
  const HMENU bar = GetMenu(window_);
  bool isChanged = false;
  for (int i = 0; i < GetMenuItemCount(bar); ++i) {
    const UINT id = GetMenuItemID(bar, i);
    if (!FindCommand(id)) continue;
    const UINT state = commands_.IsAvailable(id) ? MF_ENABLED : MF_GRAYED;
    isChanged |= (GetMenuState(bar, id, MF_BYCOMMAND) & MF_GRAYED) != state;
    EnableMenuItem(bar, id, MF_BYCOMMAND | state);
  }
  if (isChanged) DrawMenuBar(window_);
}

void Frame::RefreshCaption() {
  const std::string file = commands_.ActiveFile();
  const std::string caption = file.empty() ? CAPTION : CAPTION + (" - " + file);
  if (caption == caption_) return;
  caption_ = caption;
  SetWindowTextA(window_, caption.c_str());
}

// A button that is down is let go; the menu's item stays what was chosen.
void Frame::OnCommand(unsigned id, bool isButton) {
  const bool letsGo = isButton && id == Id(Command::SelectFull) && commands_.IsChecked(id);
  commands_.Execute(letsGo ? Id(Command::SelectPartial) : id);
}

void Frame::OnSize() {
  RECT area;
  GetClientRect(window_, &area);
  const int top = toolbar_.Fit();
  MoveWindow(client_, 0, top, area.right, area.bottom > top ? area.bottom - top : 0, TRUE);
}

void Frame::OnInitMenu(HMENU menu) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const UINT id = GetMenuItemID(menu, i);
    if (FindCommand(id)) SetMenuItem(menu, static_cast<UINT>(i), id);
  }
}

void Frame::SetMenuItem(HMENU menu, unsigned at, unsigned id) const {
  const unsigned recent = id - Id(Command::RecentMap);
  if (recent < Options::NUMRECENTMAPS) {
    const std::string text = RecentMapText(options_, recent);
    ModifyMenuA(menu, at, MF_BYPOSITION | MF_STRING, id, text.c_str());
  }
  EnableMenuItem(menu, at, MF_BYPOSITION | (commands_.IsAvailable(id) ? MF_ENABLED : MF_GRAYED));
  CheckMenuItem(menu, at, MF_BYPOSITION | (commands_.IsChecked(id) ? MF_CHECKED : MF_UNCHECKED));
}

void Frame::OnDropFiles(HDROP files) {
  const UINT count = DragQueryFileA(files, 0xFFFFFFFF, nullptr, 0);
  std::vector<std::string> paths;
  for (UINT i = 0; i < count; ++i) {
    std::string path(DragQueryFileA(files, i, nullptr, 0) + 1, '\0');
    path.resize(DragQueryFileA(files, i, path.data(), static_cast<UINT>(path.size())));
    paths.push_back(std::move(path));
  }
  DragFinish(files);
  if (progress_.IsLoading()) return;
  for (const std::string& path : paths) documents_.Open(path);
}

// 0: never.
void Frame::StartTimer(UINT milliseconds) {
  if (milliseconds > 0) SetTimer(window_, KEEP_TIMER, milliseconds, nullptr);
}

void Frame::RestartKeeping() {
  KillTimer(window_, KEEP_TIMER);
  StartTimer(options_.autosaveMinutes * MINUTE);
}

// In the middle of a drag or a load it is put off.
void Frame::OnTimer() {
  const bool isBusy = progress_.IsLoading() || commands_.IsDragging();
  if (!isBusy) documents_.KeepAll();
  StartTimer(isBusy ? SOON : options_.autosaveMinutes * MINUTE);
}

// Not while a box is open: it is about maps as they are.
void Frame::OnCameToFront() {
  if (IsWindowEnabled(window_) && !progress_.IsLoading() && !commands_.IsDragging()) {
    documents_.FollowClassFiles();
    documents_.FollowWads();
    documents_.OfferReloads();
  }
}

// Of the display's palette the system tells only the frame.
void Frame::TellChildren(UINT message, WPARAM wParam, LPARAM lParam) const {
  for (HWND child = GetWindow(client_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    SendMessageA(child, message, wParam, lParam);
  }
}

LRESULT Frame::OnNotify(LPARAM lParam) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header->code != TTN_GETDISPINFOA) return 0;
  auto* info = reinterpret_cast<NMTTDISPINFOA*>(lParam);
  // The table's texts end in a zero byte: they are literals.
  info->lpszText = const_cast<char*>(ToolTip(static_cast<unsigned>(header->idFrom)).data());
  return 0;
}

LRESULT Frame::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      OnCreate(window_);
      return 0;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) OnSize();
      return 0;
    case WM_COMMAND:
      if (!FindCommand(LOWORD(wParam))) break;
      OnCommand(LOWORD(wParam), lParam != 0);
      return 0;
    case WM_INITMENUPOPUP:
      if (HIWORD(lParam) == 0) OnInitMenu(reinterpret_cast<HMENU>(wParam));
      break;
    case WM_MEASUREITEM:
      primitivePopup_.Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_DRAWITEM:
      primitivePopup_.Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_NOTIFY:
      return OnNotify(lParam);
    case WM_DROPFILES:
      OnDropFiles(reinterpret_cast<HDROP>(wParam));
      return 0;
    case WM_CLOSE:
      if (documents_.MayQuit()) DestroyWindow(window_);
      return 0;
    case WM_QUERYENDSESSION:
      documents_.KeepAll();  // the system does not wait for an answer for ever
      return documents_.MayQuit();
    case WM_ENDSESSION:
      if (!wParam) return 0;
      KeepPlace();
      onSessionEnd_();
      return 0;
    case WM_QUERYNEWPALETTE:
    case WM_PALETTECHANGED:
      TellChildren(message, wParam, lParam);
      return TRUE;
    case WM_TIMER:
      if (wParam != KEEP_TIMER) break;
      OnTimer();
      return 0;
    case WM_ACTIVATEAPP:
      // Afterwards: a box in the middle of it would take part in what it interrupts.
      if (wParam) PostMessageA(window_, CAME_TO_FRONT, 0, 0);
      break;
    case CAME_TO_FRONT:
      OnCameToFront();
      return 0;
    case WM_DESTROY:
      KeepPlace();
      toolbar_.Destroy();
      PostQuitMessage(0);
      return 0;
    case WM_NCDESTROY: {
      const LRESULT result = DefFrameProcA(window_, client_, message, wParam, lParam);
      SetObject(window_, nullptr);
      window_ = client_ = nullptr;
      return result;
    }
  }
  return DefFrameProcA(window_, client_, message, wParam, lParam);
}

}  // namespace ferrowand
