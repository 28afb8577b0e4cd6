#include "shell/system/controls.h"

#include <algorithm>

#include "shell/system/display_scale.h"

namespace ferrowand {

HWND AddControl(HWND parent, const wchar_t* windowClass, const wchar_t* text, DWORD style, int id,
                DWORD extendedStyle) {
  const HWND control = CreateWindowExW(
      extendedStyle, windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  return control;
}

void PlaceControl(HWND parent, int id, int left, int top, int width, int height) {
  MoveWindow(GetDlgItem(parent, id), left, top, std::max(width, 0), std::max(height, 0), TRUE);
}

std::wstring WindowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

bool IsTicked(HWND parent, int id) {
  return IsDlgButtonChecked(parent, id) == BST_CHECKED;
}

void AddChoice(HWND combo, const std::wstring& text) {
  SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

int AddLine(HWND list, const std::wstring& text) {
  return static_cast<int>(
      SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())));
}

LRESULT OnGrey(WPARAM dc) {
  SetBkMode(reinterpret_cast<HDC>(dc), TRANSPARENT);
  return reinterpret_cast<LRESULT>(GetStockObject(LTGRAY_BRUSH));
}

}  // namespace ferrowand
