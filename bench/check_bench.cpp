// What the check of a map of 3,000 brushes takes, all that it says included.
#include <benchmark/benchmark.h>

#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "document/map.h"
#include "generated_map.h"
#include "operations/map_findings.h"
#include "program.h"

namespace ferrowand::bench {
namespace {

constexpr std::size_t BRUSHES = 3000;

// Of the generated map, so many.
std::unique_ptr<Map> MapOfSome(Program& program) {
  auto map = LoadMap(program.data, GeneratedMapFile().Path());
  entity& layer = *map->currentLayer();
  std::vector<std::size_t> rest(layer.getEntityList().size() - BRUSHES);
  std::iota(rest.begin(), rest.end(), BRUSHES);
  layer.TakeChildren(rest);
  return map;
}

void Check(benchmark::State& state) {
  Program program("");
  const std::unique_ptr<Map> map = MapOfSome(program);
  for (auto _ : state) {
    std::vector<Problem> problems;
    std::vector<Finding> findings;
    CheckMap(*map, problems, map->wads, CHECK_TOLERANCE);
    FindInTree(*map, findings);
    FindInMap(*map, findings);
    std::size_t letters = 0;
    for (const Problem& problem : problems) letters += ReportLine(problem).size();
    for (const Finding& finding : findings) letters += ReportLine(finding).size();
    benchmark::DoNotOptimize(letters);
  }
}
BENCHMARK(Check)->Name("Check/3000 brushes")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ferrowand::bench
