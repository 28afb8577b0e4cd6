#include "shell/windows/entity_tree_window.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/command_table.h"
#include "base/report.h"
#include "document/action.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/entity_search.h"
#include "operations/groups.h"
#include "operations/layers.h"
#include "operations/regroup.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/command_target.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/entity_tree_popup.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int WIDTH = 500, HEIGHT = 420;
constexpr int MARGIN = 6, GAP = 4, TEXT_HEIGHT = 14, SCROLL_STEP = 22;

constexpr UINT ROWS_CHOSEN = WM_APP + 1;  // posted to itself
constexpr UINT_PTR SCROLL_TIMER = TreeFilterBar::TIMER + 1;
constexpr UINT SCROLL_PERIOD = 60;  // milliseconds

}  // namespace

LRESULT CALLBACK EntityTreeFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

EntityTreeWindow::EntityTreeWindow(ChildWindows& windows, const EntityTreeContext& context,
                                   Map& map)
    : MapPanel(windows, map, {ENTITY_TREE_CLASS, "Entity tree", WIDTH, HEIGHT},
               &context.options.entityTreePlace),
      context_(context),
      tree_(map) {
  Open();
}

// In the order of Tab.
void EntityTreeWindow::OnCreate() {
  filter_ = std::make_unique<TreeFilterBar>(
      Handle(), map_, tree_, TreeFilterContext{context_.options, context_.dialogs, context_.popups},
      [this] { OnFiltered(); });
  list_ = std::make_unique<EntityTreeList>(Handle(), ID_TREE_LIST, map_, tree_, *this);
  AddControl(Handle(), L"STATIC", L"", SS_LEFTNOWORDWRAP, ID_TREE_STATE);
  Layout();
  ShowName();
  list_->ShowSelection();
  ShowState();
}

void EntityTreeWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  const int margin = Scaled(MARGIN), gap = Scaled(GAP), text = Scaled(TEXT_HEIGHT);
  const int width = std::max(static_cast<int>(area.right) - 2 * margin, 0);
  const int top = filter_->Place(margin, margin, width) + gap;
  const int bottom = static_cast<int>(area.bottom) - margin - text;
  PlaceControl(Handle(), ID_TREE_LIST, margin, top, width, bottom - gap - top);
  PlaceControl(Handle(), ID_TREE_STATE, margin, bottom, width, text);
  list_->FitColumns();
}

// --- what the map tells

void EntityTreeWindow::OnChange(const MapChange& change) {
  if (!list_) return;
  ShowName();
  const bool hadLayer = tree_.Filter().layer != nullptr;
  const TreeUpdate update = tree_.Follow(change);
  if (update == TreeUpdate::Rows && isDragging_) EndDrag();
  list_->Refresh(update);
  if (change.selection) {
    rowsChosen_ = false;
    list_->ShowSelection();
  }
  if (hadLayer) filter_->FillLayers();
  ShowState();
}

void EntityTreeWindow::ShowState() const {
  std::string text =
      filter_->IsSearch() ? Format("%u found, ", static_cast<unsigned>(tree_.NumFound())) : "";
  text += Format("%u selected", static_cast<unsigned>(map_.selection.size()));
  SetDlgItemTextA(Handle(), ID_TREE_STATE, text.c_str());
}

void EntityTreeWindow::OnFiltered() {
  list_->Refresh(TreeUpdate::Rows);
  ShowState();
}

// --- what the user does to rows

// A right click chooses a row to ask about it, which leaves the selection alone.
void EntityTreeWindow::RowsChosen() {
  if (rowsChosen_ || GetKeyState(VK_RBUTTON) < 0) return;
  rowsChosen_ = true;
  PostMessageA(Handle(), ROWS_CHOSEN, 0, 0);
}

void EntityTreeWindow::ApplyRows() {
  if (!std::exchange(rowsChosen_, false)) return;
  list_->ApplyRows();
  ShowState();
}

void EntityTreeWindow::OpenNode(entity& e, bool isOpen) {
  tree_.SetOpen(e, isOpen);
  list_->Refresh(TreeUpdate::Rows);
}

void EntityTreeWindow::Centre(entity& e) {
  windows_.CentreOn(map_, e.GetBounds());
}

