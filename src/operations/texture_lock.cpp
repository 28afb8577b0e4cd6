#include "operations/texture_lock.h"

#include <algorithm>
#include <cmath>

#include "document/transform.h"
#include "operations/texture_settling.h"

namespace ferrowand {
namespace {

constexpr double ARM = 64;            // world units between the points of a pin
constexpr double WHOLE_SLACK = 1e-4;  // texels: what the last places of a float come to

// Along the plane through the points, as texels lie at them.
TexelMap MapThrough(const DVec3 (&points)[3], const TexturePoint (&texels)[3]) {
  const DVec3 u = points[1] - points[0], v = points[2] - points[0];
  const double uu = Dot(u, u), uv = Dot(u, v), vv = Dot(v, v);
  const double det = uu * vv - uv * uv;
  const auto gradient = [&](double alongU, double alongV) {
    return u * ((alongU * vv - alongV * uv) / det) + v * ((alongV * uu - alongU * uv) / det);
  };
  return {points[0], texels[0], gradient(texels[1].s - texels[0].s, texels[2].s - texels[0].s),
          gradient(texels[1].t - texels[0].t, texels[2].t - texels[0].t)};
}

double SettleOn(Face& face, const TexelMap& wanted) {
  const std::optional<Settled> settled = Settle(face, wanted, HeldCorners(face));
  if (!settled) return 0;
  Place(face, settled->placement);
  return settled->miss;
}

struct ShiftedOffsets {
  double x, y;

  bool AreWhole() const {
    return std::abs(x - std::round(x)) < WHOLE_SLACK && std::abs(y - std::round(y)) < WHOLE_SLACK;
  }
};

ShiftedOffsets OffsetsAfter(const Face& face, const DVec3& by) {
  const TexturePoint along = TextureProjection(face).Along(by);
  return {double{face.xoff} - along.s, double{face.yoff} - along.t};
}

// The face has been moved.
double Shift(Face& face, const DVec3& by) {
  if (!face.plane.HasNormal()) return 0;
  const ShiftedOffsets offsets = OffsetsAfter(face, by);
  if (face.HasShape() && !offsets.AreWhole()) {
    TexelMap wanted = TexelMapOf(face);
    const TexturePoint along = TextureProjection(face).Along(by);
    wanted.texels = {wanted.texels.s - along.s, wanted.texels.t - along.t};
    return SettleOn(face, wanted);
  }
  face.xoff = static_cast<float>(std::round(offsets.x));
  face.yoff = static_cast<float>(std::round(offsets.y));
  UpdateFromWinding(face);
  return 0;
}

}  // namespace

TextureLock::Pin TextureLock::PinOf(const Face& face) {
  Pin pin{};
  pin.isValid = face.HasShape() && face.plane.HasNormal();
  if (!pin.isValid) return pin;
  // Straight above the axes of the projection lie directions of the plane itself.
  const TextureProjection projection(face);
  const TextureAxes& axes = projection.Axes();
  const DVec3& normal = face.plane.normal;
  const DVec3& facing = axes.normal;
  const auto onPlane = [&](const DVec3& axis) {
    return (axis - facing * (Dot(axis, normal) / Dot(facing, normal))) * ARM;
  };
  pin.points[0] = MiddleOf(face);
  pin.points[1] = pin.points[0] + onPlane(axes.s);
  pin.points[2] = pin.points[0] + onPlane(axes.t);
  for (int i = 0; i < 3; ++i) pin.texels[i] = projection.Texels(pin.points[i]);
  return pin;
}

double TextureLock::Hold(Face& face, const Pin& pin, const DVec3 (&moved)[3]) {
  return SettleOn(face, MapThrough(moved, pin.texels));
}

TextureLock::TextureLock(const entity& e) {
  ForEachAlong(e, [this](const entity& part) {
    for (const Face& face : part.brush.Faces()) pins_.push_back(PinOf(face));
  });
}

double TextureLock::Apply(entity& e, const std::function<DVec3(const DVec3&)>& move) const {
  double worst = 0;
  auto pin = pins_.begin();
  ForEachAlong(e, [&](entity& part) {
    for (int i = 0; i < part.brush.getNumFaces(); ++i, ++pin) {
      Face& face = part.brush.face(i);
      if (!pin->isValid || !face.plane.HasNormal() || !face.HasShape()) continue;
      const DVec3 moved[3]{move(pin->points[0]), move(pin->points[1]), move(pin->points[2])};
      worst = std::max(worst, Hold(face, *pin, moved));
    }
  });
  return worst;
}

double ShiftTextures(entity& e, const DVec3& by) {
  double worst = 0;
  ForEachAlong(e, [&](entity& part) {
    for (int i = 0; i < part.brush.getNumFaces(); ++i) {
      worst = std::max(worst, Shift(part.brush.face(i), by));
    }
    for (Face& face : part.brush.FarFaces()) Shift(face, by);
  });
  return worst;
}

bool StretchesTextures(const entity& e, const DVec3& by) {
  bool stretches = false;
  ForEachAlong(e, [&](const entity& part) {
    stretches =
        stretches || std::ranges::any_of(part.brush.Faces(), [&](const Face& face) {
          return face.HasShape() && face.plane.HasNormal() && !OffsetsAfter(face, by).AreWhole();
        });
  });
  return stretches;
}

}  // namespace ferrowand
