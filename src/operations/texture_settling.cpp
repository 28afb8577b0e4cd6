#include "operations/texture_settling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "document/brush.h"
#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

constexpr double DEGREE = std::numbers::pi / 180;
constexpr double MILLION = 1e6;  // of what a scale of six decimals is made of
constexpr double LARGEST_SCALE = 1e5;
// Texels that nobody sees: a scale that misses by no more is not traded for an odd one.
constexpr double UNSEEN = 0.01, WORTHWHILE = 1.0 / 64;
// So many texels are tried to either side of the offset. Far from the middle of the world each of
// them takes another scale, of which one suits six decimals best.
constexpr int OFFSETS_TRIED = 8;
constexpr double WHOLE_SLACK = 1e-6;  // degrees

// Texels along one direction of a texture: wanted is scale and offset of the place.
struct Sample {
  double place, wanted, weight;
};

struct AxisFit {
  double offset = 0;
  float scale = 1;
  double miss = 0;  // texels
  double cost = 0;  // the same by weight
};

std::optional<AxisFit> Fit(std::span<const Sample> samples, double offset, double texelsPerUnit) {
  const auto scale = static_cast<float>(std::round(MILLION / texelsPerUnit) / MILLION);
  if (!std::isfinite(scale) || scale == 0 || std::abs(scale) > LARGEST_SCALE) return std::nullopt;
  AxisFit fit{offset, scale, 0, 0};
  for (const Sample& sample : samples) {
    const double miss = std::abs(sample.place / double{scale} + offset - sample.wanted);
    fit.miss = std::max(fit.miss, miss);
    fit.cost = std::max(fit.cost, miss * sample.weight);
  }
  return fit;
}

// The line through the samples, as near as it comes.
struct Line {
  double slope, offset;
};

Line Through(std::span<const Sample> samples) {
  double weights = 0, place = 0, wanted = 0;
  for (const Sample& s : samples) {
    weights += s.weight;
    place += s.weight * s.place;
    wanted += s.weight * s.wanted;
  }
  place /= weights;
  wanted /= weights;
  double spread = 0, rise = 0;
  for (const Sample& s : samples) {
    spread += s.weight * (s.place - place) * (s.place - place);
    rise += s.weight * (s.place - place) * (s.wanted - wanted);
  }
  return {rise / spread, wanted - rise / spread * place};
}

// With that offset.
double SlopeThrough(std::span<const Sample> samples, double offset) {
  double spread = 0, rise = 0;
  for (const Sample& s : samples) {
    spread += s.weight * s.place * s.place;
    rise += s.weight * s.place * (s.wanted - offset);
  }
  return rise / spread;
}

std::optional<AxisFit> FitAxis(std::span<const Sample> samples) {
  const Line line = Through(samples);
  const double offset = std::round(line.offset);
  std::optional<AxisFit> best = Fit(samples, offset, line.slope);
  if (best && best->cost <= UNSEEN) return best;
  for (int i = 0; i <= 2 * OFFSETS_TRIED; ++i) {
    const double tried = offset + (i % 2 == 0 ? i / 2 : -(i + 1) / 2);
    const double slope = SlopeThrough(samples, tried);
    if (slope * line.slope <= 0) continue;
    const std::optional<AxisFit> fit = Fit(samples, tried, slope);
    if (fit && (!best || fit->cost < best->cost - WORTHWHILE)) best = fit;
  }
  return best;
}

// Where both directions of the texture want the same turn, the whole degrees around it, or the one
// that it is. Else all between them, and some beyond: where a few points count for more than others
// the best of a bad lot lies there.
std::vector<int> CandidatesFor(double across, double down) {
  constexpr double SHEARED = 0.5;  // degrees
  constexpr int BEYOND = 12;
  const auto [low, high] = std::minmax(across, down);
  const double nearest = std::round(low);
  if (std::max(std::abs(low - nearest), std::abs(high - nearest)) < WHOLE_SLACK) {
    return {static_cast<int>(nearest)};
  }
  const int beyond = high - low > SHEARED ? BEYOND : 0;
  std::vector<int> candidates;
  for (int degrees = static_cast<int>(std::floor(low)) - beyond;
       degrees <= static_cast<int>(std::ceil(high)) + beyond; ++degrees) {
    candidates.push_back(degrees);
  }
  return candidates;
}

int NormalDegrees(int degrees) {
  return (degrees % 360 + 360) % 360;
}

// The direction of the plane that lies straight above one of the projection.
DVec3 OnPlane(const DVec3& direction, const Face& face, const TextureAxes& axes) {
  const DVec3& normal = face.plane.normal;
  return direction - axes.normal * (Dot(direction, normal) / Dot(axes.normal, normal));
}

// By which the texture would have to be turned for its own direction across, and for that down.
std::array<double, 2> TurnsOf(const Face& face, const TexelMap& wanted) {
  const TextureAxes& axes = TextureAxesOf(face.plane.normal);
  const DVec3 across = OnPlane(axes.s, face, axes), down = OnPlane(axes.t, face, axes);
  const double sign = face.xscale < 0 ? -1 : 1;
  const double first =
      std::atan2(-Dot(wanted.s, down) * sign, Dot(wanted.s, across) * sign) / DEGREE;
  double second = std::atan2(Dot(wanted.t, across), Dot(wanted.t, down)) / DEGREE;
  second += 180 * std::round((first - second) / 180);
  return {first, second};
}

