#include "operations/csg.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/report.h"
#include "document/written_points.h"
#include "operations/brush_check.h"
#include "operations/face_check.h"

namespace ferrowand {
namespace {

constexpr const char* SOURCE = "brush.cpp";
constexpr int SMALLEST_HALF = 3;  // faces, before the cap

struct Sides {
  bool front = false;
  bool back = false;
};

Sides SidesOf(const Face& face, const Plane& plane) {
  Sides sides;
  if (!face.w) return sides;
  for (const WindingPoint& p : std::as_const(*face.w).Points()) {
    const double distance = plane.DistanceTo(DVec3(p.Position()));
    sides.front |= distance > ON_EPSILON;
    sides.back |= distance < -ON_EPSILON;
  }
  return sides;
}

Sides SidesOf(const Brush& brush, const Plane& plane) {
  Sides sides;
  for (const Face& face : brush.Faces()) {
    const Sides ofFace = SidesOf(face, plane);
    sides.front |= ofFace.front;
    sides.back |= ofFace.back;
  }
  return sides;
}

Face WithoutWinding(const Face& face) {
  Face copy;
  copy.TakeLook(face);
  copy.planepts = face.planepts;
  copy.plane = face.plane;
  return copy;
}

// A plane and three points of it.
struct Cut {
  Plane plane;
  std::array<Vec3, 3> points;

  Cut Flipped() const { return {plane.Flipped(), {points[2], points[1], points[0]}}; }
};

// False when the cap is one face too many. `line` is that of the check.
bool CloseHalf(Brush& half, const Cut& cut, const Face& look, const char* check, unsigned line,
               Reporter& reporter) {
  if (half.getNumFaces() < SMALLEST_HALF) {
    half.Clear();
    return true;
  }
  // Meant to be asked once more, although it has just been answered.
  if (!(half.getNumFaces() > 2)) reporter.Assert(check, SOURCE, line);
  Face cap;
  cap.TakeLook(look);
  cap.plane = cut.plane;
  cap.planepts = cut.points;
  if (!half.AddFace(std::move(cap))) return false;
  half.Rebuild(reporter);
  return true;
}

// False when a half would have too many faces.
bool Split(const Brush& source, const Cut& cut, const Face& look, Brush& outside, Brush& inside,
           Reporter& reporter) {
  outside.Clear();
  inside.Clear();
  for (const Face& face : source.Faces()) {
    const Sides sides = SidesOf(face, cut.plane);
    if (sides.front) outside.AddFace(WithoutWinding(face));
    if (sides.back) inside.AddFace(WithoutWinding(face));
  }
  const bool fits =
      CloseHalf(outside, cut.Flipped(), look, "outside->getNumFaces()>2", 1852, reporter) &&
      CloseHalf(inside, cut, look, "inside->getNumFaces()>2", 1867, reporter);
  if (!fits) {
    outside.Clear();
    inside.Clear();
  }
  return fits;
}

}  // namespace

bool SplitBrush(const Brush& source, const Plane& split, Brush& outside, Brush& inside,
                Reporter& reporter) {
  if (source.getNumFaces() == 0) {
    outside.Clear();
    inside.Clear();
    return false;
  }
  const WindingPtr square = BasePolyForPlane(split, reporter);
  Cut cut{split, {}};
  for (std::size_t i = 0; i < 3; ++i) cut.points[i] = square->Points()[i].Position();
  Split(source, cut, source.face(0), outside, inside, reporter);
  return true;
}

Carving Carve(const Brush& source, const Brush& cutter, const ClassSet& classes,
              const CapLook& caps, Reporter& reporter) {
  Carving carving{CutLoss::None, {}, OnWholePlanes(source, reporter)};
  Brush& rest = carving.inside;
  const Brush whole = OnWholePlanes(cutter, reporter);
  for (const Face& face : whole.Faces()) {
    const Sides sides = SidesOf(rest, face.plane);
    if (sides.back && !sides.front) continue;
    EntityPtr piece = std::make_unique<entity>(classes);
    if (sides.front && !sides.back) {
      // All of it is outside. Its faces on the plane are its own, and so stay.
      piece->brush = std::exchange(rest, Brush(source.Outline()));
      carving.outside.push_back(std::move(piece));
      break;
    }
    Brush inside(source.Outline());
    const Face& ofBrushes = caps.texture == CapTexture::First ? rest.face(0) : face;
    const Face& look = caps.given ? *caps.given : ofBrushes;
    if (!Split(rest, {face.plane, face.planepts}, look, piece->brush, inside, reporter)) {
      carving.loss = CutLoss::TooManyFaces;
      break;
    }
    rest = std::move(inside);
    if (piece->brush.getNumFaces() < SMALLEST_SOLID || rest.getNumFaces() < SMALLEST_SOLID) {
      carving.loss = CutLoss::TooSmall;
      break;
    }
    carving.outside.push_back(std::move(piece));
  }
  return carving;
}

}  // namespace ferrowand
