#include "shell/windows/open_files_window.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/report.h"
#include "document/map.h"
#include "shell/documents/documents.h"
#include "shell/resources/resource.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

enum Column { FILE_NAME, KIND, CONTENTS, MEMORY, USERS };
constexpr const wchar_t* HEADINGS[] = {L"File", L"Kind", L"Holds", L"Memory", L"Used by"};
constexpr std::array<int, 5> SHARES{30, 9, 38, 12, 11};
constexpr const char* KINDS[] = {"map", "WAD", "classes"};
constexpr std::uint64_t KILOBYTE = 1024;
constexpr UINT_PTR LOOK_TIMER = 1;
constexpr UINT LOOK_PERIOD = 1000;  // milliseconds

std::string MemoryInWords(std::uint64_t bytes) {
  if (bytes == 0) return "";
  return Format("%llu KB", static_cast<unsigned long long>((bytes + KILOBYTE - 1) / KILOBYTE));
}

std::string CellText(const HeldFile& file, int column) {
  switch (column) {
    case FILE_NAME:
      return AsUtf8(file.name);
    case KIND:
      return KINDS[static_cast<std::size_t>(file.kind)];
    case CONTENTS:
      return file.contents;
    case MEMORY:
      return MemoryInWords(file.bytes);
    default:
      return file.users == 0 ? "nothing" : std::to_string(file.users);
  }
}

}  // namespace

std::string PurgedInWords(const std::vector<std::string>& closed) {
  if (closed.empty()) return "Every open WAD is in use";
  std::string text = "Closed:";
  for (const std::string& name : closed) text += " " + name;
  return text;
}

OpenFilesWindow::OpenFilesWindow(SideWindows& sides, const Frame& frame, const Documents& documents,
                                 GameData& data)
    : SideDialog(sides, frame), documents_(documents), data_(data) {
  Create(ID_OPEN_FILES);
  if (Handle()) ShowWindow(Handle(), SW_SHOW);
}

bool OpenFilesWindow::OnInit() {
  AddListColumns(GetDlgItem(Handle(), ID_OPEN_FILES_LIST), HEADINGS, SHARES);
  SetTimer(Handle(), LOOK_TIMER, LOOK_PERIOD, nullptr);
  Fill();
  return true;
}

void OpenFilesWindow::Fill() {
  std::vector<HeldFile> files = HeldFiles(data_, documents_.Maps());
  if (files == files_) return;
  files_ = std::move(files);
  const HWND list = GetDlgItem(Handle(), ID_OPEN_FILES_LIST);
  ListView_SetItemCountEx(list, static_cast<int>(files_.size()), LVSICF_NOSCROLL);
  InvalidateRect(list, nullptr, FALSE);
  std::uint64_t bytes = 0;
  for (const HeldFile& file : files_) bytes += file.bytes;
  const std::string state =
      Format("%u files, ", static_cast<unsigned>(files_.size())) + MemoryInWords(bytes);
  SetDlgItemTextA(Handle(), ID_OPEN_FILES_STATE, state.c_str());
}

void OpenFilesWindow::Purge() {
  const std::string text = PurgedInWords(PurgeWads(data_, documents_.Maps()));
  Fill();
  SetDlgItemTextW(Handle(), ID_OPEN_FILES_STATE, ToWide(text).c_str());
}

bool OpenFilesWindow::LeavesToProgram(const MSG& message) const {
  return IsProgramKey(message);
}

void OpenFilesWindow::OnCommand(int id, int) {
  if (id == ID_OPEN_FILES_PURGE) Purge();
  if (id == IDCANCEL || id == IDOK) DestroyWindow(Handle());
}

LRESULT OpenFilesWindow::OnNotify(NMHDR& header) {
  if (header.code != static_cast<UINT>(LVN_GETDISPINFOW)) return 0;
  LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
  const auto row = static_cast<std::size_t>(item.iItem);
  if (!(item.mask & LVIF_TEXT) || row >= files_.size()) return 0;
  text_ = ToWide(CellText(files_[row], item.iSubItem));
  item.pszText = text_.data();
  return 0;
}

}  // namespace ferrowand
