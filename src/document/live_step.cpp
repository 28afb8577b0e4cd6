#include "document/live_step.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "document/edit_step.h"
#include "document/map.h"

namespace ferrowand {
namespace {

// Each object once.
void Add(const MapChange& taken, MapChange& change) {
  const std::unordered_set<const entity*> known(change.changed.begin(), change.changed.end());
  std::ranges::copy_if(taken.changed, std::back_inserter(change.changed),
                       [&](const entity* e) { return !known.contains(e); });
  change.box.Add(taken.box);
  change.everything |= taken.everything;
}

}  // namespace

LiveStep::LiveStep(Map& map) : map_(map), before_(map.undo.State()), after_(map.undo.State()) {}

bool LiveStep::IsNewest() const {
  return map_.undo.State() == after_;
}

MapChange LiveStep::TakeBack() {
  MapChange taken;
  if (IsNewest() && after_ != before_) map_.undo.TakeBack(taken);
  return taken;
}

void LiveStep::Do(const std::function<void(EditStep&)>& change) {
  ChangeScope scope(map_);
  const MapChange taken = TakeBack();
  before_ = map_.undo.State();
  {
    EditStep step(map_);
    change(step);
  }
  after_ = map_.undo.State();
  Add(taken, scope.Change());
}

void LiveStep::Cancel() {
  ChangeScope scope(map_);
  Add(TakeBack(), scope.Change());
  after_ = before_ = map_.undo.State();
}

}  // namespace ferrowand
