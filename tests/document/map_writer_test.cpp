#include <filesystem>

#include "document/document_fixture.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/transform.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

const std::string DATA = FERROWAND_TEST_DATA;

class MapWriterTest : public DocumentTest, public MapObserver {
 protected:
  void OnStatus(const std::string& text) override { status.push_back(text); }

  std::vector<std::string> status;
};

// The files show layers, a hidden brush, a template with two instances and an embedded map.
TEST_F(MapWriterTest, BothFormatsAreWrittenByteForByte) {
  const auto map = LoadMap(data, DATA + "/organised.xmp");
  ASSERT_NE(map, nullptr);
  EXPECT_EQ(ExtendedText(*map), FileText(DATA + "/organised.xmp"));
  EXPECT_EQ(QuakeText(*map), FileText(DATA + "/organised.map"));
  EXPECT_EQ(QuakeText(*map, WRITE_VISIBLE_ONLY), FileText(DATA + "/organised_visible.map"));
}

TEST_F(MapWriterTest, TheNameDecidesTheFormat) {
  for (const auto& [name, target, quakeMap] :
       Cases<const char*, const char*, bool>{{"room", "room.xmp", false},
                                             {"room.MAP", "room.MAP", true},
                                             {"room.bak", "room.bak", false},
                                             {"a.b/room", "a.b/room.xmp", false},
                                             {"roommap", "roommap.xmp", false},
                                             {"room.", "room..xmp", false},
                                             {"two.maps", "two.maps", false}}) {
    std::filesystem::create_directories(temp.Path("a.b"));
    Map map(data);
    map.AddObserver(*this);
    EditStep(map).ChangeKeys(map);
    EXPECT_TRUE(map.Save(temp.Path(name), 0, {})) << name;
    EXPECT_EQ(map.filename, temp.Path(target));
    EXPECT_FALSE(map.modified());
    EXPECT_EQ(temp.Read(target).starts_with("//////////////////////////////\n"), quakeMap);
    EXPECT_EQ(status.back(), quakeMap ? "Saved MAP format" : "Saved Extended MAP format");
  }
}

TEST_F(MapWriterTest, TheWorldTellsWhatItIsMadeWith) {
  const auto map = ReadText("{\"Message\" \"mine\"\"wad\" \"a.wad;b.wad\"\"sounds\" \"4\"}");
  map->classSetName = "mine.qc";
  const SaveSettings settings{.onlyOneWad = true, .defaultWorldType = 2, .defaultSounds = 9};
  ASSERT_TRUE(map->Save(temp.Path("room.xmp"), 0, settings));
  const std::string first = temp.Read("room.xmp");
  EXPECT_NE(first.find("\t\"Message\" \"mine\"\n\t\"sounds\" \"4\"\n"
                       "\t\"wad\" \"a.wad;b.wad\"\n\t\"XMPqc\" \"mine.qc\"\n\t\"XMPversion\" "
                       "\"1.01\"\n\t\"worldtype\" \"2\"\n{\n"),
            std::string::npos)
      << first;
  EXPECT_EQ(first.find("Ferrowand-generated"), std::string::npos);
  ASSERT_TRUE(map->Save(temp.Path("room.map"), 0, settings));
  EXPECT_NE(temp.Read("room.map").find("\t\"wad\" \"a.wad\"\n"), std::string::npos);
  Map fresh(data);
  ASSERT_TRUE(fresh.Save(temp.Path("room"), 0, {}));
  EXPECT_EQ(fresh.Name(), "Ferrowand-generated map!");
  EXPECT_EQ(fresh.GetKey("wad"), nullptr) << "nothing to name";
}

TEST_F(MapWriterTest, SavingTwiceGivesTheSameFile) {
  for (const char* keys :
       {"", "\"message\" \"mine\"", "\"sounds\" \"1\"\"wad\" \"\"\"worldtype\" \"2\""}) {
    const auto map = ReadText(std::string("{") + keys + "}");
    ASSERT_TRUE(map->Save(temp.Path("room.xmp"), 0, {}));
    const std::string first = temp.Read("room.xmp");
    ASSERT_TRUE(map->Save(temp.Path("room.xmp"), 0, {}));
    EXPECT_EQ(temp.Read("room.xmp"), first);
    ASSERT_TRUE(LoadMap(data, temp.Path("room.xmp"))->Save(temp.Path("again.xmp"), 0, {}));
    EXPECT_EQ(temp.Read("again.xmp").substr(60), first.substr(60));
  }
}

TEST_F(MapWriterTest, NoKeyOfTheEditorReachesTheGame) {
  const auto map = ReadText(
      "{\"xmpa\" \"1\"\"XmPb\" \"1\"\"XM\" \"1\"}{\"classname\" \"light\"\"xMpc\" \"1\"\"axmp\" "
      "\"1\"}");
  const std::string text = QuakeText(*map);
  for (const char* gone : {"xmpa", "XmPb", "xMpc", "XMP"}) {
    EXPECT_EQ(text.find(gone), std::string::npos) << gone;
  }
  EXPECT_NE(text.find("{\n\t\"classname\" \"light\"\n\t\"axmp\" \"1\"\n}\n"), std::string::npos);
  EXPECT_NE(text.find("\t\"XM\" \"1\"\n"), std::string::npos);
}

