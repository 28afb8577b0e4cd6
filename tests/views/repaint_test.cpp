// After every change the views show what a fresh paint would, though only parts are painted.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "document/picking.h"
#include "operations/layers.h"
#include "operations/transform_selection.h"
#include "support/random_user.h"
#include "support/temp_dir.h"
#include "views/tools/tool_fixture.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr PixelSize AREA{300, 220};
constexpr std::size_t WHOLE = 300 * 220;

// A window that paints each part that it is asked for at once, and keeps its picture.
class KeptWindow : public FakeViewHost {
 public:
  KeptWindow() : FakeViewHost(AREA) {}

  void Invalidate() override { Paint({0, 0, AREA.width, AREA.height}); }
  void Invalidate(const PixelRect& part) override {
    Paint({std::max(part.left, 0), std::max(part.top, 0), std::min(part.right, AREA.width),
           std::min(part.bottom, AREA.height)});
  }
  void ScrollPicture(Pixel by, std::span<const PixelRect> anew) override {
    picture.Scroll(by);
    if (by.x > 0) Paint({0, 0, by.x, AREA.height});
    if (by.x < 0) Invalidate({AREA.width + by.x, 0, AREA.width, AREA.height});
    if (by.y > 0) Paint({0, 0, AREA.width, by.y});
    if (by.y < 0) Invalidate({0, AREA.height + by.y, AREA.width, AREA.height});
    for (const PixelRect& part : anew) Invalidate(part);
  }
  void Paint(const PixelRect& part) {
    if (!view || part.Empty()) return;
    painted += static_cast<std::size_t>(part.Width()) * static_cast<std::size_t>(part.Height());
    view->Paint(picture, part);
  }
  bool IsFresh() const {
    SoftwareCanvas fresh(AREA);
    view->Paint(fresh, {0, 0, AREA.width, AREA.height});
    return fresh.Pixels() == picture.Pixels();
  }

  MapView* view = nullptr;
  SoftwareCanvas picture{AREA};
  std::size_t painted = 0;  // pixels
};

// A small map in three views.
struct Scene {
  Scene() {
    options.drawLightRadius = 1;
    small.data.shown.templates = true;
    for (const Orientation orientation :
         {Orientation::Top, Orientation::Front, Orientation::Side}) {
      windows.push_back(std::make_unique<KeptWindow>());
      views.push_back(
          std::make_unique<MapView>(map, *windows.back(), list, options, tools.Current()));
      views.back()->SetOrientation(orientation);
      views.back()->ZoomTo({{-200, -200, -200}, {200, 200, 200}});
      windows.back()->view = views.back().get();
    }
    for (int i = 0; i < 6; ++i) {
      const auto n = static_cast<float>(i);
      const Vec3 at(n * 64 - 200, n * 24 - 90, n * 8);
      small.AddCuboid(at, at + Vec3(48, 64, 32));
    }
    Point("light", "-100 100 40").SetFlags(ENTITY_IS_LIGHT);
    Point("light", "150 -120 0").SetFlags(ENTITY_IS_LIGHT);
    Point("monster", "60 60 24");
    Point("item", "-60 -140 0");
    InsertLayer(map, "other");
  }
  entity& Point(const char* classname, const char* origin) {
    return small.Add(
        {{"classname", classname}, {"origin", origin}, {"angle", "45"}, {"light", "70"}});
  }
  void ExpectFresh(const std::string& after) const {
    for (std::size_t i = 0; i < windows.size(); ++i) {
      EXPECT_TRUE(windows[i]->IsFresh()) << "view " << i << " after " << after;
    }
  }

  SmallMap small;
  Map& map = small.map;
  Options options;
  ViewList list;
  FakeToolHost host{small.reporter};
  ToolSet tools{host, list, options};
  std::vector<std::unique_ptr<KeptWindow>> windows;
  std::vector<std::unique_ptr<MapView>> views;
};

TEST(RepaintTest, EveryViewShowsWhatAFreshPaintWouldAfterAnything) {
  constexpr MapMode MODES[] = {MapMode::Normal, MapMode::Normal, MapMode::Heights,
                               MapMode::LayerColour};
  std::size_t parts = 0, changes = 0;
  for (unsigned round = 0; round < 24; ++round) {
    Scene scene;
    scene.options.entityNames = round % 4 == 1;
    scene.options.forceEntityLinks = round % 3 == 0;
    scene.options.paleOthers = round % 12 == 5;
    if (round % 2) scene.tools.Use(scene.tools.brushSelector);
    for (const auto& view : scene.views) view->SetMapMode(MODES[round % 4]);
    scene.map.AnnounceEverything();
    const TempDir dir;
    RandomUser user(scene.map, dir.Path("group.xmp"), round);
    for (int i = 0; i < 30 && !testing::Test::HasFailure(); ++i) {
      KeptWindow& window = *scene.windows.front();
      window.painted = 0;
      scene.small.sink.answers.assign(1, Answer::Yes);
      const char* const done = user.DoSomething();
      SCOPED_TRACE(Format("%u, %i: %s", round, i, done));
      scene.ExpectFresh("it");
      changes += window.painted > 0;
      parts += window.painted > 0 && window.painted < WHOLE / 2;
      if (i % 4 != 0) continue;
      scene.map.undo.Undo();
      scene.ExpectFresh("its undo");
      scene.map.undo.Redo();
      scene.ExpectFresh("its redo");
    }
  }
  EXPECT_GT(parts, changes / 6) << "of " << changes;
}

