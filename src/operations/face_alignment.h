// What can be done to how the texture of a face lies on it. All of it gives numbers that a file
// holds, and by how much these miss what was meant.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "document/face_selection.h"
#include "operations/texture_settling.h"

namespace ferrowand {

enum class PlacementField { XOffset, YOffset, Rotation, XScale, YScale };
inline constexpr int PLACEMENT_FIELDS = 5;
// Of the keys and the wheel.
inline constexpr double SCALE_STEP = 0.125, FINE_SCALE_STEP = 0.01;

float& ValueOf(TexturePlacement& placement, PlacementField field);
// Zero and absurd scales are none, nor are numbers beyond what a game's tools read.
bool IsSensible(PlacementField field, double value);

// Given that value, which is sensible, or so much more. Turned and scaled about the corner that the
// user holds, or the middle. Nothing where the result would not be sensible.
Settled WithValue(const PickedFace& face, PlacementField field, double value);
std::optional<Settled> WithMore(const PickedFace& face, PlacementField field, double amount);
// As seen by who stands in front of it, counter-clockwise.
Settled Turned(const PickedFace& face, double degrees);
// Moved by texels, whichever of its directions lies nearest to those of the eye.
Settled Moved(const PickedFace& face, const DVec3& right, const DVec3& up, int texelsRight,
              int texelsUp);

enum class TextureAxis { Across, Down };
Settled Mirrored(const PickedFace& face, TextureAxis axis);

// As a new face has it.
Settled AlignedToWorld(const Face& face);
// A texel is a unit along the face, not along the world: each scale is the cosine of the slope
// there. Rotated by right angles only. Exact where the normal is square to an axis of the texture.
std::optional<Settled> AlignedToSlope(const PickedFace& face);
// Standing on an edge of the face: 0 is the longest one, the others follow round the face.
std::optional<Settled> AlignedToEdge(const Face& face, int edge);

// Whether they look the same way and lie as deep.
bool AreInOnePlane(const Face& face, const Face& other);
struct FaceEdge {
  DVec3 from, to;

  DVec3 Way() const { return to - from; }
};
// The part of an edge that both have, if it is more than a corner.
std::optional<FaceEdge> SharedEdge(const Face& a, const Face& b);
// As if the texture went on from the other face round the edge that both share, in its true size;
// of a face of the same plane the numbers are taken over. Nothing where they share no edge.
std::optional<Settled> WrappedFrom(const Face& from, const Face& face);

enum class FaceSide { Left, Right, Top, Bottom, Centre };

struct FitHow {
  bool width = true, height = true;
  int repeats = 1;          // of the texture; -n: an nth of it
  bool keepsRatio = false;  // of width or height alone: the other scale follows
};
// One repeat more, fewer, or a smaller part.
enum class FitChange { More, Fewer, Part };
int NextRepeats(int repeats, FitChange change);

// Faces that are laid out as one: of the same projection, rotation, mirroring and texture.
using FaceGroup = std::vector<PickedFace>;
// Each face is one of its own, or those that can go together do.
std::vector<FaceGroup> GroupsOf(std::span<const PickedFace> faces, bool together);
// Of all of a group: the texture covers it so many times. Keeps rotation and mirroring.
std::optional<Settled> Fitted(const FaceGroup& group, const FitHow& how);
// Offsets only: an edge of the texture at that side of the group, its middle in the middle.
Settled Justified(const FaceGroup& group, FaceSide side);

}  // namespace ferrowand
