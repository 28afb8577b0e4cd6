// Zooming, scrolling, panning and resizing of a view.
#include <algorithm>
#include <cmath>

#include "views/camera/camera.h"
#include "views/map_view.h"
#include "views/scrolled_part.h"
#include "views/tool.h"
#include "views/wrapped_cursor.h"

namespace ferrowand {
namespace {

constexpr double MIN_SCALE = 0.015625;   // world units a pixel
constexpr double FIT_SCALE = 0.0625;     // where zooming to a box starts
constexpr double MAX_FIT_SCALE = 65536;  // more than the world on one pixel
constexpr int FIT_BORDER = 20;           // pixels
constexpr int LINE_STEP = 10;            // pixels
constexpr int PAGE_STEP = 100;           // pixels
constexpr int RESIZE_FACTOR = 4;

std::int16_t LimitOrigin(double world, int limit) {
  return static_cast<std::int16_t>(RoundToInt(std::clamp<double>(world, -limit, limit)));
}

ScrollBar BarOf(double extent, int origin, int limit) {
  const int position = extent < 0 ? limit - origin : limit + origin;
  return {static_cast<int>(std::abs(extent)), position, 2 * limit};
}

// The smallest power of two from 1/16 up that shows `extent` units on that many pixels.
double FittingScale(double extent, int pixels) {
  const double required = extent / std::max(pixels - FIT_BORDER, 1);
  double scale = FIT_SCALE;
  while (scale < required && scale < MAX_FIT_SCALE) scale *= 2;
  return scale;
}

// A movement of less than a unit, at the high zooms, counts as one unit: the origins are whole.
double AtLeastAUnit(double movement) {
  return movement != 0 && std::abs(movement) < 1 ? std::copysign(1, movement) : movement;
}

// How far an origin must step, by whole pixels, so that origin .. origin + extent lies in the
// world. Where a pixel is less than a unit the steps are units: the origins are whole.
double StepsIntoWorld(double origin, double extent, double scale, int limit) {
  const double low = std::min(origin, origin + extent);
  const double high = std::max(origin, origin + extent);
  const double step = std::max(std::abs(scale), 1.0);
  if (low < -limit) return std::ceil((-limit - low) / step) * step;
  if (high > limit) return -std::ceil((high - limit) / step) * step;
  return 0;
}

// What the cursor has moved since the last step of a pan, as whole world units. `last` goes on by
// that much and no further, so that at high zooms small movements add up.
double TakeMovement(int cursor, int& last, double scale) {
  const double units = std::trunc((cursor - last) * scale);
  last += static_cast<int>(units / scale);
  return units;
}

}  // namespace

double MapView::ExtentU() const {
  return host_.DrawingArea().width * static_cast<double>(transform.scaleu);
}
double MapView::ExtentV() const {
  return host_.DrawingArea().height * static_cast<double>(transform.scalev);
}

void MapView::SetOrigin(double u, double v) {
  transform.originu = LimitOrigin(u, worldLimit_);
  transform.originv = LimitOrigin(v, worldLimit_);
}

// What was within reach once stays so: what is taken away may come back. True when it has grown.
bool MapView::ReachTo(const Bounds& box) {
  if (box.IsEmpty()) return false;
  float farthest = 0;
  for (int axis = 0; axis < 3; ++axis) {
    farthest = std::max({farthest, std::fabs(box.mins[axis]), std::fabs(box.maxs[axis])});
  }
  const int limit = RoundToInt(std::min<double>(std::ceil(farthest), LARGEST_WORLD_LIMIT));
  const bool grows = limit > worldLimit_;
  worldLimit_ = std::max(limit, worldLimit_);
  return grows;
}

void MapView::ScaleBy(double factor) {
  transform.scaleu = static_cast<float>(transform.scaleu * factor);
  transform.scalev = static_cast<float>(transform.scalev * factor);
}

bool MapView::MayScaleBy(double factor) const {
  if (factor > 1) {
    return std::abs(ExtentU() * factor) < worldLimit_ && std::abs(ExtentV() * factor) < worldLimit_;
  }
  return std::abs(transform.scaleu * factor) >= MIN_SCALE &&
         std::abs(transform.scalev * factor) >= MIN_SCALE;
}

void MapView::UpdateScrollBars() {
  host_.SetScrollBars(BarOf(ExtentU(), transform.originu, worldLimit_),
                      BarOf(ExtentV(), transform.originv, worldLimit_));
}

void MapView::CentreOn(const Vec3& point) {
  const int halfU = static_cast<int>(ExtentU()) / 2;
  const int halfV = static_cast<int>(ExtentV()) / 2;
  SetOrigin(std::trunc(point[transform.orienu]) - halfU,
            std::trunc(point[transform.orienv]) - halfV);
  UpdateScrollBars();
  ShowCoordinates();
  host_.Invalidate();
}

void MapView::ZoomTo(const Bounds& box) {
  for (int axis = 0; axis < 3; ++axis) {
    if (!(box.mins[axis] < box.maxs[axis])) return;
  }
  const Vec3 size = box.maxs - box.mins;
  const PixelSize area = host_.DrawingArea();
  const double scale = std::max(FittingScale(size[transform.orienu], area.width),
                                FittingScale(size[transform.orienv], area.height));
  transform.scaleu = static_cast<float>(std::copysign(scale, transform.scaleu));
  transform.scalev = static_cast<float>(std::copysign(scale, transform.scalev));
  CentreOn((box.mins + box.maxs) * 0.5f);
  ShowZoomText();
  ShowCoordinates();
}

void MapView::ZoomIn() {
  const auto zoom = [](float& scale, double extent) {
    if (std::abs(scale) * 0.5 < MIN_SCALE) return 0.0;
    scale *= 0.5f;
    return extent / 4;
  };
  const double u = zoom(transform.scaleu, ExtentU());
  const double v = zoom(transform.scalev, ExtentV());
  SetOrigin(transform.originu + RoundToInt(u), transform.originv + RoundToInt(v));
  Refresh();
}

void MapView::ZoomOut() {
  if (!MayScaleBy(2)) return;
  SetOrigin(transform.originu - RoundToInt(ExtentU() / 2),
            transform.originv - RoundToInt(ExtentV() / 2));
  ScaleBy(2);
  Refresh();
}

void MapView::ZoomAt(Pixel at, bool out) {
  const double factor = out ? 2 : 0.5;
  if (!MayScaleBy(factor)) return;
  const double u = transform.originu + at.x * static_cast<double>(transform.scaleu);
  const double v = transform.originv + at.y * static_cast<double>(transform.scalev);
  ScaleBy(factor);
  SetOrigin(u - at.x * static_cast<double>(transform.scaleu),
            v - at.y * static_cast<double>(transform.scalev));
  Refresh();
}

int MapView::ZoomPercent() const {
  return static_cast<int>(100 / transform.scaleu);
}

void MapView::ScrollBy(double u, double v) {
  const ViewTransform before = transform;
  SetOrigin(before.originu + AtLeastAUnit(u), before.originv + AtLeastAUnit(v));
  const double dx = (before.originu - transform.originu) / static_cast<double>(transform.scaleu);
  const double dy = (before.originv - transform.originv) / static_cast<double>(transform.scalev);
  if (dx == 0 && dy == 0) return;
  UpdateScrollBars();
  ShowCoordinates();
  // A picture can be moved by whole pixels only, what a tool has inverted stays where it is, and
  // lines that are no part of the map are nobody's to tell.
  const MapMarks* marks = list_.marks.Find(map);
  const bool isMarked = marks && marks->IsShown();
  const bool moves = dx == std::trunc(dx) && dy == std::trunc(dy) && !isMarked;
  if (!moves || (tool_ && tool_->HasPreview())) return host_.Invalidate();
  const Pixel by{static_cast<int>(dx), static_cast<int>(dy)};
  const auto strayed = StrayedParts(map, {before, transform, by, DrawFlags(), host_.DrawingArea()});
  strayed ? host_.ScrollPicture(by, *strayed) : host_.Invalidate();
  if (const Camera* camera = list_.CameraOf(map)) RepaintCamera(camera->Pose());
}

void MapView::ScrollToThumb(bool vertical, int position) {
  const float scale = vertical ? transform.scalev : transform.scaleu;
  const int origin = scale < 0 ? worldLimit_ - position : position - worldLimit_;
  ScrollBy(vertical ? 0 : origin - transform.originu, vertical ? origin - transform.originv : 0);
}

void MapView::ScrollLines(bool vertical, int lines) {
  ScrollBy(vertical ? 0 : LINE_STEP * lines * static_cast<double>(transform.scaleu),
           vertical ? LINE_STEP * lines * static_cast<double>(transform.scalev) : 0);
}

void MapView::ScrollPages(bool vertical, int pages) {
  ScrollLines(vertical, pages * (PAGE_STEP / LINE_STEP));
}

void MapView::Pan(Pixel cursor) {
  if (panx == NO_PAN && pany == NO_PAN) {
    host_.CaptureMouse(true);
    panx = cursor.x;
    pany = cursor.y;
  } else {
    const double u = TakeMovement(cursor.x, panx, transform.scaleu);
    const double v = TakeMovement(cursor.y, pany, transform.scalev);
    ScrollBy(-u, -v);
  }
  WrapCursor(cursor);
}

void MapView::EndPan() {
  if (panx == NO_PAN && pany == NO_PAN) return;
  panx = pany = NO_PAN;
  host_.CaptureMouse(false);
}

void MapView::WrapCursor(Pixel cursor) {
  const Pixel to = WrappedCursor(cursor, host_.Frame(), host_.DrawingArea());
  if (to == cursor) return;
  panx += to.x - cursor.x;
  pany += to.y - cursor.y;
  host_.MoveCursor(to);
}

void MapView::OnResize() {
  while (std::abs(ExtentU() * RESIZE_FACTOR) >= worldLimit_ ||
         std::abs(ExtentV() * RESIZE_FACTOR) >= worldLimit_) {
    ScaleBy(0.5);
  }
  const auto into = [this](double origin, double extent, double scale) {
    return origin + StepsIntoWorld(origin, extent, scale, worldLimit_);
  };
  SetOrigin(into(transform.originu, ExtentU(), transform.scaleu),
            into(transform.originv, ExtentV(), transform.scalev));
  Refresh();
}

}  // namespace ferrowand
