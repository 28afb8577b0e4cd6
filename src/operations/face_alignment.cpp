#include "operations/face_alignment.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <numbers>
#include <tuple>
#include <utility>

#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

constexpr double DEGREE = std::numbers::pi / 180;
constexpr double LEAST_SCALE = 0.001, LARGEST_SCALE = 1000;
constexpr double LARGEST_OFFSET = 32767, LARGEST_TURN = 36000;

DVec3 HeldOf(const PickedFace& face) {
  const Face& f = face.Get();
  if (face.held < 0 || face.held >= f.w->numpoints) return MiddleOf(f);
  return DVec3(std::as_const(*f.w).Points()[static_cast<std::size_t>(face.held)].Position());
}

float Within360(double degrees) {
  const double rest = std::fmod(std::round(degrees), 360);
  return static_cast<float>(rest < 0 ? rest + 360 : rest);
}

// The sides of a texture as it lies seen from in front may be exchanged: then it is mirrored there.
bool IsSeenMirrored(const Face& face) {
  const TextureAxes& axes = TextureAxesOf(face.plane.normal);
  return Dot(Cross(axes.s, axes.t), face.plane.normal) > 0;
}

double SignOf(float scale) {
  return scale < 0 ? -1 : 1;
}

// How far a direction of the eye goes along one of the texture, which counts whole.
double Along(const DVec3& texels, const DVec3& direction) {
  return Dot(texels, direction) / Length(texels);
}

DVec3 AlongPlane(const DVec3& v, const Face& face) {
  return v - face.plane.normal * Dot(v, face.plane.normal);
}

// --- extents, in units of the projection turned as the texture is

struct Extent {
  double least = 0, most = 0;

  double Size() const { return most - least; }
  double Middle() const { return (least + most) / 2; }
};

struct Extents {
  Extent across, down;
};

Extents ExtentsOf(const FaceGroup& group) {
  const Face& first = group.front().Get();
  const TextureProjection units(first.plane.normal, PlacementOf(first).rotation);
  Extents all;
  bool isFirst = true;
  const auto add = [&](Extent& extent, double place) {
    extent = {isFirst ? place : std::min(extent.least, place),
              isFirst ? place : std::max(extent.most, place)};
  };
  for (const PickedFace& picked : group) {
    for (const WindingPoint& p : std::as_const(*picked.Get().w).Points()) {
      const TexturePoint place = units.Texels(DVec3(p.Position()));
      add(all.across, place.s);
      add(all.down, place.t);
      isFirst = false;
    }
  }
  return all;
}

// Texels wanted along one direction: as many a unit, and which of them where.
struct AxisWish {
  double texelsPerUnit, at, texels;
};

AxisWish Present(float scale, float offset) {
  return {1 / double{scale}, 0, offset};
}

// From the low end on.
AxisWish Covering(const Extent& extent, double texels, double sign) {
  const double slope = sign * texels / extent.Size();
  return {slope, slope > 0 ? extent.least : extent.most, 0};
}

// About the middle, which keeps what it shows.
AxisWish Rescaled(const Extent& extent, double texelsPerUnit, const AxisWish& present) {
  const double middle = extent.Middle();
  return {texelsPerUnit, middle, (middle - present.at) * present.texelsPerUnit + present.texels};
}

TexelMap MapOf(const Face& face, float rotation, const AxisWish& across, const AxisWish& down) {
  const TextureProjection units(face.plane.normal, rotation);
  TexelMap map;
  map.texels = {across.texels - across.at * across.texelsPerUnit,
                down.texels - down.at * down.texelsPerUnit};
  for (int axis = 0; axis < 3; ++axis) {
    DVec3 way;
    way[axis] = 1;
    const TexturePoint along = units.Along(way);
    map.s[axis] = along.s * across.texelsPerUnit;
    map.t[axis] = along.t * down.texelsPerUnit;
  }
  return map;
}

double TexelsOf(int size, int repeats) {
  const double whole = size > 0 ? size : 64;
  return repeats > 0 ? whole * repeats : whole / -repeats;
}

std::vector<HeldPoint> HeldCorners(const FaceGroup& group) {
  std::vector<HeldPoint> held;
  for (const PickedFace& picked : group) {
    const std::vector<HeldPoint> own = HeldCorners(picked.Get());
    held.insert(held.end(), own.begin(), own.end());
  }
  return held;
}

// --- edges

