// The popup menus that are resources of the program.
#pragma once

#include "shell/system/win32.h"

#include <map>

#include "shell/system/handles.h"

namespace ferrowand {

class PopupMenus {
 public:
  explicit PopupMenus(HINSTANCE instance);

  // As it is tracked.
  HMENU Get(unsigned resource) const;

 private:
  std::map<unsigned, OwnedMenu> menus_;  // by resource
};

}  // namespace ferrowand
