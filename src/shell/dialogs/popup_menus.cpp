#include "shell/dialogs/popup_menus.h"

#include <array>

#include "base/command_table.h"
#include "document/classes/special_classes.h"
#include "operations/template_editing.h"
#include "operations/templates.h"
#include "shell/resources/resource.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

constexpr unsigned PROPERTIES = 1011;  // of the selection

void Append(HMENU menu, Command command, const std::string& text) {
  AppendMenuW(menu, MF_STRING, Id(command), ToWide(text).c_str());
}

void AppendSeparator(HMENU menu) {
  AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
}

std::array<char, 100> TextOf(HMENU menu, int item) {
  std::array<char, 100> text{};
  GetMenuStringA(menu, static_cast<UINT>(item), text.data(), text.size(), MF_BYPOSITION);
  return text;
}

// An embedded map has properties of its own.
void AppendSelectionItems(HMENU menu, HMENU given, bool ofEmbed) {
  const int count = GetMenuItemCount(given);
  for (int i = 0; i < count; ++i) {
    const UINT id = GetMenuItemID(given, i);
    const bool isNext = i + 1 < count && GetMenuItemID(given, i + 1) == PROPERTIES;
    if (ofEmbed && (id == PROPERTIES || isNext)) continue;
    if (id == 0) {
      AppendSeparator(menu);
    } else {
      AppendMenuA(menu, MF_STRING, id, TextOf(given, i).data());
    }
  }
}

void AppendEmbedItems(HMENU menu, HMENU given) {
  constexpr std::array ITEMS{Command::EmbedProperties, Command::EmbedEdit};
  for (std::size_t i = 0; i < ITEMS.size(); ++i) {
    Append(menu, ITEMS[i], TextOf(given, static_cast<int>(i)).data());
  }
  AppendSeparator(menu);
}

void AppendTemplateItems(HMENU menu, const Map& map) {
  const entity* templateClass = TemplateInUse(map);
  if (!templateClass) return;
  const entity* instance = SelectedInstance(map);
  const char* key = templateClass->GetKey("XMPentityname");
  const std::string name = WithoutMnemonic(key ? key : "");
  AppendSeparator(menu);
  if (instance) Append(menu, Command::OpenTemplate, "Op&en template " + name);
  if (IsOpened(*templateClass)) Append(menu, Command::CloseTemplate, "C&lose template " + name);
  Append(menu, Command::RenameTemplate, "&Rename template " + name + "...");
  Append(menu, Command::DeleteTemplate, "Delete te&mplate " + name);
}

}  // namespace

PopupMenus::PopupMenus(HINSTANCE instance) {
  for (const unsigned id :
       {1006u, 1008u, 1009u, 1010u, 1004u, 1011u, 1012u, 1003u, 1005u, 1007u, 1001u, 1002u}) {
    menus_[id].reset(LoadMenuA(instance, MAKEINTRESOURCEA(id)));
  }
}

HMENU PopupMenus::Get(unsigned resource) const {
  const auto menu = menus_.find(resource);
  return menu == menus_.end() ? nullptr : GetSubMenu(menu->second.get(), 0);
}

OwnedMenu PopupMenus::ForSelection(const Map& map) const {
  OwnedMenu menu(CreatePopupMenu());
  const bool ofEmbed = SelectedEmbed(map) != nullptr;
  if (ofEmbed) AppendEmbedItems(menu.get(), Get(ID_POPUP_EMBED));
  AppendSelectionItems(menu.get(), Get(ID_POPUP_SELECTION), ofEmbed);
  AppendSeparator(menu.get());
  for (const Command added : SELECTION_COMMANDS) {
    Append(menu.get(), added, MenuText(*FindCommand(Id(added))));
  }
  AppendTemplateItems(menu.get(), map);
  return menu;
}

std::string WithoutMnemonic(const std::string& name) {
  std::string text;
  for (const char c : name) text.append(c == '&' ? 2 : 1, c);
  return text;
}

}  // namespace ferrowand
