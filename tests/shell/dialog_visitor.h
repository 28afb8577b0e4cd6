// Looking at windows, and doing what a user does in a dialog while that waits for him.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/text_box.h"
#include "shell/system/wide_text.h"

namespace ferrowand {

inline RECT PlaceOf(HWND window) {
  RECT place;
  GetWindowRect(window, &place);
  MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

inline std::vector<HWND> ShownChildren(HWND parent) {
  std::vector<HWND> shown;
  for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) shown.push_back(child);
  }
  return shown;
}

// Of a list, as the system has it.
inline std::string CellOf(HWND list, int row, int column) {
  wchar_t text[300] = L"";
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = text;
  item.cchTextMax = 300;
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  return FromWide(item.pszText);
}

inline LONG TextWidth(HWND window) {
  const HDC dc = GetDC(window);
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageA(window, WM_GETFONT, 0, 0));
  const HGDIOBJ before = SelectObject(dc, font);
  RECT needed{};
  DrawTextW(dc, WindowText(window).c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(dc, before);
  ReleaseDC(window, dc);
  return needed.right;
}

inline bool IsButtonOf(HWND window, LONG type) {
  return ClassOf(window) == "Button" && (GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK) == type;
}
inline bool IsFrame(HWND window) {
  return IsButtonOf(window, BS_GROUPBOX);
}
inline bool IsCheckBox(HWND window) {
  return IsButtonOf(window, BS_AUTOCHECKBOX);
}

inline void ExpectTidy(HWND parent) {
  RECT area, both;
  GetClientRect(parent, &area);
  const std::vector<HWND> children = ShownChildren(parent);
  for (const HWND child : children) {
    const RECT place = PlaceOf(child);
    const std::string name = ClassOf(child) + " " + FromWide(WindowText(child));
    UnionRect(&both, &area, &place);
    EXPECT_TRUE(EqualRect(&both, &area)) << name << " stands out";
    for (const HWND other : children) {
      const RECT second = PlaceOf(other);
      EXPECT_TRUE(other == child || IsFrame(child) || IsFrame(other) ||
                  !IntersectRect(&both, &place, &second))
          << name << " covers " << FromWide(WindowText(other));
    }
    const LONG box = IsCheckBox(child) ? Scaled(16) : 0;
    const bool isText = ClassOf(child) == "Static" || ClassOf(child) == "Button";
    const LONG style = GetWindowLongA(child, GWL_STYLE);
    if (ClassOf(child) == WC_LISTVIEWA && (style & LVS_TYPEMASK) == LVS_REPORT) {
      EXPECT_GT(Header_GetItemCount(ListView_GetHeader(child)), 0) << "a list without columns";
    }
    const bool isOwn = (style & BS_TYPEMASK) == BS_OWNERDRAW;
    if (isText && !isOwn && (style & SS_ELLIPSISMASK) == 0) {
      EXPECT_LE(TextWidth(child) + box, place.right - place.left) << name;
    }
  }
}

// Looks at the dialog of the system that is opened next; what it does last is to close it.
class Visitor {
 public:
  explicit Visitor(std::function<void(HWND)> look) {
    visit = std::move(look);
    timer_ = SetTimer(nullptr, 0, 20, OnTimer);
  }
  ~Visitor() { KillTimer(nullptr, timer_); }

 private:
  static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    const HWND dialog = GetActiveWindow();
    if (!dialog || ClassOf(dialog) != "#32770" || !visit) return;
    std::exchange(visit, nullptr)(dialog);
  }
  static inline std::function<void(HWND)> visit;
  UINT_PTR timer_;
};

}  // namespace ferrowand
