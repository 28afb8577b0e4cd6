#include "views/tools/camera_drag.h"

#include <utility>

#include "base/report.h"
#include "views/camera/camera.h"
#include "views/map_view.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

CameraGrip CameraDrag::GripAt(const MapView& view, Pixel at) const {
  const Camera* camera = tools_.Views().CameraOf(view.map);
  return camera ? CameraGripAt(view.transform, camera->Pose(), at) : CameraGrip::None;
}

void CameraDrag::Start(Tool& from, MapView& view, Pixel at) {
  from_ = &from;
  map_ = &view.map;
  grip_ = GripAt(view, at);
  before_ = tools_.Views().CameraOf(view.map)->Pose();
  BeginDrag(view, at);
}

void CameraDrag::Drag(MapView& view, Pixel at) {
  Camera* camera = tools_.Views().CameraOf(view.map);
  if (!camera) return;
  const auto change = grip_ == CameraGrip::Eye ? MovedTo : TurnedTo;
  camera->SetPose(change(view.transform, camera->Pose(), at));
  const DVec3& eye = camera->Pose().eye;
  view.SetStatus(
      Format("Camera: (%i, %i, %i)", RoundToInt(eye.x), RoundToInt(eye.y), RoundToInt(eye.z)));
}

void CameraDrag::Drop(MapView& view, Pixel at) {
  Drag(view, at);
  HandBack();
}

void CameraDrag::HandBack() {
  if (Tool* from = std::exchange(from_, nullptr)) tools_.ReturnTo(*from);
}

void CameraDrag::Cancel() {
  for (MapView* view : tools_.Views().Views()) {
    Camera* camera = &view->map == map_ ? tools_.Views().CameraOf(view->map) : nullptr;
    if (camera && from_) camera->SetPose(before_);
  }
  ToolBase::Cancel();
  HandBack();
}

void CameraDrag::DrawOverlay(MapView& view, Canvas& canvas) {
  if (from_) from_->DrawOverlay(view, canvas);
}

}  // namespace ferrowand
