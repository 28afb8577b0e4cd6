// Building with mouse and menu: from the messages of the windows to the documents.
#include <array>
#include <functional>

#include "document/edit/clipboard.h"
#include "document/edit/new_entity.h"
#include "document/edit/selection.h"
#include "document/text_writer.h"
#include "shell/ui/resource.h"
#include "ui/app_fixture.h"

namespace ferrowand {
namespace {

class EditingTest : public AppTest {
 protected:
  void StartNew() {
    ASSERT_TRUE(Start());
    map = &app->NewMap();
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
  std::string Text() const {
    TextWriter out;
    map->WriteExtended(out);
    return out.Text();
  }
  Bounds Selected() const { return SelectionBounds(*map); }
  const std::string& LastMessage() const { return sink.messages.back().text; }

  void Send(UINT message, WPARAM keys, const Vec3& at) {
    auto& window = static_cast<MapWindow&>(*app->ActiveWindow());
    const Pixel pixel = window.View()->transform.ToScreen(at);
    SendMessageA(window.Drawing(), message, keys, MAKELPARAM(pixel.x, pixel.y));
  }

  Map* map = nullptr;
};

TEST_F(EditingTest, ACuboidIsDrawnDraggedAndUndone) {
  StartNew();
  const std::string empty = Text();
  MakeCuboid({0, 0, 0}, {128, 64, 0});
  ASSERT_EQ(map->selection.size(), 1u);
  EXPECT_EQ(Selected(), (Bounds{{0, 0, 0}, {128, 64, 64}}));
  EXPECT_TRUE(app->IsChecked(Id(Command::ModeBrush))) << "one is made, then brushes are selected";

  Give(Command::SelectNone);
  EXPECT_TRUE(map->selection.empty());
  Give(Command::ModeEntity);
  Click({32, 32, 0});
  ASSERT_EQ(map->selection.size(), 1u);
  const std::string made = Text();
  Drag({32, 32, 0}, {96, -32, 0});
  EXPECT_EQ(Selected(), (Bounds{{64, -64, 0}, {192, 0, 64}}));
  const std::string moved = Text();
  EXPECT_TRUE(map->modified);

  Give(Command::Undo);
  EXPECT_EQ(Text(), made);
  Give(Command::Undo);
  EXPECT_EQ(Text(), empty);
  EXPECT_FALSE(app->IsAvailable(Id(Command::Undo)));
  Give(Command::Redo);
  EXPECT_EQ(Text(), made);
  EXPECT_FALSE(app->IsAvailable(Id(Command::Redo))) << "only the last step can be done again";
  EXPECT_NE(moved, made);
  EXPECT_TRUE(sink.messages.empty());
}

TEST_F(EditingTest, AGroupIsCopiedIntoAnotherMapThatOutlivesItsOwn) {
  StartNew();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  MakeCuboid({128, 0, 0}, {192, 64, 0});
  Give(Command::ModeEntity);
  Drag({-64, 128, 0}, {256, -64, 0});
  ASSERT_EQ(map->selection.size(), 2u);
  Give(Command::Group);
  ASSERT_EQ(map->selection.size(), 1u);
  Give(Command::Copy);
  const std::string copied = SelectionText(*map);
  EXPECT_EQ(clipboard.text, copied);
  app->CloseMap(*map);

  map = &app->NewMap();
  const std::string empty = Text();
  Give(Command::Paste);
  EXPECT_EQ(SelectionText(*map), copied);
  Give(Command::Ungroup);
  EXPECT_EQ(map->selection.size(), 2u);
  Give(Command::Undo);
  Give(Command::Undo);
  EXPECT_EQ(Text(), empty);
}

TEST_F(EditingTest, WhatNeedsASelectionSaysSo) {
  StartNew();
  const std::string before = Text();
  struct Row {
    Command command;
    const char* title;
    const char* text;
  };
  constexpr char BRUSHES_FIRST[] = "Select one or more brushes first";
  constexpr char SOMETHING_FIRST[] = "Select something that can be changed first";
  for (const Row& row : {Row{Command::CsgSubtraction, "Cannot continue", BRUSHES_FIRST},
                         Row{Command::CsgIntersection, "Cannot continued", BRUSHES_FIRST},
                         Row{Command::Hollow, "Cannot continued", BRUSHES_FIRST},
                         Row{Command::ScaleFlip, "Cannot continued", BRUSHES_FIRST},
                         Row{Command::TouchUp, "Cannot continue", "Select some brushes first"},
                         Row{Command::Clear, "Cannot continue", SOMETHING_FIRST},
                         Row{Command::Cut, "Cannot continue", SOMETHING_FIRST},
                         Row{Command::FlipX, "Cannot continue", SOMETHING_FIRST}}) {
    sink.messages.clear();
    Give(row.command);
    ASSERT_EQ(sink.messages.size(), 1u) << row.text;
    EXPECT_EQ(sink.messages[0].title, row.title);
    EXPECT_EQ(sink.messages[0].text, row.text);
  }
  EXPECT_EQ(Text(), before);
  Give(Command::Paste);
  EXPECT_EQ(LastMessage(), "There is no map in this text");
  EXPECT_TRUE(dialogs.forms.empty()) << "asked in vain";
}

TEST_F(EditingTest, FormsAreAnsweredInTheOrderOfTheirFields) {
  StartNew();
  MakeCuboid({0, 0, 0}, {128, 128, 0});
  dialogs.answers = {{"2", "0", "256", "0", "0", "0", "0"}, {"1", "2", "0.5"}, {"x"}, {"8"}};
  Give(Command::MultiDuplicate);
  EXPECT_EQ(map->selection.size(), 2u);
  EXPECT_EQ(Selected(), (Bounds{{0, 256, 0}, {128, 640, 64}}));
  Give(Command::ScaleFlip);
  EXPECT_EQ(Selected(), (Bounds{{0, 64, 16}, {128, 832, 48}}));
  Give(Command::Hollow);
  EXPECT_EQ(LastMessage(), "The wall width must be an integer, and not equal to 0");
  const std::string solid = Text();
  Give(Command::Hollow);
  EXPECT_EQ(map->selection.front()->getEntityList().size(), 6u);
  Give(Command::Undo);
  EXPECT_EQ(Text(), solid);
}

TEST_F(EditingTest, WhatComesFromAFileIsOneStep) {
  StartNew();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  const std::string before = Text();
  const std::string path = dir.Path("box.xmp");
  dialogs.files = {path, path, path};
  Give(Command::SaveGroup);
  EXPECT_EQ(app->options.previousGroups[0], path);
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
  app->boundEntities.items.push_back({'S', NewEntity(*map, "light")});
  auto& window = static_cast<MapWindow&>(*app->ActiveWindow());
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
    dialogs.commands = {item};
    auto& window = static_cast<MapWindow&>(*app->ActiveWindow());
    const Pixel at = window.View()->transform.ToScreen({32, 32, 0});
    SendMessageA(window.Drawing(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(at.x, at.y));
    SendMessageA(window.Drawing(), WM_RBUTTONUP, 0, MAKELPARAM(at.x, at.y));
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
  EXPECT_TRUE(GetMenuState(app->Popup(ID_POPUP_SELECTION), 1011, MF_BYCOMMAND) & MF_GRAYED);
}

TEST_F(EditingTest, ADragEndsWithoutEffectWhenTheMouseIsTakenOrEscapeIsTyped) {
  StartNew();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  const std::string made = Text();
  const HWND drawing = static_cast<MapWindow&>(*app->ActiveWindow()).Drawing();
  const std::function<void()> interruptions[] = {[&] { SetCapture(app->frame.Handle()); },
                                                 [&] { ReleaseCapture(); },
                                                 [&] { SendMessageA(drawing, WM_CHAR, 27, 0); }};
  for (const auto& interrupt : interruptions) {
    Press({32, 32, 0});
    Move({160, 32, 0});
    ASSERT_TRUE(app->tools.Current()->HasPreview());
    interrupt();
    EXPECT_FALSE(app->tools.Current()->HasPreview());
    EXPECT_NE(GetCapture(), drawing);
    Release({160, 32, 0});
    EXPECT_EQ(Text(), made);
    ReleaseCapture();
  }
  Drag({32, 32, 0}, {96, 32, 0});
  EXPECT_NE(Text(), made);
}

TEST_F(EditingTest, HandlesHaveCursorsAndTouchUpItsPopup) {
  StartNew();
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
  const auto hover = [&](const Vec3& at) {
    Send(WM_MOUSEMOVE, 0, at);
    return app->toolWindows.Cursor();
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
  EXPECT_EQ(app->tools.vertexTool.Picked().size(), 8u);
}

TEST_F(EditingTest, ModesAndLimitsAreTicked) {
  StartNew();
  const auto isTicked = [&](Command command) { return app->IsChecked(Id(command)); };
  EXPECT_TRUE(isTicked(Command::ModeEntity));
  Give(Command::SelectNext);
  EXPECT_TRUE(isTicked(Command::ModeBrush));
  EXPECT_FALSE(isTicked(Command::ModeEntity));
  Give(Command::SelectFull);
  EXPECT_TRUE(isTicked(Command::SelectFull));
  EXPECT_FALSE(isTicked(Command::SelectPartial));
  Give(Command::ToolLimitX);
  EXPECT_TRUE(isTicked(Command::ToolLimitX));
  EXPECT_FALSE(isTicked(Command::ToolLimitY));
  MakeCuboid({0, 0, 0}, {64, 64, 0});
  Give(Command::ModeEntity);
  Drag({32, 32, 0}, {160, 160, 0});
  EXPECT_EQ(Selected(), (Bounds{{0, 128, 0}, {64, 192, 64}}));
  EXPECT_FALSE(app->IsAvailable(Id(Command::FaceEdit))) << "no room has it yet";
}

}  // namespace
}  // namespace ferrowand
