// The check of a map that is open: piece by piece, so that its user can go on, and again of what is
// changed meanwhile.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "document/announcement.h"
#include "operations/map_findings.h"

namespace ferrowand {

class RunningCheck {
 public:
  // The map outlives it. Nothing has been looked at yet.
  RunningCheck(Map& map, double tolerance);

  // All over again.
  void Restart(double tolerance);
  // To be told of every change of the map: what it concerns is looked at again.
  void OnChange(const MapChange& change);
  // Looks at the next so many objects. False when nothing is left to be looked at.
  bool Step(std::size_t objects);
  bool IsDone() const { return pending_.empty() && !wholeIsStale_; }

  // As far as is known, in the order of the map; the findings of the whole map last.
  std::vector<Problem> Problems() const;
  std::vector<Finding> Findings() const;

 private:
  struct Known {
    std::vector<Problem> problems;
    std::vector<Finding> findings;
  };

  void Forget(const std::vector<const entity*>& trees, bool withBelow);
  void LearnPending();

  Map& map_;
  double tolerance_;
  std::unordered_map<const entity*, Known> known_;
  std::vector<entity*> pending_;  // the next one last
  std::vector<Finding> whole_;
  bool wholeIsStale_ = true;
};

}  // namespace ferrowand
