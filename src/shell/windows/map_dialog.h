// A dialog beside the frame that is about the active map, and follows it.
#pragma once

#include "shell/windows/side_dialog.h"

#include <string>

#include "document/announcement.h"

namespace ferrowand {

class ChildWindows;

class MapDialog : public SideDialog, public MapObserver {
 public:
  ~MapDialog() override;

  // --- as a window beside the frame
  bool LeavesToProgram(const MSG& message) const override;
  void OnMapClosing(const Map& map) override;
  void OnMapReplaced(const Map& map, Map& by) override;

 protected:
  // All outlive it.
  MapDialog(SideWindows& sides, ChildWindows& windows, std::string* place, FirstPlace first);

  // Also whenever it comes to the front.
  void FollowActiveMap();
  // It has gone over to another map, or to none. The window may be gone by then.
  virtual void OnOtherMap() = 0;
  // "Find entity: room", or without a map "Find entity".
  void ShowName(const std::string& title) const;

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  ChildWindows& windows_;
  Map* map_ = nullptr;  // null for none

 private:
  void SetMap(Map* map);
};

}  // namespace ferrowand
