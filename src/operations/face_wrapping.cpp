#include "operations/face_wrapping.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/report.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "geometry/tolerance.h"
#include "operations/face_editing.h"

namespace ferrowand {
namespace {

// Edges that are crossed one after the other on the way round a body, against the axis of it: those
// of a pyramid lean by less than 53 degrees.
constexpr double ALONG_AXIS = 0.6;
constexpr double SAME_WAY = 0.996;     // about 5 degrees
constexpr std::size_t MOST_AXES = 12;  // of edges, and of faces, that are tried
constexpr double LARGER = 1.2, STEEPER = 0.1;
constexpr float REACH = 1;  // world units between brushes that may share an edge

struct Neighbour {
  std::size_t face;
  std::optional<FaceEdge> edge;  // between them; none within one plane
  DVec3 way;                     // of the edge, of length 1
};

bool Touch(const Bounds& one, const Bounds& other) {
  for (int axis = 0; axis < 3; ++axis) {
    if (one.mins[axis] > other.maxs[axis] + REACH || other.mins[axis] > one.maxs[axis] + REACH) {
      return false;
    }
  }
  return true;
}

// Faces, each with those that it lies beside.
class FaceGraph {
 public:
  explicit FaceGraph(std::vector<PickedFace> faces)
      : faces_(std::move(faces)), beside_(faces_.size()) {
    std::vector<std::size_t> fromLeft(faces_.size());
    std::iota(fromLeft.begin(), fromLeft.end(), std::size_t{0});
    const auto left = [this](std::size_t face) { return BoxOf(face).mins.x; };
    std::ranges::sort(fromLeft, {}, left);
    for (auto a = fromLeft.begin(); a != fromLeft.end(); ++a) {
      const float right = BoxOf(*a).maxs.x + REACH;
      for (auto b = a + 1; b != fromLeft.end() && left(*b) <= right; ++b) {
        if (Touch(BoxOf(*a), BoxOf(*b))) Join(*a, *b);
      }
    }
    // In the order of picking.
    for (auto& beside : beside_) std::ranges::sort(beside, {}, &Neighbour::face);
  }

  std::size_t size() const { return faces_.size(); }
  const PickedFace& At(std::size_t face) const { return faces_[face]; }
  const std::vector<Neighbour>& Beside(std::size_t face) const { return beside_[face]; }

 private:
  const Bounds& BoxOf(std::size_t face) const { return faces_[face].brush->brush.Box(); }
  void Join(std::size_t i, std::size_t j) {
    const Face &a = faces_[i].Get(), &b = faces_[j].Get();
    const bool isOnePlane = AreInOnePlane(a, b);
    const auto edge = isOnePlane ? std::nullopt : SharedEdge(a, b);
    if (!isOnePlane && !edge) return;
    const DVec3 way = edge ? Normalise(edge->Way()) : DVec3();
    beside_[i].push_back({j, edge, way});
    beside_[j].push_back({i, edge, way});
  }

  std::vector<PickedFace> faces_;
  std::vector<std::vector<Neighbour>> beside_;
};

// From faces to those beside them, each once.
class FaceWalk {
 public:
  struct Step {
    std::size_t from, to;
  };

  explicit FaceWalk(const FaceGraph& graph) : graph_(graph), isReached_(graph.size()) {}

  bool Has(std::size_t face) const { return isReached_[face]; }
  const std::vector<std::size_t>& Reached() const { return reached_; }
  const std::vector<Step>& Steps() const { return steps_; }

  void Begin(std::size_t face) {
    isReached_[face] = true;
    reached_.push_back(face);
  }
  // From all that is reached, but for so many of the first, on to what may be crossed to.
  template <typename MayCross>
  void Spread(const MayCross& mayCross, std::size_t without = 0) {
    for (std::size_t i = without; i < reached_.size(); ++i) {
      for (const Neighbour& next : graph_.Beside(reached_[i])) {
        if (Has(next.face) || !mayCross(next)) continue;
        steps_.push_back({reached_[i], next.face});
        Begin(next.face);
      }
    }
  }

 private:
  const FaceGraph& graph_;
  std::vector<bool> isReached_;
  std::vector<std::size_t> reached_;
  std::vector<Step> steps_;
};

bool IsAlong(const Neighbour& next, const DVec3& axis) {
  return !next.edge || std::abs(Dot(next.way, axis)) >= ALONG_AXIS;
}

// Around a corner of a face, and not from one side of it to the other.
bool Meet(const Neighbour& a, const Neighbour& b) {
  if (!a.edge || !b.edge || std::abs(Dot(a.way, b.way)) > SAME_WAY) return false;
  const auto isAt = [](const DVec3& p, const DVec3& q) { return Length(p - q) < SHORTEST_EDGE; };
  return isAt(a.edge->from, b.edge->from) || isAt(a.edge->from, b.edge->to) ||
         isAt(a.edge->to, b.edge->from) || isAt(a.edge->to, b.edge->to);
}

double AreaOf(const Face& face) {
  const auto points = std::as_const(*face.w).Points();
  DVec3 sum;
  for (std::size_t i = 0; i < points.size(); ++i) {
    sum =
        sum + Cross(DVec3(points[i].Position()), DVec3(points[(i + 1) % points.size()].Position()));
  }
  return Length(sum) / 2;
}

// Faces that follow each other across edges along an axis.
struct Belt {
  DVec3 axis;
  std::vector<std::size_t> faces;
  // It leaves each face on the other side, or, as round a pyramid, each beside a corner. What does
  // the one here and the other there goes over caps.
  bool isEven = false;
  bool isClosed = false;
  double area = 0;  // square units
  bool hasFirst = false;
  double alongTexture = 0;  // how well the texture of the first stands along the axis

