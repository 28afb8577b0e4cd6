#include "shell/windows/entity_tree_list.h"

#include <windowsx.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "document/map.h"
#include "document/reach.h"
#include "shell/system/display_scale.h"
#include "shell/system/handles.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// In the order of ObjectColumn.
constexpr const wchar_t* HEADINGS[] = {L"Name", L"Class", L"Links", L"State", L"Details"};
constexpr int COLUMNS = static_cast<int>(std::size(HEADINGS));
// Of the room that there is, in hundredths.
constexpr std::array<int, COLUMNS> SHARES{32, 22, 18, 11, 17};

// Pixels at the usual size of letters.
constexpr int NODE_SIDE = 16, ARROW_INSET = 4;
constexpr COLORREF UNDER_NODES = RGB(255, 0, 255);

enum Node { NO_NODE, CLOSED_NODE, OPEN_NODE, NODES };

// An arrow to the right, or downwards.
void DrawNode(HDC dc, int left, int side, bool isOpen) {
  const int inset = Scaled(ARROW_INSET), low = inset, high = side - inset, middle = side / 2;
  const std::array<POINT, 3> open{
      {{low, middle - inset / 2}, {high, middle - inset / 2}, {middle, high}}};
  const std::array<POINT, 3> closed{
      {{middle - inset / 2, low}, {high, middle}, {middle - inset / 2, high}}};
  std::array<POINT, 3> corners = isOpen ? open : closed;
  for (POINT& corner : corners) corner.x += left;
  const HGDIOBJ brush = SelectObject(dc, GetStockObject(DKGRAY_BRUSH));
  const HGDIOBJ pen = SelectObject(dc, GetStockObject(NULL_PEN));
  Polygon(dc, corners.data(), static_cast<int>(corners.size()));
  SelectObject(dc, pen);
  SelectObject(dc, brush);
}

HIMAGELIST MakeNodes() {
  const int side = Scaled(NODE_SIDE);
  const HDC screen = GetDC(nullptr);
  const OwnedDc dc(CreateCompatibleDC(screen));
  const OwnedBitmap bitmap(CreateCompatibleBitmap(screen, NODES * side, side));
  ReleaseDC(nullptr, screen);
  const HGDIOBJ before = SelectObject(dc.get(), bitmap.get());
  const OwnedBrush under(CreateSolidBrush(UNDER_NODES));
  const RECT all{0, 0, NODES * side, side};
  FillRect(dc.get(), &all, under.get());
  DrawNode(dc.get(), CLOSED_NODE * side, side, false);
  DrawNode(dc.get(), OPEN_NODE * side, side, true);
  SelectObject(dc.get(), before);
  const HIMAGELIST nodes = ImageList_Create(side, side, ILC_COLOR24 | ILC_MASK, NODES, 0);
  ImageList_AddMasked(nodes, bitmap.get(), UNDER_NODES);
  return nodes;
}

Node NodeOf(const TreeRow& row) {
  return !row.canOpen ? NO_NODE : row.isOpen ? OPEN_NODE : CLOSED_NODE;
}

bool IsOutOfReach(const entity& e) {
  const entity* at = &e;
  while (at->Parent() && IsOpen(*at)) at = at->Parent();
  return at->Parent() != nullptr;
}

}  // namespace

EntityTreeList::EntityTreeList(HWND parent, int id, Map& map, EntityTree& tree,
                               EntityTreeHost& host)
    : map_(map), tree_(tree), host_(host) {
  list_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"Objects",
                          WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA |
                              LVS_SHOWSELALWAYS | LVS_EDITLABELS | LVS_NOSORTHEADER,
                          0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                          GetModuleHandleA(nullptr), nullptr);
  SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  ListView_SetExtendedListViewStyle(list_,
                                    LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  ListView_SetImageList(list_, MakeNodes(), LVSIL_SMALL);  // which the list destroys
  AddColumns();
  // By hand: the system's own way asks elsewhere at every message, which some systems take long to
  // answer.
  SetObject(list_, this);
  ownFunc_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(list_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ListFunc)));
  Refresh(TreeUpdate::Rows);
}

