// Every WAD that is open, shared by the maps that name it, and the ordered list of WADs of a map.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "gamedata/wad_file.h"

namespace ferrowand {

class LoadProgress;
class Palette;
class Reporter;
class SearchPath;

class WadLibrary {
 public:
  WadLibrary(const SearchPath& path, const Palette& palette, Reporter& reporter,
             LoadProgress& progress);

  // Of every WAD, open or to be opened.
  void SetLimits(const WadLimits& limits);
  // The palette is another one: what was made with it is made anew when it is asked for.
  void ForgetColours();

  // The WAD of every map that names none. When it cannot be loaded that is said and the built-in
  // WAD stands in. `name` is kept as the default's name either way.
  void LoadDefault(const std::string& name);
  WadFile& Default() const { return *default_; }
  const std::string& DefaultName() const { return defaultName_; }

  // Open WADs are found by base name and extension, any case; the folder is not compared. Else the
  // file is opened as named (less what it shares with the current folder), then in each folder of
  // the search path, then around the folder of who names it, if given. When none opens that is
  // said, unless quiet, and the default WAD is given.
  WadFile& Get(const std::string& name, bool quiet = false, const std::string& folder = "");

  // Where missing WADs have been found: looked at last.
  void SetFolders(std::vector<std::string> folders) { folders_ = std::move(folders); }
  const std::vector<std::string>& Folders() const { return folders_; }

  // Closes all but these and the default; the names of what was closed. Nothing may refer to that
  // any more.
  std::vector<std::string> CloseOthers(const std::unordered_set<const WadFile*>& used);

  // Those that have been read again, since other programs have changed their files.
  std::vector<WadFile*> ReadChanged();
  const std::vector<std::unique_ptr<WadFile>>& Loaded() const { return loaded_; }

 private:
  WadFile* FindOrOpen(const std::string& name, const std::string& folder = "");

  const SearchPath& path_;
  const Palette& palette_;
  Reporter& reporter_;
  LoadProgress& progress_;
  WadLimits limits_;
  std::vector<std::string> folders_;
  std::vector<std::unique_ptr<WadFile>> loaded_;
  std::unique_ptr<WadFile> builtIn_;
  WadFile* default_;
  std::string defaultName_;
};

// The WADs whose textures a map's faces may use, in order of preference. Each keeps the name by
// which the map calls it, so that a WAD that is missing today is still named when the map is saved.
class WadList {
 public:
  struct Item {
    std::string name;
    WadFile* wad;
  };

  void Clear() { items_.clear(); }
  void Add(std::string name, WadFile& wad) { items_.push_back({std::move(name), &wad}); }
  // Of items that mean the same file the last one stays.
  void RemoveDuplicates();

  // From the first WAD that has it; else the last WAD's bad texture; null for an empty list.
  Texture* FindTexture(std::string_view name) const;
  // Joined with semicolons.
  std::string Names() const;
  std::vector<std::string> ItemNames() const;
  const std::vector<Item>& Items() const { return items_; }

 private:
  std::vector<Item> items_;
};

// Whether two names are one WAD here: by base name and extension, any case.
bool IsSameFileName(std::string_view a, std::string_view b);
// Whether another WAD stands in for one that was not found.
bool IsMissing(const WadList::Item& item);

}  // namespace ferrowand