  bool IsBetterThan(const Belt& other) const {
    if (isEven != other.isEven) return isEven;
    if (faces.size() != other.faces.size()) return faces.size() > other.faces.size();
    if (isClosed != other.isClosed) return isClosed;
    if (area > LARGER * other.area || other.area > LARGER * area) return area > other.area;
    if (hasFirst != other.hasFirst) return hasFirst;
    return alongTexture > other.alongTexture + STEEPER;
  }
};

Belt BeltOf(const FaceGraph& graph, const DVec3& axis, std::vector<std::size_t> faces) {
  Belt belt{.axis = axis, .faces = std::move(faces)};
  std::size_t crossed = 0, bent = 0;
  for (const std::size_t face : belt.faces) {
    belt.area += AreaOf(graph.At(face).Get());
    belt.hasFirst = belt.hasFirst || face == 0;
    std::vector<Neighbour> along;
    std::ranges::copy_if(graph.Beside(face), std::back_inserter(along),
                         [&](const Neighbour& next) { return IsAlong(next, axis); });
    crossed += along.size();
    const bool isBent = std::ranges::any_of(along, [&](const Neighbour& a) {
      return std::ranges::any_of(along, [&](const Neighbour& b) { return Meet(a, b); });
    });
    if (isBent) ++bent;
  }
  belt.isEven = bent == 0 || bent == belt.faces.size();
  belt.isClosed = crossed >= 2 * belt.faces.size();
  const DVec3 down = TexelMapOf(graph.At(0).Get()).t;
  belt.alongTexture = std::abs(Dot(down, axis)) / Length(down);
  return belt;
}

// Directions, those first that are there most often.
class Directions {
 public:
  void Add(const DVec3& direction) {
    const auto isSame = [&](const Known& k) { return std::abs(Dot(k.way, direction)) > SAME_WAY; };
    const auto known = std::ranges::find_if(known_, isSame);
    if (known != known_.end()) {
      ++known->count;
    } else if (known_.size() < MOST_KNOWN) {
      known_.push_back({direction, 1});
    }
  }
  void AppendTo(std::vector<DVec3>& axes) {
    std::ranges::stable_sort(known_, std::greater{}, &Known::count);
    const std::size_t count = std::min(known_.size(), MOST_AXES);
    for (std::size_t i = 0; i < count; ++i) axes.push_back(known_[i].way);
  }

 private:
  static constexpr std::size_t MOST_KNOWN = 64;
  struct Known {
    DVec3 way;
    int count;
  };
  std::vector<Known> known_;
};

// Along edges, and straight out of faces, as a cap tells of its column.
std::vector<DVec3> AxesOf(const FaceGraph& graph, const std::vector<std::size_t>& faces) {
  Directions ways, normals;
  for (const std::size_t face : faces) {
    normals.Add(graph.At(face).Get().plane.normal);
    for (const Neighbour& next : graph.Beside(face)) {
      if (next.edge) ways.Add(next.way);
    }
  }
  std::vector<DVec3> axes;
  ways.AppendTo(axes);
  normals.AppendTo(axes);
  return axes;
}

Belt BestBelt(const FaceGraph& graph, const std::vector<std::size_t>& faces) {
  std::optional<Belt> best;
  for (const DVec3& axis : AxesOf(graph, faces)) {
    FaceWalk seen(graph);
    for (const std::size_t face : faces) {
      if (seen.Has(face)) continue;
      const std::size_t before = seen.Reached().size();
      seen.Begin(face);
      seen.Spread([&](const Neighbour& next) { return IsAlong(next, axis); }, before);
      const auto& reached = seen.Reached();
      Belt belt = BeltOf(graph, axis,
                         {reached.begin() + static_cast<std::ptrdiff_t>(before), reached.end()});
      if (!best || belt.IsBetterThan(*best)) best = std::move(belt);
    }
  }
  return *best;
}

// From which face to which, in this order.
std::vector<FaceWalk::Step> WayOver(const FaceGraph& graph) {
  const auto all = [](const Neighbour&) { return true; };
  FaceWalk together(graph);
  together.Begin(0);
  together.Spread(all);
  const Belt belt = BestBelt(graph, together.Reached());
  FaceWalk way(graph);
  way.Begin(*std::ranges::min_element(belt.faces));
  way.Spread([&](const Neighbour& next) { return IsAlong(next, belt.axis); });
  way.Spread(all);
  return way.Steps();
}

}  // namespace

void WrapFaces(EditStep& step, std::span<const PickedFace> faces) {
  const FaceGraph graph(WithShape(faces));
  if (graph.size() == 0) return;
  const std::vector<FaceWalk::Step> way = WayOver(graph);
  std::vector<PickedFace> laid;
  for (const FaceWalk::Step& next : way) laid.push_back(graph.At(next.to));
  auto next = way.begin();
  ChangeFaces(step, laid, [&](const PickedFace& face) {
    return WrappedFrom(graph.At((next++)->from).Get(), face.Get());
  });
  if (const std::size_t left = graph.size() - 1 - way.size(); left > 0) {
    step.Remark(Format(left == 1 ? "%u face shares no edge" : "%u faces share no edge",
                       static_cast<unsigned>(left)));
  }
}

void WrapAlong(EditStep& step, std::span<const PickedFace> faces) {
  std::optional<PickedFace> last;
  ChangeFaces(step, faces, [&](const PickedFace& face) -> std::optional<Settled> {
    const std::optional<PickedFace> from = std::exchange(last, face);
    if (!from) return std::nullopt;
    GiveLook(step, face, std::string(from->Get().WrittenName()), std::nullopt);
    return WrappedFrom(from->Get(), face.Get());
  });
}

}  // namespace ferrowand
