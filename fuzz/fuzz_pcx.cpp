#include "gamedata/palette.h"
#include "gamedata/pcx.h"
#include "gamedata/wad_file.h"
#include "support.h"

using namespace ferrowand;

// A picture that was read, written and read again is the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Desk desk;
  const Palette palette;
  const auto made = MakeFromPcx(Scratch().Write("in.pcx", data, size), palette);
  if (!made) return 0;
  Require(made->pixels.size() == std::size_t{made->width} * made->height);

  WadFile wad(WadLimits{}, palette, desk.reporter);
  Texture texture;
  texture.wad = &wad;
  wad.SetImage(texture, made->Name(), made->pixels, made->width, made->height);
  const std::string path = Scratch().Path("out.pcx");
  Require(ExportPcx(texture, path, palette, desk.reporter));
  const auto again = MakeFromPcx(path, palette);
  Require(again && again->pixels == made->pixels);
  return 0;
}
