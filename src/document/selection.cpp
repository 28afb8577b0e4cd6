#include "document/selection.h"

#include <algorithm>

#include "document/map.h"
#include "document/picking.h"

namespace ferrowand {

bool Selection::Append(entity& e) {
  if (!known_.insert(&e).second) return false;
  objects_.push_back(&e);
  return true;
}

void Selection::Set(std::span<entity* const> objects) {
  const std::vector<entity*> before = std::move(objects_);
  ChangeScope scope(map_);
  objects_.clear();
  known_.clear();
  objects_.reserve(objects.size());
  known_.reserve(objects.size());
  const ReachTest reach(map_);
  for (entity* e : objects) {
    if (reach(*e)) Append(*e);
  }
  if (objects_ != before) scope.Change().selection = true;
}

void Selection::Add(std::span<entity* const> objects) {
  ChangeScope scope(map_);
  const ReachTest reach(map_);
  for (entity* e : objects) {
    if (!known_.contains(e) && reach(*e)) scope.Change().selection |= Append(*e);
  }
}

void Selection::Add(entity& e) {
  entity* const one = &e;
  Add({&one, 1});
}

void Selection::Remove(const entity& e) {
  if (!known_.erase(&e)) return;
  ChangeScope scope(map_);
  std::erase(objects_, &e);
  scope.Change().selection = true;
}

void Selection::Clear() {
  Set(std::span<entity* const>());
}

template <typename Leaves>
void Selection::Drop(const Leaves& leaves) {
  if (std::ranges::none_of(objects_, leaves)) return;
  ChangeScope scope(map_);
  std::erase_if(objects_, leaves);
  known_ = {objects_.begin(), objects_.end()};
  scope.Change().selection = true;
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