std::vector<FaceEdge> EdgesOf(const Face& face) {
  const auto points = std::as_const(*face.w).Points();
  std::vector<FaceEdge> edges;
  for (std::size_t i = 0; i < points.size(); ++i) {
    edges.push_back(
        {DVec3(points[i].Position()), DVec3(points[(i + 1) % points.size()].Position())});
  }
  return edges;
}

// The part that both have, if it is more than a corner.
std::optional<FaceEdge> Common(const FaceEdge& a, const FaceEdge& b) {
  const double length = Length(a.Way());
  if (length < SHORTEST_EDGE) return std::nullopt;
  const DVec3 along = a.Way() * (1 / length);
  const auto place = [&](const DVec3& p) { return Dot(p - a.from, along); };
  for (const DVec3& end : {b.from, b.to}) {
    if (Length(end - a.from - along * place(end)) > ON_EPSILON) return std::nullopt;
  }
  const auto [low, high] = std::minmax({place(b.from), place(b.to)});
  const double from = std::max(low, 0.0), to = std::min(high, length);
  if (to - from < SHORTEST_EDGE) return std::nullopt;
  return FaceEdge{a.from + along * from, a.from + along * to};
}

// Square to the edge in the plane of the face, into it.
DVec3 Inward(const Face& face, const FaceEdge& edge) {
  const DVec3 square = Normalise(Cross(face.plane.normal, edge.Way()));
  return Dot(MiddleOf(face) - edge.from, square) < 0 ? -square : square;
}

}  // namespace

float& ValueOf(TexturePlacement& placement, PlacementField field) {
  switch (field) {
    case PlacementField::XOffset:
      return placement.xoff;
    case PlacementField::YOffset:
      return placement.yoff;
    case PlacementField::Rotation:
      return placement.rotation;
    case PlacementField::XScale:
      return placement.xscale;
    case PlacementField::YScale:
      break;
  }
  return placement.yscale;
}

bool IsSensible(PlacementField field, double value) {
  const double size = std::abs(value);
  switch (field) {
    case PlacementField::XOffset:
    case PlacementField::YOffset:
      return size <= LARGEST_OFFSET;
    case PlacementField::Rotation:
      return size <= LARGEST_TURN;
    case PlacementField::XScale:
    case PlacementField::YScale:
      break;
  }
  return size >= LEAST_SCALE && size <= LARGEST_SCALE;
}

Settled WithValue(const PickedFace& face, PlacementField field, double value) {
  TexturePlacement placement = PlacementOf(face.Get());
  float& changed = ValueOf(placement, field);
  if (field == PlacementField::XOffset || field == PlacementField::YOffset) {
    changed = static_cast<float>(std::round(value));
    return {placement, 0};
  }
  constexpr double MILLION = 1e6;
  changed = field == PlacementField::Rotation
                ? Within360(value)
                : static_cast<float>(std::round(value * MILLION) / MILLION);
  return SettleOffsets(face.Get(), placement, HeldOf(face));
}

std::optional<Settled> WithMore(const PickedFace& face, PlacementField field, double amount) {
  TexturePlacement placement = PlacementOf(face.Get());
  const double before = ValueOf(placement, field), value = before + amount;
  const bool isScale = field == PlacementField::XScale || field == PlacementField::YScale;
  if (!IsSensible(field, value) || (isScale && before * value < 0)) return std::nullopt;
  return WithValue(face, field, value);
}

Settled Turned(const PickedFace& face, double degrees) {
  const double now = PlacementOf(face.Get()).rotation;
  return WithValue(face, PlacementField::Rotation,
                   IsSeenMirrored(face.Get()) ? now - degrees : now + degrees);
}

// What lies at a texel goes to where the texel is: against the way in which the texels grow.
Settled Moved(const PickedFace& face, const DVec3& right, const DVec3& up, int texelsRight,
              int texelsUp) {
  const TexelMap map = TexelMapOf(face.Get());
  const DVec3 s = AlongPlane(map.s, face.Get()), t = AlongPlane(map.t, face.Get());
  const bool isUpright = std::abs(Along(s, right)) + std::abs(Along(t, up)) >=
                         std::abs(Along(t, right)) + std::abs(Along(s, up));
  const auto sign = [](double along) { return along < 0 ? -1 : 1; };
  TexturePlacement placement = PlacementOf(face.Get());
  float& first = isUpright ? placement.xoff : placement.yoff;
  float& second = isUpright ? placement.yoff : placement.xoff;
  first -= static_cast<float>(texelsRight * sign(Along(isUpright ? s : t, right)));
  second -= static_cast<float>(texelsUp * sign(Along(isUpright ? t : s, up)));
  return {placement, 0};
}

