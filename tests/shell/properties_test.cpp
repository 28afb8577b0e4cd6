// The window of properties in real windows: what its controls show of the selection, and what is
// done by them, undo included.
#include "shell/windows/properties_window.h"

#include "document/classes/class_set.h"
#include "document/picking.h"
#include "operations/class_change.h"
#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"
#include "shell/resources/resource.h"
#include "shell/system/wide_text.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

constexpr char ENTITIES[] = R"({
"classname" "worldspawn"
"message" "Hall"
"unheard" "of"
{
"classname" "light" "origin" "0 0 0" "light" "200" "spawnflags" "257"
}
{
"classname" "light" "origin" "64 0 0" "light" "300" "XMPentityname" "lamp"
}
{
"classname" "info_player_start" "origin" "128 0 0" "angle" "90"
}
}
)";

class PropertiesTest : public AppTest {
 protected:
  void Open() {
    ASSERT_TRUE(Start());
    map = parts->documents.Open(dir.Write("hall.xmp", ENTITIES));
    ASSERT_NE(map, nullptr);
    app->Pump();
    before = ExtendedText(*map);
    Select({0});
    Give(Command::Properties);
    Find();
  }
  void Find() {
    app->Pump();
    window = nullptr;
    for (const auto& side : parts->sides.All()) {
      if (auto* open = dynamic_cast<PropertiesWindow*>(side.get())) window = open;
    }
    ASSERT_NE(window, nullptr);
  }
  entity& Object(std::size_t index) const { return *map->currentLayer()->getEntityList()[index]; }
  void Select(std::initializer_list<std::size_t> indices) {
    std::vector<entity*> objects;
    for (const std::size_t index : indices) objects.push_back(&Object(index));
    map->selection.Set(objects);
    app->Pump();
  }
  HWND Control(int id) const { return GetDlgItem(window->Handle(), id); }
  std::string Shown(int id) const { return TextOf(Control(id)); }
  // "key=value" of each row, as the list shows it.
  std::vector<std::string> Rows() const {
    const HWND list = window->Keys().Handle();
    std::vector<std::string> rows;
    for (int i = 0; i < ListView_GetItemCount(list); ++i) {
      rows.push_back(CellOf(list, i, 0) + "=" + CellOf(list, i, 1));
    }
    return rows;
  }
  std::string Row(const std::string& name) const {
    for (const std::string& row : Rows()) {
      if (row.starts_with(name + "=")) return row.substr(name.size() + 1);
    }
    return "no such row";
  }
  void Key(HWND to, WPARAM key) { Post(to, WM_KEYDOWN, key); }
  void Letters(HWND to, const std::wstring& text) {
    for (const wchar_t letter : text) SendMessageW(to, WM_CHAR, letter, 0);
  }
  // Where what is typed into the grid goes.
  HWND Box() const {
    const HWND editor = window->Keys().Editor();
    const HWND inner = FindWindowExW(editor, nullptr, L"EDIT", nullptr);
    return inner ? inner : editor;
  }
  void TypeValue(const std::string& name, const std::wstring& value) {
    window->Keys().Choose(name);
    Key(window->Keys().Handle(), VK_F2);
    ASSERT_TRUE(window->Keys().IsEditing()) << name;
    Letters(Box(), value);
  }
  std::string KeyOf(std::size_t index, const char* key) const {
    const char* value = Object(index).GetKey(key);
    return value ? value : "none";
  }
  void ExpectUndone() {
    while (map->undo.CanUndo()) Give(Command::Undo);
    app->Pump();
    EXPECT_EQ(ExtendedText(*map), before);
  }

  Map* map = nullptr;
  PropertiesWindow* window = nullptr;
  std::string before;
};

