#include "gamedata/palette.h"
#include "gamedata/picture_import.h"
#include "support.h"

using namespace ferrowand;

namespace {

// Large ones would only be slow.
void MakeAll(const Picture& picture) {
  const Palette palette;
  const std::size_t pixels =
      static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  Require(picture.indices.size() == pixels || picture.colours.size() == pixels);
  if (pixels > 4096) return;
  for (const PictureFit fit : {PictureFit::Crop, PictureFit::Pad, PictureFit::Scale}) {
    for (const char* name : {"wall", "{fence", "sky"}) {
      const auto made = MakeTexture(picture, name, {fit, false}, palette);
      Require(made->width % 16 == 0 && made->height % 16 == 0);
      Require(made->pixels.size() == std::size_t{made->width} * made->height);
    }
  }
}

}  // namespace

// A TGA, a level or a WAD3.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (const auto picture = ReadTga(bytes)) MakeAll(*picture);
  if (const auto textures = ReadTexturesOfGames(bytes)) {
    for (const NamedPicture& texture : *textures) MakeAll(texture.picture);
  }
  return 0;
}
