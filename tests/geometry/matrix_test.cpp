#include "geometry/matrix.h"

#include <gtest/gtest.h>

namespace ferrowand {
namespace {

TEST(MatrixDeathTest, ReadingOutsideEndsTheProgramWithTheFailedCondition) {
  const Matrix matrix(3, 2);
  EXPECT_DEATH(matrix.At(3, 0), "Assertion failed: x<sizex, file \\.\\.\\\\matrix\\.cpp, line ");
  EXPECT_DEATH(matrix.At(0, 2), "Assertion failed: y<sizey, file \\.\\.\\\\matrix\\.cpp, line ");
}

}  // namespace
}  // namespace ferrowand
