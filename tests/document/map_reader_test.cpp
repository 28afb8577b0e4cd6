#include "document/document_fixture.h"
#include "document/map.h"
#include "document/read_log.h"
#include "gamedata/wad_builder.h"
#include "support/cases.h"
#include "support/document_checks.h"

namespace ferrowand {
namespace {

using MapReaderTest = DocumentTest;

TEST_F(MapReaderTest, ANewMapHasOneLayerAndNothingElse) {
  const Map map(data);
  EXPECT_EQ(ExtendedText(map),
            "{\n\t\"XMPferroflags\" \"0\"\n\t\"classname\" \"worldspawn\"\n"
            "\t\"XMPentityname\" \"worldspawn\"\n"
            "{\n\t\"XMPferroflags\" \"0\"\n\t\"classname\" \"layer\"\n"
            "\t\"XMPentityname\" \"layer1\"\n\t\"XMPstate\" \"0\"\n\t\"XMPcolourr\" \"0.8\"\n"
            "\t\"XMPcolourg\" \"0.1\"\n\t\"XMPcolourb\" \"0.1\"\n}\n}\n");
  EXPECT_EQ(map.currentLayer(), map.getEntityList().front().get());
  EXPECT_EQ(map.filename, "unnamed.map");
  EXPECT_EQ(map.state, 0);
  EXPECT_EQ(map.optionBits(), 7);
  EXPECT_EQ(map.Name(), "Unnamed");
}

TEST_F(MapReaderTest, AQuakeMapGainsALayerThatHoldsEverything) {
  const auto map = ReadText(
      "\xEF\xBB\xBF// one\r\n// two\n\n \t// three\n\n{\n\"classname\" \"worldspawn\"\n\"message\" "
      "\"M\"\n" +
      Cuboid(0, 0, 0, 8, 8, 8) + Cuboid(8, 0, 0, 16, 8, 8) + "}\n{\n\"classname\" \"light\"\n}\n");
  EXPECT_TRUE(recorder.messages.empty()) << recorder.OnlyText();
  EXPECT_EQ(map->Name(), "M");
  ASSERT_EQ(map->getEntityList().size(), 1u);
  const entity& layer = *map->getEntityList().front();
  EXPECT_EQ(map->currentLayer(), &layer);
  EXPECT_STREQ(layer.GetKey("XMPentityname"), "import");
  EXPECT_STREQ(layer.GetKey("XMPcolourr"), "0.8");
  ASSERT_EQ(layer.getEntityList().size(), 3u);
  EXPECT_EQ(layer.getEntityList()[1]->GetBounds().mins, Vec3(8, 0, 0));
  EXPECT_STREQ(layer.getEntityList()[2]->GetKey("classname"), "light");
  EXPECT_STREQ(map->GetKey("XMPentityname"), "worldspawn");
}

TEST_F(MapReaderTest, EveryKindOfLineEndReadsTheSame) {
  const std::string text = FileText(FERROWAND_TEST_DATA "/organised.map");
  const std::string expected = QuakeText(*ReadText(text));
  for (const std::string end : {"\r", "\r\n"}) {
    std::string other;
    for (const char c : text) other += c == '\n' ? end : std::string(1, c);
    EXPECT_EQ(QuakeText(*ReadText(other)), expected);
  }
  EXPECT_TRUE(recorder.messages.empty());
}

// By a missing brace, or by one too many; in a Quake map only brushes lie in entities.
TEST_F(MapReaderTest, WhereBracesDoNotMatchEverythingIsReadAsWhatItLooksLike) {
  const std::string a = Cuboid(0, 0, 0, 8, 8, 8), b = Cuboid(8, 0, 0, 16, 8, 8);
  const std::string open = a.substr(0, a.size() - 2), bare = a.substr(2);
  const std::string door = "\"classname\" \"door\"\n", world = "\"classname\" \"worldspawn\"\n";
  const std::string lamp = "{\n\"classname\" \"lamp\"\n\"origin\" \"1 2 3\"\n}\n";
  const std::string expected =
      QuakeText(*ReadText("{\n" + world + a + b + "}\n{\n" + door + a + b + "}\n" + lamp));
  const auto with = [&](const std::string& inWorld, const std::string& inDoor) {
    return "{\n" + world + inWorld + "}\n{\n" + door + inDoor + "}\n" + lamp;
  };
  for (const std::string& text :
       {with(open + b, a + b), with(bare + b, a + b), with("{\n" + a + b, a + b),
        with(a + "}\n" + b, a + b), with(a + b, open + b), with(a + b, bare + b),
        with(a + b, a + "}\n" + b), with(a + b, "{\n" + a + b), with(a + b + "}\n", a + b),
        with(a + b, a + b + "}\n"), with("}\n" + a + b, a + b), "{\n" + with(a + b, a + b),
        "{\n" + world + a + b + "{\n" + door + a + b + "}\n" + lamp,
        "{\n" + world + a + b + "}\n" + door + a + b + "}\n" + lamp,
        "{\n" + world + a + b + "}\n{\n" + door + a + b + lamp}) {
    recorder.messages.clear();
    const auto map = ReadText(text);
    EXPECT_EQ(QuakeText(*map), expected) << text;
    EXPECT_EQ(recorder.messages.size(), 1u) << text;
    EXPECT_TRUE(map->readWithLoss());
  }
}

// The game makes a world of the first alone.
TEST_F(MapReaderTest, WhatTheFirstWorldLacksOfOthersJoinsIt) {
  const std::string world = "{\n\"classname\" \"worldspawn\"\n", a = Cuboid(0, 0, 0, 8, 8, 8);
  const std::string first = world + "\"message\" \"first\"\n\"wad\" \"a.wad;b.wad\"\n" + a;
  const std::string other =
      world + "\"message\" \"other\"\n\"wad\" \"c.wad;a.wad\"\n\"sky\" \"blue\"\n" + a + "}\n";
  for (const std::string& text :
       {first + "}\n" + other, first + "{\n\"classname\" \"layer\"\n" + other + "}\n}\n"}) {
    recorder.messages.clear();
    const auto map = ReadText(text + "{\n\"classname\" \"light\"\n}\n");
    EXPECT_TRUE(IsPlayable(*map)) << IsPlayable(*map).message();
    EXPECT_EQ(map->Name(), "first");
    EXPECT_STREQ(map->GetKey("sky"), "blue");
    EXPECT_EQ(map->wads.Names(), "a.wad;b.wad;c.wad");
    EXPECT_NE(recorder.messages.back().text.find("1 more worldspawns"), std::string::npos);
    EXPECT_TRUE(map->readWithLoss());
  }
}

TEST_F(MapReaderTest, TheFirstLayerOfTheFileBecomesCurrent) {
  const auto map = ReadText(
      "{{\"classname\" \"info\"}{\"classname\" \"LAYER\"\"XMPentityname\" \"a\"}"
      "{\"classname\" \"layer\"\"XMPentityname\" \"b\"}}{\"classname\" \"later\"}");
  ASSERT_EQ(map->getEntityList().size(), 3u);
  EXPECT_EQ(map->currentLayer(), map->getEntityList()[1].get());
  EXPECT_STREQ(map->currentLayer()->getEntityList().front()->GetKey("classname"), "later");
}

TEST_F(MapReaderTest, ANewerVersionWarns) {
  // The comparison goes by characters: "1.1" is newer.
  const auto warnings = [&](const std::string& version) {
    recorder.messages.clear();
    ReadText("{\"XMPversion\" \"" + version + "\"\"XMPversion\" \"" + version + "\"}");
    return recorder.messages.size();
  };
  for (const char* old : {"1.01", "1.00", "0.99", "", "1"}) EXPECT_EQ(warnings(old), 0u) << old;
  for (const char* newer : {"1.02", "2.0", "1.1", "1.01b"}) EXPECT_EQ(warnings(newer), 1u) << newer;
  ReadText("{\"XMPversion\" \"2\"}");
  EXPECT_EQ(recorder.messages.front().icon, Icon::Warning);
  EXPECT_EQ(recorder.Said().front(),
            "Warning: This map was created with a version of Ferrowand more advanced than this "
            "one. It may "
            "contain information which may be corrupted by this version. This you are not sure, "
            "save the map with a new filename.");
}

TEST_F(MapReaderTest, WadsAreNamedInOrderAndKeepTheirNamesWhenMissing) {
  const auto map = ReadText("{\"WAD\" \"gone/a.wad;b.wad;other\\A.WAD\"}");
  EXPECT_EQ(map->wads.Names(), "b.wad;other\\A.WAD");
  EXPECT_EQ(recorder.messages.size(), 3u);
  EXPECT_EQ(ReadText("{}")->wads.Names(), data.wads.DefaultName());
}

TEST_F(MapReaderTest, FacesHaveTheTexturesOfTheFirstWadThatKnowsThemWhereverItIsNamed) {
  const std::string floors = temp.Write("floors.wad", WadBytes({{"floor", 8, 8, "f"}}));
  const std::string walls = temp.Write("walls.wad", WadBytes({{"WALL", 8, 8, "w"}}));
  const std::string more = temp.Write("more.wad", WadBytes({{"wall", 8, 8, "m"}}));
  const std::string wads = "\"wad\" \"" + floors + ";" + walls + ";" + more + "\"";
  const std::string faces = Cuboid(0, 0, 0, 8, 8, 8), own = faces.substr(2, faces.size() - 4);
  const std::string second = "}{\"classname\" \"worldspawn\"";
  for (const std::string& world : {wads + faces, faces + wads, own + wads, faces + second + wads}) {
    const auto map = ReadText("{" + world + "}{\"classname\" \"light\"" + faces + "}");
    EXPECT_TRUE(IsConsistent(*map)) << world;
    ForEachEntity(*map, [&](const entity& e) {
      for (const Face& face : e.brush.Faces()) EXPECT_EQ(face.texture->wad->FileName(), walls);
    });
  }
}

TEST_F(MapReaderTest, MergingKeepsWadsAndClassesOfTheDocument) {
  Map map(data);
  map.wads.Add("mine.wad", data.wads.Default());
  TextReader reader(reporter);
  reader.Open(temp.Write("part.xmp", "{\"wad\" \"other.wad\"\"XMPqc\" \"other.qc\"{}}"));
  const unsigned flags = map.ReadMap(reader, READ_MERGE);
  EXPECT_TRUE(flags & READ_MERGE);
  EXPECT_EQ(map.wads.Names(), "mine.wad");
  EXPECT_EQ(map.classSetName, data.classes.DefaultName());
  EXPECT_STREQ(map.GetKey("wad"), "other.wad");
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(MapReaderTest, ClassesNamedBehindTheEntitiesAreBoundAllTheSame) {
  const std::string qc = temp.Write("game.qc", "/*QUAKED door (0 1 0) ?\r\n*/");
  const auto map = ReadText("{{\"classname\" \"door\"}\"XMPqc\" \"" + qc + "\"}");
  EXPECT_EQ(map->currentLayer()->getEntityList().front()->getClass()->classname, "door");
  EXPECT_EQ(map->classSetName, qc);
}

TEST_F(MapReaderTest, FiftyWorldBrushesAreReadACall) {
  std::string text = "{";
  for (int i = 0; i < 120; ++i) text += Cuboid(i * 16, 0, 0, i * 16 + 16, 16, 16);
  TextReader reader(reporter);
  reader.Open(temp.Write("many.map", text + "}{}"));
  Map map(data);
  unsigned flags = map.ReadMap(reader, 0);
  EXPECT_EQ(map.readProgress(), 50u);
  flags = map.ReadMap(reader, flags);
  EXPECT_EQ(map.readProgress(), 100u);
  flags = map.ReadMap(reader, flags);
  EXPECT_EQ(map.readProgress(), 0u);
  EXPECT_EQ(map.currentLayer()->getEntityList().size(), 121u);
}

}  // namespace
}  // namespace ferrowand
