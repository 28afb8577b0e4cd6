// The popup of a texture browser: about the chosen texture, and what the wall shows.
#pragma once

#include "shell/system/win32.h"

#include <string>

#include "operations/texture_wall.h"
#include "shell/system/handles.h"
#include "shell/windows/wad_editing.h"

namespace ferrowand {

class PopupMenus;

struct TexturePopupChoice {
  enum Kind { Nothing, Favourite, Show, Apply, SelectUsers, Replace, EditWad };

  Kind kind = Nothing;
  WallShows shows = WallShows::Full;  // to show
  WadEdit edit = WadEdit::Insert;
};

// What the popup is about.
struct TexturePopupState {
  bool hasChosen = false;
  bool isFavourite = false;
  bool isUsed = false;
  bool isOfWad = false;  // and no missing one
  WallShows shows = WallShows::Full;
};

class TexturePopup {
 public:
  TexturePopup(const PopupMenus& popups, const TexturePopupState& state);

  HMENU Menu() const { return menu_.get(); }
  TexturePopupChoice ChoiceOf(unsigned item) const;

 private:
  void AddOwn(const TexturePopupState& state) const;

  OwnedMenu menu_;
};

}  // namespace ferrowand
