// What the window of properties does to keys, and tells the grid of them.
#include <algorithm>

#include "base/command_table.h"
#include "base/number_text.h"
#include "base/options.h"
#include "base/path_text.h"
#include "base/report.h"
#include "document/map.h"
#include "operations/key_colour.h"
#include "operations/key_file.h"
#include "operations/templates.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/command_target.h"
#include "shell/resources/resource.h"
#include "shell/system/wide_text.h"
#include "shell/windows/properties_window.h"

namespace ferrowand {

void PropertiesWindow::OnRowChosen() {
  if (isFilling_) return;
  ShowKeyButtons();
  ShowHelp();
}

std::vector<KeyChoice> PropertiesWindow::ChoicesOf(const KeyRow& row) const {
  if (row.definition && !row.definition->choices.empty()) return row.definition->choices;
  if (!map_ || objects_.empty()) return {};
  std::vector<std::string> names;
  if (IsLinkKey(*objects_.front()->getClass(), row.name)) names = NamesIn(*map_);
  if (EqualNoCase(row.name, "XMPclass")) names = TemplateNames(*map_);
  std::vector<KeyChoice> choices;
  choices.reserve(names.size());
  for (const std::string& name : names) choices.push_back({name, ""});
  return choices;
}

// The map writes these of its own lists.
bool PropertiesWindow::IsLocked(const KeyRow& row) const {
  if (of_ != PropertiesOf::World) return false;
  constexpr const char* OWN[] = {"wad", "XMPqc", "XMPversion"};
  return std::ranges::any_of(OWN, [&](const char* name) { return EqualNoCase(row.name, name); });
}

bool PropertiesWindow::IsWadList(const KeyRow& row) const {
  return of_ == PropertiesOf::World && EqualNoCase(row.name, "wad");
}

bool PropertiesWindow::ChangeValue(const KeyRow& row, const std::string& value) {
  if (!map_ || typedFor_.empty()) return true;
  if (!Do("Set " + row.name, [&] { return SetKeyOf(*map_, typedFor_, row.name, value); })) {
    return false;
  }
  const KeyType type = row.definition ? row.definition->type : KeyType::Text;
  const bool isNumber = type == KeyType::Whole || type == KeyType::Number;
  if (isNumber && !value.empty() && !ReadNumber(value)) {
    map_->ShowStatus("Set " + row.name + ": the class knows it as a number");
  }
  return true;
}

void PropertiesWindow::Choose() {
  const KeyRow* const chosen = grid_->Chosen();
  if (!map_ || !chosen || !chosen->definition) return;
  const KeyRow row = *chosen;
  if (IsWadList(row)) return context_.commands.Execute(Id(Command::WadManager));
  return row.definition->type == KeyType::File ? ChooseFile(row) : ChooseColour(row);
}

void PropertiesWindow::ChooseFile(const KeyRow& row) {
  const std::optional<std::string> name = context_.dialogs.ChooseFile(
      {.title = "File for " + row.name,
       .filter = "Sounds and models (*.wav, *.mdl, *.spr, *.bsp)|*.wav;*.mdl;*.spr;*.bsp|"
                 "All files (*.*)|*.*|",
       .name = "",
       .extension = "",
       .owner = Handle()});
  if (!name) return;
  typedFor_ = objects_;
  ChangeValue(row, GameFileForKey(*name, context_.options.quakeDirectory));
}

void PropertiesWindow::ChooseColour(const KeyRow& row) {
  const std::optional<Colour> colour = context_.dialogs.ChooseColour(ColourOfKey(row.value));
  if (!colour) return;
  typedFor_ = objects_;
  ChangeValue(row, ColourForKey(*colour, row.value));
}

bool PropertiesWindow::RenameKey(const KeyRow& row, const std::string& name) {
  if (!map_ || typedFor_.empty()) return true;
  if (!Do("Rename key " + row.name,
          [&] { return RenameKeyOf(*map_, typedFor_, row.name, name); })) {
    return false;
  }
  rows_.Rename(row.name, name);
  return true;
}

bool PropertiesWindow::CheckNewName(const std::string& name) {
  return map_ && Conclude(*map_, CheckKeyName(name));
}

void PropertiesWindow::RemoveKey(const KeyRow& row) {
  if (!map_) return;
  Do("Remove key " + row.name, [&] { return RemoveKeyOf(*map_, objects_, row.name); });
}

void PropertiesWindow::Tell(const std::string& why) {
  SetText(ID_PROPERTIES_HELP, ToWide(why));
}

void PropertiesWindow::Refuse(const std::string& why) {
  context_.reporter.Show("Cannot continue", why);
}

}  // namespace ferrowand
