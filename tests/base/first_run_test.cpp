#include <gtest/gtest.h>

#include "base/options.h"
#include "base/report.h"
#include "platform/settings_store.h"
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

constexpr char WELCOME[] =
    "Ferrowand: Either this is the first time you have run Ferrowand or the installation seems to "
    "have been corrupted, in which case it might be worthwhile reinstalling. Either way, you will "
    "need to set your Quake directory in File/Options";
constexpr char ASK_SHORTCUT[] = "Ferrowand: Create shortcut to Ferrowand in Start menu?";

TEST_F(FirstRun, ANewUserIsGreetedAskedAndGetsTheAssociation) {
  Run();
  EXPECT_EQ(recorder.Said(), (std::vector<std::string>{WELCOME, ASK_SHORTCUT}));
  EXPECT_EQ(recorder.messages.back().buttons, Buttons::YesNo);
  EXPECT_EQ(shortcuts, 0);
  EXPECT_EQ(Default(".xmp"), "Ferrowand.Document");
  EXPECT_EQ(Default("Ferrowand.Document"), "Extended Map");
  EXPECT_EQ(Default("Ferrowand.Document\\DefaultIcon"), "c:\\tools\\ferrowand.exe,1");
  EXPECT_EQ(Default("Ferrowand.Document\\shell\\open\\command"), "c:\\tools\\ferrowand.exe %1");
  EXPECT_FALSE(store->OpenSettings()) << "the settings are first made by the save at the end";
}

TEST_F(FirstRun, YesMakesTheShortcutAndAnOlderAssociationIsKeptAndReported) {
  store->FileTypes()->Create(".xmp").key->WriteString("", "Other.Document");
  store->FileTypes()->Create("Ferrowand.Document");
  recorder.answers = {Answer::Ok, Answer::Yes};
  Run();
  EXPECT_EQ(shortcuts, 1);
  constexpr char END[] =
      " file association information! This means .xmp files will not load up Ferrowand when you "
      "double click them.";
  EXPECT_EQ(recorder.Said(), (std::vector<std::string>{
                                 WELCOME, ASK_SHORTCUT, std::string("Error: Cannot create") + END,
                                 std::string("Error: Cannot complete creation of") + END}));
  EXPECT_EQ(Default(".xmp"), "Other.Document");
  EXPECT_EQ(Default("Ferrowand.Document"), "(no value)");
  EXPECT_EQ(Default("Ferrowand.Document\\DefaultIcon"), "(no key)");
}

}  // namespace
}  // namespace ferrowand
