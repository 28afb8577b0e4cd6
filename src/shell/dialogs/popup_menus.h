// The popup menus that are resources of the program.
#pragma once

#include "shell/system/win32.h"

#include <map>
#include <string>

#include "base/command_table.h"
#include "shell/system/handles.h"

namespace ferrowand {

class Map;

// What stands behind the items of the selection's popup.
inline constexpr Command SELECTION_COMMANDS[] = {Command::TieToEntity, Command::TieToWorld,
                                                 Command::Connect};

class PopupMenus {
 public:
  explicit PopupMenus(HINSTANCE instance);

  // As it is tracked.
  HMENU Get(unsigned resource) const;
  // The selection's, with what can be done with a template behind it, and, of an embedded map, with
  // that one's in front. The numbers of what is added are those of commands.
  OwnedMenu ForSelection(const Map& map) const;

 private:
  std::map<unsigned, OwnedMenu> menus_;  // by resource
};

// Menu items take '&' for a mnemonic; names do not mean it.
std::string WithoutMnemonic(const std::string& name);

}  // namespace ferrowand
