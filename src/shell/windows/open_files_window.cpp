#include "shell/windows/open_files_window.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/report.h"
#include "document/map.h"
#include "shell/documents/documents.h"
#include "shell/frame/frame.h"
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
    : SideWindow(sides), documents_(documents), data_(data) {
  CreateDialogParamW(frame.Instance(), MAKEINTRESOURCEW(ID_OPEN_FILES), frame.Handle(),
                     DispatchDialog, reinterpret_cast<LPARAM>(static_cast<SideWindow*>(this)));
  if (Handle()) ShowWindow(Handle(), SW_SHOW);
}

void OpenFilesWindow::OnInit() {
  AddListColumns(GetDlgItem(Handle(), ID_OPEN_FILES_LIST), HEADINGS, SHARES);
  SetTimer(Handle(), LOOK_TIMER, LOOK_PERIOD, nullptr);
  Fill();
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

void OpenFilesWindow::GiveRow(LVITEMW& item) {
  const auto row = static_cast<std::size_t>(item.iItem);
  if (!(item.mask & LVIF_TEXT) || row >= files_.size()) return;
  text_ = ToWide(CellText(files_[row], item.iSubItem));
  item.pszText = text_.data();
}

LRESULT OpenFilesWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      OnInit();
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) == ID_OPEN_FILES_PURGE) Purge();
      if (LOWORD(wParam) == IDCANCEL || LOWORD(wParam) == IDOK) DestroyWindow(Handle());
      return TRUE;
    case WM_NOTIFY: {
      auto* header = reinterpret_cast<NMHDR*>(lParam);
      if (header->code != static_cast<UINT>(LVN_GETDISPINFOW)) return FALSE;
      GiveRow(reinterpret_cast<NMLVDISPINFOW*>(header)->item);
      return TRUE;
    }
    case WM_TIMER:
      Fill();
      return TRUE;
    case WM_CLOSE:
      DestroyWindow(Handle());
      return TRUE;
  }
  return FALSE;
}

}  // namespace ferrowand
