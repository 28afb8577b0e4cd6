#include "shell/windows/map_panel.h"

#include "document/map.h"
#include "shell/frame/frame.h"
#include "shell/system/display_scale.h"
#include "shell/system/text_box.h"
#include "shell/windows/window_place.h"

namespace ferrowand {

MapPanel::MapPanel(ChildWindows& windows, Map& map, const PanelLook& look, std::string* place)
    : PanelWindow(windows), map_(map), look_(look), place_(place) {
  map_.AddObserver(*this);
}

MapPanel::~MapPanel() {
  map_.RemoveObserver(*this);
}

void MapPanel::Open() {
  const PixelSize client = frame_.ClientSize();
  const int width = Scaled(look_.width), height = Scaled(look_.height);
  const ChildPlace corner{client.width - width, client.height - height, width, height};
  Create(look_.windowClass, look_.title, PlaceOfText(place_ ? *place_ : "", corner, client),
         WS_CLIPCHILDREN);
}

void MapPanel::ShowName() {
  ShowTitle(look_.title + (": " + map_.Name()));
}

bool MapPanel::TakesMessage(MSG& message) {
  if (!IsChild(Handle(), message.hwnd)) return false;
  // What is left of Alt+Enter once the command has been given: nobody wants to hear of it.
  if (message.message == WM_SYSCHAR && message.wParam == VK_RETURN) return true;
  if (!IsTextBox(message.hwnd)) {
    if (message.message == WM_SYSKEYDOWN) return false;
    const bool isKey = message.message == WM_KEYDOWN;
    if (isKey && !IsOwnKey(message.wParam, GetKeyState(VK_CONTROL) < 0)) return false;
  }
  return IsDialogMessageW(Dialog(), &message) != FALSE;
}

LRESULT MapPanel::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY && place_) *place_ = PlaceText(Handle(), *place_);
  return PanelWindow::OnMessage(message, wParam, lParam);
}

}  // namespace ferrowand
