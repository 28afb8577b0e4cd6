#include "shell/frame/toolbar.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

#include "base/command_table.h"
#include "shell/frame/tool_pictures.h"
#include "shell/system/display_scale.h"

namespace ferrowand {
namespace {

constexpr int ROW_EDGE = 2;  // pixels, of the line above and below

// Buttons behind which a gap stands.
bool EndsGroup(std::size_t index) {
  constexpr std::size_t LAST[] = {5, 7, 9, 11, 13, 17, 19, 21, 24, 26, 31, 32};
  for (const std::size_t last : LAST) {
    if (last == index) return true;
  }
  return false;
}

TBBUTTON Gap() {
  TBBUTTON gap{};
  gap.fsStyle = BTNS_SEP;
  return gap;
}

}  // namespace

bool Toolbar::Create(HWND owner, HINSTANCE instance) {
  window_ = CreateWindowExA(0, TOOLBARCLASSNAMEA, "",
                            WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_TOOLTIPS |
                                TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_WRAPABLE,
                            0, 0, 0, 0, owner, nullptr, instance, nullptr);
  if (!window_) return false;
  SendMessageA(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageA(window_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
  SendMessageA(window_, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  // Not every system greys pictures that let things through by itself.
  for (const bool isGrey : {false, true}) {
    SendMessageA(window_, isGrey ? TB_SETDISABLEDIMAGELIST : TB_SETIMAGELIST, 0,
                 reinterpret_cast<LPARAM>(LoadToolPictures(instance, isGrey)));
  }

  const auto& buttons = ToolbarButtons();
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    TBBUTTON button{};
    button.iBitmap = static_cast<int>(i);
    button.idCommand = static_cast<int>(Id(buttons[i].command));
    const bool hasText = buttons[i].command == Command::ToolRotationStep;
    button.fsStyle = hasText ? BTNS_AUTOSIZE | BTNS_SHOWTEXT : BTNS_BUTTON;
    SendMessageA(window_, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
    if (!EndsGroup(i)) continue;
    const TBBUTTON gap = Gap();
    SendMessageA(window_, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&gap));
  }
  return true;
}

void Toolbar::Destroy() {
  if (!window_) return;
  const auto pictures = [this](UINT which) {
    return reinterpret_cast<HIMAGELIST>(SendMessageA(window_, which, 0, 0));
  };
  const HIMAGELIST lists[] = {pictures(TB_GETIMAGELIST), pictures(TB_GETDISABLEDIMAGELIST)};
  DestroyWindow(window_);
  for (const HIMAGELIST list : lists) ImageList_Destroy(list);
  window_ = nullptr;
  shownStep_ = 0;
}

int Toolbar::Fit() {
  if (!window_) return 0;
  SendMessageA(window_, TB_AUTOSIZE, 0, 0);
  RECT place;
  GetWindowRect(window_, &place);
  // Some systems leave room for a row more than there are.
  RECT first{}, last{};
  const LRESULT count = SendMessageA(window_, TB_BUTTONCOUNT, 0, 0);
  SendMessageA(window_, TB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
  SendMessageA(window_, TB_GETITEMRECT, static_cast<WPARAM>(count - 1),
               reinterpret_cast<LPARAM>(&last));
  return std::min(place.bottom - place.top, last.bottom + first.top + Scaled(ROW_EDGE));
}

void Toolbar::SetStates(const Ask& isAvailable, const Ask& isChecked) {
  if (!window_) return;
  for (const ToolbarButton& button : ToolbarButtons()) {
    const unsigned id = Id(button.command);
    const LRESULT state =
        (isAvailable(id) ? TBSTATE_ENABLED : 0) | (isChecked(id) ? TBSTATE_CHECKED : 0);
    if (SendMessageA(window_, TB_GETSTATE, id, 0) != state) {
      SendMessageA(window_, TB_SETSTATE, id, state);
    }
  }
}

void Toolbar::ShowRotationStep(int degrees) {
  if (!window_ || degrees == shownStep_) return;
  shownStep_ = degrees;
  std::wstring text = std::to_wstring(degrees) + L'\u00B0';
  TBBUTTONINFOW button{};
  button.cbSize = sizeof button;
  button.dwMask = TBIF_TEXT;
  button.pszText = text.data();
  SendMessageW(window_, TB_SETBUTTONINFOW, Id(Command::ToolRotationStep),
               reinterpret_cast<LPARAM>(&button));
}

}  // namespace ferrowand
