#include "document/selection.h"

#include <algorithm>

#include "document/map.h"
#include "document/picking.h"

namespace ferrowand {

void Selection::Append(entity& e) {
  objects_.push_back(&e);
  e.isSelected_ = true;
}

void Selection::Set(std::span<entity* const> objects) {
  const std::vector<entity*> before = std::move(objects_);
  ChangeScope scope(map_);
  for (entity* e : before) e->isSelected_ = false;
  objects_.clear();
  objects_.reserve(objects.size());
  const ReachTest reach(map_);
  for (entity* e : objects) {
    if (!Contains(*e) && reach(*e)) Append(*e);
  }
  if (objects_ != before) scope.Change().selection = true;
}

void Selection::Add(std::span<entity* const> objects) {
  ChangeScope scope(map_);
  const ReachTest reach(map_);
  for (entity* e : objects) {
    if (Contains(*e) || !reach(*e)) continue;
    Append(*e);
    scope.Change().selection = true;
  }
}

void Selection::Add(entity& e) {
  entity* const one = &e;
  Add({&one, 1});
}

template <typename Leaves>
void Selection::Drop(const Leaves& leaves) {
  if (std::ranges::none_of(objects_, leaves)) return;
  ChangeScope scope(map_);
  std::erase_if(objects_, [&](entity* e) {
    if (!leaves(e)) return false;
    e->isSelected_ = false;
    return true;
  });
  scope.Change().selection = true;
}

void Selection::Remove(const entity& e) {
  if (Contains(e)) Drop([&](const entity* object) { return object == &e; });
}

void Selection::Clear() {
  Set(std::span<entity* const>());
}

void Selection::Forget(const entity& tree) {
  Drop([&](const entity* e) { return e->IsWithin(tree); });
}

void Selection::ForgetStrangers() {
  Drop([this](const entity* e) { return e->OwningMap() != &map_; });
}

void Selection::DropUnreachable() {
  const ReachTest reach(map_);
  Drop([&](const entity* e) { return !reach(*e); });
}

const Bounds& Selection::TakeBounds() {
  announced_ = Bounds();
  for (const entity* e : objects_) AddExtent(*e, announced_);
  return announced_;
}

}  // namespace ferrowand
