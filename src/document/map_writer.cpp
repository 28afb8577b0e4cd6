#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/path_text.h"
#include "base/text_writer.h"
#include "base/safe_file.h"
#include "document/map.h"

namespace ferrowand {
namespace {

bool IsQuakeMapName(std::string_view name) {
  return name.size() >= 4 && EqualNoCase(name.substr(name.size() - 4), ".map");
}

std::string WithExtension(const std::string& name) {
  return SplitPath(name).extension.size() >= 2 ? name : name + ".xmp";
}

// Told even after a failure, which is meant: that one has had a box of its own.
const char* SavedText(std::string_view target) {
  return IsQuakeMapName(target) ? "Saved MAP format" : "Saved Extended MAP format";
}

// -1 when there is none.
int FindKey(const entity& e, std::string_view name) {
  int index = e.numkeys() - 1;
  while (index >= 0 && !EqualNoCase(e.KeyName(index), name)) --index;
  return index;
}

}  // namespace

// What an earlier save had to add stands behind the version, and is set again like the rest: saving
// twice gives the same file.
void Map::SetWorldspawnKeys(const SaveSettings& settings, bool onlyOneWad) {
  const std::pair<const char*, std::string> additions[] = {
      {"worldtype", std::to_string(settings.defaultWorldType)},
      {"sounds", std::to_string(settings.defaultSounds)},
      {"message", "Ferrowand-generated map!"}};
  std::vector<std::pair<std::string, std::string>> added;
  const int version = FindKey(*this, "XMPversion");
  for (const auto& [name, value] : additions) {
    const int index = FindKey(*this, name);
    if (index < 0) {
      added.emplace_back(name, value);
    } else if (version >= 0 && index > version) {
      added.emplace_back(KeyName(index), KeyValue(index));
    }
  }
  const bool first = onlyOneWad && !wads.Items().empty();
  SetKey("wad", first ? wads.Items().front().name : wads.Names());
  SetKey("XMPqc", classSetName);
  SetKey("XMPversion", "1.01");
  for (const auto& [name, value] : added) SetKey(name, value);
}

void Map::WriteMapBrushes(TextWriter& out, unsigned option) const {
  out.Put("//////////////////////////////\n");
  out.Put("//     --- Map created with //\n");
  out.Put("//                Ferrowand //\n");
  out.Put("{\n");
  WriteKeysAndFaces(out, [](std::string_view name) { return !IsEditorKey(name); });
  for (const EntityPtr& child : getEntityList()) child->WriteMapBrushes(out, option);
  out.Put("}\n");
  for (const EntityPtr& child : getEntityList()) child->WriteMapEntity(out, option);
}

bool Map::Write(const std::string& target, unsigned option, const SaveSettings& settings) {
  const bool quakeMap = IsQuakeMapName(target);
  SetWorldspawnKeys(settings, quakeMap && settings.onlyOneWad);
  TextWriter out;
  if (quakeMap) {
    WriteMapBrushes(out, option);
  } else {
    WriteExtended(out);
  }
  return ReplaceFileText(target, out.Text(), Report());
}

bool Map::Save(const std::string& name, unsigned option, const SaveSettings& settings) {
  const std::string target = WithExtension(name);
  const bool written = Write(target, option, settings);
  if (written) {
    filename = target;
    MarkSaved();
  }
  ShowStatus(SavedText(target));
  return written;
}

bool Map::Export(const std::string& name, unsigned option, const SaveSettings& settings) {
  const std::string target = WithExtension(name);
  const bool written = Write(target, option, settings);
  ShowStatus(SavedText(target));
  return written;
}

}  // namespace ferrowand
