// The brush handle tool: every face of the selected brushes that is seen from the side has a handle
// in its middle, by which its plane is moved.
#pragma once

#include <optional>
#include <vector>

#include "views/tools/reshape_tool.h"

namespace ferrowand {

class BrushTool : public ReshapeTool {
 public:
  using ReshapeTool::ReshapeTool;

  std::string Name() const override { return "Brush Handle tool"; }
  void MouseDown(MapView& view, Pixel at, int button) override;
  void DrawOverlay(MapView& view, Canvas& canvas) override;

 protected:
  Vec3 Offset(const MapView& view, Pixel at) const override;
  std::vector<Reshaped> Reshape(const MapView& view, const Vec3& by) const override;
  void Click(MapView& view, Pixel at) override;
  ToolCursor CursorAt(const MapView& view, Pixel at) const override;

 private:
  // Known by its place: the brush may go away in the middle of a drag.
  struct FaceHandle {
    Vec3 middle;
    DVec3 normal;
  };

  static bool IsOf(const FaceHandle& handle, const Face& face);
  // The first one seen there.
  std::optional<FaceHandle> HandleAt(const MapView& view, Pixel at) const;

  std::optional<FaceHandle> grabbed_;
};

}  // namespace ferrowand
