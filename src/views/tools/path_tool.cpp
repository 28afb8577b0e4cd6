#include "views/tools/path_tool.h"

#include <optional>
#include <utility>

#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "operations/paths.h"
#include "platform/display.h"
#include "views/map_view.h"
#include "views/tools/click_point.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr char ESCAPE = '\x1b';
constexpr int CORNER_SIZE = 2;  // pixels, half of the square at a corner

}  // namespace

void PathTool::StartOver() {
  preview_.Clear();
  if (corners_.empty()) return;
  corners_.clear();
  for (MapView* view : tools_.Views().Views()) {
    if (&view->map == map_) view->Repaint();
  }
}

void PathTool::Cancel() {
  StartOver();
  ToolBase::Cancel();
}

void PathTool::MouseDown(MapView& view, Pixel at, int button) {
  if (button != BUTTON_LEFT) return;
  if (&view.map != map_) StartOver();
  map_ = &view.map;
  const Vec3 corner = PointAt(view, tools_.Views(), at);
  preview_.Clear();
  corners_.push_back(corner);
  for (MapView* shown : tools_.Views().ViewsOf(view.map)) shown->Repaint();
  view.SetStatus(Format("Place corner: (%i, %i, %i)", RoundToInt(corner.x), RoundToInt(corner.y),
                        RoundToInt(corner.z)));
}

void PathTool::MouseUp(MapView& view, Pixel, int button) {
  if (button != BUTTON_RIGHT) return;
  // Another tool may be chosen, or the map closed, while the name is asked for.
  const std::vector<Vec3> corners = corners_;
  const bool isOfMap = &view.map == map_;
  if (corners.empty() || !isOfMap) return StartOver();
  const std::optional<std::string> name = Host().AskPathName(view.map);
  StartOver();
  if (!name || name->empty()) return view.SetStatus(Name());
  const ActionScope action(view.map.Data(), "Lay path");
  Conclude(view, LayPath(view.map, corners, *name));
}

bool PathTool::Key(MapView& view, char c) {
  if (c != ESCAPE || corners_.empty()) return false;
  StartOver();
  view.SetStatus(Name());
  return true;
}

void PathTool::Hover(MapView& view, Pixel at) {
  ToolBase::Hover(view, at);
  if (corners_.empty() || &view.map != map_) return;
  preview_.Show(view, {{.points = {view.transform.ToScreen(corners_.back()), at}}});
}

void PathTool::DrawOverlay(MapView& view, Canvas& canvas) {
  DrawSelection(view, canvas);
  if (&view.map == map_ && !corners_.empty()) {
    const int size = Scaled(CORNER_SIZE);
    const Pen pen = view.Context(canvas, canvas.ClipBox()).pens.targetLine;
    std::vector<Pixel> points;
    for (const Vec3& corner : corners_) points.push_back(view.transform.ToScreen(corner));
    if (points.size() > 1) canvas.Polyline(pen, points);
    for (const Pixel p : points) {
      canvas.Rectangle(pen, std::nullopt, {p.x - size, p.y - size, p.x + size, p.y + size});
    }
  }
  preview_.Draw(view, canvas);
}

}  // namespace ferrowand
