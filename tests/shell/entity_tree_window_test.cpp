// The window of a map's entity tree: what the mouse and the keys do there, and what it shows after.
#include "shell/windows/entity_tree_window.h"

#include <functional>

#include "document/picking.h"
#include "operations/groups.h"
#include "operations/layers.h"
#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

class EntityTreeWindowTest : public AppTest {
 protected:
  // A brush and a door of one, three lights and a monster, in a layer "import".
  void Open() {
    ASSERT_TRUE(Start());
    const auto point = [](const char* classname, int x, const std::string& keys = "") {
      return Format("{\"classname\" \"%s\" \"origin\" \"%i 0 64\" %s}\n", classname, x,
                    keys.c_str());
    };
    map = parts->documents.Open(dir.Write(
        "tree.map",
        "{\"classname\" \"worldspawn\" \"message\" \"Tree\"\n" + Cuboid(0, 0, 0, 64, 64, 64) +
            "}\n{\"classname\" \"func_door\" \"targetname\" \"t1\"\n" +
            Cuboid(128, 0, 0, 192, 64, 64) + "}\n" + point("light", 0, "\"light\" \"300\"") +
            point("light", 64) + point("light", 128, "\"light\" \"300\"") +
            point("monster_ogre", 2000, "\"target\" \"t1\"")));
    ASSERT_NE(map, nullptr);
    app->Pump();
    Show();
  }
  void Show() {
    Give(Command::EntityTree);
    app->Pump();
    window = dynamic_cast<EntityTreeWindow*>(parts->windows.ActiveWindow());
    ASSERT_NE(window, nullptr);
    list = window->List();
  }
  // The cells of each row as the system has them, an asterisk before those that are chosen.
  std::string Shown() const {
    std::string text;
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
      if (ListView_GetItemState(list, row, LVIS_SELECTED) != 0) text += '*';
      std::string line;
      for (int column = 0; column < 5; ++column) {
        const std::string cell = CellOf(list, row, column);
        if (!cell.empty()) line += (line.empty() ? "" : ", ") + cell;
      }
      text += line + "\n";
    }
    return text;
  }
  void Press(WPARAM key) const { Post(list, WM_KEYDOWN, key); }
  POINT At(int row, int part = LVIR_LABEL) const {
    RECT place;
    ListView_GetItemRect(list, row, &place, part);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  }
  void Click(int row, int part = LVIR_LABEL, UINT second = 0) const {
    const POINT at = At(row, part);
    const WPARAM held =
        (GetKeyState(VK_CONTROL) < 0 ? MK_CONTROL : 0) | (GetKeyState(VK_SHIFT) < 0 ? MK_SHIFT : 0);
    for (const UINT message : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONUP}, second}) {
      if (message != 0) Post(list, message, held, MAKELPARAM(at.x, at.y));
    }
  }
  bool IsMarked(int row) const {
    RECT place;
    ListView_GetItemRect(list, row, &place, LVIR_BOUNDS);
    UpdateWindow(list);
    const HDC dc = GetDC(list);
    int marked = 0;
    for (LONG x = place.left; x < place.right; ++x) {
      if (GetPixel(dc, x, place.top + 2) == GetSysColor(COLOR_HIGHLIGHT)) ++marked;
    }
    ReleaseDC(list, dc);
    return marked > (place.right - place.left) / 2;
  }
  // As the system tells of it: the list sees the press, whoever captures the mouse the rest.
  void Drag(int from, int to) const {
    const POINT begin = At(from), end = At(to);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(begin.x, begin.y));
    PostMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(begin.x + 20, begin.y + 20));
    app->Pump();
    ASSERT_EQ(GetCapture(), window->Handle());
    POINT there = end;
    MapWindowPoints(list, window->Handle(), &there, 1);
    Post(window->Handle(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(there.x, there.y));
    EXPECT_TRUE(IsMarked(to)) << "it is chosen, or takes what is dragged";
    Post(window->Handle(), WM_LBUTTONUP, 0, MAKELPARAM(there.x, there.y));
  }
  void TypeFilter(const wchar_t* text) const {
    SetDlgItemTextW(window->Handle(), ID_TREE_FILTER, text);
    const std::string typed = FromWide(text);
    WaitFor([&] { return window->Tree().Filter().text == typed; });
  }
  void Choose(int combo, int item) const {
    const HWND box = GetDlgItem(window->Handle(), combo);
    SendMessageW(window->Handle(), WM_COMMAND, MAKEWPARAM(combo, CBN_DROPDOWN), 0);
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(window->Handle(), WM_COMMAND, MAKEWPARAM(combo, CBN_SELCHANGE), 0);
  }
  void TrackPopup(int row, unsigned chosen) {
    dialogs.commands = {chosen};
    POINT at = At(row);
    ClientToScreen(list, &at);
    SendMessageW(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list),
                 MAKELPARAM(at.x, at.y));
  }
  // The list chooses the row before it asks.
  void RightClick(int row, unsigned chosen) {
    const HeldKey button(VK_RBUTTON);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list, row, LVIS_SELECTED, LVIS_SELECTED);
    TrackPopup(row, chosen);
    app->Pump();
  }
  entity& Object(std::size_t index) const {
    return *map->getEntityList().front()->getEntityList()[index];
  }

  Map* map = nullptr;
  EntityTreeWindow* window = nullptr;
  HWND list = nullptr;
};

