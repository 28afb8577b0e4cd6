#include "views/tools/camera_positioner.h"

#include "base/report.h"
#include "views/camera/camera.h"
#include "views/map_view.h"
#include "views/tools/click_point.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

void CameraPositioner::MouseDown(MapView& view, Pixel at, int button) {
  if (IsDragging()) {
    Cancel();
  } else if (button == BUTTON_RIGHT) {
    tools_.Use(*before_);
  } else {
    BeginDrag(view, at);
  }
}

void CameraPositioner::Drag(MapView& view, Pixel at) {
  preview_.Show(view, {{.points = {pressPixel_, at}}});
}

void CameraPositioner::Aim(MapView& view, Pixel at) {
  Camera* camera = tools_.Views().CameraOf(view.map);
  if (!camera) return;
  const Vec3 point = PointAt(view, tools_.Views(), at);
  CameraPose pose = camera->Pose();
  pose.LookAt(DVec3(point));
  camera->SetPose(pose);
  tools_.Use(*before_);
  view.SetStatus(Format("Looking at: (%i, %i, %i)", RoundToInt(point.x), RoundToInt(point.y),
                        RoundToInt(point.z)));
}

}  // namespace ferrowand
