#include <gtest/gtest.h>

#include "support/fake_view_host.h"
#include "support/small_map.h"
#include "views/map_view.h"

namespace ferrowand {
namespace {

class MapViewZoomTest : public testing::Test {
 protected:
  void Place(float scale, std::int16_t u, std::int16_t v) {
    view.transform.scaleu = scale;
    view.transform.scalev = -scale;
    view.transform.originu = u;
    view.transform.originv = v;
  }
  Pixel Origin() const { return {view.transform.originu, view.transform.originv}; }

  SmallMap small;
  Options options;
  Tool* tool = nullptr;
  ViewList list;
  FakeViewHost host{{400, 300}};
  MapView view{small.map, host, list, options, tool};
};

TEST_F(MapViewZoomTest, ZoomingKeepsTheMiddleAndComesBackExactly) {
  Place(4, 100, 200);
  view.ZoomIn();
  EXPECT_EQ(view.transform.scaleu, 2);
  EXPECT_EQ(view.transform.scalev, -2);
  EXPECT_EQ(Origin(), (Pixel{500, -100}));  // the middle stays at 900, -400
  view.ZoomOut();
  EXPECT_EQ(Origin(), (Pixel{100, 200}));

  host.area = {333, 77};  // odd middles at fractional scales
  Place(0.25f, -7, 13);
  for (int i = 0; i < 3; ++i) view.ZoomIn();
  for (int i = 0; i < 3; ++i) view.ZoomOut();
  EXPECT_EQ(Origin(), (Pixel{-7, 13}));
}

TEST_F(MapViewZoomTest, ZoomingInStopsAt6400Percent) {
  for (int i = 0; i < 20; ++i) view.ZoomIn();
  EXPECT_EQ(view.ZoomPercent(), 6400);
  const Pixel origin = Origin();
  view.ZoomAt({10, 10}, false);
  EXPECT_EQ(view.ZoomPercent(), 6400);
  EXPECT_EQ(Origin(), origin);

  // Each axis for itself.
  view.transform.scaleu = 1;
  view.ZoomIn();
  EXPECT_EQ(view.transform.scaleu, 0.5f);
  EXPECT_EQ(view.transform.scalev, -0.015625f);
}

TEST_F(MapViewZoomTest, ZoomingOutStopsBefore10000UnitsOnEitherAxis) {
  for (int i = 0; i < 20; ++i) view.ZoomOut();
  EXPECT_EQ(view.transform.scaleu, 16);  // 6400 units; the next would be 12800
  host.area = {100, 625};                // 16 x 625 is exactly 10000: not below
  Place(8, 0, 0);
  view.ZoomOut();
  EXPECT_EQ(view.transform.scaleu, 8);
  view.ZoomAt({0, 0}, true);
  EXPECT_EQ(view.transform.scaleu, 8);
  host.area = {100, 624};
  view.ZoomOut();
  EXPECT_EQ(view.transform.scaleu, 16);
}

TEST_F(MapViewZoomTest, ZoomingAtAPixelKeepsWhatIsThere) {
  Place(4, 0, 0);
  for (const bool out : {false, true}) {
    const int u = view.transform.ToWorldU(100), v = view.transform.ToWorldV(50);
    view.ZoomAt({100, 50}, out);
    EXPECT_EQ(view.transform.scaleu, out ? 4 : 2);
    EXPECT_EQ(view.transform.ToWorldU(100), u);
    EXPECT_EQ(view.transform.ToWorldV(50), v);
  }
}

TEST_F(MapViewZoomTest, CentringPutsThePointIntoTheMiddle) {
  Place(4, 0, 0);
  view.CentreOn({100.9f, -50, 7});
  EXPECT_EQ(Origin(), (Pixel{100 - 800, -50 + 600}));
  host.area = {3, 5};
  Place(1, 0, 0);
  view.CentreOn({0, 0, 0});
  EXPECT_EQ(Origin(), (Pixel{-1, 2}));  // halves are rounded towards 0
  view.CentreOn({30000, -30000, 0});
  EXPECT_EQ(Origin(), (Pixel{10000, -10000}));
}

TEST_F(MapViewZoomTest, ZoomingToABoxTakesTheLargerScaleOfTheTwo) {
  struct Case {
    Bounds box;
    float scale;
    Pixel origin;
  };
  // 380 x 280 pixels are there to be used.
  const Case cases[] = {{{{0, 0, 0}, {380, 100, 1}}, 1, {190 - 200, 50 + 150}},
                        {{{0, 0, 0}, {381, 100, 1}}, 2, {190 - 400, 50 + 300}},
                        {{{0, 0, 0}, {10, 560, 1}}, 2, {5 - 400, 280 + 300}},
                        {{{0, 0, 0}, {1, 1, 1}}, 0.0625f, {0 - 12, 0 + 9}}};
  for (const Case& c : cases) {
    Place(4, 0, 0);
    view.ZoomTo(c.box);
    EXPECT_EQ(view.transform.scaleu, c.scale);
    EXPECT_EQ(view.transform.scalev, -c.scale);
    EXPECT_EQ(Origin(), c.origin);
  }
  EXPECT_EQ(host.texts[ViewText::ZoomAndGrid], "(64x64)S1600%");
}

TEST_F(MapViewZoomTest, AFlatOrEmptyBoxIsNotZoomedTo) {
  Place(4, 5, 6);
  view.ZoomTo({});
  view.ZoomTo({{0, 0, 7}, {100, 100, 7}});
  view.ZoomTo({{0, NAN, 0}, {100, 100, 7}});
  EXPECT_EQ(Origin(), (Pixel{5, 6}));
  EXPECT_EQ(host.invalidations, 0);

  host.area = {5, 0};  // smaller than the border
  view.ZoomTo({{-10000, -10000, -10000}, {10000, 10000, 10000}});
  EXPECT_EQ(view.transform.scaleu, 32768);
}

TEST_F(MapViewZoomTest, TheScrollBarsShowWhereTheViewIs) {
  Place(4, -1500, 2500);
  view.Refresh();
  EXPECT_EQ(host.horizontal, (ScrollBar{1600, 8500}));
  EXPECT_EQ(host.vertical, (ScrollBar{1200, 7500}));
  view.ScrollToThumb(false, 20000);
  view.ScrollToThumb(true, 20000);
  EXPECT_EQ(Origin(), (Pixel{10000, -10000}));
  EXPECT_EQ(host.horizontal.position, 20000);
  EXPECT_EQ(host.vertical.position, 20000);
}

TEST_F(MapViewZoomTest, ScrollingMovesThePictureByWholePixels) {
  Place(4, 0, 0);
  view.ScrollLines(false, 1);
  EXPECT_EQ(Origin(), (Pixel{40, 0}));
  view.ScrollLines(true, 2);
  EXPECT_EQ(Origin(), (Pixel{40, -80}));
  view.ScrollPages(true, -1);
  EXPECT_EQ(Origin(), (Pixel{40, 320}));
  EXPECT_EQ(host.scrolled, (std::vector<Pixel>{{-10, 0}, {0, -20}, {0, 100}}));
  EXPECT_EQ(host.invalidations, 0);
  // A thumb between the pixels: the picture is drawn anew.
  view.ScrollToThumb(false, 10041);
  EXPECT_EQ(Origin(), (Pixel{41, 320}));
  EXPECT_EQ(host.invalidations, 1);
}

TEST_F(MapViewZoomTest, ScrollingEndsAtTheLimitsOfTheWorld) {
  Place(16, 9900, -9984);
  view.ScrollPages(false, 3);
  EXPECT_EQ(view.transform.originu, 10000);
  view.ScrollLines(true, 5);
  EXPECT_EQ(view.transform.originv, -10000);
  EXPECT_EQ(host.scrolled.back(), (Pixel{0, -1}));
  view.ScrollBy(-100000, 100000);
  EXPECT_EQ(Origin(), (Pixel{-10000, 10000}));
  const std::size_t steps = host.scrolled.size();
  view.ScrollPages(false, -1);  // nothing left to scroll
  EXPECT_EQ(host.scrolled.size(), steps);
}

TEST_F(MapViewZoomTest, AtTheHighestZoomALineIsOneUnit) {
  Place(0.015625f, 0, 0);
  view.ScrollLines(false, 1);
  view.ScrollLines(true, 1);
  EXPECT_EQ(Origin(), (Pixel{1, -1}));
  EXPECT_EQ(host.scrolled, (std::vector<Pixel>{{-64, 0}, {0, -64}}));
}

TEST_F(MapViewZoomTest, PanningDragsTheMapWithTheCursor) {
  Place(4, 0, 0);
  view.OnMouseMove({100, 100}, 0, true);
  EXPECT_EQ(Origin(), (Pixel{0, 0}));
  view.OnMouseMove({110, 95}, 0, true);
  EXPECT_EQ(Origin(), (Pixel{-40, -20}));
  EXPECT_EQ(host.scrolled, (std::vector<Pixel>{{10, -5}}));
  view.OnMouseMove({200, 200}, 0, false);  // the key is up
  view.OnMouseMove({300, 300}, 0, true);
  EXPECT_EQ(Origin(), (Pixel{-40, -20}));
}

TEST_F(MapViewZoomTest, SmallMovementsOfAPanAddUpAtHighZooms) {
  Place(0.25f, 0, 0);
  for (int x = 100; x <= 110; ++x) view.OnMouseMove({x, 100}, 0, true);
  EXPECT_EQ(view.transform.originu, -2);  // 10 pixels are two units and a half
  for (int x = 110; x >= 100; --x) view.OnMouseMove({x, 100}, 0, true);
  EXPECT_EQ(view.transform.originu, 0);
}

TEST_F(MapViewZoomTest, NearTheFramesEdgeTheCursorComesBackToTheMiddle) {
  struct Case {
    Pixel cursor;
    std::vector<Pixel> back;
  };
  host.frame = {-50, -40, 600, 500};
  const Case cases[] = {{{-44, 100}, {}},           {{-45, 100}, {{200, 100}}},
                        {{579, 100}, {}},           {{580, 100}, {{200, 100}}},
                        {{100, -34}, {}},           {{100, -35}, {{100, 150}}},
                        {{100, 494}, {}},           {{100, 495}, {{100, 150}}},
                        {{-45, 495}, {{200, 150}}}, {{200, 150}, {}}};
  for (const Case& c : cases) {
    Place(4, 0, 0);
    host.cursors.clear();
    view.EndPan();
    view.Pan({100, 100});
    view.Pan(c.cursor);
    EXPECT_EQ(host.cursors, c.back) << c.cursor.x << ' ' << c.cursor.y;
    // The jump of the cursor is no movement of the map.
    const Pixel before = Origin();
    view.Pan(c.back.empty() ? c.cursor : c.back[0]);
    EXPECT_EQ(Origin(), before);
  }
}

TEST_F(MapViewZoomTest, AfterAResizeTheViewShowsAQuarterOfTheLimitAndNothingBeyondTheWorld) {
  struct Case {
    PixelSize area;
    float scaleBefore, scale;
    Pixel originBefore, origin;
  };
  const Case cases[] = {
      {{400, 300}, 4, 4, {0, 0}, {0, 0}},
      {{625, 300}, 4, 2, {0, 0}, {0, 0}},   // 625 x 4 x 4 is not below 10000
      {{300, 1300}, 4, 1, {0, 0}, {0, 0}},  // both scales follow the longer axis
      {{400, 300}, 4, 4, {9000, -9000}, {8400, -8800}},
      {{400, 300}, 4, 4, {-9999, 9999}, {-9999, 9999}},
      {{401, 300}, 4, 4, {10000, -9999}, {8396, -8799}},
      {{401, 301}, 0.015625f, 0.015625f, {10000, -10000}, {9993, -9995}},
      {{0, 0}, 4, 4, {10000, -10000}, {10000, -10000}},
  };
  for (const Case& c : cases) {
    host.area = c.area;
    Place(c.scaleBefore, static_cast<std::int16_t>(c.originBefore.x),
          static_cast<std::int16_t>(c.originBefore.y));
    view.OnResize();
    EXPECT_EQ(view.transform.scaleu, c.scale) << c.area.width;
    EXPECT_EQ(view.transform.scalev, -c.scale) << c.area.width;
    EXPECT_EQ(Origin(), c.origin) << c.area.width;
  }
}

}  // namespace
}  // namespace ferrowand
