#include "document/map.h"
#include "document/text_writer.h"
#include "document/winfile.h"
#include "shell/services/path_text.h"

namespace ferrowand {
namespace {

bool IsQuakeMapName(std::string_view name) {
  return name.size() >= 4 && EqualNoCase(name.substr(name.size() - 4), ".map");
}

}  // namespace

void Map::SetWorldspawnKeys(const SaveSettings& settings, bool onlyOneWad) {
  const bool first = onlyOneWad && !wads.Items().empty();
  SetKey("wad", first ? wads.Items().front().name : wads.Names());
  SetKey("XMPqc", classSetName);
  SetKey("XMPversion", "1.01");
  if (!GetKey("worldtype")) SetKey("worldtype", std::to_string(settings.defaultWorldType));
  if (!GetKey("sounds")) SetKey("sounds", std::to_string(settings.defaultSounds));
  if (!GetKey("message")) SetKey("message", "Ferrowand-generated map!");
}

void Map::WriteMapBrushes(TextWriter& out, unsigned option) const {
  out.Put("//////////////////////////////\n");
  out.Put("//     --- Map created with //\n");
  out.Put("//                Ferrowand //\n");
  out.Put("{\n");
  WriteGameKeys(out);
  brush.WriteFaces(out, Report());
  for (const EntityPtr& child : getEntityList()) child->WriteMapBrushes(out, option);
  out.Put("}\n");
  for (const EntityPtr& child : getEntityList()) child->WriteMapEntity(out, option);
}

bool Map::Save(const std::string& name, unsigned option, const SaveSettings& settings) {
  const bool named = SplitPath(name).extension.size() >= 2;
  const std::string target = named ? name : name + ".xmp";
  const bool quakeMap = IsQuakeMapName(target);

  SetWorldspawnKeys(settings, quakeMap && settings.onlyOneWad);
  TextWriter out;
  if (quakeMap) {
    WriteMapBrushes(out, option);
  } else {
    WriteExtended(out);
  }
  const bool written = ReplaceFileText(target, out.Text(), Report());
  if (written) {
    filename = target;
    modified = false;
  }
  // Meant even after a failure: that one has had a box of its own.
  ShowStatus(quakeMap ? "Saved MAP format" : "Saved Extended MAP format");
  return written;
}

}  // namespace ferrowand
