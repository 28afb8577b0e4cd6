#include "document/texture_projection.h"

#include <gtest/gtest.h>

#include "document/brush.h"
#include "gamedata/wad_file.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

struct Lie {
  DVec3 normal{0, 0, 1};
  float rotation = 0, xscale = 1, yscale = 1, xoff = 0, yoff = 0;
};

Face FaceOf(const Lie& lie) {
  Face face;
  face.plane.normal = Normalise(lie.normal);
  face.rotation = lie.rotation;
  face.xscale = lie.xscale;
  face.yscale = lie.yscale;
  face.xoff = lie.xoff;
  face.yoff = lie.yoff;
  return face;
}

// Worked out by hand from what the game's compiler does: the axes of the nearest direction, turned,
// divided by the scale, moved by the offset.
TEST(TextureProjection, IsThatOfTheGamesTools) {
  const DVec3 point(10, 20, 30);
  for (const auto& [what, lie, s, t] : Cases<const char*, Lie, double, double>{
           {"floor", {}, 10, -20},
           {"ceiling", {.normal = {0, 0, -1}}, 10, -20},
           {"east wall", {.normal = {1, 0, 0}}, 20, -30},
           {"west wall, seen in a mirror", {.normal = {-1, 0, 0}}, 20, -30},
           {"north wall", {.normal = {0, 1, 0}}, 10, -30},
           {"a slope that is rather a floor", {.normal = {0.6, 0, 0.8}}, 10, -20},
           {"a slope that is rather a wall", {.normal = {0.8, 0, 0.6}}, 20, -30},
           {"as much floor as wall: the floor", {.normal = {1, 0, 1}}, 10, -20},
           {"as much east as north: the east", {.normal = {-1, 1, 0}}, 20, -30},
           {"a quarter turn", {.rotation = 90}, 20, 10},
           {"the same backwards", {.rotation = -270}, 20, 10},
           {"half a turn on a wall", {.normal = {0, -1, 0}, .rotation = 180}, -10, 30},
           {"turned, mirrored, moved",
            {.rotation = 30, .xscale = -2, .yscale = 0.5f, .xoff = 7, .yoff = -9},
            -2.3301270,
            -33.6410162},
           {"turned by a part of a degree",
            {.normal = {0, 1, 0}, .rotation = 22.5f},
            20.7192983,
            -23.8895517},
           {"no scale", {.xscale = 0, .yscale = 0}, 10, -20},
       }) {
    const TexturePoint texels = TextureProjection(FaceOf(lie)).Texels(point);
    EXPECT_NEAR(texels.s, s, 1e-6) << what;
    EXPECT_NEAR(texels.t, t, 1e-6) << what;
  }
}

TEST(TextureProjection, CountsWholeTexturesByTheRealSizeNotThePaddedOne) {
  Texture texture;
  texture.width = 24;
  texture.height = 40;
  texture.paddedWidth = 32;
  texture.paddedHeight = 64;
  Face face = FaceOf({.xoff = 2});
  face.texture = &texture;
  const TexturePoint textures = TextureProjection(face).Textures({10, 20, 30});
  EXPECT_EQ(textures.s, 0.5);
  EXPECT_EQ(textures.t, -0.5);
}

}  // namespace
}  // namespace ferrowand