EntityTreeList::~EntityTreeList() {
  if (!IsWindow(list_)) return;
  SetWindowLongPtrW(list_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ownFunc_));
}

void EntityTreeList::AddColumns() const {
  for (int i = 0; i < COLUMNS; ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = const_cast<wchar_t*>(HEADINGS[i]);
    SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(&column));
  }
}

void EntityTreeList::FitColumns() const {
  RECT area;
  GetWindowRect(list_, &area);
  const int room = static_cast<int>(area.right - area.left) - GetSystemMetrics(SM_CXVSCROLL) -
                   2 * GetSystemMetrics(SM_CXEDGE);
  for (int i = 0; i < COLUMNS; ++i) {
    ListView_SetColumnWidth(list_, i, room * SHARES[static_cast<std::size_t>(i)] / 100);
  }
}

// --- what is chosen

entity* EntityTreeList::AtRow(int row) const {
  const auto index = static_cast<std::size_t>(row);
  return row >= 0 && index < tree_.Rows().size() ? tree_.Rows()[index].e : nullptr;
}

std::vector<int> EntityTreeList::ChosenRows() const {
  std::vector<int> rows;
  if (ListView_GetSelectedCount(list_) == 0) return rows;
  for (int row = ListView_GetNextItem(list_, -1, LVNI_SELECTED); row >= 0;
       row = ListView_GetNextItem(list_, row, LVNI_SELECTED)) {
    rows.push_back(row);
  }
  return rows;
}

std::vector<entity*> EntityTreeList::Chosen() const {
  std::vector<entity*> objects;
  for (const int row : ChosenRows()) {
    if (entity* e = AtRow(row)) objects.push_back(e);
  }
  return objects;
}

entity* EntityTreeList::Focused() const {
  return AtRow(ListView_GetNextItem(list_, -1, LVNI_FOCUSED));
}

entity* EntityTreeList::At(POINT screen) const {
  LVHITTESTINFO hit{};
  hit.pt = screen;
  ScreenToClient(list_, &hit.pt);
  return AtRow(ListView_HitTest(list_, &hit));
}

std::vector<std::pair<int, bool>> EntityTreeList::RowsToMark() const {
  std::vector<std::pair<int, bool>> rows;
  const std::vector<int> before = ChosenRows();
  auto next = before.begin();
  for (int row = 0; row < static_cast<int>(tree_.Rows().size()); ++row) {
    const entity& e = *tree_.Rows()[static_cast<std::size_t>(row)].e;
    const bool isChosen = next != before.end() && *next == row;
    if (isChosen) ++next;
    const bool isWanted = map_.selection.Contains(e) || own_.contains(&e);
    if (isWanted != isChosen) rows.emplace_back(row, isWanted);
  }
  return rows;
}

void EntityTreeList::MarkRows() {
  constexpr std::size_t FEW = 50;  // whose places are not worth painting all that is seen
  const auto rows = RowsToMark();
  isMarking_ = true;
  if (rows.size() > FEW) SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
  for (const auto& [row, isWanted] : rows) {
    ListView_SetItemState(list_, row, isWanted ? LVIS_SELECTED : 0, LVIS_SELECTED);
  }
  isMarking_ = false;
  if (rows.size() <= FEW) return;
  SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list_, nullptr, FALSE);
}

void EntityTreeList::FocusRow(int row) const {
  ListView_SetItemState(list_, row, LVIS_FOCUSED, LVIS_FOCUSED);
}

void EntityTreeList::Refresh(TreeUpdate update) {
  if (update == TreeUpdate::None) return;
  DropRename();
  if (update == TreeUpdate::Rows) {
    isMarking_ = true;
    ListView_SetItemCountEx(list_, static_cast<int>(tree_.Rows().size()), LVSICF_NOSCROLL);
    const auto row = focused_ ? tree_.RowOf(*focused_) : std::nullopt;
    if (row) FocusRow(static_cast<int>(*row));
    isMarking_ = false;
    MarkRows();
  }
  InvalidateRect(list_, nullptr, FALSE);
}

