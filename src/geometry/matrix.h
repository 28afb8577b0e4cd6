// A small matrix for turns and scales, and the transform of a point about a centre.
#pragma once

#include <cstdint>
#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

class Reporter;

// Elements row by row: At(x, y) is column x of row y. Reading outside ends the program with the
// failed condition, "x<sizex" or "y<sizey".
class Matrix {
 public:
  Matrix(std::uint8_t sizex_, std::uint8_t sizey_);

  std::uint8_t sizex() const { return sizex_; }
  std::uint8_t sizey() const { return sizey_; }
  float& At(unsigned x, unsigned y);
  float At(unsigned x, unsigned y) const { return const_cast<Matrix*>(this)->At(x, y); }

  static Matrix Diagonal(float x, float y, float z);
  // A turn in the XY plane, counter-clockwise seen from above.
  static Matrix TurnZ(int degrees);

 private:
  std::uint8_t sizex_;
  std::uint8_t sizey_;
  std::vector<float> elements_;
};

// Both 3 x 3: the second one is applied first.
Matrix operator*(const Matrix& a, const Matrix& b);

// centre + matrix (3 x 3) times (point - centre).
DVec3 Transform(const DVec3& point, const Matrix& matrix, const DVec3& centre);

}  // namespace ferrowand
