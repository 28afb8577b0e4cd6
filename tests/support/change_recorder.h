// What a map has announced.
#pragma once

#include <vector>

#include "document/map.h"

namespace ferrowand {

class ChangeRecorder : public MapObserver {
 public:
  explicit ChangeRecorder(Map& map) : map_(map) { map.AddObserver(*this); }
  ~ChangeRecorder() override { map_.RemoveObserver(*this); }

  // The lists' objects may be gone by the time that they are looked at.
  std::vector<MapChange> changes;

  void OnChange(const MapChange& change) override { changes.push_back(change); }

 private:
  Map& map_;
};

}  // namespace ferrowand
