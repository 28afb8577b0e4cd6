// Building with mouse and menu: from the messages of the windows to the documents.
#include <algorithm>
#include <functional>
#include <utility>

#include "document/edit_step.h"
#include "document/picking.h"
#include "operations/layers.h"
#include "operations/new_entity.h"
#include "shell/app_fixture.h"
#include "shell/resources/resource.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class EditingTest : public AppTest {
 protected:
  void StartNew() {
    ASSERT_TRUE(Start());
    map = &parts->documents.New();
    Activate(WindowOf(Orientation::Top));
  }
  // Of the view that is active, with the left button.
  void Press(const Vec3& at) { Send(WM_LBUTTONDOWN, MK_LBUTTON, at); }
  void Hover(const Vec3& at) { Send(WM_MOUSEMOVE, 0, at); }
  void Move(const Vec3& to) { Send(WM_MOUSEMOVE, MK_LBUTTON, to); }
  void Release(const Vec3& at) { Send(WM_LBUTTONUP, 0, at); }
  void Click(const Vec3& at) {
    Press(at);
    Release(at);
  }
  void Drag(const Vec3& from, const Vec3& to) {
    Press(from);
    Move(to);
    Release(to);
  }
  void MakeCuboid(const Vec3& from, const Vec3& to) {
    Give(Command::CreateCuboid);
    Drag(from, to);
  }
  // The right button there, and that item of the menu.
  void PopUp(unsigned item, const Vec3& at) {
    dialogs.commands = {item};
    Send(WM_RBUTTONDOWN, MK_RBUTTON, at);
    Send(WM_RBUTTONUP, 0, at);
  }
  std::string Text() const { return ExtendedText(*map); }
  static void SetKeyOf(entity& e, const char* name, const char* value) {
    EditStep step(*e.OwningMap());
    step.ChangeKeys(e);
    e.SetKey(name, value);
  }
  Bounds Selected() const { return SelectionBounds(*map); }
  HWND Drawing() const { return static_cast<MapWindow&>(*parts->windows.ActiveWindow()).Drawing(); }

  void Send(UINT message, WPARAM keys, const Vec3& at) {
    auto& window = static_cast<MapWindow&>(*parts->windows.ActiveWindow());
    const Pixel pixel = window.View()->transform.ToScreen(at);
    SendMessageA(window.Drawing(), message, keys, MAKELPARAM(pixel.x, pixel.y));
  }

  Map* map = nullptr;
};

// What a view asks for is what its window paints.
TEST_F(EditingTest, AfterAnythingEveryWindowShowsWhatAFreshPaintWould) {
  StartNew();
  parts->options.entityNames = 1;
  dialogs.fill = [](const Form&) { return FormValues{"16"}; };
  const std::pair<const char*, std::function<void()>> steps[] = {
      {"make", [&] { MakeCuboid(Vec3(0, 0, 0), Vec3(128, 64, 0)); }},
      {"drag", [&] { Drag(Vec3(64, 32, 0), Vec3(96, -32, 0)); }},
      {"handles", [&] { Click(Vec3(96, -32, 0)); }},
      {"undo", [&] { Give(Command::Undo); }},
      {"grid", [&] { Give(Command::GridToggle); }}};
  for (const auto& [name, act] : steps) {
    act();
    for (const ChildWindow* child : parts->windows.WindowsOf(*map)) {
      const auto& window = static_cast<const MapWindow&>(*child);
      const auto shown = PictureOf(window);
      InvalidateRect(window.Drawing(), nullptr, FALSE);
      EXPECT_TRUE(shown == PictureOf(window)) << TextOf(window.Handle()) << " after " << name;
    }
  }
}

TEST_F(EditingTest, TitlesFollowTheMapAndUndoMakesItCleanAgain) {
  StartNew();
  MakeCuboid({0, 0, 0}, {128, 64, 0});
  map->MarkSaved();
  Drag({64, 32, 0}, {96, 64, 0});
  Give(Command::Undo);
  EXPECT_FALSE(map->modified());
  const auto title = [&] { return TextOf(parts->windows.All().front()->Handle()); };
  SetKeyOf(*map, "message", "Renamed");
  EXPECT_NE(title().find("Renamed"), std::string::npos);
  Give(Command::Undo);
  EXPECT_EQ(title().find("Renamed"), std::string::npos);
  for (int n = 0; n < 3; ++n) {
    SendMessageA(parts->windows.All().front()->Handle(), WM_CLOSE, 0, 0);
  }
  EXPECT_TRUE(sink.messages.empty()) << "nothing is lost by closing it";
  EXPECT_TRUE(parts->documents.Maps().empty());
}

