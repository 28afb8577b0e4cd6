#include "shell/windows/check_window.h"

#include <algorithm>
#include <utility>

#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "document/picking.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int WIDTH = 470, HEIGHT = 300;
constexpr int MARGIN = 6, GAP = 6, ROW_HEIGHT = 23, STRICT_WIDTH = 90, REPAIR_WIDTH = 130;
constexpr int TEXT_DROP = 5;

constexpr UINT_PTR CHECK_TIMER = 1;
constexpr UINT CHECK_PERIOD = 15;              // milliseconds
constexpr DWORD FILL_PERIOD = 150;             // the same, of the list while the check goes on
constexpr std::size_t OBJECTS_PER_STEP = 200;  // a few milliseconds of work

std::vector<Vec3> CornersOf(const entity& e, std::uint8_t face) {
  std::vector<Vec3> corners;
  if (face >= e.brush.getNumFaces()) return corners;
  const Face& told = e.brush.face(face);
  if (!told.w) return {told.planepts.begin(), told.planepts.end()};
  for (const WindingPoint& p : std::as_const(*told.w).Points()) corners.push_back(p.Position());
  return corners;
}

}  // namespace

CheckWindow::CheckWindow(ChildWindows& windows, Dialogs& dialogs, Map& map)
    : MapPanel(windows, map, {CHECK_CLASS, "Check map", WIDTH, HEIGHT}),
      dialogs_(dialogs),
      check_(map, CHECK_TOLERANCE) {
  Open();
}

CheckWindow::~CheckWindow() {
  MarkFace(windows_.Views(), map_, {});
}

void CheckWindow::OnCreate() {
  list_ = AddLineList(Handle(), ID_CHECK_LIST);
  AddControl(Handle(), L"BUTTON", L"&Stricter", WS_TABSTOP | BS_AUTOCHECKBOX, ID_CHECK_STRICT);
  AddControl(Handle(), L"STATIC", L"", SS_LEFTNOWORDWRAP, ID_CHECK_STATE);
  AddControl(Handle(), L"BUTTON", L"&Repair", WS_TABSTOP | WS_DISABLED, ID_CHECK_REPAIR);
  ShowName();
  Look();
}

void CheckWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  const int margin = Scaled(MARGIN), row = Scaled(ROW_HEIGHT);
  const int width = std::max(static_cast<int>(area.right) - 2 * margin, 1);
  const int listHeight = std::max(static_cast<int>(area.bottom) - row - 3 * margin, 0);
  const auto place = [this](int id, int left, int top, int w, int h) {
    PlaceControl(Handle(), id, left, top, w, h);
  };
  place(ID_CHECK_LIST, margin, margin, width, listHeight);
  ListView_SetColumnWidth(list_, 0, LVSCW_AUTOSIZE_USEHEADER);
  const int top = 2 * margin + listHeight, strict = Scaled(STRICT_WIDTH);
  const int repair = std::min(Scaled(REPAIR_WIDTH), width / 2);
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

void CheckWindow::Look() {
  SetTimer(Handle(), CHECK_TIMER, CHECK_PERIOD, nullptr);
}

void CheckWindow::OnTimer(UINT_PTR) {
  const bool goesOn = check_.Step(OBJECTS_PER_STEP);
  if (!goesOn) KillTimer(Handle(), CHECK_TIMER);
  if (!goesOn || GetTickCount() - filled_ >= FILL_PERIOD) Fill();
}

void CheckWindow::OnChange(const MapChange& change) {
  ShowName();
  check_.OnChange(change);
  if (check_.IsDone()) return;
  Empty();
  Look();
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
  ListView_SetColumnWidth(list_, 0,
                          std::max(WidthFor(list_, longest), static_cast<int>(area.right)));
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
  ferrowand::ChooseRow(list_, index);
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
  windows_.CentreOn(map_, row.e->GetBounds());
  map_.ShowStatus(map_.selection.empty() ? row.text + " (hidden or disabled)" : row.text);
}

void CheckWindow::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  if (id == ID_CHECK_REPAIR) RepairChosen();
  if (id != ID_CHECK_STRICT) return;
  check_.Restart(IsTicked(Handle(), id) ? STRICT_TOLERANCE : CHECK_TOLERANCE);
  Empty();
  Look();
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
  return dialogs_.Ask({"Replace texture",
                       "All faces of the map with " + name + " get the other texture.",
                       {{"Texture", {""}, {}}},
                       accept});
}

// --- messages

LRESULT CheckWindow::OnNotify(NMHDR& header) {
  if (header.hwndFrom != list_) return 0;
  if (header.code == LVN_GETDISPINFOW) GiveRow(reinterpret_cast<NMLVDISPINFOW&>(header).item);
  if (header.code == LVN_ITEMCHANGED) {
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    if ((change.uNewState & LVIS_SELECTED) != 0) OnRowChosen();
  }
  return 0;
}

void CheckWindow::GiveRow(LVITEMW& item) {
  const auto index = static_cast<std::size_t>(item.iItem);
  if (!(item.mask & LVIF_TEXT) || index >= NumRows()) return;
  shown_ = ToWide(At(index).text);
  item.pszText = shown_.data();
}

bool CheckWindow::IsOwnKey(WPARAM key, bool) const {
  constexpr int KEYS[] = {VK_TAB, VK_UP, VK_DOWN, VK_HOME, VK_END, VK_PRIOR, VK_NEXT, VK_SPACE};
  return std::ranges::find(KEYS, static_cast<int>(key)) != std::end(KEYS);
}

}  // namespace ferrowand
