#include <algorithm>
#include <random>
#include <set>

#include "support/canvas_recorder.h"
#include "support/cases.h"
#include "support/software_canvas.h"
#include "views/tool.h"
#include "views/view_fixture.h"

namespace ferrowand {
namespace {

using Kind = CanvasRecorder::Kind;

constexpr PixelSize AREA{400, 300};
constexpr PixelRect WHOLE{0, 0, AREA.width, AREA.height};
constexpr Pen MINOR{{0xC8, 0xC8, 0xC8}}, MAJOR{{0xAA, 0xAA, 0xAA}};

// A rubber band, drawn by inverting.
class RubberBand : public Tool {
 public:
  std::string Name() const override { return "rubber band"; }
  void DrawOverlay(MapView&, Canvas& canvas) override {
    const Pixel points[]{{30, 200}, {333, 40}, {250, 280}, {30, 200}};
    canvas.SetXor(true);
    canvas.Polyline({}, points);
    canvas.SetXor(false);
  }
  void DrawOverlayForOther(MapView&, Canvas& canvas) override {
    canvas.Rectangle({{9, 9, 9}}, std::nullopt, {0, 0, 5, 5});
  }
};

class MapViewPaintTest : public ViewTest {
 protected:
  MapViewPaintTest() {
    view.SetOrientation(Orientation::Top);
    Place(4, -800, 600);
  }
  // Brushes, a group, names, lights and links all over the view.
  void Furnish() {
    std::mt19937 random(7);
    const auto somewhere = [&] { return static_cast<int>(random() % 2000) - 1000; };
    for (int i = 0; i < 60; ++i) {
      const Vec3 at(static_cast<float>(somewhere()), static_cast<float>(somewhere()), 0);
      small.AddCuboid(at, at + Vec3(static_cast<float>(16 + i * 4), 100, 64));
      const std::string origin = Format("%i %i 0", somewhere(), somewhere());
      const std::string angle = Format("%i", somewhere());
      small.Add({{"classname", "light"},
                 {"origin", origin.c_str()},
                 {"angle", angle.c_str()},
                 {"XMPferroflags", "3"},
                 {"target", i % 2 ? "odd" : "even"},
                 {"targetname", i % 10 == 1 ? "odd" : "even"}});
    }
    options.entityNames = options.drawLightRadius = 1;
  }
  CanvasRecorder Record() {
    CanvasRecorder canvas;
    view.Paint(canvas, WHOLE);
    return canvas;
  }
  // Of a grid pen.
  std::set<int> Columns(const Pen& pen) { return Across(pen, &Pixel::x); }
  std::set<int> Rows(const Pen& pen) { return Across(pen, &Pixel::y); }
  // The lines of a pen whose ends have that coordinate in common.
  std::set<int> Across(const Pen& pen, int Pixel::*coordinate) {
    std::set<int> found;
    for (const PixelLine& line : Record().LinesIn(pen)) {
      if (line.from.*coordinate == line.to.*coordinate) found.insert(line.from.*coordinate);
    }
    return found;
  }

