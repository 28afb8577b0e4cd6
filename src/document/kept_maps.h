// Unsaved work, kept in files of its own: whatever ends the program costs no more than what was
// done since the last time. A kept map is Extended Map text beside its own file or, where that
// cannot be, in the user's own data folder, with a rescue note for the next program.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/rescue.h"
#include "document/undo_store.h"

namespace ferrowand {

class Map;
struct SaveSettings;

class KeptMaps {
 public:
  // The user's own data folder; it need not be there.
  explicit KeptMaps(std::string folder) : folder_(std::move(folder)) {}

  // A modified map is written unless it is kept already as it is; of another nothing is kept any
  // more. `began`: how its file was when the map read or wrote it. False, and nothing is said, when
  // it cannot be written; what was kept before stays then.
  bool Keep(const Map& map, const SaveSettings& settings,
            const std::optional<FileStamp>& began = std::nullopt);
  // The work is safe, or not wanted.
  void Discard(const Map& map);
  // What is kept stays where it is, for the next program or the next time that the file is opened.
  void Leave(const Map& map) { kept_.erase(&map); }
  // The map has been read from what another program kept: that is what is kept of it from now on.
  void Adopt(const Map& map, const Rescue& rescue);
  // Empty when nothing is kept.
  std::string FileOf(const Map& map) const;

  const std::string& Folder() const { return folder_; }

 private:
  struct Kept {
    RescueNote note;
    UndoStore::StateId state;
  };

  bool KeepIn(const std::string& folder, const Map& map, const std::string& text,
              const std::optional<FileStamp>& began);

  std::string folder_;
  std::unordered_map<const Map*, Kept> kept_;
};

// Of a map that is known by its file alone.
std::string FileNameOf(const std::string& path);

}  // namespace ferrowand
