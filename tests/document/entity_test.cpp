#include "document/entity.h"

#include <algorithm>
#include <cmath>

#include "document/document_fixture.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class EntityTest : public DocumentTest {
 protected:
  // The text stands between the braces of one entity behind the world.
  const entity& ReadBody(const std::string& body) {
    map = ReadText("{\n}\n{" + body + "}\n");
    return *map->currentLayer()->getEntityList().front();
  }
  std::string Keys(const entity& e) {
    std::string keys;
    for (int i = 0; i < e.numkeys(); ++i) keys += e.KeyName(i) + "=" + e.KeyValue(i) + ";";
    return keys;
  }

  std::unique_ptr<Map> map;
  entity plain{data.classes.Default()};
};

TEST_F(EntityTest, ANewEntityIsABrushWithoutOriginAndAngle) {
  EXPECT_EQ(Keys(plain), "classname=brush;XMPferroflags=0;");
  EXPECT_EQ(plain.getClass()->Kind(), EntityKind::Brush);
  EXPECT_EQ(plain.Origin(), Vec3(65000, 0, 0));
  EXPECT_FALSE(plain.HasOrigin());
  EXPECT_EQ(plain.angle(), 32600);
  EXPECT_EQ(plain.state, 1);
}

TEST_F(EntityTest, SettingAKeyMovesItToTheEndAndSparesOtherSpellings) {
  plain.SetKey("origin", "1 2 3");
  plain.SetKey("Origin", "4 5 6");
  plain.SetKey("classname", "light");
  EXPECT_EQ(Keys(plain), "XMPferroflags=0;origin=1 2 3;Origin=4 5 6;classname=light;");
  EXPECT_STREQ(plain.GetKey("ORIGIN"), "1 2 3");
  EXPECT_EQ(plain.Origin(), Vec3(4, 5, 6));
  EXPECT_EQ(plain.GetKey("target"), nullptr);
  const std::string longValue(100, 'v');
  plain.SetKey("name", longValue);
  plain.SetKey(plain.KeyName(plain.numkeys() - 1), plain.GetKey("name"));  // its own texts
  EXPECT_EQ(plain.GetKey("name"), longValue);
}

TEST_F(EntityTest, OriginsKeepWhatTheTextDoesNotTell) {
  for (const auto& [text, expected] :
       Cases<const char*, Vec3>{{"8 16", {8, 16, 3}},
                                {"-8.5\t+16 .25", {-8.5f, 16, 0.25f}},
                                {"8 x 5", {8, 2, 3}},
                                {"8,5", {8, 2, 3}},
                                {"", {1, 2, 3}},
                                {"- 1 1", {1, 2, 3}},
                                {"nan inf 1", {1, 2, 3}},
                                {".-5 1 1", {1, 2, 3}},
                                {"7-6-5", {7, -6, -5}},
                                {"1e2 0 0", {100, 0, 0}}}) {
    plain.SetKey("origin", "1 2 3");
    plain.SetKey("origin", text);
    EXPECT_EQ(plain.Origin(), expected) << text;
  }
  plain.SetKey("origin", "1e99 -1e99 0");
  EXPECT_TRUE(std::isfinite(plain.Origin().x) && std::isfinite(plain.Origin().y));
}

TEST_F(EntityTest, WhatIsDecodedIsSetAsTextToo) {
  plain.SetKey("Angle", "90.7");
  EXPECT_EQ(plain.angle(), 90);
  plain.SetKey("angle", "-2");
  EXPECT_EQ(plain.angle(), -2);
  plain.SetKey("xmpFERROFLAGS", "3");
  EXPECT_EQ(plain.flags(), 3);
  plain.SetFlags(-1);
  EXPECT_EQ(plain.flags(), -1);
  plain.SetOrigin(1, -2, 32767);
  EXPECT_STREQ(plain.GetKey("origin"), "1.000000 -2.000000 32767.000000");
  plain.SetOriginAxis(1, 5);
  EXPECT_STREQ(plain.GetKey("origin"), "1.000000 5.000000 32767.000000");
  EXPECT_EQ(plain.Origin(), Vec3(1, 5, 32767));
}

TEST_F(EntityTest, The250thKeyIsToldAndAddedAllTheSame) {
  while (plain.numkeys() < 249) plain.AddKey("again", "1");
  EXPECT_TRUE(recorder.messages.empty());
  plain.AddKey("again", "2");
  EXPECT_NE(recorder.OnlyText().find("entity.cpp: \"(numkeys+1)<MAXKEYS\""), std::string::npos);
  EXPECT_EQ(plain.numkeys(), 250);
}

TEST_F(EntityTest, KeysBeyondTheLimitAreReadLikeTheOthers) {
  std::string keys;
  for (int i = 0; i < 300; ++i) keys += "\"k" + std::to_string(i) + "\" \"1\"";
  const entity& e = ReadBody(keys + "\"k299\" \"2\"\"k7\" \"2\"{}\"k299\" \"3\"");
  EXPECT_EQ(e.numkeys(), 302);
  EXPECT_STREQ(e.GetKey("k7"), "2");
  EXPECT_STREQ(e.GetKey("k299"), "3");
  EXPECT_EQ(e.KeyName(301), "k299");
}

