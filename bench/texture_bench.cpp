// What a texture browser does after each change of the largest map: counting what faces have, and
// making its wall of what the program ships.
#include <benchmark/benchmark.h>

#include "document/map.h"
#include "generated_map.h"
#include "operations/texture_use.h"
#include "operations/texture_wall.h"
#include "program.h"

namespace ferrowand::bench {
namespace {

const Map& LargeMap() {
  static Program program("");
  static const std::unique_ptr<Map> map = LoadMap(program.data, GeneratedMapFile().Path());
  return *map;
}

void CountUses(benchmark::State& state) {
  const Map& map = LargeMap();
  for (auto _ : state) benchmark::DoNotOptimize(TextureUses(map));
}
BENCHMARK(CountUses)->Unit(benchmark::kMillisecond);

void MakeWall(benchmark::State& state) {
  const Map& map = LargeMap();
  const TextureUses uses(map);
  for (auto _ : state) benchmark::DoNotOptimize(WallOf(map, uses, {.order = WallOrder::Use}));
}
BENCHMARK(MakeWall)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ferrowand::bench
