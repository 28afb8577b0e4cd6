#include "geometry/vec.h"

#include <numbers>

namespace ferrowand {
namespace {

int WithinTurn(int degrees) {
  const int rest = degrees % 360;
  return rest < 0 ? rest + 360 : rest;
}

// Own series, since the C libraries of the systems differ in the last place and turned brushes
// must be written alike by all. Good for angles up to 45 degrees.
constexpr int SERIES_TERMS = 9;

double SinSeries(double radians) {
  const double square = radians * radians;
  double sum = 1;
  for (int n = SERIES_TERMS; n > 0; --n) sum = 1 - square / (2 * n * (2 * n + 1)) * sum;
  return radians * sum;
}

double CosSeries(double radians) {
  const double square = radians * radians;
  double sum = 1;
  for (int n = SERIES_TERMS; n > 0; --n) sum = 1 - square / ((2 * n - 1) * 2 * n) * sum;
  return sum;
}

}  // namespace

double SinDegrees(int degrees) {
  int angle = WithinTurn(degrees);
  if (angle >= 180) return 0 - SinDegrees(angle - 180);  // never a negative zero
  if (angle > 90) angle = 180 - angle;
  constexpr double RADIANS = std::numbers::pi / 180;
  return angle <= 45 ? SinSeries(angle * RADIANS) : CosSeries((90 - angle) * RADIANS);
}

double CosDegrees(int degrees) {
  return SinDegrees(WithinTurn(degrees) + 90);
}

}  // namespace ferrowand
