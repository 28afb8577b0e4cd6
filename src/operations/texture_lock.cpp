#include "operations/texture_lock.h"

#include <cmath>
#include <numbers>

#include "document/texture_projection.h"
#include "document/transform.h"

namespace ferrowand {
namespace {

constexpr double DEGREE = std::numbers::pi / 180;
constexpr double ARM = 64;  // world units between the points of a pin

// How a value changes along the two axes of the projection, from how it changes along two
// directions of the plane.
struct Slope {
  double across, down;
};

Slope SlopeOf(const DVec3& u, const DVec3& v, double alongU, double alongV,
              const TextureAxes& axes) {
  const double ua = Dot(u, axes.s), ud = Dot(u, axes.t);
  const double va = Dot(v, axes.s), vd = Dot(v, axes.t);
  const double det = ua * vd - ud * va;
  return {(alongU * vd - alongV * ud) / det, (alongV * ua - alongU * va) / det};
}

float WholeDegrees(double radians) {
  const double degrees = std::round(radians / DEGREE);
  return static_cast<float>(degrees < 0 ? degrees + 360 : degrees);
}

DVec3 Middle(const winding& w) {
  DVec3 sum;
  for (const WindingPoint& p : w.Points()) sum = sum + DVec3(p.Position());
  return sum * (1.0 / w.numpoints);
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
  pin.at = Middle(*face.w);
  pin.u = onPlane(axes.s);
  pin.v = onPlane(axes.t);
  const DVec3 points[] = {pin.at, pin.at + pin.u, pin.at + pin.v};
  for (int i = 0; i < 3; ++i) {
    const TexturePoint texels = projection.Texels(points[i]);
    pin.s[i] = texels.s;
    pin.t[i] = texels.t;
  }
  return pin;
}

void TextureLock::Hold(Face& face, const Pin& pin, const DVec3 (&moved)[3]) {
  const TextureAxes& axes = TextureAxesOf(face.plane.normal);
  const DVec3 u = moved[1] - moved[0];
  const DVec3 v = moved[2] - moved[0];
  const Slope s = SlopeOf(u, v, pin.s[1] - pin.s[0], pin.s[2] - pin.s[0], axes);
  const Slope t = SlopeOf(u, v, pin.t[1] - pin.t[0], pin.t[2] - pin.t[0], axes);
  // The sign of the one scale stays, that of the other tells whether the texture is mirrored.
  const double sign = face.xscale < 0 ? -1 : 1;
  const float rotation = WholeDegrees(std::atan2(-s.down * sign, s.across * sign));
  const TextureTurn turn(rotation);
  const float xscale = static_cast<float>(1 / (turn.cosine * s.across - turn.sine * s.down));
  const float yscale = static_cast<float>(1 / (turn.sine * t.across + turn.cosine * t.down));
  if (!std::isfinite(xscale) || !std::isfinite(yscale)) return;
  face.rotation = rotation;
  face.xscale = xscale;
  face.yscale = yscale;
  const TexturePoint along = TextureProjection(face).Along(moved[0]);
  face.xoff = static_cast<float>(pin.s[0] - along.s);
  face.yoff = static_cast<float>(pin.t[0] - along.t);
}

TextureLock::TextureLock(const entity& e) {
  ForEachAlong(e, [this](const entity& part) {
    for (const Face& face : part.brush.Faces()) pins_.push_back(PinOf(face));
  });
}

void TextureLock::Apply(entity& e, const std::function<DVec3(const DVec3&)>& move) const {
  auto pin = pins_.begin();
  ForEachAlong(e, [&](entity& part) {
    for (int i = 0; i < part.brush.getNumFaces(); ++i, ++pin) {
      Face& face = part.brush.face(i);
      if (!pin->isValid || !face.plane.HasNormal()) continue;
      Hold(face, *pin, {move(pin->at), move(pin->at + pin->u), move(pin->at + pin->v)});
      UpdateFromWinding(face);
    }
  });
}

void ShiftTextures(entity& e, const DVec3& by) {
  const auto shift = [&by](Face& face) {
    if (!face.plane.HasNormal()) return;
    const TexturePoint along = TextureProjection(face).Along(by);
    face.xoff = static_cast<float>(face.xoff - along.s);
    face.yoff = static_cast<float>(face.yoff - along.t);
    UpdateFromWinding(face);
  };
  ForEachAlong(e, [&shift](entity& part) {
    for (int i = 0; i < part.brush.getNumFaces(); ++i) shift(part.brush.face(i));
    for (Face& face : part.brush.FarFaces()) shift(face);
  });
}

}  // namespace ferrowand
