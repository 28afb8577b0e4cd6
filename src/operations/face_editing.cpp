#include "operations/face_editing.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "base/report.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/face_texture.h"

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

bool Touch(const PickedFace& a, const PickedFace& b) {
  const Bounds &one = a.brush->brush.Box(), &other = b.brush->brush.Box();
  for (int axis = 0; axis < 3; ++axis) {
    if (one.mins[axis] > other.maxs[axis] + 1 || other.mins[axis] > one.maxs[axis] + 1)
      return false;
  }
  return true;
}

// What cannot be seen cannot be laid.
bool HasShape(const PickedFace& face) {
  return face.Get().HasShape() && face.Get().plane.HasNormal();
}

std::vector<PickedFace> WithShape(std::span<const PickedFace> faces) {
  std::vector<PickedFace> shaped;
  std::ranges::copy_if(faces, std::back_inserter(shaped), HasShape);
  return shaped;
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

// Planes by what of them is the same however they came about.
std::string NameOf(const Plane& plane) {
  constexpr double PARTS = 1e4;
  std::string name;
  for (const double part : {plane.normal.x, plane.normal.y, plane.normal.z}) {
    name += std::to_string(RoundToInt(part * PARTS)) + " ";
  }
  return name + std::to_string(RoundToInt(plane.dist));
}

}  // namespace

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

void WrapFaces(EditStep& step, std::span<const PickedFace> faces) {
  std::vector<PickedFace> left = WithShape(faces);
  if (left.empty()) return;
  Laying laying(step);
  std::deque<PickedFace> laid{left.front()};
  left.erase(left.begin());
  for (; !laid.empty() && !left.empty(); laid.pop_front()) {
    const PickedFace& from = laid.front();
    std::erase_if(left, [&](const PickedFace& face) {
      if (!Touch(from, face)) return false;
      const std::optional<Settled> settled = WrappedFrom(from.Get(), face.Get());
      if (!settled) return false;
      laying.Lay(face, settled);
      laid.push_back(face);
      return true;
    });
  }
  if (!left.empty()) {
    step.Remark(Format(left.size() == 1 ? "%u face shares no edge" : "%u faces share no edge",
                       static_cast<unsigned>(left.size())));
  }
}

void WrapAlong(EditStep& step, std::span<const PickedFace> faces) {
  Laying laying(step);
  for (std::size_t i = 1; i < faces.size(); ++i) {
    const Face& from = faces[i - 1].Get();
    if (!HasShape(faces[i - 1]) || !HasShape(faces[i])) continue;
    GiveLook(step, faces[i], from.WrittenName(), std::nullopt);
    laying.Lay(faces[i], WrappedFrom(from, faces[i].Get()));
  }
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
  const auto nameOf = [which](const PickedFace& face) {
    if (which == PickMore::Brushes) return Format("%p", static_cast<const void*>(face.brush));
    return which == PickMore::Planes ? NameOf(face.Get().plane)
                                     : std::string(face.Get().WrittenName());
  };
  std::unordered_set<std::string> names;
  for (const PickedFace& face : map.pickedFaces) names.insert(nameOf(face));
  std::vector<PickedFace> faces = AllFaces(map);
  std::erase_if(faces, [&](const PickedFace& face) { return !names.contains(nameOf(face)); });
  map.pickedFaces.Add(faces);
}

}  // namespace ferrowand
