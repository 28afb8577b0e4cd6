#include "views/entity_drawing.h"

#include <gtest/gtest.h>

#include "document/classes/native_classes.h"
#include "document/transform.h"
#include "support/canvas_recorder.h"
#include "support/cases.h"
#include "support/small_map.h"

namespace ferrowand {
namespace {

using Kind = CanvasRecorder::Kind;

constexpr Pen BRUSH_ENTITY{{1, 1, 1}}, SELECTED{{2, 2, 2}}, SELECTED_BOX{{3, 3, 3}}, DOT{{4, 4, 4}},
    LIGHT{{5, 5, 5}}, ARROW{{6, 6, 6}}, ARROW_HEAD{{7, 7, 7}}, CALLERS{{8, 8, 8}, 3};
constexpr Pen LAMP{{0, 255, 0}};  // the class pen of Lamp()

constexpr ViewTransform TOP{0, 1, 0, 0, 1, -1};
constexpr ViewTransform FRONT{0, 2, 0, 0, 1, -1};
constexpr ViewTransform SIDE{1, 2, 0, 0, 1, -1};

class EntityDrawingTest : public testing::Test {
 protected:
  // A class with a box of 16 units and a colour, as a QuakeC file would give it.
  EntityClass& Lamp() {
    lamp.green = 1;
    return lamp;
  }
  entity& AddLamp(SmallMap::Keys keys) {
    entity& e = small.Add(keys);
    e.SetClass(&Lamp());
    return e;
  }
  // A group of the class above with one cube in it.
  entity& AddDoor(std::uint8_t state) {
    entity& door = AddLamp({{"classname", "func_door"}});
    small.AddCuboid({0, 0, 0}, {64, 64, 64}, &door);
    door.state = state;
    return door;
  }

  CanvasRecorder& Draw(const entity* root = nullptr) {
    canvas.calls.clear();
    DrawContext context = Context();
    DrawTree(small.map, context, root);
    return canvas;
  }
  CanvasRecorder& Outline(const entity& e) {
    canvas.calls.clear();
    DrawContext context = Context();
    DrawOutline(e, context);
    return canvas;
  }
  DrawContext Context() {
    DrawContext context{.canvas = canvas,
                        .transform = transform,
                        .pens = pens,
                        .flags = flags,
                        .visible = {-1000, -1000, 1000, 1000},
                        .pen = CALLERS};
    context.centreDots = centreDots;
    context.heightlo = 0;
    context.heighthi = 100;
    return context;
  }
  // The pen of the only brush.
  Pen BrushPen() {
    const auto lines = Draw().Of(Kind::Lines);
    EXPECT_EQ(lines.size(), 1u);
    return lines.empty() ? Pen{} : lines[0].pen;
  }

  SmallMap small;
  EntityClass lamp{*small.map.classSet};
  DrawPens pens{.entity = BRUSH_ENTITY,
                .brushOutline = SELECTED,
                .boxOutline = SELECTED_BOX,
                .centreDot = DOT,
                .light = LIGHT,
                .targetLine = ARROW,
                .targetHead = ARROW_HEAD};
  ViewTransform transform = TOP;
  unsigned flags = 0;
  bool centreDots = false;
  CanvasRecorder canvas;
};

TEST_F(EntityDrawingTest, AnEdgeThatFacesShareOrHideIsDrawnOnce) {
  small.AddCuboid({0, 0, 0}, {64, 32, 16});
  const std::vector<PixelLine> square{
      {{0, -32}, {0, 0}}, {{0, -32}, {64, -32}}, {{0, 0}, {64, 0}}, {{64, -32}, {64, 0}}};
  const auto calls = Draw().Of(Kind::Lines);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].lines, square);

  // So far away that it is one pixel: that pixel.
  transform.scaleu = 1024;
  transform.scalev = -1024;
  EXPECT_EQ(Draw().Of(Kind::Lines).at(0).lines, (std::vector<PixelLine>{{{0, 0}, {0, 0}}}));
}