TEST_F(PropertiesTest, OneKeyAfterTheOtherIsTypedAndTakenBack) {
  Open();
  EXPECT_EQ(Shown(ID_PROPERTIES_CLASS), "light");
  EXPECT_EQ(Row("light"), "200");
  EXPECT_EQ(Rows().back(), "<new key>=");
  TypeValue("light", L"150");
  EXPECT_EQ(KeyOf(0, "light"), "200") << "half typed";
  Key(Box(), VK_RETURN);
  EXPECT_EQ(KeyOf(0, "light"), "150");
  EXPECT_EQ(Row("light"), "150");
  EXPECT_EQ(map->undo.NewestName(), "Set light: 1 entity");
  Give(Command::Undo);
  app->Pump();
  EXPECT_EQ(Row("light"), "200");

  TypeValue("light", L"7");
  Key(Box(), VK_ESCAPE);
  EXPECT_EQ(KeyOf(0, "light"), "200");
  const HWND list = window->Keys().Handle();
  Key(list, VK_INSERT);
  Letters(Box(), L"style");
  Key(Box(), VK_RETURN);
  ASSERT_TRUE(window->Keys().IsEditing()) << "its value is asked for next";
  Letters(Box(), L"2");
  Key(Box(), VK_RETURN);
  EXPECT_EQ(KeyOf(0, "style"), "2");
  window->Keys().Choose("style");
  Key(list, VK_DELETE);
  EXPECT_EQ(KeyOf(0, "style"), "none");
  ExpectUndone();
}

TEST_F(PropertiesTest, TheGridIsWorkedByMouseAndKeys) {
  Open();
  const HWND list = window->Keys().Handle();
  const auto rowOf = [this](const std::string& name) {
    const auto rows = Rows();
    return static_cast<int>(
        std::ranges::find_if(rows,
                             [&](const std::string& row) { return row.starts_with(name + "="); }) -
        rows.begin());
  };
  const auto click = [&](const std::string& name, int column) {
    RECT cell;
    ListView_GetSubItemRect(list, rowOf(name), column, LVIR_BOUNDS, &cell);
    const LPARAM at = MAKELPARAM(cell.left + 3, cell.top + 3);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    Post(list, WM_LBUTTONUP, 0, at);
  };
  click("light", 1);
  ASSERT_TRUE(window->Keys().IsEditing());
  Letters(Box(), L"1");
  Key(Box(), VK_UP);
  EXPECT_EQ(KeyOf(0, "light"), "1");
  EXPECT_FALSE(window->Keys().IsEditing());
  window->Keys().Choose("light");
  Letters(list, L"2");
  Letters(Box(), L"3");
  SendMessageW(list, WM_VSCROLL, SB_LINEDOWN, 0);
  EXPECT_EQ(KeyOf(0, "light"), "23") << "what goes out of sight is taken";
  click("light", 1);
  Letters(Box(), L"5");
  SetFocus(Control(ID_PROPERTIES_NAME));
  EXPECT_EQ(KeyOf(0, "light"), "5") << "as is what is left";
  SendMessageW(Control(ID_PROPERTIES_ADD), BM_CLICK, 0, 0);
  Letters(Box(), L"style");
  Key(Box(), VK_RETURN);
  Letters(Box(), L"4");
  Key(Box(), VK_TAB);
  EXPECT_EQ(KeyOf(0, "style"), "4");
  EXPECT_NE(GetFocus(), list) << "the next control has the keys";
  window->Keys().Choose("style");
  const HeldKey shift(VK_SHIFT);
  Key(list, VK_F2);
  Letters(Box(), L"wait");
  Key(Box(), VK_RETURN);
  EXPECT_EQ(KeyOf(0, "wait"), "4") << "another name";
  window->Keys().Choose("wait");
  SendMessageW(Control(ID_PROPERTIES_REMOVE), BM_CLICK, 0, 0);
  EXPECT_EQ(KeyOf(0, "wait"), "none");
  ExpectUndone();
}

TEST_F(PropertiesTest, TheWindowFollowsTheSelectionAndGivesToAll) {
  Open();
  Select({0, 1});
  EXPECT_EQ(Row("light"), "(differs)");
  TypeValue("light", L"99");
  Select({2});
  EXPECT_EQ(KeyOf(0, "light"), "99") << "to those that it was begun on";
  EXPECT_EQ(KeyOf(1, "light"), "99");
  EXPECT_EQ(KeyOf(2, "light"), "none");
  EXPECT_EQ(Row("angle"), "90");

  TypeValue("angle", L"45");
  Give(Command::Undo);
  EXPECT_EQ(KeyOf(2, "angle"), "90") << "given first, and then taken back";
  EXPECT_EQ(KeyOf(0, "light"), "99");
  Select({0});
  SendMessageW(Control(ID_PROPERTIES_PIN), BM_CLICK, 0, 0);
  Select({2});
  EXPECT_EQ(window->Objects(), std::vector<entity*>{&Object(0)}) << "pinned";
  Give(Command::Properties);
  EXPECT_EQ(parts->sides.All().size(), 2u) << "another one follows";
  ExpectUndone();

  Find();
  Select({2});
  TypeValue("angle", L"45");
  dialogs.files = {dir.Path("saved.xmp")};
  Give(Command::FileSaveAs);
  EXPECT_NE(dir.Read("saved.xmp").find("\"angle\" \"45\""), std::string::npos);
}

