#include "operations/running_check.h"

#include <algorithm>

#include "document/classes/special_classes.h"
#include "document/map.h"

namespace ferrowand {
namespace {

template <typename Visit>
void ForEachObject(entity& root, const Visit& visit) {
  visit(root);
  for (const EntityPtr& child : root.getEntityList()) ForEachObject(*child, visit);
}

}  // namespace

RunningCheck::RunningCheck(Map& map, double tolerance) : map_(map), tolerance_(tolerance) {
  LearnPending();
}

void RunningCheck::Restart(double tolerance) {
  tolerance_ = tolerance;
  known_.clear();
  LearnPending();
}

// What is not known any more, in the order of the map.
void RunningCheck::LearnPending() {
  pending_.clear();
  ForEachObject(map_, [this](entity& e) {
    if (!known_.contains(&e)) pending_.push_back(&e);
  });
  std::ranges::reverse(pending_);
  whole_.clear();
  wholeIsStale_ = true;
}

void RunningCheck::Forget(const std::vector<const entity*>& trees, bool withBelow) {
  for (const entity* tree : trees) {
    if (withBelow) {
      ForEachEntity(*tree, [this](const entity& e) { known_.erase(&e); });
    } else {
      known_.erase(tree);
    }
  }
}

void RunningCheck::OnChange(const MapChange& change) {
  if (change.everything) return Restart(tolerance_);
  if (change.changed.empty() && change.came.empty() && change.went.empty() &&
      change.moved.empty()) {
    return;
  }
  Forget(change.changed, false);
  Forget(change.came, true);
  Forget(change.went, true);
  LearnPending();
}

bool RunningCheck::Step(std::size_t objects) {
  for (; objects > 0 && !pending_.empty(); --objects) {
    entity& e = *pending_.back();
    pending_.pop_back();
    Known& known = known_[&e];
    CheckObject(e, known.problems, map_.wads, tolerance_);
    FindInObject(e, known.findings);
  }
  if (pending_.empty() && wholeIsStale_) {
    FindInMap(map_, whole_);
    wholeIsStale_ = false;
  }
  return !IsDone();
}

std::vector<Problem> RunningCheck::Problems() const {
  std::vector<Problem> all;
  ForEachEntity(map_, [&](const entity& e) {
    const auto known = known_.find(&e);
    if (known == known_.end()) return;
    all.insert(all.end(), known->second.problems.begin(), known->second.problems.end());
  });
  return all;
}

std::vector<Finding> RunningCheck::Findings() const {
  std::vector<Finding> all;
  ForEachEntity(map_, [&](const entity& e) {
    const auto known = known_.find(&e);
    if (known == known_.end()) return;
    all.insert(all.end(), known->second.findings.begin(), known->second.findings.end());
  });
  all.insert(all.end(), whole_.begin(), whole_.end());
  return all;
}

}  // namespace ferrowand
