// Every tolerance and limit of the geometry, in world units unless said otherwise.
#pragma once

namespace ferrowand {

// A point nearer to a plane than this lies on it: the mapping tools' own tolerance, so that what
// looks closed here is closed to them.
inline constexpr double ON_EPSILON = 0.1;
// A computed coordinate nearer to a whole unit than this is that unit.
inline constexpr double SNAP_EPSILON = 0.01;
// What snapping, on all three axes, and a float's last place take a corner off its plane at most.
inline constexpr double CORNER_SLACK = 0.02;
// Whole points that miss a plane by no more at any corner of its face carry it.
inline constexpr double CARRIED = 0.001;
// A corner that a save moves further than this has moved for the eye of a map compiler.
inline constexpr double MOVED = 0.05;
// A shorter edge is no edge.
inline constexpr double SHORTEST_EDGE = 0.1;
// Twice the area of a triangle, in square units, below which its corners tell no plane.
inline constexpr double SMALLEST_DOUBLE_AREA = 0.5;
// By how much a corner may move when a brush is saved whose planes are all carried: at an acute
// edge two planes make much of little.
inline constexpr double LARGEST_SLIP = 0.5;
// By how much a corner may move when a brush is saved of which faces lie between whole units.
inline constexpr double LARGEST_STRAY = 4;

// Of unit normals: the cosine of the angle between two beyond which they are the same.
inline constexpr double SAME_NORMAL = 0.999;
// The cosine to the way to the eye from which on a face is turned to it: seen edge-on it still is.
inline constexpr double EDGE_ON = -0.0001;
// The sine of the angle to the depth of a view beyond which a face is seen from the side.
inline constexpr double SEEN_FROM_THE_SIDE = 0.1;

// Of matrices, whose elements have 32 bits. The part of a squared length by which rows may differ
// in it, or miss the right angle, and still keep the shape of what they are applied to.
inline constexpr double SHAPE_SLACK = 1e-4;
// A factor that misses a whole number by less is that number; a direction that misses an axis by
// less than this part of its length lies along it.
inline constexpr double FACTOR_SLACK = 1e-5;
// What is a half but for the last places of a cosine is a half, on every machine.
inline constexpr double HALF_SLACK = 1e-6;

// Half the side of the square that a plane starts from.
inline constexpr double BASE_SIZE = 8192.0;
// The same for what reaches further: around all that points of planes can be read as.
inline constexpr double FAR_BASE_SIZE = 33554432.0;
// The greatest coordinate of an origin, and so of the world.
inline constexpr double WORLD_REACH = 32767.0;
// Below any component of a unit normal.
inline constexpr double BOGUS_RANGE = 18000.0;
// From this coordinate on the game does not show a face.
inline constexpr double MAX_VISIBLE = 10000.0;
// Coordinates up to here are computed with as whole numbers, without overflow: far beyond any
// world.
inline constexpr int WHOLE_LIMIT = 65536;
inline constexpr int MAXWINDINGPOINTS = 64;
inline constexpr int MAXFACES = 32;

}  // namespace ferrowand
