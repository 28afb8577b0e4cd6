// Dragging the camera of a map by its marker in a 2D view, for as long as the button is held: what
// the camera shows goes along. Another tool lends the mouse for it.
#pragma once

#include "views/camera/camera_marker.h"
#include "views/tools/tool_base.h"

namespace ferrowand {

class CameraDrag : public ToolBase {
 public:
  using ToolBase::ToolBase;

  std::string Name() const override { return from_ ? from_->Name() : ""; }

  // What of a camera lies there in the view.
  CameraGrip GripAt(const MapView& view, Pixel at) const;
  // Something does.
  void Start(Tool& from, MapView& view, Pixel at);

  void MouseDown(MapView&, Pixel, int) override { Cancel(); }
  void DrawOverlay(MapView& view, Canvas& canvas) override;
  // The camera goes back to where it was.
  void Cancel() override;

 protected:
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override;
  void Click(MapView&, Pixel) override { HandBack(); }

 private:
  void HandBack();

  Tool* from_ = nullptr;
  const Map* map_ = nullptr;  // compared only
  CameraGrip grip_ = CameraGrip::None;
  CameraPose before_;
};

}  // namespace ferrowand
