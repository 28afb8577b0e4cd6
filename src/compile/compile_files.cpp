#include "compile/compile_files.h"

#include <algorithm>

#include "base/path_text.h"
#include "base/report.h"
#include "base/safe_file.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "platform/process.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

constexpr char ASIDE[] = ".before";
constexpr std::size_t LONGEST_SHORT_PATH = 200;

bool IsQuakeMap(const std::string& path) {
  return EqualNoCase(SplitPath(path).extension, ".map");
}

// Folders are told by their short names; the map by its own, since what the tools leave is called
// so.
std::string ToolsPath(const PathParts& parts) {
  std::string folder = parts.directory.empty() ? "" : InFolder(ShortPath(parts.directory), "");
  if (folder.size() + parts.base.size() > LONGEST_SHORT_PATH) folder = parts.directory;
  return folder + parts.base;
}

// The system cares for the case of letters, or writes the game's own way.
std::string GameExtension(const char* upper, const char* lower) {
  return PathSeparator() == '\\' ? upper : lower;
}

}  // namespace

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string AsciiName(std::string_view name) {
  std::uint32_t hash = 2166136261u;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
  return Format("map_%08x", hash);
}

bool LosesObjects(const Map& map, unsigned option) {
  bool loses = map.readWithLoss();
  ForEachEntity(map, [&](const entity& e) {
    if (&e == &map) return;
    switch (e.getClass()->Kind()) {
      case EntityKind::Hidden:
      case EntityKind::TemplateClass:
      case EntityKind::TemplateInstance:
      case EntityKind::Embed:
        loses = true;
        break;
      default:
        loses |= (option & WRITE_VISIBLE_ONLY) != 0 && !e.IsVisible();
    }
  });
  return loses;
}

std::string ToolsMapPath(const Map& map, unsigned option) {
  const PathParts parts = SplitPath(map.filename);
  std::string base = IsAscii(parts.base) ? parts.base : AsciiName(parts.base);
  if (IsQuakeMap(map.filename) && base == parts.base) {
    if (!LosesObjects(map, option)) return map.filename;
    base += "_tools";
  }
  return parts.directory + base + ".map";
}

std::vector<std::string> NotesOnToolsMap(const Map& map, const std::string& toolsMapPath,
                                         const std::string& plainFolder) {
  const PathParts given = SplitPath(toolsMapPath), own = SplitPath(map.filename);
  std::vector<std::string> notes;
  if (given.base != own.base) {
    notes.push_back("Compiled as " + given.base + ": " + own.base + own.extension +
                    (IsAscii(own.base)
                         ? " is the map's own file, and would lose what this one leaves out."
                         : " has letters that the tools cannot read."));
  }
  const std::string why =
      given.directory +
      ": it has letters that they cannot read, and its disk keeps no short names.";
  if (!plainFolder.empty()) {
    notes.push_back("The tools work on a copy in " + plainFolder + ", not in " + why);
  } else if (PathSeparator() == '\\' && !IsAscii(ToolsPath(given))) {
    notes.push_back("The tools may not find " + why);
  }
  return notes;
}

CompilePaths::CompilePaths(const std::string& mapPath) : map(mapPath) {
  const PathParts parts = SplitPath(mapPath);
  base = parts.base;
  const std::string beside = parts.directory + parts.base;
  bsp = beside + ".bsp";
  prt = beside + ".prt";
  pts = beside + ".pts";
  argument = QuotedArgument(ToolsPath(parts));
}

FilesAside::FilesAside(const CompilePaths& paths)
    : files_{Aside{paths.bsp, file::Stamp(paths.bsp)}, Aside{paths.prt, file::Stamp(paths.prt)},
             Aside{paths.pts, file::Stamp(paths.pts)}} {
  for (Aside& file : files_) {
    const std::string aside = file.name + ASIDE;
    // What a program that was ended has put aside is what was there before.
    file.isAside =
        file.stamp ? file::Replace(file.name, aside) : file::Find(aside) == FindResult::Found;
  }
}

bool FilesAside::IsBspNew() const {
  const Aside& bsp = files_[0];
  const std::optional<FileStamp> now = file::Stamp(bsp.name);
  return now && (bsp.isAside || now != bsp.stamp);
}

void FilesAside::PutBack() {
  if (isOver_) return;
  isOver_ = true;
  for (const Aside& file : files_) {
    // What a run that was broken off has begun is no level.
    if (file.isAside) file::Replace(file.name + ASIDE, file.name);
  }
}

void FilesAside::Drop() {
  isOver_ = true;
  for (const Aside& file : files_) {
    if (file.isAside) file::Delete(file.name + ASIDE);
  }
}

std::vector<std::string> CopyToGame(const CompilePaths& paths, const std::string& quakeDirectory) {
  if (quakeDirectory.empty()) return {};
  if (file::Find(quakeDirectory) != FindResult::Found) {
    return {"The Quake directory " + quakeDirectory + " is not there: nothing was copied to it."};
  }
  const std::string folder = InFolder(InFolder(quakeDirectory, "id1"), "maps");
  file::MakeFolder(folder);
  std::vector<std::string> troubles;
  const auto copy = [&](const std::string& from, const std::string& extension) {
    if (file::Find(from) != FindResult::Found) return;
    const std::string to = InFolder(folder, paths.base + extension);
    const std::optional<std::string> bytes = FileBytes(from);
    if (!bytes || !ReplaceFile(to, *bytes, {}, nullptr)) {
      troubles.push_back(from + " could not be copied to " + to + ".");
    }
  };
  copy(paths.bsp, GameExtension(".BSP", ".bsp"));
  copy(paths.pts, GameExtension(".PTS", ".pts"));
  return troubles;
}

}  // namespace ferrowand