const char ALL[] =
    "import, layer, current, 6 objects\n"
    "func_door, t1, 1 object\n"
    "light, 0 0 64\n"
    "light, 64 0 64\n"
    "light, 128 0 64\n"
    "monster_ogre, -> t1, 2000 0 64\n";

TEST_F(EntityTreeWindowTest, RowsAndTheSelectionFollowEachOther) {
  Open();
  EXPECT_EQ(Shown(), ALL);
  Click(2);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Object(2)});
  {
    const HeldKey control(VK_CONTROL);
    Click(5);
    Select(*map, &Object(0), true);  // a brush, which has no row
    Click(4);
  }
  EXPECT_EQ(map->selection.size(), 4u);
  {
    const HeldKey shift(VK_SHIFT);
    Click(2);
  }
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Object(2), &Object(4), &Object(3)}))
      << "the first stays the first";
  Select(*map, &Object(5), false);
  EXPECT_EQ(Shown().find('*'), Shown().find("*monster"));
  GroupSelection(*map);
  EXPECT_EQ(Shown().find('*'), Shown().find("*group1"));
  Select(*map, &Object(5).getEntityList().front()->Parent()[0], false);
  Select(*map, Object(5).getEntityList().front().get(), false);
  EXPECT_EQ(Shown().find('*'), Shown().find("*monster")) << "the group is opened for it";
  map->selection.Clear();
  EXPECT_EQ(Shown().find('*'), std::string::npos);
  map->undo.Undo();
  EXPECT_EQ(Shown(), ALL);
  Press(VK_HOME);
  Click(0, LVIR_ICON);
  EXPECT_EQ(ListView_GetItemCount(list), 1);
  Press(VK_RIGHT), Press(VK_RIGHT);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Object(1)});
  Press(VK_LEFT), Press(VK_LEFT);
  EXPECT_EQ(ListView_GetItemCount(list), 1);
}

TEST_F(EntityTreeWindowTest, EveryChangeIsOneStep) {
  Open();
  InsertLayer(*map, "attic");
  map->undo.Clear();
  const std::string before = ExtendedText(*map), shown = Shown();
  const auto type = [&](const wchar_t* name) {
    Press(VK_F2);
    const HWND box = ListView_GetEditControl(list);
    ASSERT_NE(box, nullptr);
    SetWindowTextW(box, name);
    Post(box, WM_KEYDOWN, VK_RETURN);
  };
  struct Case {
    std::function<void()> change;
    const char* row;  // that there is after it
  };
  const Case cases[] = {
      {[&] { Click(2), type(L"lamp \x0416"); }, "lamp \xd0\x96, light, 0 0 64\n"},
      {[&] { Click(0), type(L"cellar"); }, "cellar, layer, 6 objects\n"},
      {[&] { Click(2), Drag(2, 6); }, "attic, layer, current, 1 object\n"},
      {[&] {
         Select(*map, &Object(0), false);
         TrackPopup(1, 1005);
       },
       "func_door, t1, 2 objects\n"},
      {[&] {
         Select(*map, &Object(2), false);
         Post(list, WM_KEYDOWN, VK_DELETE);
       },
       "import, layer, 5 objects\n"},
  };
  for (const Case& row : cases) {
    row.change();
    EXPECT_NE(Shown().find(row.row), std::string::npos) << Shown();
    Give(Command::Undo);
    EXPECT_EQ(ExtendedText(*map), before) << row.row;
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    map->selection.Clear();
    app->Pump();
    EXPECT_EQ(Shown(), shown) << row.row;
    EXPECT_FALSE(map->undo.CanUndo());
  }
  EXPECT_EQ(ListView_EditLabel(list, 1), nullptr) << "a second click renames nothing";
  Click(2);
  Drag(2, 2);
  const POINT at = At(3);
  PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
  PostMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x + 20, at.y + 20));
  app->Pump();
  Press(VK_ESCAPE);
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(ExtendedText(*map), before);
}