struct Weighed {
  Settled settled;
  double cost;  // of the miss, by weight
};

std::optional<Weighed> Weigh(const Face& face, const TexelMap& wanted, int degrees,
                             std::span<const HeldPoint> held) {
  const auto turn = static_cast<float>(NormalDegrees(degrees));
  const TextureProjection units(face.plane.normal, turn);
  std::vector<Sample> across, down;
  for (const HeldPoint& point : held) {
    const TexturePoint place = units.Texels(point.at), texels = wanted(point.at);
    across.push_back({place.s, texels.s, point.weight});
    down.push_back({place.t, texels.t, point.weight});
  }
  const std::optional<AxisFit> x = FitAxis(across), y = FitAxis(down);
  if (!x || !y) return std::nullopt;
  const TexturePlacement placement{static_cast<float>(x->offset), static_cast<float>(y->offset),
                                   turn, x->scale, y->scale};
  return Weighed{{placement, std::max(x->miss, y->miss)}, std::max(x->cost, y->cost)};
}

float WithinTexture(float offset, int size) {
  const float rest = size > 0 ? std::fmod(offset, static_cast<float>(size)) : offset;
  return rest == 0 ? 0 : rest;  // and no minus zero
}

float Rounded(float number) {
  return static_cast<float>(RoundToInt(number));
}

float SixDecimals(float scale) {
  const auto rounded = static_cast<float>(std::round(double{scale} * MILLION) / MILLION);
  return rounded == 0 ? 1 : rounded;
}

}  // namespace

TexturePlacement PlacementOf(const Face& face) {
  const auto scale = [](float given) { return given == 0 ? 1 : SixDecimals(given); };
  return {Rounded(face.xoff), Rounded(face.yoff), Rounded(face.rotation), scale(face.xscale),
          scale(face.yscale)};
}

void Place(Face& face, TexturePlacement placement) {
  face.xoff = WithinTexture(placement.xoff, face.texture ? face.texture->width : 0);
  face.yoff = WithinTexture(placement.yoff, face.texture ? face.texture->height : 0);
  face.rotation = placement.rotation;
  face.xscale = placement.xscale;
  face.yscale = placement.yscale;
  UpdateFromWinding(face);
}

TexturePoint TexelMap::operator()(const DVec3& point) const {
  const DVec3 way = point - at;
  return {texels.s + Dot(way, s), texels.t + Dot(way, t)};
}

TexelMap TexelMapOf(const Face& face) {
  const TextureProjection projection(face);
  TexelMap map;
  map.at = MiddleOf(face);
  map.texels = projection.Texels(map.at);
  for (int axis = 0; axis < 3; ++axis) {
    DVec3 way;
    way[axis] = 1;
    const TexturePoint along = projection.Along(way);
    map.s[axis] = along.s;
    map.t[axis] = along.t;
  }
  return map;
}

std::vector<HeldPoint> HeldCorners(const Face& face) {
  std::vector<HeldPoint> held;
  for (const WindingPoint& p : std::as_const(*face.w).Points()) {
    held.push_back({DVec3(p.Position())});
  }
  return held;
}

DVec3 MiddleOf(const Face& face) {
  DVec3 sum;
  for (const WindingPoint& p : std::as_const(*face.w).Points()) sum = sum + DVec3(p.Position());
  return sum * (1.0 / face.w->numpoints);
}

std::optional<Settled> SettleTurned(const Face& face, const TexelMap& wanted, int degrees,
                                    std::span<const HeldPoint> held) {
  const std::optional<Weighed> fit = Weigh(face, wanted, degrees, held);
  return fit ? std::optional(fit->settled) : std::nullopt;
}

std::optional<Settled> Settle(const Face& face, const TexelMap& wanted,
                              std::span<const HeldPoint> held) {
  const auto [across, down] = TurnsOf(face, wanted);
  if (!std::isfinite(across) || !std::isfinite(down)) return std::nullopt;
  std::optional<Weighed> best;
  for (const int degrees : CandidatesFor(across, down)) {
    const std::optional<Weighed> tried = Weigh(face, wanted, degrees, held);
    if (tried && (!best || tried->cost < best->cost - UNSEEN)) best = tried;
  }
  return best ? std::optional(best->settled) : std::nullopt;
}

Settled SettleOffsets(const Face& face, TexturePlacement placement, const DVec3& held) {
  const TexturePoint wanted = TextureProjection(face).Texels(held);
  const TexturePoint units = TextureProjection(face.plane.normal, placement.rotation).Texels(held);
  const double xoff = wanted.s - units.s / double{placement.xscale};
  const double yoff = wanted.t - units.t / double{placement.yscale};
  placement.xoff = static_cast<float>(std::round(xoff));
  placement.yoff = static_cast<float>(std::round(yoff));
  return {placement, std::max(std::abs(xoff - double{placement.xoff}),
                              std::abs(yoff - double{placement.yoff}))};
}

}  // namespace ferrowand
