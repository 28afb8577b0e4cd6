#include "cli/map_statistics.h"

#include <algorithm>

#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

std::string LowerCase(std::string_view name) {
  std::string lower(name);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return lower;
}

void CountFaces(const entity& e, MapStatistics& statistics) {
  for (const Face& face : e.brush.Faces()) {
    ++statistics.faces;
    statistics.textures.insert(LowerCase(face.Name()));
    if (face.texture == nullptr || face.texture == face.texture->wad->BadTexture()) {
      ++statistics.missingTextures;
    }
  }
  if (e.brush.getNumFaces() > 0) {
    ++statistics.brushes;
    statistics.bounds.Add(e.brush.Box());
  }
}

}  // namespace

MapStatistics CountMap(const entity& world) {
  MapStatistics statistics;
  ForEachEntity(world, [&](const entity& e) {
    CountFaces(e, statistics);
    switch (e.getClass()->Kind()) {
      case EntityKind::Brush:
        return;
      case EntityKind::Layer:
        ++statistics.layers;
        return;
      case EntityKind::Hidden:
        ++statistics.hidden;
        return;
      case EntityKind::TemplateClass:
        ++statistics.templateClasses;
        return;
      case EntityKind::TemplateInstance:
        ++statistics.templateInstances;
        break;
      case EntityKind::Embed:
        ++statistics.embeds;
        break;
      case EntityKind::Entity:
      case EntityKind::Unknown:
        break;
    }
    const char* classname = e.GetKey("classname");
    ++statistics.entities;
    ++statistics.classnames[classname != nullptr ? classname : ""];
  });
  return statistics;
}

}  // namespace ferrowand
