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
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

// In the order of ObjectColumn.
constexpr const wchar_t* HEADINGS[] = {L"Found", L"Class", L"Links", L"State", L"Details"};
// Of the room that there is, in hundredths.
constexpr std::array<int, std::size(HEADINGS)> SHARES{30, 23, 18, 12, 17};

constexpr UINT_PTR SEARCH_TIMER = 1;
constexpr UINT SEARCH_DELAY = 10;  // milliseconds; what is typed goes first

// In the order of the bits that the settings keep.
constexpr std::array SWITCHES{ID_FIND_IN_SELECTION, ID_FIND_CASE, ID_FIND_WHOLE, ID_FIND_ABSENT};
constexpr std::array FIELDS{ID_FIND_CLASS, ID_FIND_KEY, ID_FIND_VALUE, ID_FIND_TARGET,
                            ID_FIND_FLAG};

}  // namespace

FindWindow::FindWindow(SideWindows& sides, ChildWindows& windows, Options& options)
    : MapDialog(sides, windows, &options.findPlace, FirstPlace::LowerRight), options_(options) {
  Create(ID_FIND);
}

bool FindWindow::OnInit() {
  for (std::size_t i = 0; i < SWITCHES.size(); ++i) {
    const bool isOn = (options_.findFlags >> i & 1) != 0;
    CheckDlgButton(Handle(), SWITCHES[i], isOn ? BST_CHECKED : BST_UNCHECKED);
  }
  AddListColumns(GetDlgItem(Handle(), ID_FIND_LIST), HEADINGS, SHARES);
  return false;
}

void FindWindow::Show() {
  FollowActiveMap();
  if (isStale_) Search();
  ShowWindow(Handle(), SW_SHOW);
  SetActiveWindow(Handle());
  const HWND first = GetDlgItem(Handle(), ID_FIND_CLASS);
  SendMessageW(first, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
  SetFocus(first);
}

// --- the map

void FindWindow::OnOtherMap() {
  scope_.clear();
  if (!Handle()) return;
  TakeScope();
  Search();
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
    AddChoice(combo, ToWide(name));
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
  ShowName("Find entity");
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
  text += UnreachedInWords(unreached);
  if (Typed().IsEmpty()) text.clear();
  SetDlgItemTextA(Handle(), ID_FIND_STATE, text.c_str());
  for (const int id : {ID_FIND_NEXT, ID_FIND_PREVIOUS, ID_FIND_ALL}) {
    EnableWindow(GetDlgItem(Handle(), id), !found_.empty());
  }
  EnableWindow(GetDlgItem(Handle(), ID_FIND_SHOW), unreached > 0);
}

bool FindWindow::FindNext(bool forward) {
  FollowActiveMap();
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
  ferrowand::ChooseRow(list, static_cast<int>(row));
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
  windows_.CentreOn(*map_, e.GetBounds());
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
  map_->ShowStatus(SelectedInWords(found_.size(), map_->selection.size()));
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

void FindWindow::OnField(int id, int notification) {
  if (notification == CBN_DROPDOWN) FillList(id);
  if (notification != CBN_EDITCHANGE && notification != CBN_SELCHANGE &&
      notification != EN_CHANGE) {
    return;
  }
  isStale_ = true;
  SearchSoon();
}

void FindWindow::OnCommand(int id, int notification) {
  if (std::ranges::find(FIELDS, id) != FIELDS.end()) return OnField(id, notification);
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

}  // namespace ferrowand
