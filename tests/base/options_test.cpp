#include "base/options.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>

#include "base/report.h"
#include "platform/settings_store.h"
#include "platform/system.h"
#include "support/recorder.h"

namespace ferrowand {
namespace {

class OptionsTest : public testing::Test {
 protected:
  // Options loaded from a store that holds what `write` puts there.
  template <typename Write>
  Options Loaded(Write write) {
    write(*store->CreateSettings());
    Options options;
    EXPECT_TRUE(options.Load(*store, reporter));
    EXPECT_TRUE(recorder.messages.empty());
    return options;
  }

  MessageRecorder recorder;
  Reporter reporter{recorder};
  std::unique_ptr<SettingsStore> store = MakeMemorySettingsStore();
};

class RefusingStore : public SettingsStore {
 public:
  std::unique_ptr<SettingsKey> OpenSettings() override { return nullptr; }
  std::unique_ptr<SettingsKey> CreateSettings() override { return nullptr; }
  std::unique_ptr<SettingsKey> FileTypes() override { return nullptr; }
};

TEST_F(OptionsTest, AnEmptyStoreGivesTheDefaultsUntilTheFirstSave) {
  Options options;
  options.undoLevels = 3;
  EXPECT_FALSE(options.Load(*store, reporter));
  EXPECT_EQ(options.undoLevels, 30);
  EXPECT_TRUE(options.Save(*store, reporter));
  EXPECT_TRUE(options.Load(*store, reporter));
}

TEST_F(OptionsTest, NamesAreThoseOfTheStoresThatUsersHave) {
  Options().Save(*store, reporter);
  const auto key = store->OpenSettings();
  EXPECT_EQ(key->ReadString("Version String"), "1.01");
  for (const char* name : {"Default WAD", "Previous0", "Previous5", "PreviousGroup7"}) {
    EXPECT_TRUE(key->ReadString(name)) << name;
  }
  for (const char* name : {"1x1Mip type", "Compile Threds", "Key00", "Key131", "Rotation Step"}) {
    EXPECT_TRUE(key->ReadNumber(name)) << name;
  }
  EXPECT_EQ(key->ReadNumber("Key130"), 35u);
  EXPECT_EQ(key->ReadString("Previous6"), std::nullopt);
  EXPECT_EQ(key->ReadString("PreviousGroup8"), std::nullopt);
}

TEST_F(OptionsTest, WhatIsSavedComesBack) {
  Options saved;
  saved.gammaRed = 0.12345679f;
  saved.undoLevels = -1;
  saved.qbspParams = "q";
  saved.lightParams = "l";
  saved.visParams = "v";
  saved.quakeParams = "-game \"x y\"";
  saved.noTextureCaptions = 255;
  saved.findFlags = 65535;
  saved.quakeLightingFlags = 0xFFFFFFFF;
  saved.keys[13] = {1, 2};
  saved.previousFiles[5] = "last";
  saved.previousGroups[7] = "last group";
  EXPECT_TRUE(saved.Save(*store, reporter));
  const Options loaded = Loaded([](SettingsKey&) {});
  const auto fields = [](const Options& o) {
    return std::tie(o.gammaRed, o.undoLevels, o.qbspParams, o.lightParams, o.visParams,
                    o.quakeParams, o.noTextureCaptions, o.findFlags, o.quakeLightingFlags, o.keys,
                    o.previousFiles, o.previousGroups);
  };
  EXPECT_TRUE(fields(loaded) == fields(saved));
}

TEST_F(OptionsTest, WhatCannotBeIsRepairedCutOrLeftAtItsDefault) {
  const Options options = Loaded([](SettingsKey& key) {
    key.WriteNumber("Undo Levels", 0);
    key.WriteNumber("Right Tray Size", 5);
    key.WriteNumber("Back Clip", 0);
    key.WriteNumber("Texture Cache", 65536);  // 0 in the 16 bits that are kept
    key.WriteNumber("Rotation Step", 181);
    key.WriteString("Gamma Red", "0.01");
    key.WriteString("Gamma Green", "250");
    key.WriteNumber("Gamma Blue", 5);  // no text
    key.WriteNumber("Default QC", 5);
    key.WriteString("Joystick Speed", "5");  // no number
    key.WriteNumber("VIS level", 300);
    key.WriteNumber("QBSP flags", 65536 + 7);
    key.WriteNumber("Key130", 256 + 9);
    key.WriteNumber("Max Texture Size", 0x80000001);
    key.WriteString("Default WAD", std::string(1000, 'w'));
    key.WriteString("Previous0", std::string(1000, 'm'));
    key.WriteString("PreviousGroup0", std::string(1000, 'g'));
  });
  EXPECT_EQ(options.undoLevels, 10);
  EXPECT_EQ(options.rightTraySize, 10);
  EXPECT_EQ(options.backClip, 5000u);
  EXPECT_EQ(options.textureCache, DefaultTextureCache(PhysicalMemoryBytes()));
  EXPECT_EQ(options.rotationStep, 15);
  EXPECT_EQ(Loaded([](auto& key) { key.WriteNumber("Rotation Step", 180); }).rotationStep, 180);
  EXPECT_EQ(options.gammaRed, 0.1f);
  EXPECT_EQ(options.gammaGreen, 100.0f);
  EXPECT_EQ(options.gammaBlue, 1.0f);
  EXPECT_EQ(options.defaultQc, "ents.qc");
  EXPECT_EQ(options.joystickSpeed, 300);
  EXPECT_EQ(options.visLevel, 44);
  EXPECT_EQ(options.qbspFlags, 7);
  EXPECT_EQ(options.keys[13][0], 9);
  EXPECT_EQ(options.maxTextureSize, 0x80000001);
  EXPECT_EQ(options.defaultWad, std::string(99, 'w'));
  EXPECT_EQ(options.previousFiles[0], std::string(511, 'm'));
  EXPECT_EQ(options.previousGroups[0], std::string(511, 'g'));
}

TEST_F(OptionsTest, AGammaIsStoredInTenCharactersAtMostAndStaysWhatItWas) {
  for (const float gamma : {1.0f / 3, 99.98765f, 0.10000001f, 1e20f, 1.1754944e-38f}) {
    Options options;
    options.gammaRed = gamma;
    options.Save(*store, reporter);
    EXPECT_LE(store->OpenSettings()->ReadString("Gamma Red")->size(), 10u) << gamma;
    options.Load(*store, reporter);
    EXPECT_NEAR(options.gammaRed, std::clamp(gamma, 0.1f, 100.0f), 1e-7) << gamma;
  }
}

TEST_F(OptionsTest, ARefusedSaveIsTold) {
  RefusingStore refusing;
  EXPECT_FALSE(Options().Save(refusing, reporter));
  EXPECT_EQ(recorder.OnlyText(), "Cannot write options!");
  EXPECT_EQ(recorder.messages[0].title, "Error");
}

TEST(RecentFiles, TheNewestIsFirstAndMentionedOnce) {
  using Files = std::array<std::string, Options::NUMRECENTMAPS>;
  Options options;
  for (const char* path : {"a", "b", "c", "B"}) options.AddRecentMap(path);
  EXPECT_EQ(options.previousFiles, (Files{"B", "c", "a", "", "", ""}));
  for (const char* path : {"d", "e", "f", "g"}) options.AddRecentMap(path);
  EXPECT_EQ(options.previousFiles, (Files{"g", "f", "e", "d", "B", "c"}));
  options.AddRecentGroup("group");
  EXPECT_EQ(options.previousGroups[0], "group");
}

TEST(TextureCache, FollowsTheWholeMillionsOfMemory) {
  const std::pair<std::uint64_t, int> cases[] = {
      {0, 50},         {15999999, 50},  {16000000, 100},  {19999999, 100},
      {20000000, 500}, {31999999, 500}, {32000000, 1000}, {1ull << 40, 1000}};
  for (const auto& [memory, textures] : cases) EXPECT_EQ(DefaultTextureCache(memory), textures);
}

}  // namespace
}  // namespace ferrowand
