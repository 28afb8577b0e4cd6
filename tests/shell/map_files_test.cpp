// Opening, saving and closing, and the questions on the way.
#include "shell/system/win32.h"

#include <shellapi.h>
#include <shlobj.h>

#include <cstring>
#include <filesystem>

#include "document/edit_step.h"
#include "platform/file.h"
#include "shell/app_fixture.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

class MapFilesTest : public AppTest {
 protected:
  MapFilesTest() { EXPECT_TRUE(Start()); }

  static void Modify(Map& map) { EditStep(map).ChangeKeys(map); }

  void Quit() { SendMessageA(parts->frame.Handle(), WM_CLOSE, 0, 0); }
  bool Running() const { return parts->frame.Handle() != nullptr; }
  using Texts = std::vector<std::string>;
};

TEST_F(MapFilesTest, SavingANewMapAsksForItsNameOnce) {
  Map& map = parts->documents.New();
  Give(Command::FileSave);
  Give(Command::ExportQuake);
  const auto status = [&] { return TextOf(WindowOf(Orientation::Top), ID_MESSAGE_TEXT); };
  EXPECT_EQ(status(), "Ready") << "thought better of it";
  EXPECT_EQ(map.filename, "unnamed.map");
  dialogs.files = {dir.Path("room.xmp")};
  Give(Command::FileSave);
  Give(Command::FileSave);
  EXPECT_EQ(dialogs.asked.size(), 3u);
  EXPECT_EQ(parts->options.previousFiles[0], dir.Path("room.xmp"));
  EXPECT_EQ(map.Name(), "Ferrowand-generated map!");
  EXPECT_EQ(TextOf(WindowOf(Orientation::Top).Handle()), "XYView (Top): Ferrowand-generated map!");
}

TEST_F(MapFilesTest, AMapReadWithLossesIsNotSavedOverItsFileUnasked) {
  const std::string text = std::string(TWO_BRUSHES) + "}\n";
  Map& map = *parts->documents.Open(dir.Write("a.map", text));
  const auto title = [&] { return TextOf(WindowOf(Orientation::Top).Handle()); };
  EXPECT_TRUE(title().ends_with(" (read with losses)")) << title();
  sink.answers = {Answer::Cancel, Answer::Cancel, Answer::Yes};
  dialogs.files = {dir.Path("b.map")};
  Give(Command::FileSave);
  Give(Command::ExportQuake);  // the same file
  EXPECT_TRUE(dialogs.asked.empty());
  Give(Command::FileSave);
  ASSERT_EQ(dialogs.asked.size(), 1u);
  EXPECT_EQ(dialogs.asked.front().name, dir.Path("a-read.map"));
  EXPECT_EQ(dir.Read("a.map"), text);
  EXPECT_EQ(map.filename, dir.Path("b.map"));
  EXPECT_FALSE(title().ends_with(" (read with losses)"));
  const std::size_t said = sink.messages.size();
  Give(Command::FileSave);
  EXPECT_EQ(sink.messages.size(), said);
}

TEST_F(MapFilesTest, NamesOfAnyLanguageOpenSaveAndAreShown) {
  std::string text = TWO_BRUSHES;
  text.replace(text.find("Two boxes"), 9, "Комната");
  Map& map = *parts->documents.Open(dir.Write("a.map", text));
  const std::string folder = dir.Path() + "\\Карта 地图";
  ASSERT_TRUE(file::MakeFolder(folder));
  dialogs.files = {folder + "\\房间.map"};
  Give(Command::FileSaveAs);
  Modify(map);
  app->Pump();
  wchar_t title[100];
  GetWindowTextW(parts->frame.Handle(), title, 100);
  EXPECT_STREQ(title, L"Ferrowand - 房间.map *");
  GetWindowTextW(WindowOf(Orientation::Top).Handle(), title, 100);
  EXPECT_STREQ(title, L"XYView (Top): Комната");
  Give(Command::FileSave);
  EXPECT_FALSE(map.modified());
  parts->documents.Close(map);
  Give(Command::RecentMap);
  ASSERT_EQ(parts->documents.Maps().size(), 1u);
  EXPECT_EQ(parts->documents.Maps().front()->Name(), "Комната");
  EXPECT_TRUE(sink.messages.empty()) << sink.messages.front().text;
}

TEST_F(MapFilesTest, WhatIsNoFileOrOfAnotherKindIsSaidAndNotOpened) {
  std::filesystem::create_directory(dir.Path("folder.map"));
  EXPECT_EQ(parts->documents.Open(dir.Path("folder.map")), nullptr);
  EXPECT_FALSE(sink.messages.empty());
  sink.messages.clear();
  EXPECT_EQ(parts->documents.Open(dir.Write("a.map", "IBSP............")), nullptr);
  EXPECT_NE(sink.OnlyText().find("a compiled Quake 2 or Quake 3 map (BSP), not a map"),
            std::string::npos);
  EXPECT_TRUE(parts->windows.All().empty());
}