TEST_F(PropertiesTest, FlagsAngleNameAndClassAreOneStepEach) {
  Open();
  map->classSet->FindClass("light").flags = {"START_OFF"};
  Select({0, 1});
  EXPECT_EQ(Shown(ID_PROPERTIES_FLAG), "START_OFF");
  EXPECT_EQ(SendMessageW(Control(ID_PROPERTIES_FLAG), BM_GETCHECK, 0, 0), BST_INDETERMINATE);
  SendMessageW(Control(ID_PROPERTIES_FLAG), BM_CLICK, 0, 0);
  app->Pump();
  EXPECT_EQ(KeyOf(0, "spawnflags"), "257");
  EXPECT_EQ(KeyOf(1, "spawnflags"), "1");
  EXPECT_EQ(SendMessageW(Control(ID_PROPERTIES_FLAG), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_EQ(Shown(ID_PROPERTIES_NAME), "(differs)");

  Select({2});
  for (const auto& [id, angle] : Cases<int, const char*>{
           {ID_ANGLE_DIRECTION + 3, "135"}, {ID_ANGLE_UP, "-1"}, {ID_ANGLE_DOWN, "-2"}}) {
    SendMessageW(Control(id), BM_CLICK, 0, 0);
    app->Pump();
    EXPECT_EQ(KeyOf(2, "angle"), angle);
    EXPECT_EQ(Shown(ID_ANGLE_TEXT), angle);
  }
  RECT dial;
  GetClientRect(Control(ID_ANGLE_DIAL), &dial);
  const LPARAM up = MAKELPARAM(dial.right / 2, 1);
  SendMessageW(Control(ID_ANGLE_DIAL), WM_LBUTTONDOWN, MK_LBUTTON, up);
  SendMessageW(Control(ID_ANGLE_DIAL), WM_LBUTTONUP, 0, up);
  app->Pump();
  EXPECT_EQ(KeyOf(2, "angle"), "90");

  SetFocus(Control(ID_PROPERTIES_NAME));
  SetWindowTextW(Control(ID_PROPERTIES_NAME), L"Anf\u00E4nger");
  Key(Control(ID_PROPERTIES_NAME), VK_RETURN);
  EXPECT_EQ(KeyOf(2, "XMPentityname"), "Anf\xC3\xA4nger");

  const HWND text = FindWindowExW(Control(ID_PROPERTIES_CLASS), nullptr, L"EDIT", nullptr);
  SetFocus(text);
  SendMessageW(text, EM_SETSEL, 0, -1);
  Letters(text, L"info_player_d");
  EXPECT_EQ(TextOf(text), "info_player_deathmatch") << "the rest comes by itself";
  Key(text, VK_RETURN);
  EXPECT_EQ(KeyOf(2, "classname"), "info_player_deathmatch");
  EXPECT_EQ(KeyOf(2, "angle"), "90");
  const HWND classes = Control(ID_PROPERTIES_CLASS);
  for (const int notice : {CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP}) {
    if (notice == CBN_SELENDOK)
      SendMessageW(classes, CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>(L"info_player_coop"));
    SendMessageW(window->Handle(), WM_COMMAND, MAKEWPARAM(ID_PROPERTIES_CLASS, notice),
                 reinterpret_cast<LPARAM>(classes));
  }
  app->Pump();
  EXPECT_EQ(KeyOf(2, "classname"), "info_player_coop");
  Give(Command::Undo);
  app->Pump();
  SetFocus(text);
  SendMessageW(text, EM_SETSEL, 0, -1);
  Letters(text, L"func_d");
  Key(text, VK_RETURN);
  EXPECT_NE(sink.OnlyText().find("no brush"), std::string::npos);
  EXPECT_EQ(KeyOf(2, "classname"), "info_player_deathmatch");
  ExpectUndone();
}

TEST_F(PropertiesTest, WhatAFileCannotHoldIsRefusedAndGameLettersSurvive) {
  Open();
  Object(0).SetKey("message", "\xC8\xE9\xA1 there\x92");
  Select({1});
  Select({0});
  TypeValue("message", L"x\"\\");
  Key(Box(), VK_RETURN);
  EXPECT_EQ(TextOf(Box()), "x\\\\n") << "no quote, and Enter begins a new line";
  Key(Box(), VK_BACK);
  Letters(Box(), L"\b");
  const HeldKey control(VK_CONTROL);
  Key(Box(), VK_RETURN);
  EXPECT_EQ(sink.OnlyText(), Reason(EditResult::EndsInBackslash));
  ASSERT_TRUE(window->Keys().IsEditing()) << "what was typed is kept to be mended";
  Key(Box(), VK_ESCAPE);
  TypeValue("message", L"");
  SendMessageW(Box(), EM_SETSEL, 100, 100);
  Letters(Box(), L"!");
  Key(Box(), VK_RETURN);
  EXPECT_EQ(KeyOf(0, "message"), "\xC8\xE9\xA1 there\x92!");
}

TEST_F(PropertiesTest, LinksLeadToTheirEndsAndSeveralAreConnected) {
  Open();
  Select({0, 2});
  Give(Command::Connect);
  EXPECT_EQ(KeyOf(0, "target"), "info_player_start1");
  Select({2});
  EXPECT_EQ(SendMessageW(Control(ID_PROPERTIES_LINKS), LB_GETCOUNT, 0, 0), 1);
  SendMessageW(Control(ID_PROPERTIES_LINKS), LB_SETCURSEL, 0, 0);
  SendMessageW(Control(ID_PROPERTIES_JUMP), BM_CLICK, 0, 0);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Object(0)});
  Give(Command::FollowLinks);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Object(2)});
  Give(Command::FollowLinksBack);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Object(0)});
  Give(Command::FollowLinksBack);
  EXPECT_EQ(WindowOf(Orientation::Top).View()->Status(), "Nothing points to it");
  Select({0, 2});
  Give(Command::DuplicateLinks);
  EXPECT_EQ(KeyOf(3, "target"), "info_player_start2");
  EXPECT_EQ(KeyOf(4, "targetname"), "info_player_start2");
  ExpectUndone();
}

