// What the tools share that change the shapes of the selected brushes: a drag shows the brushes as
// they would be, a drop makes them so. What cannot be is shown in dashes, and refused.
#pragma once

#include <optional>
#include <vector>

#include "document/brush.h"
#include "views/tools/tool_base.h"

namespace ferrowand {

class ReshapeTool : public ToolBase {
 public:
  using ToolBase::ToolBase;

  void Select(MapView& view, entity* object, bool add) override;

 protected:
  // A brush that a drag changes: these corners move. Without a result it may not be so.
  struct Reshaped {
    entity* object;
    std::vector<Vec3> corners;
    std::optional<Brush> result;
  };

  // What a drag to that place makes of the selection, and how far it goes.
  virtual Vec3 Offset(const MapView& view, Pixel at) const = 0;
  virtual std::vector<Reshaped> Reshape(const MapView& view, const Vec3& by) const = 0;
  // It has been done.
  virtual void Done(const Vec3& by) { (void)by; }

  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override;
  // Selects the brush there, which a click beside all handles does.
  void PickBrush(MapView& view, Pixel at);
  // The nearest step of the grid, or as it is; 0 on an axis that is not edited.
  Vec3 SnappedOffset(const MapView& view, Pixel at, const Vec3& reference) const;
};

inline PixelRect AtPixel(Pixel at) {
  return {at.x, at.y, at.x + 1, at.y + 1};
}

// All with faces in the selected trees, each once.
std::vector<entity*> SelectedBrushes(const Map& map);
// Those of them that may be seen within so many pixels of a part of the view, or touch a box of the
// world.
std::vector<entity*> SelectedBrushesAt(const MapView& view, const PixelRect& part, int reach);
std::vector<entity*> SelectedBrushesIn(const Map& map, const Bounds& box);

}  // namespace ferrowand
