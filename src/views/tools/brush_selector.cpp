#include "views/tools/brush_selector.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "document/action.h"
#include "document/map.h"
#include "operations/transform_selection.h"
#include "views/map_view.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

std::int16_t Anchor(double world) {
  return static_cast<std::int16_t>(RoundToInt(std::trunc(world)));
}

ViewInts AnchorOf(const MapView& view) {
  return {view.snapx, view.snapy};
}

void SetAnchor(MapView& view, double u, double v) {
  view.snapx = Anchor(u);
  view.snapy = Anchor(v);
}

ViewBox SelectionBox(const MapView& view) {
  return ViewBoxOf(SelectionBounds(view.map), view);
}

ViewQuad QuadOf(const ViewPoint& a, const ViewPoint& b) {
  return {{{a[0], a[1]}, {b[0], a[1]}, {b[0], b[1]}, {a[0], b[1]}}};
}

ViewBox BoxAround(const ViewQuad& quad) {
  ViewBox box{quad[0], quad[0]};
  for (const ViewPoint& corner : quad) {
    for (std::size_t i = 0; i < 2; ++i) {
      box.mins[i] = std::min(box.mins[i], corner[i]);
      box.maxs[i] = std::max(box.maxs[i], corner[i]);
    }
  }
  return box;
}

// From the dragged edge to the anchor.
ViewInts DirectionOf(const GrabbedEdges& grabbed) {
  return {-grabbed.edge[0], -grabbed.edge[1]};
}

// A turn changes both axes of the view.
bool MayTurn(const MapView& view) {
  const DragRules rules = RulesOf(view);
  return rules.edits[0] && rules.edits[1];
}

}  // namespace

void BrushSelector::MouseDown(MapView& view, Pixel at, int button) {
  selectedByPress_ = false;
  if (button == BUTTON_LEFT && !IsDragging() && Grab(view, at)) {
    if (kind_ == Kind::Rotate && !MayTurn(view)) {
      Host().Refuse(view, "A turn changes both axes of the view, and one of them is limited");
    } else {
      BeginDrag(view, at);
    }
    return;
  }
  kind_ = Kind::Move;
  SetAnchor(view, 0, 0);
  Selector::MouseDown(view, at, button);
}

GrabbedEdges BrushSelector::HandleAt(const MapView& view, Pixel at) const {
  // With Ctrl a press selects, whatever handle lies there.
  if (view.map.selection.empty() || Host().Keys().control) return {};
  const Bounds bounds = SelectionBounds(view.map);
  if (bounds.IsEmpty()) return {};
  const GrabbedEdges edges = GrabAt(bounds, view.transform, at);
  return mode_ == HandleMode::Rotate && !edges.IsCorner() ? GrabbedEdges{} : edges;
}

bool BrushSelector::Grab(MapView& view, Pixel at) {
  grabbed_ = HandleAt(view, at);
  if (!grabbed_.Any()) return false;
  const ViewBox box = SelectionBox(view);
  switch (mode_) {
    case HandleMode::Scale:
      kind_ = Kind::Scale;
      SetAnchor(view, grabbed_.edge[0] < 0 ? box.maxs[0] : box.mins[0],
                grabbed_.edge[1] < 0 ? box.maxs[1] : box.mins[1]);
      break;
    case HandleMode::Rotate:
      kind_ = Kind::Rotate;
      SetAnchor(view, (box.mins[0] + box.maxs[0]) / 2, (box.mins[1] + box.maxs[1]) / 2);
      startAngle_ = AngleOf(AnchorOf(view), WorldAt(view, at));
      break;
    case HandleMode::Skew:
      kind_ = Kind::Skew;
      break;
  }
  return true;
}

ToolCursor BrushSelector::CursorAt(const MapView& view, Pixel at) const {
  const GrabbedEdges grabbed = HandleAt(view, at);
  if (!grabbed.Any()) return Selector::CursorAt(view, at);
  const auto [u, v] = grabbed.edge;
  switch (mode_) {
    case HandleMode::Scale:
      if (grabbed.IsCorner()) return u == v ? ToolCursor::SizeRising : ToolCursor::SizeFalling;
      return v == 0 ? ToolCursor::SizeAcross : ToolCursor::SizeUpDown;
    case HandleMode::Rotate:
      return MayTurn(view) ? ToolCursor::Turn : ToolCursor::Refused;
    case HandleMode::Skew:
      return v != 0 ? ToolCursor::SizeAcross : ToolCursor::SizeUpDown;
  }
  return ToolCursor::Arrow;
}

void BrushSelector::StartOver(const Map& map) {
  selectedByPress_ = true;
  SetMode(map, HandleMode::Scale);
}

bool BrushSelector::IsForSelection(const MapView& view, Pixel at) const {
  const Bounds bounds = SelectionBounds(view.map);
  if (bounds.IsEmpty()) return false;
  const PixelRect box = view.transform.ToScreen(bounds.mins, bounds.maxs);
  return at.x >= box.left && at.x <= box.right && at.y >= box.top && at.y <= box.bottom;
}

void BrushSelector::SetMode(const Map& map, HandleMode mode) {
  if (mode == mode_) return;
  mode_ = mode;
  RepaintOverlay(map);
}

void BrushSelector::Click(MapView& view, Pixel) {
  if (selectedByPress_ || kind_ != Kind::Move || Host().Keys().control) return;
  constexpr HandleMode NEXT[] = {HandleMode::Rotate, HandleMode::Skew, HandleMode::Scale};
  SetMode(view.map, NEXT[static_cast<std::size_t>(mode_)]);
}