  RubberBand band;
};

TEST_F(MapViewPaintTest, GridLinesStandAtMultiplesOfTheSpacingAndEveryEighthIsMajor) {
  view.gridu = view.gridv = 7;
  Place(4, -800, 600);  // 128 units, 32 pixels apart; u -800 .. 800, v 600 .. -600
  EXPECT_EQ(Columns(MINOR),
            (std::set<int>{8, 40, 72, 104, 136, 168, 232, 264, 296, 328, 360, 392}));
  EXPECT_EQ(Columns(MAJOR), (std::set<int>{200, 201}));  // 0 and the axis beside it
  EXPECT_EQ(Rows(MINOR), (std::set<int>{22, 54, 86, 118, 182, 214, 246, 278}));
  EXPECT_EQ(Rows(MAJOR), (std::set<int>{150, 151}));
  Place(4, -2048, 1024);
  EXPECT_EQ(Columns(MAJOR), (std::set<int>{0, 256}));
  EXPECT_EQ(Rows(MAJOR), (std::set<int>{0, 256, 257}));

  view.gridu = 4;
  Place(0.5f, -100, 0);
  EXPECT_EQ(Columns(MAJOR), (std::set<int>{200, 201}));
  EXPECT_EQ(*Columns(MINOR).begin(), 8);  // at -96
}

TEST_F(MapViewPaintTest, EveryLineOfTheGridIsDrawnHoweverCloseTheyAre) {
  // The exponent, and how many of 400 columns are minor and major lines; the axis is one more.
  const Cases<std::uint8_t, std::size_t, std::size_t> cases{
      {4, 87, 14}, {3, 175, 26}, {2, 350, 51}, {1, 399, 101}};
  for (const auto& [exponent, minor, major] : cases) {
    view.gridu = exponent;
    EXPECT_EQ(Columns(MINOR).size(), minor) << int{exponent};
    EXPECT_EQ(Columns(MAJOR).size(), major) << int{exponent};
  }
}

TEST_F(MapViewPaintTest, TheToolDrawsLast) {
  tool = &band;
  small.AddCuboid({0, 0, 0}, {64, 64, 64});
  const CanvasRecorder canvas = Record();
  ASSERT_GE(canvas.calls.size(), 6u);
  const auto* last = &canvas.calls.back();
  EXPECT_EQ(last[0].kind, Kind::Rectangle);
  EXPECT_EQ(last[-2].kind, Kind::Polyline);
  EXPECT_EQ(last[-4].kind, Kind::Lines);
  EXPECT_EQ(canvas.Of(Kind::Polyline).size(), 1u);
}

TEST_F(MapViewPaintTest, TheOptionsDecideWhatIsShown) {
  entity& lamp = small.Add({{"classname", "light"}, {"origin", "0 0 0"}, {"XMPferroflags", "2"}});
  small.Add({{"targetname", "t"}, {"origin", "64 0 0"}});
  lamp.SetKey("target", "t");
  small.AddCuboid({0, 0, 0}, {64, 64, 64},
                  &small.Add({{"classname", "templateClass"}, {"XMPentityname", "crate"}}));
  small.Add({{"classname", "templateInstance"}, {"XMPclass", "crate"}, {"origin", "0 0 0"}});
  small.map.SetOptionBits(0);

  const CanvasRecorder bare = Record();
  EXPECT_EQ(bare.calls.size(), 5u) << "nothing of the grid";
  EXPECT_EQ(bare.calls[0].kind, Kind::Clip);
  EXPECT_EQ(bare.Of(Kind::Fill).at(0).fill, (Colour{255, 255, 255}));
  EXPECT_EQ(bare.Of(Kind::Fill).at(0).rect, WHOLE);
  EXPECT_EQ(bare.Of(Kind::Rectangle).size(), 3u);
  options.drawLightRadius = 1;
  EXPECT_EQ(Record().Of(Kind::Ellipse).size(), 1u);
  options.entityNames = 1;
  EXPECT_EQ(Record().Of(Kind::Text).at(0).fill, (Colour{0, 0, 0}));
  options.blackBack = 1;
  EXPECT_EQ(Record().Of(Kind::Text).at(0).fill, (Colour{255, 255, 255}));
  EXPECT_EQ(Record().Of(Kind::Fill).at(0).fill, (Colour{0, 0, 0}));
  EXPECT_TRUE(Record().Of(Kind::Lines).empty());
  options.forceEntityLinks = 1;
  EXPECT_EQ(Record().LinesIn(PensFor(true).targetLine).size(), 1u);
  small.data.shown.templates = true;
  EXPECT_EQ(Record().LinesIn(PensFor(true).entity).size(), 4u);
  small.data.shown.pointEntities = false;
  EXPECT_TRUE(Record().Of(Kind::Rectangle).empty());
  EXPECT_TRUE(Record().Of(Kind::Text).empty());
}

TEST_F(MapViewPaintTest, HeightsAreThoseOfTheSelectionElseOfTheMap) {
  small.AddCuboid({0, 0, -100}, {64, 64, 0});
  entity& high = small.AddCuboid({0, 0, 200}, {64, 64, 300});
  view.SetMapMode(MapMode::Heights);
  EXPECT_EQ(Record().LinesIn({{0, 0, 31}}).size(), 4u);  // -50 of -100 .. 300
  EXPECT_EQ(view.heightlo, -100);
  EXPECT_EQ(view.heighthi, 300);
  small.map.selection.Set({&high});
  EXPECT_EQ(Record().LinesIn({{0, 0, 127}}).size(), 4u);
  EXPECT_EQ(view.heightlo, 200);
  view.SetOrientation(Orientation::Front);
  Record();
  EXPECT_EQ(view.heightlo, 0);
  EXPECT_EQ(view.heighthi, 64);
}

TEST_F(MapViewPaintTest, TheColourOfATextureIsFoundOnceAndNeverThatOfTheBackground) {
  Texture texture;
  WadFile& wad = small.data.wads.Default();
  const std::vector<std::uint8_t> pixels(16, 77);  // grey 77, as long as no palette is loaded
  texture.wad = &wad;
  wad.SetImage(texture, "grey", pixels, 4, 4);
  small.AddCuboid({0, 0, 0}, {64, 64, 64}).brush.face(0).texture = &texture;
  view.SetMapMode(MapMode::OneMip);
  EXPECT_EQ(Record().LinesIn({{77, 77, 77}, 2}).size(), 4u);
  texture.pixels.assign(16, 99);  // behind the WAD's back
  EXPECT_EQ(Record().LinesIn({{77, 77, 77}, 2}).size(), 4u);
  options.mipType = 0;
  EXPECT_EQ(Record().LinesIn({{99, 99, 99}, 2}).size(), 4u);
  wad.SetImage(texture, "grey", std::vector<std::uint8_t>(16, 55), 4, 4);
  EXPECT_EQ(Record().LinesIn({{55, 55, 55}, 2}).size(), 4u);

  wad.SetImage(texture, "grey", std::vector<std::uint8_t>(16, 246), 4, 4);
  EXPECT_EQ(Record().LinesIn({{246, 246, 246}, 2}).size(), 4u) << "just to be told from white";
  wad.SetImage(texture, "grey", std::vector<std::uint8_t>(16, 247), 4, 4);
  EXPECT_EQ(Record().LinesIn({{160, 160, 160}, 2}).size(), 4u) << "on white";
  options.blackBack = 1;
  EXPECT_EQ(Record().LinesIn({{247, 247, 247}, 2}).size(), 4u) << "on black";
}

TEST_F(MapViewPaintTest, NothingElseIsDrawnInAColourLikeThatOfTheSelection) {
  small.data.searchPath.Add(FERROWAND_DATA);
  small.data.classes.LoadDefault("ents.qc");
  for (const bool black : {false, true}) {
    const DrawPens& pens = PensFor(black);
    std::vector<Colour> others{pens.background, {224, 0, 0}};  // a corner that is picked
    for (const Pen& pen : {pens.minorGrid, pens.majorGrid, pens.foreground, pens.entity,
                           pens.centreDot, pens.light, pens.targetLine, pens.targetHead}) {
      others.push_back(pen.colour);
    }
    for (int i = 0; i < 200; ++i) others.push_back(small.data.classes.NextOutlineColour());
    for (const auto& known : small.data.classes.Default().Classes()) {
      others.push_back(known->ClassColour());
    }
    for (const Pen& selected : {pens.brushOutline, pens.boxOutline}) {
      EXPECT_EQ(selected.width, 2);
      for (const Colour& other : others) {
        const Colour& own = selected.colour;
        EXPECT_GT(std::max({std::abs(own.red - other.red), std::abs(own.green - other.green),
                            std::abs(own.blue - other.blue)}),
                  64)
            << int{other.red} << ' ' << int{other.green} << ' ' << int{other.blue};
      }
    }
  }
}

TEST_F(MapViewPaintTest, AllButTheSelectionIsPaleWhileThatIsWanted) {
  entity& cube = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  const Colour own = cube.brush.Outline();
  const auto paled = [](int part) { return static_cast<std::uint8_t>((part + 2 * 255) / 3); };
  const Pen pale{{paled(own.red), paled(own.green), paled(own.blue)}};
  options.paleOthers = 1;
  EXPECT_EQ(Record().LinesIn({own}).size(), 4u) << "nothing is selected";
  small.map.selection.Set({&cube});
  EXPECT_EQ(Record().LinesIn(pale).size(), 4u);
  EXPECT_FALSE(Record().LinesIn(MINOR).empty());
  options.paleOthers = 0;
  EXPECT_EQ(Record().LinesIn({own}).size(), 4u);
}

TEST_F(MapViewPaintTest, APaintOfAPartIsThatPartOfThePaintOfAll) {
  Furnish();
  tool = &band;
  for (const MapMode mode : {MapMode::Normal, MapMode::OneMip}) {
    view.SetMapMode(mode);
    for (const float scale : {8.0f, 4.0f, 0.5f}) {
      view.gridu = view.gridv = scale == 8 ? 1 : 6;
      Place(scale, static_cast<int>(-200 * scale) + 4, static_cast<int>(150 * scale) + 4);
      SoftwareCanvas whole(AREA);
      view.Paint(whole, WHOLE);
      std::mt19937 random(3);
      for (int i = 0; i < 20; ++i) {
        const int left = static_cast<int>(random() % 380), top = static_cast<int>(random() % 280);
        const PixelRect part{left, top, std::min<int>(left + 1 + random() % 120, AREA.width),
                             std::min<int>(top + 1 + random() % 120, AREA.height)};
        SoftwareCanvas canvas(AREA);
        canvas.FillRect(WHOLE, {1, 2, 3});
        view.Paint(canvas, part);
        int wrong = 0;
        for (int y = 0; y < AREA.height; ++y) {
          for (int x = 0; x < AREA.width; ++x) {
            const bool in = x >= part.left && x < part.right && y >= part.top && y < part.bottom;
            wrong += canvas.At(x, y) != (in ? whole.At(x, y) : Colour{1, 2, 3});
          }
        }
        EXPECT_EQ(wrong, 0) << "scale " << scale << ", part " << i;
      }
    }
  }
}

TEST_F(MapViewPaintTest, FarAwayGeometryAtTheHighestZoomIsHarmless) {
  for (const float edge : {8000.0f, 17000.0f}) {
    small.AddCuboid({-edge, -edge, -edge}, {edge, edge, edge});
  }
  small.Add({{"classname", "light"}, {"origin", "32767 -32768 1e30"}, {"angle", "-32768"}});
  SoftwareCanvas canvas(AREA);
  for (const float scale : {0.015625f, 1.0f, 32768.0f}) {
    Place(scale, 8000, -8000);
    view.Paint(canvas, WHOLE);
    view.Paint(canvas, {});
  }
  Place(0.015625f, 7999, -7999);
  view.Paint(canvas, WHOLE);
  EXPECT_EQ(canvas.At(64, 20), small.map.currentLayer()->getEntityList()[0]->brush.Outline());
}

}  // namespace
}  // namespace ferrowand
