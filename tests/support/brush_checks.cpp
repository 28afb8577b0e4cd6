#include "support/brush_checks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "geometry/convex_hull.h"
#include "geometry/tolerance.h"
#include "operations/face_check.h"

namespace ferrowand {
namespace {

std::span<const WindingPoint> PointsOf(const Face& face) {
  return std::as_const(*face.w).Points();
}

// The corners of a solid, where each face has them to within the tolerance of its cuts.
class Corners {
 public:
  std::size_t IndexOf(const WindingPoint& p) {
    const DVec3 at(p.Position());
    const auto found = std::ranges::find_if(
        corners_, [&](const DVec3& corner) { return Length(corner - at) < 2 * ON_EPSILON; });
    const auto index = static_cast<std::size_t>(found - corners_.begin());
    if (found == corners_.end()) corners_.push_back(at);
    return index;
  }

 private:
  std::vector<DVec3> corners_;
};

// Every edge must be met once in each direction.
testing::AssertionResult IsClosed(const Brush& brush) {
  Corners corners;
  std::map<std::pair<std::size_t, std::size_t>, int> edges;
  for (const Face& face : brush.Faces()) {
    const auto points = PointsOf(face);
    for (std::size_t i = 0; i < points.size(); ++i) {
      const std::size_t from = corners.IndexOf(points[i]);
      const std::size_t to = corners.IndexOf(points[(i + 1) % points.size()]);
      if (from != to) ++edges[{from, to}];
    }
  }
  for (const auto& [edge, count] : edges) {
    const auto back = edges.find({edge.second, edge.first});
    if (count != 1 || back == edges.end()) {
      return testing::AssertionFailure() << "an edge is met " << count << " times, "
                                         << (back == edges.end() ? "never" : "too") << " back";
    }
  }
  return testing::AssertionSuccess();
}

// Its length is the area, its direction that of the face.
DVec3 AreaVector(const Face& face) {
  const auto points = PointsOf(face);
  const DVec3 first(points[0].Position());
  DVec3 sum;
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    sum = sum + Cross(DVec3(points[i + 1].Position()) - first, DVec3(points[i].Position()) - first);
  }
  return sum * 0.5;
}

double Area(const Face& face) {
  return Length(AreaVector(face));
}

// Where corners are not whole two faces may disagree by the tolerance on whether an edge between
// them is worth having. What is left open is then no wider than that, all along the edges.
testing::AssertionResult IsNearlyClosed(const Brush& brush) {
  DVec3 open;
  double edges = 0;
  for (const Face& face : brush.Faces()) {
    open = open + AreaVector(face);
    const auto points = PointsOf(face);
    for (std::size_t i = 0; i < points.size(); ++i) {
      edges += Length(DVec3(points[(i + 1) % points.size()].Position() - points[i].Position()));
    }
  }
  if (Length(open) <= ON_EPSILON * edges / 2) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "an opening of " << Length(open) << " square units";
}

}  // namespace

testing::AssertionResult IsSolid(const Brush& brush) {
  if (brush.getNumFaces() < 4 || brush.getNumFaces() > MAXFACES) {
    return testing::AssertionFailure() << brush.getNumFaces() << " faces";
  }
  Bounds bounds;
  for (int i = 0; i < brush.getNumFaces(); ++i) {
    const CheckCode code = FaceCheck(brush.face(i), ON_EPSILON);
    // That its points, once rounded, give no plane is no fault of the solid.
    if (code != CheckCode::None && code != CheckCode::NoNormal) {
      return testing::AssertionFailure() << "face " << i << ": " << CheckName(code);
    }
    for (const WindingPoint& p : PointsOf(brush.face(i))) bounds.Add(p.Position());
  }
  if (!(bounds == brush.Box())) return testing::AssertionFailure() << "the bounds are wrong";
  if (!IsBrushConvex(brush)) return testing::AssertionFailure() << "it is not convex";
  return IsOnWholeUnits(brush) ? IsClosed(brush) : IsNearlyClosed(brush);
}

bool IsOnWholeUnits(const Brush& brush) {
  return std::ranges::all_of(brush.Faces(), [](const Face& face) {
    return std::ranges::all_of(PointsOf(face), [](const WindingPoint& p) {
      return p.x == std::round(p.x) && p.y == std::round(p.y) && p.z == std::round(p.z);
    });
  });
}

double Volume(const Brush& brush) {
  const DVec3 middle = (DVec3(brush.Box().mins) + DVec3(brush.Box().maxs)) * 0.5;
  double volume = 0;
  for (const Face& face : brush.Faces()) {
    volume -= Area(face) * face.plane.DistanceTo(middle) / 3;
  }
  return volume;
}

double SurfaceArea(const Brush& brush) {
  double area = 0;
  for (const Face& face : brush.Faces()) area += Area(face);
  return area;
}

Brush RandomBrush(std::mt19937& random, const Vec3& centre, int reach, Reporter& reporter) {
  const auto whole = [&](int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
  };
  while (true) {
    std::vector<WholePoint> points;
    for (int n = whole(4, 12); n > 0; --n) {
      points.push_back(WholePoint(centre) + WholePoint(whole(-reach, reach), whole(-reach, reach),
                                                       whole(-reach, reach)));
    }
    Brush brush(Colour{});
    const std::vector<HullFace> faces = ConvexHull(points);
    for (const HullFace& corners : faces) {
      Face* face = brush.AddFace(Vec3(corners[0]), Vec3(corners[1]), Vec3(corners[2]));
      if (!face) break;
      face->xscale = face->yscale = 1;
      face->SetName("face" + std::to_string(brush.getNumFaces()));
    }
    brush.Rebuild(reporter);
    // Needles and slivers are not what maps are made of.
    if (faces.size() == static_cast<std::size_t>(brush.getNumFaces()) && IsSolid(brush) &&
        Volume(brush) > reach * SurfaceArea(brush) / 20) {
      return brush;
    }
  }
}

}  // namespace ferrowand
