// The window of a map's layers: what the mouse and the keys do there, and what it shows after.
#include "shell/windows/layer_window.h"
#include "document/edit_step.h"

#include <functional>

#include "document/classes/native_classes.h"
#include "document/picking.h"
#include "operations/layers.h"
#include "shell/app_fixture.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

enum Column { NAME, OBJECTS, VISIBLE, ENABLED, CURRENT };

// Two layers of one box each, "left" and "right", of which the second is the current one.
class LayerWindowTest : public AppTest {
 protected:
  void Open() {
    ASSERT_TRUE(Start());
    map = &OpenTwoBrushes();
    RenameLayer(*map, *map->currentLayer(), "left");
    InsertLayer(*map, "right");
    Select(*map, Box(0, 1), false);
    MoveSelectionToLayer(*map, *map->currentLayer());
    map->selection.Clear();
    map->undo.Clear();
    Show();
  }
  void Show() {
    Give(Command::LayersList);
    window = dynamic_cast<LayerWindow*>(parts->windows.ActiveWindow());
    ASSERT_NE(window, nullptr);
    rows = window->List().Control();
    app->Pump();
  }
  entity& Layer(std::size_t index) const { return *LayersOf(*map)[index]; }
  entity* Box(std::size_t layer, std::size_t index) const {
    return Layer(layer).getEntityList()[index].get();
  }
  std::string Text() const { return ExtendedText(*map); }
  // A line a layer: its name, how many objects, V(isible) and E(nabled), * the current one, colour.
  std::string Shown() const {
    std::string text;
    for (const LayerList::Row& row : window->List().Rows()) {
      text += Format("%s %u %s%s%s %02x%02x%02x\n", row.name.c_str(),
                     static_cast<unsigned>(row.objects), row.visible ? "V" : "-",
                     row.enabled ? "E" : "-", row.current ? "*" : "", row.colour.red,
                     row.colour.green, row.colour.blue);
    }
    return text;
  }
  void Press(WPARAM key) const { Post(rows, WM_KEYDOWN, key); }
  void Click(int row, int column) const {
    RECT cell;
    ListView_GetSubItemRect(rows, row, column, LVIR_BOUNDS, &cell);
    const LPARAM at = MAKELPARAM((cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2);
    PostMessageA(rows, WM_LBUTTONDOWN, MK_LBUTTON, at);
    Post(rows, WM_LBUTTONUP, 0, at);
  }
  void DoubleClick(int row, int part) const {
    RECT place;
    ListView_GetItemRect(rows, row, &place, part);
    const LPARAM at = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
      PostMessageA(rows, message, 0, at);
    }
    app->Pump();
  }
  void Push(int button) const { SendDlgItemMessageA(window->Dialog(), button, BM_CLICK, 0, 0); }
  bool IsEnabled(int button) const {
    return IsWindowEnabled(GetDlgItem(window->Dialog(), button)) != FALSE;
  }
  void TrackPopup(unsigned chosen) {
    dialogs.commands = {chosen};
    SendMessageA(window->List().Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(rows), -1);
  }
  bool IsGrey(unsigned item) const {
    return (GetMenuState(parts->popups.Get(ID_POPUP_LAYER), item, MF_BYCOMMAND) & MF_GRAYED) != 0;
  }
  // For whatever comes from the system's clocks.
  void Wait(DWORD milliseconds) const {
    const DWORD began = GetTickCount();
    WaitFor([&] { return GetTickCount() - began >= milliseconds; });
  }
  void TypeName(const char* name) const {
    Press(VK_F2);
    const HWND box = ListView_GetEditControl(rows);
    ASSERT_NE(box, nullptr);
    SetWindowTextA(box, name);
    Post(box, WM_KEYDOWN, VK_RETURN);
  }

  Map* map = nullptr;
  LayerWindow* window = nullptr;
  HWND rows = nullptr;
};

