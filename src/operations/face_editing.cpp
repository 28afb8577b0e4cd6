#include "operations/face_editing.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_set>

#include "base/report.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/face_texture.h"
#include "operations/texture_use.h"

namespace ferrowand {
namespace {

// Lays faces and remembers the worst.
class Laying {
 public:
  explicit Laying(EditStep& step) : step_(step) {}
  Laying(const Laying&) = delete;
  Laying& operator=(const Laying&) = delete;
  ~Laying() {
    if (worst_ > TOLD_MISS) step_.Remark(MissInWords(worst_));
  }

  void Lay(const PickedFace& face, const std::optional<Settled>& how) {
    if (!how) return;
    step_.ChangeKeys(*face.brush);
    Place(face.Get(), how->placement);
    worst_ = std::max(worst_, how->miss);
  }

 private:
  EditStep& step_;
  double worst_ = 0;
};

using Layout = std::function<std::optional<Settled>(const FaceGroup&)>;

void LayGroups(EditStep& step, std::span<const PickedFace> faces, bool asOne,
               const Layout& layout) {
  Laying laying(step);
  for (const FaceGroup& group : GroupsOf(faces, asOne)) {
    const std::optional<Settled> settled = layout(group);
    for (const PickedFace& face : group) laying.Lay(face, settled);
  }
}

bool HasShape(const PickedFace& face) {
  return face.Get().HasShape() && face.Get().plane.HasNormal();
}

void AddFacesOf(entity& e, std::vector<PickedFace>& faces) {
  for (int i = 0; i < e.brush.getNumFaces(); ++i) faces.push_back({&e, i});
}

void AddFacesBelow(entity& e, const ReachTest& reach, std::vector<PickedFace>& faces) {
  if (reach(e)) AddFacesOf(e, faces);
  for (const EntityPtr& child : e.getEntityList()) AddFacesBelow(*child, reach, faces);
}

std::vector<PickedFace> AllFaces(Map& map) {
  std::vector<PickedFace> faces;
  AddFacesBelow(map, ReachTest(map), faces);
  return faces;
}

std::vector<PickedFace> SelectedFaces(const Map& map) {
  std::vector<PickedFace> faces;
  const ReachTest reach(map);
  for (entity* root : SelectedRoots(map)) AddFacesBelow(*root, reach, faces);
  return faces;
}

// The planes of some faces, each once.
class Planes {
 public:
  void Add(const PickedFace& face) {
    if (HasShape(face) && !Has(face)) faces_.push_back(&face.Get());
  }
  bool Has(const PickedFace& face) const {
    return HasShape(face) && std::ranges::any_of(faces_, [&](const Face* known) {
             return AreInOnePlane(face.Get(), *known);
           });
  }

 private:
  std::vector<const Face*> faces_;
};

// What they have one by one, in common.
template <typename Key>
class Keys {
 public:
  explicit Keys(Key (*keyOf)(const PickedFace& face)) : keyOf_(keyOf) {}

  void Add(const PickedFace& face) { keys_.insert(keyOf_(face)); }
  bool Has(const PickedFace& face) const { return keys_.contains(keyOf_(face)); }

 private:
  Key (*keyOf_)(const PickedFace& face);
  std::unordered_set<Key> keys_;
};

// All that are like one that is picked.
template <typename Known>
void PickAlike(Map& map, Known known) {
  for (const PickedFace& face : map.pickedFaces) known.Add(face);
  std::vector<PickedFace> faces = AllFaces(map);
  std::erase_if(faces, [&](const PickedFace& face) { return !known.Has(face); });
  map.pickedFaces.Add(faces);
}

}  // namespace

std::vector<PickedFace> WithShape(std::span<const PickedFace> faces) {
  std::vector<PickedFace> shaped;
  std::ranges::copy_if(faces, std::back_inserter(shaped), HasShape);
  return shaped;
}

std::string MissInWords(double texels) {
  return Format("up to %.1f texels off", texels);
}

void ChangeFaces(EditStep& step, std::span<const PickedFace> faces, const FaceChange& change) {
  Laying laying(step);
  for (const PickedFace& face : WithShape(faces)) laying.Lay(face, change(face));
}

void FitFaces(EditStep& step, std::span<const PickedFace> faces, const FitHow& how, bool asOne) {
  LayGroups(step, WithShape(faces), asOne,
            [&](const FaceGroup& group) { return Fitted(group, how); });
}

void JustifyFaces(EditStep& step, std::span<const PickedFace> faces, FaceSide side, bool asOne) {
  LayGroups(step, WithShape(faces), asOne,
            [&](const FaceGroup& group) { return std::optional(Justified(group, side)); });
}

void GiveLook(EditStep& step, const PickedFace& face, std::string_view texture,
              const std::optional<TexturePlacement>& placement) {
  step.ChangeKeys(*face.brush);
  SetTexture(step.map(), face.Get(), texture);
  if (placement) Place(face.Get(), *placement);
}

FaceFacts FactsOf(std::span<const PickedFace> faces) {
  FaceFacts facts;
  if (faces.empty()) return facts;
  std::unordered_set<const entity*> brushes;
  const auto meet = [](auto& known, const auto& value) {
    if (known && *known != value) known.reset();
  };
  const auto at = [&facts](int field) -> std::optional<float>& {
    return facts.values[static_cast<std::size_t>(field)];
  };
  const auto valueOf = [](const PickedFace& face, int field) {
    TexturePlacement placement = PlacementOf(face.Get());
    return ValueOf(placement, static_cast<PlacementField>(field));
  };
  for (int i = 0; i < PLACEMENT_FIELDS; ++i) at(i) = valueOf(faces.front(), i);
  facts.texture = std::string(faces.front().Get().WrittenName());
  for (const PickedFace& face : faces) {
    brushes.insert(face.brush);
    for (int i = 0; i < PLACEMENT_FIELDS; ++i) meet(at(i), valueOf(face, i));
    meet(facts.texture, std::string(face.Get().WrittenName()));
  }
  facts.brushes = brushes.size();
  return facts;
}

std::vector<PickedFace> FacesOf(entity& brush) {
  std::vector<PickedFace> faces;
  AddFacesOf(brush, faces);
  return faces;
}

std::vector<PickedFace> FacesInQuestion(Map& map) {
  const std::vector<PickedFace> faces = SelectedFaces(map);
  return faces.empty() ? AllFaces(map) : faces;
}

void PickSelectedFaces(Map& map) {
  map.pickedFaces.Set(SelectedFaces(map));
}

void PickAllFaces(Map& map) {
  map.pickedFaces.Set(FacesInQuestion(map));
}

void InvertPickedFaces(Map& map) {
  std::vector<PickedFace> faces = FacesInQuestion(map);
  std::erase_if(faces, [&](const PickedFace& face) {
    return map.pickedFaces.Contains(*face.brush, face.face);
  });
  map.pickedFaces.Set(faces);
}

void PickMoreFaces(Map& map, PickMore which) {
  switch (which) {
    case PickMore::Brushes:
      return PickAlike(map, Keys<const entity*>([](const PickedFace& face) -> const entity* {
                         return face.brush;
                       }));
    case PickMore::Planes:
      return PickAlike(map, Planes());
    case PickMore::Textures:
      return PickAlike(map, Keys<std::string>([](const PickedFace& face) {
                         return TextureKey(face.Get().WrittenName());
                       }));
  }
}

}  // namespace ferrowand
