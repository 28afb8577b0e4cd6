#include "shell/dialogs/popup_menus.h"

namespace ferrowand {

PopupMenus::PopupMenus(HINSTANCE instance) {
  for (const unsigned id : {1006u, 1008u, 1009u, 1010u, 1004u, 1011u, 1012u, 1003u, 1005u, 1007u}) {
    menus_[id].reset(LoadMenuA(instance, MAKEINTRESOURCEA(id)));
  }
}

HMENU PopupMenus::Get(unsigned resource) const {
  const auto menu = menus_.find(resource);
  return menu == menus_.end() ? nullptr : GetSubMenu(menu->second.get(), 0);
}

}  // namespace ferrowand
