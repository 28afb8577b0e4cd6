// Textures that go on from face to face, round the edges that these share.
#pragma once

#include <span>

namespace ferrowand {

class EditStep;
struct PickedFace;

// Over all that hang together with the first one. What follows each other round a body goes first,
// as the sides of a column do, and then what is left beside that: its caps turn nothing. Begins on
// the first face, or, where that is a cap, on the first of the others. Those that share no edge
// with them stay, and that is told.
void WrapFaces(EditStep& step, std::span<const PickedFace> faces);
// Each takes texture and layout of the one before it, which it lies beside.
void WrapAlong(EditStep& step, std::span<const PickedFace> faces);

}  // namespace ferrowand
