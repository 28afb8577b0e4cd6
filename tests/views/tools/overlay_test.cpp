// What lies over a view: handles, previews, the corners of brushes.
#include <algorithm>
#include <set>

#include "support/canvas_recorder.h"
#include "support/cases.h"
#include "tool_fixture.h"
#include "views/tools/box_handles.h"
#include "views/tools/preview.h"

namespace ferrowand {
namespace {

using Kind = CanvasRecorder::Kind;
using Outline = std::set<std::pair<int, int>>;

constexpr Pen PEN{{255, 255, 255}};

class OverlayTest : public ToolTest {
 protected:
  // The points of every figure, those of a box as its corners; `fit` brings a point elsewhere.
  template <typename Fit>
  static std::multiset<Outline> Figures(const CanvasRecorder& canvas, const Fit& fit) {
    std::multiset<Outline> figures;
    for (const auto& call : canvas.calls) {
      std::vector<Pixel> points = call.points;
      const PixelRect& r = call.rect;
      if (points.empty()) points = {{r.left, r.top}, {r.right - 1, r.bottom - 1}};
      Outline outline;
      for (const Pixel p : points) {
        const Pixel at = fit(p);
        outline.insert({at.x, at.y});
      }
      // Two opposite corners tell a box whichever they are.
      if (call.points.empty()) {
        const auto [a, b] = std::pair{*outline.begin(), *outline.rbegin()};
        outline = {{a.first, std::min(a.second, b.second)},
                   {b.first, std::max(a.second, b.second)}};
      }
      figures.insert(outline);
    }
    return figures;
  }
};

TEST_F(OverlayTest, HandlesPointAwayFromTheirBoxAndAreAlikeOnEverySide) {
  const Bounds box{{-40, -40, 0}, {40, 40, 0}};
  const PixelRect rect = view.transform.ToScreen(box.mins, box.maxs);
  const int x2 = rect.left + rect.right, y2 = rect.top + rect.bottom;  // twice the middle
  ASSERT_EQ(x2 % 2, 0);
  for (const Pixel away : {Pixel{rect.right + 99, rect.top}, Pixel{rect.left, rect.top - 99}}) {
    EXPECT_FALSE(GrabAt(box, view.transform, away).Any());
  }
  const auto same = [](Pixel p) { return p; };
  // The polygons, the rectangles with the frame, and the ellipses.
  const Cases<HandleMode, std::size_t, std::size_t, std::size_t> cases{
      {HandleMode::Scale, 4, 5, 0}, {HandleMode::Rotate, 0, 1, 4}, {HandleMode::Skew, 8, 1, 0}};
  for (const auto& [mode, polygons, rectangles, ellipses] : cases) {
    CanvasRecorder canvas;
    DrawHandles(box, view.transform, mode, PEN, canvas);
    EXPECT_EQ(canvas.Of(Kind::Polygon).size(), polygons);
    EXPECT_EQ(canvas.Of(Kind::Rectangle).size(), rectangles);
    EXPECT_EQ(canvas.Of(Kind::Ellipse).size(), ellipses);
    EXPECT_EQ(canvas.Of(Kind::Rectangle)[0].rect,
              (PixelRect{rect.left - 4, rect.top - 4, rect.right + 5, rect.bottom + 5}));
    const auto figures = Figures(canvas, same);
    EXPECT_EQ(Figures(canvas, [&](Pixel p) { return Pixel{x2 - p.x, p.y}; }), figures);
    EXPECT_EQ(Figures(canvas, [&](Pixel p) { return Pixel{p.x, y2 - p.y}; }), figures);
    EXPECT_EQ(Figures(canvas,
                      [&](Pixel p) {
                        return Pixel{x2 / 2 + p.y - y2 / 2, y2 / 2 + p.x - x2 / 2};
                      }),
              figures);
    // The farthest point of each lies beyond the frame by half a handle.
    for (const auto& call : canvas.Of(Kind::Polygon)) {
      int reach = 0;
      for (const Pixel p : call.points) {
        reach = std::max({reach, std::abs(2 * p.x - x2), std::abs(2 * p.y - y2)});
      }
      EXPECT_EQ(reach / 2, rect.Width() / 2 + HandleGap() + HandleSize());
    }
  }
}

TEST_F(OverlayTest, APreviewIsDrawnInSquaresAndDashesWhereItsPointsAre) {
  Preview preview(host, list);
  preview.Show(view, {{{{10, 10}, {90, 50}}, true, true}});
  CanvasRecorder canvas;
  preview.Draw(view, canvas);
  std::vector<PixelRect> squares;
  for (const auto& call : canvas.Of(Kind::Rectangle)) squares.push_back(call.rect);
  EXPECT_EQ(squares, (std::vector<PixelRect>{{8, 8, 12, 12}, {88, 48, 92, 52}}));
  int covered = 0, last = 9;
  for (const PixelLine& dash : canvas.LinesIn(PEN)) {
    EXPECT_GT(dash.from.x, last);
    covered += dash.to.x - dash.from.x + 1;
    last = dash.to.x;
    for (const Pixel p : {dash.from, dash.to}) EXPECT_NEAR(p.y, 10 + (p.x - 10) / 2.0, 1);
  }
  EXPECT_LE(last, 90);
  EXPECT_NEAR(covered, 40, 4);
  preview.Show(view, {{{{0, 0}, {1 << 24, 0}}, false, true}});
  canvas.calls.clear();
  preview.Draw(view, canvas);
  EXPECT_LE(canvas.LinesIn(PEN).size(), 4097u) << "of a line far beyond the view";
}

TEST_F(OverlayTest, AStripCostsWhatOfTheSelectionIsSeenInIt) {
  for (int i = 0; i < 50; ++i) {
    const auto x = static_cast<float>(i * 32 - 780);
    map.selection.Add(small.AddCuboid({x, 0, 0}, {x + 16, 64, 64}));
  }
  for (Tool* tool : {static_cast<Tool*>(&tools.entitySelector),
                     static_cast<Tool*>(&tools.brushTool), static_cast<Tool*>(&tools.vertexTool)}) {
    tools.Use(*tool);
    CanvasRecorder whole, strip;
    tool->DrawOverlay(view, whole);
    strip.SetClip({200, 0, 201, 300});
    tool->DrawOverlay(view, strip);
    EXPECT_GE(whole.calls.size(), 50u) << tool->Name();
    EXPECT_LE(strip.calls.size(), 20u) << tool->Name();
    EXPECT_GE(strip.calls.size(), 2u) << tool->Name();
  }
}

TEST_F(OverlayTest, TheSizeOfWhatIsDraggedStandsBesideItsBox) {
  entity& cube = small.AddCuboid({0, 0, 0}, {64, 128, 32});
  const auto words = [&] {
    CanvasRecorder canvas;
    tools.Current()->DrawOverlay(view, canvas);
    const auto texts = canvas.Of(Kind::Text);
    EXPECT_EQ(canvas.Of(Kind::Polyline).empty(), texts.empty()) << "the box itself";
    return texts.size() == 1 ? texts[0] : CanvasRecorder::Call{};
  };
  const auto drag = [&](Tool& tool, Pixel from, Pixel to) {
    map.selection.Set({&cube});
    tools.Use(tool);
    Press(from.x, from.y);
    EXPECT_TRUE(words().text.empty());
    MoveTo(to.x, to.y);
  };
  map.SetOptionBits(MAP_GRID);
  // Its right edge comes to 160 units, 40 pixels right of the middle, its top to 160.
  for (Tool* tool :
       {static_cast<Tool*>(&tools.entitySelector), static_cast<Tool*>(&tools.brushSelector)}) {
    drag(*tool, {32, 32}, {128, 64});
    EXPECT_EQ(words().text, "64 x 128");
    EXPECT_EQ(words().rect, (PixelRect{248, 110, 248, 110}));
    MoveTo(728, 600);  // no room to the right; 8 letters of 7 pixels
    EXPECT_EQ(words().rect, (PixelRect{310, 0, 310, 0}));
  }
  drag(tools.brushSelector, {80, 64}, {128, 64});
  EXPECT_EQ(words().text, "128 x 128");
  drag(tools.primitiveTool, {-64, -64}, {64, 192});
  EXPECT_EQ(words().text, "128 x 256");
}

TEST_F(OverlayTest, PickedCornersStandOutAndAnotherToolRepaintsEveryView) {
  entity& cube = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  map.selection.Set({&cube});
  const int before = window.invalidations;
  tools.Use(tools.vertexTool);
  EXPECT_GT(window.invalidations, before);
  const auto fills = [&] {
    CanvasRecorder canvas;
    tools.Current()->DrawOverlay(view, canvas);
    std::map<std::pair<int, int>, Colour> found;
    for (const auto& call : canvas.Of(Kind::Rectangle)) {
      if (call.fill) found[{call.rect.left, call.rect.top}] = *call.fill;
    }
    return found;
  };
  const auto unpicked = fills();
  ASSERT_GE(unpicked.size(), 4u);
  Click(64, 64);
  const auto picked = fills();
  EXPECT_EQ(std::ranges::count_if(picked,
                                  [&](const auto& corner) {
                                    return unpicked.contains(corner.first) &&
                                           !(unpicked.at(corner.first) == corner.second);
                                  }),
            1);
}

}  // namespace
}  // namespace ferrowand