Settled Mirrored(const PickedFace& face, TextureAxis axis) {
  TexturePlacement placement = PlacementOf(face.Get());
  float& scale = axis == TextureAxis::Across ? placement.xscale : placement.yscale;
  scale = -scale;
  return SettleOffsets(face.Get(), placement, HeldOf(face));
}

Settled AlignedToWorld(const Face&) {
  return {};
}

std::optional<Settled> AlignedToSlope(const PickedFace& picked) {
  const Face& face = picked.Get();
  const int quarter = 90 * static_cast<int>(std::round(face.rotation / 90));
  const TextureAxes& axes = TextureAxesOf(face.plane.normal);
  const TextureTurn turn(static_cast<float>(quarter));
  const auto onPlane = [&](const DVec3& v) {
    const DVec3& normal = face.plane.normal;
    return Normalise(v - axes.normal * (Dot(v, normal) / Dot(axes.normal, normal)));
  };
  const DVec3 across = onPlane(axes.s * turn.cosine - axes.t * turn.sine);
  const DVec3 down = onPlane(axes.s * turn.sine + axes.t * turn.cosine);
  // Where the two are not square to each other, the nearest two that are.
  const DVec3 sum = Normalise(across + down), difference = Normalise(across - down);
  const double half = std::numbers::sqrt2 / 2;
  TexelMap wanted;
  wanted.at = HeldOf(picked);
  wanted.texels = TextureProjection(face).Texels(wanted.at);
  wanted.s = (sum + difference) * (half * SignOf(face.xscale));
  wanted.t = (sum - difference) * (half * SignOf(face.yscale));
  return SettleTurned(face, wanted, quarter, HeldCorners(face));
}

std::optional<Settled> AlignedToEdge(const Face& face, int index) {
  constexpr double ENDS_COUNT = 10;
  const std::vector<FaceEdge> edges = EdgesOf(face);
  const auto longest = std::ranges::max_element(
      edges, {}, [](const FaceEdge& e) { return std::round(Length(e.Way())); });
  const auto count = static_cast<std::ptrdiff_t>(edges.size());
  const FaceEdge edge = edges[static_cast<std::size_t>((longest - edges.begin() + index) % count)];

  const TextureAxes& axes = TextureAxesOf(face.plane.normal);
  const TexturePlacement placement = PlacementOf(face);
  const DVec3 way = edge.Way();
  double radians = std::atan2(-Dot(way, axes.t), Dot(way, axes.s));
  const auto downAt = [&] { return axes.s * std::sin(radians) + axes.t * std::cos(radians); };
  if (Dot(MiddleOf(face) - edge.from, downAt()) * placement.yscale > 0) radians += std::numbers::pi;
  TexelMap wanted;
  wanted.s =
      (axes.s * std::cos(radians) - axes.t * std::sin(radians)) * (1 / double{placement.xscale});
  wanted.t = downAt() * (1 / double{placement.yscale});
  wanted.at = Dot(way, wanted.s) < 0 ? edge.to : edge.from;
  std::vector<HeldPoint> held = HeldCorners(face);
  for (const DVec3& end : {edge.from, edge.to}) held.push_back({end, ENDS_COUNT});
  return SettleTurned(face, wanted, static_cast<int>(std::round(radians / DEGREE)), held);
}

bool AreInOnePlane(const Face& face, const Face& other) {
  return Dot(face.plane.normal, other.plane.normal) > 1 - CARRIED * CARRIED &&
         std::abs(other.plane.DistanceTo(MiddleOf(face))) < ON_EPSILON;
}

std::optional<FaceEdge> SharedEdge(const Face& a, const Face& b) {
  for (const FaceEdge& one : EdgesOf(a)) {
    for (const FaceEdge& other : EdgesOf(b)) {
      if (const auto common = Common(one, other)) return common;
    }
  }
  return std::nullopt;
}