void BrushSelector::DrawOverlay(MapView& view, Canvas& canvas) {
  DrawSelection(view, canvas);
  const Bounds bounds = SelectionBounds(view.map);
  if (!bounds.IsEmpty()) {
    const DrawContext context = view.Context(canvas, canvas.ClipBox());
    DrawHandles(bounds, view.transform, mode_, context.pens.foreground, canvas);
  }
  preview_.Draw(view, canvas);
}

MoveStep BrushSelector::MoveTo(const MapView& view, Pixel at) const {
  return DragMove(SelectionBox(view), press_, WorldAt(view, at), AnchorOf(view), RulesOf(view));
}

ScaleStep BrushSelector::ScaleTo(const MapView& view, Pixel at) const {
  return DragScale(SelectionBox(view), AnchorOf(view), DirectionOf(grabbed_), WorldAt(view, at),
                   RulesOf(view), Host().Report());
}

RotateStep BrushSelector::RotateTo(const MapView& view, Pixel at) const {
  return DragRotate(SelectionBox(view), AnchorOf(view), startAngle_, WorldAt(view, at),
                    RulesOf(view));
}

// An edge that lies across is skewed along itself.
SkewGrab BrushSelector::GrabbedForSkew() const {
  const auto [u, v] = grabbed_.edge;
  return v != 0 ? SkewGrab{0, v > 0} : SkewGrab{1, u > 0};
}

SkewStep BrushSelector::SkewTo(const MapView& view, Pixel at) const {
  return DragSkew(SelectionBox(view), GrabbedForSkew(), press_, WorldAt(view, at), RulesOf(view));
}

void BrushSelector::Drag(MapView& view, Pixel at) {
  if (view.map.selection.empty()) {
    Cancel();
    return;
  }
  const auto show = [&](const ViewQuad& quad, const std::string& status) {
    Show(view, {ShapeOf(quad, view), SizeBeside(BoxAround(quad), view)}, status);
  };
  switch (kind_) {
    case Kind::Move: {
      const MoveStep step = MoveTo(view, at);
      ViewBox box = SelectionBox(view);
      for (std::size_t i = 0; i < 2; ++i) box.mins[i] += step.by[i], box.maxs[i] += step.by[i];
      return show(QuadOf(box.mins, box.maxs), step.status);
    }
    case Kind::Scale: {
      const ScaleStep step = ScaleTo(view, at);
      const ViewPoint anchor{double(view.snapx), double(view.snapy)};
      return show(QuadOf(anchor, step.dragged), step.status);
    }
    case Kind::Rotate: {
      const RotateStep step = RotateTo(view, at);
      return show(step.corners, step.status);
    }
    case Kind::Skew: {
      const SkewStep step = SkewTo(view, at);
      return show(step.corners, step.status);
    }
  }
}

const char* BrushSelector::NameOf(Kind kind) {
  switch (kind) {
    case Kind::Move:
      return "Move";
    case Kind::Scale:
      return "Scale";
    case Kind::Rotate:
      return "Turn";
    case Kind::Skew:
      return "Skew";
  }
  return "";
}

void BrushSelector::Drop(MapView& view, Pixel at) {
  if (view.map.selection.empty()) return;
  const bool copies = kind_ == Kind::Move && Host().Keys().control;
  const ActionScope action(view.map.Data(), copies ? "Duplicate" : NameOf(kind_));
  switch (kind_) {
    case Kind::Move:
      return Conclude(view, DropMove(view, at));
    case Kind::Scale:
      return Conclude(view, DropScale(view, at));
    case Kind::Rotate:
      return Conclude(view, DropRotate(view, at));
    case Kind::Skew:
      return Conclude(view, DropSkew(view, at));
  }
}

EditResult BrushSelector::DropMove(MapView& view, Pixel at) {
  const Vec3 by = ToWorld(MoveTo(view, at).by, view);
  if (by == Vec3()) return EditResult::Done;
  const TransformOptions how = tools_.HowToTransform();
  return Host().Keys().control ? DuplicateSelection(view.map, by, how)
                               : MoveSelection(view.map, by, how);
}

EditResult BrushSelector::DropScale(MapView& view, Pixel at) {
  const ScaleStep step = ScaleTo(view, at);
  const Bounds bounds = SelectionBounds(view.map);
  const std::array<int, 2> axes{view.transform.orienu, view.transform.orienv};
  DVec3 factors(1, 1, 1), fixed(bounds.mins);
  for (std::size_t i = 0; i < 2; ++i) {
    factors[axes[i]] = step.factors[i];
    if (grabbed_.edge[i] < 0) fixed[axes[i]] = bounds.maxs[axes[i]];
  }
  return ScaleSelection(view.map, factors, fixed, tools_.HowToTransform());
}

EditResult BrushSelector::DropRotate(MapView& view, Pixel at) {
  DVec3 centre;
  centre[view.transform.orienu] = view.snapx;
  centre[view.transform.orienv] = view.snapy;
  return RotateSelection(view.map, view.transform.orienu, view.transform.orienv,
                         -RotateTo(view, at).angle, centre, tools_.HowToTransform());
}

EditResult BrushSelector::DropSkew(MapView& view, Pixel at) {
  const SkewGrab grab = GrabbedForSkew();
  const std::array<int, 2> axes{view.transform.orienu, view.transform.orienv};
  return SkewSelection(view.map, axes[grab.along], axes[1 - grab.along], grab.highEdge,
                       SkewTo(view, at).amount, tools_.HowToTransform());
}

}  // namespace ferrowand
