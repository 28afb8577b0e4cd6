#include "shell/windows/check_window.h"

#include <algorithm>
#include <utility>

#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "document/picking.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int WIDTH = 470, HEIGHT = 300;
constexpr int MARGIN = 6, GAP = 6, ROW_HEIGHT = 23, STRICT_WIDTH = 90, REPAIR_WIDTH = 130;
constexpr int TEXT_DROP = 5, TEXT_MARGIN = 14;

constexpr UINT_PTR CHECK_TIMER = 1;
constexpr UINT CHECK_PERIOD = 15;              // milliseconds
constexpr DWORD FILL_PERIOD = 150;             // the same, of the list while the check goes on
constexpr std::size_t OBJECTS_PER_STEP = 200;  // a few milliseconds of work

ChildPlace PlaceIn(const PixelSize& client) {
  const int width = std::min(Scaled(WIDTH), client.width);
  const int height = std::min(Scaled(HEIGHT), client.height);
  return {client.width - width, client.height - height, width, height};
}

std::vector<Vec3> CornersOf(const entity& e, std::uint8_t face) {
  std::vector<Vec3> corners;
  if (face >= e.brush.getNumFaces()) return corners;
  const Face& told = e.brush.face(face);
  if (!told.w) return {told.planepts.begin(), told.planepts.end()};
  for (const WindingPoint& p : std::as_const(*told.w).Points()) corners.push_back(p.Position());
  return corners;
}

}  // namespace

LRESULT CALLBACK CheckFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

CheckWindow::CheckWindow(ChildWindows& windows, const CheckWindowContext& context, Map& map)
    : ChildWindow(windows), context_(context), map_(map), check_(map, CHECK_TOLERANCE) {
  Create(CHECK_CLASS, "Check map", PlaceIn(frame_.ClientSize()), WS_CLIPCHILDREN,
         context.options.smallCaptions ? WS_EX_TOOLWINDOW : 0);
  map_.AddObserver(*this);
}

CheckWindow::~CheckWindow() {
  map_.RemoveObserver(*this);
  MarkFace(windows_.Views(), map_, {});
}

HWND CheckWindow::AddControl(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id) {
  const HWND control = CreateWindowExW(
      0, windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, Handle(),
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), frame_.Instance(), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  return control;
}

void CheckWindow::OnCreate() {
  list_ = AddControl(WC_LISTVIEWW, L"",
                     WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_OWNERDATA | LVS_NOCOLUMNHEADER |
                         LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                     ID_CHECK_LIST);
  ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  LVCOLUMNW column{};
  column.mask = LVCF_WIDTH;
  SendMessageW(list_, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  AddControl(L"BUTTON", L"&Stricter", WS_TABSTOP | BS_AUTOCHECKBOX, ID_CHECK_STRICT);
  AddControl(L"STATIC", L"", SS_LEFTNOWORDWRAP, ID_CHECK_STATE);
  AddControl(L"BUTTON", L"&Repair", WS_TABSTOP | WS_DISABLED, ID_CHECK_REPAIR);
  ShowTitle("Check map: " + map_.Name());
  SetTimer(Handle(), CHECK_TIMER, CHECK_PERIOD, nullptr);
}

void CheckWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  const int margin = Scaled(MARGIN), row = Scaled(ROW_HEIGHT);
  const int width = std::max(static_cast<int>(area.right) - 2 * margin, 1);
  const int listHeight = std::max(static_cast<int>(area.bottom) - row - 3 * margin, 0);
  MoveWindow(list_, margin, margin, width, listHeight, TRUE);
  ListView_SetColumnWidth(list_, 0, LVSCW_AUTOSIZE_USEHEADER);
  const int top = 2 * margin + listHeight, strict = Scaled(STRICT_WIDTH);
  const int repair = std::min(Scaled(REPAIR_WIDTH), width / 2);
  const auto place = [this](int id, int left, int y, int w, int h) {
    MoveWindow(GetDlgItem(Handle(), id), left, y, std::max(w, 0), h, TRUE);
  };
  place(ID_CHECK_STRICT, margin, top, strict, row);
  const int stateLeft = margin + strict + Scaled(GAP), drop = Scaled(TEXT_DROP);
  const int repairLeft = margin + width - repair;
  place(ID_CHECK_STATE, stateLeft, top + drop, repairLeft - Scaled(GAP) - stateLeft, row - drop);
  place(ID_CHECK_REPAIR, repairLeft, top, repair, row);
}

