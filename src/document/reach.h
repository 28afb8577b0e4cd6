// The one answer to what of a map is shown, and so can be hit, selected and worked on. Painting,
// hit tests, the rubber band, the selection and the commands all ask here.
#pragma once

#include "geometry/vec.h"

namespace ferrowand {

class Map;
class entity;

// What the user wants to see of all maps.
struct ShownKinds {
  bool pointEntities = true;  // boxes, markers, names
  bool templates = false;     // what instances stand for
};

// Layers, templates and the world are no objects: they hold them.
bool OnlyHolds(const entity& e);
// Most objects of a map are: what is nothing but its brush, which nothing switches off.
bool IsPlainBrush(const entity& e);
// Whether the entity itself hides or locks nothing: what it holds is shown as far as itself is. A
// map does not, whatever class a file gives its world.
bool IsOpen(const entity& e);

// Where an entity is drawn and hit that is more than brushes: the box of its class, or of the
// embedded map. Empty for what is drawn by its brushes alone, and while such entities are not
// shown.
Bounds PointBox(const entity& e);
// Of what is seen of the object: its brushes, its box, those of all below it that is not hidden,
// and what an instance stands for while that is shown. Empty when nothing is.
Bounds SeenBounds(const entity& e);

// An object can be reached when it and all that holds it is visible and enabled, and unless all
// that it would show is switched off. What cannot is neither hit nor selected nor changed by
// commands. What has no shape at all can be, where a list offers it.
bool IsReachable(const entity& e);
// The same for many objects of one map; the map must not change meanwhile.
class ReachTest {
 public:
  explicit ReachTest(const Map& map) : map_(map) {}
  bool operator()(const entity& e) const;

 private:
  const Map& map_;
  mutable const entity* parent_ = nullptr;  // of the object before
  mutable bool parentIsOpen_ = false;
};

}  // namespace ferrowand
