#include "shell/windows/layer_list.h"

#include <uxtheme.h>
#include <vssym32.h>
#include <windowsx.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "document/classes/native_classes.h"
#include "document/map.h"
#include "operations/layers.h"
#include "shell/system/display_scale.h"
#include "shell/system/gdi_canvas.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

enum Column { NAME, OBJECTS, VISIBLE, ENABLED, CURRENT };
constexpr const char* HEADINGS[] = {"Layer", "Objects", "Visible", "Enabled", "Current"};
constexpr int COLUMNS = static_cast<int>(std::size(HEADINGS));

// Pixels at the usual size of letters.
constexpr int HEADING_MARGIN = 18, SMALLEST_NAME = 70;
constexpr int SWATCH_WIDTH = 24, ROW_HEIGHT = 18, SWATCH_INSET = 3;

LayerAction ActionOf(int column) {
  return column == VISIBLE   ? LayerAction::ToggleVisible
         : column == ENABLED ? LayerAction::ToggleEnabled
                             : LayerAction::MakeCurrent;
}

// A check box, or a radio button, in the middle of the cell, as the system draws them now.
void DrawSwitch(HWND window, HDC dc, const RECT& cell, bool isRadio, bool on) {
  const int side = GetSystemMetrics(SM_CXMENUCHECK);
  const int left = (cell.left + cell.right - side) / 2, top = (cell.top + cell.bottom - side) / 2;
  RECT box{left, top, left + side, top + side};
  if (const HTHEME theme = OpenThemeData(window, L"BUTTON")) {
    DrawThemeBackground(theme, dc, isRadio ? BP_RADIOBUTTON : BP_CHECKBOX,
                        on ? CBS_CHECKEDNORMAL : CBS_UNCHECKEDNORMAL, &box, nullptr);
    CloseThemeData(theme);
    return;
  }
  const UINT kind = isRadio ? DFCS_BUTTONRADIO : DFCS_BUTTONCHECK;
  DrawFrameControl(dc, &box, DFC_BUTTON, kind | (on ? DFCS_CHECKED : 0));
}

void DrawSwatch(HDC dc, RECT place, Colour colour) {
  const int inset = Scaled(SWATCH_INSET);
  InflateRect(&place, -inset, -inset);
  const OwnedBrush brush(CreateSolidBrush(ToColorRef(colour)));
  FillRect(dc, &place, brush.get());
  FrameRect(dc, &place, GetSysColorBrush(COLOR_WINDOWTEXT));
}

}  // namespace

LRESULT CALLBACK LayerListFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* list = static_cast<LayerList*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
    list->window_ = window;
    SetObject(window, list);
  }
  auto* list = ObjectOf<LayerList>(window);
  return list ? list->OnMessage(message, wParam, lParam)
              : DefWindowProcA(window, message, wParam, lParam);
}

