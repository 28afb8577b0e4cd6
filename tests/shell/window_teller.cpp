#include "shell/window_teller.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "base/report.h"
#include "shell/dialog_visitor.h"
#include "shell/resources/resource.h"
#include "views/map_view.h"

namespace ferrowand {
namespace {

constexpr int SHOWN_ROWS = 6;  // of a list

std::string TextOf(HWND window) {
  return FromWide(WindowText(window));
}

}  // namespace

std::string KindOfWindow(const std::string& title) {
  const std::string kind = title.substr(0, title.find(':'));
  return kind.substr(0, kind.find(" - "));
}

std::vector<std::string> WindowTeller::All() {
  Look();
  std::vector<std::string> all;
  for (const Line& line : lines_) all.push_back(std::string(2 * line.depth, ' ') + line.text);
  before_ = lines_;
  return all;
}

std::vector<std::string> WindowTeller::Changes() {
  Look();
  std::set<std::string> opened, closed;
  for (const Line& line : lines_) opened.insert(line.window);
  for (const Line& line : before_) {
    if (!opened.contains(line.window)) closed.insert(line.window);
  }
  for (const Line& line : before_) opened.erase(line.window);
  std::vector<std::string> changes;
  for (const std::string& window : closed) changes.push_back(window + " closed");
  for (const std::string& window : opened) changes.push_back(window + " opened");
  std::multiset<Line> known(before_.begin(), before_.end());
  for (const Line& line : lines_) {
    if (const auto same = known.find(line); same != known.end()) {
      known.erase(same);
    } else if (!opened.contains(line.window)) {
      changes.push_back(line.window + " > " + line.text);
    }
  }
  before_ = lines_;
  return changes;
}

void WindowTeller::Look() {
  lines_.clear();
  window_ = "Menu";
  TellMenu(GetMenu(parts_.frame.Handle()), 1);
  window_ = "Keys";
  if (const HWND keys = GetFocus()) {
    const std::string window = KindOfWindow(TextOf(GetAncestor(keys, GA_ROOT)));
    Tell(1, window + ", " + ClassOf(keys) + Format(" %i", GetDlgCtrlID(keys)));
  } else {
    Tell(1, "nobody");
  }
  for (const auto& window : parts_.windows.All()) TellWindow(window->Handle());
  for (const auto& side : parts_.sides.All()) {
    if (IsWindowVisible(side->Handle())) TellWindow(side->Handle());
  }
  TellPictures();
}

void WindowTeller::Tell(std::size_t depth, const std::string& text) {
  lines_.push_back({window_, Told(text), depth});
}

std::string WindowTeller::Told(std::string text) const {
  for (const auto& [place, name] : names_) {
    for (std::size_t at = text.find(place); at != text.npos; at = text.find(place)) {
      text.replace(at, place.size(), name);
    }
  }
  static const std::regex date("[0-9]+/[0-9]+/[0-9]{4}"), time("[0-9]+:[0-9][0-9]");
  if (text.find('/') != text.npos) text = std::regex_replace(text, date, "DATE");
  if (text.find(':') != text.npos) text = std::regex_replace(text, time, "TIME");
  for (char& c : text) {
    if (c == '\r' || c == '\n') c = '|';
  }
  return text;
}

void WindowTeller::TellMenu(HMENU menu, std::size_t depth) {
  SendMessageA(parts_.frame.Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const auto item = static_cast<UINT>(i);
    wchar_t words[200] = L"";
    GetMenuStringW(menu, item, words, 200, MF_BYPOSITION);
    const UINT is = GetMenuState(menu, item, MF_BYPOSITION);
    const HMENU within = GetSubMenu(menu, i);
    if (within == nullptr && words[0] == 0) continue;  // a line
    const bool isGrey = !within && (is & MF_GRAYED) != 0;
    const bool isTicked = !within && (is & MF_CHECKED) != 0;
    Tell(depth, FromWide(words) + (isGrey ? " (grey)" : "") + (isTicked ? " (ticked)" : ""));
    if (within) TellMenu(within, depth + 1);
  }
}

void WindowTeller::TellWindow(HWND window) {
  window_ = KindOfWindow(TextOf(window));
  Tell(0, TextOf(window));
  TellChildren(window, 1);
}

void WindowTeller::TellChildren(HWND parent, std::size_t depth) {
  for (const HWND child : ShownChildren(parent)) {
    const std::string kind = ClassOf(child);
    if (kind == "ScrollBar" || kind == TOOLTIPS_CLASSA) continue;
    // They follow the mouse of the machine too.
    if (GetDlgCtrlID(child) == ID_COORDINATES_TEXT && kind == "Static") continue;
    std::string text = kind + " " + std::to_string(GetDlgCtrlID(child));
    if (const std::string shown = TextOf(child); !shown.empty()) text += " [" + shown + "]";
    if (!IsWindowEnabled(child)) text += " grey";
    const auto tick = kind == "Button" ? SendMessageA(child, BM_GETCHECK, 0, 0) : 0;
    if (tick != 0) text += tick == BST_CHECKED ? " ticked" : " half ticked";
    Tell(depth, text);
    if (kind == WC_LISTVIEWA) {
      TellRows(child, depth + 1);
    } else if (kind == "ListBox" || kind == "ComboBox") {
      TellItems(child, kind == "ComboBox", depth + 1);
    } else {
      TellChildren(child, depth + 1);
    }
  }
}

void WindowTeller::TellRows(HWND list, std::size_t depth) {
  const HWND header = ListView_GetHeader(list);
  const int columns = Header_GetItemCount(header), rows = ListView_GetItemCount(list);
  std::string titles;
  for (int i = 0; i < columns; ++i) {
    wchar_t title[100] = L"";
    HDITEMW item{};
    item.mask = HDI_TEXT;
    item.pszText = title;
    item.cchTextMax = 100;
    SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    titles += (i == 0 ? "" : " | ") + FromWide(title);
  }
  Tell(depth, Format("%i rows: ", rows) + titles);
  const int top = std::max(0, std::min(ListView_GetTopIndex(list), rows - SHOWN_ROWS));
  for (int row = top; row < std::min(rows, top + SHOWN_ROWS); ++row) {
    std::string cells;
    for (int i = 0; i < columns; ++i) cells += (i == 0 ? "" : " | ") + CellOf(list, row, i);
    const UINT state = ListView_GetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED);
    Tell(depth, Format("%i: ", row + 1) + cells + (state & LVIS_SELECTED ? " (chosen)" : "") +
                    (state & LVIS_FOCUSED ? " (at)" : ""));
  }
}

