#include "platform/settings_store.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/win32/registry_settings_store.h"
#endif

namespace ferrowand {
namespace {

// Every kind of store keeps the same promises; on Windows the registry as well.
class SettingsStoreTest : public testing::TestWithParam<std::unique_ptr<SettingsStore> (*)()> {
 protected:
  void SetUp() override { root->Delete("store test"); }
  void TearDown() override { root->Delete("store test"); }

  std::unique_ptr<SettingsStore> store = GetParam()();
  std::unique_ptr<SettingsKey> root = store->CreateSettings();
};

TEST_P(SettingsStoreTest, ValuesComeBackByNameAndType) {
  const auto key = root->Create("store test").key;
  EXPECT_TRUE(key->WriteNumber("number", 0xFFFFFFFF));
  EXPECT_TRUE(key->WriteString("text", "a \"b\" \\"));
  EXPECT_TRUE(key->WriteString("", "default"));
  EXPECT_EQ(key->ReadNumber("Number"), 0xFFFFFFFF);
  EXPECT_EQ(key->ReadString("text"), "a \"b\" \\");
  EXPECT_EQ(key->ReadString(""), "default");
  EXPECT_EQ(key->ReadString("number"), std::nullopt);
  EXPECT_EQ(key->ReadNumber("text"), std::nullopt);
  EXPECT_EQ(key->ReadNumber("missing"), std::nullopt);
  EXPECT_TRUE(key->Close());
}

TEST_P(SettingsStoreTest, CreatingTellsNewFromOld) {
  EXPECT_TRUE(root->Create("store test\\a\\b").isNew);
  EXPECT_FALSE(root->Create("Store Test\\a").isNew);
  EXPECT_TRUE(root->Open("store test")->Open("A\\b"));
  EXPECT_FALSE(root->Open("store test\\c"));
}

TEST_P(SettingsStoreTest, SubkeysAreEnumeratedByNameWithoutRegardToCase) {
  const auto key = root->Create("store test").key;
  for (const char* name : {"b", "C", "a10", "a2"}) key->Create(name);
  std::vector<std::string> names;
  while (const auto name = key->SubkeyName(static_cast<std::uint32_t>(names.size())))
    names.push_back(*name);
  EXPECT_EQ(names, (std::vector<std::string>{"a10", "a2", "b", "C"}));
}

TEST_P(SettingsStoreTest, DeletingTakesEverythingBelow) {
  root->Create("store test\\a\\b").key->WriteNumber("n", 1);
  EXPECT_TRUE(root->Delete("store test\\a"));
  EXPECT_FALSE(root->Open("store test\\a"));
  EXPECT_TRUE(root->Open("store test"));
  EXPECT_TRUE(root->Delete("store test\\a"));
}

TEST_P(SettingsStoreTest, AKeyOpenedForReadingRefusesToChange) {
  root->Create("store test");
  const auto key = root->Open("store test");
  EXPECT_FALSE(key->WriteNumber("n", 1));
  EXPECT_EQ(key->ReadNumber("n"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Memory, SettingsStoreTest, testing::Values(&MakeMemorySettingsStore));
#ifdef _WIN32
INSTANTIATE_TEST_SUITE_P(Registry, SettingsStoreTest, testing::Values(&MakeRegistrySettingsStore));
#endif

}  // namespace
}  // namespace ferrowand
