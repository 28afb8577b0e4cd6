// The WADs of the active map: which it has and in which order, what it uses of each, and where
// those are that are missing. It stands beside the program's other windows.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <string>
#include <vector>

#include "operations/edit_result.h"
#include "operations/wad_choice.h"
#include "shell/windows/map_dialog.h"

namespace ferrowand {

class ChildWindows;
class Dialogs;
class Documents;
class Reporter;
class WadFile;
struct GameData;
struct Options;

// What the window works with. All outlive it.
struct WadManagerContext {
  ChildWindows& windows;
  Documents& documents;
  GameData& data;
  Dialogs& dialogs;
  Reporter& reporter;
  Options& options;
};

class WadManagerWindow : public MapDialog {
 public:
  // Handle() is null when the system gave no window.
  WadManagerWindow(SideWindows& sides, const WadManagerContext& context);

  // In front, for the active map.
  void Show();
  // Whose row shows at the pixel of the screen; null for none, and for one that is missing.
  WadFile* WadUnder(POINT screen) const;
  // The row of that WAD, if any, is shown as the one to which something is dragged.
  void Mark(const WadFile* wad);

  // --- as a window beside the frame
  void OnIdle() override;

  // --- from the map
  void OnChange(const MapChange& change) override;

 private:
  // --- as a dialog
  bool OnInit() override;
  void OnCommand(int id, int notification) override;
  LRESULT OnNotify(NMHDR& header) override;
  void OnOtherMap() override;

  void Fill();
  void GiveRow(LVITEMW& item);
  LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
  WadFile* WadOf(std::size_t row) const;
  std::string CellText(const WadRow& row, int column) const;
  std::string Details() const;
  void ShowChosen() const;
  // -1 for none.
  int Chosen() const;
  void Choose(int row) const;

  bool Perform(const char* action, EditResult (*work)(Map& map, std::size_t row), std::size_t row);
  void Add();
  void Remove();
  void Move(int by);
  void Locate();
  void Tell(EditResult result, const std::string& path) const;

  const WadManagerContext context_;
  std::vector<WadRow> rows_;
  bool isStale_ = false;
  const WadFile* marked_ = nullptr;  // compared only: it may be gone
  std::wstring text_;                // the cell that the system was given last
};

}  // namespace ferrowand
