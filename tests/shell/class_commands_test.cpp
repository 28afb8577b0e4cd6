// Files of classes as a user meets them: chosen, changed by another program, with mistakes; the
// menu of classes; entities bound to keys.
#include "shell/system/win32.h"

#include <commctrl.h>

#include "document/picking.h"
#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"
#include "shell/resources/resource.h"
#include "shell/windows/class_messages_window.h"

namespace ferrowand {
namespace {

class ClassCommandsTest : public AppTest {
 protected:
  std::string WriteClasses(const std::string& names, const std::string& behind = "") {
    std::string text;
    for (const char name : names) text += std::string("@PointClass = ") + name + "_x []\n";
    return dir.Write("own.fgd", text + behind);
  }
  void Choose(const std::string& path) {
    dialogs.files = {path};
    Give(Command::SetQc);
    app->Pump();
  }
  // From the menu at the cursor.
  void Insert(const Map& map, const char* classname) {
    dialogs.commands = {map.classSet->MenuIdOf(classname)};
    Give(Command::Insert);
    app->Pump();
  }
  std::string Status() { return parts->windows.ActiveView()->Status(); }
  HWND List() { return GetDlgItem(Messages()->Handle(), ID_CLASS_MESSAGE_LIST); }
  const SideWindow* Messages() {
    return parts->sides.All().empty() ? nullptr : parts->sides.All().front().get();
  }
};

TEST_F(ClassCommandsTest, AFileIsChosenAndFollowedAndTakenBack) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  const std::string before = map.ExtendedText({});
  const std::string path = WriteClasses("abc");
  Choose(path);
  EXPECT_TRUE(dialogs.asked.back().filter.starts_with("QC scripts (*.qc)|*.qc|"));
  EXPECT_EQ(Status(), "3 classes in " + path);
  EXPECT_EQ(map.undo.NewestName(), "Set QC");
  Insert(map, "b_x");
  EXPECT_EQ(map.selection[0]->getClass()->classname, "b_x");

  WriteClasses("abd", "@PointClass = ");
  SendMessageA(parts->frame.Handle(), WM_ACTIVATEAPP, TRUE, 0);
  app->Pump();
  EXPECT_EQ(Status(), "Read again: 3 classes in " + path +
                          "; 1 messages, which Tools / Class file messages lists");
  Insert(map, "d_x");
  EXPECT_EQ(map.selection[0]->getClass()->classname, "d_x");
  EXPECT_EQ(map.classSet->MenuIdOf("c_x"), 0u);
  while (map.undo.CanUndo()) map.undo.Undo();
  EXPECT_EQ(map.ExtendedText({}), before);
  EXPECT_EQ(map.classSet, &parts->data.classes.Default());
  EXPECT_TRUE(sink.messages.empty());
}

TEST_F(ClassCommandsTest, ClassesUsedLastStandInFrontByTheSameNumbers) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  Choose(WriteClasses("abc"));
  Insert(map, "c_x");
  Insert(map, "a_x");
  Insert(map, "a_x");
  const std::vector<unsigned> front = {map.classSet->MenuIdOf("a_x"), map.classSet->MenuIdOf("c_x"),
                                       0u};
  Give(Command::Insert);  // nothing is chosen
  ASSERT_GE(dialogs.order.size(), 3u);
  EXPECT_EQ(std::vector<unsigned>(dialogs.order.begin(), dialogs.order.begin() + 3), front);
  Choose(WriteClasses("c"));
  Give(Command::Insert);
  EXPECT_EQ(dialogs.order[0], map.classSet->MenuIdOf("c_x"));
  EXPECT_EQ(dialogs.order[1], 0u) << "what the file does not have is left out";
  while (map.undo.CanUndo()) map.undo.Undo();
  Give(Command::Insert);
  for (const auto& known : map.classSet->Classes()) {
    if (known->Kind() != EntityKind::Entity) continue;
    EXPECT_TRUE(dialogs.tracked.contains(map.classSet->MenuIdOf(known->classname)))
        << known->classname;
  }
}

TEST_F(ClassCommandsTest, WhatIsWrongWithAFileStandsInAList) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  Choose(dir.Write("own.qc", "// one\r\n// two\r\n/*QUAKED a 0\r\n// three\r\n"));
  EXPECT_EQ(sink.messages.size(), 2u) << "each kind is boxed once";
  Give(Command::ClassMessages);
  ASSERT_NE(Messages(), nullptr);
  ExpectTidy(Messages()->Handle());
  EXPECT_EQ(ListView_GetItemCount(List()), 4);
  EXPECT_EQ(CellOf(List(), 2, 1), "Expecting Colour triad after classname in QC file");
  EXPECT_EQ(TextOf(GetDlgItem(Messages()->Handle(), ID_CLASS_MESSAGE_COUNT)), "4 in all");
  Give(Command::ClassMessages);
  EXPECT_EQ(parts->sides.All().size(), 1u);
  map.undo.Undo();
  EXPECT_EQ(ListView_GetItemCount(List()), 0) << "it follows the map";
  SendMessageA(Messages()->Handle(), WM_COMMAND, IDCANCEL, 0);
  EXPECT_EQ(Messages(), nullptr);
}

TEST_F(ClassCommandsTest, TheSelectedEntityIsBoundToAKey) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  Give(Command::BindToKey);  // nothing is selected
  EXPECT_TRUE(sink.messages.empty());
  Insert(map, "light");
  const auto press = [](HWND dialog) {
    SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(ID_KEY_CHOICE) + VK_F7, 0);
  };
  {
    const Visitor visitor(press);
    Give(Command::BindToKey);
  }
  EXPECT_EQ(Status(), "F7 inserts Unnamed; Options, Entity bindings takes it back");
  const std::size_t steps = map.undo.StepCount();
  Type(WindowOf(Orientation::Top).Drawing(), VK_F7);
  EXPECT_EQ(map.undo.StepCount(), steps + 1);
  EXPECT_EQ(map.selection[0]->getClass()->classname, "light");
  {
    const Visitor visitor(press);
    Give(Command::BindToKey);
  }
  EXPECT_EQ(sink.OnlyText(), "F7 is bound to Unnamed already");
  Select(map, map.currentLayer()->getEntityList().front().get(), false);
  sink.messages.clear();
  Give(Command::BindToKey);
  EXPECT_EQ(sink.OnlyText(), "Only point entities can be bound to a key");
}

}  // namespace
}  // namespace ferrowand
