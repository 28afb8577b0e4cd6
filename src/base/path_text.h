// Paths as text: both separators are understood on every system, since maps wander between them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

struct PathParts {
  std::string directory;  // with its last separator, and the drive before it; may be empty
  std::string base;
  std::string extension;  // with its full stop; may be empty
};

PathParts SplitPath(std::string_view path);
// The file of that name in the folder, whether that has a separator at its end or not.
std::string InFolder(std::string_view folder, std::string_view name);

// Compared without regard to the case of A to Z.
bool EqualNoCase(std::string_view a, std::string_view b);
// Less than 0, 0 or greater, in the same sense.
int CompareNoCase(std::string_view a, std::string_view b);

// Removes from the front of `path` the longest run that it shares with `directory`, letter by
// letter even inside a name, and one separator behind that run. A path below the directory becomes
// relative to it; any other is meant to be found through the search path.
std::string StripCommonPrefix(std::string_view path, std::string_view directory);

// Where a file of that name may lie around a folder: in it and in those above it, nearest first, as
// the name says; then likewise by what stands behind the name's last separator, for names that were
// whole paths on another machine. Empty for no folder.
std::vector<std::string> PlacesAround(std::string_view folder, std::string_view name);

// The folders in which game data files are looked for, at most ten, each a text that is put
// directly before the file's name.
class SearchPath {
 public:
  static constexpr std::size_t MAXENTRIES = 10;

  // Adds a separator where the folder has none; "" stands for the name alone. Beyond ten entries
  // nothing is added.
  void Add(std::string_view folder);
  const std::vector<std::string>& Entries() const { return entries_; }
  // Offers the file as named, less what the name shares with the current folder, then the whole
  // name in each folder, until one is taken. False when none is.
  bool Offer(const std::string& name, const std::function<bool(const std::string&)>& take) const;

 private:
  std::vector<std::string> entries_;
};

}  // namespace ferrowand
