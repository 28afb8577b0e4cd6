#include "shell/windows/class_messages_window.h"

#include <algorithm>

#include "base/report.h"
#include "document/map.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int LINE_WIDTH = 60, LEAST_TEXT_WIDTH = 360;

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
    : SideDialog(sides, frame), map_(&map) {
  Create(ID_CLASS_MESSAGES);
  if (Handle()) ShowWindow(Handle(), SW_SHOW);
  map_->AddObserver(*this);
}

ClassMessagesWindow::~ClassMessagesWindow() {
  map_->RemoveObserver(*this);
}

bool ClassMessagesWindow::OnInit() {
  const HWND list = GetDlgItem(Handle(), ID_CLASS_MESSAGE_LIST);
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  AddColumn(list, 0, L"Line", LINE_WIDTH);
  AddColumn(list, 1, L"What is wrong", LEAST_TEXT_WIDTH);
  Fill();
  return true;
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
  const int width = WidthFor(list, messages.empty() ? "" : messages[longest].text);
  ListView_SetColumnWidth(list, 1, std::max(width, Scaled(LEAST_TEXT_WIDTH)));
  std::string count = classes.MessageCount() == 0
                          ? "Nothing is wrong."
                          : Format("%u in all", static_cast<unsigned>(classes.MessageCount()));
  if (classes.MessageCount() > messages.size()) {
    count += Format("; the first %u are listed", static_cast<unsigned>(messages.size()));
  }
  SetDlgItemTextW(Handle(), ID_CLASS_MESSAGE_COUNT, ToWide(count).c_str());
  ShowTitle("Class file messages: " + map_->classSetName);
}

LRESULT ClassMessagesWindow::OnNotify(NMHDR& header) {
  if (header.code != static_cast<UINT>(LVN_GETDISPINFOW)) return 0;
  LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
  const std::vector<ClassMessage>& messages = map_->classSet->Messages();
  const auto row = static_cast<std::size_t>(item.iItem);
  if (!(item.mask & LVIF_TEXT) || row >= messages.size()) return 0;
  shown_ = item.iSubItem == 0 ? std::to_wstring(messages[row].line) : ToWide(messages[row].text);
  item.pszText = shown_.data();
  return 0;
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

void ClassMessagesWindow::OnCommand(int id, int) {
  if (id == IDCANCEL || id == IDOK) DestroyWindow(Handle());
}

}  // namespace ferrowand
