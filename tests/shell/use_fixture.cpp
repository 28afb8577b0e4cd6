#include "shell/use_fixture.h"

#include <cstdint>
#include <set>
#include <sstream>

#include "gamedata/wad_builder.h"
#include "operations/layers.h"

namespace ferrowand {
namespace {

constexpr std::size_t MOST_ITEMS = 12, ENOUGH_ITEMS = 2;  // of a popup, that are chosen
constexpr std::size_t MOST_LINES = 6, FIRST_LINES = 4;    // of a map, that are told

// Lines that the one text has and the other has not.
std::vector<std::string> LinesBeyond(const std::string& text, const std::string& other) {
  std::multiset<std::string> known;
  std::istringstream second(other), first(text);
  for (std::string line; std::getline(second, line);) known.insert(line);
  std::vector<std::string> beyond;
  for (std::string line; std::getline(first, line);) {
    if (const auto same = known.find(line); same != known.end()) {
      known.erase(same);
    } else {
      beyond.push_back(line);
    }
  }
  return beyond;
}

// Of many the first ones, and a sum over the rest.
void TellLines(std::vector<std::string>& told, const char* mark,
               const std::vector<std::string>& lines) {
  std::uint32_t sum = 2166136261;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines.size() <= MOST_LINES || i < FIRST_LINES) {
      told.push_back(mark + lines[i]);
      continue;
    }
    for (const char c : lines[i] + '\n') sum = (sum ^ static_cast<unsigned char>(c)) * 16777619;
  }
  if (lines.size() <= MOST_LINES) return;
  told.push_back(mark + Format("%i more lines, %08x", static_cast<int>(lines.size() - FIRST_LINES),
                               static_cast<unsigned>(sum)));
}

}  // namespace

void UseTest::OpenMap(std::vector<std::size_t> selected) {
  selected_ = std::move(selected);
  dir.Write("some.wad", WadBytes({{"wall", 64, 64, "\x10\x20"},
                                  {"door", 64, 128, "\x30\x40"},
                                  {"+0lamp", 32, 32, "\x50"},
                                  {"+1lamp", 32, 32, "\x60"}}));
  dir.Write("other.wad", WadBytes({{"own", 16, 16, "\x70"}}));
  dir.Write("other.map", std::string("{\n\"classname\" \"worldspawn\"\n}\n") + LAMP);
  dialogs.choose = [this](const FileChoice& choice) { return Chosen(choice); };
  dialogs.fill = Filled;
  std::string text = TWO_BRUSHES;
  text.insert(text.find('\n') + 1, "\"wad\" \"some.wad;other.wad\"\n");
  Open(text + LAMP + "{\n\"classname\" \"func_door\"\n\"targetname\" \"t1\"\n\"angle\" \"90\"\n" +
       Cuboid(0, 128, 0, 64, 192, 64) + "}\n");
  SetWindowPos(parts->frame.Handle(), nullptr, 0, 0, 800, 640, SWP_NOZORDER);
  SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);  // beside it
  for (const Orientation orientation : {Orientation::Front, Orientation::Side}) {
    SendMessageA(WindowOf(orientation).Handle(), WM_CLOSE, 0, 0);
  }
  MapWindow& top = WindowOf(Orientation::Top);
  Fit(top, top.Drawing());
  top.View()->CentreOn({80, 80, 0});
  InsertLayer(*map, "attic");
  map->undo.Clear();
  options_ = parts->options;
  PutBack();
}

// Two for every number, a letter more for every text, the last of every choice.
FormValues UseTest::Filled(const Form& form) {
  FormValues values;
  for (const FormRow& row : form.rows) {
    if (!row.choices.empty()) {
      values.push_back(row.choices.back());
      continue;
    }
    for (const std::string& value : row.values) values.push_back(row.isText ? value + "x" : "2");
  }
  return values;
}

std::string UseTest::Chosen(const FileChoice& choice) const {
  const std::size_t star = choice.filter.find("*.");
  const std::string extension = star == choice.filter.npos ? "" : choice.filter.substr(star + 1, 4);
  return dir.Path((choice.saving ? "saved" : "other") + extension);
}

void UseTest::ForgetOptions() {
  parts->options = options_;
  parts->windows.OptionsChanged();
}

