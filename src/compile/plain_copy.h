// A map and what belongs to it in a folder that every tool can be told of: for a map whose own has
// letters that the tools do not read, on a disk that keeps no short names.
#pragma once

#include <string>
#include <vector>

#include "compile/compile_files.h"

namespace ferrowand {

// Where such a copy of the Quake map stands, below a folder named quake, from which the tools
// count; empty for a map that the tools can be told of where it is.
std::string PlainFolderFor(const std::string& toolsMapPath);

struct ToolsWad {
  std::string name;  // by which the map calls it
  std::string file;
};
std::vector<ToolsWad> WadsForTools(const Map& map);

class PlainCopy {
 public:
  PlainCopy(const CompilePaths& own, const std::string& folder, std::vector<ToolsWad> wads);

  const CompilePaths& Paths() const { return plain_; }
  // The map, its WADs, and what there is of earlier stages: as beside the map, no older and no
  // more. False when that could not be done.
  bool Send();
  // What the tool has made there, to where it would have made it; a line for what could not be.
  std::vector<std::string> Fetch() const;

 private:
  struct Made {
    std::string own, plain;
    std::optional<FileStamp> sent;  // there, before the tool ran
  };

  bool SendWads() const;

  const CompilePaths own_, plain_;
  const std::string quake_, maps_;  // folders of the copy
  const std::vector<ToolsWad> wads_;
  std::vector<Made> made_;
};

}  // namespace ferrowand
