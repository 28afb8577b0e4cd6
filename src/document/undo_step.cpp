#include "document/undo_step.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/map.h"

namespace ferrowand {
namespace {

// The places of the objects among the parent's children, ascending.
std::vector<std::size_t> PlacesOf(const entity& parent, const std::vector<entity*>& objects) {
  constexpr std::size_t FEW = 16;  // a search for each is cheaper than a walk over all
  const auto& children = parent.getEntityList();
  std::vector<std::size_t> places;
  places.reserve(objects.size());
  if (objects.size() < FEW) {
    for (const entity* object : objects) places.push_back(parent.IndexOf(*object));
    std::ranges::sort(places);
    while (!places.empty() && places.back() == children.size()) places.pop_back();
    return places;
  }
  const std::unordered_set<const entity*> wanted(objects.begin(), objects.end());
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (wanted.contains(children[i].get())) places.push_back(i);
  }
  return places;
}

// The object alone.
void Rebind(entity& e, const Map& map) {
  e.brush.ResolveTextures(map.wads);
  const char* classname = e.GetKey("classname");
  e.SetClass(&map.classSet->FindClass(classname ? classname : "unknown"));
}

void RebindTree(entity& e, const Map& map) {
  Rebind(e, map);
  for (const EntityPtr& child : e.getEntityList()) RebindTree(*child, map);
}

TextureOffsets OffsetsOf(const Brush& brush) {
  TextureOffsets offsets;
  for (const Face& face : brush.Faces()) offsets.emplace_back(face.xoff, face.yoff);
  return offsets;
}

bool HasSameOffsets(const Brush& a, const Brush& b) {
  return std::ranges::equal(a.Faces(), b.Faces(), [](const Face& one, const Face& other) {
    return one.xoff == other.xoff && one.yoff == other.yoff;
  });
}

// With the offsets that its faces have there, if these change; they are what it had then. In front:
// a brush that moves places its textures anew.
template <typename Place>
void Go(Brush& brush, const Vec3& by, Place place, bool changesOffsets) {
  for (int i = 0; changesOffsets && i < brush.getNumFaces(); ++i, ++place) {
    std::swap(brush.face(i).xoff, place->first);
    std::swap(brush.face(i).yoff, place->second);
  }
  brush.Translate(by);
}

bool IsWhole(const Vec3& by) {
  return by.x == std::round(by.x) && by.y == std::round(by.y) && by.z == std::round(by.z);
}

struct Way {
  Vec3 by;
  TextureOffsets offsets;  // none where they stay
};

// What a plain brush is to be moved by to be to the letter what it was; none when it was more than
// moved, or rounding would leave a trace.
std::optional<Way> WayBack(const entity& is, const entity& was) {
  const Brush &there = is.brush, &here = was.brush;
  if (there.getNumFaces() == 0 || there.getNumFaces() != here.getNumFaces()) return std::nullopt;
  if (is.HasOrigin() || !is.HasSameKeys(was)) return std::nullopt;
  const Vec3 back = here.Box().mins - there.Box().mins;
  if (!IsWhole(back) || back == Vec3()) return std::nullopt;
  if (HasSameOffsets(here, there))
    return here.IsMoved(there, back) ? std::optional(Way{back, {}}) : std::nullopt;
  TextureOffsets offsets = OffsetsOf(here);
  Brush brush = there.Copy();
  Go(brush, back, offsets.begin(), true);
  if (!IsSame(brush, here)) return std::nullopt;
  Go(brush, -back, offsets.begin(), true);
  if (!IsSame(brush, there)) return std::nullopt;
  return Way{back, OffsetsOf(here)};
}

}  // namespace

UndoStep::UndoStep(Map& map)
    : map_(&map), otherLayer_(map.currentLayer()), otherLeading_(map.leadingGroup()) {}

// Textures that stayed where they were in the world need no offsets.
void UndoStep::DropSameOffsets(Shift& shift) {
  auto offset = shift.offsets.begin();
  for (const entity* object : shift.objects) {
    for (const Face& face : object->brush.Faces()) {
      if (*offset++ != std::pair(face.xoff, face.yoff)) return;
    }
  }
  shift.offsets.clear();
}

