#include "views/tools/brush_reshape.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "document/written_points.h"
#include "geometry/tolerance.h"
#include "geometry/whole_plane.h"
#include "operations/brush_check.h"

namespace ferrowand {
namespace {

struct Facet {
  std::array<Vec3, 3> points;
  Plane plane;
  double area = 0;  // twice
};

double AreaOf(const Vec3& a, const Vec3& b, const Vec3& c) {
  return Length(Cross(DVec3(b) - DVec3(a), DVec3(c) - DVec3(a)));
}

bool IsOn(const Facet& facet, const Facet& plane) {
  return std::ranges::all_of(facet.points, [&](const Vec3& p) {
    return std::abs(plane.plane.DistanceTo(DVec3(p))) <= ON_EPSILON;
  });
}

bool IsBehind(const Plane& plane, std::span<const Vec3> corners) {
  return std::ranges::all_of(
      corners, [&](const Vec3& p) { return plane.DistanceTo(DVec3(p)) <= ON_EPSILON; });
}

bool StaysOn(const Plane& plane, std::span<const Vec3> corners) {
  return std::ranges::all_of(
      corners, [&](const Vec3& p) { return std::abs(plane.DistanceTo(DVec3(p))) <= CORNER_SLACK; });
}

// Of one plane the largest triangle is kept: it tells the plane best.
void AddFacet(std::vector<Facet>& facets, const Facet& facet) {
  const auto same =
      std::ranges::find_if(facets, [&](const Facet& other) { return IsOn(facet, other); });
  if (same == facets.end()) {
    facets.push_back(facet);
  } else if (facet.area > same->area) {
    *same = facet;
  }
}

// The flat faces that the corners of one face, clockwise, make on the outside of the solid.
std::vector<Facet> FacetsOf(std::span<const Vec3> face, std::span<const Vec3> solid) {
  std::vector<Facet> facets;
  for (std::size_t i = 0; i < face.size(); ++i) {
    for (std::size_t j = i + 1; j < face.size(); ++j) {
      for (std::size_t k = j + 1; k < face.size(); ++k) {
        Facet facet{{face[i], face[j], face[k]}, {}, AreaOf(face[i], face[j], face[k])};
        if (facet.area < SMALLEST_DOUBLE_AREA) continue;
        facet.plane = PlaneOf(facet.points);
        if (IsBehind(facet.plane, solid)) AddFacet(facets, facet);
      }
    }
  }
  return facets;
}

bool IsAmong(const Vec3& corner, std::span<const Vec3> corners) {
  return std::ranges::any_of(corners, [&](const Vec3& c) { return IsSameCorner(c, corner); });
}

void AddCorners(const Face& face, std::vector<Vec3>& corners) {
  if (!face.w) return;
  for (const WindingPoint& p : std::as_const(*face.w).Points()) {
    if (!IsAmong(p.Position(), corners)) corners.push_back(p.Position());
  }
}

// Two faces that have come to lie in one plane are one.
bool HasPlane(const Brush& brush, const Face& face) {
  return std::ranges::any_of(brush.Faces(), [&](const Face& other) {
    return Dot(other.plane.normal, face.plane.normal) > 0 &&
           std::ranges::all_of(face.planepts, [&](const Vec3& p) {
             return std::abs(other.plane.DistanceTo(DVec3(p))) <= ON_EPSILON;
           });
  });
}

bool AddOnce(Brush& brush, Face face) {
  return HasPlane(brush, face) || brush.AddFace(std::move(face));
}

Face FaceOn(const Face& like, const std::array<Vec3, 3>& points, const Plane& plane) {
  Face face = CopyFace(like);
  face.planepts = points;
  face.plane = plane;
  face.w.reset();
  return face;
}

// Whether all that was put together is there after the windings have been made.
std::optional<Brush> Finished(Brush brush, Reporter& reporter) {
  const int faces = brush.getNumFaces();
  brush.Rebuild(reporter);
  if (brush.getNumFaces() != faces || !IsInsideWorld(brush.Box())) return std::nullopt;
  for (int i = 0; i < faces; ++i) {
    UpdateFromWinding(brush.face(i));
    FindPlanePoints(brush.face(i));
  }
  if (!IsKeepable(brush, reporter)) return std::nullopt;
  return brush;
}

}  // namespace

std::vector<Vec3> CornersOf(const Brush& brush) {
  std::vector<Vec3> corners;
  for (const Face& face : brush.Faces()) AddCorners(face, corners);
  return corners;
}

std::vector<Vec3> CornersOf(const Face& face) {
  std::vector<Vec3> corners;
  AddCorners(face, corners);
  return corners;
}

std::optional<Brush> MoveCorners(const Brush& brush, std::span<const Vec3> corners, const Vec3& by,
                                 Reporter& reporter) {
  const auto moved = [&](const Vec3& p) { return IsAmong(p, corners) ? p + by : p; };
  std::vector<Vec3> solid;
  for (const Vec3& corner : CornersOf(brush)) {
    if (IsAmong(moved(corner), solid)) return std::nullopt;
    solid.push_back(moved(corner));
  }

  Brush result(brush.Outline());
  for (const Face& face : brush.Faces()) {
    if (!face.w) return std::nullopt;
    std::vector<Vec3> points;
    for (const WindingPoint& p : std::as_const(*face.w).Points()) {
      points.push_back(moved(p.Position()));
    }
    if (StaysOn(face.plane, points)) {
      if (!IsBehind(face.plane, solid) || !AddOnce(result, CopyFace(face))) return std::nullopt;
      continue;
    }
    const std::vector<Facet> facets = FacetsOf(points, solid);
    if (facets.empty()) return std::nullopt;
    for (const Facet& facet : facets) {
      if (!AddOnce(result, FaceOn(face, facet.points, facet.plane))) return std::nullopt;
    }
  }
  std::optional<Brush> finished = Finished(std::move(result), reporter);
  if (!finished) return std::nullopt;
  const std::vector<Vec3> made = CornersOf(*finished);
  const bool isComplete =
      made.size() == solid.size() &&
      std::ranges::all_of(solid, [&](const Vec3& corner) { return IsAmong(corner, made); });
  return isComplete ? std::move(finished) : std::nullopt;
}

std::optional<Brush> MoveFace(const Brush& brush, int face, const Vec3& by, Reporter& reporter) {
  Brush result(brush.Outline());
  for (int i = 0; i < brush.getNumFaces(); ++i) {
    const Face& old = brush.face(i);
    std::array<Vec3, 3> points = old.planepts;
    Plane plane = old.plane;
    if (i == face) {
      for (Vec3& p : points) p = p + by;
      plane.dist += Dot(plane.normal, DVec3(by));
    }
    result.AddFace(FaceOn(old, points, plane));
  }
  return Finished(std::move(result), reporter);
}

}  // namespace ferrowand
