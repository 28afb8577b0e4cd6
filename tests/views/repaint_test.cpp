// After every change the views show what a fresh paint would, though only parts are painted.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/report.h"
#include "document/edit_step.h"
#include "document/picking.h"
#include "operations/clipboard.h"
#include "operations/csg_commands.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/layers.h"
#include "operations/templates.h"
#include "operations/transform_selection.h"
#include "operations/visibility.h"
#include "support/fake_view_host.h"
#include "support/small_map.h"
#include "support/software_canvas.h"
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

class RepaintUser {
 public:
  RepaintUser(Map& map, MessageRecorder& sink, unsigned seed)
      : map_(map), sink_(sink), random_(seed) {}

  // What it did.
  std::string Act() {
    sink_.answers.assign(1, Answer::Yes);
    if (Below(3) == 0) PickSomething();
    const Command& command = COMMANDS[Below(std::size(COMMANDS))];
    command.run(*this);
    return command.name;
  }

 private:
  struct Command {
    const char* name;
    void (*run)(RepaintUser&);
  };
  static const Command COMMANDS[25];

  std::size_t Below(std::size_t count) { return random_() % count; }
  float Step() { return static_cast<float>(Below(9)) * 16 - 64; }
  Vec3 Offset() { return {Step(), Step(), Step()}; }
  void PickSomething() {
    const auto level = Below(3) ? PickLevel::Objects : PickLevel::Brushes;
    const std::vector<entity*> objects = PickableObjects(map_, level);
    std::vector<entity*> picked;
    for (std::size_t count = Below(4); count > 0 && !objects.empty(); --count) {
      picked.push_back(objects[Below(objects.size())]);
    }
    Select(map_, picked, Below(4) == 0);
  }
  entity& Layer() {
    const std::vector<entity*> layers = LayersOf(map_);
    return *layers[Below(layers.size())];
  }

  // Its first member grows.
  void EditTemplate() {
    for (const EntityPtr& child : map_.currentLayer()->getEntityList()) {
      if (child->getClass()->Kind() != EntityKind::TemplateClass) continue;
      EditStep step(map_);
      entity& member = *child->getEntityList().front();
      step.Change(member);
      member.brush.Translate({0, 24, 0});
      return;
    }
  }

  Map& map_;
  MessageRecorder& sink_;
  std::mt19937 random_;
  std::string copied_;
};

using U = RepaintUser;
const U::Command U::COMMANDS[25] = {
    {"pick", [](U& u) { u.PickSomething(); }},
    {"pick", [](U& u) { u.PickSomething(); }},
    {"pick none", [](U& u) { u.map_.selection.Clear(); }},
    {"move", [](U& u) { MoveSelection(u.map_, u.Offset(), {}); }},
    {"move again", [](U& u) { MoveSelection(u.map_, u.Offset(), {}); }},
    {"turn", [](U& u) { RotateSelection(u.map_, 0, 1, 90, {}, {}); }},
    {"delete", [](U& u) { DeleteSelection(u.map_); }},
    {"duplicate", [](U& u) { DuplicateSelection(u.map_, u.Offset(), {}); }},
    {"copy", [](U& u) { u.copied_ = SelectionText(u.map_); }},
    {"paste", [](U& u) { PasteText(u.map_, u.copied_); }},
    {"group", [](U& u) { GroupSelection(u.map_); }},
    {"ungroup", [](U& u) { UngroupSelection(u.map_); }},
    {"template", [](U& u) { MakeTemplate(u.map_, "t", {}); }},
    {"in the template", [](U& u) { u.EditTemplate(); }},
    {"instance",
     [](U& u) {
       InsertInstance(u.map_, {"t", static_cast<int>(u.Below(4)) * 90, {1, 1, 1}}, u.Offset());
     }},
    {"hide", [](U& u) { HideSelection(u.map_); }},
    {"show hidden", [](U& u) { ShowHidden(u.map_); }},
    {"layer state",
     [](U& u) { SetLayerState(u.map_, u.Layer(), u.Below(3) == 0, u.Below(4) == 0); }},
    {"layer colour",
     [](U& u) {
       RecolourLayer(u.map_, u.Layer(), {7, 200, 90});
     }},
    {"to layer", [](U& u) { MoveSelectionToLayer(u.map_, u.Layer()); }},
    {"class",
     [](U& u) { SetKeyOfSelection(u.map_, "classname", u.Below(2) ? "light" : "a_longer_name"); }},
    {"keys",
     [](U& u) {
       const char* const keys[][2] = {{"light", "150"}, {"angle", "200"}, {"target", "gate"}};
       const auto& key = keys[u.Below(3)];
       SetKeyOfSelection(u.map_, key[0], key[1]);
     }},
    {"cut holes", [](U& u) { SubtractSelection(u.map_); }},
    {"undo", [](U& u) { u.map_.undo.Undo(); }},
    {"redo", [](U& u) { u.map_.undo.Redo(); }},
};

TEST(RepaintTest, EveryViewShowsWhatAFreshPaintWouldAfterAnything) {
  constexpr MapMode MODES[] = {MapMode::Normal, MapMode::Normal, MapMode::Heights,
                               MapMode::LayerColour};
  std::size_t parts = 0, changes = 0;
  for (unsigned round = 0; round < 24; ++round) {
    Scene scene;
    scene.options.entityNames = round % 4 != 0;
    scene.options.forceEntityLinks = round % 3 == 0;
    if (round % 2) scene.tools.Use(scene.tools.brushSelector);
    for (const auto& view : scene.views) view->SetMapMode(MODES[round % 4]);
    scene.map.AnnounceEverything();
    RepaintUser user(scene.map, scene.small.sink, round);
    for (int i = 0; i < 30 && !testing::Test::HasFailure(); ++i) {
      KeptWindow& window = *scene.windows.front();
      window.painted = 0;
      scene.ExpectFresh(Format("%u, %i: %s", round, i, user.Act().c_str()));
      changes += window.painted > 0;
      parts += window.painted > 0 && window.painted < WHOLE / 2;
    }
  }
  EXPECT_GT(parts, changes / 3) << "of " << changes;
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
