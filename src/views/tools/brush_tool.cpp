#include "views/tools/brush_tool.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include "document/map.h"
#include "geometry/tolerance.h"
#include "platform/display.h"
#include "views/map_view.h"
#include "views/tools/brush_reshape.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr Colour WHITE{255, 255, 255};

// Half of one, in pixels.
int FaceHandleSize() {
  return Scaled(3);
}

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
  return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y)) <= FaceHandleSize() + 1;
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
  grabbed_ = HandleAt(view, at);
  BeginDrag(view, at);
}

std::optional<BrushTool::FaceHandle> BrushTool::HandleAt(const MapView& view, Pixel at) const {
  for (const entity* e : SelectedBrushesAt(view, AtPixel(at), FaceHandleSize() + 1)) {
    for (const Face& face : e->brush.Faces()) {
      if (!HasHandle(face, view.transform)) continue;
      const Vec3 middle = MiddleOf(face);
      if (IsNear(view.transform.ToScreen(middle), at)) {
        return FaceHandle{middle, face.plane.normal};
      }
    }
  }
  return std::nullopt;
}

ToolCursor BrushTool::CursorAt(const MapView& view, Pixel at) const {
  return HandleAt(view, at) ? ToolCursor::Move : ToolCursor::Arrow;
}

Vec3 BrushTool::Offset(const MapView& view, Pixel at) const {
  if (!grabbed_) return {};
  Vec3 by = SnappedOffset(view, at, grabbed_->middle);
  // A face along the axes goes as its plane does; whole units keep a slanting one writable.
  for (int axis = 0; axis < 3; ++axis) {
    by[axis] = grabbed_->normal[axis] == 0 ? 0 : static_cast<float>(RoundToInt(by[axis]));
  }
  return by;
}

std::vector<ReshapeTool::Reshaped> BrushTool::Reshape(const MapView& view, const Vec3& by) const {
  std::vector<Reshaped> all;
  if (!grabbed_) return all;
  for (entity* e : SelectedBrushesIn(view.map, {grabbed_->middle, grabbed_->middle})) {
    for (int i = 0; i < e->brush.getNumFaces(); ++i) {
      if (!IsOf(*grabbed_, e->brush.face(i))) continue;
      all.push_back({e, CornersOf(e->brush.face(i)), MoveFace(e->brush, i, by, Host().Report())});
      break;
    }
  }
  return all;
}

void BrushTool::Click(MapView& view, Pixel at) {
  if (!grabbed_) PickBrush(view, at);
}

void BrushTool::DrawOverlay(MapView& view, Canvas& canvas) {
  DrawSelection(view, canvas);
  const PixelRect part = canvas.ClipBox();
  const int size = FaceHandleSize();
  const Pen pen = view.Context(canvas, part).pens.foreground;
  for (const entity* e : SelectedBrushesAt(view, part, size)) {
    for (const Face& face : e->brush.Faces()) {
      if (!HasHandle(face, view.transform)) continue;
      const Pixel p = view.transform.ToScreen(MiddleOf(face));
      canvas.Rectangle(pen, WHITE, {p.x - size, p.y - size, p.x + size + 1, p.y + size + 1});
    }
  }
  preview_.Draw(view, canvas);
}

}  // namespace ferrowand
