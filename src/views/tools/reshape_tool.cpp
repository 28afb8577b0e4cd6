#include "views/tools/reshape_tool.h"

#include <algorithm>
#include <utility>

#include "base/report.h"
#include "document/action.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "geometry/tolerance.h"
#include "views/map_view.h"
#include "views/tools/brush_reshape.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr const char* REFUSED = "The brush would not be convex or would lose a face";

void Collect(entity& e, std::vector<entity*>& found) {
  if (e.brush.getNumFaces() > 0) found.push_back(&e);
  for (const EntityPtr& child : e.getEntityList()) Collect(*child, found);
}

// The edges of the brush as it would be seen with its points elsewhere.
template <typename Place>
void AddEdges(const Brush& brush, const MapView& view, const Place& place,
              std::vector<PixelLine>& edges) {
  for (const Face& face : brush.Faces()) {
    if (!face.w) continue;
    const auto points = std::as_const(*face.w).Points();
    if (points.empty()) continue;
    Pixel from = view.transform.ToScreen(place(points.back().Position()));
    for (const WindingPoint& p : points) {
      const Pixel to = view.transform.ToScreen(place(p.Position()));
      if (from != to) edges.push_back(from < to ? PixelLine{from, to} : PixelLine{to, from});
      from = to;
    }
  }
}

// Each edge once: inverted twice it would not be seen.
void AddShapes(std::vector<PixelLine> edges, bool broken, std::vector<PreviewShape>& shapes) {
  std::ranges::sort(edges);
  edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
  for (const PixelLine& edge : edges) shapes.push_back({{edge.from, edge.to}, false, broken});
}

}  // namespace

std::vector<entity*> SelectedBrushes(const Map& map) {
  std::vector<entity*> found;
  for (entity* root : SelectedRoots(map)) Collect(*root, found);
  return found;
}

std::vector<entity*> SelectedBrushesAt(const MapView& view, const PixelRect& part, int reach) {
  std::vector<entity*> brushes = SelectedBrushes(view.map);
  std::erase_if(brushes, [&](const entity* e) {
    const Bounds& box = e->brush.Box();
    if (box.IsEmpty()) return true;
    const PixelRect rect = view.transform.ToScreen(box.mins, box.maxs);
    return part.right <= rect.left - reach || part.left > rect.right + reach ||
           part.bottom <= rect.top - reach || part.top > rect.bottom + reach;
  });
  return brushes;
}

std::vector<entity*> SelectedBrushesIn(const Map& map, const Bounds& box) {
  std::vector<entity*> brushes = SelectedBrushes(map);
  std::erase_if(brushes, [&](const entity* e) {
    const Bounds& own = e->brush.Box();
    for (int axis = 0; axis < 3; ++axis) {
      if (own.mins[axis] > box.maxs[axis] + ON_EPSILON) return true;
      if (own.maxs[axis] < box.mins[axis] - ON_EPSILON) return true;
    }
    return false;
  });
  return brushes;
}

void ReshapeTool::Select(MapView& view, entity* object, bool add) {
  tools_.brushSelector.Select(view, object, add);
}

void ReshapeTool::PickBrush(MapView& view, Pixel at) {
  const PickLevel level = PickLevel::Brushes;
  const Hit hit = ClickTest(view.map, QueryAt(view, at, level));
  Select(view, hit.object ? &PickedBy(*hit.object, level) : nullptr, Host().Keys().control);
}

Vec3 ReshapeTool::SnappedOffset(const MapView& view, Pixel at, const Vec3& reference) const {
  const DragRules rules = RulesOf(view);
  const ViewInts cursor = WorldAt(view, at);
  const ViewPoint from = ViewBoxOf({reference, reference}, view).mins;
  ViewPoint offset{};
  for (std::size_t i = 0; i < 2; ++i) {
    if (!rules.edits[i]) continue;
    offset[i] = cursor[i] - press_[i];
    if (rules.snap) offset[i] = rules.Snap(i, from[i] + offset[i]) - from[i];
  }
  return ToWorld(offset, view);
}

void ReshapeTool::Drag(MapView& view, Pixel at) {
  const Vec3 by = Offset(view, at);
  const std::vector<Reshaped> all = Reshape(view, by);
  if (all.empty()) return;
  std::vector<PixelLine> sound, broken;
  bool refused = false;
  for (const Reshaped& reshaped : all) {
    if (reshaped.result) {
      AddEdges(
          *reshaped.result, view, [](const Vec3& p) { return p; }, sound);
      continue;
    }
    refused = true;
    AddEdges(
        reshaped.object->brush, view,
        [&](const Vec3& p) {
          const auto same = [&](const Vec3& corner) { return IsSameCorner(corner, p); };
          return std::ranges::any_of(reshaped.corners, same) ? p + by : p;
        },
        broken);
  }
  std::vector<PreviewShape> shapes;
  AddShapes(std::move(sound), false, shapes);
  AddShapes(std::move(broken), true, shapes);
  shapes.push_back({{pressPixel_, at}, true});
  Bounds box;
  for (const Reshaped& reshaped : all) {
    box.Add((reshaped.result ? *reshaped.result : reshaped.object->brush).Box());
  }
  shapes.push_back(SizeBeside(ViewBoxOf(box, view), view));
  Host().SetCursor(view, refused ? ToolCursor::Refused : ToolCursor::Move);
  Show(view, std::move(shapes),
       refused ? REFUSED
               : Format("Translating: (%i, %i)", RoundToInt(by[view.transform.orienu]),
                        RoundToInt(by[view.transform.orienv])));
}

void ReshapeTool::Drop(MapView& view, Pixel at) {
  const Vec3 by = Offset(view, at);
  std::vector<Reshaped> all = Reshape(view, by);
  if (by == Vec3() || all.empty()) return;
  if (!std::ranges::all_of(all, [](const Reshaped& r) { return r.result.has_value(); })) {
    Host().Refuse(view, REFUSED);
    return;
  }
  {
    const ActionScope action(view.map.Data(), "Reshape");
    EditStep step(view.map);
    for (Reshaped& reshaped : all) {
      step.ChangeKeys(*reshaped.object);
      reshaped.object->brush = std::move(*reshaped.result);
    }
  }
  Done(by);
}

}  // namespace ferrowand