TEST_F(EntityDrawingTest, APlainBrushHasItsOwnColourAndAGroupLendsItsPenToItsMembers) {
  entity& plain = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  EXPECT_EQ(BrushPen(), Pen{plain.brush.Outline()});
  flags = DRAW_KEEP_PEN;
  EXPECT_EQ(BrushPen(), CALLERS);
  flags = DRAW_LAYER_COLOUR;
  small.map.InsertChild(small.map.currentLayer()->TakeChild(0), 1);  // behind the layer
  EXPECT_EQ(BrushPen(), Pen{plain.brush.Outline()});
  flags = 0;
  small.map.TakeChild(1);
  entity& door = AddDoor(1);
  EXPECT_EQ(BrushPen(), BRUSH_ENTITY);
  door.state = 0;
  EXPECT_EQ(BrushPen(), Pen{door.getEntityList()[0]->brush.Outline()});
}

TEST_F(EntityDrawingTest, TheMapModesChooseThePenOfEveryBrush) {
  Texture texture;
  texture.wad = &small.data.wads.Default();
  texture.colour = {9, 99, 199};
  texture.colourIs = OneColour::Average;
  small.map.currentLayer()->SetKey("XMPcolourr", "0.5");
  small.map.currentLayer()->SetKey("XMPcolourg", "7");
  small.map.currentLayer()->SetKey("XMPcolourb", "none");
  entity& door = AddDoor(1);
  door.getEntityList()[0]->brush.face(0).texture = &texture;

  flags = DRAW_HEIGHTS;  // the middle at 32 of 0 .. 100
  EXPECT_EQ(BrushPen(), (Pen{{0, 0, 81}}));
  TranslateEntity(door, {0, 0, -500});  // beyond either end, the shade of that
  EXPECT_EQ(BrushPen(), (Pen{{0, 0, 0}}));
  TranslateEntity(door, {0, 0, 1000});
  EXPECT_EQ(BrushPen(), (Pen{{0, 0, 255}}));
  flags = DRAW_LAYER_COLOUR;
  EXPECT_EQ(BrushPen(), (Pen{{128, 255, 0}}));
  flags = DRAW_1X1MIPMAP | DRAW_HEIGHTS;
  EXPECT_EQ(BrushPen(), (Pen{{9, 99, 199}, 2}));
  flags = DRAW_1X1MIPMAP | DRAW_KEEP_PEN;
  EXPECT_EQ(BrushPen(), CALLERS);
}

TEST_F(EntityDrawingTest, ACentreDotStandsInTheMiddleOfABrush) {
  small.AddCuboid({0, 0, 0}, {64, 32, 16});
  EXPECT_TRUE(Draw().Of(Kind::Ellipse).empty());
  centreDots = true;
  const auto dots = Draw().Of(Kind::Ellipse);
  ASSERT_EQ(dots.size(), 1u);
  EXPECT_EQ(dots[0].pen, DOT);
  EXPECT_EQ(dots[0].rect, (PixelRect{30, -18, 35, -13}));
}

TEST_F(EntityDrawingTest, APointEntityHasTheBoxOfItsClassUnlessThatHasNone) {
  AddLamp({{"origin", "100 50 0"}});
  auto boxes = Draw().Of(Kind::Rectangle);
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].rect, (PixelRect{92, -58, 109, -41}));
  EXPECT_EQ(boxes[0].pen, LAMP);
  EXPECT_FALSE(boxes[0].fill);

  lamp.minx = 32000;
  EXPECT_TRUE(Draw().Of(Kind::Rectangle).empty());
}

// The marker as a word: which way the tip points on the screen, or the shape of a look along depth.
std::string Marker(const CanvasRecorder& canvas) {
  const auto triangles = canvas.Of(Kind::Polygon);
  if (triangles.size() == 1 && triangles[0].points.size() == 3 && triangles[0].fill) {
    const Pixel tip = triangles[0].points[1];
    return std::to_string(tip.x) + "," + std::to_string(tip.y);
  }
  if (canvas.Of(Kind::Ellipse).size() == 1) return "circle";
  const auto lines = canvas.LinesIn(LAMP);
  return lines.size() == 2 ? "cross" : lines.empty() ? "none" : "lines";
}

