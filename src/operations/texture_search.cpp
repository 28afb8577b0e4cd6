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
  FoundFaces own;
  const Brush& brush = e.brush;
  for (int i = 0; i < brush.getNumFaces(); ++i) {
    if (test(brush.face(i))) own.faces.push_back({&e, i});
  }
  for (std::size_t i = 0; i < brush.FarFaces().size(); ++i) {
    if (test(brush.FarFaces()[i])) own.beyond.push_back({&e, i});
  }
  if (isReached) {
    std::ranges::copy(own.faces, std::back_inserter(found.faces));
    std::ranges::copy(own.beyond, std::back_inserter(found.beyond));
  } else {
    found.unreached += own.size();
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

Face& Get(const FarFace& at) {
  return at.brush->brush.FarFaces()[at.face];
}

// What each name becomes. Nothing where one of them could not be.
std::optional<std::unordered_map<std::string, std::string>> NewNames(const FoundFaces& found,
                                                                     const TextureQuery& query,
                                                                     const std::string& by) {
  std::unordered_map<std::string, std::string> names;
  const auto add = [&](const Face& face) {
    const auto [known, isNew] = names.try_emplace(std::string(face.WrittenName()));
    if (!isNew) return true;
    const auto made = NewName(query.name, by, face.WrittenName());
    if (made) known->second = *made;
    return made && IsTextureName(*made);
  };
  const bool worked =
      std::ranges::all_of(found.faces, [&](const PickedFace& at) { return add(at.Get()); }) &&
      std::ranges::all_of(found.beyond, [&](const FarFace& at) { return add(Get(at)); });
  return worked ? std::optional(std::move(names)) : std::nullopt;
}

// Gives faces their new names, and counts.
class Replacing {
 public:
  Replacing(EditStep& step, const std::unordered_map<std::string, std::string>& names,
            bool keepsLook, ReplaceCount& count)
      : step_(step), names_(names), keepsLook_(keepsLook), count_(count) {}

  // Whether the face has another one now.
  bool Give(entity& brush, Face& face) {
    const std::string& name = names_.at(std::string(face.WrittenName()));
    if (face.WrittenName() == name) return false;
    step_.ChangeKeys(brush);
    if (keepsLook_) {
      SetTextureKeepingLook(step_.map(), face, name);
    } else {
      SetTexture(step_.map(), face, name);
    }
    const bool isTold = std::ranges::find(count_.missing, name) != count_.missing.end();
    if (!HasTexture(face) && !isTold) count_.missing.push_back(name);
    return true;
  }

 private:
  EditStep& step_;
  const std::unordered_map<std::string, std::string>& names_;
  const bool keepsLook_;
  ReplaceCount& count_;
};

}  // namespace

std::vector<entity*> FoundFaces::Brushes() const {
  std::vector<entity*> brushes;
  std::unordered_set<const entity*> known;
  const auto add = [&](entity* brush) {
    if (known.insert(brush).second) brushes.push_back(brush);
  };
  for (const PickedFace& at : faces) add(at.brush);
  for (const FarFace& at : beyond) add(at.brush);
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
  if (found.empty()) return EditResult::NothingSelected;
  const auto names = NewNames(found, query, by.name);
  if (!names) return EditResult::NotATextureName;
  EditStep step(map);
  Replacing replacing(step, *names, by.keepsLook, count);
  FoundFaces changed;
  std::ranges::copy_if(found.faces, std::back_inserter(changed.faces),
                       [&](const PickedFace& at) { return replacing.Give(*at.brush, at.Get()); });
  std::ranges::copy_if(found.beyond, std::back_inserter(changed.beyond),
                       [&](const FarFace& at) { return replacing.Give(*at.brush, Get(at)); });
  const std::vector<entity*> brushes = changed.Brushes();
  count.faces = changed.size();
  count.brushes = brushes.size();
  if (!brushes.empty()) SelectFound(map, changed, as);
  return EditResult::Done;
}

}  // namespace ferrowand
