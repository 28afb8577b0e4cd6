// A folder with tools of the game that do as they are told (see tests/stand_in), and a map in it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/system.h"
#include "support/map_text.h"
#include "support/temp_dir.h"

namespace ferrowand {

// What a sealed level's qbsp leaves.
inline constexpr char SEALED[] = "leave bsp level\nleave prt PRT1\n";

class ToolBench {
 public:
  // The tools lie in the folder itself, the map too or in one below it; the game, quake.exe on
  // every system, in "quake".
  explicit ToolBench(const std::string& mapName = "room.map") : map(dir.Path(mapName)) {
    dir.Write(mapName, "{\n\"classname\" \"worldspawn\"\n" + Cuboid(0, 0, 0, 64, 64, 64) + "}\n");
    std::filesystem::create_directory(FsPath(dir.Path("quake")));
  }

  void Put(const std::string& tool, const std::string& orders,
           const std::string& folder = "") const {
    const bool hasExtension = PathSeparator() == '\\' || !folder.empty();
    const std::string base = (folder.empty() ? "" : folder + "/") + tool;
    dir.Write(base + ".txt", orders);
    std::filesystem::copy_file(FERROWAND_STAND_IN,
                               FsPath(dir.Path(hasExtension ? base + ".exe" : base)),
                               std::filesystem::copy_options::overwrite_existing);
  }
  void PutAll(const std::string& qbsp = SEALED) const {
    Put("qbsp", qbsp);
    Put("light", "print lit\nleave bsp light\n");
    Put("vis", "need prt\nleave bsp vis\n");
    Put("quake", "", "quake");
  }
  // How it was called: the line, the folder, what else the system knows; nothing if it was not.
  std::vector<std::string> Called(const std::string& tool) const {
    std::vector<std::string> lines;
    std::ifstream log(FsPath(dir.Path(tool + ".log")));
    for (std::string line; std::getline(log, line);) lines.push_back(line);
    return lines;
  }
  bool Exists(const std::string& name) const {
    return std::filesystem::exists(FsPath(dir.Path(name)));
  }

  TempDir dir;
  const std::string map;
};

}  // namespace ferrowand
