#include "shell/windows/window_tool_host.h"

#include <algorithm>
#include <array>

#include "base/command_table.h"
#include "base/report.h"
#include "document/action.h"
#include "operations/paths.h"
#include "operations/primitives.h"
#include "operations/texture_choice.h"
#include "operations/transform_selection.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/popup_menus.h"
#include "shell/dialogs/refusal.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/frame/command_target.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/gdi_canvas.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/map_window.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr unsigned FIRST_POPUP_ITEM = 1000;

// What the items of the selection's popup do, from the first one on: a command, or what no command
// does, where the command stands in for the greys.
struct PopupItem {
  Command command;
  void (*run)(const ToolHostContext& in, MapView& view) = nullptr;
};

// The keys that the menu shows for these flip along X.
template <int axis>
void Flip(const ToolHostContext& in, MapView& view) {
  const ActionScope action(view.map.Data(), Format("Flip along %c", "XYZ"[axis]));
  Conclude(view.map, FlipSelection(view.map, axis, in.tools.HowToTransform()));
}
constexpr std::array<PopupItem, 12> POPUP_ITEMS{{
    {Command::FlipX},
    {Command::FlipX, Flip<1>},
    {Command::FlipX, Flip<2>},
    {Command::Cut},
    {Command::Copy},
    {Command::Paste},
    {Command::Duplicate},
    {Command::Group},
    {Command::Ungroup},
    {Command::CsgSubtraction},
    {Command::CentreAndZoom},
    {Command::Properties},
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

bool IsAvailable(const CommandTarget& commands, const MapView& view, const PopupItem& item) {
  const bool isOffered = item.command == Command::Paste || !view.map.selection.empty();
  return isOffered && commands.IsAvailable(Id(item.command));
}

void SetGreys(const CommandTarget& commands, const MapView& view, HMENU menu) {
  for (UINT i = 0; i < POPUP_ITEMS.size(); ++i) {
    const UINT state = IsAvailable(commands, view, POPUP_ITEMS[i]) ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(menu, FIRST_POPUP_ITEM + i, MF_BYCOMMAND | state);
  }
  for (const Command added : SELECTION_COMMANDS) {
    const UINT state = commands.IsAvailable(Id(added)) ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(menu, Id(added), MF_BYCOMMAND | state);
  }
}

void Run(const ToolHostContext& in, MapView& view, const PopupItem& item) {
  if (item.run) return item.run(in, view);
  in.commands.Execute(Id(item.command));
}

}  // namespace

MapWindow* WindowToolHost::WindowOf(const MapView& view) const {
  for (const auto& window : context_.windows.All()) {
    if (window->View() == &view) return static_cast<MapWindow*>(window.get());
  }
  return nullptr;
}

HCURSOR WindowToolHost::Cursor() const {
  if (cursor_ == ToolCursor::Turn) {
    return LoadCursorA(context_.windows.GetFrame().Instance(), MAKEINTRESOURCEA(ID_TURN_CURSOR));
  }
  return LoadCursorA(nullptr, SystemName(cursor_));
}

HeldKeys WindowToolHost::Keys() const {
  return {.control = IsDown(VK_CONTROL), .shift = IsDown(VK_SHIFT)};
}

void WindowToolHost::Capture(MapView& view, bool on) {
  const MapWindow* window = WindowOf(view);
  if (!window) return;
  if (on) {
    dragging_ = window->Drawing();
    ::SetCapture(dragging_);
  } else {
    ReleaseMouse(window->Drawing());
  }
}

void WindowToolHost::ReleaseMouse(HWND drawing) {
  dragging_ = nullptr;
  if (GetCapture() == drawing) ReleaseCapture();
}

void WindowToolHost::OnCaptureLost(HWND drawing) {
  if (dragging_ != drawing) return;
  dragging_ = nullptr;
  context_.tools.Current()->Cancel();
}

PixelSize WindowToolHost::DragThreshold() const {
  return {GetSystemMetrics(SM_CXDRAG), GetSystemMetrics(SM_CYDRAG)};
}

void WindowToolHost::SetCursor(MapView&, ToolCursor cursor) {
  if (cursor == cursor_) return;
  cursor_ = cursor;
  ::SetCursor(Cursor());
}

void WindowToolHost::DrawNow(MapView& view, const std::function<void(Canvas&)>& draw) {
  const MapWindow* window = WindowOf(view);
  if (!window) return;
  const HDC dc = GetDC(window->Drawing());
  {
    GdiCanvas canvas(dc, context_.objects);
    draw(canvas);
  }
  ReleaseDC(window->Drawing(), dc);
}

bool WindowToolHost::TrackPopup(MapView& view, Pixel at, ToolPopup which) {
  const MapWindow* window = WindowOf(view);
  if (!window) return false;
  const bool ofSelection = which == ToolPopup::Selection;
  const OwnedMenu own = ofSelection ? context_.popups.ForSelection(view.map) : OwnedMenu();
  const unsigned mode = which == ToolPopup::TouchUp ? ID_POPUP_TOUCH_UP : ID_POPUP_FACE_EDIT;
  const HMENU menu = ofSelection ? own.get() : context_.popups.Get(mode);
  if (ofSelection) SetGreys(context_.commands, view, menu);
  POINT screen{at.x, at.y};
  ClientToScreen(window->Drawing(), &screen);
  const unsigned chosen = context_.dialogs.TrackPopup(window->Handle(), menu, screen);
  const bool released = GetAsyncKeyState(VK_RBUTTON) >= 0 && GetAsyncKeyState(VK_MBUTTON) >= 0;
  if (!ofSelection) {
    if (chosen >= FIRST_POPUP_ITEM) {
      context_.tools.Current()->PopupCommand(view, chosen - FIRST_POPUP_ITEM);
    }
  } else if (chosen >= FIRST_POPUP_ITEM && chosen < FIRST_POPUP_ITEM + POPUP_ITEMS.size()) {
    Run(context_, view, POPUP_ITEMS[chosen - FIRST_POPUP_ITEM]);
  } else {
    context_.commands.Execute(chosen);
  }
  return released;
}

void WindowToolHost::EditProperties(entity&) {
  context_.commands.Execute(Id(Command::Properties));
}

std::optional<int> WindowToolHost::AskSides(PrimitiveKind kind) {
  const SideRange range = SidesOf(kind);
  std::optional<int> sides;
  const auto accept = [&](const FormValues& typed) {
    sides = WholeNumberOf(context_.reporter, typed.front(), "The number of sides", range.least,
                          range.most);
    if (sides) sides_ = *sides;
    return sides.has_value();
  };
  const std::string suggested = std::to_string(std::clamp(sides_, range.least, range.most));
  const Form form{NameOf(kind),
                  Format("From %i to %i sides.", range.least, range.most),
                  {{"Number of sides", {suggested}, {}}},
                  accept};
  if (!context_.dialogs.Ask(form)) return std::nullopt;
  return sides;
}

std::optional<std::string> WindowToolHost::AskPathName(const Map& map) {
  std::string name;
  const Form form{"Lay path",
                  "The corners are named so, with a number behind.",
                  {{"Base name", {UnusedPathName(map)}, {}}},
                  [&](const FormValues& typed) {
                    name = typed.front();
                    return true;
                  }};
  if (!context_.dialogs.Ask(form)) return std::nullopt;
  return name;
}

std::string WindowToolHost::CurrentTexture(Map& map) {
  std::string name = context_.choice.For(map);
  context_.choice.NoteUse(name);
  return name;
}

void WindowToolHost::NoteTexture(const std::string& name) {
  context_.choice.NoteUse(name);
}

void WindowToolHost::ToolChanged() {
  cursor_ = ToolCursor::Arrow;
}

void WindowToolHost::Refuse(MapView& view, const std::string& why) {
  if (MapWindow* window = WindowOf(view)) window->Refuse(why);
}

Reporter& WindowToolHost::Report() {
  return context_.reporter;
}

}  // namespace ferrowand
