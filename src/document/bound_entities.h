// Entities that a key press inserts: prototypes kept among the settings. They are read after the
// entity classes, since each must find its own.
#pragma once

#include <cstdint>
#include <vector>

#include "document/entity.h"

namespace ferrowand {

class SettingsStore;

struct BoundEntity {
  std::uint8_t key = 0;  // virtual-key code
  EntityPtr prototype;   // null where the settings promised one and had none
};

class BoundEntities {
 public:
  void Load(SettingsStore& store, const ClassSet& classes, Reporter& reporter);
  // Into settings that have been saved before.
  bool Save(SettingsStore& store, Reporter& reporter) const;

  std::vector<BoundEntity> items;
};

}  // namespace ferrowand
