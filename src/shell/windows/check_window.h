// The window of what is wrong with a map: found piece by piece, looked at again when the map
// changes, and put right where that is safe.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "operations/check_repair.h"
#include "operations/running_check.h"
#include "shell/windows/map_panel.h"

namespace ferrowand {

class Dialogs;

inline constexpr char CHECK_CLASS[] = "FRWCheckClass";

class CheckWindow : public MapPanel {
 public:
  // A line of the list: of what, and what could be done about it.
  struct Row {
    std::string text;
    entity* e = nullptr;  // null for a heading
    std::uint8_t face = NO_FACE;
    Repair repair = Repair::None;
  };

  // All outlive it.
  CheckWindow(ChildWindows& windows, Dialogs& dialogs, Map& map);
  ~CheckWindow() override;

  std::size_t NumRows() const;
  Row At(std::size_t index) const;
  bool IsDone() const { return check_.IsDone(); }
  void ChooseRow(int index);

  // --- from the map
  void OnChange(const MapChange& change) override;

 private:
  // --- as a panel
  void OnCreate() override;
  void Layout() const override;
  HWND KeyControl() const override { return list_; }
  bool IsOwnKey(WPARAM key, bool withControl) const override;
  void OnCommand(int id, int notification) override;
  LRESULT OnNotify(NMHDR& header) override;
  void OnTimer(UINT_PTR timer) override;

  void Look();
  void Fill();
  void Empty();
  void FitColumn() const;
  void ShowState() const;
  void GiveRow(LVITEMW& item);
  void OnRowChosen();
  void RepairChosen();
  bool Perform(const Row& row);
  bool AskForTexture(const Row& row);
  std::optional<Row> Chosen() const;

  Dialogs& dialogs_;
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
