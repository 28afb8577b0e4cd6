// Find Entity: what is asked, and a list of what was found in the active map, kept up with it. It
// stands beside the program's other windows, and is out of sight rather than gone when it is
// closed: F3 goes on with what was asked last.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <cstdint>
#include <string>
#include <vector>

#include "operations/entity_search.h"
#include "shell/windows/map_dialog.h"

namespace ferrowand {

struct Options;

class FindWindow : public MapDialog {
 public:
  // All outlive it. Handle() is null when the system gave no window.
  FindWindow(SideWindows& sides, ChildWindows& windows, Options& options);

  // In front, for the active map.
  void Show();
  // The next or the previous one is selected, in the active map. False when nothing has been asked
  // yet.
  bool FindNext(bool forward);

  const std::vector<entity*>& Found() const { return found_; }

  // --- from the map
  void OnChange(const MapChange& change) override;

 private:
  // --- as a dialog
  bool OnInit() override;
  void OnCommand(int id, int notification) override;
  LRESULT OnNotify(NMHDR& header) override;
  void OnTimer() override { Search(); }
  void OnClose() override { Hide(); }
  void OnOtherMap() override;

  void OnField(int id, int notification);
  void FillList(int id) const;
  EntityQuery Typed() const;
  std::uint16_t Flags() const;
  // What is found by now, and so the rows.
  void Search();
  void SearchSoon() const;
  void TakeScope();
  void ShowState() const;
  std::size_t NumUnreached() const;

  void ChooseRow(std::size_t row);
  void GoTo(std::size_t row);
  void SelectAll();
  void ShowUnreached();
  void GiveRow(LVITEMW& item);
  LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;

  Options& options_;
  std::vector<entity*> found_;
  std::vector<entity*> scope_;  // what was selected when the search began in the selection
  std::size_t at_ = NONE;       // the one that was gone to last
  bool isStale_ = false;        // what is found may be another by now
  bool isSelecting_ = false;
  bool isFilling_ = false;
  std::wstring text_;  // the cell that the system was given last

  static constexpr std::size_t NONE = static_cast<std::size_t>(-1);
};

}  // namespace ferrowand
