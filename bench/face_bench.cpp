// Work on picked faces: 3,000 of them, six of each of 500 brushes or one of each of 3,000, are
// fitted, wrapped and moved, each time as one step that a view of the map hears of.
#include <benchmark/benchmark.h>

#include <functional>

#include "document/edit_step.h"
#include "document/live_step.h"
#include "operations/face_editing.h"
#include "operations/face_wrapping.h"
#include "support/fake_view_host.h"
#include "support/small_map.h"
#include "views/map_view.h"

namespace ferrowand::bench {
namespace {

constexpr int FACES = 3000;

struct Room {
  explicit Room(int facesEach) {
    std::vector<PickedFace> picked;
    for (int i = 0; i < FACES / facesEach; ++i) {
      const Vec3 at(static_cast<float>(i % 60 * 64 - 1920), static_cast<float>(i / 60 * 64), 0);
      entity& brush = small.AddCuboid(at, at + Vec3(64, 64, 96));
      for (int face = 0; face < facesEach; ++face) picked.push_back({&brush, 5 - face});
    }
    small.map.pickedFaces.Set(picked);
  }
  void Do(const std::function<void(EditStep&)>& change) {
    EditStep step(small.map);
    change(step);
  }
  const std::vector<PickedFace>& Faces() const { return small.map.pickedFaces.Faces(); }

  SmallMap small;
  Options options;
  ViewList list;
  FakeViewHost window{{1280, 1000}};
  Tool* tool = nullptr;
  MapView view{small.map, window, list, options, tool};
};

void Each(benchmark::internal::Benchmark* bench) {
  bench->ArgName("faces_each")->Arg(6)->Arg(1)->Unit(benchmark::kMillisecond);
}

void FitFaces(benchmark::State& state) {
  Room room(static_cast<int>(state.range(0)));
  FitHow how;
  for (auto _ : state) {
    how.repeats = how.repeats % 7 + 1;
    room.Do([&](EditStep& step) { ferrowand::FitFaces(step, room.Faces(), how, false); });
  }
}
BENCHMARK(FitFaces)->Apply(Each);

void WrapFaces(benchmark::State& state) {
  Room room(static_cast<int>(state.range(0)));
  float offset = 0;
  for (auto _ : state) {
    room.Faces().front().Get().xoff = ++offset;
    room.Do([&](EditStep& step) { ferrowand::WrapFaces(step, room.Faces()); });
  }
}
BENCHMARK(WrapFaces)->Apply(Each);

void TypeAnOffset(benchmark::State& state) {
  Room room(static_cast<int>(state.range(0)));
  LiveStep live(room.small.map);
  int offset = 0;
  for (auto _ : state) {
    offset = offset % 60 + 1;
    live.Do([&](EditStep& step) {
      ChangeFaces(step, room.Faces(), [&](const PickedFace& face) {
        return WithValue(face, PlacementField::XOffset, offset);
      });
    });
  }
}
BENCHMARK(TypeAnOffset)->Apply(Each);

}  // namespace
}  // namespace ferrowand::bench
