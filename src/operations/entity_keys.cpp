#include "operations/entity_keys.h"

#include <algorithm>
#include <functional>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "base/number_text.h"
#include "base/path_text.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "operations/class_change.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

bool HasField(std::string_view name) {
  return name == "classname" || name == "XMPentityname";
}

// To the letter; -1 for none.
int IndexOf(const entity& e, std::string_view name) {
  int index = e.numkeys() - 1;
  while (index >= 0 && e.KeyName(index) != name) --index;
  return index;
}

KeyDefinition* Find(std::vector<KeyDefinition>& keys, std::string_view name) {
  const auto found = std::ranges::find_if(
      keys, [&](const KeyDefinition& key) { return EqualNoCase(key.name, name); });
  return found == keys.end() ? nullptr : &*found;
}

void AddWorldKeys(std::vector<KeyDefinition>& keys) {
  const KeyDefinition WORLD[] = {
      {"message", KeyType::Text, "", "", "title of the level", {}},
      {"worldtype",
       KeyType::Choices,
       "",
       "0",
       "the look of keys and doors",
       {{"0", "medieval"}, {"1", "metal"}, {"2", "base"}}},
      {"sounds", KeyType::Whole, "", "0", "number of the CD track", {}},
  };
  for (const KeyDefinition& known : WORLD) {
    KeyDefinition* own = Find(keys, known.name);
    if (!own) {
      keys.push_back(known);
    } else if (own->choices.empty() && !known.choices.empty()) {
      own->type = known.type;
      own->choices = known.choices;
    }
  }
}

// What every class among the objects knows.
std::vector<KeyDefinition> SharedKeys(std::span<entity* const> objects) {
  std::vector<KeyDefinition> shared;
  std::unordered_set<const EntityClass*> seen;
  for (const entity* e : objects) {
    if (!seen.insert(e->getClass()).second) continue;
    std::vector<KeyDefinition> known = KnownKeysOf(*e);
    if (seen.size() == 1) {
      shared = std::move(known);
    } else {
      std::erase_if(shared, [&](const KeyDefinition& key) { return !Find(known, key.name); });
    }
  }
  std::erase_if(shared, [](const KeyDefinition& key) { return HasField(key.name); });
  return shared;
}

// In the order of the files.
std::vector<KeyRow> SetRows(std::span<entity* const> objects, bool withEditorKeys) {
  std::vector<KeyRow> rows;
  std::vector<std::size_t> counts;
  std::unordered_map<std::string_view, std::size_t> places;
  for (const entity* e : objects) {
    for (int i = 0; i < e->numkeys(); ++i) {
      const std::string &name = e->KeyName(i), &value = e->KeyValue(i);
      if (HasField(name) || (!withEditorKeys && IsEditorKey(name))) continue;
      const auto [place, isNew] = places.try_emplace(name, rows.size());
      if (isNew) {
        rows.push_back({.name = name, .value = value, .isSet = true, .definition = {}});
        counts.push_back(0);
      }
      rows[place->second].differs |= rows[place->second].value != value;
      ++counts[place->second];
    }
  }
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i].isEverywhere = counts[i] >= objects.size();
  return rows;
}

void AddKnown(std::vector<KeyRow>& rows, std::vector<KeyDefinition> known) {
  for (KeyDefinition& key : known) {
    bool isSet = false;
    for (KeyRow& row : rows) {
      if (!EqualNoCase(row.name, key.name)) continue;
      row.definition = key;
      isSet = true;
    }
    if (isSet) continue;
    KeyRow row{.name = key.name, .value = key.defaultValue, .definition = {}};
    row.definition = std::move(key);
    rows.push_back(std::move(row));
  }
}

EditResult CheckText(std::string_view text) {
  if (text.find('"') != text.npos) return EditResult::HoldsQuote;
  if (text.find_first_of(std::string_view("\r\n\0", 3)) != text.npos) {
    return EditResult::HoldsLineEnd;
  }
  if (text.ends_with('\\')) return EditResult::EndsInBackslash;
  return text.size() > LONGEST_KEY_TEXT ? EditResult::TextTooLong : EditResult::Done;
}

bool IsPlace(std::string_view text) {
  int count = 0;
  while (!text.empty()) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == text.npos) break;
    text.remove_prefix(begin);
    const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
    if (!ReadNumber(text.substr(0, end))) return false;
    text.remove_prefix(end);
    ++count;
  }
  return count == 3;
}

bool IsScale(std::string_view name) {
  return std::ranges::any_of(SCALE_KEYS, [&](const char* key) { return EqualNoCase(name, key); });
}

bool TakesAllScales(const entity& e, std::string_view name) {
  return IsInstance(e) && IsScale(name);
}

bool HasRoom(const entity& e, std::string_view name) {
  const int more = TakesAllScales(e, name) ? 3 : 1;
  return e.GetKey(name) || e.numkeys() + more < MAXKEYS;
}

bool HasAlready(const entity& e, std::string_view name, std::string_view value) {
  const int index = IndexOf(e, name);
  return index >= 0 && e.KeyValue(index) == value;
}

void Put(entity& e, const std::string& name, const std::string& value) {
  if (TakesAllScales(e, name)) {
    for (const char* key : SCALE_KEYS) {
      if (!e.GetKey(key)) e.SetKey(key, "1");
    }
  }
  if (IndexOf(e, name) >= 0) {
    e.SetKey(name, value);
  } else {
    ReplaceKey(e, name, value);
  }
}

