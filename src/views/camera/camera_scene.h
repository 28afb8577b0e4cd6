// Which objects of a map its camera shows, each under a name of its own, and which of them a
// picture needs. It follows the map's announcements, so that a change costs what it changes.
#pragma once

#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "geometry/box_tree.h"
#include "geometry/vec.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

class Map;
class entity;
struct MapChange;

class CameraScene {
 public:
  struct Object {
    entity* shown = nullptr;   // a brush, a point entity, an instance; null while the name is free
    Bounds box;                // of its shape; empty until that is known
    bool isReachable = false;  // and so can be picked
    bool isOfEntity = false;   // a brush of a brush entity
    bool isStale = false;      // its shape is to be made anew
    bool isInTree = false;     // and stands where that says
    bool isLoose = false;      // beside the tree
  };

  explicit CameraScene(Map& map) : map_(map) {}

  // All of it, whose names begin anew, or what the map says has changed.
  void Learn();
  void Learn(const MapChange& change);

  const Object& operator[](ShapeName name) const { return objects_[name]; }
  std::size_t Count() const { return names_.size(); }

  // The names that have come free, and those whose shapes are to be made anew, since it was last
  // asked. A name may be in both: it stands for another object now.
  std::vector<ShapeName> TakeGone();
  std::vector<ShapeName> TakeStale();
  // What has been made of a stale one.
  void SetBox(ShapeName name, const Bounds& box);
  // All shapes are to be made anew.
  void MakeAllStale();
  void MakeStaleWithin(const Bounds& box);

  // Those in front of all the planes, at least in part, the nearest to the point first.
  std::vector<ShapeName> Seen(std::span<const Plane> planes, const DVec3& from);
  // Those of the map's selection, with all below it.
  const std::vector<ShapeName>& Selected();

 private:
  // What lies above an object says of it.
  struct Above {
    bool isReachable = true;
    bool isOfEntity = false;
  };

  // None where something above hides it.
  std::optional<Above> AboveOf(const entity& e) const;
  static Above Below(const entity& e, Above above);
  void Visit(entity& e, const Above& above);
  void VisitAgain(const entity& e, bool isChanged);
  void Forget(const entity& tree);
  void Free(const entity& e);
  void MakeStale(ShapeName name);
  void NoteTemplates(const entity& tree);
  void FollowTemplates();
  void AddNames(const entity& e, std::vector<ShapeName>& names) const;
  void MakeTree();

  Map& map_;
  std::vector<Object> objects_;  // by name
  std::vector<ShapeName> free_, gone_, stale_;
  std::unordered_map<const entity*, ShapeName> names_;
  // Every template of the map, and what it was when its instances were shown.
  std::unordered_map<const entity*, std::uint32_t> templates_;
  std::unordered_map<const entity*, ShapeName> instances_;
  std::vector<ShapeName> selected_;
  bool selectionIsKnown_ = false;

  std::optional<BoxTree> tree_;
  std::vector<ShapeName> inTree_;  // by index of the tree
  std::vector<ShapeName> loose_;
};

}  // namespace ferrowand
