#include "shell/documents/documents.h"

#include "shell/system/win32.h"

#include <algorithm>

#include "base/options.h"
#include "base/path_text.h"
#include "base/report.h"
#include "document/map.h"
#include "gamedata/file_kind.h"
#include "platform/file.h"
#include "shell/dialogs/dialogs.h"

namespace ferrowand {
namespace {

constexpr char SAVE_FILTER[] =
    "Extended Map (*.xmp)|*.xmp|Quake map (*.map)|*.map|All files (*.*)|*.*|";

std::string FullPath(const std::string& path) {
  std::string full(32768, '\0');
  const DWORD length =
      GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length == 0 || length >= full.size()) return path;
  full.resize(length);
  return full;
}

// What is offered for a map that should not go over its own file.
std::string OtherName(const std::string& name) {
  const PathParts parts = SplitPath(name);
  return parts.directory + parts.base + "-read" + parts.extension;
}

// Whether the document has never had a file.
bool IsUnnamed(const Map& map) {
  return map.filename == "unnamed.map";
}

SaveSettings SaveSettingsOf(const Options& options) {
  return {options.exportOnlyOneWad != 0, options.defaultWorldType, options.defaultSounds};
}

}  // namespace

Documents::Documents(GameData& data, Options& options, Dialogs& dialogs,
                     DocumentsObserver& observer)
    : data_(data), options_(options), dialogs_(dialogs), observer_(observer) {}

Documents::~Documents() = default;

Map& Documents::Adopt(std::unique_ptr<Map> map) {
  Map& adopted = *maps_.emplace_back(std::move(map));
  observer_.OnMapOpened(adopted);
  return adopted;
}

Map& Documents::New() {
  auto map = std::make_unique<Map>(data_, static_cast<std::size_t>(options_.undoLevels));
  map->wads.Add(data_.wads.DefaultName(), data_.wads.Default());
  return Adopt(std::move(map));
}

Map* Documents::Open(const std::string& path) {
  const std::string full = FullPath(path);
  if (file::Find(full) == FindResult::NotFound) {
    data_.reporter.Show("File Error - cannot continue",
                        Format("Can't find requested map: %s", path.c_str()));
    return nullptr;
  }
  if (const std::string refusal = OtherKindText(full); !refusal.empty()) {
    data_.reporter.Show("Cannot continue", refusal);
    return nullptr;
  }
  std::unique_ptr<Map> map = LoadMap(data_, full, static_cast<std::size_t>(options_.undoLevels));
  if (!map) {
    data_.reporter.Show("Cannot continue", "Cannot open file!");
    return nullptr;
  }
  options_.AddRecentMap(full);
  return &Adopt(std::move(map));
}

bool Documents::Write(Map& map, const std::string& name) {
  if (!map.Save(name, 0, SaveSettingsOf(options_))) return false;
  options_.AddRecentMap(map.filename);
  return true;
}

std::optional<std::string> Documents::AskSaveName(const Map& map) {
  FileChoice choice;
  choice.saving = true;
  choice.title = "Save map";
  choice.filter = SAVE_FILTER;
  choice.extension = "xmp";
  if (!IsUnnamed(map)) {
    choice.name = map.readWithLoss() ? OtherName(map.filename) : map.filename;
    if (EqualNoCase(SplitPath(map.filename).extension, ".map")) choice.filterIndex = 2;
  }
  return dialogs_.ChooseFile(choice);
}

// What could not be read is in the file alone.
Documents::LossAnswer Documents::AskAboutLoss(const Map& map, const std::string& target) const {
  if (!map.readWithLoss() || !EqualNoCase(map.filename, target)) return LossAnswer::WriteHere;
  const std::string question = Format(
      "Not all of %s could be read, and what could not would be lost for good. Save the map under "
      "another name?",
      target.c_str());
  switch (data_.reporter.Show("Confirm", question, Buttons::YesNoCancel, Icon::Warning)) {
    case Answer::Yes:
      return LossAnswer::OtherName;
    case Answer::No:
      return LossAnswer::WriteHere;
    default:
      return LossAnswer::WriteNothing;
  }
}

bool Documents::Save(Map& map) {
  if (IsUnnamed(map)) return SaveAs(map);
  const LossAnswer answer = AskAboutLoss(map, map.filename);
  if (answer == LossAnswer::OtherName) return SaveAs(map);
  return answer == LossAnswer::WriteHere && Write(map, map.filename);
}

bool Documents::SaveAs(Map& map) {
  const auto name = AskSaveName(map);
  return name && Write(map, FullPath(*name));
}

bool Documents::ExportQuakeMap(Map& map) {
  std::optional<std::string> name = map.filename;
  if (IsUnnamed(map)) name = AskSaveName(map);
  if (!name) return false;
  const PathParts parts = SplitPath(FullPath(*name));
  const std::string target = parts.directory + parts.base + ".map";
  const LossAnswer answer = AskAboutLoss(map, target);
  if (answer == LossAnswer::OtherName) return SaveAs(map);
  return answer == LossAnswer::WriteHere && map.Export(target, 0, SaveSettingsOf(options_));
}

void Documents::Close(Map& map) {
  observer_.OnMapClosing(map);
  std::erase_if(maps_, [&](const auto& open) { return open.get() == &map; });
}

bool Documents::MayQuit() {
  for (const auto& map : maps_) {
    if (!map->modified()) continue;
    const std::string question = Format(
        "Map %s has been modified and not saved. Save before quitting?", map->Name().c_str());
    const Answer answer =
        data_.reporter.Show("Continue?", question, Buttons::YesNoCancel, Icon::Question);
    if (answer == Answer::Cancel) return false;
    if (answer == Answer::Yes && !Save(*map)) return false;
  }
  return true;
}

void Documents::ShowByOptions() {
  data_.shown = {options_.renderPointEntities != 0, options_.drawTemplates != 0};
  for (const auto& map : maps_) map->AnnounceEverything();
}

void Documents::Clear() {
  maps_.clear();
}

}  // namespace ferrowand
