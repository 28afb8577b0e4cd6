#include "shell/windows/wad_manager_window.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/options.h"
#include "base/path_text.h"
#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "gamedata/file_kind.h"
#include "operations/texture_use.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/documents/documents.h"
#include "shell/documents/shared_data.h"
#include "shell/resources/resource.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

enum Column { NAME, TEXTURES, USED, FACES, STATE };
constexpr const wchar_t* HEADINGS[] = {L"WAD", L"Textures", L"Used", L"Faces", L"State"};
constexpr std::array<int, 5> SHARES{31, 18, 14, 15, 22};
constexpr char WAD_FILTER[] = "Wad archives (*.wad)|*.wad|";
constexpr std::size_t NAMES_SHOWN = 40;  // of those that other WADs have too

std::string SearchedFolders(const GameData& data, const Map& map) {
  std::string text;
  std::vector<std::string> told;
  const auto add = [&](const std::string& folder) {
    const auto isSame = [&](const std::string& other) { return EqualNoCase(other, folder); };
    if (folder.empty() || std::ranges::any_of(told, isSame)) return;
    told.push_back(folder);
    text += "\r\n  " + folder;
  };
  for (const std::string& entry : data.searchPath.Entries()) add(entry);
  add(map.Folder());
  for (const std::string& folder : data.wads.Folders()) add(folder);
  return text;
}

}  // namespace

WadManagerWindow::WadManagerWindow(SideWindows& sides, const WadManagerContext& context)
    : MapDialog(sides, context.windows, &context.options.wadManagerPlace, FirstPlace::AsMade),
      context_(context) {
  Create(ID_WADS);
}

bool WadManagerWindow::OnInit() {
  AddListColumns(GetDlgItem(Handle(), ID_WADS_LIST), HEADINGS, SHARES);
  return false;
}

void WadManagerWindow::Show() {
  FollowActiveMap();
  ShowWindow(Handle(), SW_SHOW);
  SetActiveWindow(Handle());
  SetFocus(GetDlgItem(Handle(), ID_WADS_LIST));
}

// --- the map

void WadManagerWindow::OnOtherMap() {
  if (!Handle()) return;
  Fill();
  if (map_) Choose(0);
}

void WadManagerWindow::OnChange(const MapChange& change) {
  isStale_ |=
      change.everything || !change.came.empty() || !change.went.empty() || !change.before.empty();
}

void WadManagerWindow::OnIdle() {
  if (isStale_) Fill();
}

void WadManagerWindow::Fill() {
  isStale_ = false;
  const int chosen = Chosen();
  rows_ = map_ ? WadRows(*map_, TextureUses(*map_)) : std::vector<WadRow>();
  const HWND list = GetDlgItem(Handle(), ID_WADS_LIST);
  ListView_SetItemCountEx(list, static_cast<int>(rows_.size()), LVSICF_NOSCROLL);
  InvalidateRect(list, nullptr, FALSE);
  if (!rows_.empty()) Choose(std::clamp(chosen, 0, static_cast<int>(rows_.size()) - 1));
  ShowChosen();
  ShowName("WADs");
}

// --- the rows

int WadManagerWindow::Chosen() const {
  const int row = ListView_GetNextItem(GetDlgItem(Handle(), ID_WADS_LIST), -1, LVNI_SELECTED);
  return row < static_cast<int>(rows_.size()) ? row : -1;
}

void WadManagerWindow::Choose(int row) const {
  ChooseRow(GetDlgItem(Handle(), ID_WADS_LIST), row);
}

std::string WadManagerWindow::CellText(const WadRow& row, int column) const {
  if (column == NAME) return AsUtf8(row.name);
  if (column == STATE) {
    if (row.IsMissing()) return "missing";
    if (row.shared.empty()) return "";
    return Format("%u shared", static_cast<unsigned>(row.shared.size()));
  }
  if (row.IsMissing()) return "";
  return std::to_string(column == TEXTURES ? row.textures
                        : column == USED   ? std::size_t{row.used}
                                           : std::size_t{row.faces});
}

