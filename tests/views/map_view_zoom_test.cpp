#include <algorithm>
#include <functional>

#include "support/cases.h"
#include "views/view_fixture.h"

namespace ferrowand {
namespace {

class MapViewZoomTest : public ViewTest {
 protected:
  Pixel Origin() const { return {view.transform.originu, view.transform.originv}; }
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

TEST_F(MapViewZoomTest, ZoomingStopsAt6400PercentAndBefore10000UnitsOnEitherAxis) {
  for (int i = 0; i < 20; ++i) view.ZoomIn();
  const Pixel origin = Origin();
  view.ZoomAt({10, 10}, false);
  EXPECT_EQ(view.ZoomPercent(), 6400);
  EXPECT_EQ(Origin(), origin);
  // Inwards each axis stops for itself.
  view.transform.scaleu = 1;
  view.ZoomIn();
  EXPECT_EQ(view.transform.scaleu, 0.5f);
  EXPECT_EQ(view.transform.scalev, -0.015625f);

  Place(4, 0, 0);
  for (int i = 0; i < 20; ++i) view.ZoomOut();
  EXPECT_EQ(view.transform.scaleu, 16);  // 6400 units; the next would be 12800
  for (const int height : {625, 624}) {  // 16 x 625 is exactly 10000: not below
    host.area = {100, height};
    Place(8, 0, 0);
    view.ZoomAt({0, 0}, true);
    EXPECT_EQ(view.transform.scaleu, height < 625 ? 16 : 8);
    Place(8, 0, 0);
    view.ZoomOut();
    EXPECT_EQ(view.transform.scaleu, height < 625 ? 16 : 8);
  }
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
  host.invalidations = 0;
  view.CentreOn({0, 0, 0});
  EXPECT_EQ(Origin(), (Pixel{-1, 2}));  // halves are rounded towards 0
  EXPECT_GT(host.invalidations, 0);
  view.CentreOn({30000, -30000, 0});
  EXPECT_EQ(Origin(), (Pixel{10000, -10000}));
}

TEST_F(MapViewZoomTest, ZoomingToABoxTakesTheLargerScaleOfTheTwo) {
  // 380 x 280 pixels are there to be used.
  const Cases<Bounds, float, Pixel> cases{{{{0, 0, 0}, {380, 100, 1}}, 1, {190 - 200, 50 + 150}},
                                          {{{0, 0, 0}, {381, 100, 1}}, 2, {190 - 400, 50 + 300}},
                                          {{{0, 0, 0}, {10, 560, 1}}, 2, {5 - 400, 280 + 300}},
                                          {{{0, 0, 0}, {1, 1, 1}}, 0.0625f, {0 - 12, 0 + 9}}};
  for (const auto& [box, scale, origin] : cases) {
    Place(4, 0, 0);
    view.ZoomTo(box);
    EXPECT_EQ(view.transform.scaleu, scale);
    EXPECT_EQ(view.transform.scalev, -scale);
    EXPECT_EQ(Origin(), origin);
  }
  EXPECT_EQ(host.texts[ViewText::ZoomAndGrid], "(64x64)S1600%");
  host.area = {5, 0};  // smaller than the border
  view.ZoomTo({{-10000, -10000, -10000}, {10000, 10000, 10000}});
  EXPECT_EQ(view.transform.scaleu, 32768);
}

TEST_F(MapViewZoomTest, AFlatOrEmptyBoxIsNotZoomedTo) {
  Place(4, 5, 6);
  for (const Bounds& box :
       {Bounds{}, Bounds{{0, 0, 7}, {100, 100, 7}}, Bounds{{0, NAN, 0}, {100, 100, 7}}}) {
    view.ZoomTo(box);
  }
  EXPECT_EQ(Origin(), (Pixel{5, 6}));
  EXPECT_EQ(host.invalidations, 0);
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

TEST_F(MapViewZoomTest, WhatReachesFurtherIsSeenAsFarAsOriginsGo) {
  MapChange change;
  for (const auto& [reach, limit] :
       Cases<float, int>{{-20000, 20000}, {99000, 32767}, {0, 32767}}) {
    change.box = {{std::min(reach, 0.0f), 0, 0}, {std::max(reach, 64.0f), 64, 64}};
    Place(16, 0, 0);
    view.OnChange(change);
    view.ZoomOut();
    EXPECT_EQ(view.transform.scaleu, 32);
    EXPECT_EQ(host.horizontal.range, 2 * limit);
    view.ScrollToThumb(false, 2 * limit);
    EXPECT_EQ(Origin().x, limit);
  }
}

TEST_F(MapViewZoomTest, ScrollingMovesThePictureByWholePixelsUpToTheWorldsEnd) {
  // The scale, where it is, what scrolls, where it is then, and how far the picture is moved: not
  // at all where it is drawn anew, or nothing is left to scroll.
  const Cases<float, Pixel, std::function<void()>, Pixel, std::vector<Pixel>> cases{
      {4, {0, 0}, [&] { view.ScrollLines(false, 1); }, {40, 0}, {{-10, 0}}},
      {4, {40, 0}, [&] { view.ScrollLines(true, 2); }, {40, -80}, {{0, -20}}},
      {4, {40, -80}, [&] { view.ScrollPages(true, -1); }, {40, 320}, {{0, 100}}},
      {4, {40, 320}, [&] { view.ScrollToThumb(false, 10041); }, {41, 320}, {}},
      {16, {9900, 0}, [&] { view.ScrollPages(false, 3); }, {10000, 0}, {}},
      {16, {0, -9984}, [&] { view.ScrollLines(true, 5); }, {0, -10000}, {{0, -1}}},
      {16, {-9984, 9984}, [&] { view.ScrollBy(-1e5, 1e5); }, {-10000, 10000}, {{1, 1}}},
      {16, {-10000, 0}, [&] { view.ScrollPages(false, -1); }, {-10000, 0}, {}},
      // At the highest zoom a line is one unit.
      {0.015625f, {0, 0}, [&] { view.ScrollLines(false, 1); }, {1, 0}, {{-64, 0}}},
      {0.015625f, {0, 0}, [&] { view.ScrollLines(true, 1); }, {0, -1}, {{0, -64}}},
  };
  for (const auto& [scale, from, scroll, origin, moved] : cases) {
    Place(scale, from.x, from.y);
    host.scrolled.clear();
    host.invalidations = 0;
    scroll();
    EXPECT_EQ(Origin(), origin);
    EXPECT_EQ(host.scrolled, moved) << origin.x << ' ' << origin.y;
    EXPECT_EQ(host.invalidations, moved.empty() && origin != from ? 1 : 0);
  }
}

TEST_F(MapViewZoomTest, PanningDragsTheMapWithTheCursorAndSmallMovementsAddUp) {
  Place(4, 0, 0);
  view.OnMouseMove({100, 100}, 0, true);
  EXPECT_EQ(Origin(), (Pixel{0, 0}));
  view.OnMouseMove({110, 95}, 0, true);
  EXPECT_EQ(Origin(), (Pixel{-40, -20}));
  EXPECT_EQ(host.scrolled, (std::vector<Pixel>{{10, -5}}));
  EXPECT_TRUE(host.captured);
  view.OnMouseMove({200, 200}, 0, false);  // the key is up
  EXPECT_FALSE(host.captured);
  Place(0.25f, 0, 0);
  for (int x = 100; x <= 110; ++x) view.OnMouseMove({x, 100}, 0, true);
  EXPECT_EQ(view.transform.originu, -2);  // 10 pixels are two units and a half
  for (int x = 110; x >= 100; --x) view.OnMouseMove({x, 100}, 0, true);
  EXPECT_EQ(view.transform.originu, 0);
}

TEST_F(MapViewZoomTest, NearTheFramesEdgeTheCursorComesBackToTheMiddle) {
  host.frame = {-50, -40, 600, 500};
  const Cases<Pixel, std::vector<Pixel>> cases{
      {{-44, 100}, {}},           {{-45, 100}, {{200, 100}}},
      {{579, 100}, {}},           {{580, 100}, {{200, 100}}},
      {{100, -34}, {}},           {{100, -35}, {{100, 150}}},
      {{100, 494}, {}},           {{100, 495}, {{100, 150}}},
      {{-45, 495}, {{200, 150}}}, {{200, 150}, {}}};
  for (const auto& [cursor, back] : cases) {
    Place(4, 0, 0);
    host.cursors.clear();
    view.EndPan();
    view.Pan({100, 100});
    view.Pan(cursor);
    EXPECT_EQ(host.cursors, back) << cursor.x << ' ' << cursor.y;
    // The jump of the cursor is no movement of the map.
    const Pixel before = Origin();
    view.Pan(back.empty() ? cursor : back[0]);
    EXPECT_EQ(Origin(), before);
  }
}

TEST_F(MapViewZoomTest, AfterAResizeTheViewShowsAQuarterOfTheLimitAndNothingBeyondTheWorld) {
  const Cases<PixelSize, float, float, Pixel, Pixel> cases{
      {{400, 300}, 4, 4, {0, 0}, {0, 0}},
      {{625, 300}, 4, 2, {0, 0}, {0, 0}},   // 625 x 4 x 4 is not below 10000
      {{300, 1300}, 4, 1, {0, 0}, {0, 0}},  // both scales follow the longer axis
      {{400, 300}, 4, 4, {9000, -9000}, {8400, -8800}},
      {{400, 300}, 4, 4, {-9999, 9999}, {-9999, 9999}},
      {{401, 300}, 4, 4, {10000, -9999}, {8396, -8799}},
      {{401, 301}, 0.015625f, 0.015625f, {10000, -10000}, {9993, -9995}},
      {{0, 0}, 4, 4, {10000, -10000}, {10000, -10000}},
  };
  for (const auto& [area, scaleBefore, scale, from, origin] : cases) {
    host.area = area;
    Place(scaleBefore, from.x, from.y);
    view.OnResize();
    EXPECT_EQ(view.transform.scaleu, scale) << area.width;
    EXPECT_EQ(view.transform.scalev, -scale) << area.width;
    EXPECT_EQ(Origin(), origin) << area.width;
  }
}

}  // namespace
}  // namespace ferrowand
