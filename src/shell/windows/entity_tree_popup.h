// What the right button offers in an entity tree.
#pragma once

#include "shell/system/win32.h"

#include <string>

#include "shell/dialogs/popup_menus.h"

namespace ferrowand {

class Map;
class entity;

struct TreeChoice {
  enum Kind {
    Nothing,
    Properties,
    Select,
    AddToSelection,
    Rename,
    Centre,
    MoveHere,
    SetLeading,
    OfClass,
    OfKey,
    OfValue
  };
  Kind kind = Nothing;
  std::string key{};  // of the object; of OfKey and OfValue
};

class TreePopup {
 public:
  // About the object of the row that was clicked on.
  TreePopup(const PopupMenus& popups, const entity& e);

  HMENU Menu() const { return menu_.get(); }
  TreeChoice ChoiceOf(unsigned item) const;

 private:
  void AddKeys();
  void SetGreys();

  const entity& e_;
  OwnedMenu menu_;
};

}  // namespace ferrowand