void UseTest::PutBack() {
  dialogs.commands.clear();
  parts->sides.FinishTyping();
  while (map->undo.CanUndo()) map->undo.Undo();
  map->undo.Clear();
  map->SetCurrentLayer(FirstLayer());
  std::vector<entity*> selected;
  for (const std::size_t index : selected_) selected.push_back(Object(index));
  map->pickedFaces.Clear();
  map->selection.Set(selected);
  Restore();
  map->selection.Set(selected);
  Settle();
  dialogs.forms.clear();
  dialogs.asked.clear();
  dialogs.offered.clear();
  clipboard.text.clear();
  sink.messages.clear();
  teller->Changes();
}

void UseTest::Settle() {
  app->Pump();
  for (const DWORD began = GetTickCount(); GetTickCount() - began < wait; Sleep(5)) app->Pump();
}

void UseTest::Act(const std::string& name, const std::function<void()>& act) {
  Items items = ActOnce(name, act);
  if (items.size() > MOST_ITEMS) items.resize(ENOUGH_ITEMS);
  for (const auto& [id, text] : items) {
    ActOnce(name + ", " + text, [&, id = id] {
      dialogs.commands = {id};
      act();
    });
  }
}

UseTest::Items UseTest::ActOnce(const std::string& name, const std::function<void()>& act) {
  const std::string before = ExtendedText(*map);
  const std::vector<entity*> selected = map->selection.Objects();
  act();
  Settle();
  std::vector<std::string> came, menu;
  for (std::string& line : teller->Changes()) {
    (line.starts_with("Menu > ") ? menu : came).push_back(std::move(line));
  }
  TellLines(came, "", menu);
  const std::string after = ExtendedText(*map);
  TellLines(came, "map - ", LinesBeyond(before, after));
  TellLines(came, "map + ", LinesBeyond(after, before));
  if (map->selection.Objects() != selected) {
    std::string objects;
    for (const entity* e : map->selection) {
      const char* classname = e->GetKey("classname");
      objects += classname ? std::string(" ") + classname : " brush";
    }
    came.push_back("selected:" + objects);
  }
  if (!map->pickedFaces.empty()) {
    std::string faces;
    for (const PickedFace& face : map->pickedFaces) faces += Format(" %i", face.face);
    came.push_back("picked:" + faces);
  }
  for (const std::string& told : Told()) came.push_back(told);
  Items items = dialogs.offered;
  if (came.empty()) return items;
  for (std::string& line : came) line = teller->Told(line);
  Tell(teller->Told(where + name), came);
  PutBack();
  EXPECT_EQ(ExtendedText(*map), before) << where << name;
  return items;
}

std::vector<std::string> UseTest::Told() {
  std::vector<std::string> told;
  for (const Form& form : dialogs.forms) told.push_back("form: " + form.title);
  for (const FileChoice& choice : dialogs.asked) {
    told.push_back("file: " + choice.title + ", " + choice.filter + ", " + choice.name);
  }
  for (const std::string& said : sink.Said()) told.push_back("said: " + said);
  if (!clipboard.text.empty()) told.push_back("clipboard: " + clipboard.text);
  std::string items;
  for (const auto& [id, text] : dialogs.offered) items += (items.empty() ? "" : ", ") + text;
  if (dialogs.offered.size() > MOST_ITEMS) items.resize(items.find(',', 60));
  if (!items.empty()) {
    told.push_back(Format("offers %i: ", static_cast<int>(dialogs.offered.size())) + items);
  }
  return told;
}

void UseTest::Fit(const ChildWindow& window, HWND drawing) {
  RECT area, whole;
  GetClientRect(drawing, &area);
  GetWindowRect(window.Handle(), &whole);
  const int width = whole.right - whole.left + TOLD_WIDTH - area.right;
  const int height = whole.bottom - whole.top + TOLD_HEIGHT - area.bottom;
  SetWindowPos(window.Handle(), nullptr, 0, 0, width, height,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void UseTest::Write(const char* text) {
  const HWND keys = GetFocus();
  SendMessageA(keys, EM_SETSEL, 0, -1);
  for (const char* c = text; *c; ++c) PostMessageW(keys, WM_CHAR, static_cast<WPARAM>(*c), 0);
  app->Pump();
}

void UseTest::SendMouse(HWND to, UINT message, WPARAM held, POINT at) {
  PostMessageW(to, message, held, MAKELPARAM(at.x, at.y));
  app->Pump();
}

}  // namespace ferrowand