TEST_F(PropertiesTest, TheWorldHasItsOwn) {
  Open();
  Give(Command::EditWorldspawn);
  Find();
  EXPECT_EQ(window->Of(), PropertiesOf::World);
  EXPECT_EQ(TextOf(window->Handle()), "Worldspawn: Hall");
  EXPECT_FALSE(IsWindowEnabled(Control(ID_PROPERTIES_CLASS)));
  EXPECT_EQ(Row("unheard"), "of");
  TypeValue("worldtype", L"2");
  Key(Box(), VK_RETURN);
  EXPECT_STREQ(map->GetKey("worldtype"), "2");
  EXPECT_EQ(Row("worldtype"), "2  base");
  ExpectUndone();
  EXPECT_EQ(Row("wad"), map->wads.Names());
  window->Keys().Choose("wad");
  Key(window->Keys().Handle(), VK_F2);
  EXPECT_FALSE(window->Keys().IsEditing()) << "a save writes the map's own list";
  SendMessageW(Control(ID_PROPERTIES_CHOOSE), BM_CLICK, 0, 0);
  app->Pump();
  const HWND wads = parts->sides.All().back()->Handle();
  EXPECT_EQ(TextOf(wads), "WADs: Hall");
  DestroyWindow(wads);
  parts->documents.Close(*map);
  app->Pump();
  EXPECT_EQ(parts->sides.All().size(), 1u) << "it goes with its map";
}

