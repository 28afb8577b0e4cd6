// What was wrong with the file of classes that a map uses: a list with lines, which follows the
// file. It stands beside the program's other windows; the map owns it.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <string>

#include "document/announcement.h"
#include "shell/windows/side_dialog.h"

namespace ferrowand {

class ClassMessagesWindow : public SideDialog, public MapObserver {
 public:
  // Handle() is null when the system gave no window.
  ClassMessagesWindow(SideWindows& sides, const Frame& frame, Map& map);
  ~ClassMessagesWindow() override;

  const Map& GetMap() const { return *map_; }

  void OnMapClosing(const Map& map) override;
  void OnMapReplaced(const Map& map, Map& by) override;
  void OnChange(const MapChange& change) override;

 private:
  bool OnInit() override;
  void OnCommand(int id, int notification) override;
  LRESULT OnNotify(NMHDR& header) override;
  void Fill() const;

  Map* map_;
  std::wstring shown_;  // the text that the system was given last
};

}  // namespace ferrowand
