#include "views/tools/vertex_tool.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "document/map.h"
#include "platform/display.h"
#include "views/map_view.h"
#include "views/tools/brush_reshape.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr int EDGE_REACH = 3;  // pixels
constexpr Colour WHITE{255, 255, 255}, PICKED{224, 0, 0};

// Half of the square at a corner, in pixels.
int CornerSize() {
  return Scaled(4);
}

std::vector<Vec3> CornersOf(const std::vector<entity*>& brushes) {
  std::vector<Vec3> corners;
  CornerSet known;
  for (const entity* e : brushes) {
    for (const Vec3& corner : CornersOf(e->brush)) {
      if (known.Add(corner)) corners.push_back(corner);
    }
  }
  return corners;
}

std::vector<Vec3> CornersOfSelection(const Map& map) {
  return CornersOf(SelectedBrushes(map));
}

bool IsNear(Pixel a, Pixel b) {
  return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y)) <= CornerSize();
}

double DistanceToEdge(Pixel a, Pixel b, Pixel p) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double length = dx * dx + dy * dy;
  const double along =
      length > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length, 0.0, 1.0) : 0;
  return std::hypot(p.x - a.x - along * dx, p.y - a.y - along * dy);
}

// The ends of the first edge that runs through the pixel.
std::vector<Vec3> EdgeAt(const std::vector<entity*>& brushes, const MapView& view, Pixel at) {
  for (const entity* e : brushes) {
    for (const Face& face : e->brush.Faces()) {
      if (!face.w) continue;
      const auto points = std::as_const(*face.w).Points();
      for (std::size_t i = 0; i < points.size(); ++i) {
        const Vec3 from = points[i].Position();
        const Vec3 to = points[(i + 1) % points.size()].Position();
        if (DistanceToEdge(view.transform.ToScreen(from), view.transform.ToScreen(to), at) <=
            Scaled(EDGE_REACH)) {
          return {from, to};
        }
      }
    }
  }
  return {};
}

}  // namespace

// All that lie behind each other there, else the ends of an edge.
std::vector<Vec3> VertexTool::CornersAt(const MapView& view, Pixel at) const {
  const std::vector<entity*> brushes = SelectedBrushesAt(view, AtPixel(at), CornerSize());
  std::vector<Vec3> corners = CornersOf(brushes);
  std::erase_if(corners, [&](const Vec3& c) { return !IsNear(view.transform.ToScreen(c), at); });
  return corners.empty() ? EdgeAt(brushes, view, at) : corners;
}

ToolCursor VertexTool::CursorAt(const MapView& view, Pixel at) const {
  return CornersAt(view, at).empty() ? ToolCursor::Arrow : ToolCursor::Move;
}

void VertexTool::Pick(const std::vector<Vec3>& corners, bool add) {
  if (!add) picked_.clear();
  CornerSet known(picked_);
  for (const Vec3& corner : corners) {
    if (known.Add(corner)) picked_.push_back(corner);
  }
}

void VertexTool::PickAll(const Map& map) {
  picked_ = CornersOfSelection(map);
  RepaintOverlay(map);
}

void VertexTool::InvertPicked(const Map& map) {
  std::vector<Vec3> others = CornersOfSelection(map);
  const CornerSet picked(picked_);
  std::erase_if(others, [&](const Vec3& corner) { return picked.Contains(corner); });
  picked_ = std::move(others);
  RepaintOverlay(map);
}

bool VertexTool::Key(MapView& view, char c) {
  switch (c) {
    case 'l':
    case 'L':
      PickAll(view.map);
      return true;
    case 'i':
    case 'I':
      InvertPicked(view.map);
      return true;
    default:
      return ReshapeTool::Key(view, c);
  }
}

void VertexTool::PopupCommand(MapView& view, unsigned command) {
  switch (command) {
    case 0:
      return PickAll(view.map);
    case 1:
      return InvertPicked(view.map);
    case 2:
      return tools_.Use(tools_.brushSelector);
  }
}

void VertexTool::MouseDown(MapView& view, Pixel at, int button) {
  if (IsDragging()) {
    Cancel();
    return;
  }
  if (button != BUTTON_LEFT) {
    Host().TrackPopup(view, at, ToolPopup::TouchUp);
    return;
  }
  const std::vector<Vec3> corners = CornersAt(view, at);
  isBand_ = corners.empty();
  const CornerSet picked(picked_);
  if (!std::ranges::all_of(corners, [&](const Vec3& c) { return picked.Contains(c); })) {
    Pick(corners, Host().Keys().control);
    RepaintOverlay(view.map);
  }
  // The first of them goes onto the grid.
  const auto grabbed = std::ranges::find_if(
      picked_, [&](const Vec3& p) { return !corners.empty() && IsSameCorner(p, corners.front()); });
  if (grabbed != picked_.end()) std::iter_swap(picked_.begin(), grabbed);
  BeginDrag(view, at);
}

Vec3 VertexTool::Offset(const MapView& view, Pixel at) const {
  return SnappedOffset(view, at, picked_.empty() ? Vec3() : picked_.front());
}

std::vector<ReshapeTool::Reshaped> VertexTool::Reshape(const MapView& view, const Vec3& by) const {
  std::vector<Reshaped> all;
  const CornerSet picked(picked_);
  Bounds around;
  for (const Vec3& corner : picked_) around.Add(corner);
  for (entity* e : SelectedBrushesIn(view.map, around)) {
    std::vector<Vec3> corners = CornersOf(e->brush);
    std::erase_if(corners, [&](const Vec3& corner) { return !picked.Contains(corner); });
    if (corners.empty()) continue;
    std::optional<Brush> result = MoveCorners(e->brush, corners, by, Host().Report());
    all.push_back({e, std::move(corners), std::move(result)});
  }
  return all;
}

void VertexTool::Done(const Vec3& by) {
  for (Vec3& corner : picked_) corner = corner + by;
}

void VertexTool::Drag(MapView& view, Pixel at) {
  if (!isBand_) {
    ReshapeTool::Drag(view, at);
    return;
  }
  preview_.Show(view, {RectangleShape(BandTo(at))});
}

void VertexTool::Drop(MapView& view, Pixel at) {
  if (!isBand_) {
    ReshapeTool::Drop(view, at);
    return;
  }
  const PixelRect band = BandTo(at);
  std::vector<Vec3> corners = CornersOfSelection(view.map);
  std::erase_if(corners, [&](const Vec3& corner) {
    const Pixel p = view.transform.ToScreen(corner);
    return p.x < band.left || p.x > band.right || p.y < band.top || p.y > band.bottom;
  });
  Pick(corners, Host().Keys().control);
  RepaintOverlay(view.map);
}

void VertexTool::Click(MapView& view, Pixel at) {
  if (!isBand_) return;
  picked_.clear();
  PickBrush(view, at);
  RepaintOverlay(view.map);
}

void VertexTool::DrawOverlay(MapView& view, Canvas& canvas) {
  DrawSelection(view, canvas);
  const PixelRect part = canvas.ClipBox();
  const Pen pen = view.Context(canvas, part).pens.foreground;
  const CornerSet picked(picked_);
  const int size = CornerSize();
  for (const entity* e : SelectedBrushesAt(view, part, size)) {
    for (const Vec3& corner : CornersOf(e->brush)) {
      const Pixel p = view.transform.ToScreen(corner);
      canvas.Rectangle(pen, picked.Contains(corner) ? PICKED : WHITE,
                       {p.x - size + 1, p.y - size + 1, p.x + size, p.y + size});
    }
  }
  preview_.Draw(view, canvas);
}

}  // namespace ferrowand
