#include "document/kept_maps.h"

#include <utility>

#include "base/path_text.h"
#include "base/safe_file.h"
#include "document/map.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

constexpr int TRIES = 20;

std::string KeptName(const std::string& folder, const Map& map, int number) {
  const std::string name = map.IsUnnamed() ? "unnamed" : FileNameOf(map.filename);
  return InFolder(folder, name) + ".autosave" + (number > 1 ? std::to_string(number) : "") + ".xmp";
}

}  // namespace

std::string FileNameOf(const std::string& path) {
  const PathParts parts = SplitPath(path);
  return parts.base + parts.extension;
}

bool KeptMaps::Keep(const Map& map, const SaveSettings& settings,
                    const std::optional<FileStamp>& began) {
  if (!map.modified()) {
    Discard(map);
    return true;
  }
  const auto kept = kept_.find(&map);
  if (kept != kept_.end() && kept->second.state == map.undo.State()) return true;
  const std::string text = map.ExtendedText(settings);
  if (kept == kept_.end()) {
    return KeepIn(map.Folder(), map, text, began) || KeepIn(folder_, map, text, began);
  }
  if (!ReplaceFile(kept->second.note.About().text, text, {}, nullptr)) return false;
  kept->second.state = map.undo.State();
  return true;
}

bool KeptMaps::KeepIn(const std::string& folder, const Map& map, const std::string& text,
                      const std::optional<FileStamp>& began) {
  if (folder.empty() || folder_.empty() || !file::MakeFolder(folder_)) return false;
  for (int number = 1; number <= TRIES; ++number) {
    const Rescue rescue{KeptName(folder, map, number), map.filename, map.readWithLoss(), began};
    // Another program's, or one that the user has put off.
    if (file::Find(rescue.text) != FindResult::NotFound) continue;
    std::optional<RescueNote> note = RescueNote::Take(folder_, rescue);
    if (!note) continue;
    if (ReplaceFile(rescue.text, text, {}, nullptr)) {
      kept_.insert_or_assign(&map, Kept{std::move(*note), map.undo.State()});
      return true;
    }
    note->Discard();
    return false;
  }
  return false;
}

void KeptMaps::Discard(const Map& map) {
  const auto kept = kept_.find(&map);
  if (kept == kept_.end()) return;
  kept->second.note.Discard();
  kept_.erase(kept);
}

void KeptMaps::Adopt(const Map& map, const Rescue& rescue) {
  std::optional<RescueNote> note = RescueNote::Take(folder_, rescue);
  if (note) kept_.insert_or_assign(&map, Kept{std::move(*note), map.undo.State()});
}

std::string KeptMaps::FileOf(const Map& map) const {
  const auto kept = kept_.find(&map);
  return kept == kept_.end() ? "" : kept->second.note.About().text;
}

}  // namespace ferrowand
