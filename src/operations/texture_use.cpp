#include "operations/texture_use.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "base/report.h"
#include "base/text_parts.h"
#include "document/map.h"
#include "operations/face_texture.h"

namespace ferrowand {
namespace {

// Faces in a row often have the same texture: it is looked up once.
class Counter {
 public:
  explicit Counter(std::unordered_map<std::string, TextureUse>& byName) : byName_(byName) {}

  void Count(const entity& e) {
    if (e.brush.HasText()) ++brush_;
    for (const Face& face : e.brush.Faces()) Count(face);
    for (const Face& face : e.brush.FarFaces()) Count(face);
    for (const EntityPtr& child : e.getEntityList()) Count(*child);
  }

 private:
  struct Last {
    std::string_view name;
    std::size_t brush = 0;
    TextureUse* use = nullptr;
  };

  void Count(const Face& face) {
    const std::string_view name = face.WrittenName();
    if (!last_.use || last_.name != name) last_ = {name, 0, &UseOf(face)};
    ++last_.use->faces;
    if (last_.brush == brush_) return;
    last_.brush = brush_;
    if (std::exchange(lastBrush_[last_.use], brush_) != brush_) ++last_.use->brushes;
  }

  TextureUse& UseOf(const Face& face) {
    const auto [found, isNew] = byName_.try_emplace(TextureKey(face.WrittenName()));
    if (isNew) {
      found->second.name = face.WrittenName();
      found->second.isMissing = !HasTexture(face);
    }
    return found->second;
  }

  std::unordered_map<std::string, TextureUse>& byName_;
  std::unordered_map<const TextureUse*, std::size_t> lastBrush_;
  Last last_;
  std::size_t brush_ = 0;
};

}  // namespace

std::string TextureKey(std::string_view name) {
  return LowerCase(name);
}

TextureUses::TextureUses(const Map& map) {
  Counter(byName_).Count(map);
}

const TextureUse& TextureUses::Of(std::string_view name) const {
  static const TextureUse NONE;
  const auto found = byName_.find(TextureKey(name));
  return found == byName_.end() ? NONE : found->second;
}

std::vector<const TextureUse*> TextureUses::Missing() const {
  std::vector<const TextureUse*> missing;
  for (const auto& [key, use] : byName_) {
    if (use.isMissing) missing.push_back(&use);
  }
  std::ranges::sort(missing, [](const TextureUse* a, const TextureUse* b) {
    return CompareNoCase(a->name, b->name) < 0;
  });
  return missing;
}

std::string InWords(const TextureUse& use) {
  if (use.faces == 0) return "not used";
  return Format("%u %s of %u %s", use.faces, use.faces == 1 ? "face" : "faces", use.brushes,
                use.brushes == 1 ? "brush" : "brushes");
}

std::string ShownTextureName(std::string_view name) {
  return name.empty() ? "(no name)" : std::string(name);
}

}  // namespace ferrowand
