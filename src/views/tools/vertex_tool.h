// Touch-up: moving the corners of the selected brushes, one or many, and edges by their ends.
// Corners of several brushes at one place go together.
#pragma once

#include <vector>

#include "views/tools/reshape_tool.h"

namespace ferrowand {

class VertexTool : public ReshapeTool {
 public:
  using ReshapeTool::ReshapeTool;

  std::string Name() const override { return "Touch up"; }
  // The right button opens the popup of the mode.
  void MouseDown(MapView& view, Pixel at, int button) override;
  // In the popup's order: all corners, the others, the end of the mode.
  void PopupCommand(MapView& view, unsigned command) override;
  // 'L' all corners, 'I' the others.
  bool Key(MapView& view, char c) override;
  void DrawOverlay(MapView& view, Canvas& canvas) override;

  void PickAll(const Map& map);
  void InvertPicked(const Map& map);
  const std::vector<Vec3>& Picked() const { return picked_; }
  void Forget() { picked_.clear(); }

 protected:
  Vec3 Offset(const MapView& view, Pixel at) const override;
  std::vector<Reshaped> Reshape(const MapView& view, const Vec3& by) const override;
  void Done(const Vec3& by) override;
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override;
  void Click(MapView& view, Pixel at) override;
  ToolCursor CursorAt(const MapView& view, Pixel at) const override;

 private:
  std::vector<Vec3> CornersAt(const MapView& view, Pixel at) const;
  void Pick(const std::vector<Vec3>& corners, bool add);

  std::vector<Vec3> picked_;
  bool isBand_ = false;  // the drag is a rubber band
};

}  // namespace ferrowand
