#include "document/face_selection.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "document/map.h"

namespace ferrowand {

Face& PickedFace::Get() const {
  return brush->brush.face(face);
}

bool FaceSelection::Contains(const entity& brush, int face) const {
  const auto picks = picks_.find(&brush);
  return picks != picks_.end() && (picks->second.faces >> face & 1u) != 0;
}

// Those that are not picked yet and can be.
void FaceSelection::Append(std::span<const PickedFace> faces) {
  const ReachTest reach(map_);
  for (const PickedFace& face : faces) {
    const int count = face.brush->brush.getNumFaces();
    const bool isThere = face.face >= 0 && face.face < count;
    if (!isThere || Contains(*face.brush, face.face) || !reach(*face.brush)) continue;
    faces_.push_back(face);
    Picks& picks = picks_[face.brush];
    picks.faces |= 1u << face.face;
    picks.ofFaces = count;
  }
}

Bounds FaceSelection::Extent() const {
  Bounds box;
  for (const auto& [brush, picks] : picks_) box.Add(brush->brush.Box());
  return box;
}

void FaceSelection::Set(std::span<const PickedFace> faces) {
  ChangeScope scope(map_);
  const Bounds extent = Extent();
  const std::vector<PickedFace> before = std::exchange(faces_, {});
  picks_.clear();
  Append(faces);
  if (faces_ == before) return;
  scope.Change().faces = true;
  scope.Change().box.Add(extent);
  scope.Change().box.Add(Extent());
}

void FaceSelection::Add(std::span<const PickedFace> faces) {
  ChangeScope scope(map_);
  const std::size_t before = faces_.size();
  Append(faces);
  if (faces_.size() == before) return;
  scope.Change().faces = true;
  scope.Change().box.Add(Extent());
}

template <typename Leaves>
void FaceSelection::Drop(const Leaves& leaves) {
  if (std::ranges::none_of(faces_, leaves)) return;
  std::vector<PickedFace> rest = faces_;
  std::erase_if(rest, leaves);
  Set(rest);
}

void FaceSelection::Remove(std::span<const PickedFace> faces) {
  std::unordered_map<const entity*, std::uint32_t> gone;
  for (const PickedFace& face : faces) gone[face.brush] |= 1u << face.face;
  Drop([&](const PickedFace& face) {
    const auto found = gone.find(face.brush);
    return found != gone.end() && (found->second >> face.face & 1u) != 0;
  });
}

void FaceSelection::Forget(const entity& tree) {
  Drop([&](const PickedFace& face) { return face.brush->IsWithin(tree); });
}

void FaceSelection::ForgetStrangers() {
  Drop([this](const PickedFace& face) { return face.brush->OwningMap() != &map_; });
}

void FaceSelection::DropUnreachable() {
  const ReachTest reach(map_);
  std::unordered_set<const entity*> gone;
  for (const auto& [brush, picks] : picks_) {
    if (brush->brush.getNumFaces() != picks.ofFaces || !reach(*brush)) gone.insert(brush);
  }
  Drop([&](const PickedFace& face) { return gone.contains(face.brush); });
}

}  // namespace ferrowand