LayerList::LayerList(HWND dialog, int id, const Map& map, LayerListHost& host)
    : map_(map), host_(host), switch_(VISIBLE), clicked_(NAME) {
  CreateWindowExA(WS_EX_CONTROLPARENT, LAYER_LIST_CLASS, "",
                  WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 0, 0, dialog,
                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                  this);
  // Before the buttons, in the order of Tab.
  SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

LayerList::~LayerList() {
  if (window_) SetObject(window_, nullptr);
}

void LayerList::OnCreate() {
  rows_ = CreateWindowExA(WS_EX_CLIENTEDGE, WC_LISTVIEWA, "Layers",
                          WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL |
                              LVS_SHOWSELALWAYS | LVS_EDITLABELS | LVS_OWNERDATA | LVS_NOSORTHEADER,
                          0, 0, 0, 0, window_, nullptr, GetModuleHandleA(nullptr), nullptr);
  SendMessageA(rows_, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  ListView_SetExtendedListViewStyle(rows_,
                                    LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  // Empty pictures keep the room of the swatches and set the height of the rows.
  ListView_SetImageList(rows_,
                        ImageList_Create(Scaled(SWATCH_WIDTH), Scaled(ROW_HEIGHT), ILC_MASK, 0, 1),
                        LVSIL_SMALL);
  AddColumns();
}

void LayerList::AddColumns() {
  for (int i = 0; i < COLUMNS; ++i) {
    LVCOLUMNA column{};
    column.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH;
    column.fmt = i == NAME ? LVCFMT_LEFT : i == OBJECTS ? LVCFMT_RIGHT : LVCFMT_CENTER;
    column.pszText = const_cast<char*>(HEADINGS[i]);
    column.cx = static_cast<int>(SendMessageA(rows_, LVM_GETSTRINGWIDTHA, 0,
                                              reinterpret_cast<LPARAM>(HEADINGS[i]))) +
                Scaled(HEADING_MARGIN);
    SendMessageA(rows_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(&column));
  }
}

// The names get what the other columns leave.
void LayerList::FitColumns() const {
  RECT area;
  GetClientRect(rows_, &area);
  int others = 0;
  for (int i = NAME + 1; i < COLUMNS; ++i) others += ListView_GetColumnWidth(rows_, i);
  ListView_SetColumnWidth(rows_, NAME,
                          std::max(static_cast<int>(area.right) - others, Scaled(SMALLEST_NAME)));
}

std::vector<LayerList::Row> LayerList::ReadRows() const {
  std::vector<Row> rows;
  for (entity* layer : LayersOf(map_)) {
    const char* name = layer->GetKey("XMPentityname");
    rows.push_back({layer, name ? name : "", LayerColour(*layer), layer->IsVisible(),
                    layer->IsEnabled(), layer == map_.currentLayer(),
                    layer->getEntityList().size()});
  }
  return rows;
}

void LayerList::Refresh() {
  std::vector<Row> rows = ReadRows();
  if (rows == shown_) return;
  DropRename();
  const int index = SelectedIndex();
  const entity* selected = index >= 0 ? shown_[static_cast<std::size_t>(index)].layer : nullptr;
  const auto has = [](const std::vector<Row>& all, const entity* layer) {
    return std::ranges::find(all, layer, &Row::layer) != all.end();
  };
  // A current layer that has just come is what the user looks for.
  const bool keeps = has(rows, selected) && has(shown_, map_.currentLayer());
  shown_ = std::move(rows);
  ListView_SetItemCountEx(rows_, static_cast<int>(shown_.size()), LVSICF_NOSCROLL);
  FitColumns();
  Select(keeps ? selected : map_.currentLayer());
  InvalidateRect(rows_, nullptr, FALSE);
}

// Some systems tell of the text even then.
void LayerList::DropRename() {
  if (std::exchange(renameEnds_, true)) return;
  ListView_CancelEditLabel(rows_);
  renameEnds_ = false;
}

int LayerList::SelectedIndex() const {
  const int index = ListView_GetNextItem(rows_, -1, LVNI_SELECTED);
  return index < static_cast<int>(shown_.size()) ? index : -1;
}

entity* LayerList::LayerAt(int index) const {
  if (index < 0 || index >= static_cast<int>(shown_.size())) return nullptr;
  const std::vector<entity*> layers = LayersOf(map_);
  const auto found = std::ranges::find(layers, shown_[static_cast<std::size_t>(index)].layer);
  return found == layers.end() ? nullptr : *found;
}

entity* LayerList::Selected() const {
  return LayerAt(SelectedIndex());
}

void LayerList::Select(const entity* layer) {
  const auto row = std::ranges::find(shown_, layer, &Row::layer);
  const int index = row == shown_.end() ? 0 : static_cast<int>(row - shown_.begin());
  ChooseRow(rows_, index);
}

void LayerList::BeginRename() {
  SetFocus(rows_);
  renames_ = true;
  SendMessageA(rows_, LVM_EDITLABELA, static_cast<WPARAM>(SelectedIndex()), 0);
  renames_ = false;
}

// A click may rename, but not the one of two that has just chosen the row.
bool LayerList::MayRename() const {
  if (renames_) return true;
  const auto since = static_cast<DWORD>(clickedAt_ - selectedAt_);
  return clicked_ == NAME && since >= GetDoubleClickTime();
}

void LayerList::OnSelected() {
  const entity* layer = Selected();
  // The system may select a row anew before its name is typed over.
  if (layer && std::exchange(selected_, layer) != layer) selectedAt_ = GetMessageTime();
  host_.SelectedLayerChanged();
}

void LayerList::GiveText(LVITEMA& item) const {
  if (item.iItem < 0 || item.iItem >= static_cast<int>(shown_.size())) return;
  const Row& row = shown_[static_cast<std::size_t>(item.iItem)];
  if (item.mask & LVIF_IMAGE) item.iImage = 0;
  if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return;
  const std::string text = item.iSubItem == NAME      ? AsUtf8(row.name)
                           : item.iSubItem == OBJECTS ? std::to_string(row.objects)
                                                      : "";
  lstrcpynA(item.pszText, text.c_str(), item.cchTextMax);
}

RECT LayerList::CellOf(int index, int column) const {
  RECT cell{};
  ListView_GetSubItemRect(rows_, index, column, LVIR_BOUNDS, &cell);
  return cell;
}

void LayerList::DrawRow(HDC dc, int index) const {
  if (index < 0 || index >= static_cast<int>(shown_.size())) return;
  const Row& row = shown_[static_cast<std::size_t>(index)];
  RECT swatch{};
  ListView_GetItemRect(rows_, index, &swatch, LVIR_ICON);
  DrawSwatch(dc, swatch, row.colour);
  DrawSwitch(rows_, dc, CellOf(index, VISIBLE), false, row.visible);
  DrawSwitch(rows_, dc, CellOf(index, ENABLED), false, row.enabled);
  DrawSwitch(rows_, dc, CellOf(index, CURRENT), true, row.current);
  if (GetFocus() != rows_ || index != ListView_GetNextItem(rows_, -1, LVNI_FOCUSED)) return;
  RECT cell = CellOf(index, switch_);
  InflateRect(&cell, -1, -1);
  DrawFocusRect(dc, &cell);
}

LRESULT LayerList::OnCustomDraw(NMLVCUSTOMDRAW& draw) const {
  const auto index = static_cast<int>(draw.nmcd.dwItemSpec);
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: {
      // What cannot be reached in the views stands back here too.
      const bool isRow = index < static_cast<int>(shown_.size());
      const Row* row = isRow ? &shown_[static_cast<std::size_t>(index)] : nullptr;
      if (row && !(row->visible && row->enabled)) draw.clrText = GetSysColor(COLOR_GRAYTEXT);
      return CDRF_NOTIFYPOSTPAINT;
    }
    case CDDS_ITEMPOSTPAINT:
      DrawRow(draw.nmcd.hdc, index);
      return CDRF_DODEFAULT;
  }
  return CDRF_DODEFAULT;
}

void LayerList::OnClick(const NMITEMACTIVATE& click, bool twice) {
  entity* layer = LayerAt(click.iItem);
  if (!layer) return;
  clicked_ = click.iSubItem;
  clickedAt_ = GetMessageTime();
  if (click.iSubItem >= VISIBLE) {
    switch_ = click.iSubItem;
    // The second press of two in a row counts like the first.
    return host_.Perform(ActionOf(click.iSubItem), *layer);
  }
  if (!twice) return;
  LVHITTESTINFO hit{};
  hit.pt = click.ptAction;
  SendMessageA(rows_, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  const bool onSwatch = click.iSubItem == NAME && (hit.flags & LVHT_ONITEMICON) != 0;
  host_.Perform(onSwatch ? LayerAction::ChooseColour : LayerAction::MakeCurrent, *layer);
}

void LayerList::OnKey(WORD key) {
  entity* layer = Selected();
  if (!layer) return;
  switch (key) {
    case VK_SPACE:
      return host_.Perform(ActionOf(switch_), *layer);
    case VK_DELETE:
      return host_.Perform(LayerAction::Remove, *layer);
    case VK_F2:
      return BeginRename();
    case VK_LEFT:
    case VK_RIGHT:
      switch_ = std::clamp(switch_ + (key == VK_LEFT ? -1 : 1), +VISIBLE, +CURRENT);
      InvalidateRect(rows_, nullptr, FALSE);
      return;
  }
}

void LayerList::OnContextMenu(WPARAM wParam, LPARAM lParam) {
  entity* layer = Selected();
  if (!layer || reinterpret_cast<HWND>(wParam) != rows_) return;
  POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  if (lParam == -1) {  // the key: beside the name
    const RECT cell = CellOf(SelectedIndex(), OBJECTS);
    at = {cell.left, cell.bottom};
    ClientToScreen(rows_, &at);
  }
  host_.ShowPopup(*layer, at);
}

void LayerList::OnRenamed(const LVITEMA& item) {
  entity* layer = LayerAt(item.iItem);
  if (!layer || !item.pszText || std::exchange(renameEnds_, true)) return;
  host_.Rename(*layer, item.pszText);
  renameEnds_ = false;
}

LRESULT LayerList::OnNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOA:
      GiveText(reinterpret_cast<NMLVDISPINFOA&>(header).item);
      return 0;
    case LVN_ODFINDITEMA:
    case LVN_ODFINDITEMW:
      return -1;  // letters are commands here
    case NM_CUSTOMDRAW:
      return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    case NM_CLICK:
    case NM_DBLCLK:
      OnClick(reinterpret_cast<const NMITEMACTIVATE&>(header), header.code == NM_DBLCLK);
      return 0;
    case LVN_KEYDOWN:
      OnKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
      return 0;
    case LVN_BEGINLABELEDITA:
      return !MayRename();
    case LVN_ENDLABELEDITA:
      OnRenamed(reinterpret_cast<const NMLVDISPINFOA&>(header).item);
      return FALSE;  // the row shows what the map says
    case LVN_ITEMCHANGED:
      OnSelected();
      return 0;
  }
  return 0;
}

LRESULT LayerList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      OnCreate();
      return 0;
    case WM_SIZE:
      MoveWindow(rows_, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
      FitColumns();
      return 0;
    case WM_SETFOCUS:
      SetFocus(rows_);
      return 0;
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_CONTEXTMENU:
      OnContextMenu(wParam, lParam);
      return 0;
    case WM_NCDESTROY: {
      const HWND window = window_;
      SetObject(window, nullptr);
      window_ = rows_ = nullptr;
      return DefWindowProcA(window, message, wParam, lParam);
    }
  }
  return DefWindowProcA(window_, message, wParam, lParam);
}

}  // namespace ferrowand
