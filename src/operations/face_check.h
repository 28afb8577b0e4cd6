// Whether a face, and a brush as a whole, is one that the game's tools can work with.
#pragma once

#include <cstdint>

#include "document/brush.h"

namespace ferrowand {

enum class CheckCode : std::uint8_t {
  None = 0,
  NoWinding = 1,
  TooFewPoints = 2,
  BogusRange = 3,
  MaxVisibleExtent = 4,
  PointOffPlane = 5,
  DegenerateEdge = 6,
  NonConvex = 7,
  Faces16 = 8,
  Faces32 = 9,
  Faces64 = 10,
  UnknownTexture = 11,
  NoNormal = 12,
  BrushAndOrigin = 13
};

// As the user reads it.
const char* CheckName(CheckCode code);

// Asks at everything that is wrong with the face whether to end the program.
void CheckFace(const Face& face, Reporter& reporter);
// The first thing that is wrong with it; `tolerance` is that of points off the plane, in units.
CheckCode FaceCheck(const Face& face, double tolerance);
// The same, wherever the face lies.
CheckCode ShapeCheck(const Face& face, double tolerance);

// To within ON_EPSILON.
bool IsPointInsideBrush(const Brush& brush, const DVec3& point);
bool IsBrushConvex(const Brush& brush);

}  // namespace ferrowand
