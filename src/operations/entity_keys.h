// The keys of the objects that a user has before him, one or many, as rows; and their change, which
// is one step for all of them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gamedata/class_record.h"
#include "operations/edit_result.h"

namespace ferrowand {

class Map;
class entity;

// Bytes of a key or a value that every reader of maps takes.
inline constexpr std::size_t LONGEST_KEY_TEXT = 1024;

// The objects, but instead of a brush the entity that it is a part of. Each once.
std::vector<entity*> EntitiesOf(std::span<entity* const> objects);
// It has faces, or holds something that has.
bool HoldsBrushes(const entity& e);
// Of the faces of the objects and all below them, each name once, in the order of the alphabet.
std::vector<std::string> TexturesOf(std::span<entity* const> objects);

// What the class of the object tells of its keys; of the world also what every game has.
std::vector<KeyDefinition> KnownKeysOf(const entity& e);

struct KeyRow {
  std::string name;
  std::string value;          // of the first that has it; of none, what the game takes then
  bool isSet = false;         // some object has it
  bool isEverywhere = false;  // all have it
  bool differs = false;       // those that have it do not agree on the value
  std::optional<KeyDefinition> definition;  // where every class among the objects knows it
};

// The keys but "classname" and "XMPentityname", which a window shows by themselves.
class KeyRows {
 public:
  // Rows stay where they are for as long as it is shown for the same objects; new keys come behind.
  // At first they stand as the file has them, and behind them what is only known to the classes.
  void Show(std::span<entity* const> objects, bool withEditorKeys);
  const std::vector<KeyRow>& Rows() const { return rows_; }
  // The row of the one becomes that of the other.
  void Rename(std::string_view from, std::string_view to);

 private:
  std::vector<const entity*> objects_;
  std::vector<std::string> order_;  // names that were shown, gone or not
  std::vector<KeyRow> rows_;
};

// Whether a file can hold it.
EditResult CheckKeyName(std::string_view name);
EditResult CheckKeyValue(std::string_view value);

// Of all the objects, which are of the map. What has the key so already stays as it is; where the
// name stands in other letters it is replaced. A class is changed as by ChangeClass. Of an instance
// a scale is written for all three axes.
EditResult SetKeyOf(Map& map, std::span<entity* const> objects, std::string_view name,
                    std::string_view value);
// To the letter, where an object has it.
EditResult RenameKeyOf(Map& map, std::span<entity* const> objects, std::string_view from,
                       std::string_view to);
EditResult RemoveKeyOf(Map& map, std::span<entity* const> objects, std::string_view name);

}  // namespace ferrowand