TEST_F(EntityDrawingTest, TheMarkerShowsWhereAnEntityLooks) {
  // Level looks point backwards in the front and side views. That is meant.
  const Cases<const char*, const char*, const char*, const char*> cases{
      {"0", "16,0", "-16,0", "circle"},   {"90", "0,-16", "circle", "-16,0"},
      {"180", "-16,0", "16,0", "cross"},  {"270", "0,16", "cross", "16,0"},
      {"45", "11,-11", "-16,0", "-16,0"}, {"-1", "circle", "0,-16", "0,-16"},
      {"-2", "cross", "0,16", "0,16"},    {"450", "0,-16", "circle", "-16,0"},
  };
  for (const auto& [angle, top, front, side] : cases) {
    AddLamp({{"origin", "0 0 0"}, {"angle", angle}});
    transform = TOP;
    EXPECT_EQ(Marker(Draw()), top) << angle;
    transform = FRONT;
    EXPECT_EQ(Marker(Draw()), front) << angle;
    transform = SIDE;
    EXPECT_EQ(Marker(Draw()), side) << angle;
    small.map.currentLayer()->TakeChildren();
  }
  AddLamp({{"origin", "0 0 0"}});
  EXPECT_EQ(Marker(Draw()), "none");
  AddLamp({{"origin", "0 0 0"}, {"angle", "90"}});
  transform = TOP;
  EXPECT_EQ(Draw().Of(Kind::Polygon).at(0).points, (std::vector<Pixel>{{8, 0}, {0, -16}, {-8, 0}}));
}

TEST_F(EntityDrawingTest, AClassnameStandsEightPixelsAboveTheOrigin) {
  AddLamp({{"classname", "lamp"}, {"origin", "100 0 0"}}).SetClass(&Lamp());
  EXPECT_TRUE(Draw().Of(Kind::Text).empty());
  flags = DRAW_CLASSNAMES;
  auto texts = Draw().Of(Kind::Text);
  ASSERT_EQ(texts.size(), 1u);  // 28 x 12 pixels
  EXPECT_EQ(texts[0].text, "lamp");
  EXPECT_EQ(texts[0].rect, (PixelRect{86, -20, 86, -20}));
  EXPECT_EQ(texts[0].fill, (Colour{0, 0, 0}));
  flags |= DRAW_WHITE_TEXT;
  EXPECT_EQ(Draw().Of(Kind::Text).at(0).fill, (Colour{255, 255, 255}));
}

TEST_F(EntityDrawingTest, ANameWaitsOnlyWhereItWouldCoverOneThatIsDrawn) {
  flags = DRAW_CLASSNAMES;
  for (const char* origin : {"0 0 0", "27 0 0", "28 0 0", "0 -11 0", "40 -12 0", "-5000 0 0"}) {
    AddLamp({{"classname", "lamp"}, {"origin", origin}}).SetClass(&Lamp());  // 28 x 12 pixels
  }
  std::vector<int> drawn;
  for (const auto& call : Draw().Of(Kind::Text)) drawn.push_back(call.rect.left + 14);
  EXPECT_EQ(drawn, (std::vector<int>{0, 28, 40}));
}

