#include "operations/held_files.h"

#include <algorithm>
#include <unordered_set>

#include "base/report.h"
#include "document/classes/special_classes.h"
#include "document/map.h"

namespace ferrowand {
namespace {

HeldFile HeldMap(const Map& map) {
  HeldFile held{HeldKind::Map, map.filename};
  unsigned objects = 0;
  ForEachEntity(map, [&](const entity& e) {
    held.bytes += e.Bytes();
    ++objects;
  });
  held.bytes += map.undo.Bytes();
  held.contents =
      Format("%u objects, %u steps of undo", objects, static_cast<unsigned>(map.undo.StepCount()));
  held.users = 1;
  return held;
}

bool Uses(const Map& map, const WadFile& wad) {
  const auto& items = map.wads.Items();
  return std::ranges::find(items, &wad, &WadList::Item::wad) != items.end();
}

HeldFile HeldWad(const GameData& data, const MapList& maps, const WadFile& wad) {
  HeldFile held{HeldKind::Wad, wad.FileName(), wad.Bytes()};
  held.contents = Format("%u textures, %u with pixels",
                         static_cast<unsigned>(wad.Textures().size()), unsigned{wad.numCached()});
  held.users = static_cast<std::size_t>(
      std::ranges::count_if(maps, [&](const auto& map) { return Uses(*map, wad); }));
  if (&wad == &data.wads.Default()) ++held.users;
  return held;
}

HeldFile HeldClasses(const MapList& maps, const ClassSet& classes) {
  HeldFile held{HeldKind::Classes, classes.FileName()};
  held.contents = Format("%u classes", static_cast<unsigned>(classes.Classes().size()));
  held.users = static_cast<std::size_t>(
      std::ranges::count_if(maps, [&](const auto& map) { return map->classSet == &classes; }));
  return held;
}

}  // namespace

std::vector<HeldFile> HeldFiles(const GameData& data, const MapList& maps) {
  std::vector<HeldFile> held;
  for (const auto& map : maps) held.push_back(HeldMap(*map));
  for (const auto& wad : data.wads.Loaded()) held.push_back(HeldWad(data, maps, *wad));
  for (const auto& classes : data.classes.Loaded()) held.push_back(HeldClasses(maps, *classes));
  return held;
}

std::vector<std::string> PurgeWads(GameData& data, const MapList& maps) {
  std::unordered_set<const WadFile*> used;
  for (const auto& map : maps) {
    for (const WadList::Item& item : map->wads.Items()) used.insert(item.wad);
    // Whoever shows the map must hold nothing of what goes.
    map->BindTexturesAnew();
  }
  return data.wads.CloseOthers(used);
}

}  // namespace ferrowand
