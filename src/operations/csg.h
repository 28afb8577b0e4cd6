// Brushes carved by brushes: the split of one by a plane and what is built on it.
#pragma once

#include <vector>

#include "document/entity.h"
#include "geometry/box_tree.h"

namespace ferrowand {

// Clears both halves and fills them: `outside` with what lies in front of the plane, `inside` with
// what lies behind it, each closed by a cap that takes its texture from the source's first face.
// The other faces keep their planes exactly. A half of fewer than three faces is none; where a cap
// would be one face more than a brush can have, there are no halves. False for a brush without
// faces.
bool SplitBrush(const Brush& source, const Plane& split, Brush& outside, Brush& inside,
                Reporter& reporter);

// Whose texture the cap of a piece takes: that of the source's first face, or of the face that cut.
enum class CapTexture { First, Cutter };

// The same, or that of a face that is given, which outlives it.
struct CapLook {
  CapLook(CapTexture of) : texture(of) {}
  CapLook(CapTexture of, const Face* face) : texture(of), given(face) {}

  CapTexture texture;
  const Face* given = nullptr;
};

// Why a cut cannot be made: what would be lost.
enum class CutLoss {
  None,
  TooManyFaces,  // of a piece
  TooSmall       // a piece, for whole units
};

struct Carving {
  CutLoss loss = CutLoss::None;    // of a piece: the others are not to be used
  std::vector<EntityPtr> outside;  // convex pieces of class "brush", which overlap nowhere
  Brush inside;                    // no faces when there is no common part
};

// Cuts by the cutter's planes in turn. A piece that a plane does not cut stays exactly what it is.
Carving Carve(const Brush& source, const Brush& cutter, const ClassSet& classes,
              const CapLook& caps, Reporter& reporter);

}  // namespace ferrowand
