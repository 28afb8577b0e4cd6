// What a camera draws over the map in lines, seen through walls: the box that is being drawn with
// the mouse, the marks of a map, and the faces that are picked.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "views/camera/camera_renderer.h"

namespace ferrowand {

class FaceSelection;
struct MapMarks;

class CameraMarks {
 public:
  // Nothing for none.
  void SetDraft(const std::optional<Bounds>& box);
  void SetMarks(const MapMarks& marks);
  void SetPicked(const FaceSelection& faces);

  const std::vector<Outline>& Outlines() const { return outlines_; }
  // Gives the renderer what it has not been given yet; all of it where it has lost what it had.
  void GiveTo(CameraRenderer& renderer, bool isAllLost);

 private:
  void Set(ShapeName name, Colour colour, Shape shape);

  std::map<ShapeName, Shape> shapes_;
  std::vector<Outline> outlines_;
  std::vector<ShapeName> stale_;
};

}  // namespace ferrowand
