#include "gamedata/palette.h"
#include "support.h"

using namespace ferrowand;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Desk desk;
  SearchPath folder;
  folder.Add(Scratch().Path(""));
  Scratch().Write("quake.pal", data, size);
  Palette palette;
  palette.Load(folder, {1.5f, 0.7f, 1}, desk.reporter);
  Require(desk.user.assertions == 0);
  for (int i = 0; i < 256; i += 15) {
    const Colour colour = palette[static_cast<std::uint8_t>(i)].ToColour();
    const std::uint8_t nearest = palette.NearestColour(colour.red, colour.green, colour.blue);
    Require(nearest <= i && palette[nearest].ToColour() == colour);
  }
  return 0;
}