TEST_F(MapFilesTest, RecentMapsAreInTheMenuNewestFirst) {
  const std::string a = dir.Write("a&b.map", TWO_BRUSHES), b = dir.Write("b.map", TWO_BRUSHES);
  const HMENU fileMenu = GetSubMenu(GetMenu(parts->frame.Handle()), 0);
  const auto item = [&](unsigned index) {
    SendMessageA(parts->frame.Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(fileMenu), 0);
    char text[300];
    GetMenuStringA(fileMenu, Id(Command::RecentMap) + index, text, sizeof text, MF_BYCOMMAND);
    return std::string(text);
  };
  EXPECT_EQ(item(0), "- NO FILE -");
  parts->documents.Open(a);
  parts->documents.Open(b);
  EXPECT_EQ(item(0), b);
  EXPECT_EQ(item(1), dir.Path("a&&b.map"));
  EXPECT_EQ(item(2), "- NO FILE -");
  Give(Id(Command::RecentMap) + 1);
  EXPECT_EQ(item(0), dir.Path("a&&b.map"));
  EXPECT_EQ(item(1), b);
  // Both are open already: that brings their windows to the front.
  EXPECT_EQ(parts->documents.Maps().size(), 2u);
  EXPECT_EQ(parts->windows.ActiveMap()->filename, a);
  Give(Id(Command::PopupRecentMap) + 1);
  EXPECT_EQ(parts->windows.ActiveMap()->filename, b);
}

TEST_F(MapFilesTest, OnlyTheLastWindowOfAModifiedMapAsksBeforeItCloses) {
  Map& map = OpenTwoBrushes();
  Modify(map);
  const auto closeOne = [&] {
    SendMessageA(parts->windows.All().front()->Handle(), WM_CLOSE, 0, 0);
    return parts->windows.All().size();
  };
  EXPECT_EQ(closeOne(), 2u);
  EXPECT_EQ(closeOne(), 1u);
  EXPECT_TRUE(sink.messages.empty());
  EXPECT_EQ(closeOne(), 1u);
  EXPECT_EQ(sink.OnlyText(),
            "Closing this window will close the map. The map has been modified. Continue?");
  EXPECT_EQ(parts->documents.Maps().size(), 1u);
  sink.answers = {Answer::Yes};
  EXPECT_EQ(closeOne(), 0u);
  EXPECT_TRUE(parts->documents.Maps().empty());
}

TEST_F(MapFilesTest, ClosingAMapClosesItsWindowsAndNoOthers) {
  OpenTwoBrushes();
  parts->documents.New();
  Give(Command::FileClose);
  EXPECT_EQ(sink.Said(), Texts{"Close Map?: Are you sure you want to close this map?"});
  EXPECT_EQ(parts->windows.All().size(), 6u);
  sink.answers = {Answer::Yes};
  Give(Command::FileClose);
  ASSERT_EQ(parts->documents.Maps().size(), 1u);
  EXPECT_EQ(parts->documents.Maps()[0]->Name(), "Two boxes");
  EXPECT_EQ(parts->windows.All().size(), 3u);
}

TEST_F(MapFilesTest, QuittingAsksForEveryModifiedMapAndStaysOnACancel) {
  Modify(OpenTwoBrushes());
  parts->documents.New();
  Modify(parts->documents.New());
  const std::string end = " has been modified and not saved. Save before quitting?";
  struct Row {
    std::deque<Answer> answers;
    std::deque<std::string> files;
    bool runs;
  };
  for (const Row& row : {Row{{Answer::No, Answer::Cancel}, {}, true},
                         Row{{Answer::No, Answer::Yes}, {}, true},  // but no name is chosen
                         Row{{Answer::No, Answer::Yes}, {dir.Path("last.xmp")}, false}}) {
    sink.messages.clear();
    sink.answers = row.answers;
    dialogs.files = row.files;
    Quit();
    EXPECT_EQ(sink.Said(),
              (Texts{"Continue?: Map Two boxes" + end, "Continue?: Map Unnamed" + end}));
    EXPECT_EQ(Running(), row.runs);
  }
  EXPECT_FALSE(dir.Read("last.xmp").empty());
}

TEST_F(MapFilesTest, EveryDroppedFileOpens) {
  const std::string names =
      dir.Write("a.map", TWO_BRUSHES) + '\0' + dir.Write("b.map", TWO_BRUSHES) + '\0' + '\0';
  const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + names.size());
  auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
  drop->pFiles = sizeof(DROPFILES);
  std::memcpy(drop + 1, names.data(), names.size());
  GlobalUnlock(memory);
  SendMessageA(parts->frame.Handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
  ASSERT_EQ(parts->documents.Maps().size(), 2u);
  EXPECT_EQ(parts->documents.Maps()[1]->filename, dir.Path("b.map"));
  EXPECT_TRUE(sink.messages.empty()) << "nothing else was dropped";
}

}  // namespace
}  // namespace ferrowand
