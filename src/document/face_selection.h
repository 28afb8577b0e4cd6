// Which faces of a map are picked to be worked on one by one: an ordered list, the first of which
// is the one that others are laid to. Empty unless face edit is on: whoever ends that clears it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "document/brush.h"
#include "geometry/vec.h"

namespace ferrowand {

class Map;
class entity;

struct PickedFace {
  static constexpr int MIDDLE = -1;

  entity* brush = nullptr;  // the object whose brush has the face
  int face = 0;             // its index there
  int held = MIDDLE;        // the corner that stays when the texture is turned or scaled

  Face& Get() const;
  friend bool operator==(const PickedFace&, const PickedFace&) = default;
};

// It announces its changes. Of what leaves the map, cannot be reached any more, or has another
// number of faces by the end of a step nothing is picked.
class FaceSelection {
 public:
  explicit FaceSelection(Map& map) : map_(map) {}
  FaceSelection(const FaceSelection&) = delete;
  FaceSelection& operator=(const FaceSelection&) = delete;

  const std::vector<PickedFace>& Faces() const { return faces_; }
  auto begin() const { return faces_.begin(); }
  auto end() const { return faces_.end(); }
  std::size_t size() const { return faces_.size(); }
  bool empty() const { return faces_.empty(); }
  bool Contains(const entity& brush, int face) const;

  // Instead of what is picked; each face once, and only those that can be.
  void Set(std::span<const PickedFace> faces);
  // Behind what is picked.
  void Add(std::span<const PickedFace> faces);
  void Remove(std::span<const PickedFace> faces);
  void Clear() { Set({}); }

  // --- for the map
  void Forget(const entity& tree);
  void ForgetStrangers();
  void DropUnreachable();

 private:
  struct Picks {
    std::uint32_t faces = 0;  // a bit each
    int ofFaces = 0;          // that the brush had then
  };
  static_assert(MAXFACES <= 32);

  void Append(std::span<const PickedFace> faces);
  Bounds Extent() const;  // of the brushes
  template <typename Leaves>
  void Drop(const Leaves& leaves);

  Map& map_;
  std::vector<PickedFace> faces_;
  std::unordered_map<const entity*, Picks> picks_;
};

}  // namespace ferrowand
