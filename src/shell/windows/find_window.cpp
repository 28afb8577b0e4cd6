#include "shell/windows/find_window.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/options.h"
#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/entity_tree.h"
#include "operations/regroup.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/window_place.h"

namespace ferrowand {
namespace {

// In the order of ObjectColumn.
constexpr const wchar_t* HEADINGS[] = {L"Found", L"Class", L"Links", L"State", L"Details"};
// Of the room that there is, in hundredths.
constexpr std::array<int, std::size(HEADINGS)> SHARES{30, 23, 18, 12, 17};

constexpr int CORNER_GAP = 16;  // pixels at the usual size of letters

constexpr UINT_PTR SEARCH_TIMER = 1;
constexpr UINT SEARCH_DELAY = 10;  // milliseconds; what is typed goes first

// In the order of the bits that the settings keep.
constexpr std::array SWITCHES{ID_FIND_IN_SELECTION, ID_FIND_CASE, ID_FIND_WHOLE, ID_FIND_ABSENT};
constexpr std::array FIELDS{ID_FIND_CLASS, ID_FIND_KEY, ID_FIND_VALUE, ID_FIND_TARGET,
                            ID_FIND_FLAG};

}  // namespace

FindWindow::FindWindow(SideWindows& sides, const Frame& frame, ChildWindows& windows,
                       Options& options)
    : SideWindow(sides), windows_(windows), options_(options) {
  CreateDialogParamW(frame.Instance(), MAKEINTRESOURCEW(ID_FIND), frame.Handle(), DispatchDialog,
                     reinterpret_cast<LPARAM>(static_cast<SideWindow*>(this)));
}

FindWindow::~FindWindow() {
  SetMap(nullptr);
}

void FindWindow::OnInit() {
  for (std::size_t i = 0; i < SWITCHES.size(); ++i) {
    const bool isOn = (options_.findFlags >> i & 1) != 0;
    CheckDlgButton(Handle(), SWITCHES[i], isOn ? BST_CHECKED : BST_UNCHECKED);
  }
  AddListColumns(GetDlgItem(Handle(), ID_FIND_LIST), HEADINGS, SHARES);
  PutInPlace();
}

// At first in the corner that the arranged views leave free.
void FindWindow::PutInPlace() const {
  RECT own, frame, screen;
  GetWindowRect(Handle(), &own);
  GetWindowRect(windows_.GetFrame().Handle(), &frame);
  GetWindowRect(GetDesktopWindow(), &screen);
  const int width = own.right - own.left, height = own.bottom - own.top;
  const int gap = Scaled(CORNER_GAP);
  const ChildPlace corner{frame.right - gap - width, frame.bottom - gap - height, width, height};
  const ChildPlace place = PlaceOfText(options_.findPlace, corner, {screen.right, screen.bottom});
  SetWindowPos(Handle(), nullptr, place.left, place.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FindWindow::Show() {
  SetMap(windows_.ActiveMap());
  if (isStale_) Search();
  ShowWindow(Handle(), SW_SHOW);
  SetActiveWindow(Handle());
  const HWND first = GetDlgItem(Handle(), ID_FIND_CLASS);
  SendMessageW(first, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
  SetFocus(first);
}

void FindWindow::Hide() {
  options_.findPlace = PlaceText(Handle(), options_.findPlace);
  ShowWindow(Handle(), SW_HIDE);
}

// --- the map

void FindWindow::SetMap(Map* map) {
  if (map == map_) return;
  if (map_) map_->RemoveObserver(*this);
  map_ = map;
  if (map_) map_->AddObserver(*this);
  scope_.clear();
  if (!Handle()) return;
  TakeScope();
  Search();
}

void FindWindow::OnMapClosing(const Map& map) {
  if (&map == map_) SetMap(nullptr);
}

void FindWindow::OnMapReplaced(const Map& map, Map& by) {
  if (&map == map_) SetMap(&by);
}

// What has gone is still whole now.
void FindWindow::OnChange(const MapChange& change) {
  const bool others = change.everything || !change.came.empty() || !change.went.empty() ||
                      !change.moved.empty() || !change.before.empty();
  const auto hasGone = [this](const entity* e) { return e->OwningMap() != map_; };
  if (others) {
    std::erase_if(found_, hasGone);
    std::erase_if(scope_, hasGone);
    at_ = NONE;
  }
  const bool isOtherScope = change.selection && !isSelecting_;
  if (isOtherScope) TakeScope();
  if (!others && !(isOtherScope && IsTicked(ID_FIND_IN_SELECTION))) return;
  isStale_ = true;
  if (!IsWindowVisible(Handle())) return;
  ShowState();
  SearchSoon();
}

void FindWindow::TakeScope() {
  if (map_) scope_ = map_->selection.Objects();
}

// --- what is asked

bool FindWindow::IsTicked(int id) const {
  return IsDlgButtonChecked(Handle(), id) == BST_CHECKED;
}

std::string FindWindow::TextOf(int id) const {
  wchar_t text[1100] = L"";
  GetDlgItemTextW(Handle(), id, text, static_cast<int>(std::size(text)));
  return FromWide(text);
}

EntityQuery FindWindow::Typed() const {
  return {.classname = TextOf(ID_FIND_CLASS),
          .key = TextOf(ID_FIND_KEY),
          .value = TextOf(ID_FIND_VALUE),
          .target = TextOf(ID_FIND_TARGET),
          .flag = TextOf(ID_FIND_FLAG),
          .keyIsAbsent = IsTicked(ID_FIND_ABSENT),
          .wholeTexts = IsTicked(ID_FIND_WHOLE),
          .caseCounts = IsTicked(ID_FIND_CASE)};
}

std::uint16_t FindWindow::Flags() const {
  unsigned flags = 0;
  for (std::size_t i = 0; i < SWITCHES.size(); ++i) flags |= (IsTicked(SWITCHES[i]) ? 1u : 0u) << i;
  return static_cast<std::uint16_t>(flags);
}

// When the list drops down: what the map has by then.
void FindWindow::FillList(int id) const {
  if (!map_) return;
  const HWND combo = GetDlgItem(Handle(), id);
  const std::string typed = TextOf(id);
  SendMessageW(combo, CB_RESETCONTENT, 0, 0);
  const auto names = id == ID_FIND_CLASS ? ClassesIn(*map_)
                     : id == ID_FIND_KEY ? KeysIn(*map_)
                                         : FlagsIn(*map_);
  for (const std::string& name : names) {
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(name).c_str()));
  }
  SetWindowTextW(combo, ToWide(typed).c_str());
}

// --- what is found

void FindWindow::SearchSoon() const {
  SetTimer(Handle(), SEARCH_TIMER, SEARCH_DELAY, nullptr);
}

void FindWindow::Search() {
  KillTimer(Handle(), SEARCH_TIMER);
  isStale_ = false;
  const EntityQuery query = Typed();
  const entity* const last = at_ < found_.size() ? found_[at_] : nullptr;
  if (!map_) {
    found_.clear();
  } else if (IsTicked(ID_FIND_IN_SELECTION)) {
    found_ = FindEntitiesIn(scope_, query);
  } else {
    found_ = FindEntities(*map_, query);
  }
  const auto place = std::ranges::find(found_, last);
  at_ = place == found_.end() ? NONE : static_cast<std::size_t>(place - found_.begin());
  ShowState();
  SetWindowTextW(Handle(), ToWide(map_ ? "Find entity: " + map_->Name() : "Find entity").c_str());
}

std::size_t FindWindow::NumUnreached() const {
  const ReachTest reach(*map_);
  return static_cast<std::size_t>(
      std::ranges::count_if(found_, [&](const entity* e) { return !reach(*e); }));
}

void FindWindow::ShowState() const {
  const HWND list = GetDlgItem(Handle(), ID_FIND_LIST);
  ListView_SetItemCountEx(list, static_cast<int>(found_.size()), LVSICF_NOSCROLL);
  InvalidateRect(list, nullptr, FALSE);
  const std::size_t unreached = map_ ? NumUnreached() : 0;
  std::string text;
  if (at_ != NONE) text = Format("%u of ", static_cast<unsigned>(at_ + 1));
  text += Format("%u found", static_cast<unsigned>(found_.size()));
  if (unreached > 0) text += Format(", %u hidden or disabled", static_cast<unsigned>(unreached));
  if (Typed().IsEmpty()) text.clear();
  SetDlgItemTextA(Handle(), ID_FIND_STATE, text.c_str());
  for (const int id : {ID_FIND_NEXT, ID_FIND_PREVIOUS, ID_FIND_ALL}) {
    EnableWindow(GetDlgItem(Handle(), id), !found_.empty());
  }
  EnableWindow(GetDlgItem(Handle(), ID_FIND_SHOW), unreached > 0);
}

bool FindWindow::FindNext(bool forward) {
  SetMap(windows_.ActiveMap());
  if (isStale_) Search();
  if (!map_ || Typed().IsEmpty()) return false;
  if (found_.empty()) {
    map_->ShowStatus("Nothing found");
    return true;
  }
  // From what is selected, if that is one of them: the user may have gone elsewhere.
  const auto selected =
      map_->selection.empty() ? found_.end() : std::ranges::find(found_, map_->selection.front());
  if (selected != found_.end()) at_ = static_cast<std::size_t>(selected - found_.begin());
  const std::size_t count = found_.size();
  const std::size_t next =
      at_ == NONE ? (forward ? 0 : count - 1) : (at_ + (forward ? 1 : count - 1)) % count;
  ChooseRow(next);
  GoTo(next);
  return true;
}

void FindWindow::ChooseRow(std::size_t row) {
  const HWND list = GetDlgItem(Handle(), ID_FIND_LIST);
  isFilling_ = true;
  ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
  ListView_SetItemState(list, static_cast<int>(row), LVIS_SELECTED | LVIS_FOCUSED,
                        LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(list, static_cast<int>(row), FALSE);
  isFilling_ = false;
}

// What cannot be selected is shown all the same.
void FindWindow::GoTo(std::size_t row) {
  if (!map_ || row >= found_.size()) return;
  at_ = row;
  entity& e = *found_[row];
  isSelecting_ = true;
  Select(*map_, &e, false);
  isSelecting_ = false;
  const Bounds box = e.GetBounds();
  if (!box.IsEmpty()) {
    for (MapView* view : windows_.Views().ViewsOf(*map_)) {
      view->CentreOn((box.mins + box.maxs) * 0.5f);
    }
  }
  const std::string state = CellText(e, ObjectColumn::State);
  map_->ShowStatus(
      Format("%u of %u: ", static_cast<unsigned>(row + 1), static_cast<unsigned>(found_.size())) +
      InWords(e) + (state.empty() ? "" : ", " + state));
  ShowState();
}

void FindWindow::SelectAll() {
  if (isStale_) Search();
  isSelecting_ = true;
  Select(*map_, found_, false);
  isSelecting_ = false;
  const std::size_t unreached = found_.size() - map_->selection.size();
  std::string text = Format("%u selected", static_cast<unsigned>(map_->selection.size()));
  if (unreached > 0) text += Format(", %u hidden or disabled", static_cast<unsigned>(unreached));
  map_->ShowStatus(text);
  ShowState();
}

void FindWindow::ShowUnreached() {
  if (isStale_) Search();
  std::vector<entity*> unreached;
  const ReachTest reach(*map_);
  std::ranges::copy_if(found_, std::back_inserter(unreached),
                       [&](const entity* e) { return !reach(*e); });
  const ActionScope action(map_->Data(), "Show what was found");
  Conclude(*map_, ShowObjects(*map_, unreached));
}

// --- messages

// What finds on, among others, wherever the keys go.
bool FindWindow::LeavesToProgram(const MSG& message) const {
  return IsProgramKey(message);
}

void FindWindow::GiveRow(LVITEMW& item) {
  const auto row = static_cast<std::size_t>(item.iItem);
  if (!(item.mask & LVIF_TEXT) || row >= found_.size()) return;
  text_ = ToWide(CellText(*found_[row], static_cast<ObjectColumn>(item.iSubItem)));
  item.pszText = text_.data();
}

LRESULT FindWindow::OnCustomDraw(NMLVCUSTOMDRAW& draw) const {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const auto row = static_cast<std::size_t>(draw.nmcd.dwItemSpec);
  if (row < found_.size() && !IsReachable(*found_[row])) {
    draw.clrText = GetSysColor(COLOR_GRAYTEXT);
  }
  return CDRF_DODEFAULT;
}

LRESULT FindWindow::OnNotify(NMHDR& header) {
  if (header.idFrom != ID_FIND_LIST) return 0;
  if (header.code == LVN_GETDISPINFOW) GiveRow(reinterpret_cast<NMLVDISPINFOW&>(header).item);
  if (header.code == NM_CUSTOMDRAW) {
    return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
  }
  if (header.code == LVN_ITEMCHANGED && !isFilling_) {
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    const bool isChosen = (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
    if (isChosen && change.iItem >= 0) GoTo(static_cast<std::size_t>(change.iItem));
  }
  return 0;
}

void FindWindow::OnCommand(int id, int notification) {
  const bool isField = std::ranges::find(FIELDS, id) != FIELDS.end();
  if (isField) {
    if (notification == CBN_DROPDOWN) FillList(id);
    const bool isOther = notification == CBN_EDITCHANGE || notification == CBN_SELCHANGE ||
                         notification == EN_CHANGE;
    if (isOther) {
      isStale_ = true;
      SearchSoon();
    }
    return;
  }
  if (notification != BN_CLICKED) return;
  switch (id) {
    case IDOK:
    case ID_FIND_NEXT:
      FindNext(true);
      return;
    case ID_FIND_PREVIOUS:
      FindNext(false);
      return;
    case ID_FIND_ALL:
      return SelectAll();
    case ID_FIND_SHOW:
      return ShowUnreached();
    case IDCANCEL:
      return Hide();
    default:
      options_.findFlags = Flags();
      TakeScope();
      Search();
  }
}

LRESULT FindWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      OnInit();
      return FALSE;
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) SetMap(windows_.ActiveMap());
      return FALSE;
    case WM_TIMER:
      Search();
      return TRUE;
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    case WM_NOTIFY:
      SetWindowLongPtrW(Handle(), DWLP_MSGRESULT, OnNotify(*reinterpret_cast<NMHDR*>(lParam)));
      return TRUE;
    case WM_CLOSE:
      Hide();
      return TRUE;
    case WM_DESTROY:
      options_.findPlace = PlaceText(Handle(), options_.findPlace);
      return FALSE;
  }
  return FALSE;
}

}  // namespace ferrowand