void WindowTeller::TellItems(HWND box, bool isCombo, std::size_t depth) {
  const auto items = static_cast<int>(SendMessageW(box, isCombo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0));
  const auto chosen =
      static_cast<int>(SendMessageW(box, isCombo ? CB_GETCURSEL : LB_GETCURSEL, 0, 0));
  Tell(depth, Format("%i items", items));
  for (int i = 0; i < std::min(items, SHOWN_ROWS); ++i) {
    wchar_t text[300] = L"";
    SendMessageW(box, isCombo ? CB_GETLBTEXT : LB_GETTEXT, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(text));
    Tell(depth, Format("%i: ", i + 1) + FromWide(text) + (i == chosen ? " (chosen)" : ""));
  }
}

// Where the views look, and where the cameras stand.
void WindowTeller::TellPictures() {
  for (const auto& window : parts_.windows.All()) {
    window_ = KindOfWindow(TextOf(window->Handle()));
    if (const MapView* view = window->View()) {
      const PixelSize area = view->DrawingArea();
      if (area.width != TOLD_WIDTH || area.height != TOLD_HEIGHT) continue;
      Tell(1, Format("looks at %i %i", view->transform.ToWorldU(area.width / 2),
                     view->transform.ToWorldV(area.height / 2)));
    } else if (const Camera* camera = window->GetCamera()) {
      const CameraPose& pose = camera->Pose();
      Tell(1, Format("stands at %.0f %.0f %.0f, looks along %.2f %.2f %.2f", pose.eye.x, pose.eye.y,
                     pose.eye.z, pose.direction.x, pose.direction.y, pose.direction.z));
      Tell(1, Format("mode %i, lamp %i, light %i, tints %i", static_cast<int>(camera->Mode()),
                     camera->HasLamp(), static_cast<int>(camera->Lighting()),
                     camera->TintsEntities()));
    }
  }
}

void ExpectLookedAt(const std::vector<std::string>& lines, const std::string& name) {
  std::vector<std::string> wanted;
  std::ifstream file(std::string(FERROWAND_TEST_DATA) + "/" + name);
  for (std::string line; std::getline(file, line);) wanted.push_back(line);
  const auto [line, want] = std::ranges::mismatch(lines, wanted);
  if (line == lines.end() && want == wanted.end()) return;
  std::filesystem::create_directories(std::filesystem::absolute(name).parent_path());
  std::ofstream shown(name, std::ios::binary);
  for (const std::string& each : lines) shown << each << '\n';
  ADD_FAILURE() << name << " differs from line " << line - lines.begin() + 1 << ": "
                << (line == lines.end() ? "nothing more" : *line);
}

}  // namespace ferrowand