void WadManagerWindow::GiveRow(LVITEMW& item) {
  const auto row = static_cast<std::size_t>(item.iItem);
  if (!(item.mask & LVIF_TEXT) || row >= rows_.size()) return;
  text_ = ToWide(CellText(rows_[row], item.iSubItem));
  item.pszText = text_.data();
}

LRESULT WadManagerWindow::OnCustomDraw(NMLVCUSTOMDRAW& draw) const {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const auto row = static_cast<std::size_t>(draw.nmcd.dwItemSpec);
  if (row < rows_.size() && rows_[row].IsMissing()) draw.clrText = RGB(192, 0, 0);
  if (marked_ && WadOf(draw.nmcd.dwItemSpec) == marked_) PaintAsTarget(draw);
  return CDRF_DODEFAULT;
}

WadFile* WadManagerWindow::WadOf(std::size_t row) const {
  if (!map_ || row >= map_->wads.Items().size()) return nullptr;
  const WadList::Item& item = map_->wads.Items()[row];
  return IsMissing(item) ? nullptr : item.wad;
}

WadFile* WadManagerWindow::WadUnder(POINT screen) const {
  const HWND list = GetDlgItem(Handle(), ID_WADS_LIST);
  if (WindowFromPoint(screen) != list) return nullptr;
  ScreenToClient(list, &screen);
  LVHITTESTINFO hit{};
  hit.pt = screen;
  const int row = ListView_SubItemHitTest(list, &hit);
  return row < 0 ? nullptr : WadOf(static_cast<std::size_t>(row));
}

void WadManagerWindow::Mark(const WadFile* wad) {
  if (std::exchange(marked_, wad) == wad) return;
  InvalidateRect(GetDlgItem(Handle(), ID_WADS_LIST), nullptr, FALSE);
}

std::string WadManagerWindow::Details() const {
  const int chosen = Chosen();
  if (!map_ || chosen < 0) return "";
  const WadRow& row = rows_[static_cast<std::size_t>(chosen)];
  std::string text;
  if (row.IsMissing()) {
    text = row.name + " was not found. Locate tells where it is.";
  } else {
    text = "File: " + row.file;
    if (!row.shared.empty()) {
      text +=
          "\r\nOther WADs of the map have these names too. Here the upper WAD counts, in some "
          "compilers the last one:";
      for (std::size_t i = 0; i < std::min(row.shared.size(), NAMES_SHOWN); ++i) {
        text += (i == 0 ? " " : ", ") + row.shared[i];
      }
      if (row.shared.size() > NAMES_SHOWN) text += " ...";
    }
  }
  return text + "\r\nWADs are looked for as they are named, and in:" +
         SearchedFolders(context_.data, *map_);
}

void WadManagerWindow::ShowChosen() const {
  SetDlgItemTextW(Handle(), ID_WADS_DETAILS, ToWide(Details()).c_str());
  const int chosen = Chosen(), last = static_cast<int>(rows_.size()) - 1;
  const auto enable = [this](int id, bool on) { EnableWindow(GetDlgItem(Handle(), id), on); };
  enable(ID_WADS_ADD, map_ != nullptr);
  enable(ID_WADS_REMOVE, chosen >= 0 && last > 0);
  enable(ID_WADS_UP, chosen > 0);
  enable(ID_WADS_DOWN, chosen >= 0 && chosen < last);
  enable(ID_WADS_LOCATE, chosen >= 0 && rows_[static_cast<std::size_t>(chosen)].IsMissing());
}

// --- what the user does

bool WadManagerWindow::Perform(const char* action, EditResult (*work)(Map& map, std::size_t row),
                               std::size_t row) {
  const ActionScope scope(context_.data, action);
  const bool done = Conclude(*map_, work(*map_, row));
  Fill();
  return done;
}

