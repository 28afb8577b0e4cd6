// The camera of a map as its 2D views show it: a ring where it stands and an arrow to where it
// looks, both to be dragged. Pixels of the view, as large at every zoom.
#pragma once

#include "platform/canvas.h"
#include "views/camera/camera_pose.h"
#include "views/view_transform.h"

namespace ferrowand {

enum class CameraGrip { None, Eye, Arrow };

void DrawCameraMarker(Canvas& canvas, const ViewTransform& seen, const CameraPose& pose,
                      const Pen& pen);
// All that is drawn of it.
PixelRect CameraMarkerBox(const ViewTransform& seen, const CameraPose& pose);
// What a press there takes hold of. Where the camera looks along the view's depth there is no tip
// of an arrow.
CameraGrip CameraGripAt(const ViewTransform& seen, const CameraPose& pose, Pixel at);

// The eye above or below the place, as deep as it was.
CameraPose MovedTo(const ViewTransform& seen, const CameraPose& pose, Pixel to);
// Upright, and looking past the place: as far along the view's depth as it did before. A place at
// the eye changes nothing.
CameraPose TurnedTo(const ViewTransform& seen, const CameraPose& pose, Pixel to);

}  // namespace ferrowand
