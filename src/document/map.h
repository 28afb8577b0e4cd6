// The document: the world entity, which owns everything else, and what a map has besides.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "document/entity.h"
#include "document/game_data.h"
#include "document/undo_store.h"

namespace ferrowand {

inline constexpr std::uint8_t MAP_GRID = 1;
inline constexpr std::uint8_t MAP_SNAP = 2;
inline constexpr std::uint8_t MAP_ANGLE_SNAP = 4;

class TemplateIndex;

// Who shows a map is told through this what the document has to say.
class MapObserver {
 public:
  virtual ~MapObserver() = default;
  // For the status line of every view of the map.
  virtual void OnStatus(const std::string& text) = 0;
};

// The settings that decide what is written; the rest is the document's own.
struct SaveSettings {
  bool onlyOneWad = false;  // the "wad" key of a Quake map names the first only
  std::uint8_t defaultWorldType = 0;
  std::uint8_t defaultSounds = 0;
};

class Map : public entity {
 public:
  // A new document: no brushes, no WADs, the default class set, one layer. `data` outlives it.
  explicit Map(GameData& data, std::size_t undoLevels = 30);
  ~Map() override;

  entity* AddChild(EntityPtr child) override;
  Map* OwningMap() override { return this; }
  // The whole Quake map.
  void WriteMapBrushes(TextWriter& out, unsigned option) const override;

  // Reads up to 50 world brushes and comes back; call it again, with the flags it gave, while
  // readProgress() is not 0. The document's content is replaced. Damage is reported once a kind and
  // reading goes on.
  unsigned ReadMap(TextReader& reader, unsigned flags);
  unsigned readProgress() const { return readProgress_; }

  // Writes the document under the name, to which ".xmp" is added if it has no extension: a Quake
  // map if it ends in ".map", else an Extended Map. False, and the old file untouched, when the
  // file could not be written, which has been reported then. Sets the worldspawn's own keys.
  bool Save(const std::string& name, unsigned option, const SaveSettings& settings);

  // The keys of the worldspawn that tell what the map is made with, for whoever writes it.
  void SetWorldspawnKeys(const SaveSettings& settings, bool onlyOneWad);

  // The value of "message", or "Unnamed".
  std::string Name() const;

  WadList wads;
  ClassSet* classSet;        // never null; not owned
  std::string classSetName;  // as the map names it
  std::string filename = "unnamed.map";
  entity* currentLayer = nullptr;  // null, or one of the children
  entity* leadingGroup = nullptr;  // null, or an object of this map that new ones join
  std::vector<entity*> selection;  // in the order of selecting; objects of this map, not owned
  std::uint8_t optionBits = MAP_GRID | MAP_SNAP | MAP_ANGLE_SNAP;
  bool modified = false;
  UndoStore undo;

  void AddObserver(MapObserver& observer) { observers_.push_back(&observer); }
  void RemoveObserver(MapObserver& observer);
  void ShowStatus(const std::string& text);

  GameData& Data() const { return data_; }
  // Of this map's instances. It keeps itself up to date.
  TemplateIndex& Templates() const { return *templates_; }
  // What new objects are given to: the leading group, else the current layer, else the map itself.
  entity& NewParent();
  // A new layer of that name, made the current one.
  entity* AddLayer(const std::string& name);

 private:
  entity* FirstLayer() const;
  bool ReadWorldspawn(TextReader& reader, unsigned& flags);
  unsigned ReadWorldspawnKey(TextReader& reader, KeyText& text, unsigned flags);
  void LoadWads(const std::string& names, bool quiet);
  void LoadClassSet(const std::string& name, bool quiet);
  void FinishWorldspawn();

  GameData& data_;
  unsigned readProgress_ = 0;
  bool staleBindings_ = false;  // WADs or classes came after what uses them
  std::vector<MapObserver*> observers_;
  std::unique_ptr<TemplateIndex> templates_;
};

// Opens and reads a whole file. Null when it cannot be opened, which is not reported. `flags`, when
// given, receives the READ_ bits of the load.
std::unique_ptr<Map> LoadMap(GameData& data, const std::string& name, std::size_t undoLevels = 30,
                             unsigned* flags = nullptr);

}  // namespace ferrowand
