// What is drawn, what a click hits and what a rubber band takes are the same, whatever is hidden,
// locked or switched off. Drawn is what the picture misses without it.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "document/edit_step.h"
#include "document/picking.h"
#include "operations/insert.h"
#include "operations/layers.h"
#include "operations/primitives.h"
#include "operations/visibility.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

using Names = std::set<std::string>;

// Everything stands in a place of its own, 100 units wide.
class SeenTest : public ToolTest {
 protected:
  SeenTest() {
    small.Add({{"classname", "templateClass"}, {"XMPentityname", "t"}});
    small.AddCuboid({-8, 20, 0}, {8, 36, 16}, map.currentLayer()->getEntityList().back().get());
    Name(small.AddCuboid({0, 0, 0}, {32, 32, 32}), "brush");
    Name(At({{"classname", "light"}}, 100), "point");
    Name(At({{"classname", "templateInstance"}, {"XMPclass", "t"}}, 200), "instance");
    Name(At({{"classname", "templateInstance"}, {"XMPclass", "none"}}, 300), "no template");
    Name(At({{"classname", "embed"}, {"XMPminx", "-20"}}, 400), "embed");
    entity& group = Name(small.Add({{"classname", "brush"}, {"groupFather", "1"}}), "points");
    Place(small.Add({{"classname", "light"}}, &group), 500);
    Name(small.AddCuboid({520, 0, 0}, {540, 32, 32}, &group), "hidden member");
    named["hidden member"]->SetKey("classname", "hidden");
    Name(At({{"classname", "hidden"}}, 600), "hidden");
    entity& locked = InsertLayer(map, "locked");
    Name(small.AddCuboid({-100, 0, 0}, {-68, 32, 32}), "in a locked layer");
    SetLayerState(map, locked, false, true);
    entity& away = InsertLayer(map, "away");
    Name(small.AddCuboid({-200, 0, 0}, {-168, 32, 32}), "in a hidden layer");
    SetLayerState(map, away, true, false);
    MakeLayerCurrent(map, *LayersOf(map).front());
    map.SetKey("origin", "-300 0 0");
    Place(*LayersOf(map).front(), -350);
    window.area = {1200, 300};
    view.CentreOn({150, 0, 0});
    view.ZoomIn();
    tools.boxRule = BoxRule::Partial;
  }

  entity& Name(entity& e, const char* name) {
    e.SetKey("XMPentityname", name);
    named[name] = &e;
    return e;
  }
  static entity& Place(entity& e, int x) {
    e.SetOrigin(static_cast<std::int16_t>(x), 0, 0);
    return e;
  }
  entity& At(SmallMap::Keys keys, int x) { return Place(small.Add(keys), x); }

  Names Drawn() {
    Names drawn;
    const auto whole = FreshPaint();
    for (const auto& [name, e] : named) {
      EditStep step(map);
      step.Remove(*e);
      if (FreshPaint() != whole) drawn.insert(name);
      step.Cancel();
    }
    return drawn;
  }
  std::string NameOf(const entity& e) {
    for (const auto& [name, known] : named) {
      if (known == &e) return name;
    }
    return "?";
  }
  Names Hit() {
    Names hit;
    for (int x = 0; x < window.area.width; x += 2) {
      for (int y = 100; y < 200; y += 2) {
        const HitQuery query{view.transform, {x, y}, PickLevel::Objects};
        if (const auto found = HitTest(map, query); found.object) {
          hit.insert(NameOf(PickedBy(*found.object, PickLevel::Objects)));
        }
      }
    }
    return hit;
  }
  Names Banded() {
    map.selection.Clear();
    tools.Use(tools.entitySelector);
    view.OnMouseDown({2, 2}, BUTTON_LEFT, false, false);
    view.OnMouseMove({window.area.width - 2, window.area.height - 2}, BUTTON_LEFT, false);
    view.OnMouseUp({window.area.width - 2, window.area.height - 2}, BUTTON_LEFT);
    return SelectedNames();
  }
  Names SelectedNames() {
    Names names;
    for (const entity* e : map.selection) names.insert(NameOf(*e));
    return names;
  }

