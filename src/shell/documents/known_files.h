// How the files of the open maps were when a map read or wrote them last. Whatever is otherwise by
// now, another program has changed.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/file.h"

namespace ferrowand {

class Map;

class KnownFiles {
 public:
  // As it was when the reading began.
  void NoteRead(const Map& map, const std::string& path, const std::optional<FileStamp>& stamp);
  // As it is now.
  void NoteWritten(const Map& map, const std::string& path);
  // The map does not come from the file as it is now, and its user knows.
  void NoteOther(const Map& map, const std::string& path);
  void Forget(const Map& map);

  // Whether the file is as the map read or wrote it. One that is not there is.
  bool IsAsKnown(const Map& map, const std::string& path) const;
  // As it wrote it.
  bool IsAsWritten(const Map& map, const std::string& path) const;
  // How the map read or wrote it last.
  std::optional<FileStamp> StampOf(const Map& map, const std::string& path) const;
  // Whether the file has been changed, and in a way that this was not yet asked about.
  bool TakeChange(const Map& map, const std::string& path);

 private:
  struct Known {
    std::optional<FileStamp> stamp;
    bool written = false;
    std::optional<FileStamp> told;
  };

  const Known* Find(const Map& map, const std::string& path) const;

  std::map<std::pair<const Map*, std::string>, Known> files_;
};

}  // namespace ferrowand
