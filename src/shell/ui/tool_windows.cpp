#include "shell/ui/tool_windows.h"

#include <array>

#include "document/edit/arrange.h"
#include "shell/services/number_text.h"
#include "shell/ui/app.h"
#include "shell/ui/commands.h"
#include "shell/ui/map_window.h"
#include "shell/ui/resource.h"

namespace ferrowand {
namespace {

// What the items of the selection's popup do, from number 1000 on. Two of them have no command: the
// keys that the menu shows for them flip along X.
enum class PopupAction { Give, FlipY, FlipZ };
struct PopupItem {
  Command command;
  PopupAction action = PopupAction::Give;
};
constexpr unsigned FIRST_POPUP_ITEM = 1000;
constexpr unsigned PROPERTIES_ITEM = 1011;
constexpr std::array<PopupItem, 11> POPUP_ITEMS{{
    {Command::FlipX},
    {Command::FlipX, PopupAction::FlipY},
    {Command::FlipX, PopupAction::FlipZ},
    {Command::Cut},
    {Command::Copy},
    {Command::Paste},
    {Command::Duplicate},
    {Command::Group},
    {Command::Ungroup},
    {Command::CsgSubtraction},
    {Command::CentreAndZoom},
}};

bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

LPCSTR SystemName(ToolCursor cursor) {
  switch (cursor) {
    case ToolCursor::Arrow:
    case ToolCursor::Turn:  // no such one
      return IDC_ARROW;
    case ToolCursor::Entity:
      return IDC_HAND;
    case ToolCursor::Move:
      return IDC_SIZEALL;
    case ToolCursor::Cross:
      return IDC_CROSS;
    case ToolCursor::SizeAcross:
      return IDC_SIZEWE;
    case ToolCursor::SizeUpDown:
      return IDC_SIZENS;
    case ToolCursor::SizeRising:
      return IDC_SIZENESW;
    case ToolCursor::SizeFalling:
      return IDC_SIZENWSE;
    case ToolCursor::Refused:
      return IDC_NO;
  }
  return IDC_ARROW;
}

void SetGreys(const App& app, HMENU menu) {
  for (unsigned i = 0; i < POPUP_ITEMS.size(); ++i) {
    const UINT state = app.IsAvailable(Id(POPUP_ITEMS[i].command)) ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(menu, FIRST_POPUP_ITEM + i, MF_BYCOMMAND | state);
  }
  EnableMenuItem(menu, PROPERTIES_ITEM, MF_BYCOMMAND | MF_GRAYED);
}

void Run(App& app, Map& map, const PopupItem& item) {
  switch (item.action) {
    case PopupAction::Give:
      return app.Execute(Id(item.command));
    case PopupAction::FlipY:
      return Conclude(app, map, FlipSelection(map, 1, {}));
    case PopupAction::FlipZ:
      return Conclude(app, map, FlipSelection(map, 2, {}));
  }
}

}  // namespace

MapWindow* ToolWindows::WindowOf(const MapView& view) const {
  for (const auto& window : app_.windows) {
    if (window->View() == &view) return static_cast<MapWindow*>(window.get());
  }
  return nullptr;
}

HCURSOR ToolWindows::Cursor() const {
  if (cursor_ == ToolCursor::Turn) {
    return LoadCursorA(app_.instance, MAKEINTRESOURCEA(ID_TURN_CURSOR));
  }
  return LoadCursorA(nullptr, SystemName(cursor_));
}

HeldKeys ToolWindows::Keys() const {
  return {.control = IsDown(VK_CONTROL), .shift = IsDown(VK_SHIFT)};
}

void ToolWindows::Capture(MapView& view, bool on) {
  const MapWindow* window = WindowOf(view);
  if (!window) return;
  if (on) {
    dragging_ = window->Drawing();
    ::SetCapture(dragging_);
  } else {
    ReleaseMouse(window->Drawing());
  }
}

void ToolWindows::ReleaseMouse(HWND drawing) {
  dragging_ = nullptr;
  if (GetCapture() == drawing) ReleaseCapture();
}

void ToolWindows::OnCaptureLost(HWND drawing) {
  if (dragging_ != drawing) return;
  dragging_ = nullptr;
  app_.tools.Current()->Cancel();
}

void ToolWindows::SetCursor(MapView&, ToolCursor cursor) {
  if (cursor == cursor_) return;
  cursor_ = cursor;
  ::SetCursor(Cursor());
}

void ToolWindows::DrawNow(MapView& view, const std::function<void(Canvas&)>& draw) {
  const MapWindow* window = WindowOf(view);
  if (!window) return;
  const HDC dc = GetDC(window->Drawing());
  {
    GdiCanvas canvas(dc, app_.objects);
    draw(canvas);
  }
  ReleaseDC(window->Drawing(), dc);
}

bool ToolWindows::TrackPopup(MapView& view, Pixel at, ToolPopup which) {
  const MapWindow* window = WindowOf(view);
  if (!window) return false;
  const bool ofSelection = which == ToolPopup::Selection;
  const HMENU menu = app_.Popup(ofSelection ? ID_POPUP_SELECTION : ID_POPUP_TOUCH_UP);
  if (ofSelection) SetGreys(app_, menu);
  POINT screen{at.x, at.y};
  ClientToScreen(window->Drawing(), &screen);
  const unsigned chosen = app_.dialogs.TrackPopup(window->Handle(), menu, screen);
  const bool released = GetAsyncKeyState(VK_RBUTTON) >= 0 && GetAsyncKeyState(VK_MBUTTON) >= 0;
  if (!ofSelection) {
    if (chosen >= FIRST_POPUP_ITEM) {
      app_.tools.Current()->PopupCommand(view, chosen - FIRST_POPUP_ITEM);
    }
  } else if (chosen >= FIRST_POPUP_ITEM && chosen < FIRST_POPUP_ITEM + POPUP_ITEMS.size()) {
    Run(app_, view.map, POPUP_ITEMS[chosen - FIRST_POPUP_ITEM]);
  }
  return released;
}

std::optional<int> ToolWindows::AskSides(const std::string& name) {
  const Form form{name, {{"Number of sides", "8", {}}}};
  const auto answer = app_.dialogs.Ask(app_.frame.Handle(), form);
  if (!answer) return std::nullopt;
  return ParseInt(answer->front());
}

std::string ToolWindows::CurrentTexture(Map& map) {
  const auto& wads = map.wads.Items();
  const WadFile& wad = wads.empty() ? app_.data.wads.Default() : *wads.front().wad;
  const auto textures = wad.Textures();
  return std::string((textures.empty() ? *wad.BadTexture() : *textures.front()).Name());
}

void ToolWindows::MapChanged(Map& map) {
  app_.RefreshLists(map);
  app_.SetTitles(map);
  app_.frame.RefreshToolbar();
}

void ToolWindows::SelectionChanged(Map& map) {
  app_.RefreshLists(map);
  app_.frame.RefreshToolbar();
}

void ToolWindows::ToolChanged() {
  cursor_ = ToolCursor::Arrow;
  app_.frame.RefreshToolbar();
}

Reporter& ToolWindows::Report() {
  return app_.reporter;
}

}  // namespace ferrowand
