// What a user waits for who changes 3,000 of the 60,000 brushes of the generated map: every
// twentieth, so that they are spread over the whole list.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "document/map.h"
#include "document/picking.h"
#include "generated_map.h"
#include "operations/clipboard.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/texture_search.h"
#include "operations/transform_selection.h"
#include "program.h"

namespace ferrowand::bench {
namespace {

struct LargeMap {
  LargeMap() : program(""), map(LoadMap(program.data, GeneratedMapFile().Path())) {}

  void Pick(std::size_t count) {
    const std::vector<entity*> all = PickableObjects(*map, PickLevel::Objects);
    std::vector<entity*> some;
    for (std::size_t i = 0; i < all.size(); i += all.size() / count) some.push_back(all[i]);
    Select(*map, some, false);
  }

  static LargeMap& Shared() {
    static LargeMap shared;
    return shared;
  }

  Program program;
  std::unique_ptr<Map> map;
};

// The command is measured, or its undo; the map is the same before each.
void Measure(benchmark::State& state, EditResult (*command)(Map& map), bool undo) {
  LargeMap& large = LargeMap::Shared();
  Map& map = *large.map;
  large.Pick(static_cast<std::size_t>(state.range(0)));
  const std::vector<entity*> selection = map.selection.Objects();
  for (auto _ : state) {
    if (undo) state.PauseTiming();
    map.selection.Set(selection);
    if (command(map) != EditResult::Done) state.SkipWithError("refused");
    if (undo) {
      state.ResumeTiming();
      map.undo.Undo();
    } else {
      state.PauseTiming();
      map.undo.Undo();
      state.ResumeTiming();
    }
  }
}

EditResult Move(Map& map) {
  return MoveSelection(map, {8, 0, 0}, {});
}
EditResult Turn(Map& map) {
  return RotateSelection(map, 0, 1, 90, {}, {});
}
EditResult Copy(Map& map) {
  return PasteText(map, SelectionText(map));
}

EditResult Replace(Map& map) {
  const TextureQuery query{.name = "*"};
  ReplaceCount count;
  return ReplaceTextures(map, FindFaces(map, query, TextureScope::Selection), query,
                         {.name = "other", .keepsLook = true}, FoundAs::Brushes, count);
}

void AddRows(const char* name, EditResult (*command)(Map& map)) {
  for (const bool undo : {false, true}) {
    benchmark::RegisterBenchmark((std::string(undo ? "Undo" : "Edit") + '/' + name).c_str(),
                                 [=](benchmark::State& state) { Measure(state, command, undo); })
        ->Arg(1)
        ->Arg(3000)
        ->Unit(benchmark::kMillisecond);
  }
}

[[maybe_unused]] const bool registered = [] {
  AddRows("move", Move);
  AddRows("turn", Turn);
  AddRows("group", GroupSelection);
  AddRows("delete", DeleteSelection);
  AddRows("copy and paste", Copy);
  AddRows("replace textures", Replace);
  return true;
}();

}  // namespace
}  // namespace ferrowand::bench