void EntityTreeList::ShowSelection() {
  if (isApplying_) return;
  own_.clear();
  if (!map_.selection.empty()) {
    const entity& first = *map_.selection.front();
    const std::size_t before = tree_.Rows().size();
    const bool hasRow = tree_.Reveal(first);
    if (tree_.Rows().size() != before) Refresh(TreeUpdate::Rows);
    if (hasRow) {
      const int row = static_cast<int>(*tree_.RowOf(first));
      isMarking_ = true;
      FocusRow(row);
      isMarking_ = false;
      focused_ = &first;
      ListView_EnsureVisible(list_, row, FALSE);
    }
  }
  MarkRows();
}

// With Ctrl held rows come and go one by one: then what has no row stays selected.
void EntityTreeList::ApplyRows() {
  const std::vector<entity*> chosen = Chosen();
  const std::unordered_set<const entity*> wanted(chosen.begin(), chosen.end());
  const bool keepsOthers = GetKeyState(VK_CONTROL) < 0;
  std::unordered_set<const entity*> shown;
  if (keepsOthers) {
    for (const TreeRow& row : tree_.Rows()) shown.insert(row.e);
  }
  std::vector<entity*> objects;
  for (entity* e : map_.selection) {
    if (wanted.contains(e) || (keepsOthers && !shown.contains(e))) objects.push_back(e);
  }
  own_.clear();
  const ReachTest reach(map_);
  for (entity* e : chosen) {
    if (!reach(*e)) {
      own_.insert(e);
    } else if (!map_.selection.Contains(*e)) {
      objects.push_back(e);
    }
  }
  isApplying_ = true;
  map_.selection.Set(objects);
  isApplying_ = false;
}

void EntityTreeList::ChooseOnly(std::size_t row) {
  ListView_SetItemState(list_, -1, 0, LVIS_SELECTED);
  ChooseRow(list_, static_cast<int>(row));
}

void EntityTreeList::OnItemChanged(const NMLISTVIEW& change) {
  if (isMarking_) return;
  if ((change.uNewState & LVIS_FOCUSED) != 0) focused_ = AtRow(change.iItem);
  if (((change.uNewState ^ change.uOldState) & LVIS_SELECTED) != 0) host_.RowsChosen();
}

void EntityTreeList::MarkTarget(const entity* e) {
  if (e == target_) return;
  for (const entity* object : {std::exchange(target_, e), e}) {
    const auto row = object ? tree_.RowOf(*object) : std::nullopt;
    if (row) ListView_RedrawItems(list_, static_cast<int>(*row), static_cast<int>(*row));
  }
}

// --- names

void EntityTreeList::BeginRename(const entity& e) {
  const auto row = tree_.RowOf(e);
  if (!row) return;
  SetFocus(list_);
  renames_ = true;
  SendMessageW(list_, LVM_EDITLABELW, *row, 0);
  renames_ = false;
  const char* name = e.GetKey("XMPentityname");
  if (const HWND box = ListView_GetEditControl(list_)) {
    SetWindowTextW(box, ToWide(name ? name : "").c_str());
    SendMessageW(box, EM_SETSEL, 0, -1);
  }
}

// Some systems tell of the text even then.
void EntityTreeList::DropRename() {
  if (std::exchange(renameEnds_, true)) return;
  ListView_CancelEditLabel(list_);
  renameEnds_ = false;
}

LRESULT EntityTreeList::OnRenamed(const LVITEMW& item) {
  entity* e = AtRow(item.iItem);
  if (!e || !item.pszText || std::exchange(renameEnds_, true)) return FALSE;
  host_.Rename(*e, FromWide(item.pszText));
  renameEnds_ = false;
  return FALSE;  // the row shows what the map says
}

// --- what the rows show

