#include "views/map_view.h"

#include <array>
#include <cmath>
#include <utility>

#include "base/report.h"
#include "document/action.h"
#include "document/picking.h"
#include "views/painted_part.h"
#include "views/tool.h"

namespace ferrowand {
namespace {

struct AxisPair {
  std::uint8_t u, v;
};

constexpr AxisPair AxesOf(Orientation orientation) {
  switch (orientation) {
    case Orientation::Top:
      return {0, 1};
    case Orientation::Front:
      return {0, 2};
    case Orientation::Side:
      return {1, 2};
  }
  return {0, 1};
}

Orientation OrientationOf(const ViewTransform& transform) {
  switch (transform.DepthAxis()) {
    case 0:
      return Orientation::Side;
    case 1:
      return Orientation::Front;
    default:
      return Orientation::Top;
  }
}

PixelRect Place(int left, int top, int width, int height) {
  return {left, top, left + width, top + height};
}

}  // namespace

int SnapToGrid(int world, std::uint8_t exponent) {
  const std::int64_t spacing = std::int64_t{1} << exponent;
  return static_cast<int>((world + spacing / 2) & ~(spacing - 1));
}

MapView::MapView(Map& map_, ViewHost& host, ViewList& list, const Options& options,
                 Tool* const& tool)
    : map(map_),
      rotationStep(options.rotationStep),
      host_(host),
      list_(list),
      options_(options),
      tool_(tool),
      boxes_(std::make_unique<ChildBoxes>()) {
  for (const MapView* sister : list_.ViewsOf(map)) lastSelected_ = sister->lastSelected_;
  RememberSelected();
  wasPale_ = IsPale();
  ReachTo(map.GetBounds());
  list_.Add(*this);
  map.AddObserver(*this);
}

MapView::~MapView() {
  map.RemoveObserver(*this);
  list_.Remove(*this);
}

void MapView::SetOrientation(Orientation orientation) {
  const AxisPair axes = AxesOf(orientation);
  transform.orienu = axes.u;
  transform.orienv = axes.v;
  transform.scalev = -std::abs(transform.scalev);
  axismask = static_cast<std::uint8_t>(7 & ~(1 << transform.DepthAxis()));
  ShowCaption();
  Refresh();
}

void MapView::ShowCaption() {
  std::string caption = Caption();
  if (caption == caption_) return;
  caption_ = std::move(caption);
  host_.SetCaption(caption_);
}

void MapView::RememberSelected() {
  const Bounds selected = SelectionBounds(map);
  if (!selected.IsEmpty()) lastSelected_ = selected;
}

void MapView::OnChange(const MapChange& change) {
  ShowCaption();
  RememberSelected();
  if (change.selection && tool_) tool_->SelectionChanged(map);
  if (change.selection && change.done.empty() && map.Data().action.empty()) TellSelection();
  const bool pale = IsPale();
  const bool palesAnew = pale != std::exchange(wasPale_, pale);
  const bool hasGrown = ReachTo(change.everything ? map.GetBounds() : change.box);
  if (change.everything) return Refresh();
  if (hasGrown) UpdateScrollBars();
  if (palesAnew) return Repaint();
  if (mapmode == MapMode::Heights && Heights() != std::pair(heightlo, heighthi)) return Repaint();
  const std::optional<PixelRect> part = PaintedPart(change, {transform, DrawFlags()});
  if (!part) {
    Repaint();
  } else if (!part->Empty()) {
    Repaint(*part);
  }
}

void MapView::TellSelection() {
  const std::vector<entity*>& objects = map.selection.Objects();
  if (objects.empty()) {
    SetStatus((tool_ ? tool_->Name() + ": " : "") + InWords(list_.FiguresOf(map)));
  } else {
    SetStatus(objects.size() == 1 ? InWords(*objects.front()) : InWords(objects));
  }
}

std::string MapView::Caption() const {
  static constexpr std::array<const char*, 3> LETTERS{"X", "Y", "Z"};
  return Format("%s%sView (%s): %s%s", LETTERS[transform.orienu], LETTERS[transform.orienv],
                OrientationName(transform.orienu, transform.orienv), map.Name().c_str(),
                map.readWithLoss() ? " (read with losses)" : "");
}

void MapView::Refresh() {
  ShowZoomText();
  ShowCoordinates();
  UpdateScrollBars();
  host_.Invalidate();
}

int MapView::SnapU(int world) const {
  return SnapToGrid(world, gridu);
}
int MapView::SnapV(int world) const {
  return SnapToGrid(world, gridv);
}

Vec3 MapView::PlaceForNew() const {
  const PixelSize area = host_.DrawingArea();
  const Pixel pixel = cursor_.value_or(Pixel{area.width / 2, area.height / 2});
  const int u = transform.ToWorldU(pixel.x), v = transform.ToWorldV(pixel.y);
  const bool snap = (map.optionBits() & MAP_SNAP) != 0;
  const Bounds selected = SelectionBounds(map);
  Vec3 place;
  if (!selected.IsEmpty()) place = (selected.mins + selected.maxs) * 0.5f;
  place[transform.orienu] = static_cast<float>(snap ? SnapU(u) : u);
  place[transform.orienv] = static_cast<float>(snap ? SnapV(v) : v);
  return place;
}

void MapView::GridSmaller(bool everyView) {
  if (gridu > MIN_GRID) --gridu;
  if (gridv > MIN_GRID) --gridv;
  Refresh();
  if (everyView) CopyGridToOthers();
}

void MapView::GridLarger(bool everyView) {
  // Meant: one axis at its limit holds the other one back, which the smaller grid does not know.
  if (gridu < MAX_GRID && gridv < MAX_GRID) {
    ++gridu;
    ++gridv;
    Refresh();
  }
  if (everyView) CopyGridToOthers();
}

void MapView::CopyGridToOthers() {
  for (MapView* view : list_.ViewsOf(map)) {
    if (view == this) continue;
    view->gridu = gridu;
    view->gridv = gridv;
    view->Refresh();
  }
}

void MapView::ToggleGrid() {
  map.SetOptionBits(map.optionBits() ^ MAP_GRID);
}

void MapView::ToggleSnap() {
  map.SetOptionBits(map.optionBits() ^ (MAP_SNAP | MAP_ANGLE_SNAP));
}

void MapView::ToggleGridAndSnap() {
  map.SetOptionBits(map.optionBits() ^ (MAP_GRID | MAP_SNAP | MAP_ANGLE_SNAP));
}

void MapView::SetMapMode(MapMode mode) {
  mapmode = mode;
  host_.Invalidate();
}

int GridStepOf(char c) {
  constexpr std::string_view SMALLER = "[{,<aA", LARGER = "]}.>zZ";
  if (SMALLER.find(c) != SMALLER.npos) return -1;
  return LARGER.find(c) != LARGER.npos ? 1 : 0;
}

bool MapView::OnCharacter(char c, bool shift) {
  if (const int step = GridStepOf(c)) {
    step < 0 ? GridSmaller(shift) : GridLarger(shift);
    return true;
  }
  switch (c) {
    case '+':
    case '=':
    case 's':
    case 'S':
      ZoomIn();
      return true;
    case '-':
    case '_':
    case 'x':
    case 'X':
      ZoomOut();
      return true;
    case 'g':
      ToggleGridAndSnap();
      return true;
    case 'G':
      ToggleGrid();
      return true;
    default:
      return tool_ && tool_->Key(*this, c);
  }
}

void MapView::OnMouseDown(Pixel at, int button, bool zoomKey, bool shift) {
  if (zoomKey) {
    zoomPresses_ |= button;
    ZoomAt(at, shift);
    return;
  }
  // The release of an earlier press may have gone to another window.
  zoomPresses_ &= ~button;
  if (tool_) tool_->MouseDown(*this, at, button);
}

void MapView::OnMouseMove(Pixel at, int buttons, bool panKey) {
  cursor_ = at;
  ShowCoordinates();
  if (panKey) {
    Pan(at);
    return;
  }
  EndPan();
  if (tool_) tool_->MouseMove(*this, at, buttons);
}

void MapView::OnMouseUp(Pixel at, int button) {
  if (zoomPresses_ & button) {
    zoomPresses_ &= ~button;
  } else if (tool_) {
    tool_->MouseUp(*this, at, button);
  }
}

void MapView::OnDoubleClick(Pixel at, int button) {
  if (tool_) tool_->DoubleClick(*this, at, button);
}

void MapView::OnActivate() {
  list_.BringToFront(*this);
  if (tool_) tool_->Activate(*this);
}

void MapView::SetStatus(const std::string& text) {
  status_ = text;
  if (host_.StatusBarShown()) {
    host_.SetText(ViewText::Message, text);
    return;
  }
  for (MapView* view : list_.ViewsOf(map)) {
    if (view == this || !view->host_.StatusBarShown()) continue;
    view->host_.SetText(ViewText::Message, text);
    return;
  }
}

std::string MapView::ZoomText() const {
  const char snap = map.optionBits() & MAP_SNAP ? 'S' : ' ';
  if (!(map.optionBits() & MAP_GRID)) return Format("%c%i%%", snap, ZoomPercent());
  return Format("(%ix%i)%c%i%%", 1 << gridu, 1 << gridv, snap, ZoomPercent());
}

void MapView::ShowCoordinates() {
  if (!cursor_) return;
  host_.SetText(ViewText::Coordinates,
                Format("%ix%i", transform.ToWorldU(cursor_->x), transform.ToWorldV(cursor_->y)));
}

void MapView::ShowZoomText() {
  host_.SetText(ViewText::ZoomAndGrid, ZoomText());
}

PixelRect MapView::ArrangedPlace(Arrangement arrangement, PixelSize frame) const {
  const auto [w, h] = frame;
  const Orientation orientation = OrientationOf(transform);
  const bool top = orientation == Orientation::Top;
  const bool side = orientation == Orientation::Side;
  switch (arrangement) {
    case Arrangement::Quarters:
      return Place(side ? w / 2 : 0, top || side ? 0 : h / 2, w / 2, h / 2);
    case Arrangement::XYLarge:
      if (top) return Place(0, 0, w / 2, h);
      return Place(w / 2, side ? 0 : h / 3, w / 2, h / 3);
    case Arrangement::ThreeDLarge:
      return Place(w / 2, top ? 0 : side ? h / 3 : 2 * h / 3, w / 2, h / 3);
  }
  return {};
}

PixelRect CameraPlace(Arrangement arrangement, PixelSize frame) {
  const auto [w, h] = frame;
  switch (arrangement) {
    case Arrangement::Quarters:
      return Place(w / 2, h / 2, w / 2, h / 2);
    case Arrangement::XYLarge:
      return Place(w / 2, 2 * h / 3, w / 2, h / 3);
    case Arrangement::ThreeDLarge:
      return Place(0, 0, w / 2, h);
  }
  return {};
}

}  // namespace ferrowand
