#include "shell/frame/tips.h"

#include "base/options.h"
#include "shell/resources/resource.h"
#include "shell/system/gdi_canvas.h"

namespace ferrowand {
namespace {

constexpr const char* TIPS[] = {
    "Hold Space and move the mouse to drag the map through a view. You never run out of desk: "
    "the cursor comes back to the middle when it nears the edge.",
    "Hold D and click a place in a 2D view to zoom in on it. Hold Shift+D and click to zoom out.",
    "The keys [ and ] make the grid smaller and larger. With Shift they do so in every view of "
    "the map.",
    "The key g switches the grid and snapping together. The View menu switches them one by one.",
    "Ctrl+Q puts the views of a map back into the four quarters of the window.",
    "The mouse wheel scrolls a view, with Shift sideways. With Ctrl it zooms about the cursor.",
    "Save as Extended Map (.xmp) while you work: it keeps layers, groups and hidden objects. "
    "File/Export/Quake writes the .map for the compilers beside it.",
    "Drop map files on the main window to open them.",
    "The name of a map in the titles is the \"message\" of its worldspawn, the words that the "
    "game shows when the level starts.",
    "The small button at the lower left of a view hides its controls and gives the room to the "
    "map. The view's window menu brings them back.",
    "Heights mode shows what lies level with the selection; 1x1MipMap mode draws the map in the "
    "colours of its textures.",
};

}  // namespace

void Tips::Show(HINSTANCE instance, HWND owner) {
  if (dialog_) return;
  tip_ = GetTickCount() % std::size(TIPS);  // another one each time, roughly
  CreateDialogParamA(instance, MAKEINTRESOURCEA(ID_TIPS), owner, TipsFunc,
                     reinterpret_cast<LPARAM>(this));
  if (dialog_) ShowWindow(dialog_, SW_SHOW);
}

void Tips::Close() {
  if (dialog_) DestroyWindow(dialog_);
}

INT_PTR CALLBACK Tips::TipsFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetObject(dialog, reinterpret_cast<void*>(lParam));
    ObjectOf<Tips>(dialog)->OnInit(dialog);
    SetFocus(GetDlgItem(dialog, IDCANCEL));
    return FALSE;  // the focus has been set
  }
  auto* tips = ObjectOf<Tips>(dialog);
  if (!tips) return FALSE;
  switch (message) {
    case WM_COMMAND:
      tips->OnCommand(LOWORD(wParam));
      return TRUE;
    case WM_CLOSE:
      tips->Close();
      return TRUE;
    case WM_NCDESTROY:
      tips->dialog_ = nullptr;
      SetObject(dialog, nullptr);
      return TRUE;
  }
  return FALSE;
}

void Tips::OnInit(HWND dialog) {
  dialog_ = dialog;
  SendDlgItemMessageA(dialog, ID_TIPS_HEADING, WM_SETFONT,
                      reinterpret_cast<WPARAM>(objects_.HeadingFont()), 0);
  CheckDlgButton(dialog, ID_TIPS_AT_START, options_.showTips ? BST_CHECKED : BST_UNCHECKED);
  ShowTip();
}

void Tips::OnCommand(int id) {
  switch (id) {
    case ID_TIPS_NEXT:
      tip_ = (tip_ + 1) % std::size(TIPS);
      return ShowTip();
    case ID_TIPS_AT_START:
      options_.showTips = IsDlgButtonChecked(dialog_, ID_TIPS_AT_START) == BST_CHECKED;
      return;
    case IDCANCEL:
      return Close();
  }
}

void Tips::ShowTip() {
  SetDlgItemTextA(dialog_, ID_TIPS_TEXT, TIPS[tip_]);
}

}  // namespace ferrowand
