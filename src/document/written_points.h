// Which three whole points a save writes for a face.
#pragma once

#include "document/brush.h"
#include "geometry/whole_plane.h"

namespace ferrowand {

class entity;

struct WrittenPoints {
  WholePoints points;
  double miss = 0;  // units by which their plane leaves that of the face, at its worst corner
};

// For a face that has a shape. The first of these whose plane leaves the face's at no corner by
// more than CARRIED, else the one that leaves it least: the first three winding points, rounded;
// the face's own plane points, if they are whole, in which case the rounded ones must lie on that
// plane exactly; whole points that are searched for. Of an axial plane always the rounded ones,
// where these have a plane at all.
WrittenPoints PointsToWrite(const Face& face);

// Gives the face whole plane points, and the plane of these, where it has none and some carry its
// plane: what is made of that plane has it in every file.
void TakeWholePoints(Face& face);

// The faces of a whole tree that a save moves by more than MOVED, for which no whole points are
// near.
struct MovedFaces {
  int count = 0;
  double farthest = 0;  // units, at a corner
};
MovedFaces FacesMovedBySaving(const entity& tree);

}  // namespace ferrowand
