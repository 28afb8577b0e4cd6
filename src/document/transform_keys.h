// What the keys of an object say about how it lies, where no brush shows it.
#pragma once

namespace ferrowand {

class Matrix;
class entity;

// The object with all that goes along with it has been transformed by the matrix, by more than a
// move. A turn turns where entities look: "angle", but of a light, and the three angles of "angles"
// and "mangle". A template instance and the box of an embedded map follow as far as their keys can
// say: an instance stretches along its own axes, turns about Z in whole degrees and mirrors, a box
// stays along the axes of the world. What is beyond that (a tilt, a skew) changes their place only.
void TransformKeys(entity& e, const Matrix& matrix);

}  // namespace ferrowand
