// Small vector mathematics. Stored positions are 32-bit floats (Vec3); everything computed on the
// way is in doubles (DVec3), so that whole units and exact right angles survive.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace ferrowand {

template <typename T>
struct BasicVec3 {
  T x{}, y{}, z{};

  constexpr BasicVec3() = default;
  constexpr BasicVec3(T x_, T y_, T z_) : x(x_), y(y_), z(z_) {}
  template <typename U>
  constexpr explicit BasicVec3(const BasicVec3<U>& v)
      : x(static_cast<T>(v.x)), y(static_cast<T>(v.y)), z(static_cast<T>(v.z)) {}

  constexpr T& operator[](int axis) { return axis == 0 ? x : axis == 1 ? y : z; }
  constexpr T operator[](int axis) const { return axis == 0 ? x : axis == 1 ? y : z; }

  friend constexpr bool operator==(const BasicVec3&, const BasicVec3&) = default;
  friend constexpr BasicVec3 operator+(const BasicVec3& a, const BasicVec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
  }
  friend constexpr BasicVec3 operator-(const BasicVec3& a, const BasicVec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
  }
  friend constexpr BasicVec3 operator-(const BasicVec3& a) {
    return {T{} - a.x, T{} - a.y, T{} - a.z};
  }
  friend constexpr BasicVec3 operator*(const BasicVec3& a, T scale) {
    return {a.x * scale, a.y * scale, a.z * scale};
  }
};

using Vec3 = BasicVec3<float>;
using DVec3 = BasicVec3<double>;
using WholePoint = BasicVec3<std::int64_t>;

template <typename T>
constexpr T Dot(const BasicVec3<T>& a, const BasicVec3<T>& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

// Right-handed.
template <typename T>
constexpr BasicVec3<T> Cross(const BasicVec3<T>& a, const BasicVec3<T>& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double Length(const DVec3& v) {
  return std::sqrt(Dot(v, v));
}

// Without a guard: a vector of length 0 becomes not-a-number, which the map check reports.
inline DVec3 Normalise(const DVec3& v) {
  const double length = Length(v);
  return {v.x / length, v.y / length, v.z / length};
}

// Half away from zero: 15.5 gives 16, -15.5 gives -16. What no int32 holds is clamped to the
// nearest one; not-a-number gives 0.
inline std::int32_t RoundToInt(double value) {
  const double moved = value >= 0 ? value + 0.5 : value - 0.5;
  if (moved != moved) return 0;
  if (moved >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (moved <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(moved);
}

// An axis-parallel box. Empty until something is put into it.
struct Bounds {
  static constexpr float EMPTY = 99999.0f;

  Vec3 mins{EMPTY, EMPTY, EMPTY};
  Vec3 maxs{-EMPTY, -EMPTY, -EMPTY};

  bool IsEmpty() const { return mins.x > maxs.x || mins.y > maxs.y || mins.z > maxs.z; }
  void Add(const Vec3& p) {
    if (p.x < mins.x) mins.x = p.x;
    if (p.y < mins.y) mins.y = p.y;
    if (p.z < mins.z) mins.z = p.z;
    if (p.x > maxs.x) maxs.x = p.x;
    if (p.y > maxs.y) maxs.y = p.y;
    if (p.z > maxs.z) maxs.z = p.z;
  }
  void Add(const Bounds& other) {
    if (other.IsEmpty()) return;
    Add(other.mins);
    Add(other.maxs);
  }

  friend bool operator==(const Bounds&, const Bounds&) = default;
};

inline Bounds Moved(const Bounds& box, const Vec3& by) {
  return {box.mins + by, box.maxs + by};
}

// Cosine and sine of whole degrees, brought into 0..359 first and exact at the right angles.
double CosDegrees(int degrees);
double SinDegrees(int degrees);

}  // namespace ferrowand