TEST_F(EditingTest, WhatNeedsASelectionSaysSoOrIsGrey) {
  StartNew();
  const std::string before = Text();
  const std::string brushes = ": Select one or more brushes first";
  const std::pair<Command, std::string> expected[] = {
      {Command::CsgSubtraction, "Cannot continue" + brushes},
      {Command::CsgIntersection, "Cannot continued" + brushes},
      {Command::Hollow, "Cannot continued" + brushes},
      {Command::ScaleFlip, "Cannot continued" + brushes},
      {Command::TouchUp, "Cannot continue: Select some brushes first"},
      {Command::Paste, "Cannot continue: There is no map in this text"}};
  for (const auto& [command, text] : expected) {
    sink.messages.clear();
    Give(command);
    EXPECT_EQ(sink.Said(), std::vector{text});
  }
  for (const Command command : {Command::Clear, Command::SaveGroup, Command::OperateMatrix}) {
    EXPECT_FALSE(parts->commands.IsAvailable(Id(command)));
  }
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(dialogs.forms.empty() && dialogs.asked.empty()) << "asked in vain";
}

TEST_F(EditingTest, FormsKeepWhatTheyRefuseAndAreOneStep) {
  StartNew();
  MakeCuboid({0, 0, 0}, {128, 128, 0});
  constexpr char FLAT[] = "This would make the selection flat";
  struct Row {
    Command command;
    FormValues refused;
    std::string reason;
    FormValues accepted;
    Bounds selected;
  };
  const FormValues turn{"0", "0", "90", "1", "0", "0", "0", "1", "0", "0", "0", "1"};
  const FormValues swap{"0", "0", "0", "0", "1", "0", "1", "0", "0", "0", "0", "1"};
  const FormValues flat{"0", "0", "90", "1", "2", "3", "2", "4", "6", "0", "0", "1"};
  const Row rows[] = {
      {Command::MultiDuplicate,
       {"0.5", "0", "256", "0", "0", "0", "0"},
       "The number of copies must be a whole number from 1 to 250000",
       {"2", "0", "256", "0", "0", "0", "0"},
       {{0, 256, 0}, {128, 640, 64}}},
      {Command::ScaleFlip,
       {"1", "0", "1"},
       FLAT,
       {"1", "2", "-0.5"},
       {{0, 64, 16}, {128, 832, 48}}},
      {Command::OperateMatrix, flat, FLAT, turn, {{-320, 384, 16}, {448, 512, 48}}},
      {Command::OperateMatrix, {"x"}, "\"x\" is not a number", swap, {{0, 64, 16}, {128, 832, 48}}},
      {Command::Hollow,
       {"x"},
       "The wall width must be an integer, and not equal to 0",
       {"-8"},
       {{-8, 56, 8}, {136, 840, 56}}}};
  std::vector<std::string> texts{Text()};
  for (const Row& row : rows) {
    sink.messages.clear();
    dialogs.answers = {row.refused};
    Give(row.command);
    EXPECT_EQ(sink.OnlyText(), row.reason);
    EXPECT_EQ(Text(), texts.back());
    dialogs.answers = {row.refused, row.accepted};
    Give(row.command);
    EXPECT_EQ(Selected(), row.selected) << dialogs.forms.back().title;
    texts.push_back(Text());
  }
  for (; !texts.empty(); texts.pop_back()) {
    EXPECT_EQ(Text(), texts.back());
    Give(Command::Undo);
  }
}

