// A camera of 800 x 600 pixels that draws in memory: of a generated map of 3,000 brushes, each with
// one of 30 textures, and of each map of the folder that FERROWAND_CORPUS names, from its player's
// start or a place before it.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "operations/transform_selection.h"
#include "program.h"
#include "support/fake_camera_host.h"
#include "support/memory_gl.h"
#include "support/small_map.h"
#include "views/gl/gl_renderer.h"

namespace ferrowand::bench {
namespace {

constexpr PixelSize AREA{800, 600};

// One camera on a map, standing where it opens.
struct Stand {
  explicit Stand(Map& shown) : map(shown) { Open(); }

  void Open() {
    camera = std::make_unique<Camera>(map, host, options,
                                      std::make_unique<GlRenderer>(gl, map.Data().palette));
    camera->GoToOpening();
  }
  // Not before the driver is done.
  void Paint() {
    camera->Paint();
    glFinish();
  }

  Map& map;
  const Options options;
  FakeCameraHost host{AREA};
  MemoryGl gl{AREA};
  std::unique_ptr<Camera> camera;
};

double ResidentMegabytes() {
  std::ifstream file("/proc/self/statm");
  double pages = 0;
  file >> pages >> pages;
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

// From the map to the first picture; what that takes of memory.
void OpenCamera(benchmark::State& state, Map& map) {
  Stand stand(map);
  stand.camera.reset();
  const double before = ResidentMegabytes();
  for (auto _ : state) {
    state.PauseTiming();
    stand.camera.reset();
    state.ResumeTiming();
    stand.Open();
    stand.Paint();
  }
  state.counters["MB"] = ResidentMegabytes() - before;
}

void Frame(benchmark::State& state, Map& map) {
  Stand stand(map);
  stand.camera->SetMode(static_cast<RenderMode>(state.range(0)));
  stand.Paint();
  for (auto _ : state) stand.Paint();
}

void PickOne(benchmark::State& state, Map& map) {
  Stand stand(map);
  stand.Paint();
  int x = 0;
  for (auto _ : state) {
    x = (x + 37) % AREA.width;
    benchmark::DoNotOptimize(stand.camera->Pick({x, AREA.height / 2}));
  }
}

// What a picture takes longer after a change of one brush.
void ChangeOne(benchmark::State& state, Map& map) {
  Stand stand(map);
  stand.Paint();
  entity* brush = PickableObjects(map, PickLevel::Brushes).front();
  map.selection.Set({brush});
  float way = 16;
  for (auto _ : state) {
    state.PauseTiming();
    way = -way;
    MoveSelection(map, {way, 0, 0}, {});
    state.ResumeTiming();
    stand.Paint();
  }
  map.selection.Clear();
}

void RegisterOn(const std::string& name, const std::function<Map*()>& find) {
  const auto add = [&](const char* what, void (*run)(benchmark::State&, Map&)) {
    return benchmark::RegisterBenchmark(("Camera/" + name + what).c_str(),
                                        [find, run](benchmark::State& state) {
                                          if (Map* map = find()) return run(state, *map);
                                          state.SkipWithError("cannot be read");
                                        })
        ->Unit(benchmark::kMillisecond);
  };
  add("/open", OpenCamera);
  add("/frame", Frame)->ArgName("mode")->DenseRange(0, 5);
  add("/pick", PickOne);
  add("/change", ChangeOne);
}

// A field of boxes before the eye.
Map& Field() {
  static SmallMap small;
  static const bool made = [] {
    small.data.searchPath.Add(FERROWAND_DATA);
    small.data.palette.Load(small.data.searchPath, {}, small.reporter);
    WadFile& wad = small.data.wads.Get("quake.wad");
    const auto textures = wad.Textures();
    for (int i = 0; i < 3000; ++i) {
      const Vec3 at(static_cast<float>(i / 60 * 96), static_cast<float>(i % 60 * 96 - 2880),
                    static_cast<float>(i % 7 * 32));
      Brush& brush = small.AddCuboid(at, at + Vec3(80, 64, 96)).brush;
      for (int f = 0; f < brush.getNumFaces(); ++f) {
        const auto which = static_cast<std::size_t>(i * 7 + f) % textures.size();
        brush.face(f).texture = textures[which].get();
      }
    }
    small.Add({{"classname", "info_player_start"}, {"origin", "-200 0 200"}});
    return true;
  }();
  benchmark::DoNotOptimize(made);
  return small.map;
}

[[maybe_unused]] const bool registered = [] {
  RegisterOn("3000 brushes", [] { return &Field(); });
  for (const auto& path : CorpusMaps()) {
    RegisterOn(path.filename().string(), [path] {
      static Program program(path.parent_path().string());
      static std::unique_ptr<Map> map;
      static std::filesystem::path read;
      if (read != path) map = LoadMap(program.data, path.string());
      read = path;
      return map.get();
    });
  }
  return true;
}();

}  // namespace
}  // namespace ferrowand::bench
