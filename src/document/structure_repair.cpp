#include "document/structure_repair.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "base/report.h"
#include "document/classes/class_set.h"
#include "document/map.h"
#include "document/read_log.h"
#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

// Classname and flags, which a new object has.
constexpr int KEYS_OF_A_BLANK = 2;

EntityKind KindOf(const entity& e) {
  return e.getClass()->Kind();
}

bool IsBlank(const entity& e) {
  return KindOf(e) == EntityKind::Brush && !e.brush.HasText() && e.numkeys() <= KEYS_OF_A_BLANK;
}

// Whether the faces close up: the areas of a solid, each along its normal, add up to nothing.
bool IsClosed(const Brush& brush) {
  DVec3 sum;
  double whole = 0;
  for (const Face& face : brush.Faces()) {
    if (!face.HasShape()) return false;
    const auto points = std::as_const(*face.w).Points();
    const DVec3 first(points[0].Position());
    for (std::size_t i = 2; i < points.size(); ++i) {
      const DVec3 area =
          Cross(DVec3(points[i - 1].Position()) - first, DVec3(points[i].Position()) - first);
      sum = sum + area;
      whole += std::sqrt(Dot(area, area));
    }
  }
  return std::sqrt(Dot(sum, sum)) < whole * 0.01;
}

// Pairs of opposite faces add up to nothing too, but have no end.
bool IsEndless(const Bounds& box) {
  for (int axis = 0; axis < 3; ++axis) {
    if (box.mins[axis] < 1 - BASE_SIZE || box.maxs[axis] > BASE_SIZE - 1) return true;
  }
  return false;
}

bool IsOpenBrush(const entity& e) {
  return KindOf(e) == EntityKind::Brush && e.brush.getNumFaces() > 0 &&
         (!IsClosed(e.brush) || IsEndless(e.brush.Box()));
}

entity* PreviousOf(const entity& object) {
  const entity& parent = *object.Parent();
  const std::size_t index = parent.IndexOf(object);
  return index == 0 ? nullptr : parent.getEntityList()[index - 1].get();
}

void InsertAt(entity& parent, std::size_t index, std::vector<EntityPtr> objects) {
  std::vector<std::size_t> places(objects.size());
  std::iota(places.begin(), places.end(), index);
  parent.InsertChildren(std::move(objects), places);
}

// A brace too many opened an object that is nothing but what lies in it.
void DissolveBlanks(entity& parent) {
  for (std::size_t i = 0; i < parent.getEntityList().size();) {
    entity& child = *parent.getEntityList()[i];
    if (!IsBlank(child) || child.getEntityList().empty()) {
      DissolveBlanks(child);
      ++i;
      continue;
    }
    ReplaceByChildren(parent, i);
  }
}

void LiftLayers(Map& map, entity& parent) {
  for (std::size_t i = 0; i < parent.getEntityList().size();) {
    entity& child = *parent.getEntityList()[i];
    LiftLayers(map, child);
    if (&parent != &map && KindOf(child) == EntityKind::Layer) {
      map.InsertChild(parent.TakeChild(i), map.getEntityList().size());
    } else {
      ++i;
    }
  }
}

// An object whose closing brace is missing has swallowed what follows: a point entity owns nothing,
// and a brush entity nothing but brushes.
void ReleaseSwallowed(entity& parent) {
  for (std::size_t i = 0; i < parent.getEntityList().size(); ++i) {
    entity& child = *parent.getEntityList()[i];
    if (KindOf(child) == EntityKind::Entity || KindOf(child) == EntityKind::Unknown) {
      const auto& below = child.getEntityList();
      const auto isOwn = [&](const EntityPtr& e) {
        return !child.HasOrigin() && KindOf(*e) == EntityKind::Brush;
      };
      const auto strange = std::ranges::find_if_not(below, isOwn);
      std::vector<std::size_t> places(static_cast<std::size_t>(below.end() - strange));
      std::iota(places.begin(), places.end(), below.size() - places.size());
      InsertAt(parent, i + 1, child.TakeChildren(places));
    }
    ReleaseSwallowed(child);
  }
}

// A layer that was closed too early gets back what followed it.
void FillLayers(Map& map) {
  entity* layer = nullptr;
  for (EntityPtr& child : map.TakeChildren()) {
    const bool isLayer = KindOf(*child) == EntityKind::Layer;
    entity& parent = isLayer || !layer ? map : *layer;
    entity* put = parent.InsertChild(std::move(child), parent.getEntityList().size());
    if (isLayer) layer = put;
  }
}

}  // namespace

void Join(entity& into, entity& from) {
  for (int i = 0; i < from.numkeys(); ++i) {
    const bool isDefault = (from.KeyName(i) == "classname" && from.KeyValue(i) == "brush") ||
                           from.KeyName(i) == "XMPferroflags";
    if (!isDefault) into.SetKey(from.KeyName(i), from.KeyValue(i));
  }
  for (const Face& face : from.brush.Faces()) into.brush.AddFace(CopyFace(face));
  for (const Face& face : from.brush.FarFaces()) into.brush.FarFaces().push_back(CopyFace(face));
  if (from.brush.getNumFaces() > 0) {
    SilentSink sink;
    Reporter silent(sink);
    into.brush.Rebuild(silent);
    into.brush.UpdateBounds();
    into.Touch();
  }
  for (EntityPtr& child : from.TakeChildren()) into.AddChild(std::move(child));
  from.Parent()->TakeChild(from.Parent()->IndexOf(from));
}

void JoinPrevious(entity& object) {
  entity* previous = PreviousOf(object);
  if (!previous) return;
  const bool hasKeys = object.numkeys() > KEYS_OF_A_BLANK;
  if (hasKeys || IsOpenBrush(*previous)) Join(*previous, object);
}

void MakeBrushOfFaces(entity& owner) {
  if (!owner.brush.HasText() || KindOf(owner) == EntityKind::Brush) return;
  auto made = std::make_unique<entity>(owner.getClass()->Set());
  std::swap(made->brush, owner.brush);
  owner.Touch();
  JoinPrevious(*owner.AddChild(std::move(made)));
}

void ReplaceByChildren(entity& parent, std::size_t index) {
  InsertAt(parent, index, parent.TakeChild(index)->TakeChildren());
}

void RepairStructure(Map& map, const ReadLog& log) {
  const bool isMissing = log.Met(Loss::MissingBrace) > 0;
  const bool isExtra = log.Met(Loss::ExtraBrace) > 0;
  if (!isMissing && !isExtra) return;
  const PointersKept kept(map);
  DissolveBlanks(map);
  LiftLayers(map, map);
  if (!log.isExtended) return;
  if (isMissing) ReleaseSwallowed(map);
  if (isExtra) FillLayers(map);
}

}  // namespace ferrowand