TEST_F(EditingTest, SidesAreAskedForWithinTheirRangeAndRemembered) {
  StartNew();
  dialogs.answers = {{"2"}, {"x"}, {"6"}};
  Give(Command::CreateColumn);
  EXPECT_EQ(sink.messages.size(), 2u);
  EXPECT_EQ(sink.messages[0].text, "The number of sides must be a whole number from 3 to 30");
  EXPECT_TRUE(IsTicked(Command::CreateColumn));
  EXPECT_FALSE(IsTicked(Command::CreateSphere));
  Drag({0, 0, 0}, {128, 128, 0});
  EXPECT_EQ(map->selection.front()->brush.getNumFaces(), 8);
  Give(Command::CreateSphere);
  EXPECT_EQ(dialogs.forms.back().rows[0].values[0], "6");
  EXPECT_TRUE(IsTicked(Command::ModeBrush)) << "no answer, no tool";
  const std::size_t asked = dialogs.forms.size();
  Give(Command::CreateColumn);
  EXPECT_EQ(dialogs.forms.size(), asked) << "asked once";
  EXPECT_EQ(TextOf(WindowOf(Orientation::Top), ID_MESSAGE_TEXT),
            "Create primitive: 6 sides (choose it again to change them)");
  dialogs.answers = {{"5"}};
  Give(Command::CreateColumn);
  Drag({0, 0, 0}, {128, 128, 0});
  EXPECT_EQ(map->selection.front()->brush.getNumFaces(), 7);
}

TEST_F(EditingTest, TexturesFollowWhenTheyAreLockedAndElseStay) {
  StartNew();
  Give(Command::SnapToggle);
  const std::pair<Command, FormValues> ways[] = {
      {Command::FlipX, {}},
      {Command::ScaleFlip, {"2", "2", "2"}},
      {Command::OperateMatrix, {"0", "0", "90", "1", "0", "0", "0", "1", "0", "0", "0", "1"}},
      {Command::MultiDuplicate, {"1", "5", "0", "0", "0", "0", "0"}}};
  for (const bool locked : {false, true}) {
    for (const auto& [command, answer] : ways) {
      MakeCuboid({0, 0, 0}, {128, 64, 0});
      dialogs.answers = {answer};
      Give(command);
      EXPECT_NE(Selected(), (Bounds{{0, 0, 0}, {128, 64, 64}})) << Id(command);
      const bool isPlain =
          std::ranges::all_of(map->selection.front()->brush.Faces(), [](const Face& f) {
            return f.xoff == 0 && f.yoff == 0 && f.rotation == 0 && f.xscale == 1 && f.yscale == 1;
          });
      EXPECT_EQ(isPlain, !locked) << Id(command);
      Give(Command::Clear);
    }
    Give(Command::ToolTextureLock);
  }
}

TEST_F(EditingTest, ADragEndsWithoutEffectBeforeAnythingElseIsDone) {
  StartNew();
  const std::string empty = Text();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  const std::string made = Text();
  // Past the queue: in it some systems put the real mouse, whose button nobody holds.
  const auto pressControlAnd = [&](char key) {
    const HeldKey control(VK_CONTROL);
    MSG message{};
    message.hwnd = Drawing();
    message.message = WM_KEYDOWN;
    message.wParam = static_cast<WPARAM>(key);
    parts->accelerators.Translate(message);
  };
  struct Row {
    std::function<void()> act;
    bool ends;
    std::string text;
  };
  const Row rows[] = {{[&] { SetCapture(parts->frame.Handle()); }, true, made},
                      {[&] { ReleaseCapture(); }, true, made},
                      {[&] { SendMessageA(Drawing(), WM_CHAR, VK_ESCAPE, 0); }, true, made},
                      {[&] {  // that of a grey command: nothing can be done again
                         const HeldKey shift(VK_SHIFT);
                         pressControlAnd('Z');
                       },
                       false, ""},
                      {[&] { Give(Command::ToolTextureLock); }, true, made},
                      {[&] { pressControlAnd('Z'); }, true, empty}};
  for (const Row& row : rows) {
    Press({32, 32, 0});
    Move({160, 32, 0});
    ASSERT_TRUE(parts->tools.Current()->HasPreview());
    row.act();
    EXPECT_EQ(parts->tools.Current()->HasPreview(), !row.ends);
    EXPECT_EQ(GetCapture() == Drawing(), !row.ends);
    Release({160, 32, 0});
    if (row.ends) {
      EXPECT_EQ(Text(), row.text);
    } else {
      EXPECT_NE(Text(), made) << "it went on to its end";
      Give(Command::Undo);
    }
    ReleaseCapture();
  }
  Give(Command::Redo);
  EXPECT_EQ(Text(), made);
}

