// What the windows show of a small map, control by control, held against what they showed when
// somebody looked at them last. What is shown now is written beside the program where it differs,
// to be looked at and, if it is right, taken over into tests/data/windows.txt.
#include "shell/system/win32.h"

#include <commctrl.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <utility>

#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"

namespace ferrowand {
namespace {

constexpr int SHOWN_ROWS = 4;  // of a list

class ShownTest : public AppTest {
 protected:
  // The menu and all windows, as they are now; of what was told before only what is another.
  void TellAll(const std::string& state) {
    app->Pump();
    lines.push_back(state);
    TellMenu(GetMenu(parts->frame.Handle()), 1);
    TellChanges(parts->frame.Handle());
    for (const auto& window : parts->windows.All()) TellWindow(window->Handle());
    for (const auto& side : parts->sides.All()) {
      if (IsWindowVisible(side->Handle())) TellWindow(side->Handle());
    }
  }
  std::vector<std::string> lines;

 private:
  void TellMenu(HMENU menu, std::size_t depth) {
    SendMessageA(parts->frame.Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      const auto item = static_cast<UINT>(i);
      wchar_t words[200] = L"";
      GetMenuStringW(menu, item, words, 200, MF_BYPOSITION);
      const UINT is = GetMenuState(menu, item, MF_BYPOSITION);
      const HMENU within = GetSubMenu(menu, i);
      const bool isGrey = !within && (is & MF_GRAYED) != 0;
      const bool isTicked = !within && (is & MF_CHECKED) != 0;
      Tell(depth, FromWide(words) + (isGrey ? " (grey)" : "") + (isTicked ? " (ticked)" : ""));
      if (within) TellMenu(within, depth + 1);
    }
  }
  void TellWindow(HWND window) {
    Tell(0, TextOf(window));
    TellChildren(window, 1);
    TellChanges(window);
  }
  void TellChanges(HWND window) {
    std::vector<std::string>& before = before_[window];
    const bool isLike = before.size() == told_.size();
    bool isNamed = false;
    for (std::size_t i = 0; i < told_.size(); ++i) {
      if (isLike && told_[i] == before[i]) continue;
      if (!std::exchange(isNamed, true) && i > 0) lines.push_back(told_.front());
      lines.push_back(told_[i]);
    }
    before = std::exchange(told_, {});
  }
  void TellChildren(HWND parent, std::size_t depth) {
    for (const HWND child : ShownChildren(parent)) {
      const std::string kind = ClassOf(child);
      if (kind == "ScrollBar" || kind == TOOLTIPS_CLASSA) continue;
      std::string text = kind + " " + std::to_string(GetDlgCtrlID(child));
      if (const std::string shown = TextOf(child); !shown.empty()) text += " [" + shown + "]";
      if (!IsWindowEnabled(child)) text += " grey";
      const auto tick = kind == "Button" ? SendMessageA(child, BM_GETCHECK, 0, 0) : 0;
      if (tick != 0) text += tick == BST_CHECKED ? " ticked" : " half ticked";
      Tell(depth, text);
      if (kind == WC_LISTVIEWA) {
        TellRows(child, depth + 1);
      } else if (kind == "ListBox") {
        TellItems(child, LB_GETCOUNT, LB_GETTEXT, depth + 1);
      } else if (kind == "ComboBox") {
        TellItems(child, CB_GETCOUNT, CB_GETLBTEXT, depth + 1);
      } else {
        TellChildren(child, depth + 1);
      }
    }
  }
  void TellRows(HWND list, std::size_t depth) {
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
    for (int row = 0; row < std::min(rows, SHOWN_ROWS); ++row) {
      std::string cells;
      for (int i = 0; i < columns; ++i) cells += (i == 0 ? "" : " | ") + CellOf(list, row, i);
      Tell(depth, cells);
    }
  }
  void TellItems(HWND box, UINT count, UINT get, std::size_t depth) {
    const auto items = static_cast<int>(SendMessageW(box, count, 0, 0));
    Tell(depth, Format("%i items", items));
    for (int i = 0; i < std::min(items, SHOWN_ROWS); ++i) {
      wchar_t text[300] = L"";
      SendMessageW(box, get, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
      Tell(depth, FromWide(text));
    }
  }
  // Without what is another each time.
  void Tell(std::size_t depth, std::string text) {
    for (const auto& [place, name] : {std::pair(dir.Path(), "FOLDER"),
                                      {std::string(FERROWAND_DATA), "DATA"},
                                      {std::filesystem::current_path().string(), "HERE"}}) {
      for (std::size_t at = text.find(place); at != text.npos; at = text.find(place)) {
        text.replace(at, place.size(), name);
      }
    }
    text = std::regex_replace(text, std::regex("[0-9]+/[0-9]+/[0-9]{4}"), "DATE");
    text = std::regex_replace(text, std::regex("[0-9]+:[0-9][0-9]"), "TIME");
    for (char& c : text) {
      if (c == '\r' || c == '\n') c = '|';
    }
    told_.push_back(std::string(2 * depth, ' ') + text);
  }

  std::vector<std::string> told_;  // of one window
  std::map<HWND, std::vector<std::string>> before_;
};

TEST_F(ShownTest, EveryWindowShowsWhatItShowedWhenItWasLookedAt) {
  ASSERT_TRUE(Start());
  const std::string lamp =
      "{\n\"classname\" \"light\"\n\"origin\" \"80 0 80\"\n\"target\" \"t1\"\n}\n"
      "{\n\"classname\" \"info_null\"\n\"origin\" \"0 96 0\"\n\"targetname\" \"t1\"\n}\n";
  Map& map = *parts->documents.Open(dir.Write("shown.map", TWO_BRUSHES + lamp));
  const auto& objects = map.currentLayer()->getEntityList();
  map.selection.Set({objects[2].get()});
  for (const Command command :
       {Command::LayersList, Command::EntityTree, Command::TextureBrowser, Command::CheckMap,
        Command::EditWorldspawn, Command::Properties, Command::FindEntity, Command::ReplaceTexture,
        Command::WadManager, Command::FaceEdit, Command::GetInfo, Command::ClassMessages}) {
    Give(command);
    app->Pump();
  }
  dialogs.compile = CompileOptions{.flags = COMPILE_QBSP};  // that is not there
  Give(Command::Compile);
  Activate(WindowOf(Orientation::Top));
  map.selection.Clear();
  TellAll("nothing selected");
  map.selection.Set({objects[0].get()});
  TellAll("a brush");
  Give(Command::FaceEdit);
  map.selection.Set({objects[2].get()});
  TellAll("a light");
  map.selection.Set({objects[0].get(), objects[2].get()});
  TellAll("both");

  std::vector<std::string> wanted;
  std::ifstream file(std::string(FERROWAND_TEST_DATA) + "/windows.txt");
  for (std::string line; std::getline(file, line);) wanted.push_back(line);
  const auto [line, want] = std::ranges::mismatch(lines, wanted);
  if (line == lines.end() && want == wanted.end()) return;
  std::ofstream shown("windows.txt", std::ios::binary);
  for (const std::string& each : lines) shown << each << '\n';
  ADD_FAILURE() << "windows.txt differs from line " << line - lines.begin() + 1 << ": "
                << (line == lines.end() ? "nothing more" : *line);
}

}  // namespace
}  // namespace ferrowand