  std::map<std::string, entity*> named;
};

TEST_F(SeenTest, WhatIsDrawnIsWhatIsHitAndWhatARubberBandTakes) {
  for (const bool points : {true, false}) {
    for (const bool templates : {true, false}) {
      small.data.shown = {points, templates};
      map.AnnounceEverything();
      Names open = Drawn();
      EXPECT_EQ(open.erase("in a locked layer"), 1u) << "seen, but not to be touched";
      EXPECT_EQ(Hit(), open) << points << templates;
      EXPECT_EQ(Banded(), open) << points << templates;
      EXPECT_TRUE(open.contains("brush"));
      EXPECT_EQ(open.contains("point"), points);
      EXPECT_EQ(open.contains("instance"), points || templates);
    }
  }
}

TEST_F(SeenTest, AnInstanceIsHitWhereItIsDrawn) {
  const auto at = [&](int x, int y) {
    const HitQuery query{view.transform, ToolTest::At(x, y), PickLevel::Objects};
    return HitTest(map, query).object;
  };
  small.data.shown = {true, true};
  EXPECT_EQ(at(200, 28), named["instance"]) << "its brush";
  EXPECT_EQ(at(200, 14), nullptr) << "between its brush and its box";
  EXPECT_EQ(at(200, 0), named["instance"]) << "its box";
  small.data.shown.templates = false;
  EXPECT_EQ(at(200, 28), nullptr);
  EXPECT_EQ(at(200, 0), named["instance"]);
}

TEST_F(SeenTest, WhatGoesOutOfSightIsSelectedNoMore) {
  const auto select = [&](Names names) {
    map.selection.Clear();
    for (const std::string& name : names) map.selection.Add(*named[name]);
    EXPECT_EQ(SelectedNames(), names);
  };
  entity& layer = *LayersOf(map).back();

  select({"brush", "point", "points"});
  small.data.shown.pointEntities = false;
  map.AnnounceEverything();
  EXPECT_EQ(SelectedNames(), Names{"brush"});
  const std::size_t before = map.currentLayer()->getEntityList().size();
  Banded();
  DeleteSelection(map);
  EXPECT_EQ(map.currentLayer()->getEntityList().size(), before - 1) << "the brush alone";
  map.undo.Undo();
  small.data.shown.pointEntities = true;

  SetLayerState(map, layer, false, false);
  select({"in a hidden layer", "brush"});
  map.undo.Undo();
  EXPECT_EQ(SelectedNames(), Names{"brush"}) << "a layer hidden again";

  ShowHidden(map);
  select({"hidden", "brush"});
  map.undo.Undo();
  EXPECT_EQ(SelectedNames(), Names{"brush"}) << "an object hidden again";

  MakeLayerCurrent(map, layer);
  small.sink.answers = {Answer::Yes};
  AddPrimitive(map, {.kind = PrimitiveKind::Cuboid, .box = {{0, 0, 0}, {64, 64, 64}}}, "wall");
  EXPECT_TRUE(map.selection.empty()) << "made out of sight";
}

TEST_F(SeenTest, AnInstanceWithoutATemplateCanBeDeleted) {
  const Pixel at = ToolTest::At(300, 0);
  view.OnMouseDown(at, BUTTON_LEFT, false, false);
  view.OnMouseUp(at, BUTTON_LEFT);
  EXPECT_EQ(SelectedNames(), Names{"no template"});
  EXPECT_TRUE(map.selection.front()->GetBounds().IsEmpty());
  EXPECT_EQ(DeleteSelection(map), EditResult::Done);
  EXPECT_FALSE(Hit().contains("no template"));
}

}  // namespace
}  // namespace ferrowand
