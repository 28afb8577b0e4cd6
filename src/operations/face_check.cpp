#include "operations/face_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

#include "base/report.h"
#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

std::span<const WindingPoint> PointsOf(const Face& face) {
  return std::as_const(*face.w).Points();
}

DVec3 Next(std::span<const WindingPoint> points, std::size_t i) {
  return DVec3(points[i + 1 < points.size() ? i + 1 : 0].Position());
}

double FarthestCoordinate(const DVec3& p) {
  return std::max({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
}

// How many of the other points lie outside the edge that begins at point `i`.
std::ptrdiff_t PointsBeyondEdge(const Face& face, std::size_t i) {
  const auto points = PointsOf(face);
  const DVec3 at(points[i].Position());
  const DVec3 outwards = Normalise(Cross(face.plane.normal, Next(points, i) - at));
  const double limit = Dot(at, outwards) + ON_EPSILON;
  return std::ranges::count_if(points, [&](const WindingPoint& other) {
    return &other != &points[i] && Dot(DVec3(other.Position()), outwards) > limit;
  });
}

CheckCode CheckPlace(const Face& face, std::size_t i) {
  const double farthest = FarthestCoordinate(DVec3(PointsOf(face)[i].Position()));
  if (farthest > BOGUS_RANGE) return CheckCode::BogusRange;
  return farthest >= MAX_VISIBLE ? CheckCode::MaxVisibleExtent : CheckCode::None;
}

CheckCode CheckPoint(const Face& face, std::size_t i, double tolerance) {
  const auto points = PointsOf(face);
  const DVec3 p(points[i].Position());
  if (std::fabs(face.plane.DistanceTo(p)) > tolerance) return CheckCode::PointOffPlane;
  if (Length(Next(points, i) - p) < SHORTEST_EDGE) return CheckCode::DegenerateEdge;
  return PointsBeyondEdge(face, i) > 0 ? CheckCode::NonConvex : CheckCode::None;
}

// Cut to whole units, as 16 bits hold them; what is no number counts as 0.
DVec3 Cut(const WindingPoint& p) {
  const auto cut = [](float value) { return std::isfinite(value) ? std::trunc(value) : 0; };
  return {cut(p.x), cut(p.y), cut(p.z)};
}

// Whether the three points that a file would know the plane by lie on one line.
bool WrittenPointsHaveNoNormal(const Face& face) {
  const auto points = PointsOf(face);
  const DVec3 p1 = Cut(points[1]);
  return Cross(Cut(points[0]) - p1, Cut(points[2]) - p1) == DVec3();
}

CheckCode Check(const Face& face, double tolerance, bool anywhere) {
  if (!face.w) return CheckCode::NoWinding;
  if (face.w->numpoints < 3) return CheckCode::TooFewPoints;
  for (std::size_t i = 0; i < PointsOf(face).size(); ++i) {
    CheckCode code = anywhere ? CheckCode::None : CheckPlace(face, i);
    if (code == CheckCode::None) code = CheckPoint(face, i, tolerance);
    if (code != CheckCode::None) return code;
  }
  if (face.plane.normal == DVec3() || WrittenPointsHaveNoNormal(face)) return CheckCode::NoNormal;
  return CheckCode::None;
}

}  // namespace

const char* CheckName(CheckCode code) {
  static constexpr std::array NAMES = {"No error",
                                       "No winding",
                                       "Too few points",
                                       "Bogus range",
                                       "Max visible extent",
                                       "Point off plane",
                                       "Degenerate edge",
                                       "Non convex",
                                       "16 or more faces",
                                       "32 or more faces",
                                       "64 or more faces",
                                       "Unknown texture",
                                       "Brush plane with no normal",
                                       "Entity with brush and origin"};
  return NAMES[static_cast<std::size_t>(code)];
}

void CheckFace(const Face& face, Reporter& reporter) {
  if (!face.w) {
    reporter.Geometry("CheckFace: no winding");
    return;
  }
  const auto points = PointsOf(face);
  if (points.size() < 3) {
    reporter.Geometry("CheckFace: %i points", static_cast<int>(points.size()));
  }
  for (std::size_t i = 0; i < points.size(); ++i) {
    const DVec3 p(points[i].Position());
    for (const double value : {p.x, p.y, p.z}) {
      // The word is meant as it stands.
      if (std::fabs(value) > BOGUS_RANGE) reporter.Geometry("CheckFace: BUGUS_RANGE: %f", value);
    }
    if (std::fabs(face.plane.DistanceTo(p)) > ON_EPSILON) {
      reporter.Geometry("CheckFace: point off plane");
    }
    if (Length(Next(points, i) - p) < SHORTEST_EDGE) {
      reporter.Geometry("CheckFace: degenerate edge");
    }
    for (std::ptrdiff_t n = PointsBeyondEdge(face, i); n > 0; --n) {
      reporter.Geometry("CheckFace: non-convex");
    }
  }
}

CheckCode FaceCheck(const Face& face, double tolerance) {
  return Check(face, tolerance, false);
}

CheckCode ShapeCheck(const Face& face, double tolerance) {
  return Check(face, tolerance, true);
}

bool IsPointInsideBrush(const Brush& brush, const DVec3& point) {
  return std::ranges::none_of(
      brush.Faces(), [&](const Face& face) { return face.plane.DistanceTo(point) > ON_EPSILON; });
}

bool IsBrushConvex(const Brush& brush) {
  return std::ranges::all_of(brush.Faces(), [&](const Face& face) {
    return !face.w || std::ranges::all_of(PointsOf(face), [&](const WindingPoint& p) {
      return IsPointInsideBrush(brush, DVec3(p.Position()));
    });
  });
}

}  // namespace ferrowand