TEST(RepaintTest, AScrolledPictureIsAFreshPaintAtEveryOriginZoomAndStep) {
  constexpr float SCALES[] = {4, 2, 16, 0.5f, 1, 8};
  constexpr MapMode MODES[] = {MapMode::Normal, MapMode::OneMip, MapMode::Heights};
  std::size_t parts = 0, steps = 0;
  for (unsigned round = 0; round < 64; ++round) {
    std::mt19937 random(round);
    const auto pick = [&](int least, int most) {
      return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    Scene scene;
    scene.options.entityNames = round % 3 == 1;
    scene.options.forceEntityLinks = round % 4 == 2;
    for (const char* at : {"-80 -40 8", "-40 0 -64", "0 -160 0", "64 -80 -32"}) {
      scene.Point("with_a_name_that_reaches_far", at);
    }
    const auto& objects = LayersOf(scene.map).front()->getEntityList();
    for (std::size_t i = 0; scene.options.forceEntityLinks && i < objects.size(); ++i) {
      objects[i]->SetKey(i % 3 ? "targetname" : "target", "t");
    }
    scene.tools.Use(round % 2 ? static_cast<Tool&>(scene.tools.vertexTool)
                              : scene.tools.brushSelector);
    scene.map.selection.Set({objects[0].get(), objects[3].get()});
    RotateSelection(scene.map, 0, 1, pick(1, 89), {}, {});
    scene.map.selection.Set({objects[1].get(), objects[round % 6].get()});
    for (std::size_t i = 0; i < scene.windows.size(); ++i) {
      MapView& view = *scene.views[i];
      view.SetMapMode(MODES[round % 3]);
      view.centreDots = round % 4 == 0;
      view.transform.scaleu = SCALES[pick(0, 5)];
      view.transform.scalev = -view.transform.scaleu;
      // The first column and row among the objects, more often than not halfway to their edges.
      const int half = static_cast<int>(view.transform.scaleu / 2);
      view.transform.originu = static_cast<std::int16_t>(pick(-28, 25) * 8 + half + pick(0, 3) / 3);
      view.transform.originv = static_cast<std::int16_t>(pick(-20, 40) * 8 + half + pick(0, 3) / 3);
      view.Refresh();
      for (int step = 0; step < 12; ++step) {
        scene.windows[i]->painted = 0;
        const double u = pick(-24, 24), v = step % 3 == 0 ? pick(-24, 24) : 0;
        view.ScrollBy(u * view.transform.scaleu, v * view.transform.scalev);
        ASSERT_TRUE(scene.windows[i]->IsFresh())
            << round << ", view " << i << ", step " << step << " by " << u << ' ' << v;
        ++steps;
        parts += scene.windows[i]->painted < WHOLE;
      }
    }
  }
  EXPECT_GT(parts, steps / 2);
}

TEST(RepaintTest, WhatReachesBeyondWhatChangedIsPaintedToo) {
  Scene scene;
  const auto& objects = LayersOf(scene.map).front()->getEntityList();
  scene.map.AnnounceEverything();
  scene.map.selection.Set({objects[6].get()});
  MoveSelection(scene.map, {90, -60, 0}, {});
  scene.ExpectFresh("a light with its circle");
  scene.map.selection.Clear();
  scene.options.paleOthers = true;
  scene.map.AnnounceEverything();
  scene.map.selection.Set({objects[0].get()});
  scene.ExpectFresh("a first one while the rest is pale");
  scene.tools.Use(scene.tools.vertexTool);
  scene.options.paleOthers = false;
  scene.map.AnnounceEverything();
  MapView& view = *scene.views.front();
  view.OnMouseDown({1, 1}, BUTTON_LEFT, false, false);
  view.OnMouseMove({AREA.width - 2, AREA.height - 2}, BUTTON_LEFT, false);
  view.OnMouseUp({AREA.width - 2, AREA.height - 2}, BUTTON_LEFT);
  ASSERT_EQ(scene.tools.vertexTool.Picked().size(), 8u);
  scene.ExpectFresh("a rubber band around corners");
}

TEST(RepaintTest, OneBrushCostsItsBoxNotTheView) {
  Scene scene;
  entity& cube = scene.small.AddCuboid({-180, 150, 0}, {-164, 166, 16});
  scene.map.AnnounceEverything();
  for (const auto& window : scene.windows) window->painted = 0;
  Select(scene.map, &cube, false);
  MoveSelection(scene.map, {8, 0, 0}, {});
  scene.map.undo.Undo();
  scene.map.selection.Clear();
  scene.ExpectFresh("a small change");
  for (const auto& window : scene.windows) {
    EXPECT_GT(window->painted, 0u);
    EXPECT_LT(window->painted, WHOLE / 5);
  }
}

}  // namespace
}  // namespace ferrowand
