// The window of what is wrong with a map: found piece by piece, looked at again when the map
// changes, and put right where that is safe.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "document/announcement.h"
#include "operations/check_repair.h"
#include "operations/running_check.h"
#include "shell/windows/child_window.h"

namespace ferrowand {

class Dialogs;
class Reporter;
struct Options;

inline constexpr char CHECK_CLASS[] = "FRWCheckClass";

LRESULT CALLBACK CheckFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What the windows of checks work with. All outlive them.
struct CheckWindowContext {
  const Options& options;
  Reporter& reporter;
  Dialogs& dialogs;
};

class CheckWindow : public ChildWindow, public MapObserver {
 public:
  // A line of the list: of what, and what could be done about it.
  struct Row {
    std::string text;
    entity* e = nullptr;  // null for a heading
    std::uint8_t face = NO_FACE;
    Repair repair = Repair::None;
  };

  CheckWindow(ChildWindows& windows, const CheckWindowContext& context, Map& map);
  ~CheckWindow() override;

  std::size_t NumRows() const;
  Row At(std::size_t index) const;
  bool IsDone() const { return check_.IsDone(); }
  void ChooseRow(int index);

  // --- as a child of the frame
  Map* GetMap() const override { return &map_; }
  bool TakesMessage(MSG& message) override;

  // --- from the map
  void OnChange(const MapChange& change) override;

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreate();
  HWND AddControl(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id);
  void Layout() const;
  void OnTimer();
  void Fill();
  void Empty();
  void FitColumn() const;
  void ShowState() const;
  LRESULT OnNotify(LPARAM lParam);
  void GiveRow(NMLVDISPINFOW& info);
  void OnRowChosen();
  void OnButton(int id);
  void RepairChosen();
  bool Perform(const Row& row);
  bool AskForTexture(const Row& row);
  std::optional<Row> Chosen() const;

  const CheckWindowContext context_;
  Map& map_;
  RunningCheck check_;
  // As the list shows them; between them, if there are findings, their heading.
  std::vector<Problem> problems_;
  std::vector<Finding> findings_;
  DWORD filled_ = 0;  // milliseconds of the system, when the list was filled last
  HWND list_ = nullptr;
  std::wstring shown_;  // the row that the system was given last
  bool isFilling_ = false;
};

}  // namespace ferrowand
