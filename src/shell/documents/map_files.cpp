// Documents: opening, saving, closing, and what is asked on the way.
#include <algorithm>

#include "base/text_reader.h"
#include "shell/app/app.h"

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

// Whether the document has never had a file.
bool IsUnnamed(const Map& map) {
  return map.filename == "unnamed.map";
}

SaveSettings SaveSettingsOf(const Options& options) {
  return {options.exportOnlyOneWad != 0, options.defaultWorldType, options.defaultSounds};
}

}  // namespace

Map& App::Adopt(std::unique_ptr<Map> map) {
  Map& adopted = *maps.emplace_back(std::move(map));
  CreateMapWindows(adopted);
  return adopted;
}

Map& App::NewMap() {
  auto map = std::make_unique<Map>(data, static_cast<std::size_t>(options.undoLevels));
  map->wads.Add(data.wads.DefaultName(), data.wads.Default());
  return Adopt(std::move(map));
}

std::unique_ptr<Map> App::ReadMapFile(const std::string& path) {
  TextReader reader(reporter);
  reader.Open(path);
  if (!reader.IsOpen()) {
    reporter.Show("Cannot continue", "Cannot open file!");
    return nullptr;
  }
  auto map = std::make_unique<Map>(data, static_cast<std::size_t>(options.undoLevels));
  const ProgressScope scope(progress, path);
  unsigned flags = 0;
  while (true) {
    flags = map->ReadMap(reader, flags);
    if (map->readProgress() == 0) break;
    progress.Step("Entities: %u", map->readProgress(), reader.Offset(), reader.FileLength());
  }
  map->filename = path;
  map->modified = false;
  return map;
}

Map* App::OpenMap(const std::string& path) {
  const std::string full = FullPath(path);
  if (file::Find(full) == FindResult::NotFound) {
    reporter.Show("File Error - cannot continue",
                  Format("Can't find requested map: %s", path.c_str()));
    return nullptr;
  }
  std::unique_ptr<Map> map = ReadMapFile(full);
  if (!map) return nullptr;
  options.AddRecentMap(full);
  frame.ShowRecentMaps();
  return &Adopt(std::move(map));
}

bool App::Save(Map& map, const std::string& name) {
  if (!map.Save(name, 0, SaveSettingsOf(options))) return false;
  map.modified = false;
  options.AddRecentMap(map.filename);
  frame.ShowRecentMaps();
  SetTitles(map);  // a first save gives a map its name
  return true;
}

std::optional<std::string> App::AskSaveName(const Map& map) {
  FileChoice choice;
  choice.saving = true;
  choice.title = "Save map";
  choice.filter = SAVE_FILTER;
  choice.extension = "xmp";
  if (!IsUnnamed(map)) {
    choice.name = map.filename;
    if (EqualNoCase(SplitPath(map.filename).extension, ".map")) choice.filterIndex = 2;
  }
  return dialogs.ChooseFile(frame.Handle(), choice);
}

bool App::SaveMap(Map& map) {
  return IsUnnamed(map) ? SaveMapAs(map) : Save(map, map.filename);
}

bool App::SaveMapAs(Map& map) {
  const auto name = AskSaveName(map);
  return name && Save(map, FullPath(*name));
}

bool App::ExportQuakeMap(Map& map) {
  std::optional<std::string> name = map.filename;
  if (IsUnnamed(map)) name = AskSaveName(map);
  if (!name) return false;
  const PathParts parts = SplitPath(FullPath(*name));
  // The document keeps its own file and stays as modified as it was.
  const std::string filename = map.filename;
  const bool modified = map.modified;
  const bool written = map.Save(parts.directory + parts.base + ".map", 0, SaveSettingsOf(options));
  map.filename = filename;
  map.modified = modified;
  return written;
}

void App::CloseMap(Map& map) {
  for (const ChildWindow* window : WindowsOf(map)) {
    SendMessageA(frame.Client(), WM_MDIDESTROY, reinterpret_cast<WPARAM>(window->Handle()), 0);
  }
  std::erase_if(maps, [&](const auto& open) { return open.get() == &map; });
}

bool App::MayQuit() {
  for (const auto& map : maps) {
    if (!map->modified) continue;
    const std::string question = Format(
        "Map %s has been modified and not saved. Save before quitting?", map->Name().c_str());
    const Answer answer =
        reporter.Show("Continue?", question, Buttons::YesNoCancel, Icon::Question);
    if (answer == Answer::Cancel) return false;
    if (answer == Answer::Yes && !SaveMap(*map)) return false;
  }
  return true;
}

}  // namespace ferrowand
