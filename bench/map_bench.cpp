// What a user waits for: a map read, rebuilt and written. The yardstick T, which is measured in the
// same run, is the time to open the same file and cut it into words with nothing else done; the
// counter per_T is the best time of the work over the best T.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/map.h"
#include "generated_map.h"
#include "program.h"

namespace ferrowand::bench {
namespace {

// Of the processor: what else the machine does is not counted.
template <typename Work>
double Seconds(const Work& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

std::size_t CutIntoWords(const std::string& path, Reporter& reporter) {
  TextReader reader(reporter);
  reader.Open(path);
  std::string word;
  std::size_t bytes = 0;
  while (!reader.AtEof()) bytes += reader.ReadWord(word, 200);
  return bytes;
}

double Yardstick(const std::string& path, Reporter& reporter) {
  double best = 1e9;
  for (int i = 0; i < 5; ++i) {
    best = std::min(best, Seconds([&] { benchmark::DoNotOptimize(CutIntoWords(path, reporter)); }));
  }
  return best;
}

// Runs the work as often as the benchmark wants. What it makes is taken apart outside the time.
template <typename Work>
void Measure(benchmark::State& state, double yardstick, const Work& work) {
  double best = 1e9;
  for (auto _ : state) {
    decltype(work()) result;
    const double seconds = Seconds([&] { result = work(); });
    benchmark::DoNotOptimize(result);
    state.SetIterationTime(seconds);
    best = std::min(best, seconds);
  }
  state.counters["best_ms"] = best * 1e3;
  state.counters["per_T"] = best / yardstick;
}

int CountFaces(const entity& e) {
  int faces = e.brush.getNumFaces();
  for (const EntityPtr& child : e.getEntityList()) faces += CountFaces(*child);
  return faces;
}

int RebuildAll(entity& e, Reporter& reporter) {
  e.brush.Rebuild(reporter);
  for (const EntityPtr& child : e.getEntityList()) RebuildAll(*child, reporter);
  return e.brush.getNumFaces();
}

// Bytes of this process that are in memory; 0 where the system does not say.
double ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  double whole = 0, resident = 0;
  statm >> whole >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// One map on disk and a program to load it into.
class MapBench {
 public:
  MapBench(std::string path, Program& program) : path_(std::move(path)), program_(program) {}

  void Memory(benchmark::State& state) {
    for (auto _ : state) {
      const double before = ResidentBytes();
      const auto map = Load();
      state.counters["bytes_per_face"] = (ResidentBytes() - before) / CountFaces(*map);
    }
  }
  void Words(benchmark::State& state) {
    Measure(state, T(), [&] { return CutIntoWords(path_, program_.reporter); });
  }
  void Read(benchmark::State& state) {
    Measure(state, T(), [&] { return Load(); });
    state.counters["faces"] = CountFaces(*Load());
  }
  void Rebuild(benchmark::State& state) {
    const auto map = Load();
    Measure(state, T(), [&] { return RebuildAll(*map, program_.reporter); });
  }
  void WriteMap(benchmark::State& state) {
    const auto map = Load();
    Measure(state, T(), [&] {
      auto out = std::make_unique<TextWriter>();
      map->WriteMapBrushes(*out, 0);
      return out;
    });
  }
  void WriteExtended(benchmark::State& state) {
    const auto map = Load();
    Measure(state, T(), [&] {
      auto out = std::make_unique<TextWriter>();
      map->WriteExtended(*out);
      return out;
    });
  }

 private:
  std::unique_ptr<Map> Load() { return LoadMap(program_.data, path_); }
  double T() { return Yardstick(path_, program_.reporter); }

  std::string path_;
  Program& program_;
};

auto* Add(const char* what, const std::string& name, std::shared_ptr<MapBench> map,
          void (MapBench::*work)(benchmark::State&)) {
  return benchmark::RegisterBenchmark(
             (std::string(what) + '/' + name).c_str(),
             [map, work](benchmark::State& state) { ((*map).*work)(state); })
      ->Unit(benchmark::kMillisecond);
}

void AddAll(const std::string& name, std::shared_ptr<MapBench> map) {
  Add("words", name, map, &MapBench::Words)->UseManualTime();
  Add("read", name, map, &MapBench::Read)->UseManualTime();
  Add("rebuild", name, map, &MapBench::Rebuild)->UseManualTime();
  Add("write_map", name, map, &MapBench::WriteMap)->UseManualTime();
  Add("write_xmp", name, map, &MapBench::WriteExtended)->UseManualTime();
}

int Run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  Program program(corpus ? corpus : "");
  const GeneratedMapFile generated;
  const auto large = std::make_shared<MapBench>(generated.Path(), program);
  // First, while no earlier work has left free memory about.
  Add("memory", "generated", large, &MapBench::Memory)->Iterations(1);
  AddAll("generated", large);
  if (corpus) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(corpus)) {
      if (entry.path().extension() == ".map") paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    for (const auto& path : paths) {
      AddAll(path.stem().string(), std::make_shared<MapBench>(path.string(), program));
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace
}  // namespace ferrowand::bench

int main(int argc, char** argv) {
  return ferrowand::bench::Run(argc, argv);
}
