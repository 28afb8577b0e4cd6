// The document: the world entity, which owns everything else, and what a map has besides.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "document/announcement.h"
#include "document/entity.h"
#include "document/face_selection.h"
#include "document/game_data.h"
#include "document/selection.h"
#include "document/undo_store.h"

namespace ferrowand {

inline constexpr char UNNAMED[] = "unnamed.map";  // the file name of a document without a file

inline constexpr std::uint8_t MAP_GRID = 1;
inline constexpr std::uint8_t MAP_SNAP = 2;
inline constexpr std::uint8_t MAP_ANGLE_SNAP = 4;

class ObjectReader;
class ReadLog;
class TemplateIndex;
struct ReplaceResult;
class TextReader;

// The settings that decide what is written, and how; the rest is the document's own.
struct SaveSettings {
  bool onlyOneWad = false;  // the "wad" key of a Quake map names the first only
  std::uint8_t defaultWorldType = 0;
  std::uint8_t defaultSounds = 0;
  unsigned backups = 0;      // earlier versions that a save keeps; an export none
  std::string copyFolder{};  // of texts that have to go over the old one (see ReplaceRules)
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
  // readProgress() is not 0. The document's content is replaced. Damage costs what is damaged: the
  // rest is read, and what was lost is told in one summary at the end. `flags` and the result are
  // sets of READ_ bits.
  unsigned ReadMap(TextReader& reader, unsigned flags);
  unsigned readProgress() const { return readProgress_; }
  // Whether the file that the map was read from has more in it than the map: until it is saved.
  bool readWithLoss() const;
  // So it was where what has been read now was read from.
  void RememberLoss();

  // Writes the document under the name, to which ".xmp" is added if it has no extension: a Quake
  // map if it ends in ".map", else an Extended Map. False, and the old file untouched, when the
  // file could not be written, which has been reported then. Sets the worldspawn's own keys. That
  // name is the document's from then on, and it is not modified any more.
  bool Save(const std::string& name, unsigned option, const SaveSettings& settings);
  // The same, but the document keeps its own name and stays as modified as it is.
  bool Export(const std::string& name, unsigned option, const SaveSettings& settings);

  // What the game's tools are to read, under that name, and nothing else: the document keeps its
  // keys, its name and its state.
  bool WriteForTools(const std::string& name, unsigned option, const SaveSettings& settings);

  // What a save as Extended Map would write. The document stays to the letter as it is.
  std::string ExtendedText(const SaveSettings& settings) const;

  // The value of "message", or "Unnamed".
  std::string Name() const;
  bool IsUnnamed() const { return filename == UNNAMED; }
  // Of its file; empty for a document without one.
  std::string Folder() const;

  WadList wads;
  ClassSet* classSet;              // never null; not owned
  std::string classSetName;        // as the map names it
  std::string filename = UNNAMED;  // set before reading: WADs and classes may lie around it
  Selection selection{*this};
  FaceSelection pickedFaces{*this};
  UndoStore undo;

  // Null, or one of the children. After the current layer has left another takes its place.
  entity* currentLayer() const { return currentLayer_; }
  void SetCurrentLayer(entity* layer);
  // Null, or an object of this map that new ones join.
  entity* leadingGroup() const { return leadingGroup_; }
  void SetLeadingGroup(entity* group);

  // A set of MAP_ bits.
  std::uint8_t optionBits() const { return optionBits_; }
  void SetOptionBits(std::uint8_t bits);

  // Whether it is another state than the one that was saved or loaded last: back there by undo or
  // redo it is not.
  bool modified() const { return undo.State() != savedState_; }
  void MarkSaved();