void EntityTreeWindow::Rename(entity& e, const std::string& name) {
  const char* const before = e.GetKey("XMPentityname");
  // A name that is left alone stays to the byte, whatever its letters.
  if (name == AsUtf8(before ? before : "")) return;
  const ActionScope action(map_.Data(), "Rename");
  Conclude(map_, RenameObject(map_, e, name));
}

void EntityTreeWindow::OnContextMenu(HWND from, POINT screen) {
  if (from != list_->Handle()) return;
  entity* e = list_->Focused();
  const bool isByKey = screen.x == -1 && screen.y == -1;
  if (!isByKey) e = list_->At(screen);
  if (!e) return list_->MarkRows();
  if (isByKey) {
    RECT row;
    ListView_GetItemRect(list_->Handle(), static_cast<int>(*tree_.RowOf(*e)), &row, LVIR_LABEL);
    screen = {row.left, row.bottom};
    ClientToScreen(list_->Handle(), &screen);
  }
  const TreePopup popup(context_.popups, *e);
  const unsigned item = context_.dialogs.TrackPopup(Handle(), popup.Menu(), screen);
  const std::vector<entity*> chosen = list_->Chosen();
  list_->MarkRows();
  Perform(popup.ChoiceOf(item), *e, chosen);
}

void EntityTreeWindow::Perform(const TreeChoice& choice, entity& e,
                               const std::vector<entity*>& chosen) {
  switch (choice.kind) {
    case TreeChoice::Select:
      return SelectObjects(e, chosen, false);
    case TreeChoice::AddToSelection:
      return SelectObjects(e, chosen, true);
    case TreeChoice::Rename:
      return list_->BeginRename(e);
    case TreeChoice::Centre:
      return Centre(e);
    case TreeChoice::MoveHere:
      return MoveInto(SelectedRoots(map_), e);
    case TreeChoice::SetLeading:
      return SetAsLeading(e);
    case TreeChoice::OfClass:
    case TreeChoice::OfKey:
    case TreeChoice::OfValue:
      return SelectAlike(choice, e);
    case TreeChoice::Properties:
      SelectObjects(e, chosen, false);
      return context_.commands.Execute(Id(Command::Properties));
    case TreeChoice::Nothing:
      return;
  }
}

// The rows that are chosen, or the one that was clicked on.
void EntityTreeWindow::SelectObjects(entity& e, const std::vector<entity*>& chosen, bool add) {
  if (OnlyHolds(e)) return SelectMembers(map_, e, add);
  Select(map_, chosen, add);
}

void EntityTreeWindow::SetAsLeading(entity& e) {
  if (e.getClass()->Kind() == EntityKind::Layer) return MakeLayerCurrent(map_, e);
  map_.SetLeadingGroup(&e == map_.leadingGroup() ? nullptr : &e);
}

void EntityTreeWindow::SelectAlike(const TreeChoice& choice, const entity& e) {
  const std::string_view classname = ShownClass(e);
  const char* value = e.GetKey(choice.key);
  const auto isAlike = [&](const entity& other) {
    if (choice.kind == TreeChoice::OfClass) return ShownClass(other) == classname;
    const char* its = other.GetKey(choice.key);
    return its && (choice.kind == TreeChoice::OfKey || std::string_view(its) == value);
  };
  std::vector<entity*> objects;
  ForEachEntity(map_, [&](const entity& other) {
    if (&other != &map_ && isAlike(other)) objects.push_back(const_cast<entity*>(&other));
  });
  Select(map_, objects, false);
  map_.ShowStatus(SelectedInWords(objects.size(), map_.selection.size()));
}

bool EntityTreeWindow::MayMoveTo(const entity& holder) const {
  const entity* at = &holder;
  while (at->Parent() && IsOpen(*at)) at = at->Parent();
  return !at->Parent() ||
         context_.reporter.Show("Ferrowand asks",
                                "This is hidden or disabled. Move the objects there?",
                                Buttons::YesNo, Icon::Question) == Answer::Yes;
}

void EntityTreeWindow::MoveInto(const std::vector<entity*>& objects, entity& holder) {
  if (!MayMoveTo(holder)) return;
  const ActionScope action(map_.Data(), "Move to " + std::string(TreeLabel(holder)));
  Conclude(map_, ferrowand::MoveInto(map_, objects, holder));
}

// --- dragging

