// The files of a compile: what the tools are given, what they leave beside it, and where the game
// looks for that.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file.h"

namespace ferrowand {

class Map;

// The whole path of the Quake map that the tools are given for the map: beside its own file and of
// its name. Where that would be the map's own file, and would hold less than the map, another name;
// and another one where the tools could not read the letters of that name. `option` is a set of
// WRITE_ bits; the map has a file.
std::string ToolsMapPath(const Map& map, unsigned option);
// Whether a Quake map of it leaves objects out, or makes something else of them.
bool LosesObjects(const Map& map, unsigned option);

// All from the path of the Quake map.
struct CompilePaths {
  explicit CompilePaths(const std::string& mapPath);

  std::string map;
  std::string base;           // its name, without folder and extension
  std::string bsp, prt, pts;  // beside it
  std::string argument;       // how the tools are told of it: short, no extension, quoted
};

// In words, what the user should know of the way to the tools: that the map goes by another name,
// that a copy of it is compiled in the plain folder, if there is one, or that they may not find its
// own.
std::vector<std::string> NotesOnToolsMap(const Map& map, const std::string& toolsMapPath,
                                         const std::string& plainFolder);

// Letters that every tool reads, and a name of such letters for any name: another one for another.
bool IsAscii(std::string_view text);
std::string AsciiName(std::string_view name);

// What earlier runs have left, out of the way of the next one while it lives.
class FilesAside {
 public:
  explicit FilesAside(const CompilePaths& paths);
  // Puts back what was neither put back nor dropped.
  ~FilesAside() { PutBack(); }
  FilesAside(const FilesAside&) = delete;
  FilesAside& operator=(const FilesAside&) = delete;

  // Whether the BSP that is there now is another one than was there before.
  bool IsBspNew() const;
  // Over what is there by now.
  void PutBack();
  // The new files count.
  void Drop();

 private:
  struct Aside {
    std::string name;
    std::optional<FileStamp> stamp;  // nothing: it was not there
    bool isAside = false;            // else it could not be moved
  };
  std::array<Aside, 3> files_;
  bool isOver_ = false;
};

// The level goes to where the game looks for it; a line for whatever went wrong. Of a game without
// a folder nothing is known, and nothing done.
std::vector<std::string> CopyToGame(const CompilePaths& paths, const std::string& quakeDirectory);

}  // namespace ferrowand
