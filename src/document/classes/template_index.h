// The template classes of a map by name, and what its instances show: their templates scaled,
// turned and moved. Both are worked out when asked for and kept until something that they are made
// of changes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "document/entity.h"

namespace ferrowand {

struct Expansion {
  EntityPtr shape;  // a copy of the template class, in no map; a template within it shows nothing
  Bounds bounds;
};

class TemplateIndex {
 public:
  explicit TemplateIndex(const Map& map) : map_(map) {}

  // Of the entities of that name and exactly the class "templateClass" the first in map order; null
  // for none.
  const entity* Find(std::string_view name);
  // What the entity, which is in the map, shows by its key XMPclass; null without such a template.
  // Valid until the map changes; while a step of editing is open, until it is asked for again.
  const Expansion* Expand(const entity& instance);

  // --- what the map tells of itself
  // A template class, or what its name is, has changed, or is about to.
  void Forget();
  void Came(const entity& tree);
  void Left(const entity& tree);
  // While a step is open, brushes that it has been told of change without another word: what is
  // expanded in the meantime serves once.
  void SetStepOpen(bool isOpen) { stepOpen_ = isOpen; }

 private:
  struct Kept : Expansion {
    const entity* source = nullptr;
    // Of the time of the expansion.
    std::uint32_t sourceRevision = 0, instanceRevision = 0;
    bool servesOnce = false;
  };

  static bool IsCurrent(const Kept& kept, const entity& instance);
  void LearnNames();

  const Map& map_;
  bool namesKnown_ = false;  // until then nothing is kept
  bool stepOpen_ = false;
  std::map<std::string, const entity*, std::less<>> byName_;
  std::unordered_map<const entity*, Kept> expansions_;  // by instance, all of them in the map
};

}  // namespace ferrowand
