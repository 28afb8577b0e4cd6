// Which three whole points a save writes for a face, and what a brush is in the file.
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

// Gives a face whole plane points, where it has none and some carry its plane: what is written
// later, and goes along with the face until then.
void FindPlanePoints(Face& face);

// The same brush on planes of whole points, wherever such lie within ON_EPSILON of its corners:
// what is cut by it has them in every file. The brush itself where that would move a corner
// further.
Brush OnWholePlanes(const Brush& brush, Reporter& reporter);

// What becomes of a brush, all of whose faces have a shape, when it is written and read.
struct SavedShape {
  bool isCarried = true;  // all its planes are
  int movedFaces = 0;     // whose planes move by more than MOVED at a corner
  double farthest = 0;    // units, of these
  int lostFaces = 0;      // that are bound no more
  double cornerMove = 0;  // units, of the corner that moves most
};
SavedShape ShapeInFile(const Brush& brush, Reporter& reporter);

// The same of all brushes that are written of a tree together: for the game those that instances
// show, and no templates.
SavedShape ShapeInFile(const entity& tree, bool forGame, Reporter& reporter);

}  // namespace ferrowand