// What is no WAD2 is told by its kind.
void WadManagerWindow::Tell(EditResult result, const std::string& path) const {
  const std::string kind = result == EditResult::CannotOpen ? NoWadText(path) : "";
  if (kind.empty()) {
    Conclude(*map_, result);
  } else {
    context_.reporter.Show(
        "Cannot continue",
        kind + " The texture browser inserts pictures and the textures of levels and WAD3s.");
  }
}

void WadManagerWindow::Add() {
  FileChoice choice;
  choice.title = "Add WAD";
  choice.filter = WAD_FILTER;
  choice.owner = Handle();
  const auto path = context_.dialogs.ChooseFile(choice);
  if (!path) return;
  const ActionScope scope(context_.data, "Add WAD");
  const EditResult result = AddWad(*map_, *path);
  Tell(result, *path);
  Fill();
  if (result == EditResult::Done) Choose(static_cast<int>(rows_.size()) - 1);
}

// What the map uses of it is asked about first: it would be missing.
void WadManagerWindow::Remove() {
  const int chosen = Chosen();
  if (chosen < 0) return;
  const WadRow& row = rows_[static_cast<std::size_t>(chosen)];
  if (row.faces > 0 && context_.reporter.Show("Confirm",
                                              Format("%u faces have textures of %s. Remove it?",
                                                     row.faces, row.name.c_str()),
                                              Buttons::YesNo, Icon::Question) != Answer::Yes) {
    return;
  }
  Perform("Remove WAD", RemoveWad, static_cast<std::size_t>(chosen));
}

void WadManagerWindow::Move(int by) {
  const int chosen = Chosen(), to = chosen + by;
  if (chosen < 0 || to < 0 || to >= static_cast<int>(rows_.size())) return;
  const ActionScope scope(context_.data, "Order of WADs");
  Conclude(*map_, MoveWad(*map_, static_cast<std::size_t>(chosen), static_cast<std::size_t>(to)));
  Fill();
  Choose(to);
}

// A file of the same name: its folder is remembered, and every open map looks there for what it
// misses. Another one takes the place of the name.
void WadManagerWindow::Locate() {
  const int chosen = Chosen();
  if (chosen < 0) return;
  const std::string name = rows_[static_cast<std::size_t>(chosen)].name;
  FileChoice choice;
  choice.title = "Locate " + name;
  choice.filter = WAD_FILTER;
  choice.owner = Handle();
  const auto path = context_.dialogs.ChooseFile(choice);
  if (!path) return;
  if (!IsSameFileName(*path, name)) {
    const ActionScope scope(context_.data, "Locate WAD");
    Tell(ExchangeWad(*map_, static_cast<std::size_t>(chosen), *path), *path);
    return Fill();
  }
  RememberWadFolder(context_.data, context_.options, SplitPath(*path).directory);
  std::size_t found = 0;
  for (const auto& map : context_.documents.Maps()) found += FindMissingWads(*map);
  if (found == 0) Tell(EditResult::CannotOpen, *path);
  map_->ShowStatus(Format("%u missing WADs found", static_cast<unsigned>(found)));
  Fill();
}

// --- messages

LRESULT WadManagerWindow::OnNotify(NMHDR& header) {
  if (header.idFrom != ID_WADS_LIST) return 0;
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveRow(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case NM_CUSTOMDRAW:
      return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    case LVN_ITEMCHANGED:
      ShowChosen();
      return 0;
    case LVN_KEYDOWN: {
      const WORD key = reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey;
      if (key == VK_DELETE) Remove();
      if (key == VK_INSERT) Add();
      return 0;
    }
    default:
      return 0;
  }
}

void WadManagerWindow::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  switch (id) {
    case ID_WADS_ADD:
      return Add();
    case ID_WADS_REMOVE:
      return Remove();
    case ID_WADS_UP:
      return Move(-1);
    case ID_WADS_DOWN:
      return Move(1);
    case ID_WADS_LOCATE:
      return Locate();
    case IDCANCEL:
      DestroyWindow(Handle());
      return;
  }
}

}  // namespace ferrowand
