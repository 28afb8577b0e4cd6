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
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/text_box.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/entity_tree_popup.h"
#include "shell/windows/window_place.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int WIDTH = 500, HEIGHT = 420;
constexpr int MARGIN = 6, GAP = 4, ROW_HEIGHT = 22, TEXT_HEIGHT = 14, TEXT_DROP = 4;
constexpr int LABEL_WIDTH = 36, BUTTON_WIDTH = 66, LIST_HEIGHT = 200;

constexpr UINT ROWS_CHOSEN = WM_APP + 1;  // posted to itself
constexpr UINT_PTR FILTER_TIMER = 1, SCROLL_TIMER = 2;
// Milliseconds. What is typed goes first: timers wait until no key is left to be read.
constexpr UINT FILTER_DELAY = 10, SCROLL_PERIOD = 60;

constexpr wchar_t ALL_CLASSES[] = L"All classes", ALL_LAYERS[] = L"All layers";

// Items of the filter's popup and bits of the setting, in the same order.
constexpr unsigned FIRST_SWITCH = 1000;
constexpr std::array<bool TreeFilter::*, 5> SWITCHES{&TreeFilter::hidden, &TreeFilter::disabled,
                                                     &TreeFilter::onlyPoints,
                                                     &TreeFilter::onlyNamed, &TreeFilter::brushes};

TreeFilter FilterOf(std::uint8_t bits) {
  TreeFilter filter;
  for (std::size_t i = 0; i < SWITCHES.size(); ++i) filter.*SWITCHES[i] = (bits >> i & 1) != 0;
  return filter;
}

std::uint8_t BitsOf(const TreeFilter& filter) {
  unsigned bits = 0;
  for (std::size_t i = 0; i < SWITCHES.size(); ++i) bits |= (filter.*SWITCHES[i] ? 1u : 0u) << i;
  return static_cast<std::uint8_t>(bits);
}

ChildPlace UsualPlace(const PixelSize& client) {
  const int width = Scaled(WIDTH), height = Scaled(HEIGHT);
  return {client.width - width, client.height - height, width, height};
}

std::wstring NameOf(const entity& layer) {
  const char* name = layer.GetKey("XMPentityname");
  return ToWide(name ? name : "Unnamed");
}

void AddItem(HWND combo, const std::wstring& text) {
  SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::size_t ChosenItem(HWND combo) {
  const LRESULT item = SendMessageW(combo, CB_GETCURSEL, 0, 0);
  return item < 0 ? 0 : static_cast<std::size_t>(item);
}

// What moves about a list stays there, and so do letters, which find a row; all other keys are
// commands here as everywhere.
bool IsListKey(WPARAM key, bool withControl) {
  constexpr std::array MOVES{VK_UP,  VK_DOWN,  VK_LEFT, VK_RIGHT, VK_HOME,
                             VK_END, VK_PRIOR, VK_NEXT, VK_SPACE};
  if (std::ranges::find(MOVES, static_cast<int>(key)) != MOVES.end()) return true;
  if (withControl) return false;
  constexpr std::array OTHERS{VK_TAB, VK_RETURN, VK_ESCAPE, VK_F2};
  const bool isLetter = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
  return isLetter || std::ranges::find(OTHERS, static_cast<int>(key)) != OTHERS.end();
}

}  // namespace

LRESULT CALLBACK EntityTreeFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

EntityTreeWindow::EntityTreeWindow(ChildWindows& windows, const EntityTreeContext& context,
                                   Map& map)
    : ChildWindow(windows), context_(context), map_(map), tree_(map) {
  tree_.SetFilter(FilterOf(context_.options.entityTreeShows));
  const PixelSize client = frame_.ClientSize();
  Create(ENTITY_TREE_CLASS, "Entity tree",
         PlaceOfText(context_.options.entityTreePlace, UsualPlace(client), client), WS_CLIPCHILDREN,
         context_.options.smallCaptions ? WS_EX_TOOLWINDOW : 0);
  map_.AddObserver(*this);
}

EntityTreeWindow::~EntityTreeWindow() {
  map_.RemoveObserver(*this);
}