void UndoStep::Finish() {
  if (otherClasses_ == map_->classSetName) otherClasses_.reset();
  if (otherWads_ == map_->wads.ItemNames()) otherWads_.reset();
  layer_ = map_->currentLayer();
  leading_ = map_->leadingGroup();
  std::vector<Shift> shifts;
  std::erase_if(records_, [&](auto& record) {
    if (auto* shift = std::get_if<Shift>(&record)) DropSameOffsets(*shift);
    const auto* contents = std::get_if<Contents>(&record);
    if (!contents) return false;
    entity &object = *contents->object, &before = *contents->other;
    if (object.IsSameInAnyOrder(before)) {
      // A key that was given anew what it was has gone to the end.
      object.SwapContents(before);
      return true;
    }
    const auto way = WayBack(object, before);
    if (!way) return false;
    if (shifts.empty() || shifts.back().back != way->by ||
        shifts.back().offsets.empty() != way->offsets.empty()) {
      shifts.push_back({{}, way->by, {}});
    }
    shifts.back().objects.push_back(contents->object);
    std::ranges::copy(way->offsets, std::back_inserter(shifts.back().offsets));
    return true;
  });
  // In front: whatever else was done to these objects was done to them wherever they stood.
  records_.insert(records_.begin(), std::make_move_iterator(shifts.begin()),
                  std::make_move_iterator(shifts.end()));
}

std::uint64_t UndoStep::Bytes() const {
  std::uint64_t bytes = records_.size() * sizeof(records_.front());
  for (const auto& record : records_) {
    if (const auto* contents = std::get_if<Contents>(&record)) {
      bytes += contents->other->Bytes();
    } else if (const auto* shift = std::get_if<Shift>(&record)) {
      bytes += std::span(shift->objects).size_bytes() + std::span(shift->offsets).size_bytes();
    } else {
      const auto& transfer = std::get<Transfer>(record);
      bytes += std::span(transfer.objects).size_bytes();
      bytes += std::span(transfer.otherPlaces).size_bytes();
      for (const EntityPtr& kept : transfer.kept) {
        ForEachEntity(*kept, [&](const entity& e) { bytes += e.Bytes(); });
      }
    }
  }
  return bytes;
}

void UndoStep::NoteExtent(const entity& e) {
  if (&e == map_) {
    worldChanges_ = true;
  } else if (e.OwningMap() == map_) {
    AddExtent(e, extent_);
  }
}

void UndoStep::NoteExtents() {
  for (const auto& record : records_) {
    if (const auto* contents = std::get_if<Contents>(&record)) {
      NoteExtent(*contents->object);
    } else if (const auto* shift = std::get_if<Shift>(&record)) {
      for (const entity* object : shift->objects) NoteExtent(*object);
    } else {
      for (const entity* object : std::get<Transfer>(record).objects) NoteExtent(*object);
    }
  }
}

void UndoStep::Keep(entity& e) {
  NoteExtent(e);
  records_.push_back(Contents{&e, e.CopyAlone()});
}

bool UndoStep::KeepWay(entity& e, const Vec3& by) {
  const bool isPlain = e.brush.getNumFaces() > 0 && !e.HasOrigin();
  if (!isPlain || !IsWhole(by) || !e.brush.CanMove(by)) return false;
  NoteExtent(e);
  auto* last = records_.empty() ? nullptr : std::get_if<Shift>(&records_.back());
  if (!last || last->back != -by) {
    records_.push_back(Shift{{}, -by, {}});
    last = &std::get<Shift>(records_.back());
  }
  last->objects.push_back(&e);
  for (const Face& face : e.brush.Faces()) last->offsets.emplace_back(face.xoff, face.yoff);
  return true;
}

void UndoStep::Added(entity& e) {
  // One record for all that come to the same parent in a row.
  auto* last = records_.empty() ? nullptr : std::get_if<Transfer>(&records_.back());
  if (!last || last->otherParent || last->parent != e.Parent()) {
    records_.push_back(Transfer{e.Parent(), nullptr, {}, {}, {}});
    last = &std::get<Transfer>(records_.back());
  }
  last->objects.push_back(&e);
}

void UndoStep::Move(std::span<entity* const> objects, entity* parent) {
  const PointersKept kept(*map_);
  std::vector<std::vector<entity*>> families;
  std::unordered_map<const entity*, std::size_t> familyOf;
  for (entity* object : objects) {
    NoteExtent(*object);
    const auto [found, isNew] = familyOf.try_emplace(object->Parent(), families.size());
    if (isNew) families.emplace_back();
    families[found->second].push_back(object);
  }
  for (const std::vector<entity*>& family : families) {
    entity& from = *family.front()->Parent();
    MoveFrom(from, family, parent);
  }
}

void UndoStep::MoveFrom(entity& from, const std::vector<entity*>& objects, entity* to) {
  Transfer transfer{to, &from, {}, PlacesOf(from, objects), {}};
  std::vector<EntityPtr> taken = from.TakeChildren(transfer.otherPlaces);
  transfer.objects.reserve(taken.size());
  for (EntityPtr& object : taken) {
    transfer.objects.push_back(object.get());
    if (to) to->InsertChild(std::move(object), to->getEntityList().size());
  }
  if (!to) transfer.kept = std::move(taken);
  records_.push_back(std::move(transfer));
}

