#include "support/damage.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "document/classes/entity_class.h"

namespace ferrowand {
namespace {

std::uint64_t HashOf(std::string_view text) {
  return std::hash<std::string_view>()(text);
}

std::uint64_t KeysOf(const entity& e) {
  std::uint64_t sum = 1;
  for (int i = 0; i < e.numkeys(); ++i) {
    if (IsEditorKey(e.KeyName(i))) continue;
    sum += HashOf(e.KeyName(i) + '\n' + e.KeyValue(i));
  }
  return sum;
}

std::uint64_t FacesOf(const Brush& brush) {
  std::uint64_t sum = 2;
  for (const Face& face : brush.Faces()) {
    std::string text(face.WrittenName());
    for (const Vec3& p : face.planepts) {
      for (int axis = 0; axis < 3; ++axis) text += ' ' + std::to_string(p[axis]);
    }
    for (const float number : {face.xoff, face.yoff, face.rotation, face.xscale, face.yscale}) {
      text += ' ' + std::to_string(number);
    }
    sum += HashOf(text);
  }
  return sum;
}

}  // namespace

Objects::Objects(const Map& map) {
  Add(map, &map);
}

// What only holds others is none that could be lost.
void Objects::Add(const entity& e, Owner owner) {
  const EntityKind kind = e.getClass()->Kind();
  const bool isOwner = kind == EntityKind::Entity || kind == EntityKind::Unknown;
  if (isOwner || !e.Parent()) owners_.emplace(KeysOf(e), owner);
  if (isOwner) owner = &e;
  if (e.brush.getNumFaces() > 0) {
    const std::uint64_t faces = FacesOf(e.brush);
    owners_.emplace(faces, owner);
    brushes_[owner].push_back(faces);
  }
  for (const EntityPtr& child : e.getEntityList()) Add(*child, owner);
}

std::size_t Objects::LostIn(const Objects& others) const {
  std::unordered_map<std::uint64_t, std::size_t> left;
  for (const auto& [object, owner] : others.owners_) ++left[object];
  std::size_t lost = 0;
  for (const auto& [object, owner] : owners_) {
    std::size_t& found = left[object];
    if (found > 0) {
      --found;
    } else {
      ++lost;
    }
  }
  return lost;
}

std::size_t Objects::ScatteredIn(const Objects& others) const {
  std::size_t scattered = 0;
  for (const auto& [owner, brushes] : brushes_) {
    std::unordered_map<Owner, std::size_t> found;
    std::size_t all = 0, most = 0;
    for (const std::uint64_t brush : brushes) {
      const auto [first, last] = others.owners_.equal_range(brush);
      if (first == last) continue;
      ++all;
      for (auto it = first; it != last; ++it) most = std::max(most, ++found[it->second]);
    }
    scattered += all - std::min(most, all);
  }
  return scattered;
}

Boxes::Boxes(const MessageRecorder& recorder) {
  std::map<std::string, std::size_t> kinds;
  for (const Message& message : recorder.messages) {
    if (message.text.find("Not all of this file could be read") != std::string::npos) {
      ++summaries;
    } else {
      mostOfAKind = std::max(mostOfAKind, ++kinds[message.title + message.text.substr(0, 20)]);
    }
  }
}

}  // namespace ferrowand
