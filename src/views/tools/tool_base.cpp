#include "views/tools/tool_base.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/report.h"
#include "document/map.h"
#include "document/picking.h"
#include "platform/display.h"
#include "views/entity_drawing.h"
#include "views/map_view.h"
#include "views/painted_part.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr char ESCAPE = '\x1b';
constexpr int SIZE_GAP = 8;  // pixels between a box and its size

bool ShowsTheSame(const ViewTransform& a, const ViewTransform& b) {
  return a.originu == b.originu && a.originv == b.originv && a.scaleu == b.scaleu &&
         a.scalev == b.scalev;
}

}  // namespace

ViewInts WorldAt(const MapView& view, Pixel at) {
  return {view.transform.ToWorldU(at.x), view.transform.ToWorldV(at.y)};
}

ViewBox ViewBoxOf(const Bounds& box, const MapView& view) {
  const int u = view.transform.orienu, v = view.transform.orienv;
  return {{box.mins[u], box.mins[v]}, {box.maxs[u], box.maxs[v]}};
}

Vec3 ToWorld(const ViewPoint& by, const MapView& view) {
  Vec3 world;
  world[view.transform.orienu] = static_cast<float>(by[0]);
  world[view.transform.orienv] = static_cast<float>(by[1]);
  return world;
}

Pixel ToPixel(const ViewPoint& point, const MapView& view) {
  return view.transform.ToScreen(ToWorld(point, view));
}

PreviewShape ShapeOf(const ViewQuad& quad, const MapView& view) {
  std::vector<Pixel> corners;
  for (const ViewPoint& corner : quad) corners.push_back(ToPixel(corner, view));
  return ClosedShape(std::move(corners));
}

PreviewShape SizeBeside(const ViewBox& box, const MapView& view) {
  const auto extent = [&](std::size_t axis) { return RoundToInt(box.maxs[axis] - box.mins[axis]); };
  std::string words = Format("%i x %i", extent(0), extent(1));
  const PixelSize size = view.MeasureLabel(words), area = view.DrawingArea();
  const auto [left, right] = std::minmax({ToPixel(box.mins, view).x, ToPixel(box.maxs, view).x});
  const int top = std::min(ToPixel(box.mins, view).y, ToPixel(box.maxs, view).y);
  const int gap = Scaled(SIZE_GAP);
  const bool fits = right + gap + size.width <= area.width;
  const int beside = fits ? right + gap : left - gap - size.width;
  const Pixel place{std::clamp(beside, 0, std::max(area.width - size.width, 0)),
                    std::clamp(top, 0, std::max(area.height - size.height, 0))};
  return {.points = {place}, .words = std::move(words)};
}

ToolBase::ToolBase(ToolSet& tools) : tools_(tools), preview_(tools.Host(), tools.Views()) {}

ToolHost& ToolBase::Host() const {
  return tools_.Host();
}

void ToolBase::BeginDrag(MapView& view, Pixel at) {
  pressView_ = &view;
  pressPixel_ = at;
  press_ = WorldAt(view, at);
  pressSelection_ = view.map.selection.Objects();
  pressBounds_ = SelectionBounds(view.map);
  pressTransform_ = view.transform;
  moved_ = false;
  Host().Capture(view, true);
}

MapView* ToolBase::OpenPressView() const {
  return std::ranges::count(tools_.Views().Views(), pressView_) != 0 ? pressView_ : nullptr;
}

void ToolBase::EndDrag() {
  preview_.Clear();
  press_ = {NO_PRESS, NO_PRESS};
  if (MapView* const view = OpenPressView()) Host().Capture(*view, false);
  pressView_ = nullptr;
}

bool ToolBase::IsSound(const MapView& view) const {
  return pressView_ == &view && view.map.selection.Objects() == pressSelection_ &&
         SelectionBounds(view.map) == pressBounds_;
}

