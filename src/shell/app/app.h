// The program: everything that lives from its start to its end, and the documents between.
#pragma once

#include "shell/system/win32.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/command_table.h"
#include "base/options.h"
#include "base/report.h"
#include "document/bound_entities.h"
#include "document/game_data.h"
#include "document/map.h"
#include "platform/settings_store.h"
#include "shell/app/window_classes.h"
#include "shell/dialogs/dialogs.h"
#include "shell/frame/frame.h"
#include "shell/frame/load_window.h"
#include "shell/frame/tips.h"
#include "shell/system/clipboard.h"
#include "shell/system/gdi_canvas.h"
#include "shell/windows/child_window.h"
#include "shell/windows/window_tool_host.h"
#include "views/map_view.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

// What the program meets outside itself. All outlive it.
struct Seams {
  MessageSink& sink;
  Dialogs& dialogs;
  Clipboard& clipboard;
  SettingsStore& settings;
  std::string directory;  // the current one
};

class App {
 public:
  App(HINSTANCE instance, const Seams& seams);
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  // --- life
  // False when the system refuses the program its window classes.
  bool Start(const std::string& commandLine);
  // Until the program is to end; its exit code. Saves the options.
  int Run();
  // Handles the messages that wait and comes back. False once the program is to end.
  bool Pump();
  void Shutdown();

  // --- documents
  Map& NewMap();
  // Null, after saying so, when the file cannot be opened.
  Map* OpenMap(const std::string& path);
  // False when the user thought better of it or the file could not be written.
  bool SaveMap(Map& map);
  bool SaveMapAs(Map& map);
  bool ExportQuakeMap(Map& map);
  // With all its windows; asks nothing.
  void CloseMap(Map& map);
  // Asks about every modified map. False when the user wants to stay.
  bool MayQuit();

  // --- windows
  // The three views of a map, arranged and showing all of it.
  void CreateMapWindows(Map& map);
  ChildWindow* AddView(Map& map, Orientation orientation);
  void ShowKeyList();
  // The one of the map, in front of the others.
  void ShowLayers(Map& map);
  void SetTitles(const Map& map);
  void RefreshMap(const Map& map);
  // Those of its windows that are no views.
  void RefreshLists(const Map& map);
  void RefreshAll();
  void Arrange(const Map& map, Arrangement arrangement);
  // Asks when it is the last one of a modified map, which it closes with it.
  void CloseWindow(ChildWindow& window);
  // The window is gone.
  void Forget(const ChildWindow& window);
  ChildWindow* ActiveWindow() const;
  Map* ActiveMap() const;
  // Its view, or the last one that was active of the map it shows in another way.
  MapView* ActiveView() const;

  // --- commands
  CommandFacts Facts() const;
  bool IsAvailable(unsigned id) const;
  bool IsChecked(unsigned id) const;
  // Nothing happens when the command is not available. It ends a drag without effect.
  void Execute(unsigned id);
  void EndDrag();
  void TrackCommandPopup(HMENU menu);
  // One of those that are loaded at the start, as it is tracked.
  HMENU Popup(unsigned resource) const;

  HINSTANCE instance;
  Dialogs& dialogs;
  Clipboard& clipboard;
  SettingsStore& settings;
  std::string directory;
  Reporter reporter;
  Options options;
  LoadWindow progress;
  GameData data;
  BoundEntities boundEntities;
  WindowClasses classes;
  GdiObjects objects{options};
  BackBuffer backBuffer;
  std::map<unsigned, OwnedMenu> popups;  // by resource
  ViewList views;
  WindowToolHost toolHost{*this};
  ToolSet tools{toolHost, views, options};
  std::vector<std::unique_ptr<Map>> maps;
  std::vector<std::unique_ptr<ChildWindow>> windows;
  Frame frame;
  Tips tips;
  POINT mouse{};  // where a view last saw it, on the screen

 private:
  void LoadOptions();
  void BuildSearchPath();
  void LoadPopups();
  void LoadGameData();
  std::unique_ptr<Map> ReadMapFile(const std::string& path);
  Map& Adopt(std::unique_ptr<Map> map);
  bool Save(Map& map, const std::string& name);
  std::optional<std::string> AskSaveName(const Map& map);
  std::vector<ChildWindow*> WindowsOf(const Map& map) const;
  void BringToFront(const ChildWindow& window);
  void Dispatch(MSG& message);
  bool IsForAccelerators(const MSG& message) const;
  bool TranslateKey(MSG& message);

  HACCEL accelerators_ = nullptr;
  bool started_ = false;
};

}  // namespace ferrowand