TEST_F(EntityDrawingTest, ALightHasItsRadiusWhenBothTheViewAndTheEntityWantIt) {
  // The diameter in pixels, 0 for none; two units a pixel.
  const Cases<unsigned, const char*, const char*, int> cases{
      {DRAW_LIGHT_RADIUS, "2", nullptr, 301},
      {DRAW_LIGHT_RADIUS, "2", "100", 101},
      {DRAW_LIGHT_RADIUS, "2", "-100", 101},
      {DRAW_LIGHT_RADIUS, "1", nullptr, 0},
      {DRAW_LIGHT_RADIUS, "2", "-99999999999", 100001},
      {0, "2", nullptr, 0}};
  transform.scaleu = 2;
  transform.scalev = -2;
  for (const auto& [drawFlags, entityFlags, light, diameter] : cases) {
    entity& e = AddLamp({{"origin", "0 0 0"}, {"XMPferroflags", entityFlags}});
    if (light) e.SetKey("light", light);
    flags = drawFlags;
    const auto circles = Draw().Of(Kind::Ellipse);
    EXPECT_EQ(circles.empty() ? 0 : circles[0].rect.Width(), diameter);
    EXPECT_TRUE(circles.empty() || circles[0].pen == LIGHT);
    small.map.currentLayer()->TakeChildren();
  }
}

TEST_F(EntityDrawingTest, AnArrowHeadOpensTowardsTheSource) {
  // The target's origin, the source being at 0 0 0, and the ends of the strokes.
  // 10 pixels at 15 degrees: 9.66 and 2.59. At 45 degrees more: 5 and 8.66.
  const Cases<const char*, Pixel, Pixel> cases{
      {"100 0 0", {90, -3}, {90, 3}},          // to the right: back along 180
      {"-100 0 0", {-90, 3}, {-90, -3}},       // 0
      {"0 -100 0", {3, 90}, {-3, 90}},         // straight below on the screen: 270
      {"0 100 0", {-3, -90}, {3, -90}},        // 90
      {"100 -100 0", {95, 91}, {91, 95}},      // 225
      {"-100 100 0", {-95, -91}, {-91, -95}},  // 45
      {"-100 -100 0", {-91, 95}, {-95, 91}},   // 315
      {"0 0 50", {-3, 10}, {3, 10}},           // behind it: 90
  };
  flags = DRAW_TARGETS;
  AddLamp({{"origin", "0 0 0"}, {"target", "t"}});
  for (const auto& [origin, left, right] : cases) {
    entity& target = AddLamp({{"origin", origin}, {"targetname", "t"}});
    const Pixel at = transform.ToScreen(target.Origin());
    Draw();
    EXPECT_EQ(canvas.LinesIn(ARROW), (std::vector<PixelLine>{{{0, 0}, at}})) << origin;
    EXPECT_EQ(canvas.LinesIn(ARROW_HEAD), (std::vector<PixelLine>{{at, left}, {at, right}}))
        << origin;
    small.map.currentLayer()->TakeChild(small.map.currentLayer()->IndexOf(target));
  }
}

TEST_F(EntityDrawingTest, AnArrowLeadsToEveryEntityOfTheNameInMapOrder) {
  entity& source = AddLamp({{"origin", "10 0 0"}, {"target", "both"}});
  AddLamp({{"origin", "20 0 0"}, {"targetname", "both"}});
  AddLamp({{"origin", "30 0 0"}, {"targetname", "Both"}});  // another name
  entity& door = AddDoor(1);                                // no origin: its middle
  door.SetKey("targetname", "both");
  AddLamp({{"targetname", "both"}});  // nowhere
  AddLamp({{"origin", "40 0 0"}, {"target", "nobody"}, {"XMPferroflags", "1"}});

  EXPECT_TRUE(Draw().LinesIn(ARROW).empty());
  source.SetFlags(ENTITY_DRAWS_TARGETS);
  const std::vector<PixelLine> arrows{{{10, 0}, {20, 0}}, {{10, 0}, {32, -32}}};
  EXPECT_EQ(Draw().LinesIn(ARROW), arrows);
  source.SetFlags(0);
  flags = DRAW_TARGETS;
  EXPECT_EQ(Draw().LinesIn(ARROW), arrows);
}

