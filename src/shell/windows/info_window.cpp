#include "shell/windows/info_window.h"

#include <chrono>

#include "base/path_text.h"
#include "base/report.h"
#include "document/map.h"
#include "gamedata/bsp_file.h"
#include "operations/map_statistics.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

std::string BspPathOf(const Map& map) {
  const PathParts parts = SplitPath(map.filename);
  return parts.directory + parts.base + ".bsp";
}

}  // namespace

DateTexts TextsOf(const FileStamp& stamp) {
  using namespace std::chrono;
  const sys_time<nanoseconds> time{nanoseconds(stamp.time)};
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(floor<minutes>(time - day));
  // One less is meant, also of an hour that is 0.
  const auto hour = static_cast<unsigned>(clock.hours().count()) - 1u;
  return {Format("%u/%u/%u", unsigned{date.day()}, unsigned{date.month()},
                 static_cast<unsigned>(int{date.year()})),
          Format("%u:%.2u", hour, static_cast<unsigned>(clock.minutes().count()))};
}

InfoWindow::InfoWindow(SideWindows& sides, const Frame& frame, Map& map, Reporter& reporter)
    : SideDialog(sides, frame), map_(&map), reporter_(reporter) {
  Create(ID_INFO);
  if (Handle()) ShowWindow(Handle(), SW_SHOW);
}

void InfoWindow::SetText(int id, const std::string& text) const {
  SetDlgItemTextW(Handle(), id, ToWide(text).c_str());
}

bool InfoWindow::OnInit() {
  RECT place;
  GetWindowRect(Handle(), &place);
  fullWidth_ = place.right - place.left;
  ShowMore(false);
  Fill();
  return true;
}

void InfoWindow::Fill() {
  const MapStatistics counts = CountMap(*map_);
  SetText(ID_INFO_NAME, map_->Name());
  SetText(ID_INFO_BRUSHES, std::to_string(counts.brushes));
  SetText(ID_INFO_ENTITIES, std::to_string(counts.entities));
  SetText(ID_INFO_LIGHTS, std::to_string(counts.lights));
  SetText(ID_INFO_FACES, std::to_string(counts.faces));
  SetText(ID_INFO_STARTS, std::to_string(counts.deathmatchStarts));
  SetText(ID_INFO_MODIFIED, map_->modified() ? "True" : "False");
  for (const std::string& exit : counts.exits)
    AddLine(GetDlgItem(Handle(), ID_INFO_EXITS), ToWide(exit));

  ShowFile(map_->filename, ID_INFO_MAP_FILE, ID_INFO_MAP_DATE, ID_INFO_MAP_TIME);
  const std::string bsp = BspPathOf(*map_);
  const bool hasBsp = ShowFile(bsp, ID_INFO_BSP_FILE, ID_INFO_BSP_DATE, ID_INFO_BSP_TIME);
  EnableWindow(GetDlgItem(Handle(), ID_INFO_MORE), hasBsp);
  if (!hasBsp) return;
  const HWND list = GetDlgItem(Handle(), ID_INFO_BSP);
  for (const std::string& line : BspSummary(bsp)) AddLine(list, ToWide(line));
}

bool InfoWindow::ShowFile(const std::string& path, int pathText, int dateText, int timeText) {
  if (file::Find(path) != FindResult::Found) {
    SetText(pathText, "Does not exist (" + path + ")");
    return false;
  }
  SetText(pathText, path);
  const FileHandle handle = file::Open(path, FileAccess::Read);
  const std::optional<FileStamp> stamp = file::Stamp(path);
  if (handle == INVALID_FILE) {
    reporter_.Assert("fileHandle!=INVALID_HANDLE_VALUE", "bspfile.cpp", __LINE__);
  } else {
    file::Close(handle);
  }
  if (!stamp) return true;
  const DateTexts texts = TextsOf(*stamp);
  SetText(dateText, texts.date);
  SetText(timeText, texts.time);
  return true;
}

// The right half, with the level's figures and the exits, comes and goes.
void InfoWindow::ShowMore(bool isShown) {
  isWide_ = isShown;
  RECT place, edge;
  GetWindowRect(Handle(), &place);
  GetWindowRect(GetDlgItem(Handle(), ID_INFO_EDGE), &edge);
  const int width = isShown ? fullWidth_ : static_cast<int>(edge.left - place.left);
  SetWindowPos(Handle(), nullptr, 0, 0, width, place.bottom - place.top,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  SetDlgItemTextA(Handle(), ID_INFO_MORE, isShown ? "<<<&Less" : "&More>>>");
  for (const int id : {ID_INFO_BSP, ID_INFO_EXITS}) {
    EnableWindow(GetDlgItem(Handle(), id), isShown);
  }
}

void InfoWindow::OnMapClosing(const Map& map) {
  if (&map == map_) DestroyWindow(Handle());
}

void InfoWindow::OnMapReplaced(const Map& map, Map& by) {
  if (&map != map_) return;
  map_ = &by;
  for (const int list : {ID_INFO_BSP, ID_INFO_EXITS}) {
    SendDlgItemMessageW(Handle(), list, LB_RESETCONTENT, 0, 0);
  }
  Fill();
}

void InfoWindow::OnCommand(int id, int) {
  if (id == ID_INFO_MORE) ShowMore(!isWide_);
  if (id == IDOK || id == IDCANCEL) DestroyWindow(Handle());
}

}  // namespace ferrowand
