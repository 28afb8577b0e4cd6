#include "geometry/matrix.h"

#include <cstdio>
#include <cstdlib>

namespace ferrowand {
namespace {

// Not the system's own assert: this one stays in every build and names the unit alike everywhere.
[[noreturn]] void Fail(const char* expression, int line) {
  std::fprintf(stderr, "Assertion failed: %s, file ..\\matrix.cpp, line %d\n", expression, line);
  std::abort();
}

}  // namespace

Matrix::Matrix(std::uint8_t sizex, std::uint8_t sizey)
    : sizex_(sizex), sizey_(sizey), elements_(std::size_t{sizex} * sizey) {}

float& Matrix::At(unsigned x, unsigned y) {
  if (x >= sizex_) Fail("x<sizex", __LINE__);
  if (y >= sizey_) Fail("y<sizey", __LINE__);
  return elements_[y * sizex_ + x];
}

Matrix Matrix::Diagonal(float x, float y, float z) {
  Matrix matrix(3, 3);
  matrix.At(0, 0) = x;
  matrix.At(1, 1) = y;
  matrix.At(2, 2) = z;
  return matrix;
}

Matrix Matrix::TurnZ(int degrees) {
  const float c = static_cast<float>(CosDegrees(degrees));
  const float s = static_cast<float>(SinDegrees(degrees));
  Matrix matrix = Diagonal(c, c, 1);
  matrix.At(1, 0) = -s;
  matrix.At(0, 1) = s;
  return matrix;
}

Matrix operator*(const Matrix& a, const Matrix& b) {
  Matrix product(3, 3);
  for (unsigned y = 0; y < 3; ++y) {
    for (unsigned x = 0; x < 3; ++x) {
      for (unsigned i = 0; i < 3; ++i) product.At(x, y) += a.At(i, y) * b.At(x, i);
    }
  }
  return product;
}

DVec3 Transform(const DVec3& point, const Matrix& matrix, const DVec3& centre) {
  const DVec3 arm = point - centre;
  DVec3 result = centre;
  for (unsigned row = 0; row < 3; ++row) {
    const DVec3 factors{matrix.At(0, row), matrix.At(1, row), matrix.At(2, row)};
    result[static_cast<int>(row)] += Dot(factors, arm);
  }
  return result;
}

}  // namespace ferrowand
