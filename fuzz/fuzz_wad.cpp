#include <algorithm>

#include "gamedata/palette.h"
#include "gamedata/wad_file.h"
#include "support.h"

using namespace ferrowand;

namespace {

constexpr std::size_t MAXTEXTURES = 20;  // looked at of each file

void Look(WadFile& wad) {
  for (std::size_t i = 0; i < std::min(wad.Textures().size(), MAXTEXTURES); ++i) {
    Texture& texture = *wad.Textures()[i];
    const std::size_t padded = std::size_t{texture.paddedWidth} * texture.paddedHeight;
    Require(wad.Pixels(texture).size() == padded || texture.flags == TEXTURE_BUILTIN);
    Require(wad.Rgb(texture).size() == 3 * wad.Pixels(texture).size());
    wad.RepresentativeColour(texture, OneColour::MostCommon);
    Require(wad.AnimatedFrame(&texture, static_cast<unsigned>(i)) != nullptr);
  }
  wad.SetCacheSize(3);
  wad.SetRepresentativeColours(OneColour::Average);
}

void Edit(WadFile& wad) {
  auto added = std::make_unique<Texture>();
  added->width = added->height = 8;
  added->pixels.assign(64, 77);
  added->entry.name = {'+', '0', 'n', 'e', 'w'};
  const std::size_t count = wad.Textures().size();
  Require(wad.AddTexture(std::move(added)) && wad.Textures().size() == count + 1);
  Require(wad.Pixels(*wad.Textures()[count])[0] == 77);

  Texture& first = *wad.Textures()[0];
  const std::vector<std::uint8_t> pixels(std::size_t{first.width} * first.height, 5);
  wad.RewriteTexture(first, pixels);
  wad.RenameTexture(first, "renamed");
  for (std::size_t i = 0; i < MAXTEXTURES && !wad.Textures().empty(); ++i) {
    wad.RemoveTexture(*wad.Textures()[i * 7 % wad.Textures().size()]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Desk desk;
  const Palette palette;
  WadLimits limits;
  limits.maxCached = 5;
  const std::string path = Scratch().Write("input.wad", data, size);
  WadFile wad(limits, palette, desk.reporter);
  if (!wad.Open(path)) return 0;
  Look(wad);
  Edit(wad);
  WadFile again(limits, palette, desk.reporter);
  Require(again.Open(path));
  Look(again);
  Require(desk.user.assertions == 0);
  return 0;
}
