// What is selected in a map: an ordered list, the first of which is the reference for snapping.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <vector>

#include "document/entity.h"
#include "geometry/vec.h"

namespace ferrowand {

class Map;

// It announces its changes, and holds only what is in the map and can be reached (IsReachable):
// what leaves the map leaves it at once, what cannot be reached any more at the end of the step.
class Selection {
 public:
  explicit Selection(Map& map) : map_(map) {}
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  const std::vector<entity*>& Objects() const { return objects_; }
  auto begin() const { return objects_.begin(); }
  auto end() const { return objects_.end(); }
  std::size_t size() const { return objects_.size(); }
  bool empty() const { return objects_.empty(); }
  entity* front() const { return objects_.front(); }
  entity* operator[](std::size_t index) const { return objects_[index]; }
  friend bool operator==(const Selection& a, const std::vector<entity*>& b) {
    return a.objects_ == b;
  }
  // Of an object of this map.
  bool Contains(const entity& e) const { return e.isSelected_; }

  // Instead of what is selected; each object once, and only those that can be.
  void Set(std::span<entity* const> objects);
  void Set(std::initializer_list<entity*> objects) {
    Set(std::span(objects.begin(), objects.end()));
  }
  // Behind what is selected.
  void Add(std::span<entity* const> objects);
  void Add(entity& e);
  void Remove(const entity& e);
  void Clear();

  // --- for the map
  // What lies in the tree is not selected any more; what is in the map no more; what cannot be
  // reached.
  void Forget(const entity& tree);
  void ForgetStrangers();
  void DropUnreachable();
  // The bounds of what was selected at the last announcement, and of what is selected now.
  const Bounds& AnnouncedBounds() const { return announced_; }
  const Bounds& TakeBounds();

 private:
  void Append(entity& e);
  template <typename Leaves>
  void Drop(const Leaves& leaves);

  Map& map_;
  std::vector<entity*> objects_;
  Bounds announced_;
};

}  // namespace ferrowand
