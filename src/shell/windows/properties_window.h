// The properties of what is selected: class, name, keys, spawnflags, angle and links, of one object
// or of many. It follows the selection of the active map, or stays with the objects that it is
// pinned to; that of a map's world stays with it.
#pragma once

#include "shell/system/win32.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document/announcement.h"
#include "operations/entity_keys.h"
#include "operations/links.h"
#include "operations/spawn_flags.h"
#include "shell/windows/angle_panel.h"
#include "shell/windows/key_grid.h"
#include "shell/windows/side_windows.h"

namespace ferrowand {

class ChildWindows;
class CommandTarget;
class Dialogs;
class EntityClass;
class Frame;
class Reporter;
struct Options;

inline constexpr char PROPERTIES_CLASS[] = "FRWPropertiesClass";

// What these windows work with. All outlive them.
struct PropertiesContext {
  ChildWindows& windows;
  const Frame& frame;
  Dialogs& dialogs;
  Reporter& reporter;
  CommandTarget& commands;
  Options& options;
};

enum class PropertiesOf { Selection, World };

class PropertiesWindow : public SideWindow, public MapObserver, private KeyGridHost {
 public:
  // Handle() is null when the system gave no window.
  PropertiesWindow(SideWindows& sides, const PropertiesContext& context, Map& map, PropertiesOf of);
  ~PropertiesWindow() override;

  const Map* GetMap() const { return map_; }
  PropertiesOf Of() const { return of_; }
  bool IsPinned() const;
  const std::vector<entity*>& Objects() const { return objects_; }
  KeyGrid& Keys() { return *grid_; }

  // --- as a side window
  void OnMapClosing(const Map& map) override;
  void OnMapReplaced(const Map& map, Map& by) override;
  void OnIdle() override;
  void FinishTyping() override;
  bool LeavesToProgram(const MSG& message) const override;

  // --- from the map
  void OnChange(const MapChange& change) override;

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreate();
  HWND Control(int id) const { return GetDlgItem(Handle(), id); }
  void SetText(int id, const std::wstring& text) const;
  std::wstring TextOf(int id) const;

  // --- what is shown (properties_view.cpp)
  void Follow(Map* map);
  void Refresh();
  void ShowTitle() const;
  void ShowClass();
  void FillClasses();
  void ShowName();
  void ShowKeys();
  void ShowKeyButtons() const;
  void ShowWads(std::vector<KeyRow>& rows) const;
  void ShowFlags();
  void ShowAngle();
  void ShowLinks();
  void ShowHelp() const;
  std::string WhatItIs() const;
  std::string HelpText() const;
  void Layout() const;
  void LayOutHead(int left, int top, int width) const;
  void LayOutKeys(const RECT& area) const;
  // Column by column; `each` column is so wide.
  struct FlagTable {
    int rows, each;
  };
  FlagTable FlagsIn(int width) const;
  int FlagsHeight(int width) const;
  void LayOutFlags(int left, int top, int width) const;
  void LayOutBeside(RECT area) const;
  void DrawColour(const DRAWITEMSTRUCT& draw) const;
  const EntityClass* SharedClass() const;
  bool HasAngle() const;
  bool HasPlainBrush() const;

  // --- what the user does
  void OnCommand(int id, int notice);
  void OnButton(int id);
  void OnEnter();
  void OnEscape();
  void OnTypingBegun(int id);
  bool CommitTyping();
  void DropTyping();
  void CompleteClass();
  const EntityClass* ClassAsTyped(const std::wstring& typed) const;
  bool CommitClass();
  bool CommitName();
  void ChooseAngle(const std::string& angle);
  void ToggleFlag(int bit);
  void Jump();
  // One step of undo, known by that name. False, after saying why, when it was refused.
  bool Do(const std::string& name, const std::function<EditResult()>& change);

  // --- what is done to keys, and told of them (properties_keys.cpp)
  bool IsWadList(const KeyRow& row) const;
  void Choose();
  void ChooseColour(const KeyRow& row);
  void ChooseFile(const KeyRow& row);
  void OnRowChosen() override;
  void OnEditBegun() override { typedFor_ = objects_; }
  std::vector<KeyChoice> ChoicesOf(const KeyRow& row) const override;
  bool IsLocked(const KeyRow& row) const override;
  bool ChangeValue(const KeyRow& row, const std::string& value) override;
  bool RenameKey(const KeyRow& row, const std::string& name) override;
  bool CheckNewName(const std::string& name) override;
  void RemoveKey(const KeyRow& row) override;
  void Tell(const std::string& why) override;
  void Refuse(const std::string& why) override;

  const PropertiesContext context_;
  const PropertiesOf of_;
  Map* map_ = nullptr;  // null while no map is open
  std::vector<entity*> objects_;
  bool isStale_ = true;
  bool isFilling_ = false;

  KeyRows rows_;
  std::vector<SpawnFlag> flags_;
  std::vector<Link> links_;  // where these lead, then who points here
  std::size_t linksFrom_ = 0;
  std::unique_ptr<KeyGrid> grid_;
  std::unique_ptr<AnglePanel> angle_;
  const EntityClass* helped_ = nullptr;  // whose help is shown while its name is typed
  std::size_t typedLength_ = 0;          // of that name
  bool isListOpen_ = false;              // of the classes
  std::wstring shownClass_, shownName_;

  int typing_ = 0;  // the control that is typed in; 0 for none
  std::vector<entity*> typedFor_;
};

}  // namespace ferrowand