std::optional<Settled> WrappedFrom(const Face& from, const Face& face) {
  constexpr double ENDS_COUNT = 100;
  if (AreInOnePlane(face, from)) return Settled{PlacementOf(from), 0};
  const std::optional<FaceEdge> edge = SharedEdge(from, face);
  if (!edge) return std::nullopt;
  const TexelMap before = TexelMapOf(from);
  const DVec3 along = Normalise(edge->Way());
  const DVec3 into = Inward(face, *edge), outOf = -Inward(from, *edge);
  TexelMap wanted;
  wanted.at = edge->from;
  wanted.texels = before(edge->from);
  wanted.s = along * Dot(along, before.s) + into * Dot(outOf, before.s);
  wanted.t = along * Dot(along, before.t) + into * Dot(outOf, before.t);
  std::vector<HeldPoint> held = HeldCorners(face);
  for (const DVec3& end : {edge->from, edge->to}) held.push_back({end, ENDS_COUNT});
  return Settle(face, wanted, held);
}

int NextRepeats(int repeats, FitChange change) {
  switch (change) {
    case FitChange::More:
      return repeats == -2 ? 1 : repeats + 1;
    case FitChange::Fewer:
      return repeats > 1 ? repeats - 1 : repeats;
    case FitChange::Part:
      break;
  }
  return repeats > 0 ? -2 : repeats - 1;
}

std::vector<FaceGroup> GroupsOf(std::span<const PickedFace> faces, bool together) {
  using Key = std::tuple<const TextureAxes*, float, bool, bool, const Texture*>;
  std::map<Key, std::size_t> known;
  std::vector<FaceGroup> groups;
  for (const PickedFace& picked : faces) {
    const Face& face = picked.Get();
    const Key key{&TextureAxesOf(face.plane.normal), PlacementOf(face).rotation, face.xscale < 0,
                  face.yscale < 0, face.texture};
    const auto [group, isNew] = known.try_emplace(key, groups.size());
    if (!together || isNew) {
      groups.push_back({picked});
    } else {
      groups[group->second].push_back(picked);
    }
  }
  return groups;
}

std::optional<Settled> Fitted(const FaceGroup& group, const FitHow& how) {
  const Face& face = group.front().Get();
  const TexturePlacement now = PlacementOf(face);
  const Extents extents = ExtentsOf(group);
  AxisWish across = Present(now.xscale, now.xoff), down = Present(now.yscale, now.yoff);
  const auto fit = [&](const Extent& extent, int size, float scale) {
    return Covering(extent, TexelsOf(size, how.repeats), SignOf(scale));
  };
  if (how.width) across = fit(extents.across, face.texture ? face.texture->width : 0, now.xscale);
  if (how.height) down = fit(extents.down, face.texture ? face.texture->height : 0, now.yscale);
  if (how.keepsRatio && how.width != how.height) {
    const double density = std::abs(how.width ? across.texelsPerUnit : down.texelsPerUnit);
    if (how.width) {
      down = Rescaled(extents.down, density * SignOf(now.yscale), down);
    } else {
      across = Rescaled(extents.across, density * SignOf(now.xscale), across);
    }
  }
  return SettleTurned(face, MapOf(face, now.rotation, across, down), static_cast<int>(now.rotation),
                      HeldCorners(group));
}

Settled Justified(const FaceGroup& group, FaceSide side) {
  const Face& face = group.front().Get();
  TexturePlacement placement = PlacementOf(face);
  const Extents extents = ExtentsOf(group);
  double miss = 0;
  // `part` of the way from the low end of the texels to the high one, and of the texture.
  const auto put = [&](const Extent& extent, float scale, double part, int size, float& offset) {
    const double low = (scale > 0 ? extent.least : extent.most) / double{scale};
    const double high = (scale > 0 ? extent.most : extent.least) / double{scale};
    const double wanted = part * (size - high + low) - low;
    offset = static_cast<float>(std::round(wanted));
    miss = std::max(miss, std::abs(wanted - double{offset}));
  };
  const int width = face.texture ? face.texture->width : 0;
  const int height = face.texture ? face.texture->height : 0;
  const bool isCentre = side == FaceSide::Centre;
  if (isCentre || side == FaceSide::Left || side == FaceSide::Right) {
    put(extents.across, placement.xscale,
        isCentre                  ? 0.5
        : side == FaceSide::Right ? 1
                                  : 0,
        width, placement.xoff);
  }
  if (isCentre || side == FaceSide::Top || side == FaceSide::Bottom) {
    put(extents.down, placement.yscale,
        isCentre                   ? 0.5
        : side == FaceSide::Bottom ? 1
                                   : 0,
        height, placement.yoff);
  }
  return {placement, miss};
}

}  // namespace ferrowand
