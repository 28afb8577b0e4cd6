#include "shell/ui/toolbar.h"

#include <commctrl.h>

#include <array>

#include "shell/services/command_table.h"
#include "shell/ui/resource.h"

namespace ferrowand {
namespace {

constexpr int PICTURE = 16;  // pixels, width and height
constexpr COLORREF TRANSPARENT_COLOUR = RGB(255, 0, 255);

// Buttons behind which a gap stands.
bool EndsGroup(std::size_t index) {
  constexpr std::size_t LAST[] = {5, 7, 9, 11, 13, 17, 19, 21, 24, 26, 31};
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
  window_ =
      CreateWindowExA(0, TOOLBARCLASSNAMEA, "",
                      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_TOOLTIPS | TBSTYLE_FLAT, 0,
                      0, 0, 0, owner, nullptr, instance, nullptr);
  if (!window_) return false;
  SendMessageA(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  const HIMAGELIST pictures = ImageList_LoadImageA(instance, MAKEINTRESOURCEA(ID_TOOLBAR_BITMAP),
                                                   PICTURE, 0, TRANSPARENT_COLOUR, IMAGE_BITMAP, 0);
  SendMessageA(window_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures));

  const auto& buttons = ToolbarButtons();
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    TBBUTTON button{};
    button.iBitmap = static_cast<int>(i);
    button.idCommand = static_cast<int>(Id(buttons[i].command));
    button.fsStyle = BTNS_BUTTON;
    SendMessageA(window_, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
    if (!EndsGroup(i)) continue;
    const TBBUTTON gap = Gap();
    SendMessageA(window_, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&gap));
  }
  return true;
}

void Toolbar::Destroy() {
  if (!window_) return;
  const auto pictures = reinterpret_cast<HIMAGELIST>(SendMessageA(window_, TB_GETIMAGELIST, 0, 0));
  DestroyWindow(window_);
  if (pictures) ImageList_Destroy(pictures);
  window_ = nullptr;
}

int Toolbar::Fit() {
  if (!window_) return 0;
  SendMessageA(window_, TB_AUTOSIZE, 0, 0);
  RECT place;
  GetWindowRect(window_, &place);
  return place.bottom - place.top;
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

}  // namespace ferrowand
