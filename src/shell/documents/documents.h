// The open maps and their files: making, reading, writing and closing them, with what is asked on
// the way. It knows no window that shows them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document/kept_maps.h"
#include "shell/documents/known_files.h"

namespace ferrowand {

class ClassSet;
class Dialogs;
class Map;
class Reporter;
struct GameData;
struct Options;
struct SaveSettings;

// Who shows the open maps.
class DocumentsObserver {
 public:
  virtual ~DocumentsObserver() = default;

  virtual void OnMapOpened(Map& map) = 0;
  // It is still whole. Nothing may refer to it afterwards.
  virtual void OnMapClosing(Map& map) = 0;
  // Another one, read anew from the same file, takes its place. Nothing may refer to the old one
  // afterwards.
  virtual void OnMapReplaced(Map& map, Map& by) = 0;
  // It is open already, and was asked for.
  virtual void OnMapWanted(Map& map) = 0;
};

class Documents {
 public:
  // All outlive it. The options tell how to read and write, and keep the recent maps. Unsaved work
  // is kept, and found, by way of the user's own data folder.
  Documents(GameData& data, Options& options, Dialogs& dialogs, DocumentsObserver& observer,
            std::string dataFolder);
  ~Documents();
  Documents(const Documents&) = delete;
  Documents& operator=(const Documents&) = delete;

  // In the order of opening.
  const std::vector<std::unique_ptr<Map>>& Maps() const { return maps_; }

  Map& New();
  // Null, after saying so, when the file cannot be opened. What is open already comes to the front;
  // what is left of unsaved work on the file is offered first.
  Map* Open(const std::string& path);
  // What is left of unsaved work by programs that were ended.
  void OfferRescues();
  // Of the maps whose files other programs have changed: to read them again.
  void OfferReloads();
  // The map uses the classes of the file from now on, which is a step of its own; where it is in
  // use already it is read anew for every map.
  void ChooseClasses(Map& map, const std::string& path);
  // Files of classes, and WADs, that other programs have changed are read anew.
  void FollowClassFiles();
  void FollowWads();
  // All that is not saved, so that the end of the program does not cost it.
  void KeepAll();
  // The same when that end has come: what the user is told.
  std::string KeepForTheEnd();
  // False when the user thought better of it or the file could not be written.
  bool Save(Map& map);
  bool SaveAs(Map& map);
  bool ExportQuakeMap(Map& map);
  // The whole path of the Quake map that the game's tools are to read; nothing when the user
  // thought better of it or it could not be written. A map without a file is saved first; another
  // one stays to the letter as it is. `option` is a set of WRITE_ bits.
  std::optional<std::string> WriteForTools(Map& map, unsigned option);
  // The whole map, to "autoback.xmp" in the current folder, if that takes it.
  void WriteAutoback(const Map& map) const;
  // What is not saved is left for the next start, or the next opening of the file; where it cannot
  // be kept, the user is asked, and the map may stay.
  void Close(Map& map);
  // Asks about every modified map. False when the user wants to stay.
  bool MayQuit();
  // What the options say is shown of all maps, and kept of their steps, is so from now on.
  void FollowOptions();
  // All maps go, unasked and unannounced: nothing shows them any more.
  void Clear();

 private:
  enum class LossAnswer { WriteHere, OtherName, WriteNothing };

  void BindAnew(const ClassSet& classes) const;
  Map& Adopt(std::unique_ptr<Map> map);
  // Asked before a map goes over the file that it was read from with losses.
  LossAnswer AskAboutLoss(const Map& map, const std::string& target) const;
  std::unique_ptr<Map> NewMap() const;
  void LimitUndo(Map& map) const;
  std::unique_ptr<Map> Read(const std::string& path, const std::string& name) const;
  Map* FindOpen(const std::string& path) const;
  Map* Rescued(const std::vector<Rescue>& rescues);
  Map* OpenRescue(const Rescue& rescue);
  void Reload(Map& map);
  bool MayLose(const Map& map) const;
  void TellOfCopy();
  bool MayOverwrite(const Map& map) const;
  bool MayExport(const Map& map, const std::string& target) const;
  bool Write(Map& map, const std::string& name);
  SaveSettings Settings() const;
  std::optional<std::string> AskSaveName(const Map& map);

  GameData& data_;
  Options& options_;
  Dialogs& dialogs_;
  DocumentsObserver& observer_;
  std::vector<std::unique_ptr<Map>> maps_;
  KnownFiles known_;
  KeptMaps kept_;
  std::string leftCopy_;  // of the map closed last, until a window can tell of it
};

}  // namespace ferrowand