  void AddObserver(MapObserver& observer) { observers_.push_back(&observer); }
  void RemoveObserver(MapObserver& observer);
  void ShowStatus(const std::string& text);
  // Something that is not the map's own has changed: options, palette, WADs.
  void AnnounceEverything();
  // The map's class set has been loaded anew: every object is bound again. What steps of undo keep
  // is when it comes back.
  void BindClassesAnew();
  // WADs have other textures by now: every face is bound again, as above.
  void BindTexturesAnew();
  // Uses the WADs of these names, in their order, from now on; no step of undo (see
  // EditStep::ChooseWads). What cannot be found is not said.
  void UseWads(const std::vector<std::string>& names);
  // Uses the classes of that file from now on; no step of undo (see EditStep::ChooseClasses).
  void UseClasses(const std::string& name);

  GameData& Data() const { return data_; }
  // Of this map's instances. It keeps itself up to date.
  TemplateIndex& Templates() const { return *templates_; }
  // What new objects are given to: the leading group, else the current layer, else the map itself.
  entity& NewParent();
  // A new layer of that name, made the current one.
  entity* AddLayer(const std::string& name);

 private:
  friend class ChangeScope;
  friend class FaceSelection;
  friend class PointersKept;
  friend class entity;

  // What leaves the map is nothing that it points to any more.
  void Forget(const entity& tree);
  void ForgetStrangers();
  void FinishSelection();
  void Announce();
  void WriteQuakeMap(TextWriter& out, const entity& keys, unsigned option) const;
  ReplaceResult Write(const std::string& target, unsigned option, const SaveSettings& settings);
  void TellWritten(const std::string& target, unsigned option, const ReplaceResult& result);
  void SetWorldspawnKeys(entity& world, const SaveSettings& settings, bool onlyOneWad) const;
  entity* FirstLayer() const;
  bool ReadWorldspawn(TextReader& reader);
  void OpenInWorldspawn(TextReader& reader, ObjectReader& objects);
  void ReadWorldspawnKey(ObjectReader& objects);
  void TakeWorldspawnKey(const std::string& key, const std::string& value);
  void ReadBehindWorldspawn(TextReader& reader);
  entity* OpenBehindWorldspawn(TextReader& reader, ObjectReader& objects, entity* last);
  entity* ReadUnopened(ObjectReader& objects, entity* last);
  void JoinWorldspawn(entity& object);
  void JoinOtherWorlds(entity& parent);
  void TakeMissingKeys(const entity& world);
  void LoadWads(const std::string& names, bool quiet);
  void LoadClassSet(const std::string& name, bool quiet);
  void BindAnew();
  void FinishWorldspawn();

  // What has been read of the worldspawn.
  struct WorldBlock {
    bool isOpened = false;
    bool isBlank = true;
    bool hasClass = false;
  };

  GameData& data_;
  std::unique_ptr<ReadLog> log_;
  WorldBlock world_;
  unsigned readProgress_ = 0;
  bool staleBindings_ = false;  // WADs or classes came after what uses them
  entity* currentLayer_ = nullptr;
  entity* leadingGroup_ = nullptr;
  std::uint8_t optionBits_ = MAP_GRID | MAP_SNAP | MAP_ANGLE_SNAP;
  UndoStore::StateId savedState_ = undo.State();

  std::vector<MapObserver*> observers_;
  std::unique_ptr<TemplateIndex> templates_;
  MapChange pending_;  // since the outermost scope began
  int openScopes_ = 0;
  bool keepsPointers_ = false;  // see PointersKept
};

// While one lives, the map goes on pointing to what leaves it (its selection, current layer and
// leading group), and forgets at the end what has not come back: where many objects move about this
// is looked through once and not for each of them.
class PointersKept {
 public:
  explicit PointersKept(Map& map);
  ~PointersKept();
  PointersKept(const PointersKept&) = delete;
  PointersKept& operator=(const PointersKept&) = delete;

 private:
  Map& map_;
  bool outer_;
};

// The file that a save under the name writes.
std::string SaveTarget(const std::string& name);

// Whether the file is a Quake map that this program has written: by its first lines.
bool IsOwnQuakeMap(const std::string& name);

// Opens and reads a whole file. Null when it cannot be opened, which is not reported.
std::unique_ptr<Map> LoadMap(GameData& data, const std::string& name, std::size_t undoLevels = 30);

}  // namespace ferrowand
