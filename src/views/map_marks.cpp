#include "views/map_marks.h"

#include <algorithm>

#include "base/path_text.h"
#include "base/report.h"
#include "document/map.h"
#include "gamedata/level_lines.h"
#include "views/camera/camera.h"
#include "views/map_view.h"

namespace ferrowand {
namespace {

constexpr Pen LEAK{LEAK_COLOUR, 2}, LEAK_PLACE{LEAK_COLOUR, 1}, PORTAL{PORTAL_COLOUR, 1};
constexpr Pen FACE{MARKED_FACE_COLOUR, 3};
constexpr int PLACE_REACH = 6, END_REACH = 3;  // pixels

std::vector<Pixel> PixelsOf(const std::vector<Vec3>& points, const ViewTransform& transform) {
  std::vector<Pixel> pixels;
  for (const Vec3& point : points) {
    const Pixel pixel = transform.ToScreen(point);
    if (pixels.empty() || pixels.back() != pixel) pixels.push_back(pixel);
  }
  return pixels;
}

PixelRect Around(Pixel at, int reach) {
  return {at.x - reach, at.y - reach, at.x + reach + 1, at.y + reach + 1};
}

void DrawLeak(const MapMarks& marks, const ViewTransform& transform, Canvas& canvas) {
  const std::vector<Pixel> pixels = PixelsOf(marks.leak, transform);
  if (pixels.size() > 1) canvas.Polyline(LEAK, pixels);
  canvas.Ellipse(LEAK_PLACE, LEAK.colour, Around(pixels.front(), END_REACH));
  const Pixel at = transform.ToScreen(marks.leak[marks.at]);
  canvas.Ellipse(LEAK_PLACE, std::nullopt, Around(at, PLACE_REACH));
}

void DrawOutline(const std::vector<Vec3>& corners, const Pen& pen, const ViewTransform& transform,
                 Canvas& canvas) {
  std::vector<Pixel> pixels = PixelsOf(corners, transform);
  if (pixels.empty()) return;
  pixels.push_back(pixels.front());
  canvas.Polyline(pen, pixels);
}

void RepaintAll(const ViewList& views, const Map& map) {
  for (MapView* view : views.ViewsOf(map)) view->Repaint();
  Camera* const camera = views.CameraOf(map);
  const MapMarks* const marks = views.marks.Find(map);
  if (camera && marks) camera->ShowMarks(*marks);
}

std::string FileNameIn(const std::string& path) {
  const PathParts parts = SplitPath(path);
  return parts.base + parts.extension;
}

}  // namespace

const MapMarks* MarksOfMaps::Find(const Map& map) const {
  const auto found = marks_.find(&map);
  return found == marks_.end() ? nullptr : &found->second;
}

void DrawMarks(const MapMarks& marks, const ViewTransform& transform, Canvas& canvas) {
  if (marks.showsPortals) {
    for (const auto& portal : marks.portals) DrawOutline(portal, PORTAL, transform, canvas);
  }
  DrawOutline(marks.face, FACE, transform, canvas);
  if (marks.showsLeak && !marks.leak.empty()) DrawLeak(marks, transform, canvas);
}

std::string LoadLeak(ViewList& views, const Map& map, const std::string& ptsPath) {
  MapMarks& marks = views.marks.Of(map);
  const std::optional<Polyline> line = ReadLeakLine(ptsPath);
  marks.leak = line.value_or(Polyline());
  marks.at = 0;
  marks.showsLeak = !marks.leak.empty();
  RepaintAll(views, map);
  const std::string file = FileNameIn(ptsPath);
  if (!line) return file + " cannot be read: nothing tells where the map leaks.";
  if (line->empty()) return file + " is empty: this qbsp does not tell where the map leaks.";
  return Format("%s is drawn in the views, %u points: F8 walks along it.", file.c_str(),
                static_cast<unsigned>(line->size()));
}

std::string LoadPortals(ViewList& views, const Map& map, const std::string& prtPath) {
  MapMarks& marks = views.marks.Of(map);
  const std::optional<std::vector<Polyline>> portals = ReadPortals(prtPath);
  marks.portals = portals.value_or(std::vector<Polyline>());
  marks.showsPortals = !marks.portals.empty();
  RepaintAll(views, map);
  const std::string file = FileNameIn(prtPath);
  if (!portals) return file + " cannot be read, or holds no portals.";
  return Format("%s is drawn in the views, %u portals.", file.c_str(),
                static_cast<unsigned>(portals->size()));
}

void ShowLeak(ViewList& views, const Map& map, bool isShown) {
  views.marks.Of(map).showsLeak = isShown;
  RepaintAll(views, map);
}

void ShowPortals(ViewList& views, const Map& map, bool isShown) {
  views.marks.Of(map).showsPortals = isShown;
  RepaintAll(views, map);
}

void MarkFace(ViewList& views, const Map& map, std::vector<Vec3> corners) {
  const MapMarks* marks = views.marks.Find(map);
  if (corners.empty() && (!marks || marks->face.empty())) return;
  views.marks.Of(map).face = std::move(corners);
  RepaintAll(views, map);
}

std::string WalkLeak(ViewList& views, const Map& map, int step) {
  MapMarks& marks = views.marks.Of(map);
  const std::size_t count = marks.leak.size();
  if (count == 0) return "";
  // The first step goes to where the line begins.
  marks.at = marks.showsLeak ? (marks.at + (step > 0 ? 1 : count - 1)) % count : 0;
  marks.showsLeak = true;
  const Vec3& point = marks.leak[marks.at];
  for (MapView* view : views.ViewsOf(map)) view->CentreOn(point);
  RepaintAll(views, map);
  return Format("Leak line: point %u of %u (%g %g %g)", static_cast<unsigned>(marks.at + 1),
                static_cast<unsigned>(count), double{point.x}, double{point.y}, double{point.z});
}

}  // namespace ferrowand
