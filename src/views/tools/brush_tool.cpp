#include "views/tools/brush_tool.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include "document/map.h"
#include "views/map_view.h"
#include "views/tools/brush_reshape.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr int FACE_HANDLE_SIZE = 3;  // pixels, half
// Sine of the angle to the depth from which a face is moved by a drag across the view.
constexpr double SEEN_FROM_THE_SIDE = 0.1;
constexpr double SAME_NORMAL = 0.999;
constexpr Colour WHITE{255, 255, 255};

Vec3 MiddleOf(const Face& face) {
  const auto points = std::as_const(*face.w).Points();
  DVec3 sum;
  for (const WindingPoint& p : points) sum = sum + DVec3(p.Position());
  return Vec3(sum * (1.0 / static_cast<double>(points.size())));
}

bool HasHandle(const Face& face, const ViewTransform& transform) {
  if (!face.HasShape()) return false;
  const DVec3& normal = face.plane.normal;
  return std::hypot(normal[transform.orienu], normal[transform.orienv]) > SEEN_FROM_THE_SIDE;
}

bool IsNear(Pixel a, Pixel b) {
  return std::abs(a.x - b.x) <= FACE_HANDLE_SIZE + 1 && std::abs(a.y - b.y) <= FACE_HANDLE_SIZE + 1;
}

}  // namespace

bool BrushTool::IsOf(const FaceHandle& handle, const Face& face) {
  return face.HasShape() && IsSameCorner(MiddleOf(face), handle.middle) &&
         Dot(face.plane.normal, handle.normal) > SAME_NORMAL;
}

void BrushTool::MouseDown(MapView& view, Pixel at, int button) {
  if (IsDragging()) {
    Cancel();
    return;
  }
  if (button != BUTTON_LEFT) return;
  isGrabbed_ = false;
  for (const entity* e : SelectedBrushes(view.map)) {
    for (const Face& face : e->brush.Faces()) {
      if (isGrabbed_ || !HasHandle(face, view.transform)) continue;
      if (!IsNear(view.transform.ToScreen(MiddleOf(face)), at)) continue;
      grabbed_ = {MiddleOf(face), face.plane.normal};
      isGrabbed_ = true;
    }
  }
  BeginDrag(view, at);
}

Vec3 BrushTool::Offset(const MapView& view, Pixel at) const {
  if (!isGrabbed_) return {};
  Vec3 by = SnappedOffset(view, at, grabbed_.middle);
  // A face along the axes goes as its plane does; whole units keep a slanting one writable.
  for (int axis = 0; axis < 3; ++axis) {
    by[axis] = grabbed_.normal[axis] == 0 ? 0 : static_cast<float>(RoundToInt(by[axis]));
  }
  return by;
}

std::vector<ReshapeTool::Reshaped> BrushTool::Reshape(const MapView& view, const Vec3& by) const {
  std::vector<Reshaped> all;
  if (!isGrabbed_) return all;
  for (entity* e : SelectedBrushes(view.map)) {
    for (int i = 0; i < e->brush.getNumFaces(); ++i) {
      if (!IsOf(grabbed_, e->brush.face(i))) continue;
      all.push_back({e, MoveFace(e->brush, i, by, Host().Report())});
      break;
    }
  }
  return all;
}

void BrushTool::Click(MapView& view, Pixel at) {
  if (!isGrabbed_) PickBrush(view, at);
}

void BrushTool::DrawOverlay(MapView& view, Canvas& canvas) {
  DrawSelection(view, canvas);
  const PixelSize area = view.DrawingArea();
  const Pen pen = view.Context(canvas, {0, 0, area.width, area.height}).pens.foreground;
  for (const entity* e : SelectedBrushes(view.map)) {
    for (const Face& face : e->brush.Faces()) {
      if (!HasHandle(face, view.transform)) continue;
      const Pixel p = view.transform.ToScreen(MiddleOf(face));
      canvas.Rectangle(pen, WHITE,
                       {p.x - FACE_HANDLE_SIZE, p.y - FACE_HANDLE_SIZE, p.x + FACE_HANDLE_SIZE + 1,
                        p.y + FACE_HANDLE_SIZE + 1});
    }
  }
  preview_.Draw(view, canvas);
}

}  // namespace ferrowand
