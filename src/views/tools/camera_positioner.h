// Aiming the camera of a map from a 2D view, once: then the tool before has the mouse again.
#pragma once

#include <string>

#include "views/tools/tool_base.h"

namespace ferrowand {

class CameraPositioner : public ToolBase {
 public:
  using ToolBase::ToolBase;

  std::string Name() const override { return "Camera positioner"; }

  // Which tool gets the mouse back.
  void ReturnTo(Tool& tool) { before_ = &tool; }
  // The right button gives it up.
  void MouseDown(MapView& view, Pixel at, int button) override;

 protected:
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override { Aim(view, at); }
  void Click(MapView& view, Pixel at) override { Aim(view, at); }
  ToolCursor CursorAt(const MapView&, Pixel) const override { return ToolCursor::Cross; }

 private:
  // Nothing happens without a camera.
  void Aim(MapView& view, Pixel at);

  Tool* before_ = nullptr;
};

}  // namespace ferrowand
