#include "operations/map_statistics.h"

#include <algorithm>

#include "base/text_parts.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

void CountFaces(const entity& e, MapStatistics& statistics) {
  for (const Face& face : e.brush.Faces()) {
    statistics.textures.insert(LowerCase(face.Name()));
    if (face.texture == nullptr || face.texture == face.texture->wad->BadTexture()) {
      ++statistics.missingTextures;
    }
  }
  if (e.brush.getNumFaces() > 0) statistics.bounds.Add(e.brush.Box());
}

bool IsEntity(const entity& e) {
  switch (e.getClass()->Kind()) {
    case EntityKind::Brush:
    case EntityKind::Layer:
    case EntityKind::Hidden:
    case EntityKind::TemplateClass:
      return false;
    default:
      return true;
  }
}

std::string_view ClassnameOf(const entity& e) {
  const char* classname = e.GetKey("classname");
  return classname != nullptr ? classname : "";
}

void CountEntity(const entity& e, MapStatistics& statistics) {
  const std::string_view classname = ClassnameOf(e);
  ++statistics.classnames[std::string(classname)];
  const char* exit = classname == "trigger_changelevel" ? e.GetKey("map") : nullptr;
  if (exit != nullptr) statistics.exits.emplace_back(exit);
}

void CountKind(const entity& e, MapStatistics& statistics) {
  switch (e.getClass()->Kind()) {
    case EntityKind::Layer:
      ++statistics.layers;
      break;
    case EntityKind::Hidden:
      ++statistics.hidden;
      break;
    case EntityKind::TemplateClass:
      ++statistics.templateClasses;
      break;
    case EntityKind::TemplateInstance:
      ++statistics.templateInstances;
      break;
    case EntityKind::Embed:
      ++statistics.embeds;
      break;
    default:
      break;
  }
}

std::string Counted(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

}  // namespace

MapFigures FiguresOf(const entity& world) {
  MapFigures figures;
  ForEachEntity(world, [&](const entity& e) {
    figures.faces += static_cast<std::size_t>(e.brush.getNumFaces());
    if (e.brush.getNumFaces() > 0) ++figures.brushes;
    if (!IsEntity(e)) return;
    ++figures.entities;
    const std::string_view classname = ClassnameOf(e);
    if ((e.flags() & ENTITY_IS_LIGHT) != 0 || classname.starts_with("light")) ++figures.lights;
    if (classname == "info_player_deathmatch") ++figures.deathmatchStarts;
  });
  return figures;
}

MapStatistics CountMap(const entity& world) {
  MapStatistics statistics;
  static_cast<MapFigures&>(statistics) = FiguresOf(world);
  ForEachEntity(world, [&](const entity& e) {
    CountFaces(e, statistics);
    CountKind(e, statistics);
    if (IsEntity(e)) CountEntity(e, statistics);
  });
  return statistics;
}

std::string InWords(const MapFigures& figures) {
  return Counted(figures.brushes, "brush", "brushes") + ", " +
         Counted(figures.entities, "entity", "entities") + ", " +
         Counted(figures.lights, "light", "lights") + ", " +
         Counted(figures.faces, "face", "faces") + ", " +
         Counted(figures.deathmatchStarts, "deathmatch start", "deathmatch starts");
}

}  // namespace ferrowand
