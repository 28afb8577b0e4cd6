// What the mouse does in a 2D view of 1280 x 1000 pixels, on generated maps of 3,000 and of 60,000
// brushes: a hover over nothing, also with 1,000 instances of a template in the map, a click, a
// rectangle over everything, a step of a drag, the repaint of a strip of what is selected.
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <optional>

#include "instances.h"
#include "support/fake_view_host.h"
#include "support/small_map.h"
#include "support/software_canvas.h"
#include "views/tools/tool_host.h"
#include "views/tools/tool_set.h"

namespace ferrowand::bench {
namespace {

class BenchHost : public ToolHost {
 public:
  explicit BenchHost(Reporter& reporter) : reporter_(reporter) {}

  HeldKeys Keys() const override { return {}; }
  void Capture(MapView&, bool) override {}
  void SetCursor(MapView&, ToolCursor) override {}
  void DrawNow(MapView&, const std::function<void(Canvas&)>&) override {}
  bool TrackPopup(MapView&, Pixel, ToolPopup) override { return true; }
  void EditProperties(entity&) override {}
  std::optional<int> AskSides(PrimitiveKind) override { return {}; }
  std::optional<std::string> AskPathName(const Map&) override { return {}; }
  std::string CurrentTexture(Map&) override { return {}; }
  void ToolChanged() override {}
  void Refuse(MapView&, const std::string&) override {}
  Reporter& Report() override { return reporter_; }

 private:
  Reporter& reporter_;
};

struct Editor {
  explicit Editor(std::int64_t brushes, std::int64_t instances = 0) {
    for (std::int64_t i = 0; i < brushes; ++i) {
      const Vec3 at(static_cast<float>(i % 60 * 96 - 2880),
                    static_cast<float>(i / 60 % 60 * 96 - 2880),
                    static_cast<float>(i / 3600 * 100 - 800));
      small.AddCuboid(at, at + Vec3(80, 64, 96));
    }
    if (instances > 0) AddInstances(small, instances);
    view.SetOrientation(Orientation::Top);
    view.ZoomTo(small.map.GetBounds());
  }

  Pixel At(float x, float y) const { return view.transform.ToScreen({x, y, 0}); }
  void Click(Pixel at) {
    view.OnMouseDown(at, BUTTON_LEFT, false, false);
    view.OnMouseUp(at, BUTTON_LEFT);
  }

  SmallMap small;
  Options options;
  ViewList list;
  BenchHost host{small.reporter};
  ToolSet tools{host, list, options};
  FakeViewHost window{{1280, 1000}};
  MapView view{small.map, window, list, options, tools.Current()};
};

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->ArgName("brushes")->Arg(3000)->Arg(60000)->Unit(benchmark::kMillisecond);
}

void Hover(benchmark::State& state) {
  Editor editor(state.range(0));
  const Pixel nowhere = editor.At(2880 - 8, 2880 - 8);
  for (auto _ : state) editor.view.OnMouseMove(nowhere, 0, false);
}
BENCHMARK(Hover)->Apply(Sizes);

void HoverAmongInstances(benchmark::State& state) {
  Editor editor(3000, 1000);
  const Pixel nowhere = editor.At(2880 - 8, 2880 - 8);
  for (auto _ : state) editor.view.OnMouseMove(nowhere, 0, false);
}
BENCHMARK(HoverAmongInstances)->Unit(benchmark::kMillisecond);

void ClickABrush(benchmark::State& state) {
  Editor editor(state.range(0));
  const Pixel first = editor.At(-2860, -2860), other = editor.At(2810, -2860);
  for (auto _ : state) {
    editor.Click(first);
    editor.Click(other);
  }
  if (editor.small.map.selection.empty()) state.SkipWithError("nothing was selected");
}
BENCHMARK(ClickABrush)->Apply(Sizes);

void SelectAll(Editor& editor) {
  editor.small.map.selection.Clear();
  editor.view.OnMouseDown({2, 2}, BUTTON_LEFT, false, false);
  editor.view.OnMouseMove({1278, 998}, BUTTON_LEFT, false);
  editor.view.OnMouseUp({1278, 998}, BUTTON_LEFT);
}

void SelectAllByRectangle(benchmark::State& state) {
  Editor editor(state.range(0));
  for (auto _ : state) SelectAll(editor);
  if (editor.small.map.selection.empty()) state.SkipWithError("nothing was selected");
}
BENCHMARK(SelectAllByRectangle)->Apply(Sizes);

void DragStep(benchmark::State& state) {
  Editor editor(state.range(0));
  editor.tools.Use(editor.tools.brushSelector);
  const Pixel brush = editor.At(-2860, -2860);
  editor.Click(brush);
  editor.view.OnMouseDown(brush, BUTTON_LEFT, false, false);
  int step = 0;
  for (auto _ : state) {
    editor.view.OnMouseMove({brush.x + 50 + step++ % 100, brush.y}, BUTTON_LEFT, false);
  }
  if (!editor.tools.Current()->HasPreview()) state.SkipWithError("nothing was dragged");
}
BENCHMARK(DragStep)->Apply(Sizes);

void DropOneBrush(benchmark::State& state) {
  Editor editor(state.range(0));
  editor.tools.Use(editor.tools.entitySelector);
  Pixel from = editor.At(-2860, -2860);
  editor.Click(from);
  int side = 50;
  for (auto _ : state) {
    const Pixel to{from.x + side, from.y};
    editor.view.OnMouseDown(from, BUTTON_LEFT, false, false);
    editor.view.OnMouseMove(to, BUTTON_LEFT, false);
    editor.view.OnMouseUp(to, BUTTON_LEFT);
    from = to;
    side = -side;
  }
  if (!editor.small.map.undo.CanUndo()) state.SkipWithError("nothing was moved");
}
BENCHMARK(DropOneBrush)->Apply(Sizes);

// The repaint of one column of pixels while 3,000 brushes are selected, by the brush selector and
// in touch-up.
void PaintAStrip(benchmark::State& state) {
  Editor editor(3000);
  SelectAll(editor);
  Tool* const tools[] = {&editor.tools.brushSelector, &editor.tools.vertexTool};
  editor.tools.Use(*tools[state.range(0)]);
  SoftwareCanvas canvas({1280, 1000});
  canvas.SetClip({640, 0, 641, 1000});
  for (auto _ : state) editor.tools.Current()->DrawOverlay(editor.view, canvas);
}
BENCHMARK(PaintAStrip)->ArgName("touch-up")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ferrowand::bench