void ToolBase::FollowView(const MapView& view) {
  if (ShowsTheSame(view.transform, pressTransform_)) return;
  pressTransform_ = view.transform;
  pressPixel_ = ToPixel({double(press_[0]), double(press_[1])}, view);
}

PixelRect ToolBase::BandTo(Pixel at) const {
  return {std::min(pressPixel_.x, at.x), std::min(pressPixel_.y, at.y),
          std::max(pressPixel_.x, at.x), std::max(pressPixel_.y, at.y)};
}

void ToolBase::Hover(MapView& view, Pixel at) {
  Host().SetCursor(view, CursorAt(view, at));
}

ToolCursor ToolBase::CursorAt(const MapView&, Pixel) const {
  return ToolCursor::Arrow;
}

void ToolBase::Cancel() {
  if (MapView* const view = OpenPressView()) view->SetStatus(Name());
  EndDrag();
}

void ToolBase::MouseMove(MapView& view, Pixel at, int buttons) {
  if (IsDragging() && (!IsSound(view) || !(buttons & BUTTON_LEFT))) Cancel();
  if (!IsDragging()) {
    Hover(view, at);
    return;
  }
  FollowView(view);
  const PixelSize still = Host().DragThreshold();
  moved_ = moved_ || std::abs(at.x - pressPixel_.x) > still.width ||
           std::abs(at.y - pressPixel_.y) > still.height;
  if (moved_) Drag(view, at);
}

void ToolBase::MouseUp(MapView& view, Pixel at, int button) {
  if (button != BUTTON_LEFT || !IsDragging()) return;
  if (!IsSound(view)) {
    Cancel();
    return;
  }
  Host().Capture(view, false);
  preview_.Clear();
  FollowView(view);
  if (moved_) {
    const auto before = view.map.undo.State();
    const std::string said = said_;
    view.SetStatus(Name());
    Drop(view, at);
    // How far it went is told until the next thing is done, with what there is to say of the
    // result.
    const bool isDone = view.map.undo.State() != before;
    const std::string& told = view.Status();
    const bool isName = told == Name() || told == view.map.undo.NewestName();
    if (isDone && tools_.Current() == this) view.SetStatus(isName ? said : said + ", " + told);
  } else {
    Click(view, at);
  }
  EndDrag();
}

bool ToolBase::Key(MapView& view, char c) {
  if (c != ESCAPE || !IsDragging()) return false;
  Cancel();
  view.SetStatus(tools_.Current()->Name());
  return true;
}

void ToolBase::Group(MapView&) {
  Host().Report().Show("Cannot continue", "Cannot group with this tool");
}

void ToolBase::DrawOverlay(MapView& view, Canvas& canvas) {
  DrawSelection(view, canvas);
  preview_.Draw(view, canvas);
}

void ToolBase::SelectionChanged(const Map& map) {
  tools_.SelectionChanged(map);
}

void ToolBase::Show(MapView& view, std::vector<PreviewShape> shapes, const std::string& status) {
  preview_.Show(view, std::move(shapes));
  said_ = status;
  view.SetStatus(status);
}

void ToolBase::Conclude(MapView& view, EditResult result) {
  if (const char* why = Reason(result); *why) Host().Refuse(view, why);
}

void ToolBase::RepaintOverlay(const Map& map) {
  for (MapView* view : tools_.Views().ViewsOf(map)) {
    const PixelRect part = HandledPart(SelectionBounds(map), view->transform);
    if (!part.Empty()) view->Repaint(part);
  }
}

HitQuery ToolBase::QueryAt(const MapView& view, Pixel at, PickLevel level) const {
  return {.transform = view.transform, .at = at, .level = level, .boxes = &view.Boxes()};
}

void ToolBase::DrawSelection(MapView& view, Canvas& canvas) const {
  DrawContext context = view.Context(canvas, canvas.ClipBox());
  for (const entity* selected : view.map.selection) DrawOutline(*selected, context);
}

}  // namespace ferrowand
