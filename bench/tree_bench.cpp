// What a user waits for at the entity tree and at Find Entity, on the real maps and on the 60,000
// brushes of the generated one, each of which has a row.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "document/map.h"
#include "document/picking.h"
#include "generated_map.h"
#include "operations/entity_search.h"
#include "operations/entity_tree.h"
#include "operations/insert.h"
#include "program.h"

namespace ferrowand::bench {
namespace {

constexpr const char* WORDS[] = {"w", "wa", "wal", "wall", "wal", "wa", "w", ""};

class Follower : public MapObserver {
 public:
  explicit Follower(Map& map) : tree(map), map_(map) { map.AddObserver(*this); }
  ~Follower() override { map_.RemoveObserver(*this); }
  void OnChange(const MapChange& change) override { tree.Follow(change); }

  EntityTree tree;

 private:
  Map& map_;
};

void Open(benchmark::State& state, Map& map) {
  std::size_t rows = 0;
  for (auto _ : state) {
    EntityTree tree(map);
    tree.SetFilter({.brushes = true});
    rows = tree.Rows().size();
  }
  state.counters["rows"] = static_cast<double>(rows);
}

void TypeAFilter(benchmark::State& state, Map& map) {
  EntityTree tree(map);
  std::size_t typed = 0;
  for (auto _ : state) {
    tree.SetFilter({.text = WORDS[typed++ % std::size(WORDS)], .brushes = true});
  }
}

void DeleteAndUndo(benchmark::State& state, Map& map) {
  Follower follower(map);
  follower.tree.SetFilter({.brushes = true});
  entity* const some = PickableObjects(map, PickLevel::Objects).front();
  for (auto _ : state) {
    Select(map, some, false);
    DeleteSelection(map);
    map.undo.Undo();
  }
}

void Find(benchmark::State& state, Map& map) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(FindEntities(map, {.classname = "*", .value = "300"}));
  }
}

struct Loaded {
  Loaded(const std::string& folder, const std::string& path)
      : program(folder), map(LoadMap(program.data, path)) {}
  Program program;
  std::unique_ptr<Map> map;
};

void AddRows(const std::string& name, const std::string& folder, std::string path) {
  constexpr struct {
    const char* name;
    void (*run)(benchmark::State&, Map&);
  } ROWS[] = {{"open", Open},
              {"type a letter", TypeAFilter},
              {"delete and undo", DeleteAndUndo},
              {"find", Find}};
  const auto loaded = std::make_shared<std::unique_ptr<Loaded>>();
  for (const auto& row : ROWS) {
    benchmark::RegisterBenchmark(("Tree/" + name + "/" + row.name).c_str(), [=](benchmark::State&
                                                                                    state) {
      if (!*loaded) {
        const GeneratedMapFile file;
        *loaded = std::make_unique<Loaded>(folder, path.empty() ? file.Path() : path);
      }
      row.run(state, *(*loaded)->map);
    })->Unit(benchmark::kMillisecond);
  }
}

[[maybe_unused]] const bool registered = [] {
  for (const auto& path : CorpusMaps()) {
    AddRows(path.stem().string(), path.parent_path().string(), path.string());
  }
  AddRows("generated", "", "");
  return true;
}();

}  // namespace
}  // namespace ferrowand::bench
