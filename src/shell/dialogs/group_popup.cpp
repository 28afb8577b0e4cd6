#include "shell/dialogs/group_popup.h"

#include "base/command_table.h"
#include "platform/system.h"
#include "shell/dialogs/popup_menus.h"

namespace ferrowand {
namespace {

void Append(HMENU menu, unsigned id, const std::string& text) {
  AppendMenuA(menu, MF_STRING, id, text.c_str());
}

void AppendSeparator(HMENU menu) {
  AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
}

HMENU MakeGroupDirectory(const Options& options) {
  const HMENU menu = CreatePopupMenu();
  unsigned id = Id(Command::GroupFile);
  for (const std::string& name : GroupFiles(options)) Append(menu, id++, WithoutMnemonic(name));
  if (id == Id(Command::GroupFile)) AppendMenuA(menu, MF_STRING | MF_GRAYED, 0, "(Empty)");
  return menu;
}

HMENU MakePreviousFiles(const Options& options) {
  const HMENU menu = CreatePopupMenu();
  for (unsigned i = 0; i < Options::NUMRECENTMAPS && !options.previousFiles[i].empty(); ++i) {
    Append(menu, Id(Command::PopupRecentMap) + i, WithoutMnemonic(options.previousFiles[i]));
  }
  return menu;
}

}  // namespace

std::vector<std::string> GroupFiles(const Options& options) {
  std::vector<std::string> names = ListFiles(options.groupsDirectory, ".xmp");
  for (std::string& name : ListFiles(options.groupsDirectory, ".map")) {
    names.push_back(std::move(name));
  }
  const std::size_t room = Id(Command::LastGroupFile) - Id(Command::GroupFile);
  if (names.size() > room) names.resize(room);
  return names;
}

OwnedMenu MakeGroupPopup(const Options& options) {
  OwnedMenu menu(CreatePopupMenu());
  for (unsigned i = 0; i < Options::NUMRECENTGROUPS && !options.previousGroups[i].empty(); ++i) {
    Append(menu.get(), Id(Command::RecentGroup) + i, WithoutMnemonic(options.previousGroups[i]));
  }
  AppendSeparator(menu.get());
  Append(menu.get(), Id(Command::InsertGroup), "Another...\tCtrl+I");
  AppendSeparator(menu.get());
  AppendMenuA(menu.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(MakeGroupDirectory(options)),
              "Group Directory");
  AppendMenuA(menu.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(MakePreviousFiles(options)),
              "Previous files");
  return menu;
}

}  // namespace ferrowand
