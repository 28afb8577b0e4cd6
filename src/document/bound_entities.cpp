#include "document/bound_entities.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "base/report.h"
#include "document/classes/class_set.h"
#include "platform/settings_store.h"

namespace ferrowand {
namespace {

constexpr const char* SOURCE = "options.cpp";
constexpr const char* SUBKEY = "boundEntities";
constexpr const char* COUNT = "Num Classnames";
constexpr std::size_t MAXBOUND = 255;  // the count is kept in a byte

void ReadPairs(SettingsKey& entityKey, entity& prototype, Reporter& reporter) {
  for (std::uint32_t i = 0; const auto name = entityKey.SubkeyName(i); ++i) {
    const std::unique_ptr<SettingsKey> keyvalueKey = entityKey.Open(*name);
    if (!keyvalueKey) continue;
    if (const auto value = keyvalueKey->ReadString("value")) prototype.SetKey(*name, *value);
    if (!keyvalueKey->Close())
      reporter.Assert("RegCloseKey(keyvalueKey)==ERROR_SUCCESS", SOURCE, __LINE__);
  }
}

bool WritePairs(SettingsKey& entityKey, const entity& prototype, Reporter& reporter) {
  bool worked = true;
  for (int i = 0; i < prototype.numkeys(); ++i) {
    const std::unique_ptr<SettingsKey> keyvalueKey = entityKey.Create(prototype.KeyName(i)).key;
    worked &= keyvalueKey && keyvalueKey->WriteString("value", prototype.KeyValue(i));
    if (keyvalueKey && !keyvalueKey->Close())
      reporter.Assert("RegCloseKey(keyvalueKey)==ERROR_SUCCESS", SOURCE, __LINE__);
  }
  return worked;
}

// Only has to differ from the others, and to be one name: a '\' would make it two.
std::string SubkeyOf(const entity& prototype, std::size_t index) {
  constexpr std::size_t LONGEST = 200;  // the system takes 255 with the index
  const char* name = prototype.GetKey("XMPentityname");
  std::string text = std::string(name ? name : "").substr(0, LONGEST);
  std::replace(text.begin(), text.end(), '\\', '/');
  return text + std::to_string(index);
}

bool WriteEntity(SettingsKey& parent, const BoundEntity& item, std::size_t index,
                 Reporter& reporter) {
  const std::unique_ptr<SettingsKey> entityKey =
      parent.Create(SubkeyOf(*item.prototype, index)).key;
  if (!entityKey) return false;
  bool worked = entityKey->WriteNumber("key", item.key);
  worked &= WritePairs(*entityKey, *item.prototype, reporter);
  if (!entityKey->Close())
    reporter.Assert("RegCloseKey(entityKey)==ERROR_SUCCESS", SOURCE, __LINE__);
  return worked;
}

void CloseRoots(SettingsKey& classnameRegKey, SettingsKey& key, Reporter& reporter) {
  if (!classnameRegKey.Close())
    reporter.Assert("RegCloseKey(classnameRegKey)==ERROR_SUCCESS", SOURCE, __LINE__);
  if (!key.Close()) reporter.Assert("RegCloseKey(key)==ERROR_SUCCESS", SOURCE, __LINE__);
}

}  // namespace

void BoundEntities::Load(SettingsStore& store, const ClassSet& classes, Reporter& reporter) {
  items.clear();
  const std::unique_ptr<SettingsKey> key = store.OpenSettings();
  const std::unique_ptr<SettingsKey> classnameRegKey = key ? key->Open(SUBKEY) : nullptr;
  if (!classnameRegKey) return;
  items.resize(static_cast<std::uint8_t>(classnameRegKey->ReadNumber(COUNT).value_or(0)));
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto name = classnameRegKey->SubkeyName(static_cast<std::uint32_t>(i));
    if (!name) break;
    const std::unique_ptr<SettingsKey> entityKey = classnameRegKey->Open(*name);
    if (!entityKey) continue;
    items[i].key = static_cast<std::uint8_t>(entityKey->ReadNumber("key").value_or(0));
    items[i].prototype = std::make_unique<entity>(classes);
    items[i].prototype->ClearKeys();
    ReadPairs(*entityKey, *items[i].prototype, reporter);
    items[i].prototype->ResolveClasses(classes);
    if (!entityKey->Close())
      reporter.Assert("RegCloseKey(entityKey)==ERROR_SUCCESS", SOURCE, __LINE__);
  }
  CloseRoots(*classnameRegKey, *key, reporter);
}

bool BoundEntities::Save(SettingsStore& store, Reporter& reporter) const {
  const std::unique_ptr<SettingsKey> key = store.CreateSettings();
  const std::unique_ptr<SettingsKey> classnameRegKey =
      key && key->Delete(SUBKEY) ? key->Create(SUBKEY).key : nullptr;
  bool worked = classnameRegKey != nullptr;
  if (classnameRegKey) {
    std::size_t written = 0;
    for (const BoundEntity& item : items) {
      if (item.prototype && written < MAXBOUND)
        worked &= WriteEntity(*classnameRegKey, item, written++, reporter);
    }
    worked &= classnameRegKey->WriteNumber(COUNT, static_cast<std::uint32_t>(written));
    CloseRoots(*classnameRegKey, *key, reporter);
  }
  if (!worked) reporter.Show("Error", "Cannot write options!");
  return worked;
}

}  // namespace ferrowand
