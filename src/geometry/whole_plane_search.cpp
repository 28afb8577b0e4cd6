// The search for whole points on a plane that was not made of whole points. About a whole point in
// the middle of its corners the plane is m = alpha u + beta v + gamma, where m is the axis that it
// faces most. Every denominator q gives a plane q m = p u + r v + s of whole numbers nearby, and
// the larger q the nearer, but also the sparser its whole points: the first q that is good enough
// is taken.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

#include "geometry/tolerance.h"
#include "geometry/whole_plane.h"

namespace ferrowand {
namespace {

// Good enough is found far below this for planes that lie at no simple angle; the others end with
// the best that has its whole points near.
constexpr std::int64_t LARGEST_DENOMINATOR = 16384;
// The greatest distance between neighbouring whole points of the plane, in units.
constexpr double FARTHEST_NEIGHBOUR = 2048;
// Planes on which they are further apart that are met before the search ends.
constexpr int MOST_SPARSE = 64;

std::int64_t Rounded(double value) {
  // Far below the numbers to which adding this is not exact.
  constexpr double WHOLE = 6755399441055744.0;  // 1.5 * 2^52
  return static_cast<std::int64_t>((value + WHOLE) - WHOLE);
}

// a * x + b * y == divisor, the greatest common one.
struct Bezout {
  std::int64_t divisor, x, y;
};

Bezout BezoutOf(std::int64_t a, std::int64_t b) {
  std::int64_t x = 1, y = 0, nextX = 0, nextY = 1;
  while (b != 0) {
    const std::int64_t quotient = a / b;
    a = std::exchange(b, a - quotient * b);
    x = std::exchange(nextX, x - quotient * nextX);
    y = std::exchange(nextY, y - quotient * nextY);
  }
  return a < 0 ? Bezout{-a, -x, -y} : Bezout{a, x, y};
}

std::int64_t NearestMultiple(const WholePoint& v, const WholePoint& of) {
  return Rounded(static_cast<double>(Dot(v, of)) / static_cast<double>(Dot(of, of)));
}

// A plane normal . p == dist in whole numbers without a common divisor.
struct WholeForm {
  WholePoint normal;
  std::int64_t dist = 0;
};

// The shortest two steps from one whole point of such a plane to the next.
struct Steps {
  WholePoint shorter, longer;
};

Steps StepsOn(const WholeForm& plane) {
  const WholePoint& n = plane.normal;
  if (n.x == 0 && n.y == 0) return {{1, 0, 0}, {0, 1, 0}};
  const Bezout xy = BezoutOf(n.x, n.y);
  Steps steps{{n.y / xy.divisor, -n.x / xy.divisor, 0}, {-n.z * xy.x, -n.z * xy.y, xy.divisor}};
  while (true) {
    steps.longer = steps.longer - steps.shorter * NearestMultiple(steps.longer, steps.shorter);
    if (Dot(steps.longer, steps.longer) >= Dot(steps.shorter, steps.shorter)) return steps;
    std::swap(steps.shorter, steps.longer);
  }
}

// The whole point of the plane that lies nearest to 0, or next to that.
WholePoint PointOn(const WholeForm& plane, const Steps& steps) {
  const WholePoint& n = plane.normal;
  WholePoint on{0, 0, plane.dist * n.z};  // n.z is 1 or -1 if it is the only one
  if (n.x != 0 || n.y != 0) {
    const Bezout xy = BezoutOf(n.x, n.y);
    const Bezout z = BezoutOf(n.z, xy.divisor);
    on.z = plane.dist * z.x % xy.divisor;
    const std::int64_t rest = (plane.dist - n.z * on.z) / xy.divisor;
    on.x = rest * xy.x;
    on.y = rest * xy.y;
  }
  const auto bringNear = [&on](const WholePoint& step) {
    const std::int64_t times = NearestMultiple(on, step);
    on = on - step * times;
    return times != 0;
  };
  while (bringNear(steps.longer) || bringNear(steps.shorter)) {
  }
  return on;
}

class Search {
 public:
  Search(const Plane& plane, const Bounds& box) : plane_(plane) {
    const DVec3& n = plane.normal;
    for (int axis = 0; axis < 3; ++axis) {
      if (std::fabs(n[axis]) > std::fabs(n[m_])) m_ = axis;
    }
    u_ = (m_ + 1) % 3;
    v_ = (m_ + 2) % 3;
    const DVec3 middle = (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
    // Not to the nearest even unit: what has moved by whole units has the same planes around it.
    for (int axis = 0; axis < 3; ++axis) centre_[axis] = Rounded(std::floor(middle[axis]));
    alpha_ = -n[u_] / n[m_];
    beta_ = -n[v_] / n[m_];
    centre_[m_] -= Rounded(plane.DistanceTo(DVec3(centre_)) / n[m_]);
    gamma_ = -plane.DistanceTo(DVec3(centre_)) / n[m_];
    weight_ = std::fabs(n[m_]);
    reachU_ = Reach(box, u_);
    reachV_ = Reach(box, v_);
  }

  WholePoints Run() {
    const bool isAxial = IsAxial(plane_);
    if (isAxial) alpha_ = beta_ = 0;
    const std::int64_t most = isAxial ? 1 : LARGEST_DENOMINATOR;
    for (std::int64_t q = 1; q <= most && best_ > CARRIED && sparse_ < MOST_SPARSE; ++q) Try(q);
    return Points();
  }

 private:
  double Reach(const Bounds& box, int axis) const {
    const auto centre = static_cast<double>(centre_[axis]);
    return std::max(box.maxs[axis] - centre, centre - box.mins[axis]);
  }

  void Try(std::int64_t q) {
    const auto denominator = static_cast<double>(q);
    const double limit = best_ * denominator / weight_;
    const double exactP = alpha_ * denominator, exactR = beta_ * denominator;
    const double exactS = gamma_ * denominator;
    const std::int64_t p = Rounded(exactP), r = Rounded(exactR), s = Rounded(exactS);
    const double offP = exactP - static_cast<double>(p), offR = exactR - static_cast<double>(r);
    const double offS = std::fabs(exactS - static_cast<double>(s));
    const double miss = std::fabs(offP) * reachU_ + std::fabs(offR) * reachV_ + offS;
    if (miss >= limit) return;
    if (std::gcd(std::gcd(p, r), q) == 1) {
      Take({p, r, -q}, -s, miss * weight_ / denominator);
      return;
    }
    // No whole points, or those of a smaller denominator: tilted a little it has some.
    const double tiltU = miss + (1 - 2 * std::fabs(offP)) * reachU_;
    if (tiltU < limit)
      TakeIfWhole({p + (offP < 0 ? -1 : 1), r, -q}, -s, tiltU * weight_ / denominator);
    const double tiltV = miss + (1 - 2 * std::fabs(offR)) * reachV_;
    if (tiltV < limit)
      TakeIfWhole({p, r + (offR < 0 ? -1 : 1), -q}, -s, tiltV * weight_ / denominator);
  }

  void TakeIfWhole(const WholePoint& normal, std::int64_t dist, double miss) {
    if (std::gcd(std::gcd(normal.x, normal.y), normal.z) == 1) Take(normal, dist, miss);
  }

  void Take(const WholePoint& normal, std::int64_t dist, double miss) {
    if (miss >= best_) return;
    const WholeForm form{normal, dist};
    const Steps steps = StepsOn(form);
    if (Length(DVec3(steps.longer)) > FARTHEST_NEIGHBOUR) {
      ++sparse_;
      return;
    }
    best_ = miss;
    form_ = form;
    steps_ = steps;
  }

  // A triangle about the middle of the corners.
  WholePoints Points() const {
    const double width = 2 * std::hypot(reachU_, reachV_);
    const auto times = [&](const WholePoint& step) {
      return std::max<std::int64_t>(
          1, static_cast<std::int64_t>(std::ceil(width / Length(DVec3(step)))));
    };
    const std::int64_t a = times(steps_.shorter), b = times(steps_.longer);
    const WholePoint from =
        PointOn(form_, steps_) - steps_.shorter * (a / 2) - steps_.longer * (b / 2);
    WholePoints points = {InSpace(from + steps_.shorter * a), InSpace(from),
                          InSpace(from + steps_.longer * b)};
    if (Dot(DVec3(WholeNormal(points)), plane_.normal) < 0) std::swap(points[0], points[2]);
    return points;
  }

  WholePoint InSpace(const WholePoint& local) const {
    WholePoint p = centre_;
    p[u_] += local.x;
    p[v_] += local.y;
    p[m_] += local.z;
    return p;
  }

  const Plane& plane_;
  int u_ = 1, v_ = 2, m_ = 0;
  WholePoint centre_;
  double alpha_, beta_, gamma_;
  double weight_;           // of a difference along m, seen along the normal
  double reachU_, reachV_;  // of the corners from the centre
  // Of the best plane so far: its greatest difference, and what is known of it.
  double best_ = WHOLE_LIMIT;
  WholeForm form_;
  Steps steps_;
  int sparse_ = 0;
};

}  // namespace

std::optional<WholePoints> FindWholePoints(const Plane& plane,
                                           std::span<const WindingPoint> corners) {
  Bounds box;
  for (const WindingPoint& p : corners) {
    const Vec3 position = p.Position();
    for (int axis = 0; axis < 3; ++axis) {
      if (!(std::fabs(position[axis]) < WHOLE_LIMIT / 2.0)) return std::nullopt;
    }
    box.Add(position);
  }
  const double length = Dot(plane.normal, plane.normal);
  if (box.IsEmpty() || !std::isfinite(length) || length < 0.5) return std::nullopt;
  return Search(plane, box).Run();
}

}  // namespace ferrowand
