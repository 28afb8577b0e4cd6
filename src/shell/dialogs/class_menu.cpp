#include "shell/dialogs/class_menu.h"

#include <string>
#include <vector>

#include "base/options.h"
#include "document/classes/class_set.h"
#include "shell/dialogs/dialogs.h"
#include "shell/system/handles.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

std::string Escaped(const std::string& name) {
  std::string text;
  for (const char c : name) text.append(c == '&' ? 2 : 1, c);
  return text;
}

// In a group the letter is behind its name, which all share.
std::string WithMnemonic(const std::string& name, bool inGroup) {
  const std::size_t bar = inGroup ? name.find('_') : std::string::npos;
  const std::size_t letter = bar == std::string::npos ? 0 : bar + 1;
  return Escaped(name.substr(0, letter)) + '&' + Escaped(name.substr(letter));
}

void Append(HMENU menu, UINT flags, UINT_PTR id, const std::string& text) {
  AppendMenuW(menu, flags, id, ToWide(text).c_str());
}

void AppendClasses(HMENU menu, const std::vector<ClassMenuItem>& items, bool inGroup) {
  for (const ClassMenuItem& item : items) {
    const std::string text = WithMnemonic(item.text, inGroup);
    if (item.items.empty()) {
      Append(menu, MF_STRING, item.id, text);
      continue;
    }
    const HMENU group = CreatePopupMenu();
    AppendClasses(group, item.items, true);
    Append(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(group), text);
  }
}

// By the numbers that they have further down. Their mnemonics are digits: the letters go on finding
// what they found before.
void AppendRecent(HMENU menu, const ClassSet& classes, const Options& options) {
  int count = 0;
  for (const std::string& name : options.recentClasses) {
    const unsigned id = name.empty() ? 0 : classes.MenuIdOf(name);
    if (id == 0) continue;
    ++count;
    Append(menu, MF_STRING, id, "&" + std::to_string(count) + " " + Escaped(name));
  }
  if (count > 0) AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

}  // namespace

const EntityClass* AskClass(Dialogs& dialogs, HWND owner, const ClassSet& classes,
                            const Options& options) {
  const OwnedMenu menu(CreatePopupMenu());
  AppendRecent(menu.get(), classes, options);
  AppendClasses(menu.get(), classes.Menu(), false);
  return classes.ClassOfMenuId(dialogs.TrackAtCursor(owner, menu.get()));
}

}  // namespace ferrowand