TEST_F(EntityTreeWindowTest, WhatIsTypedAndChosenFilters) {
  Open();
  TypeFilter(L"t1");
  EXPECT_EQ(Shown(),
            "import, layer, current, 6 objects\n"
            "func_door, t1, 1 object\n"
            "monster_ogre, -> t1, 2000 0 64\n");
  EXPECT_EQ(TextOf(*window, ID_TREE_STATE), "2 found, 0 selected");
  Post(GetDlgItem(window->Handle(), ID_TREE_FILTER), WM_KEYDOWN, VK_ESCAPE);
  WaitFor([&] { return Shown() == ALL; });
  EXPECT_EQ(GetFocus(), list);
  Choose(ID_TREE_CLASS, 4);
  EXPECT_EQ(window->Tree().Filter().classname, "light");
  EXPECT_EQ(ListView_GetItemCount(list), 4);
  Choose(ID_TREE_CLASS, 0);
  entity& attic = InsertLayer(*map, "attic");
  Choose(ID_TREE_LAYER, 2);
  EXPECT_EQ(Shown(), "attic, layer, current, 0 objects\n");
  RemoveLayer(*map, attic);
  EXPECT_EQ(Shown(), ALL);
  Post(list, WM_CHAR, 'm', 1);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Object(5)});
  Press('N');
  EXPECT_EQ(map->selection.size(), 1u);
  EXPECT_EQ(TextOf(*window, ID_TREE_STATE), "1 selected");

  dialogs.commands = {1004};
  SendDlgItemMessageW(window->Handle(), ID_TREE_SHOW, BM_CLICK, 0, 0);
  EXPECT_EQ(ListView_GetItemCount(list), 7);
  EXPECT_EQ(dialogs.tracked[1000] & MF_CHECKED, UINT{MF_CHECKED});
  MoveWindow(window->Handle(), 10, 20, 300, 200, TRUE);
  SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
  Show();
  EXPECT_EQ(ListView_GetItemCount(list), 7) << "as it was left";
  const RECT place = PlaceOf(window->Handle());
  EXPECT_EQ(place.left, 10);
  EXPECT_EQ(place.right, 310);
}

TEST_F(EntityTreeWindowTest, ThePopupSelectsWhatIsAlikeAndOffersWhatCanBeDone) {
  Open();
  Select(*map, &Object(1), false);
  TrackPopup(2, 1007);
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Object(2), &Object(3), &Object(4)}));
  const auto item = [&](unsigned first) {
    for (int i = 0; i < Object(2).numkeys(); ++i) {
      if (Object(2).KeyName(i) == "light") return first + static_cast<unsigned>(i);
    }
    return 0u;
  };
  TrackPopup(2, item(2000));
  EXPECT_EQ(map->selection.size(), 2u);
  TrackPopup(4, item(3000));
  EXPECT_EQ(map->selection.size(), 2u);
  TrackPopup(0, 0);
  EXPECT_EQ(map->selection.size(), 2u) << "asking about a row selects nothing";
  EXPECT_EQ(Shown().find('*'), Shown().find("*light, 0 0")) << "nor does it look so";
  EXPECT_NE(dialogs.tracked[1005] & MF_GRAYED, UINT{MF_GRAYED});
  TrackPopup(0, 1001);
  EXPECT_EQ(map->selection.size(), 6u) << "what the layer holds";
  TrackPopup(5, 0);
  EXPECT_EQ(dialogs.tracked[1005] & MF_GRAYED, UINT{MF_GRAYED}) << "a monster holds nothing";

  Select(*map, &Object(3), false);
  RightClick(5, 1002);
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Object(3), &Object(5)}));
  TrackPopup(1, 1006);
  EXPECT_EQ(map->leadingGroup(), &Object(1));
  TrackPopup(1, 1006);
  EXPECT_EQ(map->leadingGroup(), nullptr);
  TrackPopup(1, 1003);
  EXPECT_NE(ListView_GetEditControl(list), nullptr);
  ListView_CancelEditLabel(list);
  const MapView& view = *WindowOf(Orientation::Top).View();
  TrackPopup(3, 1004);
  EXPECT_NEAR(view.transform.ToWorldU(view.DrawingArea().width / 2), 64, 3);
  Click(5, LVIR_LABEL, WM_LBUTTONDBLCLK);
  EXPECT_NEAR(view.transform.ToWorldU(view.DrawingArea().width / 2), 2000, 70);
  RightClick(2, 1000);
  app->Pump();
  EXPECT_EQ(map->selection, std::vector<entity*>{&Object(2)});
  ASSERT_FALSE(parts->sides.All().empty());
  DestroyWindow(parts->sides.All().back()->Handle());
  SetLayerState(*map, *map->currentLayer(), true, false);
  Click(5);
  EXPECT_TRUE(map->selection.empty());
  EXPECT_EQ(Shown().find('*'), Shown().find("*monster_ogre, -> t1, (hidden)"))
      << "chosen all the same";
}

}  // namespace
}  // namespace ferrowand
