// Laying a path: each click places a corner, in whichever view of the map; the right button ends
// it.
#pragma once

#include <string>
#include <vector>

#include "views/tools/tool_base.h"

namespace ferrowand {

class PathTool : public ToolBase {
 public:
  using ToolBase::ToolBase;

  std::string Name() const override { return "Path layer"; }

  void MouseDown(MapView& view, Pixel at, int button) override;
  // Of the right button: the name is asked for and the path is made, or given up.
  void MouseUp(MapView& view, Pixel at, int button) override;
  // The escape key gives up what has been placed.
  bool Key(MapView& view, char c) override;
  // What has been placed, in every view of the map.
  void DrawOverlay(MapView& view, Canvas& canvas) override;
  void Cancel() override;

 protected:
  void Hover(MapView& view, Pixel at) override;
  ToolCursor CursorAt(const MapView&, Pixel) const override { return ToolCursor::Cross; }

 private:
  void StartOver();

  const Map* map_ = nullptr;  // compared only
  std::vector<Vec3> corners_;
};

}  // namespace ferrowand
