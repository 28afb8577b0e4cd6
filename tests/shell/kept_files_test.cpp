// What other programs do to the files of open maps, and what is left of work when the program ends
// before it was saved.
#include "shell/system/win32.h"

#include <filesystem>

#include "base/rescue.h"
#include "document/edit_step.h"
#include "shell/app_fixture.h"

namespace ferrowand {
namespace {

class KeptFilesTest : public AppTest {
 protected:
  using Texts = std::vector<std::string>;

  static void Modify(Map& map) {
    EditStep step(map);
    step.ChangeKeys(map);
    map.SetKey("message", "Changed here");
  }
  void Tick() {
    SendMessageA(parts->frame.Handle(), WM_TIMER, 1, 0);
    app->Pump();
  }
  void ComeToFront() {
    SendMessageA(parts->frame.Handle(), WM_ACTIVATEAPP, TRUE, 0);
    app->Pump();
  }
  bool Exists(const std::string& name) const { return std::filesystem::exists(dir.Path(name)); }

  // As another program would, some seconds later.
  void ChangeFile(const std::string& name, const std::string& message) const {
    std::string text = TWO_BRUSHES;
    text.replace(text.find("Two boxes"), 9, message);
    const auto before = std::filesystem::last_write_time(dir.Path(name));
    dir.Write(name, text);
    std::filesystem::last_write_time(dir.Path(name), before + std::chrono::seconds(5));
  }
  // Work on the file that a program has left that ended before it was saved.
  void LeaveWork(const std::string& kept, const std::string& original, bool withLoss = false,
                 const std::optional<FileStamp>& began = std::nullopt) const {
    std::string text = TWO_BRUSHES;
    text.replace(text.find("Two boxes"), 9, "Kept work");
    const Rescue rescue{dir.Path(kept), original == UNNAMED ? original : dir.Path(original),
                        withLoss, began};
    ASSERT_TRUE(RescueNote::Take(dir.Path("data"), rescue));
    dir.Write(kept, text);
  }
};

TEST_F(KeptFilesTest, AModifiedMapIsKeptInTimeAndUntilItIsSaved) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  EXPECT_TRUE(KillTimer(parts->frame.Handle(), 1)) << "it runs from the start";
  const std::string kept = "two.map.autosave.xmp";
  Tick();
  EXPECT_FALSE(Exists(kept));
  Modify(map);
  const HWND drawing = WindowOf(Orientation::Top).Drawing();
  SendMessageA(drawing, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  SendMessageA(parts->frame.Handle(), WM_TIMER, 1, 0);
  EXPECT_FALSE(Exists(kept)) << "in the middle of a drag";
  SendMessageA(drawing, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  Tick();
  EXPECT_TRUE(Exists(kept));
  Give(Command::FileSave);
  EXPECT_FALSE(Exists(kept));
  EXPECT_EQ(dir.Read("two.map.1.bak"), TWO_BRUSHES);

  Modify(map);
  sink.answers = {Answer::Cancel};
  EXPECT_EQ(SendMessageA(parts->frame.Handle(), WM_QUERYENDSESSION, 0, 0), FALSE);
  EXPECT_TRUE(Exists(kept)) << "before the question";
  EXPECT_NE(parts->documents.KeepForTheEnd().find(dir.Path(kept)), std::string::npos);
  sink.answers = {Answer::Yes};
  Give(Command::FileClose);
  EXPECT_TRUE(Exists(kept)) << "the question has no way back";
  EXPECT_EQ(FindRescues(dir.Path("data")).size(), 1u);
}

TEST_F(KeptFilesTest, AStartOffersWhatIsLeftOfEarlierWork) {
  const std::string path = dir.Write("two.map", TWO_BRUSHES);
  LeaveWork("two.map.autosave.xmp", "two.map");
  LeaveWork("data/unnamed.autosave.xmp", UNNAMED);
  LeaveWork("later.xmp", "later.map");
  dialogs.fill = [](const Form& form) {
    FormValues choices;
    for (const FormRow& row : form.rows) {
      choices.push_back(row.label.starts_with("A new map")              ? "Delete"
                        : row.label.find("later.map") != row.label.npos ? "Leave for later"
                                                                        : "Open");
    }
    return choices;
  };
  ASSERT_TRUE(Start(path));
  ASSERT_EQ(dialogs.forms.size(), 1u);
  EXPECT_EQ(dialogs.forms[0].title, "Unsaved work");
  EXPECT_EQ(dialogs.forms[0].rows.size(), 3u);
  EXPECT_FALSE(Exists("data/unnamed.autosave.xmp"));
  EXPECT_TRUE(Exists("later.xmp"));

  // The map of the command line is the one that was rescued.
  ASSERT_EQ(parts->documents.Maps().size(), 1u);
  Map& map = *parts->documents.Maps()[0];
  EXPECT_EQ(map.filename, path);
  EXPECT_EQ(map.Name(), "Kept work");
  EXPECT_TRUE(map.modified());
  EXPECT_EQ(dir.Read("two.map"), TWO_BRUSHES);
  Give(Command::FileSave);
  EXPECT_NE(dir.Read("two.map").find("Kept work"), std::string::npos);
  EXPECT_FALSE(Exists("two.map.autosave.xmp"));
  EXPECT_TRUE(sink.messages.empty());
}

// Here another program has written the file before the work was kept, but after it began.
TEST_F(KeptFilesTest, RescuedWorkKnowsItsFileAndThatNotAllOfItWasRead) {
  ASSERT_TRUE(Start());
  const std::string path = dir.Write("two.map", TWO_BRUSHES);
  const auto now = std::filesystem::last_write_time(path);
  std::filesystem::last_write_time(path, now - std::chrono::hours(1));
  const std::optional<FileStamp> began = file::Stamp(path);
  ChangeFile("two.map", "Their work");
  LeaveWork("two.map.autosave.xmp", "two.map", true, began);
  dialogs.answers = {{"Open"}};
  parts->documents.Open(path);
  EXPECT_TRUE(TextOf(WindowOf(Orientation::Top).Handle()).ends_with(" (read with losses)"));
  ComeToFront();
  EXPECT_TRUE(sink.messages.empty());
  sink.answers = {Answer::No, Answer::No};
  Give(Command::FileSave);
  EXPECT_EQ(sink.messages.size(), 2u);
  EXPECT_NE(dir.Read("two.map").find("Their work"), std::string::npos);
}

TEST_F(KeptFilesTest, WhatASaveThatWasEndedHasLeftIsOfferedWithTheMap) {
  ASSERT_TRUE(Start());
  const std::string path = dir.Write("two.map", TWO_BRUSHES);
  dir.Write("two.map.saving", TWO_BRUSHES);
  Map* map = parts->documents.Open(path);
  EXPECT_FALSE(map->modified()) << "thought better of it";
  sink.answers = {Answer::Yes};
  Give(Command::FileClose);
  dialogs.answers = {{"Open"}};
  map = parts->documents.Open(path);
  EXPECT_TRUE(map->modified());
  Give(Command::FileSave);
  EXPECT_FALSE(Exists("two.map.saving"));
  EXPECT_EQ(dialogs.forms.size(), 2u);
}

TEST_F(KeptFilesTest, WhatAnotherProgramWroteIsNotOverwrittenUnasked) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  Modify(map);
  ChangeFile("two.map", "Their work");
  const std::string theirs = dir.Read("two.map");
  Give(Command::FileSave);
  EXPECT_EQ(sink.Said(), Texts{"Confirm: " + map.filename +
                               " has been changed by another program since it was read. "
                               "Overwrite what is there now?"});
  EXPECT_EQ(dir.Read("two.map"), theirs);
  sink.answers = {Answer::Yes};
  Give(Command::FileSave);
  EXPECT_NE(dir.Read("two.map"), theirs);
  EXPECT_EQ(dir.Read("two.map.1.bak"), theirs);
  Give(Command::FileSave);
  EXPECT_EQ(sink.messages.size(), 2u);
}

TEST_F(KeptFilesTest, AChangedFileIsReadAgainInTheSamePlaceWhenTheUserComesBack) {
  ASSERT_TRUE(Start());
  Map* map = &OpenTwoBrushes();
  WindowOf(Orientation::Front).View()->ZoomIn();
  const ViewTransform shown = WindowOf(Orientation::Front).View()->transform;
  ComeToFront();
  EXPECT_TRUE(sink.messages.empty());

  ChangeFile("two.map", "Their work");
  ComeToFront();
  ComeToFront();
  EXPECT_EQ(sink.Said(), Texts{"Ferrowand asks: " + map->filename +
                               " has been changed by another program. Read it again?"});
  EXPECT_EQ(map->Name(), "Two boxes");

  ChangeFile("two.map", "Their newer work");
  sink.answers = {Answer::Yes};
  ComeToFront();
  map = parts->documents.Maps().front().get();
  EXPECT_EQ(parts->documents.Maps().size(), 1u);
  EXPECT_EQ(map->Name(), "Their newer work");
  EXPECT_FALSE(map->modified());
  EXPECT_EQ(parts->windows.All().size(), 3u);
  const ViewTransform& now = WindowOf(Orientation::Front).View()->transform;
  EXPECT_EQ(now.scaleu, shown.scaleu);
  EXPECT_EQ(now.originu, shown.originu);
  Give(Command::FileSave);
  EXPECT_EQ(sink.messages.size(), 2u);
}

TEST_F(KeptFilesTest, AnExportAsksBeforeItReplacesWhatIsNotItsOwn) {
  ASSERT_TRUE(Start());
  Map& map = *parts->documents.Open(dir.Write("a.xmp", TWO_BRUSHES));
  dir.Write("a.map", TWO_BRUSHES);
  Give(Command::ExportQuake);
  EXPECT_EQ(sink.Said(), Texts{"Confirm: " + dir.Path("a.map") +
                               " is there already, and was not made by Ferrowand. Replace it?"});
  EXPECT_EQ(dir.Read("a.map"), TWO_BRUSHES);
  sink.answers = {Answer::Yes};
  Give(Command::ExportQuake);
  Give(Command::ExportQuake);
  EXPECT_EQ(sink.messages.size(), 2u) << "its own";
  EXPECT_TRUE(dir.Read("a.map").starts_with("////"));
  EXPECT_FALSE(Exists("a.map.1.bak"));

  std::filesystem::last_write_time(dir.Path("a.map"), {});
  Give(Command::ExportQuake);
  EXPECT_EQ(sink.messages.back().text,
            dir.Path("a.map") + " is not as this map has written it last. Replace it?");
  EXPECT_EQ(map.filename, dir.Path("a.xmp"));
}

}  // namespace
}  // namespace ferrowand
