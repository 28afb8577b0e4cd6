// Templates for measuring: one of four brushes, with instances of it all over a map.
#pragma once

#include <string>

#include "support/small_map.h"

namespace ferrowand::bench {

inline void AddInstances(SmallMap& small, std::int64_t count) {
  entity& crate = small.Add({{"classname", "templateClass"}, {"XMPentityname", "crate"}});
  for (int i = 0; i < 4; ++i) {
    const auto at = static_cast<float>(8 * i);
    small.AddCuboid({at, at, at}, {at + 24, at + 16, at + 8}, &crate);
  }
  for (std::int64_t i = 0; i < count; ++i) {
    entity& instance = small.Add({{"classname", "templateInstance"}, {"XMPclass", "crate"}});
    instance.SetKey("angle", std::to_string(i % 4 * 90));
    instance.SetOrigin(Vec3(static_cast<float>(i % 40 * 128 - 2560),
                            static_cast<float>(i / 40 * 128 - 2560), 128));
  }
}

}  // namespace ferrowand::bench