void EntityTreeWindow::OptionsChanged() {
  SetSmallCaption(context_.options.smallCaptions != 0);
}

HWND EntityTreeWindow::AddControl(const wchar_t* windowClass, const wchar_t* text, DWORD style,
                                  int id) {
  const HWND control = CreateWindowExW(lstrcmpW(windowClass, L"EDIT") == 0 ? WS_EX_CLIENTEDGE : 0,
                                       windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                                       Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                       frame_.Instance(), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  return control;
}

// In the order of Tab.
void EntityTreeWindow::OnCreate() {
  constexpr DWORD LIST = WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;
  AddControl(L"STATIC", L"F&ilter:", SS_LEFTNOWORDWRAP, ID_TREE_LABEL);
  AddControl(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, ID_TREE_FILTER);
  AddControl(L"BUTTON", L"&Show...", WS_TABSTOP, ID_TREE_SHOW);
  AddItem(AddControl(L"COMBOBOX", L"", LIST, ID_TREE_CLASS), ALL_CLASSES);
  AddItem(AddControl(L"COMBOBOX", L"", LIST, ID_TREE_LAYER), ALL_LAYERS);
  for (const int id : {ID_TREE_CLASS, ID_TREE_LAYER}) {
    SendDlgItemMessageW(Handle(), id, CB_SETCURSEL, 0, 0);
  }
  list_ = std::make_unique<EntityTreeList>(Handle(), ID_TREE_LIST, map_, tree_, *this);
  AddControl(L"STATIC", L"", SS_LEFTNOWORDWRAP, ID_TREE_STATE);
  Layout();
  ShowTitle("Entity tree: " + map_.Name());
  list_->ShowSelection();
  ShowState();
}

void EntityTreeWindow::Place(int id, int left, int top, int width, int height) const {
  MoveWindow(GetDlgItem(Handle(), id), left, top, std::max(width, 0), std::max(height, 0), TRUE);
}

void EntityTreeWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  const int margin = Scaled(MARGIN), gap = Scaled(GAP), row = Scaled(ROW_HEIGHT);
  const int width = std::max(static_cast<int>(area.right) - 2 * margin, 0);
  const int label = Scaled(LABEL_WIDTH), button = Scaled(BUTTON_WIDTH);
  int top = margin;
  Place(ID_TREE_LABEL, margin, top + Scaled(TEXT_DROP), label, row - Scaled(TEXT_DROP));
  Place(ID_TREE_FILTER, margin + label, top, width - label - button - gap, row);
  Place(ID_TREE_SHOW, margin + width - button, top, button, row);
  top += row + gap;
  const int half = (width - gap) / 2;
  Place(ID_TREE_CLASS, margin, top, half, Scaled(LIST_HEIGHT));
  Place(ID_TREE_LAYER, margin + width - half, top, half, Scaled(LIST_HEIGHT));
  RECT combo;
  GetWindowRect(GetDlgItem(Handle(), ID_TREE_CLASS), &combo);
  top += static_cast<int>(combo.bottom - combo.top) + gap;
  const int bottom = static_cast<int>(area.bottom) - margin - Scaled(TEXT_HEIGHT);
  Place(ID_TREE_LIST, margin, top, width, bottom - gap - top);
  Place(ID_TREE_STATE, margin, bottom, width, Scaled(TEXT_HEIGHT));
  list_->FitColumns();
}

// --- what the map tells

void EntityTreeWindow::OnChange(const MapChange& change) {
  if (!list_) return;
  ShowTitle("Entity tree: " + map_.Name());
  const bool hadLayer = tree_.Filter().layer != nullptr;
  const TreeUpdate update = tree_.Follow(change);
  if (update == TreeUpdate::Rows && isDragging_) EndDrag();
  list_->Refresh(update);
  if (change.selection) {
    rowsChosen_ = false;
    list_->ShowSelection();
  }
  if (hadLayer) FillLayers();
  ShowState();
}

