// The open maps and their files: making, reading, writing and closing them, with what is asked on
// the way. It knows no window that shows them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ferrowand {

class Dialogs;
class Map;
class Reporter;
struct GameData;
struct Options;

// Who shows the open maps.
class DocumentsObserver {
 public:
  virtual ~DocumentsObserver() = default;

  virtual void OnMapOpened(Map& map) = 0;
  // It is still whole. Nothing may refer to it afterwards.
  virtual void OnMapClosing(Map& map) = 0;
};

class Documents {
 public:
  // All outlive it. The options tell how to read and write, and keep the recent maps.
  Documents(GameData& data, Options& options, Dialogs& dialogs, DocumentsObserver& observer);
  ~Documents();
  Documents(const Documents&) = delete;
  Documents& operator=(const Documents&) = delete;

  // In the order of opening.
  const std::vector<std::unique_ptr<Map>>& Maps() const { return maps_; }

  Map& New();
  // Null, after saying so, when the file cannot be opened.
  Map* Open(const std::string& path);
  // False when the user thought better of it or the file could not be written.
  bool Save(Map& map);
  bool SaveAs(Map& map);
  bool ExportQuakeMap(Map& map);
  // Asks nothing.
  void Close(Map& map);
  // Asks about every modified map. False when the user wants to stay.
  bool MayQuit();
  // What the options say is shown of all maps is so from now on.
  void ShowByOptions();
  // All maps go, unasked and unannounced: nothing shows them any more.
  void Clear();

 private:
  enum class LossAnswer { WriteHere, OtherName, WriteNothing };

  Map& Adopt(std::unique_ptr<Map> map);
  // Asked before a map goes over the file that it was read from with losses.
  LossAnswer AskAboutLoss(const Map& map, const std::string& target) const;
  bool Write(Map& map, const std::string& name);
  std::optional<std::string> AskSaveName(const Map& map);

  GameData& data_;
  Options& options_;
  Dialogs& dialogs_;
  DocumentsObserver& observer_;
  std::vector<std::unique_ptr<Map>> maps_;
};

}  // namespace ferrowand
