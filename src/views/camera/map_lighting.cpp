#include "views/camera/map_lighting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "document/announcement.h"
#include "gamedata/wad_file.h"
#include "views/camera/shape_picking.h"

namespace ferrowand {
namespace {

constexpr float LUXEL = 16;       // world units
constexpr int MAX_SIDE = 64;      // luxels; those of larger faces are larger
constexpr double RAISED = 1;      // world units: how far before a face its light is measured
constexpr double STRENGTH = 0.5;  // of what reaches a face of what the light gives
constexpr double BRIGHTEST = 255;
constexpr double ANGLE_PART = 0.5;  // of the light that depends on how it meets the face

bool IsBrightByItself(const ShapePolygon& polygon) {
  if (!polygon.texture) return true;
  const std::string_view name = polygon.texture->Name();
  return name.starts_with('*') || name.starts_with("sky");
}

int LongestAxis(const DVec3& v) {
  const double x = std::abs(v.x), y = std::abs(v.y), z = std::abs(v.z);
  if (x >= y && x >= z) return 0;
  return y >= z ? 1 : 2;
}

bool HasChangedShape(const MapChange& change) {
  return !change.changed.empty() || !change.came.empty() || !change.went.empty() ||
         !change.moved.empty();
}

// The lights of the first that the second does not have, or not as often: equal ones add up.
void AddReachesOfOthers(const std::vector<LightSource>& first, std::vector<LightSource> second,
                        std::vector<Bounds>& boxes) {
  for (const LightSource& light : first) {
    const auto same = std::ranges::find(second, light);
    if (same == second.end()) {
      boxes.push_back(ReachOf(light));
    } else {
      std::swap(*same, second.back());
      second.pop_back();
    }
  }
}

}  // namespace

// A polygon as a place that light falls on.
struct MapLighting::Surface {
  Surface(const Shape& shape, const ShapePolygon& polygon)
      : plane(PlaneOf(shape, polygon)), axis(LongestAxis(plane.normal)) {
    for (std::uint32_t i = polygon.begin; i < polygon.end; ++i) {
      box.Add(shape.points[i].at);
      middle = middle + DVec3(shape.points[i].at);
    }
    middle = middle * (1.0 / (polygon.end - polygon.begin));
    DVec3 from(shape.points[polygon.end - 1].at);
    for (std::uint32_t i = polygon.begin; i < polygon.end; ++i) {
      const DVec3 to(shape.points[i].at);
      const DVec3 inwards = Normalise(Cross(plane.normal, to - from));
      sides.push_back({inwards, Dot(inwards, from)});
      from = to;
    }
  }

  LightImage EmptyImage() const {
    LightImage image{.axisU = (axis + 1) % 3, .axisV = (axis + 2) % 3, .step = LUXEL, .luxels = {}};
    const auto fit = [&](int along, float& begin) {
      begin = std::floor(box.mins[along] / image.step) * image.step;
      return static_cast<int>(std::ceil((box.maxs[along] - begin) / image.step)) + 1;
    };
    while (true) {
      image.width = fit(image.axisU, image.beginU);
      image.height = fit(image.axisV, image.beginV);
      if (std::max(image.width, image.height) <= MAX_SIDE) return image;
      image.step *= 2;
    }
  }

  // Before the face, and over it: what lies beside it may lie within another brush.
  DVec3 Place(const LightImage& image, double u, double v) const {
    DVec3 at;
    at[image.axisU] = image.beginU + u * image.step;
    at[image.axisV] = image.beginV + v * image.step;
    at[axis] = -plane.DistanceTo(at) / plane.normal[axis];
    for (const Plane& side : sides) {
      if (const double out = side.DistanceTo(at); out < RAISED) {
        at = at - side.normal * (out - RAISED);
      }
    }
    // Of what is thinner than that.
    for (const Plane& side : sides) {
      if (side.DistanceTo(at) < 0) return middle + plane.normal * RAISED;
    }
    return at + plane.normal * RAISED;
  }

