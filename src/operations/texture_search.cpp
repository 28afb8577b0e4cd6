#include "operations/texture_search.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/path_text.h"
#include "base/text_pattern.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/face_texture.h"
#include "operations/texture_settling.h"
#include "operations/texture_use.h"

namespace ferrowand {
namespace {

bool IsWildcard(char c) {
  return c == '*' || c == '?';
}

// Whether faces have what is looked for, worked out once for each name.
class FaceTest {
 public:
  explicit FaceTest(const TextureQuery& query)
      : pattern_(query.name, PatternRule::Whole),
        isNameless_(query.name == NO_TEXTURE_NAME),
        onlyMissing_(query.onlyMissing) {}

  bool operator()(const Face& face) {
    if (onlyMissing_ && HasTexture(face)) return false;
    const std::string_view name = face.WrittenName();
    if (isNameless_ || pattern_.IsEmpty()) return isNameless_ && name.empty();
    const auto [known, isNew] = known_.try_emplace(std::string(name));
    if (isNew) known->second = pattern_.Matches(name);
    return known->second;
  }

 private:
  TextPattern pattern_;
  bool isNameless_, onlyMissing_;
  std::unordered_map<std::string, bool> known_;
};

template <typename Test>
void Collect(entity& e, bool isReached, Test& test, FoundFaces& found) {
  isReached = isReached && IsOpen(e);
  for (int i = 0; i < e.brush.getNumFaces(); ++i) {
    if (!test(std::as_const(e.brush).face(i))) continue;
    if (isReached) {
      found.faces.push_back({&e, i});
    } else {
      ++found.unreached;
    }
  }
  for (const EntityPtr& child : e.getEntityList()) Collect(*child, isReached, test, found);
}

// What each wildcard of the pattern stands for; nothing where it does not match.
bool MatchParts(std::string_view pattern, std::string_view text,
                std::vector<std::string_view>& parts) {
  if (pattern.empty()) return text.empty();
  const auto rest = pattern.substr(1);
  if (pattern[0] == '*') {
    for (std::size_t taken = 0; taken <= text.size(); ++taken) {
      parts.push_back(text.substr(0, taken));
      if (MatchParts(rest, text.substr(taken), parts)) return true;
      parts.pop_back();
    }
    return false;
  }
  if (text.empty()) return false;
  if (pattern[0] != '?') {
    return EqualNoCase(pattern.substr(0, 1), text.substr(0, 1)) &&
           MatchParts(rest, text.substr(1), parts);
  }
  parts.push_back(text.substr(0, 1));
  if (MatchParts(rest, text.substr(1), parts)) return true;
  parts.pop_back();
  return false;
}

// Nothing where the replacement has a wildcard of which there is no part.
std::optional<std::string> NewName(std::string_view pattern, std::string_view by,
                                   std::string_view name) {
  std::vector<std::string_view> parts;
  if (std::ranges::any_of(by, IsWildcard) && !MatchParts(pattern, name, parts)) return std::nullopt;
  std::string made;
  auto part = parts.begin();
  for (const char c : by) {
    if (!IsWildcard(c)) {
      made += c;
    } else if (part == parts.end()) {
      return std::nullopt;
    } else {
      made += *part++;
    }
  }
  return made;
}

// Scales follow the sizes, and the picture is held at the corners of the face as far as a file
// holds that.
void SetTextureKeepingLook(const Map& map, Face& face, const std::string& name) {
  const Texture* const old = HasTexture(face) && face.HasShape() ? face.texture : nullptr;
  TexelMap wanted = old ? TexelMapOf(face) : TexelMap();
  SetTexture(map, face, name);
  if (!old || !HasTexture(face)) return;
  const Texture& texture = *face.texture;
  if (texture.width == old->width && texture.height == old->height) return;
  const double wider = static_cast<double>(texture.width) / old->width;
  const double higher = static_cast<double>(texture.height) / old->height;
  wanted.texels = {wanted.texels.s * wider, wanted.texels.t * higher};
  wanted.s = wanted.s * wider;
  wanted.t = wanted.t * higher;
  const auto turn = static_cast<int>(PlacementOf(face).rotation);
  if (const auto settled = SettleTurned(face, wanted, turn, HeldCorners(face))) {
    Place(face, settled->placement);
  }
}

// What each name becomes. Nothing where one of them could not be.
std::optional<std::unordered_map<std::string, std::string>> NewNames(const FoundFaces& found,
                                                                     const TextureQuery& query,
                                                                     const std::string& by) {
  std::unordered_map<std::string, std::string> names;
  for (const PickedFace& at : found.faces) {
    const std::string_view old = std::as_const(at.brush->brush).face(at.face).WrittenName();
    const auto [known, isNew] = names.try_emplace(std::string(old));
    if (!isNew) continue;
    const auto made = NewName(query.name, by, old);
    if (!made || !IsTextureName(*made)) return std::nullopt;
    known->second = *made;
  }
  return names;
}

}  // namespace

std::vector<entity*> FoundFaces::Brushes() const {
  std::vector<entity*> brushes;
  std::unordered_set<const entity*> known;
  for (const PickedFace& at : faces) {
    if (known.insert(at.brush).second) brushes.push_back(at.brush);
  }
  return brushes;
}

FoundFaces FindFaces(Map& map, const TextureQuery& query, TextureScope scope) {
  FoundFaces found;
  FaceTest test(query);
  if (scope == TextureScope::Map) {
    Collect(map, true, test, found);
  } else if (scope == TextureScope::Layer) {
    if (map.currentLayer()) Collect(*map.currentLayer(), true, test, found);
  } else if (!map.pickedFaces.empty()) {
    std::ranges::copy_if(map.pickedFaces.Faces(), std::back_inserter(found.faces),
                         [&test](const PickedFace& at) { return test(at.Get()); });
  } else {
    for (entity* object : SelectedRoots(map)) Collect(*object, true, test, found);
  }
  return found;
}

FoundFaces FacesWith(Map& map, const std::vector<std::string>& names) {
  FoundFaces found;
  std::unordered_set<std::string> keys;
  for (const std::string& name : names) keys.insert(TextureKey(name));
  const auto test = [&keys](const Face& face) {
    return keys.contains(TextureKey(face.WrittenName()));
  };
  Collect(map, true, test, found);
  return found;
}

void SelectFound(Map& map, const FoundFaces& found, FoundAs as) {
  if (as == FoundAs::Faces) {
    map.pickedFaces.Set(found.faces);
  } else {
    Select(map, found.Brushes(), false);
  }
}

EditResult ReplaceTextures(Map& map, const FoundFaces& found, const TextureQuery& query,
                           const TextureReplacement& by, FoundAs as, ReplaceCount& count) {
  count = {};
  if (found.faces.empty()) return EditResult::NothingSelected;
  const auto names = NewNames(found, query, by.name);
  if (!names) return EditResult::NotATextureName;
  FoundFaces changed;
  {
    EditStep step(map);
    for (const PickedFace& at : found.faces) {
      Face& face = at.brush->brush.face(at.face);
      const std::string& name = names->at(std::string(face.WrittenName()));
      if (face.WrittenName() == name) continue;
      step.ChangeKeys(*at.brush);
      if (by.keepsLook) {
        SetTextureKeepingLook(map, face, name);
      } else {
        SetTexture(map, face, name);
      }
      const bool isKnown =
          HasTexture(face) || std::ranges::find(count.missing, name) != count.missing.end();
      if (!isKnown) count.missing.push_back(name);
      changed.faces.push_back(at);
    }
    const std::vector<entity*> brushes = changed.Brushes();
    count.faces = changed.faces.size();
    count.brushes = brushes.size();
    if (!brushes.empty()) SelectFound(map, changed, as);
  }
  return EditResult::Done;
}

}  // namespace ferrowand
