#include "document/map.h"
#include "support.h"

using namespace ferrowand;

// Whatever could be read can be saved both ways, and what was saved can be read. No box comes twice
// in a load; only each file that is missing has its own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Desk desk;
  GameData game(desk.reporter, desk.progress);
  const auto map = LoadMap(game, Scratch().Write("input.map", data, size));
  Require(map != nullptr);
  const bool namesFiles = map->GetKey("wad") || map->GetKey("XMPqc");
  Require(namesFiles || desk.user.repeats == 0);
  const std::string path = Scratch().Path("output.xmp");
  Require(map->Save(path, 0, {}));
  Require(map->Save(Scratch().Path("output.map"), 0, {}));
  Require(LoadMap(game, path) != nullptr);
  return 0;
}