// A point that would not be anywhere afterwards.
bool NeedsKey(const entity& e, std::string_view name) {
  if (EqualNoCase(name, "classname")) return true;
  return EqualNoCase(name, "origin") && e.Parent() && !HoldsBrushes(e);
}

using TextureNames = std::set<std::string, std::less<>>;

void CollectTextures(const entity& e, TextureNames& names) {
  for (const Face& face : e.brush.Faces()) {
    if (!names.contains(face.WrittenName())) names.emplace(face.WrittenName());
  }
  for (const EntityPtr& child : e.getEntityList()) CollectTextures(*child, names);
}

// The entity that the brush is a part of, through groups in it; the object itself otherwise.
entity& WholeOf(entity& e) {
  if (e.getClass()->Kind() != EntityKind::Brush || !e.brush.HasText()) return e;
  entity* above = e.Parent();
  while (above && above->Parent() && above->getClass()->Kind() == EntityKind::Brush) {
    above = above->Parent();
  }
  return above && above->Parent() && above->IsOwnBlock() ? *above : e;
}

}  // namespace

bool HoldsBrushes(const entity& e) {
  return e.brush.HasText() || std::ranges::any_of(e.getEntityList(), [](const EntityPtr& child) {
           return HoldsBrushes(*child);
         });
}

std::vector<entity*> EntitiesOf(std::span<entity* const> objects) {
  std::vector<entity*> entities;
  std::unordered_set<const entity*> known;
  for (entity* object : objects) {
    entity& whole = WholeOf(*object);
    if (known.insert(&whole).second) entities.push_back(&whole);
  }
  return entities;
}

std::vector<std::string> TexturesOf(std::span<entity* const> objects) {
  TextureNames names;
  for (const entity* e : objects) CollectTextures(*e, names);
  return {names.begin(), names.end()};
}

std::vector<KeyDefinition> KnownKeysOf(const entity& e) {
  std::vector<KeyDefinition> keys = e.getClass()->keys;
  if (!e.Parent()) AddWorldKeys(keys);
  return keys;
}

void KeyRows::Show(std::span<entity* const> objects, bool withEditorKeys) {
  if (!std::ranges::equal(objects, objects_)) {
    objects_.assign(objects.begin(), objects.end());
    order_.clear();
  }
  rows_ = SetRows(objects, withEditorKeys);
  AddKnown(rows_, SharedKeys(objects));
  std::unordered_map<std::string_view, std::size_t> places;
  for (const KeyRow& row : rows_) {
    if (std::ranges::find(order_, row.name) == order_.end()) order_.push_back(row.name);
  }
  for (std::size_t i = 0; i < order_.size(); ++i) places[order_[i]] = i;
  std::ranges::sort(rows_, {}, [&](const KeyRow& row) { return places[row.name]; });
}

void KeyRows::Rename(std::string_view from, std::string_view to) {
  std::erase(order_, to);
  std::ranges::replace(order_, std::string(from), std::string(to));
}

EditResult CheckKeyName(std::string_view name) {
  return name.empty() ? EditResult::NoKeyName : CheckText(name);
}

EditResult CheckKeyValue(std::string_view value) {
  return CheckText(value);
}

EditResult SetKeyOf(Map& map, std::span<entity* const> objects, std::string_view name,
                    std::string_view value) {
  if (objects.empty()) return EditResult::NothingSelected;
  for (const EditResult fit : {CheckKeyName(name), CheckKeyValue(value)}) {
    if (fit != EditResult::Done) return fit;
  }
  if (EqualNoCase(name, "classname")) return ChangeClass(map, objects, value);
  if (EqualNoCase(name, "origin") && !IsPlace(value)) return EditResult::NotThreeNumbers;
  for (const entity* e : objects) {
    if (!HasRoom(*e, name)) return EditResult::TooManyKeys;
  }
  EditStep step(map);
  for (entity* e : objects) {
    if (HasAlready(*e, name, value)) continue;
    step.ChangeKeys(*e);
    Put(*e, std::string(name), std::string(value));
  }
  return EditResult::Done;
}

EditResult RenameKeyOf(Map& map, std::span<entity* const> objects, std::string_view from,
                       std::string_view to) {
  if (const EditResult fit = CheckKeyName(to); fit != EditResult::Done) return fit;
  for (const entity* e : objects) {
    if (IndexOf(*e, from) < 0) continue;
    if (NeedsKey(*e, from) && !EqualNoCase(from, to)) return EditResult::KeyStays;
    if (!EqualNoCase(from, to) && e->GetKey(to)) return EditResult::KeyTaken;
  }
  EditStep step(map);
  for (entity* e : objects) {
    const int index = IndexOf(*e, from);
    if (index < 0 || from == to) continue;
    step.ChangeKeys(*e);
    const std::string value = e->KeyValue(index);
    e->RemoveKey(index);
    e->SetKey(to, value);
  }
  return EditResult::Done;
}

EditResult RemoveKeyOf(Map& map, std::span<entity* const> objects, std::string_view name) {
  for (const entity* e : objects) {
    if (IndexOf(*e, name) >= 0 && NeedsKey(*e, name)) return EditResult::KeyStays;
  }
  EditStep step(map);
  for (entity* e : objects) {
    const int index = IndexOf(*e, name);
    if (index < 0) continue;
    step.ChangeKeys(*e);
    e->RemoveKey(index);
  }
  return EditResult::Done;
}

}  // namespace ferrowand
