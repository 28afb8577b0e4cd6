// What a map tells whoever shows it: one announcement for each step of editing, each undo, redo or
// cancelled step, each load, each change of the selection and each choice of the user that concerns
// the map. Nobody else has to say that something is to be drawn anew.
#pragma once

#include <string>
#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

class Map;
class entity;

// The lists hold what the objects have become by the end of the step, each object in one of them at
// the most, `changed` aside. They are good while the announcement is made.
struct MapChange {
  // All may be different: a load, the options, the palette, WADs, classes, the worldspawn's keys.
  bool everything = false;

  // Keys, class or faces of the object itself. What lies below it has an entry of its own.
  std::vector<const entity*> changed;
  // What those were: copies that belong to nothing and hold nothing. None of brushes that only went
  // elsewhere as they are.
  std::vector<const entity*> before;
  // With all that lies below them. What went is still whole, but in no map.
  std::vector<const entity*> came, went;
  std::vector<const entity*> moved;  // to another parent or place among its sisters

  bool selection = false;  // other objects are selected, or in another order
  bool faces = false;      // other faces are picked, or in another order
  bool target = false;     // new objects go elsewhere: the current layer or the leading group
  bool file = false;       // it was saved: its name, and whether it is modified

  std::string done;  // for the status line, after all that this changes there

  // Of all that was or is to be seen where something changed, the bounds of the selection and of
  // brushes with picked faces before and after included. World units. What is drawn beyond the
  // bounds of objects (names, markers, radii, arrows, handles) is for who draws it to know.
  Bounds box;

  bool IsNone() const {
    return !everything && changed.empty() && came.empty() && went.empty() && moved.empty() &&
           !selection && !faces && !target && !file && done.empty() && box.IsEmpty();
  }
};

// Not owned by the map; must not change the map from within.
class MapObserver {
 public:
  virtual ~MapObserver() = default;
  virtual void OnChange(const MapChange& change) { (void)change; }
  // For the status line of every view of the map.
  virtual void OnStatus(const std::string& text) { (void)text; }
};

// What is changed while one lives is announced as one when the outermost one ends.
class ChangeScope {
 public:
  explicit ChangeScope(Map& map);
  ~ChangeScope();
  ChangeScope(const ChangeScope&) = delete;
  ChangeScope& operator=(const ChangeScope&) = delete;

  MapChange& Change();

 private:
  Map& map_;
};

// Adds to the box what the entity and all below it may show within the bounds of objects: also of
// what has no bounds, such as an instance without a template.
void AddExtent(const entity& e, Bounds& box);

}  // namespace ferrowand