TEST_F(PropertiesTest, TypedKeysHaveFieldsThatFit) {
  Open();
  map->classSet->FindClass("light").keys = {
      {"_color", KeyType::Colour, "", "1 1 1", "of its light", {}},
      {"style", KeyType::Choices, "", "0", "", {{"0", "steady"}, {"10", "flicker"}}},
      {"noise", KeyType::File, "", "", "", {}},
      {"wait", KeyType::Number, "", "", "", {}}};
  Select({1});
  Select({0});
  EXPECT_EQ(Row("style"), "0  steady");
  EXPECT_EQ(KeyOf(0, "style"), "none") << "what the class knows is not written";
  window->Keys().Choose("_color");
  app->Pump();
  EXPECT_EQ(Shown(ID_PROPERTIES_HELP).find("_color: of its light"), 0u)
      << Shown(ID_PROPERTIES_HELP);
  dialogs.colours = {{255, 51, 0}};
  SendMessageW(Control(ID_PROPERTIES_CHOOSE), BM_CLICK, 0, 0);
  EXPECT_EQ(KeyOf(0, "_color"), "1 0.2 0");
  window->Keys().Choose("noise");
  dialogs.files = {"C:\\Quake\\id1\\sound\\misc\\hum.wav"};
  SendMessageW(Control(ID_PROPERTIES_CHOOSE), BM_CLICK, 0, 0);
  EXPECT_EQ(KeyOf(0, "noise"), "misc/hum.wav");
  window->Keys().Choose("style");
  Key(window->Keys().Handle(), VK_F2);
  const HWND list = window->Keys().Editor();
  SendMessageW(list, CB_SETCURSEL, 1, 0);
  SendMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(0, CBN_SELENDOK),
               reinterpret_cast<LPARAM>(list));
  app->Pump();
  EXPECT_EQ(KeyOf(0, "style"), "10");
  TypeValue("wait", L"long");
  Key(Box(), VK_RETURN);
  EXPECT_EQ(KeyOf(0, "wait"), "long") << "taken, and told of";
  EXPECT_NE(TextOf(WindowOf(Orientation::Top), ID_MESSAGE_TEXT).find("as a number"),
            std::string::npos);
  ExpectUndone();
}

TEST_F(PropertiesTest, BrushesAreTiedToAnEntityAndToTheWorldAgain) {
  ASSERT_TRUE(Start());
  map = &OpenTwoBrushes();
  const std::string text = ExtendedText(*map);
  Select({0, 1});
  dialogs.answers = {{"trigger_once"}};
  sink.answers = {Answer::Yes};
  Give(Command::TieToEntity);
  EXPECT_EQ(map->currentLayer()->getEntityList().size(), 1u);
  EXPECT_EQ(KeyOf(0, "classname"), "trigger_once");
  Give(Command::Properties);
  Find();
  EXPECT_EQ(Shown(ID_PROPERTIES_WHAT), "Made of 2 brushes");
  Give(Command::TieToWorld);
  app->Pump();
  EXPECT_EQ(map->selection.size(), 2u);
  EXPECT_EQ(Shown(ID_PROPERTIES_WHAT), "2 brushes");
  while (map->undo.CanUndo()) Give(Command::Undo);
  EXPECT_EQ(ExtendedText(*map), text);
}

TEST_F(PropertiesTest, ItIsTidyAtAnySizeAndTakesTheTabKeyInOrder) {
  Open();
  map->classSet->FindClass("light").flags.assign(16, "SOME_FLAG_OF_IT");
  for (const auto& [width, height] :
       Cases<int, int>{{400, 600}, {330, 380}, {600, 400}, {800, 300}, {500, 900}}) {
    SetWindowPos(window->Handle(), nullptr, 0, 0, Scaled(width), Scaled(height),
                 SWP_NOMOVE | SWP_NOZORDER);
    Select({1});
    Select({0, 1});
    SCOPED_TRACE(width);
    ExpectTidy(window->Handle());
  }
  std::vector<int> order;
  for (HWND at = Control(ID_PROPERTIES_CLASS);;) {
    order.push_back(GetDlgCtrlID(at));
    at = GetNextDlgTabItem(window->Handle(), at, FALSE);
    if (at == Control(ID_PROPERTIES_CLASS) || order.size() > 40) break;
  }
  const std::vector<int> first{ID_PROPERTIES_CLASS,       ID_PROPERTIES_NAME,    ID_PROPERTIES_PIN,
                               ID_PROPERTIES_EDITOR_KEYS, ID_PROPERTIES_KEYS,    ID_PROPERTIES_ADD,
                               ID_PROPERTIES_FLAG,        ID_PROPERTIES_FLAG + 1};
  ASSERT_GE(order.size(), first.size());
  EXPECT_EQ(std::vector(order.begin(), order.begin() + 8), first);
  EXPECT_EQ(order.back(), ID_PROPERTIES_HELP);
}

}  // namespace
}  // namespace ferrowand