TEST_F(EntityTest, RemovingAKeyThatIsNotThereIsTold) {
  plain.RemoveKey(0);
  EXPECT_EQ(Keys(plain), "XMPferroflags=0;");
  plain.RemoveKey(1);
  EXPECT_NE(recorder.OnlyText().find("\"num<numkeys\""), std::string::npos);
  plain.ClearKeys();
  EXPECT_EQ(plain.numkeys(), 0);
}

TEST_F(EntityTest, WhatARemovedKeyHasSaidIsSaidByThoseOfItsNameThatAreLeft) {
  for (const char* angle : {"45", "90"}) plain.AddKey(angle[0] == '4' ? "Angle" : "angle", angle);
  plain.SetOrigin(1, 2, 3);
  plain.SetFlags(3);
  plain.RemoveKeys("origin");
  plain.RemoveKeys("XMPFERROFLAGS");
  plain.RemoveKey(plain.numkeys() - 1);
  EXPECT_EQ(Keys(plain), "classname=brush;Angle=45;");
  EXPECT_EQ(plain.angle(), 45);
  EXPECT_FALSE(plain.HasOrigin());
  EXPECT_EQ(plain.flags(), 0);
  plain.RemoveKeys("angle");
  EXPECT_EQ(plain.angle(), NO_ANGLE);
}

TEST_F(EntityTest, TheBodyMayHoldCommentsFacesAndEntities) {
  const std::string faces = Cuboid(0, 0, 0, 8, 8, 8);
  const entity& e = ReadBody("// a \"comment\" }\n\"classname\" \"c\"\"a\" // between\n \"1\"" +
                             faces.substr(1, faces.size() - 3) + "\"b\" \"2\"{{}}");
  EXPECT_STREQ(e.GetKey("a"), "1");
  EXPECT_STREQ(e.GetKey("b"), "2");
  EXPECT_EQ(e.brush.getNumFaces(), 6);
  ASSERT_EQ(e.getEntityList().size(), 1u);
  EXPECT_EQ(e.getEntityList().front()->getEntityList().size(), 1u);
  EXPECT_TRUE(recorder.messages.empty()) << recorder.OnlyText();
}

TEST_F(EntityTest, AKeyEndsAtItsQuoteHoweverLongItIs) {
  const std::string longText(5000, 'x');
  const entity& e = ReadBody("\"" + longText + "\" \"" + longText + "\" \"k\" \"v\"");
  EXPECT_EQ(e.GetKey(longText), longText);
  EXPECT_STREQ(e.GetKey("k"), "v");
  EXPECT_EQ(ExtendedText(*ReadText(ExtendedText(*map))), ExtendedText(*map));
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(EntityTest, FixedFlagsOfAClassOverruleTheFile) {
  const std::string qc =
      temp.Write("game.qc", "/*QUAKED path (0 1 0) ?\r\n~ 1 text*/ /*QUAKED light (0 1 0) ?\r\n*/");
  map = ReadText("{\"XMPqc\" \"" + qc +
                 "\"}{\"XMPferroflags\" \"2\"\"classname\" \"path\"}"
                 "{\"XMPferroflags\" \"2\"\"classname\" \"light\"}");
  const auto& entities = map->currentLayer()->getEntityList();
  EXPECT_EQ(entities[0]->flags(), 1);
  EXPECT_EQ(entities[1]->flags(), 2);
}

int DepthOf(const entity& e) {
  int deepest = 0;
  for (const EntityPtr& child : e.getEntityList()) deepest = std::max(deepest, DepthOf(*child));
  return deepest + 1;
}

TEST_F(EntityTest, NestingBeyondTheLimitIsFlattenedAndToldOnce) {
  std::string nested = "{}\n{";
  for (int i = 0; i < 500; ++i) nested += "\"depth\" \"" + std::to_string(i) + "\"{";
  nested += "\"bottom\" \"yes\"" + std::string(500, '}') + "}{\"after\" \"yes\"}";
  map = ReadText(nested);
  EXPECT_NE(
      recorder.OnlyText().find("objects nested too deep, set side by side, the first in line 2"),
      std::string::npos);
  EXPECT_LE(DepthOf(*map), MAXDEPTH + 3);

  int keys = 0;
  ForEachEntity(*map, [&](const entity& e) {
    keys += e.GetKey("depth") != nullptr || e.GetKey("bottom") != nullptr;
  });
  EXPECT_EQ(keys, 501);
  EXPECT_STREQ(map->currentLayer()->getEntityList().back()->GetKey("after"), "yes");
}

TEST_F(EntityTest, TheCurrentLayerAndTheSelectionNeverOutliveTheirObjects) {
  map = ReadText("{}{}");
  entity* first = map->currentLayer();
  entity* second = map->AddLayer("second");
  entity* kept = map->AddChild(std::make_unique<entity>(*map->classSet));
  map->selection.Set({first->getEntityList().front().get(), kept});
  EntityPtr taken = map->TakeChild(map->IndexOf(*first));
  EXPECT_EQ(map->currentLayer(), second);
  EXPECT_EQ(map->selection, std::vector<entity*>{kept});
  taken = map->TakeChild(map->IndexOf(*second));
  EXPECT_EQ(map->currentLayer(), nullptr);
  EXPECT_TRUE(map->selection.empty());
  EXPECT_EQ(map->AddChild(taken->Copy())->Parent(), map.get());
  EXPECT_EQ(map->AddChild(taken->Copy())->Parent(), map->getEntityList().front().get());
}

}  // namespace
}  // namespace ferrowand
