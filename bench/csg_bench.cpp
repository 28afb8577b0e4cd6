// Subtraction on the maps of the folder that FERROWAND_CORPUS names, and on a floor with many
// holes: one cutter of the user's day, and every tenth brush of a map at once.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "document/classes/special_classes.h"
#include "document/map.h"
#include "operations/csg_commands.h"
#include "operations/primitives.h"
#include "program.h"
#include "support/small_map.h"

namespace ferrowand::bench {
namespace {

// Each round cuts the map as it was.
void Measure(benchmark::State& state, Map& map, const std::vector<entity*>& cutters) {
  map.undo.Clear();
  for (auto _ : state) {
    map.selection.Set(cutters);
    SubtractSelection(map);
    state.PauseTiming();
    map.undo.Undo();
    map.undo.Clear();
    state.ResumeTiming();
  }
}

void CutFile(benchmark::State& state, const std::string& path) {
  Program program(std::filesystem::path(path).parent_path().string());
  const std::unique_ptr<Map> map = LoadMap(program.data, path);
  if (!map) {
    state.SkipWithError("cannot be read");
    return;
  }
  std::vector<entity*> cutters;
  int brushes = 0;
  ForEachEntity(*map, [&](const entity& e) {
    const bool isTenth = e.brush.getNumFaces() > 0 && ++brushes % 10 == 0;
    if (isTenth) cutters.push_back(const_cast<entity*>(&e));
  });
  if (state.range(0) == 1) {
    const Bounds box = map->GetBounds();
    const Vec3 middle = (box.mins + box.maxs) * 0.5f;
    const Vec3 half(256, 256, 256);
    const Primitive column{PrimitiveKind::Column, {middle - half, middle + half}, 2, 12};
    cutters = {AddPrimitive(*map, column, "wall")};
  }
  Measure(state, *map, cutters);
  state.counters["brushes"] = brushes;
}

// As many holes in one brush: pieces of pieces.
void CutFloor(benchmark::State& state) {
  SmallMap small;
  small.AddCuboid({-4000, -4000, 0}, {4000, 4000, 64});
  std::vector<entity*> cutters;
  for (int i = 0; i < state.range(0); ++i) {
    const Vec3 at(static_cast<float>(i % 60 * 128 - 3840), static_cast<float>(i / 60 * 128 - 3200),
                  0);
    cutters.push_back(&small.AddCuboid(at, at + Vec3(64, 48, 64)));
  }
  Measure(state, small.map, cutters);
}
BENCHMARK(CutFloor)->ArgName("holes")->Arg(300)->Arg(3000)->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool corpusRegistered = [] {
  for (const auto& map : CorpusMaps()) {
    benchmark::RegisterBenchmark(("Subtract/" + map.filename().string()).c_str(), CutFile,
                                 map.string())
        ->ArgName("one cutter")
        ->Arg(1)
        ->Arg(0)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace ferrowand::bench