TEST_F(LayerWindowTest, EveryChangeIsOneStepThatTheListFollowsBackAndForth) {
  Open();
  const std::string text = Text(), shown = Shown();
  ASSERT_EQ(shown, "left 1 VE cc1a1a\nright 1 VE* cc1a1a\n");
  struct Case {
    const char* shown;
    std::function<void()> change;
  };
  const Case cases[] = {
      {"left 1 -E cc1a1a\nright 1 VE* cc1a1a\n", [&] { Click(0, VISIBLE); }},
      {"left 1 V- cc1a1a\nright 1 VE* cc1a1a\n", [&] { Click(0, ENABLED); }},
      {"left 1 VE cc1a1a\nright 1 V-* cc1a1a\n", [&] { Press(VK_SPACE); }},  // the same switch
      {"left 1 VE cc1a1a\nright 1 -E* cc1a1a\n", [&] { Press(VK_LEFT), Press(VK_SPACE); }},
      {"left 1 VE cc1a1a\nattic 1 VE* cc1a1a\n", [&] { TypeName("attic"); }},
      {"left 1 VE cc1a1a\nright 1 VE* 0102ff\n", [&] { DoubleClick(1, LVIR_ICON); }},
      {"left 1 VE cc1a1a\nright 1 VE* 0304ff\n", [&] { Push(ID_LAYER_COLOUR); }},
      {"left 1 VE cc1a1a\nroof 1 VE* 00ff07\n", [&] { Push(ID_LAYER_PROPERTIES); }},
      {"left 1 VE cc1a1a\nright 1 VE cc1a1a\nnew 0 VE* cc1a1a\n", [&] { Push(ID_LAYER_ADD); }},
      {"left 2 VE* cc1a1a\n", [&] { Press(VK_DELETE); }},
      {"left 0 VE cc1a1a\nright 2 VE* cc1a1a\n",
       [&] {
         Select(*map, Box(0, 0), false);
         Push(ID_LAYER_MOVE_IN);
       }},
  };
  dialogs.colours = {{1, 2, 255}, {3, 4, 255}};
  dialogs.answers = {{"roof", "0", "256", "7"}, {"roof", "0", "255", "7"}, {"new"}};
  for (const Case& row : cases) {
    Click(1, OBJECTS);
    row.change();
    EXPECT_EQ(Shown(), row.shown);
    EXPECT_NE(Text(), text);
    Give(Command::Undo);
    EXPECT_EQ(Text(), text) << row.shown;
    EXPECT_EQ(Shown(), shown) << row.shown;
    EXPECT_FALSE(parts->commands.IsAvailable(Id(Command::Undo))) << row.shown;
    Give(Command::Redo);
    EXPECT_EQ(Shown(), row.shown);
    Give(Command::Undo);
  }
  EXPECT_EQ(sink.OnlyText(), "Green must be a whole number from 0 to 255");
}

TEST_F(LayerWindowTest, KeysAreTheDialogsOrCommandsForItsMap) {
  Open();
  Click(0, OBJECTS);
  Press(VK_RETURN);
  EXPECT_EQ(map->currentLayer(), &Layer(0));
  Press(VK_DOWN);
  EXPECT_EQ(window->List().Selected(), &Layer(1));
  Push(ID_LAYER_SELECT);
  EXPECT_EQ(map->selection, std::vector<entity*>{Box(1, 0)});
  map->selection.Clear();
  Push(ID_LAYER_RENAME);
  EXPECT_NE(ListView_GetEditControl(rows), nullptr);
  ListView_CancelEditLabel(rows);
  app->Pump();
  Press('H');
  EXPECT_EQ(parts->windows.Views().ViewsOf(*map).front()->mapmode, MapMode::Heights);
  Select(*map, Box(0, 0), false);
  {
    const HeldKey control(VK_CONTROL);
    Press('D');
  }
  EXPECT_EQ(Shown(), "left 2 VE* cc1a1a\nright 1 VE cc1a1a\n") << "duplicated";
  Press('C');
  EXPECT_TRUE(map->selection.empty());
  Press(VK_TAB);
  EXPECT_EQ(GetFocus(), GetDlgItem(window->Dialog(), ID_LAYER_ADD));
  Give(Command::SelectNone);
  Select(*map, Box(0, 0), false);
  Post(GetFocus(), WM_KEYDOWN, VK_DELETE);
  EXPECT_EQ(Layer(0).getEntityList().size(), 2u) << "not the command of that key";

  Click(1, CURRENT);
  EXPECT_EQ(SendMessageA(rows, LVM_EDITLABELA, 1, 0), 0) << "as a slow second click would";
  Press(VK_F2);
  const HWND box = ListView_GetEditControl(rows);
  Post(box, WM_KEYDOWN, 'J');
  EXPECT_TRUE(Box(0, 0)->IsVisible()) << "a letter of the name";
  SetWindowTextA(box, "lost");
  InsertLayer(*map, "first come");
  EXPECT_EQ(ListView_GetEditControl(rows), nullptr);
  EXPECT_STREQ(Layer(1).GetKey("XMPentityname"), "right");
}