void EntityTreeWindow::ShowState() const {
  std::string text = tree_.Filter() == FilterOf(BitsOf(tree_.Filter()))
                         ? ""
                         : Format("%u found, ", static_cast<unsigned>(tree_.NumFound()));
  text += Format("%u selected", static_cast<unsigned>(map_.selection.size()));
  SetDlgItemTextA(Handle(), ID_TREE_STATE, text.c_str());
}

// --- the filter

void EntityTreeWindow::SetFilter(const TreeFilter& filter) {
  tree_.SetFilter(filter);
  context_.options.entityTreeShows = BitsOf(filter);
  list_->Refresh(TreeUpdate::Rows);
  ShowState();
}

void EntityTreeWindow::EndFilterText() {
  KillTimer(Handle(), FILTER_TIMER);
  wchar_t text[200] = L"";
  GetDlgItemTextW(Handle(), ID_TREE_FILTER, text, 200);
  TreeFilter filter = tree_.Filter();
  filter.text = FromWide(text);
  SetFilter(filter);
}

void EntityTreeWindow::ChooseWhatIsShown() {
  const HMENU menu = context_.popups.Get(ID_POPUP_TREE_FILTER);
  TreeFilter filter = tree_.Filter();
  for (unsigned i = 0; i < SWITCHES.size(); ++i) {
    CheckMenuItem(menu, FIRST_SWITCH + i,
                  MF_BYCOMMAND | (filter.*SWITCHES[i] ? MF_CHECKED : MF_UNCHECKED));
  }
  RECT button;
  GetWindowRect(GetDlgItem(Handle(), ID_TREE_SHOW), &button);
  const unsigned chosen =
      context_.dialogs.TrackPopup(Handle(), menu, {button.left, button.bottom}) - FIRST_SWITCH;
  if (chosen >= SWITCHES.size()) return;
  filter.*SWITCHES[chosen] = !(filter.*SWITCHES[chosen]);
  SetFilter(filter);
}

// When the list drops down: until then nobody needs to know which there are.
void EntityTreeWindow::FillClasses() const {
  auto classes = ClassesIn(map_);
  const std::string& shown = tree_.Filter().classname;
  if (!shown.empty()) classes.insert(shown);
  const HWND combo = GetDlgItem(Handle(), ID_TREE_CLASS);
  SendMessageW(combo, CB_RESETCONTENT, 0, 0);
  AddItem(combo, ALL_CLASSES);
  for (const std::string& name : classes) AddItem(combo, ToWide(name));
  const auto place = std::distance(classes.begin(), classes.find(shown));
  SendMessageW(combo, CB_SETCURSEL, shown.empty() ? 0 : static_cast<WPARAM>(place + 1), 0);
}

void EntityTreeWindow::FillLayers() const {
  const HWND combo = GetDlgItem(Handle(), ID_TREE_LAYER);
  SendMessageW(combo, CB_RESETCONTENT, 0, 0);
  AddItem(combo, ALL_LAYERS);
  SendMessageW(combo, CB_SETCURSEL, 0, 0);
  WPARAM place = 0;
  for (const entity* layer : LayersOf(map_)) {
    AddItem(combo, NameOf(*layer));
    ++place;
    if (layer == tree_.Filter().layer) SendMessageW(combo, CB_SETCURSEL, place, 0);
  }
}