void EntityTreeWindow::BeginDrag() {
  ApplyRows();
  isDragging_ = true;
  SetCapture(Handle());
  SetTimer(Handle(), SCROLL_TIMER, SCROLL_PERIOD, nullptr);
}

// The row under the mouse, or what holds its object.
entity* EntityTreeWindow::HolderUnder(POINT screen) const {
  entity* e = list_->At(screen);
  while (e && !HoldsObjects(*e)) e = e->Parent();
  return e && e->Parent() ? e : nullptr;
}

void EntityTreeWindow::DragTo(POINT screen) {
  const entity* holder = HolderUnder(screen);
  list_->MarkTarget(holder);
  SetCursor(LoadCursorA(nullptr, holder ? IDC_HAND : IDC_NO));
  RECT area;
  GetWindowRect(list_->Handle(), &area);
  const int step = Scaled(SCROLL_STEP);
  const int by = screen.y < area.top ? -step : screen.y >= area.bottom ? step : 0;
  if (by != 0) ListView_Scroll(list_->Handle(), 0, by);
}

void EntityTreeWindow::EndDrag() {
  if (!std::exchange(isDragging_, false)) return;
  KillTimer(Handle(), SCROLL_TIMER);
  list_->MarkTarget(nullptr);
  if (GetCapture() == Handle()) ReleaseCapture();
}

void EntityTreeWindow::Drop(POINT screen) {
  entity* holder = HolderUnder(screen);
  const std::vector<entity*> objects = list_->Chosen();
  EndDrag();
  if (holder) MoveInto(objects, *holder);
}

LRESULT EntityTreeWindow::OnDragMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  POINT at{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
  ClientToScreen(Handle(), &at);
  switch (message) {
    case WM_MOUSEMOVE:
      DragTo(at);
      return 0;
    case WM_LBUTTONUP:
      Drop(at);
      return 0;
    case WM_RBUTTONDOWN:
    case WM_CAPTURECHANGED:
      EndDrag();
      return 0;
  }
  return DefMDIChildProcA(Handle(), message, wParam, lParam);
}

// --- messages

bool EntityTreeWindow::TakesMessage(MSG& message) {
  if (isDragging_ && message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE &&
      IsChild(Handle(), message.hwnd)) {
    EndDrag();
    return true;
  }
  return MapPanel::TakesMessage(message);
}

// What moves about the list, and letters, which find a row.
bool EntityTreeWindow::IsOwnKey(WPARAM key, bool withControl) const {
  constexpr std::array MOVES{VK_UP,  VK_DOWN,  VK_LEFT, VK_RIGHT, VK_HOME,
                             VK_END, VK_PRIOR, VK_NEXT, VK_SPACE};
  if (std::ranges::find(MOVES, static_cast<int>(key)) != MOVES.end()) return true;
  if (withControl) return false;
  constexpr std::array OTHERS{VK_TAB, VK_RETURN, VK_ESCAPE, VK_F2};
  const bool isLetter = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
  return isLetter || std::ranges::find(OTHERS, static_cast<int>(key)) != OTHERS.end();
}

void EntityTreeWindow::OnCommand(int id, int notification) {
  switch (id) {
    case IDOK:
      return OnEnter();
    case IDCANCEL:
      filter_->ClearText();
      SetFocus(list_->Handle());
      return;
    default:
      filter_->OnCommand(id, notification);
  }
}

void EntityTreeWindow::OnEnter() {
  if (GetFocus() != list_->Handle()) {
    filter_->TakeText();
    SetFocus(list_->Handle());
  } else if (entity* e = list_->Focused()) {
    Centre(*e);
  }
}

void EntityTreeWindow::OnTimer(UINT_PTR timer) {
  if (timer == TreeFilterBar::TIMER) filter_->TakeText();
  if (timer != SCROLL_TIMER || !isDragging_) return;
  POINT mouse;
  if (GetCursorPos(&mouse)) DragTo(mouse);
}

LRESULT EntityTreeWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (isDragging_ &&
      ((message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == WM_CAPTURECHANGED)) {
    return OnDragMessage(message, wParam, lParam);
  }
  switch (message) {
    case ROWS_CHOSEN:
      ApplyRows();
      return 0;
    case WM_CONTEXTMENU:
      OnContextMenu(reinterpret_cast<HWND>(wParam),
                    {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
      return 0;
  }
  return MapPanel::OnMessage(message, wParam, lParam);
}

}  // namespace ferrowand
