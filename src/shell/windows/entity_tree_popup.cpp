#include "shell/windows/entity_tree_popup.h"

#include <algorithm>

#include "base/path_text.h"
#include "document/map.h"
#include "document/reach.h"
#include "operations/entity_tree.h"
#include "operations/groups.h"
#include "shell/resources/resource.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

enum Item : unsigned {
  PROPERTIES = 1000,
  SELECT,
  ADD_TO_SELECTION,
  RENAME,
  CENTRE,
  MOVE_HERE,
  SET_LEADING,
  OF_CLASS,
  FIRST_KEY = 2000,  // one for each key
  FIRST_VALUE = 3000,
  LAST_VALUE = 4000
};
constexpr int SHOWN_KEYS = 40;  // as many as a screen holds
constexpr std::size_t SHOWN_LENGTH = 40;

void Append(HMENU menu, unsigned id, const std::string& text) {
  AppendMenuW(menu, MF_STRING, id, ToWide(text).c_str());
}

void AppendSeparator(HMENU menu) {
  AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
}

std::wstring ShortText(const std::string& text) {
  std::wstring wide = ToWide(WithoutMnemonic(text));
  if (wide.size() <= SHOWN_LENGTH) return wide;
  wide.resize(SHOWN_LENGTH);
  return wide + L"...";
}

void AppendGiven(HMENU menu, HMENU given) {
  for (int i = 0; i < GetMenuItemCount(given); ++i) {
    char text[100] = "";
    GetMenuStringA(given, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
    AppendMenuA(menu, MF_STRING, GetMenuItemID(given, i), text);
  }
}

}  // namespace

TreePopup::TreePopup(const PopupMenus& popups, const entity& e) : e_(e), menu_(CreatePopupMenu()) {
  const HMENU menu = menu_.get();
  AppendGiven(menu, popups.Get(ID_POPUP_TREE_ITEM));
  AppendSeparator(menu);
  Append(menu, RENAME, "&Rename\tF2");
  Append(menu, CENTRE, "C&enter\tEnter");
  Append(menu, MOVE_HERE, "&Move the selection here");
  Append(menu, SET_LEADING, "Set as &leading");
  AppendSeparator(menu);
  Append(menu, OF_CLASS, "Select all of &class " + WithoutMnemonic(std::string(ShownClass(e))));
  AddKeys();
  SetGreys();
}

void TreePopup::AddKeys() {
  const HMENU keys = CreatePopupMenu(), values = CreatePopupMenu();
  for (int i = 0; i < std::min(e_.numkeys(), SHOWN_KEYS); ++i) {
    const std::string& key = e_.KeyName(i);
    if (IsEditorKey(key) || EqualNoCase(key, "classname")) continue;
    const auto at = static_cast<unsigned>(i);
    AppendMenuW(keys, MF_STRING, FIRST_KEY + at, ShortText(key).c_str());
    AppendMenuW(values, MF_STRING, FIRST_VALUE + at,
                ShortText(key + " = " + e_.KeyValue(i)).c_str());
  }
  const UINT state = MF_POPUP | (GetMenuItemCount(keys) > 0 ? MF_ENABLED : MF_GRAYED);
  AppendMenuA(menu_.get(), state, reinterpret_cast<UINT_PTR>(keys), "Select all with this &key");
  AppendMenuA(menu_.get(), state, reinterpret_cast<UINT_PTR>(values),
              "Select all with this &value");
}

void TreePopup::SetGreys() {
  const Map& map = *e_.OwningMap();
  const auto enable = [this](Item item, bool on) {
    EnableMenuItem(menu_.get(), item, MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED));
  };
  const bool reaches = IsReachable(e_);
  const bool offers = reaches || (OnlyHolds(e_) && IsOpen(e_) && HoldsObjects(e_));
  enable(PROPERTIES, reaches);
  enable(SELECT, offers);
  enable(ADD_TO_SELECTION, offers);
  enable(CENTRE, !e_.GetBounds().IsEmpty());
  enable(MOVE_HERE, HoldsObjects(e_) && !map.selection.empty());
  enable(SET_LEADING, e_.getClass()->Kind() == EntityKind::Layer || (reaches && IsGroup(e_)));
}

TreeChoice TreePopup::ChoiceOf(unsigned item) const {
  const auto keyAt = [&](unsigned first) { return e_.KeyName(static_cast<int>(item - first)); };
  if (item >= FIRST_KEY && item < FIRST_VALUE) return {TreeChoice::OfKey, keyAt(FIRST_KEY)};
  if (item >= FIRST_VALUE && item < LAST_VALUE) return {TreeChoice::OfValue, keyAt(FIRST_VALUE)};
  if (item < PROPERTIES || item > OF_CLASS) return {};
  return {static_cast<TreeChoice::Kind>(TreeChoice::Properties + (item - PROPERTIES))};
}

}  // namespace ferrowand