TEST_F(EditingTest, WhatComesFromAFileIsOneStep) {
  StartNew();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  const std::string before = Text();
  const std::string path = dir.Path("box.xmp");
  dialogs.files = {path, path, path};
  Give(Command::SaveGroup);
  EXPECT_EQ(parts->options.previousGroups[0], path);
  for (const unsigned way : {Id(Command::InsertGroup), Id(Command::RecentGroup)}) {
    dialogs.commands = {way};
    Give(Command::InsertGroup);
    ASSERT_EQ(map->selection.size(), 1u);
    EXPECT_STREQ(map->selection.front()->GetKey("XMPentityname"), "box");
    Give(Command::Undo);
    EXPECT_EQ(Text(), before);
  }
  dialogs.answers = {{"64", "32", "16"}};
  Give(Command::Embed);
  EXPECT_EQ(Selected().maxs - Selected().mins, (Vec3{64, 32, 16}));
  Give(Command::Undo);
  EXPECT_EQ(Text(), before);
}

TEST_F(EditingTest, ABoundKeyInsertsItsEntityUnderTheMouseOnce) {
  StartNew();
  const std::string empty = Text();
  parts->boundEntities.items.push_back({'S', NewEntity(*map, "light")});
  auto& window = static_cast<MapWindow&>(*parts->windows.ActiveWindow());
  const auto press = [&](LPARAM details) {
    SendMessageA(window.Drawing(), WM_KEYDOWN, 'S', details);
  };
  const int zoom = window.View()->ZoomPercent();
  Hover({100, 130, 0});
  PostMessageA(window.Drawing(), WM_CHAR, 's', 0);
  press(0);
  press(LPARAM{KF_REPEAT} << 16);
  ASSERT_EQ(map->selection.size(), 1u);
  EXPECT_EQ(map->selection.front()->Origin(), (Vec3{128, 128, 0}));
  app->Pump();
  EXPECT_EQ(window.View()->ZoomPercent(), zoom) << "the key says nothing else";
  {
    const HeldKey control(VK_CONTROL);
    press(0);
  }
  Give(Command::Undo);
  EXPECT_EQ(Text(), empty);
}

TEST_F(EditingTest, ThePopupFlipsAlongItsOwnAxisAndTheKeyAlongX) {
  StartNew();
  Give(Command::CreateWedge);
  Drag({0, 0, 0}, {128, 64, 0});
  const std::string made = Text();
  const auto flipBy = [&](unsigned item) {
    PopUp(item, {32, 32, 0});
    const std::string flipped = Text();
    Give(Command::Undo);
    EXPECT_EQ(Text(), made);
    return flipped;
  };
  const std::string x = flipBy(1000), y = flipBy(1001), z = flipBy(1002);
  EXPECT_NE(z, made);
  EXPECT_NE(x, z);
  EXPECT_NE(y, z);
  Give(51793u);
  EXPECT_EQ(Text(), x);
}

TEST_F(EditingTest, ThePopupGreysWhatIsNotThereAndPropertiesOfSeveralGroupsThem) {
  StartNew();
  const auto greys = [&](const Vec3& at) {
    PopUp(0, at);
    std::string items;
    for (UINT i = 0; i < 12; ++i) {
      items += dialogs.tracked[1000 + i] & MF_GRAYED ? '-' : '+';
    }
    return items;
  };
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  EXPECT_EQ(greys({32, 32, 0}), "++++++++++++");
  EXPECT_EQ(greys({500, 500, 0}), "-----+------");
  MakeCuboid({128, 0, 0}, {192, 64, 0});
  std::optional<HeldKey> control(VK_CONTROL);
  Click({32, 32, 0});
  ASSERT_EQ(map->selection.size(), 2u);
  EXPECT_EQ(greys({32, 32, 0}), "++++++++++++");
  PopUp(1011, {32, 32, 0});
  EXPECT_EQ(map->selection.size(), 2u) << "no";
  sink.answers = {Answer::Yes};
  const HeldKey alt(VK_MENU);
  control.reset();
  PostMessageA(Drawing(), WM_SYSKEYDOWN, VK_RETURN, 1 << 29);
  app->Pump();
  EXPECT_EQ(map->selection.size(), 1u);
  EXPECT_EQ(sink.Said(), std::vector<std::string>(
                             2, "Ferrowand asks: Cannot edit multiple entities. Group then edit?"));
}

