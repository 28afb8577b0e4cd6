#include "shell/system/list_columns.h"

#include <commctrl.h>

#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

constexpr int TEXT_MARGIN = 14;  // pixels at the usual size of letters

}  // namespace

void AddListColumns(HWND list, std::span<const wchar_t* const> headings,
                    std::span<const int> shares) {
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  RECT area;
  GetClientRect(list, &area);
  const int room = static_cast<int>(area.right) - GetSystemMetrics(SM_CXVSCROLL);
  for (std::size_t i = 0; i < headings.size(); ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = room * shares[i] / 100;
    column.pszText = const_cast<wchar_t*>(headings[i]);
    SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
}

HWND AddLineList(HWND parent, int id) {
  const HWND list = AddControl(parent, WC_LISTVIEWW, L"",
                               WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_OWNERDATA |
                                   LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                               id);
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  LVCOLUMNW column{};
  column.mask = LVCF_WIDTH;
  SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  return list;
}

int WidthFor(HWND list, const std::string& text) {
  const std::wstring wide = ToWide(text);
  const LRESULT width =
      SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(wide.c_str()));
  return static_cast<int>(width) + Scaled(TEXT_MARGIN);
}

void ChooseRow(HWND list, int row) {
  ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(list, row, FALSE);
}

void PaintAsTarget(NMLVCUSTOMDRAW& draw) {
  draw.clrText = GetSysColor(COLOR_HIGHLIGHTTEXT);
  draw.clrTextBk = GetSysColor(COLOR_HIGHLIGHT);
  draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);  // whose colours would go before
}

}  // namespace ferrowand
