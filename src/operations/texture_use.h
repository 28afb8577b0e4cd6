// Which textures the faces of a map have, and how many have each.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ferrowand {

class Map;

// Of names that are one texture to the WADs: in capitals or not.
std::string TextureKey(std::string_view name);

struct TextureUse {
  std::string name{};      // as the first such face has it; empty for faces without one
  unsigned faces = 0;      // hidden and disabled ones too
  unsigned brushes = 0;    // that these belong to
  bool isMissing = false;  // no WAD of the map has it

  friend bool operator==(const TextureUse&, const TextureUse&) = default;
};

// One walk over the map: to be made anew after its faces or WADs have changed, which costs less
// than to follow each change.
class TextureUses {
 public:
  TextureUses() = default;  // of no map
  explicit TextureUses(const Map& map);

  // None for what no face has.
  const TextureUse& Of(std::string_view name) const;
  // In the order of their names.
  std::vector<const TextureUse*> Missing() const;

 private:
  std::unordered_map<std::string, TextureUse> byName_;
};

// What a user reads of it: "12 faces of 5 brushes", "not used".
std::string InWords(const TextureUse& use);
// The name, or what stands for none.
std::string ShownTextureName(std::string_view name);

}  // namespace ferrowand
