#include "document/classes/special_classes.h"

#include "document/document_fixture.h"
#include "support/brush_checks.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class SpecialClassesTest : public DocumentTest {
 protected:
  // A template "T" of one cuboid, 16 x 32 x 64 from the origin, and an instance of it with the
  // keys.
  std::unique_ptr<Map> MapWithInstance(const std::string& keys) {
    return ReadText(
        "{{\"classname\" \"layer\"\n{\"classname\" \"templateClass\""
        "\"XMPentityname\" \"T\"" +
        Cuboid(0, 0, 0, 16, 32, 64) +
        "}\n{\"classname\" \"templateInstance\"\"XMPentityname\" \"I\""
        "\"XMPclass\" \"T\"" +
        keys + "}}}");
  }
};

TEST_F(SpecialClassesTest, LayersAreSeenAndEnabledByTheirState) {
  for (const auto& [state, visible, enabled] : Cases<const char*, bool, bool>{{"0", true, true},
                                                                              {"1", false, true},
                                                                              {"2", true, false},
                                                                              {"3", false, false},
                                                                              {"4", true, true},
                                                                              {"x", true, true}}) {
    entity layer(data.classes.Default());
    layer.SetKey("classname", "layer");
    EXPECT_TRUE(layer.IsVisible() && layer.IsEnabled());
    layer.SetKey("XMPstate", state);
    EXPECT_EQ(layer.IsVisible(), visible) << state;
    EXPECT_EQ(layer.IsEnabled(), enabled) << state;
    EXPECT_FALSE(layer.IsMarked());
  }
}

TEST_F(SpecialClassesTest, HidingAndShowingGivesTheOldClassBack) {
  entity e(data.classes.Default());
  e.SetKey("classname", "templateInstance");
  HideEntity(e);
  HideEntity(e);
  EXPECT_FALSE(e.IsVisible() || e.IsEnabled());
  EXPECT_STREQ(e.GetKey("XMPoldclassname"), "templateInstance");
  ShowHiddenEntities(e);
  EXPECT_STREQ(e.GetKey("classname"), "templateInstance");
  EXPECT_STREQ(e.GetKey("XMPoldclassname"), "templateInstance");
  // One of no known class becomes a brush.
  const auto map = ReadText("{{\"classname\" \"hidden\"{\"classname\" \"hidden\"}}}");
  ShowHiddenEntities(*map);
  const entity& outer = *map->currentLayer()->getEntityList().front();
  EXPECT_STREQ(outer.GetKey("classname"), "brush");
  EXPECT_EQ(outer.getEntityList().front()->getClass()->Kind(), EntityKind::Brush);
}

TEST_F(SpecialClassesTest, InstancesAreScaledThenTurnedThenMoved) {
  const auto box = [](Vec3 mins, Vec3 maxs) {
    Bounds bounds;
    bounds.Add(mins);
    bounds.Add(maxs);
    return bounds;
  };
  const Cases<const char*, Bounds> cases{
      {"", box({0, 0, 0}, {16, 32, 64})},
      {"\"origin\" \"100 200 300\"", box({100, 200, 300}, {116, 232, 364})},
      {"\"angle\" \"90\"", box({-32, 0, 0}, {0, 16, 64})},
      {"\"angle\" \"-90\"", box({0, -16, 0}, {32, 0, 64})},
      {"\"angle\" \"450\"\"origin\" \"8 0 0\"", box({-24, 0, 0}, {8, 16, 64})},
      {"\"XMPscalex\" \"2\"\"XMPscaley\" \"0.5\"\"XMPscalez\" \"3\"\"angle\" \"180\"",
       box({-32, -16, 0}, {0, 0, 192})},
      {"\"XMPscalex\" \"-1\"\"XMPscaley\" \"1\"\"XMPscalez\" \"1\"", box({-16, 0, 0}, {0, 32, 64})},
      // Without both x and y there is no scaling; without z it is flat.
      {"\"XMPscalex\" \"2\"\"XMPscalez\" \"2\"", box({0, 0, 0}, {16, 32, 64})},
      {"\"XMPscalex\" \"2\"\"XMPscaley\" \"2\"", box({0, 0, 0}, {32, 64, 0})},
      {"\"XMPscalex\" \"0\"\"XMPscaley\" \"0\"\"XMPscalez\" \"0\"", Bounds()},
  };
  for (const auto& [keys, expected] : cases) {
    const auto map = MapWithInstance(keys);
    EXPECT_EQ(FindNamed(*map, "I")->GetBounds(), expected) << keys;
    EXPECT_FALSE(QuakeText(*map).empty());
  }
}

TEST_F(SpecialClassesTest, AMirroredInstanceIsStillSolid) {
  const auto map =
      MapWithInstance("\"XMPscalex\" \"-2\"\"XMPscaley\" \"1\"\"XMPscalez\" \"1\"\"angle\" \"30\"");
  const entity* copy = ExpandInstance(*FindNamed(*map, "I"));
  ASSERT_NE(copy, nullptr);
  EXPECT_TRUE(IsSolid(copy->getEntityList().front()->brush));
  // Seen, although its template is closed.
  EXPECT_TRUE(copy->IsVisible());
  EXPECT_FALSE(FindNamed(*map, "T")->IsVisible());
}

TEST_F(SpecialClassesTest, OptionsDecideAboutTemplates) {
  const auto map = MapWithInstance("\"origin\" \"100 0 0\"");
  const auto brushes = [&](unsigned option) {
    const std::string text = QuakeText(*map, option);
    int count = 0;
    for (std::size_t at = 0; (at = text.find("\t{\n", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  EXPECT_EQ(brushes(0), 1);
  EXPECT_EQ(brushes(WRITE_KEEP_INSTANCES), 0);
  EXPECT_EQ(brushes(WRITE_TEMPLATE_CLASSES), 2);
  EXPECT_EQ(brushes(WRITE_TEMPLATE_CLASSES | WRITE_KEEP_INSTANCES), 1);
}

TEST_F(SpecialClassesTest, AnEmbedHasTheBoxOfItsKeysAndOthersThatOfTheirClass) {
  entity embed(data.classes.Default());
  embed.SetKey("classname", "embed");
  EXPECT_TRUE(embed.GetBounds().IsEmpty());
  embed.SetOrigin(100, 0, 0);
  EXPECT_EQ(embed.GetBounds().mins, Vec3(84, -16, -16));
  EXPECT_EQ(embed.GetBounds().maxs, Vec3(116, 16, 16));
  embed.SetKey("XMPminx", "-64.5");
  embed.SetKey("XMPmaxz", "8");
  EXPECT_EQ(embed.GetBounds().mins, Vec3(35.5f, -16, -16));
  EXPECT_EQ(embed.GetBounds().maxs, Vec3(116, 16, 8));
  entity e(data.classes.Default());
  e.SetKey("classname", "nothing");
  EXPECT_TRUE(e.GetBounds().IsEmpty());
  e.SetOrigin(10, 20, 30);
  EXPECT_EQ(e.GetBounds(), (Bounds{{2, 12, 22}, {18, 28, 38}}));
}

TEST_F(SpecialClassesTest, ThePenWrapsColoursAboveOne) {
  EntityClass c(data.classes.Default());
  c.red = 2;
  c.green = 0.5f;
  c.blue = 1e20f;
  EXPECT_EQ(c.ClassColour(), (Colour{254, 127, 0}));
}

}  // namespace
}  // namespace ferrowand
