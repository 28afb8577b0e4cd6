#include "geometry/matrix.h"

#include <gtest/gtest.h>

namespace ferrowand {
namespace {

TEST(Matrix, ElementsAreColumnOfRow) {
  Matrix matrix(3, 2);
  matrix.At(2, 0) = 5;
  matrix.At(0, 1) = 7;
  EXPECT_EQ(matrix.At(2, 0), 5);
  EXPECT_EQ(matrix.At(0, 1), 7);
  EXPECT_EQ(matrix.At(1, 1), 0);
}

TEST(Matrix, ATurnIsCounterClockwiseSeenFromAboveAndLeavesTheHeight) {
  const DVec3 centre{10, 20, 30};
  EXPECT_EQ(Transform({11, 20, 99}, Matrix::TurnZ(90), centre), DVec3(10, 21, 99));
  EXPECT_EQ(Transform({11, 20, 99}, Matrix::TurnZ(-90), centre), DVec3(10, 19, 99));
  EXPECT_EQ(Transform({11, 22, 99}, Matrix::TurnZ(540), centre), DVec3(9, 18, 99));
}

TEST(Matrix, ADiagonalScalesAboutTheCentre) {
  EXPECT_EQ(Transform({11, 22, 33}, Matrix::Diagonal(2, -1, 0), {10, 20, 30}), DVec3(12, 18, 30));
}

TEST(MatrixDeathTest, ReadingOutsideEndsTheProgramWithTheFailedCondition) {
  const Matrix matrix(3, 2);
  EXPECT_DEATH(matrix.At(3, 0), "Assertion failed: x<sizex, file \\.\\.\\\\matrix\\.cpp, line ");
  EXPECT_DEATH(matrix.At(0, 2), "Assertion failed: y<sizey, file \\.\\.\\\\matrix\\.cpp, line ");
}

}  // namespace
}  // namespace ferrowand
