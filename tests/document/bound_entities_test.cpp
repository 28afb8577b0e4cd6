#include "document/bound_entities.h"

#include <gtest/gtest.h>

#include "base/path_text.h"
#include "base/progress.h"
#include "document/classes/class_set.h"
#include "platform/settings_store.h"
#include "support/recorder.h"

namespace ferrowand {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs KeysOf(const entity& e) {
  Pairs pairs;
  for (int i = 0; i < e.numkeys(); ++i) pairs.emplace_back(e.KeyName(i), e.KeyValue(i));
  return pairs;
}

class BoundEntitiesTest : public testing::Test {
 protected:
  void Bind(std::uint8_t key, const Pairs& pairs) {
    auto prototype = std::make_unique<entity>(classes);
    prototype->ClearKeys();
    for (const auto& [name, value] : pairs) prototype->SetKey(name, value);
    bound.items.push_back({key, std::move(prototype)});
  }

  BoundEntities Reloaded() {
    BoundEntities loaded;
    loaded.Load(*store, classes, reporter);
    return loaded;
  }

  MessageRecorder recorder;
  Reporter reporter{recorder};
  LoadProgress progress;
  SearchPath path;
  ClassLibrary library{path, reporter, progress};
  ClassSet& classes = library.Native();
  std::unique_ptr<SettingsStore> store = MakeMemorySettingsStore();
  BoundEntities bound;
};

TEST_F(BoundEntitiesTest, WhatIsSavedComesBackWithItsClass) {
  const Pairs layer{{"classname", "layer"}, {"light", ""}, {"XMPentityname", "a\\b"}};
  Bind(76, layer);
  Bind(255, {{"classname", "hidden"}});
  EXPECT_TRUE(Reloaded().items.empty()) << "before the first save";
  ASSERT_TRUE(bound.Save(*store, reporter));
  const BoundEntities loaded = Reloaded();
  ASSERT_EQ(loaded.items.size(), 2u);
  EXPECT_EQ(loaded.items[0].key, 255) << "the nameless \"1\" is enumerated before \"a/b0\"";
  const entity& prototype = *loaded.items[1].prototype;
  EXPECT_EQ(loaded.items[1].key, 76);
  EXPECT_EQ(KeysOf(prototype), layer);
  EXPECT_EQ(prototype.getClass(), &classes.FindClass("layer"));
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(BoundEntitiesTest, ASaveReplacesWhatWasBound) {
  for (const char* name : {"one", "two", "three"}) Bind(1, {{"XMPentityname", name}});
  bound.Save(*store, reporter);
  bound.items.erase(bound.items.begin(), bound.items.begin() + 2);
  bound.items.emplace_back();  // a slot that never had an entity
  bound.Save(*store, reporter);
  const BoundEntities loaded = Reloaded();
  ASSERT_EQ(loaded.items.size(), 1u);
  EXPECT_STREQ(loaded.items[0].prototype->GetKey("XMPentityname"), "three");
  EXPECT_TRUE(store->OpenSettings()->Open("boundEntities\\three0\\XMPentityname"));
}

TEST_F(BoundEntitiesTest, ACountBeyondTheStoredLeavesEmptySlots) {
  Bind(7, {{"classname", "brush"}});
  bound.Save(*store, reporter);
  const auto key = store->CreateSettings()->Create("boundEntities").key;
  key->WriteNumber("Num Classnames", 256 + 3);  // kept in a byte
  const BoundEntities loaded = Reloaded();
  ASSERT_EQ(loaded.items.size(), 3u);
  EXPECT_TRUE(loaded.items[0].prototype);
  EXPECT_FALSE(loaded.items[1].prototype);
  EXPECT_FALSE(loaded.items[2].prototype);
}

TEST_F(BoundEntitiesTest, AnEntityWithoutAKeyIsBoundToNone) {
  const auto key = store->CreateSettings()->Create("boundEntities").key;
  key->WriteNumber("Num Classnames", 1);
  key->Create("x0\\light").key->WriteString("value", "300");
  key->Create("x0\\damaged");
  const BoundEntities loaded = Reloaded();
  EXPECT_EQ(loaded.items[0].key, 0);
  EXPECT_EQ(KeysOf(*loaded.items[0].prototype), (Pairs{{"light", "300"}}));
}

}  // namespace
}  // namespace ferrowand