void EntityTreeList::GiveRow(LVITEMW& item) {
  if (!AtRow(item.iItem)) return;
  const TreeRow& row = tree_.Rows()[static_cast<std::size_t>(item.iItem)];
  if (item.mask & LVIF_INDENT) item.iIndent = row.depth;
  if (item.mask & LVIF_IMAGE) item.iImage = NodeOf(row);
  if (!(item.mask & LVIF_TEXT)) return;
  text_ = ToWide(CellText(*row.e, static_cast<ObjectColumn>(item.iSubItem)));
  item.pszText = text_.data();
}

LRESULT EntityTreeList::OnCustomDraw(NMLVCUSTOMDRAW& draw) const {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const entity* e = AtRow(static_cast<int>(draw.nmcd.dwItemSpec));
  if (e && IsOutOfReach(*e)) draw.clrText = GetSysColor(COLOR_GRAYTEXT);
  if (e && e == target_) PaintAsTarget(draw);
  return CDRF_DODEFAULT;
}

// --- keys and mouse

void EntityTreeList::OnKey(WORD key) {
  const int row = ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
  entity* e = AtRow(row);
  if (!e) return;
  const TreeRow at = tree_.Rows()[static_cast<std::size_t>(row)];
  switch (key) {
    case VK_F2:
      return BeginRename(*e);
    case VK_RIGHT:
      if (!at.canOpen) return;
      if (at.isOpen) return ChooseOnly(static_cast<std::size_t>(row) + 1);
      return host_.OpenNode(*e, true);
    case VK_LEFT:
      if (at.canOpen && at.isOpen) return host_.OpenNode(*e, false);
      if (const auto above = tree_.RowOf(*e->Parent())) ChooseOnly(*above);
      return;
  }
}

// Opening and closing chooses nothing.
bool EntityTreeList::PressNode(POINT at) const {
  LVHITTESTINFO hit{};
  hit.pt = at;
  const int row = ListView_HitTest(list_, &hit);
  entity* e = AtRow(row);
  if (!e || (hit.flags & LVHT_ONITEMICON) == 0) return false;
  const TreeRow pressed = tree_.Rows()[static_cast<std::size_t>(row)];
  if (!pressed.canOpen) return false;
  SetFocus(list_);
  host_.OpenNode(*e, !pressed.isOpen);
  return true;
}

LRESULT CALLBACK EntityTreeList::ListFunc(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto* self = ObjectOf<EntityTreeList>(list);
  const bool isPress = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
  if (isPress && self->PressNode({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)})) return 0;
  return CallWindowProcW(self->ownFunc_, list, message, wParam, lParam);
}

int EntityTreeList::FindRow(const NMLVFINDITEMW& find) const {
  if ((find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || !find.lvfi.psz) return -1;
  const auto row =
      tree_.Find(FromWide(find.lvfi.psz), static_cast<std::size_t>(std::max(find.iStart, 0)));
  return row ? static_cast<int>(*row) : -1;
}

LRESULT EntityTreeList::OnNotify(NMHDR& header) {
  if (header.hwndFrom != list_) return 0;
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveRow(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case LVN_ODFINDITEMW:
      return FindRow(reinterpret_cast<const NMLVFINDITEMW&>(header));
    case NM_CUSTOMDRAW:
      return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    case LVN_ITEMCHANGED:
      OnItemChanged(reinterpret_cast<const NMLISTVIEW&>(header));
      return 0;
    case LVN_ODSTATECHANGED:
      if (!isMarking_) host_.RowsChosen();
      return 0;
    case LVN_KEYDOWN:
      OnKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
      return 0;
    case NM_DBLCLK:
      if (entity* e = AtRow(reinterpret_cast<const NMITEMACTIVATE&>(header).iItem)) {
        host_.Centre(*e);
      }
      return 0;
    case LVN_BEGINDRAG:
      host_.BeginDrag();
      return 0;
    case LVN_BEGINLABELEDITW:
      return !renames_;
    case LVN_ENDLABELEDITW:
      return OnRenamed(reinterpret_cast<const NMLVDISPINFOW&>(header).item);
  }
  return 0;
}

}  // namespace ferrowand
