// Find Entity: what is typed there, F3, and what comes of it.
#include "shell/windows/find_window.h"

#include <functional>

#include "document/picking.h"
#include "operations/insert.h"
#include "operations/visibility.h"
#include "shell/app_fixture.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

class FindWindowTest : public AppTest {
 protected:
  void Open() {
    ASSERT_TRUE(Start());
    std::string text = "{\"classname\" \"worldspawn\" \"message\" \"Find\"\n" +
                       Cuboid(0, 0, 0, 64, 64, 64) + "}\n";
    for (const char* classname : {"monster_dog", "light", "monster_ogre", "monster_army"}) {
      text += Format("{\"classname\" \"%s\" \"origin\" \"%i 0 64\"}\n", classname,
                     static_cast<int>(text.size()));
    }
    map = parts->documents.Open(dir.Write("find.map", text));
    app->Pump();
    Give(Command::FindEntity);
    app->Pump();
    window = parts->sides.Find<FindWindow>();
    ASSERT_NE(window, nullptr);
  }
  void Type(int field, const char* text, std::size_t found) const {
    SetDlgItemTextA(window->Handle(), field, text);
    const WPARAM changed = MAKEWPARAM(field, CBN_EDITCHANGE);
    SendMessageA(window->Handle(), WM_COMMAND, changed, 0);
    WaitFor([&] { return window->Found().size() == found; });
  }
  void Push(int button) const { SendDlgItemMessageA(window->Handle(), button, BM_CLICK, 0, 0); }
  void Press(WPARAM key) const {
    Post(GetDlgItem(window->Handle(), ID_FIND_VALUE), WM_KEYDOWN, key);
  }
  std::string State() const { return TextOf(GetDlgItem(window->Handle(), ID_FIND_STATE)); }
  entity& Object(std::size_t index) const {
    return *map->getEntityList().front()->getEntityList()[index];
  }
  bool IsOnly(std::size_t index) const {
    return map->selection == std::vector<entity*>{&Object(index)};
  }

  Map* map = nullptr;
  FindWindow* window = nullptr;
};

TEST_F(FindWindowTest, WhatIsTypedIsFoundAndGoneThroughAndTheMapIsFollowed) {
  Open();
  EXPECT_EQ(State(), "");
  Type(ID_FIND_CLASS, "monster_*", 3);
  EXPECT_EQ(State(), "3 found");
  for (const std::size_t next : {1u, 3u, 4u, 1u}) {
    Press(VK_F3);
    EXPECT_TRUE(IsOnly(next)) << next;
  }
  EXPECT_EQ(State(), "1 of 3 found");
  EXPECT_EQ(WindowOf(Orientation::Top).View()->Status(), "1 of 3: Unnamed, a monster_dog");
  {
    const HeldKey shift(VK_SHIFT);
    Press(VK_F3);
  }
  EXPECT_TRUE(IsOnly(4));
  Push(ID_FIND_PREVIOUS);
  EXPECT_TRUE(IsOnly(3));
  Press(VK_RETURN);
  EXPECT_TRUE(IsOnly(4));
  const HWND list = GetDlgItem(window->Handle(), ID_FIND_LIST);
  ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_TRUE(IsOnly(1));
  for (const auto& [field, count] :
       {std::pair(ID_FIND_CLASS, 4), {ID_FIND_KEY, 2}, {ID_FIND_FLAG, 1}}) {
    SendMessageA(window->Handle(), WM_COMMAND, MAKEWPARAM(field, CBN_DROPDOWN), 0);
    EXPECT_GE(SendDlgItemMessageA(window->Handle(), field, CB_GETCOUNT, 0, 0), count) << field;
  }
  Press(VK_ESCAPE);
  EXPECT_FALSE(IsWindowVisible(window->Handle()));
  Select(*map, &Object(1), false);
  Give(Command::FindNext);
  EXPECT_TRUE(IsOnly(3)) << "from what is selected";
  DeleteSelection(*map);
  EXPECT_EQ(window->Found().size(), 2u) << "at once";
  Give(Command::FindPrevious);
  EXPECT_TRUE(IsOnly(3)) << "the last one by now";
  map->undo.Undo();
  Give(Command::FindEntity);
  EXPECT_TRUE(IsWindowVisible(window->Handle()));
  EXPECT_EQ(window->Found().size(), 3u);
  parts->documents.Close(*map);
  EXPECT_TRUE(window->Found().empty());
  Press(VK_F3);
}

TEST_F(FindWindowTest, AllAreSelectedAndTheHiddenOnesToldAndShown) {
  Open();
  Select(*map, &Object(3), false);
  HideSelection(*map);
  Type(ID_FIND_CLASS, "monster_*", 3);
  EXPECT_EQ(State(), "3 found, 1 hidden or disabled");
  const auto colourOf = [&](std::size_t row) {
    NMLVCUSTOMDRAW draw{};
    draw.nmcd.hdr = {GetDlgItem(window->Handle(), ID_FIND_LIST), ID_FIND_LIST,
                     static_cast<UINT>(NM_CUSTOMDRAW)};
    draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    draw.nmcd.dwItemSpec = row;
    SendMessageA(window->Handle(), WM_NOTIFY, ID_FIND_LIST, reinterpret_cast<LPARAM>(&draw));
    return draw.clrText;
  };
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_EQ(colourOf(row) == GetSysColor(COLOR_GRAYTEXT), window->Found()[row] == &Object(3));
  }
  Push(ID_FIND_ALL);
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Object(1), &Object(4)}));
  const std::string before = ExtendedText(*map);
  Push(ID_FIND_SHOW);
  app->Pump();
  EXPECT_TRUE(IsReachable(Object(3)));
  map->undo.Undo();
  EXPECT_EQ(ExtendedText(*map), before);

  Select(*map, &Object(4), false);
  Push(ID_FIND_IN_SELECTION);
  EXPECT_EQ(window->Found(), std::vector<entity*>{&Object(4)});
  Select(*map, &Object(1), true);
  Type(ID_FIND_CLASS, "*", 2);
  Type(ID_FIND_CLASS, "*dog", 1);
  Press(VK_F3);
  EXPECT_TRUE(IsOnly(1));
  Press(VK_F3);
  EXPECT_TRUE(IsOnly(1)) << "still among the two";
  Push(ID_FIND_WHOLE);
  EXPECT_EQ(parts->options.findFlags, 5);
}

TEST_F(FindWindowTest, ItsBoxesAreThoseOfTheLastTime) {
  saved.findFlags = 10;
  Open();
  EXPECT_EQ(IsDlgButtonChecked(window->Handle(), ID_FIND_CASE), UINT{BST_CHECKED});
  EXPECT_EQ(IsDlgButtonChecked(window->Handle(), ID_FIND_ABSENT), UINT{BST_CHECKED});
  EXPECT_EQ(IsDlgButtonChecked(window->Handle(), ID_FIND_WHOLE), UINT{BST_UNCHECKED});
  Type(ID_FIND_KEY, "origin", 0);
  Push(ID_FIND_ABSENT);
  EXPECT_EQ(window->Found().size(), 4u);
}

}  // namespace
}  // namespace ferrowand
