#include <filesystem>

#include "document/edit_step.h"
#include "shell/app/app.h"
#include "shell/app_fixture.h"
#include "shell/system/shortcut.h"

namespace ferrowand {
namespace {

TEST_F(AppTest, AFirstStartExplainsItselfOffersAShortcutAndShowsTips) {
  ASSERT_TRUE(StartWithStore());
  ASSERT_GE(sink.messages.size(), 2u);
  EXPECT_EQ(sink.Said()[1], "Ferrowand: Create shortcut to Ferrowand in Start menu?");
  EXPECT_NE(parts->tips.Handle(), nullptr);
}

TEST_F(AppTest, TheTipsSwitchThemselvesOff) {
  saved.showTips = 1;
  ASSERT_TRUE(Start());
  const HWND tips = parts->tips.Handle();
  ASSERT_NE(tips, nullptr);
  const std::string first = TextOf(GetDlgItem(tips, 100));
  SendDlgItemMessageA(tips, 101, BM_CLICK, 0, 0);
  EXPECT_NE(TextOf(GetDlgItem(tips, 100)), first);
  SendDlgItemMessageA(tips, 102, BM_CLICK, 0, 0);
  SendDlgItemMessageA(tips, IDCANCEL, BM_CLICK, 0, 0);
  EXPECT_EQ(parts->tips.Handle(), nullptr);
  app->Shutdown();

  Reporter reporter(sink);
  Options again;
  EXPECT_TRUE(again.Load(*settings, reporter));
  EXPECT_EQ(again.showTips, 0);
}

TEST_F(AppTest, TheFrameIsNamedAndTakesDroppedFiles) {
  ASSERT_TRUE(Start());
  const HWND frame = parts->frame.Handle();
  EXPECT_EQ(TextOf(frame), "Ferrowand");
  EXPECT_TRUE(GetWindowLongA(frame, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
  EXPECT_TRUE(IsZoomed(frame));
  EXPECT_TRUE(sink.messages.empty()) << sink.messages.front().text;
  EXPECT_EQ(parts->data.wads.DefaultName(), "quake.wad");
}

TEST_F(AppTest, TheFrameTellsTheActiveFileGreysItsOwnItemsAndKeepsItsPlace) {
  ASSERT_TRUE(Start());
  const HWND frame = parts->frame.Handle();
  EXPECT_TRUE(GetMenuState(GetMenu(frame), Id(Command::Compile), MF_BYCOMMAND) & MF_GRAYED);
  Map& map = OpenTwoBrushes();
  EXPECT_EQ(TextOf(frame), "Ferrowand - two.map");
  EditStep(map).ChangeKeys(map);
  app->Pump();
  EXPECT_EQ(TextOf(frame), "Ferrowand - two.map *");
  ShowWindow(frame, SW_RESTORE);
  MoveWindow(frame, 40, 30, 900, 700, TRUE);
  app->Shutdown();
  app.reset();
  ASSERT_TRUE(StartWithStore());
  RECT place;
  GetWindowRect(parts->frame.Handle(), &place);
  EXPECT_TRUE(EqualRect(&place, std::array{RECT{40, 30, 940, 730}}.data())) << place.right;
  EXPECT_FALSE(IsZoomed(parts->frame.Handle()));
}

TEST(WindowClasses, TheClientIsColouredWhereTheDisplayHasMoreThan256Colours) {
  EXPECT_STREQ(MdiClientClass(8), "MDICLIENT");
  EXPECT_STREQ(MdiClientClass(16), "FRWMDIClient");
}

TEST_F(AppTest, ASecondSetOfClassesIsRefused) {
  ASSERT_TRUE(Start());
  ScriptedDialogs otherDialogs;
  App other(GetModuleHandleA(nullptr),
            {sink, otherDialogs, clipboard, *settings, joysticks, FERROWAND_DATA, ""});
  EXPECT_FALSE(other.Start(""));
}

TEST_F(AppTest, ACommandLineIsOnePathWithBlanksAndWithoutQuotes) {
  const std::string path = dir.Write("my own map.map", TWO_BRUSHES);
  ASSERT_TRUE(Start("\"" + path + "\""));
  ASSERT_EQ(parts->documents.Maps().size(), 1u);
  EXPECT_EQ(parts->documents.Maps()[0]->Name(), "Two boxes");
  EXPECT_EQ(PathOfCommandLine("C:\\a b\\c.map"), "C:\\a b\\c.map");
  EXPECT_EQ(PathOfCommandLine("\""), "\"");
  EXPECT_EQ(PathOfCommandLine(" \t"), "");
  EXPECT_EQ(PathOfCommandLine(" \"C:\\a b\\c.map\" \t"), "C:\\a b\\c.map");
}

TEST_F(AppTest, WhatIsMissingIsSaidAndTheProgramStarts) {
  saved.defaultWad = "no.wad";
  saved.defaultQc = "no.qc";
  ASSERT_TRUE(Start("gone\\nowhere.map"));
  EXPECT_EQ(sink.Said(),
            (std::vector<std::string>{
                "Error: Could not load default wadfile no.wad! Set the default in Options.",
                "Error: Could not load default .qc file no.qc! Set the default in Options.",
                "File Error - cannot continue: Can't find requested map: gone\\nowhere.map"}));
  EXPECT_TRUE(parts->documents.Maps().empty());
  EXPECT_TRUE(parts->windows.All().empty());
  parts->documents.New();
  EXPECT_EQ(parts->windows.All().size(), 3u);
}

TEST_F(AppTest, OptionsAreSavedAtTheEnd) {
  ASSERT_TRUE(Start());
  Give(Command::DrawClassnames);
  SendMessageA(parts->frame.Handle(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(settings->OpenSettings()->ReadNumber("Entity Names"), 1u) << "when the user logs off";
  Give(Command::DrawClassnames);
  Give(Command::DrawClassnames);
  PostMessageA(parts->frame.Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(app->Run(), 0);
  EXPECT_EQ(settings->OpenSettings()->ReadNumber("Entity Names"), 1u);
}

TEST_F(AppTest, TheProgressWindowCountsAndHoldsTheFrameBack) {
  ASSERT_TRUE(Start());
  LoadWindow& load = parts->progress;
  load.Begin("outer.map");
  EXPECT_EQ(TextOf(GetDlgItem(load.Handle(), 1)), "Loading: outer.map ....");
  load.Begin(std::filesystem::current_path().string() + "\\inner.wad");
  EXPECT_EQ(TextOf(GetDlgItem(load.Handle(), 1)), "Loading: inner.wad ....");
  load.Step("Textures: %u", 7, 10, 10);
  EXPECT_EQ(TextOf(GetDlgItem(load.Handle(), 2)), "Textures: 7");
  EXPECT_EQ(SendDlgItemMessageA(load.Handle(), 3, 0x0408 /* PBM_GETPOS */, 0, 0), 1000);
  EXPECT_FALSE(IsWindowEnabled(parts->frame.Handle()));
  Give(Command::FileNew);
  EXPECT_TRUE(parts->documents.Maps().empty());

  load.End();
  EXPECT_EQ(TextOf(GetDlgItem(load.Handle(), 1)), "Loading: outer.map ....");
  const HWND shown = load.Handle();
  load.End();
  EXPECT_EQ(load.Handle(), nullptr);
  EXPECT_FALSE(IsWindow(shown));
  EXPECT_TRUE(IsWindowEnabled(parts->frame.Handle()));
}

}  // namespace
}  // namespace ferrowand
