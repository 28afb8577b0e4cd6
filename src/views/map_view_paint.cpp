// The picture of a view: background, grid, map, overlays.
#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "document/picking.h"
#include "platform/display.h"
#include "views/camera/camera.h"
#include "views/camera/camera_marker.h"
#include "views/entity_drawing.h"
#include "views/map_view.h"
#include "views/pale_canvas.h"
#include "views/tool.h"

namespace ferrowand {
namespace {

constexpr int MAJOR_EVERY = 8;
// Of all that is selected, on either background: far from every other pen, brush and class.
constexpr Colour SELECTION{255, 0, 255};
constexpr int SELECTION_WIDTH = 2, CAMERA_WIDTH = 2;  // pixels

constexpr DrawPens ON_BLACK{
    .background = {0, 0, 0},
    .minorGrid = {{0x64, 0x64, 0x64}},
    .majorGrid = {{0x80, 0x80, 0x80}},
    .foreground = {{255, 255, 255}},
    .entity = {{255, 160, 32}},
    .centreDot = {{0, 224, 224}},
    .light = {{255, 255, 128}},
    .targetLine = {{0, 176, 255}},
    .targetHead = {{128, 224, 255}},
    .camera = {{64, 255, 64}},
};

constexpr DrawPens ON_WHITE{
    .background = {255, 255, 255},
    .minorGrid = {{0xC8, 0xC8, 0xC8}},
    .majorGrid = {{0xAA, 0xAA, 0xAA}},
    .foreground = {{0, 0, 0}},
    .entity = {{224, 104, 0}},
    .centreDot = {{0, 96, 96}},
    .light = {{192, 144, 0}},
    .targetLine = {{0, 104, 192}},
    .targetHead = {{0, 56, 120}},
    .camera = {{0, 144, 0}},
};

DrawPens WithWidths(DrawPens pens) {
  pens.brushOutline = pens.boxOutline = {SELECTION, Scaled(SELECTION_WIDTH)};
  pens.camera.width = Scaled(CAMERA_WIDTH);
  return pens;
}

// The pixels of grid lines, each once, major ones apart.
struct GridLines {
  std::vector<int> minor, major;
};

template <typename ToScreen>
GridLines LinesOf(int worldA, int worldB, std::uint8_t exponent, float scale,
                  const ToScreen& toScreen) {
  const int spacing = 1 << exponent;
  const auto [low, high] = std::minmax({worldA, worldB});
  // Down to a multiple, below 0 too. A step and a pixel to either side: a line's pixel may belong
  // to the part although its coordinate does not.
  const int beyond = spacing + RoundToInt(std::abs(scale));
  GridLines lines;
  for (int world = (low - beyond) & ~(spacing - 1); world <= high + beyond; world += spacing) {
    std::vector<int>& pixels = world / spacing % MAJOR_EVERY == 0 ? lines.major : lines.minor;
    const int pixel = toScreen(world);
    if (pixels.empty() || pixels.back() != pixel) pixels.push_back(pixel);
  }
  return lines;
}

void DrawRows(Canvas& canvas, const Pen& pen, const std::vector<int>& rows, const PixelRect& part) {
  std::vector<PixelLine> lines;
  for (const int y : rows) {
    if (y >= part.top && y < part.bottom) lines.push_back({{part.left, y}, {part.right - 1, y}});
  }
  if (!lines.empty()) canvas.Lines(pen, lines);
}

void DrawColumns(Canvas& canvas, const Pen& pen, const std::vector<int>& columns,
                 const PixelRect& part) {
  std::vector<PixelLine> lines;
  for (const int x : columns) {
    if (x >= part.left && x < part.right) lines.push_back({{x, part.top}, {x, part.bottom - 1}});
  }
  if (!lines.empty()) canvas.Lines(pen, lines);
}

}  // namespace

const DrawPens& PensFor(bool blackBackground) {
  static const DrawPens onBlack = WithWidths(ON_BLACK), onWhite = WithWidths(ON_WHITE);
  return blackBackground ? onBlack : onWhite;
}

const DrawPens& MapView::Pens() const {
  return PensFor(options_.blackBack != 0);
}

void MapView::Paint(Canvas& canvas, const PixelRect& update) {
  if (update.Empty()) return;
  canvas.SetClip(update);
  canvas.FillRect(update, Pens().background);
  if (map.optionBits() & MAP_GRID) {
    DrawGrid(canvas, update);
    DrawAxes(canvas, update);
  }
  if (mapmode == MapMode::Heights) std::tie(heightlo, heighthi) = Heights();

  PaleCanvas pale(canvas, Pens().background);
  DrawContext context = Context(IsPale() ? static_cast<Canvas&>(pale) : canvas, update);
  DrawTree(map, context);

  if (const MapMarks* marks = list_.marks.Find(map)) DrawMarks(*marks, transform, canvas);
  DrawCamera(canvas);
  if (tool_) {
    tool_->DrawOverlay(*this, canvas);
    tool_->DrawOverlayForOther(*this, canvas);
  }
}

bool MapView::IsPale() const {
  return options_.paleOthers != 0 && !map.selection.empty();
}

DrawContext MapView::Context(Canvas& canvas, const PixelRect& visible) const {
  return {.canvas = canvas,
          .transform = transform,
          .pens = Pens(),
          .flags = DrawFlags(),
          .visible = visible,
          .pen = Pens().foreground,
          .drawsEntities = map.Data().shown.pointEntities,
          .centreDots = centreDots,
          .heightlo = heightlo,
          .heighthi = heighthi,
          .oneColour = options_.mipType};
}

void MapView::DrawGrid(Canvas& canvas, const PixelRect& update) const {
  const DrawPens& pens = Pens();
  const GridLines rows = LinesOf(
      transform.ToWorldV(update.top), transform.ToWorldV(update.bottom), gridv, transform.scalev,
      [this](int world) { return transform.ToScreenV(static_cast<float>(world)); });
  DrawRows(canvas, pens.minorGrid, rows.minor, update);
  DrawRows(canvas, pens.majorGrid, rows.major, update);
  const GridLines columns = LinesOf(
      transform.ToWorldU(update.left), transform.ToWorldU(update.right), gridu, transform.scaleu,
      [this](int world) { return transform.ToScreenU(static_cast<float>(world)); });
  DrawColumns(canvas, pens.minorGrid, columns.minor, update);
  DrawColumns(canvas, pens.majorGrid, columns.major, update);
}

// One pixel right of and below their places, so that they can be told from the grid lines there.
void MapView::DrawAxes(Canvas& canvas, const PixelRect& update) const {
  const Pen& pen = Pens().majorGrid;
  DrawRows(canvas, pen, {transform.ToScreenV(0) + 1}, update);
  DrawColumns(canvas, pen, {transform.ToScreenU(0) + 1}, update);
}

void MapView::DrawCamera(Canvas& canvas) const {
  const Camera* camera = list_.CameraOf(map);
  if (camera) DrawCameraMarker(canvas, transform, camera->Pose(), Pens().camera);
}

void MapView::RepaintCamera(const CameraPose& pose) {
  Repaint(CameraMarkerBox(transform, pose));
}

std::pair<int, int> MapView::Heights() const {
  Bounds box = SelectionBounds(map);
  if (map.selection.empty()) box = map.GetBounds();
  if (box.IsEmpty()) return {0, 0};
  const int depth = transform.DepthAxis();
  return {RoundToInt(box.mins[depth]), RoundToInt(box.maxs[depth])};
}

unsigned MapView::DrawFlags() const {
  unsigned flags = 0;
  const auto set = [&](bool on, unsigned bit) { flags |= on ? bit : 0; };
  set(mapmode == MapMode::Heights, DRAW_HEIGHTS);
  set(mapmode == MapMode::OneMip, DRAW_1X1MIPMAP);
  set(mapmode == MapMode::LayerColour, DRAW_LAYER_COLOUR);
  set(options_.drawLightRadius != 0, DRAW_LIGHT_RADIUS);
  set(options_.forceEntityLinks != 0, DRAW_TARGETS);
  set(options_.entityNames != 0, DRAW_CLASSNAMES);
  set(map.Data().shown.templates, DRAW_TEMPLATES);
  set(options_.blackBack != 0, DRAW_WHITE_TEXT);
  return flags;
}

}  // namespace ferrowand
