// What the keys of an object say about how it lies, where no brush shows it.
#pragma once

namespace ferrowand {

class Transformation;
class entity;

// The object with all below it has been transformed, by more than a move. A turn turns where
// entities look. A template instance and the box of an embedded map follow as far as their keys can
// say: an instance stretches along its own axes, turns about Z in whole degrees and mirrors, a box
// stays along the axes of the world. What is beyond that (a tilt, a skew) changes their place only.
void TransformKeys(entity& e, const Transformation& transformation);

}  // namespace ferrowand
