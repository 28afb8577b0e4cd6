#include "shell/windows/texture_popup.h"

#include <array>

#include "shell/dialogs/popup_menus.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

// The given items are numbered in their order; ours follow.
enum Item : unsigned {
  FAVOURITE = 1000,
  SHOW_FULL,
  SHOW_CACHED = SHOW_FULL + static_cast<unsigned>(WallShows::Cached),
  APPLY,
  SELECT_USERS,
  REPLACE,
  EDIT_WAD  // and those behind it, in the order of EDITS
};

constexpr struct {
  WadEdit edit;
  const char* text;
} EDITS[] = {
    {WadEdit::Insert, "&Insert into WAD..."},
    {WadEdit::InsertFromGame, "Insert from &game file..."},
    {WadEdit::Alter, "A&lter..."},
    {WadEdit::Export, "&Export..."},
    {WadEdit::Copy, "Copy to &WAD..."},
    {WadEdit::Rename, "Re&name..."},
    {WadEdit::Remove, "&Delete from WAD"},
};

OwnedMenu CopyOf(HMENU given) {
  OwnedMenu menu(CreatePopupMenu());
  for (int i = 0; i < GetMenuItemCount(given); ++i) {
    std::array<char, 100> text{};
    GetMenuStringA(given, static_cast<UINT>(i), text.data(), text.size(), MF_BYPOSITION);
    const UINT id = GetMenuItemID(given, i);
    AppendMenuA(menu.get(), id == 0 ? MF_SEPARATOR : MF_STRING, id, text.data());
  }
  return menu;
}

}  // namespace

TexturePopup::TexturePopup(const PopupMenus& popups, const TexturePopupState& state)
    : menu_(CopyOf(
          popups.Get(state.isFavourite ? ID_POPUP_FAVOURITE_TEXTURES : ID_POPUP_RECENT_TEXTURES))) {
  CheckMenuRadioItem(menu_.get(), SHOW_FULL, SHOW_CACHED,
                     SHOW_FULL + static_cast<unsigned>(state.shows), MF_BYCOMMAND);
  EnableMenuItem(menu_.get(), FAVOURITE, MF_BYCOMMAND | (state.hasChosen ? MF_ENABLED : MF_GRAYED));
  AddOwn(state);
}

void TexturePopup::AddOwn(const TexturePopupState& state) const {
  const auto add = [this](Item item, const char* text, bool isOn) {
    AppendMenuA(menu_.get(), MF_STRING | (isOn ? MF_ENABLED : MF_GRAYED), item, text);
  };
  AppendMenuA(menu_.get(), MF_SEPARATOR, 0, nullptr);
  add(APPLY, "&Apply\tCtrl+A", state.hasChosen);
  add(SELECT_USERS, "&Select what has it\tShift+Enter", state.isUsed);
  add(REPLACE, "Re&place...", true);
  AppendMenuA(menu_.get(), MF_SEPARATOR, 0, nullptr);
  Item item = EDIT_WAD;
  for (const auto& [edit, text] : EDITS) {
    add(item, text, state.isOfWad || !IsOfOneTexture(edit));
    item = static_cast<Item>(item + 1);
  }
}

TexturePopupChoice TexturePopup::ChoiceOf(unsigned item) const {
  if (item >= SHOW_FULL && item <= SHOW_CACHED) {
    return {TexturePopupChoice::Show, static_cast<WallShows>(item - SHOW_FULL)};
  }
  if (item >= EDIT_WAD && item - EDIT_WAD < std::size(EDITS)) {
    return {TexturePopupChoice::EditWad, WallShows::Full, EDITS[item - EDIT_WAD].edit};
  }
  switch (item) {
    case FAVOURITE:
      return {TexturePopupChoice::Favourite};
    case APPLY:
      return {TexturePopupChoice::Apply};
    case SELECT_USERS:
      return {TexturePopupChoice::SelectUsers};
    case REPLACE:
      return {TexturePopupChoice::Replace};
    default:
      return {};
  }
}

}  // namespace ferrowand
