#include "support/brush_checks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "geometry/convex_hull.h"
#include "geometry/tolerance.h"
#include "geometry/whole_plane.h"
#include "operations/face_check.h"

namespace ferrowand {
namespace {

std::span<const WindingPoint> PointsOf(const Face& face) {
  return std::as_const(*face.w).Points();
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

// What is closed has as much area to one side as to the other. Where corners are not whole two
// faces may disagree by the tolerance on whether an edge between them is worth having: what is left
// open then is no wider than that, all along the edges.
testing::AssertionResult IsClosed(const Brush& brush) {
  DVec3 open;
  double edges = 0;
  for (const Face& face : brush.Faces()) {
    open = open + AreaVector(face);
    const auto points = PointsOf(face);
    for (std::size_t i = 0; i < points.size(); ++i) {
      edges += Length(DVec3(points[(i + 1) % points.size()].Position() - points[i].Position()));
    }
  }
  const double allowed = IsOnWholeUnits(brush) ? 0 : ON_EPSILON * edges / 2;
  if (Length(open) <= allowed) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "an opening of " << Length(open) << " square units";
}

}  // namespace

testing::AssertionResult IsSolid(const Brush& brush) {
  if (brush.getNumFaces() < 4 || brush.getNumFaces() > MAXFACES) {
    return testing::AssertionFailure() << brush.getNumFaces() << " faces";
  }
  Bounds bounds;
  for (int i = 0; i < brush.getNumFaces(); ++i) {
    const CheckCode code = ShapeCheck(brush.face(i), ON_EPSILON);
    // That its points, once rounded, give no plane is no fault of the solid.
    if (code != CheckCode::None && code != CheckCode::NoNormal) {
      return testing::AssertionFailure() << "face " << i << ": " << CheckName(code);
    }
    for (const WindingPoint& p : PointsOf(brush.face(i))) bounds.Add(p.Position());
    // Which may lie far from it, and beside it where a save will weigh them against others.
    if (AreWhole(brush.face(i).planepts)) continue;
    for (const Vec3& p : brush.face(i).planepts) {
      if (std::fabs(brush.face(i).plane.DistanceTo(DVec3(p))) > ON_EPSILON) {
        return testing::AssertionFailure() << "face " << i << ": plane points beside the plane";
      }
    }
  }
  if (!(bounds == brush.Box())) return testing::AssertionFailure() << "the bounds are wrong";
  if (!IsBrushConvex(brush)) return testing::AssertionFailure() << "it is not convex";
  return IsClosed(brush);
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

WindingPtr WindingOf(const std::vector<Vec3>& points, Reporter& reporter) {
  WindingPtr w = newWinding(static_cast<unsigned>(points.size()), reporter);
  std::ranges::transform(points, w->Points().begin(), [](const Vec3& p) {
    return WindingPoint{p.x, p.y, p.z};
  });
  return w;
}

Brush RandomHull(std::mt19937& random, const Vec3& centre, int reach, Reporter& reporter) {
  const auto whole = [&] { return static_cast<int>(random() % (2u * reach + 1)) - reach; };
  while (true) {
    std::vector<WholePoint> points;
    for (auto n = 4 + random() % 9; n > 0; --n) {
      points.push_back(WholePoint(centre) + WholePoint{whole(), whole(), whole()});
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

Brush RandomBlock(std::mt19937& random, const Vec3& centre, int reach, Reporter& reporter) {
  constexpr int STEP = 32;  // so that any three planes meet at multiples of 16
  const auto add = [&](Brush& brush, const Vec3& normal, int distance) {
    // Of an axis the normal does not use.
    const int still = normal.x == 0 ? 0 : normal.y == 0 ? 1 : 2;
    Vec3 along;
    along[still] = STEP;
    const float length = normal.x * normal.x + normal.y * normal.y + normal.z * normal.z;
    const Vec3 on = centre + normal * (static_cast<float>(distance) / length);
    Face* face = brush.AddFace(on + along, on, on + Cross(normal, along));
    face->xscale = face->yscale = 1;
    face->SetName("face" + std::to_string(brush.getNumFaces()));
  };
  const auto steps = [&](int least, int most) {
    return STEP * (least + static_cast<int>(random() % (most - least + 1u)));
  };
  while (true) {
    Brush brush(Colour{});
    for (int axis = 0; axis < 3; ++axis) {
      for (const float side : {-1.0f, 1.0f}) {
        Vec3 normal;
        normal[axis] = side;
        add(brush, normal, steps(1, reach / STEP));
      }
    }
    for (auto bevels = random() % 6; bevels > 0; --bevels) {
      Vec3 normal(random() % 2 ? 1.0f : -1.0f, random() % 2 ? 1.0f : -1.0f, 0);
      std::swap(normal[random() % 3], normal.z);
      add(brush, normal, steps(1, 2 * reach / STEP));
    }
    brush.Rebuild(reporter);
    if (IsSolid(brush)) return brush;
  }
}

}  // namespace ferrowand
