// What a file can hold of how a texture lies on a face: whole offsets, whole degrees, scales of six
// decimals. Whoever wants a texture to lie somehow asks here for the numbers that come nearest.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "document/texture_projection.h"
#include "geometry/vec.h"

namespace ferrowand {

struct Face;

struct TexturePlacement {
  float xoff = 0, yoff = 0;      // texels
  float rotation = 0;            // degrees
  float xscale = 1, yscale = 1;  // never 0

  friend bool operator==(const TexturePlacement&, const TexturePlacement&) = default;
};

// As a save writes it: of a face that has been read or worked on it is what the face has.
TexturePlacement PlacementOf(const Face& face);
// As offsets go, within one texture of the face.
void Place(Face& face, TexturePlacement placement);

// What is wanted: texels on a plane, which change along the world. Off the plane it says nothing.
struct TexelMap {
  DVec3 at;             // a point of the plane
  TexturePoint texels;  // there
  DVec3 s, t;           // texels a world unit

  TexturePoint operator()(const DVec3& point) const;
};
// What the face shows now.
TexelMap TexelMapOf(const Face& face);

// A point of the face where the texture is to lie as wanted, and how much that counts.
struct HeldPoint {
  DVec3 at;
  double weight = 1;
};
std::vector<HeldPoint> HeldCorners(const Face& face);
// The middle of the corners.
DVec3 MiddleOf(const Face& face);

struct Settled {
  TexturePlacement placement;
  double miss = 0;  // texels, at the worst of the held points
};

// Rotation and offsets are rounded first; the scales are then those that hold the points best. The
// sign of the scale across stays. Nothing where no scale does.
std::optional<Settled> Settle(const Face& face, const TexelMap& wanted,
                              std::span<const HeldPoint> held);
// The same with that rotation.
std::optional<Settled> SettleTurned(const Face& face, const TexelMap& wanted, int degrees,
                                    std::span<const HeldPoint> held);
// Only the offsets are left to be found: the point keeps the texels that it shows.
Settled SettleOffsets(const Face& face, TexturePlacement placement, const DVec3& held);

}  // namespace ferrowand
