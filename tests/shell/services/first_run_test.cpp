#include <gtest/gtest.h>

#include "platform/settings_store.h"
#include "shell/services/options.h"
#include "shell/services/report.h"
#include "support/recorder.h"

namespace ferrowand {
namespace {

class FirstRun : public testing::Test {
 protected:
  void Run() {
    recorder.messages.clear();
    RunFirstTimeSetup(*store, reporter, "c:\\tools", [this] { ++shortcuts; });
  }

  std::string Default(const char* name) {
    const auto key = store->FileTypes()->Open(name);
    return key ? key->ReadString("").value_or("(no value)") : "(no key)";
  }

  MessageRecorder recorder;
  Reporter reporter{recorder};
  std::unique_ptr<SettingsStore> store = MakeMemorySettingsStore();
  int shortcuts = 0;
};

TEST_F(FirstRun, ANewUserIsGreetedAskedAndGetsTheAssociation) {
  Run();
  ASSERT_EQ(recorder.messages.size(), 2u);
  EXPECT_EQ(recorder.messages[0].title, "Ferrowand");
  EXPECT_EQ(recorder.messages[0].text,
            "Either this is the first time you have run Ferrowand or the installation seems to "
            "have been corrupted, in which case it might be worthwhile reinstalling. Either way, "
            "you will need to set your Quake directory in File/Options");
  EXPECT_EQ(recorder.messages[1].title, "Ferrowand");
  EXPECT_EQ(recorder.messages[1].text, "Create shortcut to Ferrowand in Start menu?");
  EXPECT_EQ(recorder.messages[1].buttons, Buttons::YesNo);
  EXPECT_EQ(shortcuts, 0);
  EXPECT_EQ(Default(".xmp"), "Ferrowand.Document");
  EXPECT_EQ(Default("Ferrowand.Document"), "Extended Map");
  EXPECT_EQ(Default("Ferrowand.Document\\DefaultIcon"), "c:\\tools\\ferrowand.exe,1");
  EXPECT_EQ(Default("Ferrowand.Document\\shell\\open\\command"), "c:\\tools\\ferrowand.exe %1");
  EXPECT_FALSE(store->OpenSettings()) << "the settings are first made by the save at the end";
}

TEST_F(FirstRun, YesMakesTheShortcut) {
  recorder.answers = {Answer::Ok, Answer::Yes};
  Run();
  EXPECT_EQ(shortcuts, 1);
}

TEST_F(FirstRun, AnOlderAssociationIsKeptAndReportedAsAFailure) {
  store->FileTypes()->Create(".xmp").key->WriteString("", "Other.Document");
  store->FileTypes()->Create("Ferrowand.Document");
  Run();
  ASSERT_EQ(recorder.messages.size(), 4u);
  EXPECT_EQ(recorder.messages[2].title, "Error");
  EXPECT_EQ(recorder.messages[2].text,
            "Cannot create file association information! This means .xmp files will not load up "
            "Ferrowand when you double click them.");
  EXPECT_EQ(recorder.messages[3].title, "Error");
  EXPECT_EQ(recorder.messages[3].text,
            "Cannot complete creation of file association information! This means .xmp files will "
            "not load up Ferrowand when you double click them.");
  EXPECT_EQ(Default(".xmp"), "Other.Document");
  EXPECT_EQ(Default("Ferrowand.Document"), "(no value)");
  EXPECT_EQ(Default("Ferrowand.Document\\DefaultIcon"), "(no key)");
}

}  // namespace
}  // namespace ferrowand