  Plane plane;
  int axis;  // along which it is looked at
  Bounds box;
  DVec3 middle;
  std::vector<Plane> sides;  // look inwards
};

MapLighting::MapLighting(const Map& map, std::uint32_t flags) : map_(map), flags_(flags) {
  Learn();
}

void MapLighting::Learn() {
  lights_ = LightsOf(map_);
  std::vector<Bounds> boxes;
  boxes.reserve(lights_.size());
  for (const LightSource& light : lights_) boxes.push_back(ReachOf(light));
  reaches_.emplace(std::move(boxes));
  blockers_.reset();
}

std::vector<Bounds> MapLighting::Learn(const MapChange& change) {
  std::vector<Bounds> others;
  if (!change.everything && !HasChangedShape(change)) return others;
  const std::vector<LightSource> before = lights_;
  Learn();
  AddReachesOfOthers(before, lights_, others);
  AddReachesOfOthers(lights_, before, others);
  if ((flags_ & LIGHT_SHADOWS) == 0 || change.box.IsEmpty()) return others;
  for (const std::size_t light : reaches_->Overlapping(change.box)) {
    others.push_back(ReachOf(lights_[light]));
  }
  return others;
}

void MapLighting::Light(Shape& shape) {
  shape.light.clear();
  shape.light.reserve(shape.polygons.size());
  for (const ShapePolygon& polygon : shape.polygons) {
    shape.light.push_back(IsBrightByItself(polygon) ? LightImage() : ImageOf(shape, polygon));
  }
}

void MapLighting::FindLights(const Surface& surface) {
  near_.clear();
  for (const std::size_t index : reaches_->Overlapping(surface.box)) {
    const LightSource& light = lights_[index];
    const double before = surface.plane.DistanceTo(light.origin);
    if (before <= 0 || before >= std::abs(light.value)) continue;
    near_.push_back({&light, {}});
    if ((flags_ & LIGHT_SHADOWS) == 0) continue;
    if (!blockers_) blockers_.emplace(map_);
    near_.back().blockers = blockers_->Between(surface.box, light.origin);
  }
}

LightImage MapLighting::ImageOf(const Shape& shape, const ShapePolygon& polygon) {
  const Surface surface(shape, polygon);
  LightImage image = surface.EmptyImage();
  FindLights(surface);
  if (near_.empty()) {
    image.width = image.height = 1;
    image.luxels.assign(1, 0);
    return image;
  }
  static constexpr std::array<std::array<double, 2>, 4> QUARTERS{
      {{-0.25, -0.25}, {0.25, -0.25}, {-0.25, 0.25}, {0.25, 0.25}}};
  for (int v = 0; v < image.height; ++v) {
    for (int u = 0; u < image.width; ++u) {
      double light = 0;
      if ((flags_ & LIGHT_FOUR_TIMES) != 0) {
        for (const auto& [du, dv] : QUARTERS) {
          light += LightAt(surface, surface.Place(image, u + du, v + dv)) / QUARTERS.size();
        }
      } else {
        light = LightAt(surface, surface.Place(image, u, v));
      }
      image.luxels.push_back(static_cast<std::uint8_t>(std::clamp(light, 0.0, BRIGHTEST)));
    }
  }
  return image;
}

double MapLighting::LightAt(const Surface& surface, const DVec3& point) const {
  double sum = 0;
  for (const Near& near : near_) {
    const double light = LightFrom(*near.light, surface.plane.normal, point);
    if (light != 0 && !IsShaded(near.blockers, point, near.light->origin)) sum += light;
  }
  return sum * STRENGTH;
}

double MapLighting::LightFrom(const LightSource& light, const DVec3& normal,
                              const DVec3& point) const {
  const DVec3 way = light.origin - point;
  const double distance = Length(way);
  const double left = std::abs(light.value) - distance;
  if (left <= 0 || distance == 0) return 0;
  if (light.coneCosine > -1 && Dot(way, light.direction) > -light.coneCosine * distance) return 0;
  double part = 1;
  if ((flags_ & LIGHT_BY_ANGLE) != 0) {
    part = 1 - ANGLE_PART + ANGLE_PART * Dot(way, normal) / distance;
  }
  return light.value < 0 ? -left * part : left * part;
}

bool MapLighting::IsShaded(std::span<const std::size_t> blockers, const DVec3& from,
                           const DVec3& to) const {
  return std::ranges::any_of(blockers,
                             [&](std::size_t brush) { return blockers_->Blocks(brush, from, to); });
}

}  // namespace ferrowand
