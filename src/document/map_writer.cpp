#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/path_text.h"
#include "base/safe_file.h"
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/read_log.h"
#include "document/written_points.h"

namespace ferrowand {
namespace {

constexpr std::string_view QUAKE_MAP_HEADER =
    "//////////////////////////////\n"
    "//     --- Map created with //\n"
    "//                Ferrowand //\n";

bool IsQuakeMapName(std::string_view name) {
  return name.size() >= 4 && EqualNoCase(name.substr(name.size() - 4), ".map");
}

bool HasBrush(const entity& tree) {
  return tree.brush.HasText() ||
         std::ranges::any_of(tree.getEntityList(),
                             [](const EntityPtr& child) { return HasBrush(*child); });
}

// What the game does not get as what it is: an entity that is hidden has lost its class there. That
// is meant, and no loss.
std::string HiddenText(const Map& map) {
  int leftOut = 0, inWorld = 0;
  ForEachEntity(map, [&](const entity& e) {
    const EntityClass& own = *e.getClass();
    const char* shown = e.GetKey("XMPoldclassname");
    if (own.Kind() != EntityKind::Hidden || !shown || !own.Set().FindClass(shown).IsOwnBlock()) {
      return;
    }
    ++(HasBrush(e) ? inWorld : leftOut);
  });
  std::string text;
  if (leftOut > 0) text += Format(", hidden and left out: %d", leftOut);
  if (inWorld > 0) text += Format(", hidden and made brushes of the world: %d", inWorld);
  return text;
}

std::string SavedText(std::string_view target, const SavedShape& shape) {
  std::string text = IsQuakeMapName(target) ? "Saved MAP format" : "Saved Extended MAP format";
  if (shape.movedFaces > 0) {
    text += Format(shape.movedFaces == 1
                       ? "; %d face lies between whole units and was moved, by up to %.2f units"
                       : "; %d faces lie between whole units and were moved, by up to %.2f units",
                   shape.movedFaces, shape.farthest);
  }
  if (shape.lostFaces > 0) {
    text += Format(shape.lostFaces == 1 ? "; %d face is too small for whole units and was lost"
                                        : "; %d faces are too small for whole units and were lost",
                   shape.lostFaces);
  }
  return text;
}

// -1 when there is none.
int FindKey(const entity& e, std::string_view name) {
  int index = e.numkeys() - 1;
  while (index >= 0 && !EqualNoCase(e.KeyName(index), name)) --index;
  return index;
}

// Without files there is nothing to name.
void SetNamesKey(entity& world, const char* name, const std::string& names) {
  if (!names.empty()) return world.SetKey(name, names);
  if (const int index = FindKey(world, name); index >= 0) world.RemoveKey(index);
}

}  // namespace

std::string SaveTarget(const std::string& name) {
  return SplitPath(name).extension.size() >= 2 ? name : name + ".xmp";
}

bool IsOwnQuakeMap(const std::string& name) {
  return FileBytes(name, QUAKE_MAP_HEADER.size()) == QUAKE_MAP_HEADER;
}

// What an earlier save had to add stands behind the version, and is set again like the rest: saving
// twice gives the same file.
void Map::SetWorldspawnKeys(entity& world, const SaveSettings& settings, bool onlyOneWad) const {
  const std::pair<const char*, std::string> additions[] = {
      {"worldtype", std::to_string(settings.defaultWorldType)},
      {"sounds", std::to_string(settings.defaultSounds)},
      {"message", "Ferrowand-generated map!"}};
  std::vector<std::pair<std::string, std::string>> added;
  const int version = FindKey(world, "XMPversion");
  for (const auto& [name, value] : additions) {
    const int index = FindKey(world, name);
    if (index < 0) {
      added.emplace_back(name, value);
    } else if (version >= 0 && index > version) {
      added.emplace_back(world.KeyName(index), world.KeyValue(index));
    }
  }
  const bool first = onlyOneWad && !wads.Items().empty();
  SetNamesKey(world, "wad", first ? wads.Items().front().name : wads.Names());
  SetNamesKey(world, "XMPqc", classSetName);
  world.SetKey("XMPversion", "1.01");
  for (const auto& [name, value] : added) world.SetKey(name, value);
}

void Map::WriteMapBrushes(TextWriter& out, unsigned option) const {
  WriteQuakeMap(out, *this, option);
}

void Map::WriteQuakeMap(TextWriter& out, const entity& keys, unsigned option) const {
  out.Put(QUAKE_MAP_HEADER);
  out.Put("{\n");
  WriteKeysAndFaces(out, keys, [](std::string_view name) { return !IsEditorKey(name); });
  for (const EntityPtr& child : getEntityList()) child->WriteMapBrushes(out, option);
  out.Put("}\n");
  for (const EntityPtr& child : getEntityList()) child->WriteMapEntity(out, option);
}

std::string Map::ExtendedText(const SaveSettings& settings) const {
  const EntityPtr world = CopyAlone();
  SetWorldspawnKeys(*world, settings, false);
  TextWriter out;
  WriteExtended(out, *world);
  return std::string(out.Text());
}

ReplaceResult Map::Write(const std::string& target, unsigned option, const SaveSettings& settings) {
  ChangeScope scope(*this);
  scope.Change().file = true;  // also of an export: what it gives the world may name the map
  const bool quakeMap = IsQuakeMapName(target);
  SetWorldspawnKeys(*this, settings, quakeMap && settings.onlyOneWad);
  TextWriter out;
  if (quakeMap) {
    WriteMapBrushes(out, option);
  } else {
    WriteExtended(out);
  }
  return ReplaceFile(target, out.Text(), {settings.backups, settings.copyFolder}, &Report());
}

// The status also after a failure, which is meant: that one has had a box of its own.
void Map::TellWritten(const std::string& target, unsigned option, const ReplaceResult& result) {
  if (!result.copy.empty()) {
    Report().Show("Error",
                  Format("%s could not be written. All of the map is in %s.", target.c_str(),
                         result.copy.c_str()),
                  Buttons::Ok, Icon::Stop);
  }
  std::string status = SavedText(
      target, result.written ? ShapeInFile(*this, IsQuakeMapName(target), Report()) : SavedShape());
  if (IsQuakeMapName(target) && !(option & WRITE_VISIBLE_ONLY)) status += HiddenText(*this);
  if (!result.hasBackup) status += ", without keeping the version before";
  ShowStatus(status);
}

bool Map::Save(const std::string& name, unsigned option, const SaveSettings& settings) {
  const std::string target = SaveTarget(name);
  const ReplaceResult result = Write(target, option, settings);
  if (result.written) {
    filename = target;
    *log_ = ReadLog(Report());  // the file has what the map has
    MarkSaved();
  }
  TellWritten(target, option, result);
  return result.written;
}

bool Map::Export(const std::string& name, unsigned option, const SaveSettings& settings) {
  const std::string target = SaveTarget(name);
  SaveSettings withoutBackups = settings;
  withoutBackups.backups = 0;
  const ReplaceResult result = Write(target, option, withoutBackups);
  TellWritten(target, option, result);
  return result.written;
}

bool Map::WriteForTools(const std::string& name, unsigned option, const SaveSettings& settings) {
  const EntityPtr world = CopyAlone();
  SetWorldspawnKeys(*world, settings, settings.onlyOneWad);
  TextWriter out;
  WriteQuakeMap(out, *world, option);
  const ReplaceResult result =
      ReplaceFile(name, out.Text(), {settings.backups, settings.copyFolder}, &Report());
  TellWritten(name, option, result);
  return result.written;
}

}  // namespace ferrowand