TEST_F(LayerWindowTest, ThePopupAndTheButtonsOfferWhatCanBeDone) {
  Open();
  Click(0, OBJECTS);
  EXPECT_FALSE(IsEnabled(ID_LAYER_MOVE_IN));
  TrackPopup(1002);
  EXPECT_EQ(map->selection, std::vector<entity*>{Box(0, 0)});
  EXPECT_TRUE(IsEnabled(ID_LAYER_MOVE_IN));
  Click(1, OBJECTS);
  TrackPopup(1003);
  EXPECT_EQ(map->selection, (std::vector<entity*>{Box(0, 0), Box(1, 0)}));
  EXPECT_TRUE(IsGrey(1000)) << "no camera";
  EXPECT_TRUE(IsGrey(1004)) << "the current one";
  MapView& view = *WindowOf(Orientation::Top).View();
  view.CentreOn({4000, 4000, 0});
  TrackPopup(1001);
  EXPECT_NEAR(view.transform.ToWorldU(view.DrawingArea().width / 2), 160, 2);

  SetLayerState(*map, Layer(0), false, true);
  Click(0, OBJECTS);
  TrackPopup(1004);
  EXPECT_EQ(map->currentLayer(), &Layer(0));
  EXPECT_TRUE(IsGrey(1002));
  EXPECT_FALSE(IsEnabled(ID_LAYER_SELECT));
  Push(ID_LAYER_MOVE_IN);
  EXPECT_EQ(sink.OnlyText(), "The layer is hidden or disabled. Move the selection to it?");
  EXPECT_EQ(Layer(1).getEntityList().size(), 1u) << "No was the answer";
  Push(ID_LAYER_REMOVE);
  EXPECT_FALSE(IsEnabled(ID_LAYER_REMOVE)) << "the last one";
  Press(VK_DELETE);
  EXPECT_EQ(sink.messages.back().text, "A map needs a layer");
}

TEST_F(LayerWindowTest, AMapHasOneSuchWindowThatGoesWithIt) {
  Open();
  const std::size_t before = parts->windows.All().size();
  Activate(WindowOf(Orientation::Front));
  Show();
  EXPECT_EQ(parts->windows.All().size(), before);
  parts->documents.New();
  const LayerWindow* const first = window;
  Show();
  EXPECT_NE(window, first);
  EXPECT_EQ(TextOf(window->Handle()), "Layers: Unnamed");
  SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(parts->documents.Maps().size(), 2u);
  parts->documents.Close(*parts->documents.Maps().back());

  Activate(*first);
  EditStep(*map).ChangeKeys(*map);
  Post(first->List().Control(), WM_KEYDOWN, VK_F2);
  sink.answers = {Answer::Yes};
  for (int i = 0; i < 3; ++i) SendMessageA(parts->windows.All().front()->Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(sink.messages.size(), 1u);
  EXPECT_TRUE(parts->documents.Maps().empty());
  EXPECT_TRUE(parts->windows.All().empty());
}

TEST_F(LayerWindowTest, AClickThatHasJustChosenTheRowDoesNotRenameIt) {
  Open();
  const DWORD twice = GetDoubleClickTime();
  const auto click = [&] {
    RECT name;
    ListView_GetItemRect(rows, 0, &name, LVIR_LABEL);
    PostMessageA(rows, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(name.left + 5, name.top + 5));
    Post(rows, WM_LBUTTONUP, 0, MAKELPARAM(name.left + 5, name.top + 5));
  };
  click();
  click();
  Wait(twice + 200);
  EXPECT_EQ(ListView_GetEditControl(rows), nullptr);
  click();
  Wait(twice + 200);
  const HWND box = ListView_GetEditControl(rows);
  ASSERT_NE(box, nullptr);
  for (const wchar_t letter : {L'Ж', L'地'}) PostMessageW(box, WM_CHAR, letter, 0);
  Post(box, WM_KEYDOWN, VK_RETURN);
  EXPECT_EQ(window->List().Rows()[0].name, "Ж地");
}

TEST_F(LayerWindowTest, TheViewUnderTheMouseGetsTheKeysButNotOutOfAName) {
  Open();
  parts->options.trackMouse = 1;
  const HWND view = WindowOf(Orientation::Top).Drawing();
  Press(VK_F2);
  SendMessageA(view, WM_MOUSEMOVE, 0, MAKELPARAM(10, 10));
  EXPECT_EQ(GetFocus(), ListView_GetEditControl(rows));
  Post(GetFocus(), WM_KEYDOWN, VK_ESCAPE);
  EXPECT_EQ(GetFocus(), rows);
  SendMessageA(view, WM_MOUSEMOVE, 0, MAKELPARAM(11, 10));
  EXPECT_EQ(GetFocus(), view);
}

}  // namespace
}  // namespace ferrowand
