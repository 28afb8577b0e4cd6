#include "shell/windows/class_messages_window.h"

#include <algorithm>

#include "base/report.h"
#include "document/map.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int LINE_WIDTH = 60, LEAST_TEXT_WIDTH = 360, TEXT_MARGIN = 24;

void AddColumn(HWND list, int index, const wchar_t* title, int width) {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = const_cast<wchar_t*>(title);
  column.cx = Scaled(width);
  SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(&column));
}

}  // namespace

ClassMessagesWindow::ClassMessagesWindow(SideWindows& sides, const Frame& frame, Map& map)
    : SideWindow(sides), map_(&map) {
  CreateDialogParamW(frame.Instance(), MAKEINTRESOURCEW(ID_CLASS_MESSAGES), frame.Handle(),
                     DispatchDialog, reinterpret_cast<LPARAM>(static_cast<SideWindow*>(this)));
  if (Handle()) ShowWindow(Handle(), SW_SHOW);
  map_->AddObserver(*this);
}

ClassMessagesWindow::~ClassMessagesWindow() {
  map_->RemoveObserver(*this);
}

void ClassMessagesWindow::OnInit() {
  const HWND list = GetDlgItem(Handle(), ID_CLASS_MESSAGE_LIST);
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  AddColumn(list, 0, L"Line", LINE_WIDTH);
  AddColumn(list, 1, L"What is wrong", LEAST_TEXT_WIDTH);
  Fill();
}

void ClassMessagesWindow::Fill() const {
  const ClassSet& classes = *map_->classSet;
  const std::vector<ClassMessage>& messages = classes.Messages();
  const HWND list = GetDlgItem(Handle(), ID_CLASS_MESSAGE_LIST);
  ListView_SetItemCountEx(list, static_cast<int>(messages.size()), 0);
  std::size_t longest = 0;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (messages[i].text.size() > messages[longest].text.size()) longest = i;
  }
  const std::wstring widest = ToWide(messages.empty() ? "" : messages[longest].text);
  const auto width = static_cast<int>(
      SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(widest.c_str())));
  ListView_SetColumnWidth(list, 1, std::max(width + Scaled(TEXT_MARGIN), Scaled(LEAST_TEXT_WIDTH)));
  std::string count = classes.MessageCount() == 0
                          ? "Nothing is wrong."
                          : Format("%u in all", static_cast<unsigned>(classes.MessageCount()));
  if (classes.MessageCount() > messages.size()) {
    count += Format("; the first %u are listed", static_cast<unsigned>(messages.size()));
  }
  SetDlgItemTextW(Handle(), ID_CLASS_MESSAGE_COUNT, ToWide(count).c_str());
  SetWindowTextW(Handle(), ToWide("Class file messages: " + map_->classSetName).c_str());
}

void ClassMessagesWindow::GiveRow(NMLVDISPINFOW& info) {
  const std::vector<ClassMessage>& messages = map_->classSet->Messages();
  const auto row = static_cast<std::size_t>(info.item.iItem);
  if (!(info.item.mask & LVIF_TEXT) || row >= messages.size()) return;
  shown_ =
      info.item.iSubItem == 0 ? std::to_wstring(messages[row].line) : ToWide(messages[row].text);
  info.item.pszText = shown_.data();
}

void ClassMessagesWindow::OnChange(const MapChange& change) {
  if (change.everything) Fill();
}

void ClassMessagesWindow::OnMapClosing(const Map& map) {
  if (&map == map_) DestroyWindow(Handle());
}

void ClassMessagesWindow::OnMapReplaced(const Map& map, Map& by) {
  if (&map != map_) return;
  map_->RemoveObserver(*this);
  map_ = &by;
  map_->AddObserver(*this);
  Fill();
}

LRESULT ClassMessagesWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      OnInit();
      return TRUE;
    case WM_CLOSE:
      DestroyWindow(Handle());
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) == IDCANCEL || LOWORD(wParam) == IDOK) DestroyWindow(Handle());
      return TRUE;
    case WM_NOTIFY:
      if (reinterpret_cast<const NMHDR*>(lParam)->code != static_cast<UINT>(LVN_GETDISPINFOW)) {
        return FALSE;
      }
      GiveRow(*reinterpret_cast<NMLVDISPINFOW*>(lParam));
      return TRUE;
  }
  return FALSE;
}

}  // namespace ferrowand