void UndoStep::Exchange(Contents& contents) {
  contents.object->SwapContents(*contents.other);
  Rebind(*contents.object, *map_);
}

void UndoStep::Exchange(Shift& shift) {
  auto offset = shift.offsets.begin();
  for (entity* object : shift.objects) {
    Brush& brush = object->brush;
    Go(brush, shift.back, offset, !shift.offsets.empty());
    if (!shift.offsets.empty()) offset += brush.getNumFaces();
    object->Touch();
  }
  shift.back = -shift.back;
}

void UndoStep::Exchange(Transfer& transfer) {
  std::vector<EntityPtr> taken = std::move(transfer.kept);
  std::vector<std::size_t> places;
  if (transfer.parent) {
    places = PlacesOf(*transfer.parent, transfer.objects);
    taken = transfer.parent->TakeChildren(places);
  }
  transfer.kept.clear();
  if (transfer.otherParent) {
    if (!transfer.parent) {
      for (const EntityPtr& object : taken) RebindTree(*object, *map_);
    }
    transfer.otherParent->InsertChildren(std::move(taken), transfer.otherPlaces);
  } else {
    transfer.kept = std::move(taken);
  }
  std::swap(transfer.parent, transfer.otherParent);
  transfer.otherPlaces = std::move(places);
}

void UndoStep::ChooseClasses(const std::string& name) {
  if (!otherClasses_) otherClasses_ = map_->classSetName;
  map_->UseClasses(name);
}

void UndoStep::ChooseWads(const std::vector<std::string>& names) {
  if (!otherWads_) otherWads_ = map_->wads.ItemNames();
  map_->UseWads(names);
}

void UndoStep::Reverse() {
  // What the user has chosen since stays.
  const bool changesLayer = layer_ != otherLayer_ && map_->currentLayer() == layer_;
  const bool changesLeading = leading_ != otherLeading_ && map_->leadingGroup() == leading_;
  NoteExtents();
  {
    const PointersKept kept(*map_);
    std::ranges::reverse(records_);
    for (auto& record : records_) {
      std::visit([this](auto& change) { Exchange(change); }, record);
    }
  }
  if (otherClasses_) {
    const std::string now = map_->classSetName;
    map_->UseClasses(*otherClasses_);
    otherClasses_ = now;
  }
  if (otherWads_) {
    std::vector<std::string> now = map_->wads.ItemNames();
    map_->UseWads(*otherWads_);
    otherWads_ = std::move(now);
  }
  if (changesLayer) map_->SetCurrentLayer(otherLayer_);
  if (changesLeading) map_->SetLeadingGroup(otherLeading_);
  std::swap(layer_, otherLayer_);
  std::swap(leading_, otherLeading_);
}

void UndoStep::ReverseAndAnnounce(const char* way) {
  ChangeScope scope(*map_);
  Reverse();
  Describe(scope.Change());
  scope.Change().done = name.empty() ? way : way + (" " + name);
}

void UndoStep::Describe(MapChange& change) {
  NoteExtents();
  change.box.Add(std::exchange(extent_, {}));
  change.everything |= std::exchange(worldChanges_, false);
  for (const auto& record : records_) {
    if (const auto* contents = std::get_if<Contents>(&record)) {
      if (contents->object->OwningMap() != map_) continue;
      change.changed.push_back(contents->object);
      change.before.push_back(contents->other.get());
    } else if (const auto* shift = std::get_if<Shift>(&record)) {
      std::ranges::copy_if(shift->objects, std::back_inserter(change.changed),
                           [this](const entity* e) { return e->OwningMap() == map_; });
    }
  }
  DescribeTransfers(change);
}

// An object may have come, moved on and gone: where it was at first and where it is at last counts.
void UndoStep::DescribeTransfers(MapChange& change) const {
  std::unordered_set<const entity*> seen;
  for (const auto& record : records_) {
    const auto* transfer = std::get_if<Transfer>(&record);
    if (!transfer) continue;
    for (const entity* object : transfer->objects) {
      if (!seen.insert(object).second) continue;
      const bool was = transfer->otherParent != nullptr;
      const bool is = object->OwningMap() == map_;
      if (was && is) change.moved.push_back(object);
      if (was && !is) change.went.push_back(object);
      if (!was && is) change.came.push_back(object);
    }
  }
}

}  // namespace ferrowand
