#include "views/map_view.h"

#include "support/cases.h"
#include "views/tool.h"
#include "views/view_fixture.h"

namespace ferrowand {
namespace {

// Writes down what it receives.
class ToolRecorder : public Tool {
 public:
  std::string Name() const override { return "recorder"; }
  void MouseDown(MapView&, Pixel at, int button) override { Add("down", at, button); }
  void MouseMove(MapView&, Pixel at, int buttons) override { Add("move", at, buttons); }
  void MouseUp(MapView&, Pixel at, int button) override { Add("up", at, button); }
  void DoubleClick(MapView&, Pixel at, int button) override { Add("double", at, button); }
  void Activate(MapView&) override { log += "activate;"; }
  bool Key(MapView&, char c) override { return log += Format("key %c;", c), false; }

  std::string log;

 private:
  void Add(const char* what, Pixel at, int button) {
    log += Format("%s %i %i %i;", what, at.x, at.y, button);
  }
};

class MapViewTest : public ViewTest {
 protected:
  MapViewTest() { tool = &recorder; }

  ToolRecorder recorder;
  FakeViewHost otherHost;
  MapView other{small.map, otherHost, list, options, tool};
};

TEST_F(MapViewTest, ANewTopViewHasAGridOf64AndAQuarterZoom) {
  view.SetOrientation(Orientation::Top);
  EXPECT_EQ(host.texts[ViewText::ZoomAndGrid], "(64x64)S25%");
  view.ToggleSnap();
  EXPECT_EQ(host.texts[ViewText::ZoomAndGrid], "(64x64) 25%");
  view.ToggleGrid();
  EXPECT_EQ(host.texts[ViewText::ZoomAndGrid], " 25%");
  view.gridv = 12;
  view.ToggleGridAndSnap();
  EXPECT_EQ(host.texts[ViewText::ZoomAndGrid], "(64x4096)S25%");
}

TEST_F(MapViewTest, AnOrientationSetsAxesCaptionAndWhatMayBeEdited) {
  const Cases<Orientation, int, int, unsigned, const char*> cases{
      {Orientation::Side, 1, 2, 6, "YZView (Side): The Slipgate"},
      {Orientation::Front, 0, 2, 5, "XZView (Front): The Slipgate"},
      {Orientation::Top, 0, 1, 3, "XYView (Top): The Slipgate"}};
  small.map.SetKey("message", "The Slipgate");
  for (const auto& [orientation, u, v, mask, caption] : cases) {
    view.SetOrientation(orientation);
    EXPECT_EQ(view.transform.orienu, u);
    EXPECT_EQ(view.transform.orienv, v);
    EXPECT_EQ(view.axismask, mask);
    EXPECT_EQ(host.caption, caption);
    EXPECT_LT(view.transform.scalev, 0);
  }
  view.transform.orienv = 0;
  EXPECT_EQ(view.Caption(), "XXView (Invalid - possible error!): The Slipgate");
  EXPECT_EQ(other.Caption(), "XYView (Top): The Slipgate");
}

TEST_F(MapViewTest, SnappingRoundsHalfUpAtEverySpacingAndBelowZeroToo) {
  const Cases<std::uint8_t, int, int> cases{{6, 31, 0},         {6, 32, 64},    {6, -32, 0},
                                            {6, -33, -64},      {1, -1, 0},     {1, 1, 2},
                                            {11, 1024, 2048},   {11, 1023, 0},  {12, 2048, 4096},
                                            {12, -2049, -4096}, {12, -2048, 0}, {12, 6143, 4096}};
  for (const auto& [exponent, value, snapped] : cases) {
    view.gridu = exponent;
    view.gridv = 6;
    EXPECT_EQ(view.SnapU(value), snapped) << int{exponent} << ": " << value;
    std::swap(view.gridu, view.gridv);
    EXPECT_EQ(view.SnapV(value), snapped) << int{exponent} << ": " << value;
  }
}

TEST_F(MapViewTest, TheGridGrowsOnBothAxesOrNotAtAllAndShrinksOnEach) {
  SmallMap foreign;
  FakeViewHost foreignHost;
  MapView elsewhere(foreign.map, foreignHost, list, options, tool);
  const auto grid = [](const MapView& of) { return Pixel{of.gridu, of.gridv}; };
  view.gridu = 11;
  view.gridv = 12;
  view.GridLarger(false);
  EXPECT_EQ(grid(view), (Pixel{11, 12}));
  view.gridu = 1;
  view.GridSmaller(false);
  EXPECT_EQ(grid(view), (Pixel{1, 11}));
  EXPECT_EQ(grid(other), (Pixel{6, 6}));
  EXPECT_EQ(otherHost.invalidations, 0);
  // With Shift it is that of every view of the map.
  EXPECT_TRUE(view.OnCharacter('z', true));
  EXPECT_EQ(grid(other), (Pixel{2, 12}));
  EXPECT_EQ(otherHost.texts[ViewText::ZoomAndGrid], "(4x4096)S25%");
  EXPECT_GT(otherHost.invalidations, 0);
  EXPECT_EQ(grid(elsewhere), (Pixel{6, 6}));
}

TEST_F(MapViewTest, TheKeysOfAViewAndThoseOfTheTool) {
  host.area = {100, 100};
  const auto type = [&](const std::string& keys) {
    for (const char c : keys) EXPECT_TRUE(view.OnCharacter(c, false)) << c;
  };
  type("+=sS");
  EXPECT_EQ(view.ZoomPercent(), 400);
  type("-_xX");
  EXPECT_EQ(view.ZoomPercent(), 25);
  type("]}.>zZ");
  EXPECT_EQ(view.gridu, 12);
  type("[{,<aA");
  EXPECT_EQ(view.gridu, 6);
  type("g");
  EXPECT_EQ(small.map.optionBits(), 0);
  type("G");
  EXPECT_EQ(small.map.optionBits(), MAP_GRID);
  EXPECT_FALSE(view.OnCharacter('q', false));
  EXPECT_EQ(recorder.log, "key q;") << "the tool's are those that the view leaves";
}

TEST_F(MapViewTest, SomethingNewGoesUnderTheCursorOnTheGridAsDeepAsTheSelection) {
  view.SetOrientation(Orientation::Top);
  Place(4, -800, 600);
  EXPECT_EQ(view.PlaceForNew(), Vec3(0, 0, 0));
  view.OnMouseMove({110, 140}, 0, false);
  EXPECT_EQ(view.PlaceForNew(), Vec3(-384, 64, 0));
  small.map.selection.Set({&small.AddCuboid({0, 0, 100}, {64, 64, 200})});
  small.map.SetOptionBits(MAP_GRID);
  EXPECT_EQ(view.PlaceForNew(), Vec3(-360, 40, 150));
  view.OnMouseLeave();
  EXPECT_EQ(view.PlaceForNew(), Vec3(0, 0, 150));
}

TEST_F(MapViewTest, AStatusGoesToAViewOfTheMapThatCanShowIt) {
  SmallMap foreign;
  FakeViewHost foreignHost;
  MapView elsewhere(foreign.map, foreignHost, list, options, tool);
  elsewhere.OnActivate();  // in front of the list

  view.SetStatus("here");
  EXPECT_EQ(host.texts[ViewText::Message], "here");
  host.statusBar = false;
  view.SetStatus("there");
  EXPECT_EQ(host.texts[ViewText::Message], "here");
  EXPECT_EQ(otherHost.texts[ViewText::Message], "there");
  EXPECT_EQ(foreignHost.texts.count(ViewText::Message), 0u);
  otherHost.statusBar = false;
  view.SetStatus("nowhere");
  EXPECT_EQ(otherHost.texts[ViewText::Message], "there");

  otherHost.statusBar = true;
  small.map.ShowStatus("from the document");
  EXPECT_EQ(otherHost.texts[ViewText::Message], "from the document");
}

TEST_F(MapViewTest, TheMouseIsTheToolsButForPressesThatZoomAndTheirReleases) {
  for (int round = 0; round < 2; ++round) {
    view.OnMouseDown({10, 20}, BUTTON_LEFT, false, false);
    view.OnMouseMove({11, 20}, 1, false);
    view.OnMouseDown({10, 20}, BUTTON_RIGHT, true, false);
    EXPECT_EQ(view.ZoomPercent(), 50);
    view.OnMouseUp({12, 20}, BUTTON_RIGHT);
    view.OnMouseUp({12, 20}, BUTTON_LEFT);
    view.OnDoubleClick({12, 20}, BUTTON_RIGHT);
    view.OnActivate();
    view.OnMouseDown({10, 20}, BUTTON_LEFT, true, true);
    EXPECT_EQ(view.ZoomPercent(), 25);
    // The release has got lost: it hides no later one.
    view.OnMouseDown({9, 9}, BUTTON_LEFT, false, false);
    view.OnMouseUp({9, 9}, BUTTON_LEFT);
    tool = nullptr;  // and none to receive it
  }
  EXPECT_EQ(recorder.log,
            "down 10 20 1;move 11 20 1;up 12 20 1;double 12 20 2;activate;down 9 9 1;up 9 9 1;");
  EXPECT_EQ(host.texts[ViewText::Coordinates], "44x-80");
}

TEST_F(MapViewTest, TheViewActivatedLastIsTheFirst) {
  EXPECT_EQ(list.Views(), (std::vector<MapView*>{&view, &other}));
  other.OnActivate();
  EXPECT_EQ(list.Views(), (std::vector<MapView*>{&other, &view}));
  {
    FakeViewHost third;
    MapView passing(small.map, third, list, options, tool);
    passing.OnActivate();
  }
  EXPECT_EQ(list.ViewsOf(small.map), (std::vector<MapView*>{&other, &view}));
}

TEST_F(MapViewTest, EachOrientationHasItsPlaceInEveryArrangement) {
  // In a frame of 1001 x 500: halves of 500 and 250, thirds of 166.
  const Cases<Arrangement, Orientation, PixelRect> cases{
      {Arrangement::Quarters, Orientation::Top, {0, 0, 500, 250}},
      {Arrangement::Quarters, Orientation::Front, {0, 250, 500, 500}},
      {Arrangement::Quarters, Orientation::Side, {500, 0, 1000, 250}},
      {Arrangement::XYLarge, Orientation::Top, {0, 0, 500, 500}},
      {Arrangement::XYLarge, Orientation::Front, {500, 166, 1000, 332}},
      {Arrangement::XYLarge, Orientation::Side, {500, 0, 1000, 166}},
      {Arrangement::ThreeDLarge, Orientation::Top, {500, 0, 1000, 166}},
      {Arrangement::ThreeDLarge, Orientation::Front, {500, 333, 1000, 499}},
      {Arrangement::ThreeDLarge, Orientation::Side, {500, 166, 1000, 332}},
  };
  for (const auto& [arrangement, orientation, place] : cases) {
    view.SetOrientation(orientation);
    EXPECT_EQ(view.ArrangedPlace(arrangement, {1001, 500}), place);
  }
}

}  // namespace
}  // namespace ferrowand
