// What 1,000 instances of a template of four brushes add to a map of 3,000 brushes, beside the same
// map without: writing it for the game, painting it with what they show, and looking at their
// bounds after the template or one instance has been changed.
#include <benchmark/benchmark.h>

#include <memory>

#include "base/text_writer.h"
#include "document/edit_step.h"
#include "document/transform.h"
#include "instances.h"
#include "support/fake_view_host.h"
#include "support/software_canvas.h"
#include "views/map_view.h"

namespace ferrowand::bench {
namespace {

constexpr PixelSize AREA{1280, 1000};

struct Town {
  explicit Town(std::int64_t instances) {
    for (int i = 0; i < 3000; ++i) {
      const Vec3 at(static_cast<float>(i % 60 * 96 - 2880), static_cast<float>(i / 60 * 96 - 2400),
                    static_cast<float>(i % 7 * 32));
      small.AddCuboid(at, at + Vec3(80, 64, 96));
    }
    AddInstances(small, instances);
  }

  entity& Child(std::size_t index) { return *small.map.currentLayer()->getEntityList()[index]; }
  entity& Template() { return Child(3000); }
  entity& FirstInstance() { return Child(3001); }

  SmallMap small;
};

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->ArgName("instances")->Arg(0)->Arg(1000)->Unit(benchmark::kMillisecond);
}

void WriteWithInstances(benchmark::State& state) {
  Town town(state.range(0));
  std::size_t bytes = 0;
  for (auto _ : state) {
    TextWriter out;
    town.small.map.WriteMapBrushes(out, 0);
    bytes = out.Text().size();
    benchmark::DoNotOptimize(bytes);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes * state.iterations()));
}
BENCHMARK(WriteWithInstances)->Apply(Sizes);

void PaintWithInstances(benchmark::State& state) {
  Town town(state.range(0));
  Options options;
  options.drawTemplates = 1;
  Tool* const tool = nullptr;
  ViewList list;
  FakeViewHost host(AREA);
  MapView view(town.small.map, host, list, options, tool);
  view.SetOrientation(Orientation::Top);
  view.ZoomTo(town.small.map.GetBounds());
  SoftwareCanvas canvas(AREA);
  for (auto _ : state) view.Paint(canvas, {0, 0, AREA.width, AREA.height});
}
BENCHMARK(PaintWithInstances)->Apply(Sizes);

// A step that moves the object, then the bounds of the whole map.
void BoundsAfterMoving(benchmark::State& state, entity& (Town::*which)()) {
  Town town(1000);
  entity& object = (town.*which)();
  float by = 8;
  for (auto _ : state) {
    {
      EditStep step(town.small.map);
      step.Change(object);
      TranslateEntity(object, {by, 0, 0});
    }
    by = -by;
    benchmark::DoNotOptimize(town.small.map.GetBounds());
  }
}
BENCHMARK_CAPTURE(BoundsAfterMoving, one_instance, &Town::FirstInstance)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BoundsAfterMoving, the_template, &Town::Template)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ferrowand::bench
