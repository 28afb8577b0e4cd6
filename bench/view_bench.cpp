// Painting one 2D view of 1280 x 1000 pixels on the software canvas: a generated map of 3,000
// brushes and each map of the folder that FERROWAND_CORPUS names, fitted to the view and zoomed in.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "program.h"
#include "support/fake_view_host.h"
#include "support/small_map.h"
#include "support/software_canvas.h"
#include "views/map_view.h"

namespace ferrowand::bench {
namespace {

constexpr PixelSize AREA{1280, 1000};

void PaintView(benchmark::State& state, Map& map, int zoomIns) {
  const Options options;
  Tool* const tool = nullptr;
  ViewList list;
  FakeViewHost host(AREA);
  MapView view(map, host, list, options, tool);
  view.SetOrientation(Orientation::Top);
  view.ZoomTo(map.GetBounds());
  for (int i = 0; i < zoomIns; ++i) view.ZoomIn();
  SoftwareCanvas canvas(AREA);
  for (auto _ : state) {
    view.Paint(canvas, {0, 0, AREA.width, AREA.height});
    benchmark::DoNotOptimize(canvas.Pixels().data());
  }
}

void PaintCuboids(benchmark::State& state) {
  SmallMap small;
  for (int i = 0; i < 3000; ++i) {
    const Vec3 at(static_cast<float>(i % 60 * 96 - 2880), static_cast<float>(i / 60 * 96 - 2400),
                  static_cast<float>(i % 7 * 32));
    small.AddCuboid(at, at + Vec3(80, 64, 96));
  }
  PaintView(state, small.map, static_cast<int>(state.range(0)));
}
BENCHMARK(PaintCuboids)->ArgName("zoomed in")->Arg(0)->Arg(3)->Unit(benchmark::kMillisecond);

void PaintFile(benchmark::State& state, const std::string& path) {
  Program program(std::filesystem::path(path).parent_path().string());
  const std::unique_ptr<Map> map = LoadMap(program.data, path);
  if (!map) {
    state.SkipWithError("cannot be read");
    return;
  }
  PaintView(state, *map, static_cast<int>(state.range(0)));
}

[[maybe_unused]] const bool corpusRegistered = [] {
  for (const auto& map : CorpusMaps()) {
    benchmark::RegisterBenchmark(("Paint/" + map.filename().string()).c_str(), PaintFile,
                                 map.string())
        ->ArgName("zoomed in")
        ->Arg(0)
        ->Arg(3)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace ferrowand::bench