// --- what is found

std::size_t CheckWindow::NumRows() const {
  return problems_.size() + findings_.size() + (findings_.empty() ? 0 : 1);
}

CheckWindow::Row CheckWindow::At(std::size_t index) const {
  if (index < problems_.size()) {
    const Problem& problem = problems_[index];
    return {ReportLine(problem), problem.e, problem.face, RepairOf(problem)};
  }
  if (index == problems_.size()) return {FINDINGS_HEADING};
  const Finding& finding = findings_[index - problems_.size() - 1];
  return {ReportLine(finding), finding.e, finding.face, RepairOf(finding)};
}

void CheckWindow::OnTimer() {
  const bool goesOn = check_.Step(OBJECTS_PER_STEP);
  if (!goesOn) KillTimer(Handle(), CHECK_TIMER);
  if (!goesOn || GetTickCount() - filled_ >= FILL_PERIOD) Fill();
}

void CheckWindow::OnChange(const MapChange& change) {
  ShowTitle("Check map: " + map_.Name());
  check_.OnChange(change);
  if (check_.IsDone()) return;
  Empty();
  SetTimer(Handle(), CHECK_TIMER, CHECK_PERIOD, nullptr);
}

// What the rows are about may have gone.
void CheckWindow::Empty() {
  problems_.clear();
  findings_.clear();
  ListView_SetItemCountEx(list_, 0, 0);
  ShowState();
}

void CheckWindow::Fill() {
  filled_ = GetTickCount();
  problems_ = check_.Problems();
  findings_ = check_.Findings();
  isFilling_ = true;
  ListView_SetItemCountEx(list_, static_cast<int>(NumRows()), LVSICF_NOSCROLL);
  FitColumn();
  isFilling_ = false;
  ShowState();
}

// As wide as the longest of the first lines, of which nobody reads more at once.
void CheckWindow::FitColumn() const {
  constexpr std::size_t LOOKED_AT = 500;
  std::string longest;
  for (std::size_t i = 0; i < std::min(NumRows(), LOOKED_AT); ++i) {
    if (const std::string text = At(i).text; text.size() > longest.size()) longest = text;
  }
  RECT area;
  GetClientRect(list_, &area);
  const auto width = static_cast<int>(SendMessageW(
      list_, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(ToWide(longest).c_str())));
  ListView_SetColumnWidth(list_, 0,
                          std::max(width + Scaled(TEXT_MARGIN), static_cast<int>(area.right)));
}

void CheckWindow::ShowState() const {
  const auto count = static_cast<unsigned>(problems_.size() + findings_.size());
  std::string text = count == 0 ? "nothing found" : Format("%u found", count);
  if (!check_.IsDone()) text = "looking: " + text;
  SetDlgItemTextA(Handle(), ID_CHECK_STATE, text.c_str());
  const std::optional<Row> row = Chosen();
  const Repair repair = row ? row->repair : Repair::None;
  const HWND button = GetDlgItem(Handle(), ID_CHECK_REPAIR);
  EnableWindow(button, repair != Repair::None);
  SetWindowTextA(button, repair == Repair::None ? "&Repair" : RepairName(repair));
}

// --- what the user chooses

std::optional<CheckWindow::Row> CheckWindow::Chosen() const {
  const int index = ListView_GetNextItem(list_, -1, LVNI_SELECTED);
  const bool isThere = index >= 0 && static_cast<std::size_t>(index) < NumRows();
  return isThere ? std::optional(At(static_cast<std::size_t>(index))) : std::nullopt;
}

