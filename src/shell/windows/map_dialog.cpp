#include "shell/windows/map_dialog.h"

#include "document/map.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {

MapDialog::MapDialog(SideWindows& sides, ChildWindows& windows, std::string* place,
                     FirstPlace first)
    : SideDialog(sides, windows.GetFrame(), place, first), windows_(windows) {}

MapDialog::~MapDialog() {
  if (map_) map_->RemoveObserver(*this);
}

bool MapDialog::LeavesToProgram(const MSG& message) const {
  return IsProgramKey(message);
}

void MapDialog::SetMap(Map* map) {
  if (map == map_) return;
  if (map_) map_->RemoveObserver(*this);
  map_ = map;
  if (map_) map_->AddObserver(*this);
  OnOtherMap();
}

void MapDialog::FollowActiveMap() {
  SetMap(windows_.ActiveMap());
}

void MapDialog::OnMapClosing(const Map& map) {
  if (&map == map_) SetMap(nullptr);
}

void MapDialog::OnMapReplaced(const Map& map, Map& by) {
  if (&map == map_) SetMap(&by);
}

void MapDialog::ShowName(const std::string& title) const {
  ShowTitle(map_ ? title + ": " + map_->Name() : title);
}

LRESULT MapDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) FollowActiveMap();
  return SideDialog::OnMessage(message, wParam, lParam);
}

}  // namespace ferrowand
