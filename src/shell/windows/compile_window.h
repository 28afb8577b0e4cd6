// The overview of a compile: the stages as they come and go, and below them what the tools print. A
// run belongs to it and ends with it.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "compile/compile_run.h"
#include "shell/windows/side_windows.h"

namespace ferrowand {

class ChildWindows;
class Dialogs;
class Frame;
class Map;
class Reporter;

inline constexpr char COMPILE_CLASS[] = "FRWQBSPerClass";

LRESULT CALLBACK CompileFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What the overviews work with. All outlive them.
struct CompileWindowContext {
  const Frame& frame;
  ChildWindows& windows;
  Dialogs& dialogs;
  Reporter& reporter;
  std::function<void()> rebuildMemory;  // that was released before a compile
};

class CompileWindow : public SideWindow, public CompileListener {
 public:
  // Starts the run; Handle() is null when the system gave no window, and nothing has been started
  // then. `notes` stand in front of what the tools print.
  CompileWindow(SideWindows& sides, const CompileWindowContext& context, Map& map,
                const CompileSetup& setup, const std::vector<std::string>& notes);
  ~CompileWindow() override;

  const std::vector<std::string>& Lines() const { return lines_; }
  CompileRun& Run() { return *run_; }

  // --- as a side window
  void OnMapClosing(const Map& map) override;
  void OnMapReplaced(const Map& map, Map& by) override;

  // --- from the run
  void OnStageLine(const std::string& line) override;
  void OnOutput() override;
  void OnLevelMade(bool leaks) override;
  void OnOver() override;

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreate();
  void Layout();
  void OnButton(int id);
  void OnTimer(UINT_PTR timer);
  void StartTimers();
  void StopTimers();
  void ShowElapsed();
  void ShowOutput();
  void MakeRoomForOutput();
  void FitColumn(int from, int to);
  void SaveOutput();
  LRESULT OnNotify(LPARAM lParam);
  void GiveLine(NMLVDISPINFOW& info);
  static LRESULT DrawLine(NMLVCUSTOMDRAW& draw, const CompileRun& run);
  void GoTo(int line);
  void GoToObject(const NamedPlace& place);

  const CompileWindowContext context_;
  Map* map_;  // null when it has been closed
  std::unique_ptr<CompileRun> run_;
  std::vector<std::string> lines_;  // of the list box
  HWND list_ = nullptr;
  HWND output_ = nullptr;
  std::wstring shown_;  // the line of the output that the system was given last
  bool hasNewOutput_ = true;
  std::size_t longest_ = 0;  // letters of the longest line so far
};

}  // namespace ferrowand