void CheckWindow::ChooseRow(int index) {
  ListView_SetItemState(list_, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void CheckWindow::OnRowChosen() {
  if (isFilling_) return;
  ShowState();
  const std::optional<Row> chosen = Chosen();
  if (!chosen || !chosen->e) return;
  const Row& row = *chosen;
  MarkFace(windows_.Views(), map_, CornersOf(*row.e, row.face));
  if (row.e == &map_) return;
  Select(map_, row.e, false);
  const Bounds box = row.e->GetBounds();
  if (!box.IsEmpty()) {
    for (MapView* view : windows_.Views().ViewsOf(map_)) {
      view->CentreOn((box.mins + box.maxs) * 0.5f);
    }
  }
  map_.ShowStatus(map_.selection.empty() ? row.text + " (hidden or disabled)" : row.text);
}

void CheckWindow::OnButton(int id) {
  if (id == ID_CHECK_REPAIR) RepairChosen();
  if (id != ID_CHECK_STRICT) return;
  const bool isStrict = IsDlgButtonChecked(Handle(), ID_CHECK_STRICT) == BST_CHECKED;
  check_.Restart(isStrict ? STRICT_TOLERANCE : CHECK_TOLERANCE);
  Empty();
  SetTimer(Handle(), CHECK_TIMER, CHECK_PERIOD, nullptr);
}

void CheckWindow::RepairChosen() {
  const std::optional<Row> chosen = Chosen();
  if (!chosen || !chosen->e) return;
  const ActionScope action(map_.Data(), RepairName(chosen->repair));
  Perform(*chosen);
}

bool CheckWindow::Perform(const Row& row) {
  switch (row.repair) {
    case Repair::DropFace:
      return Conclude(map_, DropFace(map_, *row.e, row.face));
    case Repair::SnapCorners:
      return Conclude(map_, SnapCorners(map_, *row.e));
    case Repair::RemoveBrush:
      return Conclude(map_, RemoveBrush(map_, *row.e));
    case Repair::ReplaceTexture:
      return AskForTexture(row);
    case Repair::None:
      break;
  }
  return false;
}

bool CheckWindow::AskForTexture(const Row& row) {
  if (row.face >= row.e->brush.getNumFaces()) return false;
  const std::string name(row.e->brush.face(row.face).WrittenName());
  const auto accept = [&](const FormValues& typed) {
    int replaced = 0;
    if (!Conclude(map_, ReplaceTexture(map_, name, typed.front(), replaced))) return false;
    map_.ShowStatus(Format("Replaced on %i faces", replaced));
    return true;
  };
  return context_.dialogs.Ask({"Replace texture",
                               "All faces of the map with " + name + " get the other texture.",
                               {{"Texture", {""}, {}}},
                               accept});
}

// --- messages

LRESULT CheckWindow::OnNotify(LPARAM lParam) {
  auto* header = reinterpret_cast<NMHDR*>(lParam);
  if (header->hwndFrom != list_) return 0;
  if (header->code == LVN_GETDISPINFOW) GiveRow(*reinterpret_cast<NMLVDISPINFOW*>(lParam));
  if (header->code == LVN_ITEMCHANGED) {
    const auto& change = *reinterpret_cast<NMLISTVIEW*>(lParam);
    if ((change.uNewState & LVIS_SELECTED) != 0) OnRowChosen();
  }
  return 0;
}

void CheckWindow::GiveRow(NMLVDISPINFOW& info) {
  const auto index = static_cast<std::size_t>(info.item.iItem);
  if (!(info.item.mask & LVIF_TEXT) || index >= NumRows()) return;
  shown_ = ToWide(At(index).text);
  info.item.pszText = shown_.data();
}

// The list's own keys; all others are commands here as everywhere.
bool CheckWindow::TakesMessage(MSG& message) {
  if (message.message != WM_KEYDOWN || !IsChild(Handle(), message.hwnd)) return false;
  constexpr int KEYS[] = {VK_TAB, VK_UP, VK_DOWN, VK_HOME, VK_END, VK_PRIOR, VK_NEXT, VK_SPACE};
  if (std::ranges::find(KEYS, static_cast<int>(message.wParam)) == std::end(KEYS)) return false;
  return IsDialogMessageW(Handle(), &message) != FALSE;
}

LRESULT CheckWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      OnCreate();
      break;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED && list_) Layout();
      break;  // the system's own child procedure must see it too
    case WM_TIMER:
      OnTimer();
      return 0;
    case WM_COMMAND:
      if (HIWORD(wParam) == BN_CLICKED) OnButton(LOWORD(wParam));
      return 0;
    case WM_NOTIFY:
      return OnNotify(lParam);
    case WM_NOTIFYFORMAT:
      return NFR_UNICODE;
    case WM_CTLCOLORSTATIC:
      SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetStockObject(LTGRAY_BRUSH));
    case WM_SETFOCUS:
      SetFocus(list_);
      break;
    case WM_CLOSE:
      windows_.Close(*this);
      return 0;
  }
  return DefMDIChildProcA(Handle(), message, wParam, lParam);
}

}  // namespace ferrowand
