// What holds of a whole document between any two commands.
#pragma once

#include <gtest/gtest.h>

#include "document/map.h"

namespace ferrowand {

// Of every entity: what is decoded is what its keys say, its class is the map's of that name, its
// children know it, the bounds of its brush are those of the windings, its faces are bound to the
// textures that the map's WADs have by now. The selection lies within the map, can be reached, and
// names nothing twice; so do the current layer and the leading group.
testing::AssertionResult IsConsistent(const Map& map);

// What the game is given of it is what the game's own tools read: one level of blocks, the one
// world first, closed brushes of four faces and more, and in it all brushes and entities of the
// document.
testing::AssertionResult IsPlayable(const Map& map);

}  // namespace ferrowand
