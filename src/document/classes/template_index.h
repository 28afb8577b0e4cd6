// The template classes of a map by name, and what its instances show: their templates scaled,
// turned and moved. Both are worked out when asked for and kept until something that they are made
// of changes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "document/entity.h"

namespace ferrowand {

struct Expansion {
  // A copy of the template class, in no map, in which groups of brushes stand for the instances of
  // other templates. An instance within its own template shows nothing, nor does a template.
  EntityPtr shape;
  Bounds bounds;
};

class TemplateIndex {
 public:
  explicit TemplateIndex(const Map& map) : map_(map) {}

  // Of the entities of that name and exactly the class "templateClass" the first in map order; null
  // for none.
  const entity* Find(std::string_view name);
  bool IsEmpty();
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
    // The templates that it is made of, and their revisions at that time.
    std::vector<std::pair<const entity*, std::uint32_t>> sources;
    std::uint32_t instanceRevision = 0;
    bool servesOnce = false;
  };
  // What has been expanded on the way to a template, and how much.
  struct Nesting {
    std::vector<const entity*> open;
    int objects = 0;
  };

  static bool IsCurrent(const Kept& kept, const entity& instance);
  void LearnNames();
  const entity* SourceOf(const entity& instance);
  EntityPtr ShapeOfInstance(const entity& source, const entity& instance, Nesting& nesting,
                            Kept& kept);
  void ReplaceInstances(entity& tree, Nesting& nesting, Kept& kept);

  const Map& map_;
  bool namesKnown_ = false;  // until then nothing is kept
  bool stepOpen_ = false;
  std::map<std::string, const entity*, std::less<>> byName_;
  std::unordered_map<const entity*, Kept> expansions_;  // by instance, all of them in the map
};

}  // namespace ferrowand