TEST_F(EntityDrawingTest, ARootLimitsTheDrawingToWhatLiesBelowIt) {
  small.AddCuboid({0, 0, 0}, {64, 64, 64});
  entity& door = AddDoor(1);
  AddLamp({{"origin", "0 0 0"}});
  EXPECT_EQ(Draw(&door).calls.size(), 1u);
  EXPECT_EQ(canvas.calls[0].pen, BRUSH_ENTITY);
  EXPECT_EQ(Draw(door.getEntityList()[0].get()).calls.size(), 1u);
  EXPECT_EQ(Draw(small.map.currentLayer()).calls.size(), 3u);
}

TEST_F(EntityDrawingTest, AnOutlineShowsBoxesMarkersAndAGroupsBrushesAndNoWords) {
  flags = DRAW_CLASSNAMES | DRAW_LIGHT_RADIUS | DRAW_TARGETS;
  entity& e = AddLamp({{"classname", "lamp"},
                       {"origin", "0 0 0"},
                       {"angle", "0"},
                       {"XMPferroflags", "3"},
                       {"target", "t"},
                       {"targetname", "t"}});
  e.SetClass(&Lamp());
  Outline(e);
  ASSERT_EQ(canvas.calls.size(), 2u);
  EXPECT_EQ(canvas.calls[0].kind, Kind::Rectangle);
  EXPECT_EQ(canvas.calls[0].pen, SELECTED_BOX);
  EXPECT_EQ(canvas.calls[1].kind, Kind::Polygon);
  EXPECT_EQ(canvas.calls[1].pen, SELECTED_BOX);

  entity& door = AddDoor(1);
  EXPECT_EQ(Outline(door).LinesIn(SELECTED).size(), 4u);
  door.state = 0;
  EXPECT_TRUE(Outline(door).calls.empty());
}

TEST_F(EntityDrawingTest, AnEmbeddedMapIsARedBoxAndNothingBelowIt) {
  entity& embed = small.Add({{"classname", "embed"}, {"origin", "0 0 0"}, {"XMPmaxx", "100"}});
  small.AddCuboid({0, 0, 0}, {64, 64, 64}, &embed);
  Draw();
  ASSERT_EQ(canvas.calls.size(), 1u);
  EXPECT_EQ(canvas.calls[0].kind, Kind::Rectangle);
  EXPECT_EQ(canvas.calls[0].pen, (Pen{{200, 0, 0}}));
  EXPECT_EQ(canvas.calls[0].rect, (PixelRect{-16, -16, 101, 17}));
  EXPECT_EQ(Outline(embed).Of(Kind::Rectangle).at(0).pen, SELECTED_BOX);
}

TEST_F(EntityDrawingTest, ATemplateInstanceShowsItsTemplateOnDemand) {
  entity& original = small.Add({{"classname", "templateClass"}, {"XMPentityname", "crate"}});
  small.AddCuboid({0, 0, 0}, {8, 8, 8}, &original);
  // An instance of the template within it must not be the end of the program.
  small.Add({{"classname", "templateInstance"}, {"XMPclass", "crate"}, {"origin", "1 1 1"}},
            &original);
  entity& instance =
      small.Add({{"classname", "templateInstance"}, {"XMPclass", "crate"}, {"origin", "100 0 0"}});
  EXPECT_TRUE(Draw().Of(Kind::Lines).empty());
  flags = DRAW_TEMPLATES;
  const std::vector<PixelLine> square{
      {{100, -8}, {100, 0}}, {{100, -8}, {108, -8}}, {{100, 0}, {108, 0}}, {{108, -8}, {108, 0}}};
  EXPECT_EQ(Draw().LinesIn(BRUSH_ENTITY), square);
  EXPECT_EQ(Outline(instance).LinesIn(SELECTED), square);
  original.brush = small.AddCuboid({0, 0, 0}, {4, 4, 4}, &instance).brush.Copy();
  instance.TakeChild(0);
  original.Touch();
  EXPECT_EQ(Draw().LinesIn(BRUSH_ENTITY).size(), 8u) << "and its own brush";
}

}  // namespace
}  // namespace ferrowand
