#include "shell/system/list_columns.h"

#include <commctrl.h>

namespace ferrowand {

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

}  // namespace ferrowand