void EntityTreeWindow::TakeClass() {
  const HWND combo = GetDlgItem(Handle(), ID_TREE_CLASS);
  const std::size_t item = ChosenItem(combo);
  std::wstring text(static_cast<std::size_t>(SendMessageW(combo, CB_GETLBTEXTLEN, item, 0)), L' ');
  SendMessageW(combo, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
  TreeFilter filter = tree_.Filter();
  filter.classname = item == 0 ? "" : FromWide(text);
  SetFilter(filter);
}

void EntityTreeWindow::TakeLayer() {
  const std::size_t item = ChosenItem(GetDlgItem(Handle(), ID_TREE_LAYER));
  const std::vector<entity*> layers = LayersOf(map_);
  TreeFilter filter = tree_.Filter();
  filter.layer = item > 0 && item <= layers.size() ? layers[item - 1] : nullptr;
  SetFilter(filter);
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
  const Bounds box = e.GetBounds();
  if (box.IsEmpty()) return;
  for (MapView* view : windows_.Views().ViewsOf(map_)) {
    view->CentreOn((box.mins + box.maxs) * 0.5f);
  }
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
  const std::size_t unreached = objects.size() - map_.selection.size();
  std::string text = Format("%u selected", static_cast<unsigned>(map_.selection.size()));
  if (unreached > 0) {
    text += Format(", %u hidden or disabled", static_cast<unsigned>(unreached));
  }
  map_.ShowStatus(text);
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
  const int step = Scaled(ROW_HEIGHT);
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
  if (!IsChild(Handle(), message.hwnd)) return false;
  const bool isKey = message.message == WM_KEYDOWN;
  if (isKey && message.wParam == VK_ESCAPE && isDragging_) {
    EndDrag();
    return true;
  }
  // What is left of Alt+Enter once the command has been given: nobody wants to hear of it.
  if (message.message == WM_SYSCHAR && message.wParam == VK_RETURN) return true;
  if (!IsTextBox(message.hwnd)) {
    if (message.message == WM_SYSKEYDOWN) return false;
    if (isKey && !IsListKey(message.wParam, GetKeyState(VK_CONTROL) < 0)) return false;
  }
  return IsDialogMessageW(Handle(), &message) != FALSE;
}

void EntityTreeWindow::OnCommand(int id, int notification) {
  switch (id) {
    case ID_TREE_FILTER:
      if (notification == EN_CHANGE) SetTimer(Handle(), FILTER_TIMER, FILTER_DELAY, nullptr);
      return;
    case ID_TREE_SHOW:
      if (notification == BN_CLICKED) ChooseWhatIsShown();
      return;
    case ID_TREE_CLASS:
      if (notification == CBN_DROPDOWN) FillClasses();
      if (notification == CBN_SELCHANGE) TakeClass();
      return;
    case ID_TREE_LAYER:
      if (notification == CBN_DROPDOWN) FillLayers();
      if (notification == CBN_SELCHANGE) TakeLayer();
      return;
    case IDOK:
      if (GetFocus() != list_->Handle()) {
        EndFilterText();
        SetFocus(list_->Handle());
      } else if (entity* e = list_->Focused()) {
        Centre(*e);
      }
      return;
    case IDCANCEL:
      SetDlgItemTextW(Handle(), ID_TREE_FILTER, L"");
      SetFocus(list_->Handle());
      return;
  }
}

void EntityTreeWindow::OnTimer(UINT_PTR id) {
  if (id == FILTER_TIMER) EndFilterText();
  if (id != SCROLL_TIMER || !isDragging_) return;
  POINT mouse;
  if (GetCursorPos(&mouse)) DragTo(mouse);
}

LRESULT EntityTreeWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (isDragging_ &&
      ((message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == WM_CAPTURECHANGED)) {
    return OnDragMessage(message, wParam, lParam);
  }
  switch (message) {
    case WM_CREATE:
      OnCreate();
      break;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED && list_) Layout();
      break;  // the system's own child procedure must see it too
    case ROWS_CHOSEN:
      ApplyRows();
      return 0;
    case WM_TIMER:
      OnTimer(wParam);
      return 0;
    case WM_COMMAND:
      if (list_) OnCommand(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case WM_NOTIFY:
      return list_ ? list_->OnNotify(*reinterpret_cast<NMHDR*>(lParam)) : 0;
    case WM_NOTIFYFORMAT:
      return NFR_UNICODE;
    case WM_CONTEXTMENU:
      OnContextMenu(reinterpret_cast<HWND>(wParam),
                    {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
      return 0;
    case WM_CTLCOLORSTATIC:
      SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetStockObject(LTGRAY_BRUSH));
    case WM_SETFOCUS:
      if (list_) SetFocus(list_->Handle());
      break;
    case WM_DESTROY:
      context_.options.entityTreePlace = PlaceText(Handle(), context_.options.entityTreePlace);
      break;
    case WM_CLOSE:
      windows_.Close(*this);
      return 0;
  }
  return DefMDIChildProcA(Handle(), message, wParam, lParam);
}

}  // namespace ferrowand