TEST_F(EditingTest, HandlesHaveCursorsAndTouchUpItsPopup) {
  StartNew();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
  const auto hover = [&](const Vec3& at) {
    Send(WM_MOUSEMOVE, 0, at);
    return parts->toolHost.Cursor();
  };
  EXPECT_EQ(hover({32, 32, 0}), LoadCursorA(nullptr, IDC_SIZEALL));
  EXPECT_EQ(hover({80, 80, 0}), LoadCursorA(nullptr, IDC_SIZENESW));
  Click({32, 32, 0});  // on to the handles that turn
  const HCURSOR turn = hover({80, 80, 0});
  EXPECT_NE(turn, nullptr);
  EXPECT_NE(turn, arrow);
  EXPECT_EQ(hover({160, 160, 0}), arrow);

  Give(Command::TouchUp);
  dialogs.commands = {1000};
  Send(WM_RBUTTONDOWN, MK_RBUTTON, {160, 160, 0});
  EXPECT_EQ(parts->tools.vertexTool.Picked().size(), 8u);
}

TEST_F(EditingTest, ModesAndLimitsAreTicked) {
  StartNew();
  EXPECT_TRUE(IsTicked(Command::ModeEntity));
  Give(Command::SelectNext);
  EXPECT_TRUE(IsTicked(Command::ModeBrush));
  EXPECT_FALSE(IsTicked(Command::ModeEntity));
  Give(Command::SelectFull);
  EXPECT_TRUE(IsTicked(Command::SelectFull));
  EXPECT_FALSE(IsTicked(Command::SelectPartial));
  Give(Command::SelectFull);
  EXPECT_TRUE(IsTicked(Command::SelectFull)) << "the menu chooses one of two";
  const LPARAM fromTheBar = 1;
  for (const Command ticked : {Command::SelectPartial, Command::SelectFull}) {
    SendMessageA(parts->frame.Handle(), WM_COMMAND, Id(Command::SelectFull), fromTheBar);
    EXPECT_TRUE(IsTicked(ticked)) << "its button toggles";
  }
  Give(Command::ToolLimitX);
  EXPECT_TRUE(IsTicked(Command::ToolLimitX));
  EXPECT_FALSE(IsTicked(Command::ToolLimitY));
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  dialogs.answers = {{"1", "64", "0", "0", "0", "0", "0"}};
  Give(Command::MultiDuplicate);
  EXPECT_EQ(Selected().mins.x, 64) << "numbers are not limited";
  EXPECT_FALSE(parts->commands.IsAvailable(Id(Command::DensityAnalysis))) << "no room has it yet";
}

TEST_F(EditingTest, CtrlAndAnArrowMoveByAStepOfTheGridTheWayItPoints) {
  StartNew();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  MapWindow& side = WindowOf(Orientation::Side);
  side.View()->gridu = 3;
  side.View()->gridv = 4;
  const Bounds before = Selected();
  const HeldKey control(VK_CONTROL);
  for (const auto& [key, by] : Cases<WPARAM, Vec3>{{VK_RIGHT, {0, 8, 0}},
                                                   {VK_LEFT, {0, -8, 0}},
                                                   {VK_UP, {0, 0, 16}},
                                                   {VK_DOWN, {0, 0, -16}}}) {
    Type(side.Drawing(), key);
    EXPECT_EQ(Selected().mins, before.mins + by) << key;
    EXPECT_EQ(TextOf(side, ID_MESSAGE_TEXT), "Move: 1 brush");
    Give(Command::Undo);
    EXPECT_EQ(TextOf(side, ID_MESSAGE_TEXT), "Undo Move: 1 brush");
  }
  const double origin = side.View()->transform.originu;
  Give(Command::SelectNone);
  EXPECT_EQ(TextOf(side, ID_MESSAGE_TEXT),
            parts->tools.Current()->Name() +
                ": 1 brush, 1 entity, 0 lights, 6 faces, 0 deathmatch starts");
  Type(side.Drawing(), VK_RIGHT);
  EXPECT_GT(side.View()->transform.originu, origin) << "nothing selected: it scrolls";
}

}  // namespace
}  // namespace ferrowand