// They stand in comments, which end with their line.
TEST_F(MapWriterTest, NamesOfSeveralLinesStayComments) {
  const auto map = ReadText("{" + Cuboid(0, 0, 0, 8, 8, 8) + "}{\"classname\" \"light\"}");
  for (const EntityPtr& e : map->currentLayer()->getEntityList()) {
    e->SetKey("XMPentityname", "one\r{\ntwo");
  }
  const auto read = ReadText(QuakeText(*map));
  EXPECT_EQ(read->currentLayer()->getEntityList().size(), 2u);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(MapWriterTest, FacesBesideChildrenAreReadBack) {
  std::string faces = Cuboid(0, 0, 0, 8, 8, 8);
  faces = faces.substr(2, faces.size() - 4);
  const std::string body = Cuboid(8, 0, 0, 16, 8, 8) + Cuboid(16, 0, 0, 24, 8, 8) + faces;
  const auto map = ReadText("{\"a\" \"1\"" + body + "}{\"classname\" \"func_wall\"" + body + "}");
  const std::string extended = ExtendedText(*map);
  const std::string quake = QuakeText(*map);
  EXPECT_EQ(ExtendedText(*ReadText(extended)), extended);
  EXPECT_EQ(ReadText(quake)->brush.getNumFaces(), 6);
  EXPECT_EQ(ReadText(quake)->currentLayer()->getEntityList().size(), 3u);
  EXPECT_TRUE(recorder.messages.empty()) << recorder.OnlyText();
}

TEST_F(MapWriterTest, WhatASaveMovesIsSaidBehindItsText) {
  const auto map = ReadText("{" + Cuboid(0, 0, 0, 65, 64, 64) + "}");
  map->AddObserver(*this);
  entity& brush = *map->currentLayer()->getEntityList().front();
  TransformEntity(brush, Matrix::Diagonal(0.5f, 1, 0.51f), {});
  const std::string moved = "2 faces lie between whole units and were moved, by up to 0.50 units";
  EXPECT_TRUE(map->Save(temp.Path("a.xmp"), 0, {}));
  EXPECT_EQ(status.back(), "Saved Extended MAP format; " + moved);
  // For the game the same again through an instance, and the template not at all.
  brush.SetKey("classname", "templateClass");
  brush.SetKey("XMPentityname", "t");
  auto instance = std::make_unique<entity>(*map->classSet);
  instance->SetKey("classname", "templateInstance");
  instance->SetKey("XMPclass", "t");
  map->AddChild(std::move(instance));
  EXPECT_TRUE(map->Export(temp.Path("a.map"), 0, {}));
  EXPECT_EQ(status.back(), "Saved MAP format; " + moved);
  TransformEntity(brush, Matrix::Diagonal(0.001f, 1, 1), {});
  temp.Write("a.xmp.1.bak/in the way", "");
  EXPECT_TRUE(map->Save(temp.Path("a.xmp"), 0, {.backups = 1}));
  EXPECT_TRUE(status.back().ends_with("were lost, without keeping the version before"));
}

TEST_F(MapWriterTest, WhatTheGameGetsOtherwiseBecauseItIsHiddenIsCounted) {
  const std::string hidden = "\"classname\" \"hidden\"\"XMPoldclassname\" ";
  const auto map = ReadText("{" + ("{" + hidden + "\"light\" \"origin\" \"0 0 0\"}") +
                            ("{" + hidden + "\"func_door\"" + Cuboid(0, 0, 0, 8, 8, 8) + "}") +
                            ("{" + hidden + "\"brush\"" + Cuboid(0, 0, 0, 8, 8, 8) + "}}"));
  map->AddObserver(*this);
  ASSERT_TRUE(map->Export(temp.Path("room.map"), 0, {}));
  EXPECT_EQ(status.back(),
            "Saved MAP format, hidden and left out: 1, hidden and made brushes of the world: 1");
}

TEST_F(MapWriterTest, ASaveThatFailsCostsNothing) {
  const auto map = ReadText("{}");
  const std::string oldName = map->filename;
  EditStep(*map).ChangeKeys(*map);
  map->AddObserver(*this);
  EXPECT_FALSE(map->Save(temp.Path("missing/room.map"), 0, {}));
  EXPECT_FALSE(recorder.messages.empty());
  EXPECT_EQ(map->filename, oldName);
  EXPECT_TRUE(map->modified());
  EXPECT_EQ(status, std::vector<std::string>{"Saved MAP format"});
}

}  // namespace
}  // namespace ferrowand
