// The simple solids that new brushes start as. Each fills its box, with every corner on whole
// units.
#pragma once

#include <string>
#include <string_view>

#include "document/entity.h"

namespace ferrowand {

enum class PrimitiveKind { Cuboid, Wedge, Column, Pyramid, Sphere, Hemisphere };

struct Primitive {
  PrimitiveKind kind = PrimitiveKind::Cuboid;
  Bounds box;  // any two opposite corners; they are rounded to whole units
  // Along which a column stands and a pyramid, a hemisphere or a wedge rises; a sphere's poles lie
  // on it.
  int axis = 2;
  int sides = 8;  // seen along the axis; of columns, spheres and hemispheres
};

struct SideRange {
  int least, most;
};
// What may be asked for: more would be more faces than a brush can have. {0, 0} for the kinds that
// have no choice.
SideRange SidesOf(PrimitiveKind kind);

struct PrimitiveResult {
  EntityPtr object;    // null when there is no such solid
  std::string reason;  // then, for the user, one sentence
};

// A plain brush, textured all round, which belongs to nothing yet. A sphere has as many bands of
// faces as a brush can hold.
PrimitiveResult MakePrimitive(const Primitive& primitive, std::string_view texture, const Map& map);

// Makes it, gives it to the map and selects it, as one step. Asks first where it would be out of
// sight or reach. Null when the user does not want it or when there is no such solid, which is
// said.
entity* AddPrimitive(Map& map, const Primitive& primitive, std::string_view texture);

}  // namespace ferrowand
