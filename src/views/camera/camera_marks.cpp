#include "views/camera/camera_marks.h"

#include <cmath>
#include <utility>

#include "document/face_selection.h"
#include "views/camera/camera_shapes.h"
#include "views/map_marks.h"

namespace ferrowand {
namespace {

constexpr float RIBBON = 1;       // world units: as wide as the line of a leak is drawn
constexpr double HELD_REACH = 3;  // world units, from a corner that is held
constexpr float PLACE_REACH = 8;  // world units, around the point that the user has walked to

void AddPolygon(const std::vector<Vec3>& corners, Shape& shape) {
  if (corners.size() < 3) return;
  ShapePolygon polygon;
  polygon.begin = static_cast<std::uint32_t>(shape.points.size());
  for (const Vec3& corner : corners) shape.points.push_back({corner});
  polygon.end = static_cast<std::uint32_t>(shape.points.size());
  shape.polygons.push_back(polygon);
}

// A square on the face around the corner that is held.
void AddCorner(const Vec3& corner, const DVec3& normal, Shape& shape) {
  const DVec3 aside = std::abs(normal.z) > 0.5 ? DVec3(1, 0, 0) : DVec3(0, 0, 1);
  const Vec3 u(Normalise(Cross(normal, aside)) * HELD_REACH);
  const Vec3 v(Normalise(Cross(normal, DVec3(u))) * HELD_REACH);
  AddPolygon({corner + u, corner + v, corner - u, corner - v}, shape);
}

// A line is no polygon: it is a narrow ribbon, upright unless the line itself is.
Shape LeakShape(const std::vector<Vec3>& points, std::size_t at) {
  Shape shape = BoxShape({points[at] - Vec3(PLACE_REACH, PLACE_REACH, PLACE_REACH),
                          points[at] + Vec3(PLACE_REACH, PLACE_REACH, PLACE_REACH)});
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const Vec3 &from = points[i], &to = points[i + 1];
    const bool isUpright = from.x == to.x && from.y == to.y;
    const Vec3 across = isUpright ? Vec3(RIBBON, 0, 0) : Vec3(0, 0, RIBBON);
    AddPolygon({from, to, to + across, from + across}, shape);
  }
  return shape;
}

}  // namespace

void CameraMarks::Set(ShapeName name, Colour colour, Shape shape) {
  std::erase_if(outlines_, [name](const Outline& outline) { return outline.name == name; });
  if (!shape.polygons.empty()) outlines_.push_back({name, colour});
  shapes_[name] = std::move(shape);
  stale_.push_back(name);
}

void CameraMarks::SetDraft(const std::optional<Bounds>& box) {
  Set(DRAFT_SHAPE, PREVIEW_EDGES, box ? BoxShape(*box) : Shape());
}

void CameraMarks::SetMarks(const MapMarks& marks) {
  const bool hasLeak = marks.showsLeak && !marks.leak.empty();
  Set(LEAK_SHAPE, LEAK_COLOUR, hasLeak ? LeakShape(marks.leak, marks.at) : Shape());
  Shape portals, face;
  if (marks.showsPortals) {
    for (const std::vector<Vec3>& portal : marks.portals) AddPolygon(portal, portals);
  }
  Set(PORTAL_SHAPE, PORTAL_COLOUR, std::move(portals));
  AddPolygon(marks.face, face);
  Set(FACE_SHAPE, MARKED_FACE_COLOUR, std::move(face));
}

void CameraMarks::SetPicked(const FaceSelection& faces) {
  Shape picked;
  for (const PickedFace& face : faces) {
    const winding* w = face.Get().w.get();
    if (!w) continue;
    std::vector<Vec3> corners;
    for (const WindingPoint& p : w->Points()) corners.push_back(p.Position());
    AddPolygon(corners, picked);
    if (face.held < 0 || face.held >= w->numpoints) continue;
    AddCorner(corners[static_cast<std::size_t>(face.held)], face.Get().plane.normal, picked);
  }
  Set(PICKED_SHAPE, PICKED_FACE_COLOUR, std::move(picked));
}

void CameraMarks::GiveTo(CameraRenderer& renderer, bool isAllLost) {
  if (isAllLost) {
    stale_.clear();
    for (const auto& [name, shape] : shapes_) stale_.push_back(name);
  }
  for (const ShapeName name : std::exchange(stale_, {})) renderer.SetShape(name, shapes_[name]);
}

}  // namespace ferrowand
