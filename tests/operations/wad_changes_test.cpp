#include "operations/wad_changes.h"

#include "gamedata/wad_builder.h"
#include "operations/edit_fixture.h"
#include "operations/face_texture.h"

namespace ferrowand {
namespace {

class WadChangesTest : public EditTest {
 protected:
  void SetUp() override {
    path = temp.Write("test.wad", WadBytes({{"wall", 8, 8, "w"},
                                            {"+0fire", 8, 8, "0"},
                                            {"+1FIRE", 8, 8, "1"},
                                            {"+afire", 8, 8, "a"},
                                            {"+0fir", 8, 8, "x"}}));
    for (int i = 0; i < 2; ++i) {
      Open(Box("a", 0, 0, 0) + Box("beyond", 40000, 0, 0), Box("far", 512, 0, 0));
      map->UseWads({path});
      PaintFace(*map, Get("a"), 1, "+0fir");
      maps.push_back(std::move(map));
    }
  }
  WadFile& Wad() { return *maps[0]->wads.Items()[0].wad; }
  Texture& Of(const char* name) { return *Wad().FindTexture(name); }
  static const Face& FaceOf(const Map& of) {
    const Face* found = nullptr;
    ForEachEntity(of, [&](const entity& e) {
      if (!found && !e.brush.Faces().empty()) found = &std::as_const(e.brush).face(0);
    });
    return *found;
  }

  std::string path;
  std::vector<std::unique_ptr<Map>> maps;
};

TEST_F(WadChangesTest, ANewNameGoesToTheFacesOfAllMapsAsOneStepInEach) {
  Texture& wall = Of("wall");
  const std::string before = ExtendedText(*maps[1]);
  const TextureRename renames[] = {{&wall, "brick"}, {&Of("+0fir"), "plain"}};
  ASSERT_TRUE(RenameInWad(maps, Wad(), renames));
  for (const auto& each : maps) {
    EXPECT_EQ(FaceOf(*each).WrittenName(), "brick");
    EXPECT_EQ(FaceOf(*each).texture, &wall);
    EXPECT_EQ(ExtendedText(*each).find("wall "), std::string::npos)
        << "hidden ones too, and those beyond the world";
    EXPECT_EQ(each->undo.StepCount(), 2u);
  }
  maps[1]->undo.Undo();
  EXPECT_EQ(ExtendedText(*maps[1]), before);
  EXPECT_NE(FaceOf(*maps[1]).texture, &wall) << "the WAD has that name no more";
  maps[1]->undo.Redo();
  EXPECT_EQ(FaceOf(*maps[1]).texture, &wall);
}

TEST_F(WadChangesTest, WhatGoesIsHeldByNoFaceAndWhatComesIsFoundByThoseThatMissedIt) {
  Texture* const wall[] = {&Of("wall")};
  ASSERT_TRUE(RemoveFromWad(maps, Wad(), wall));
  for (const auto& each : maps) EXPECT_EQ(FaceOf(*each).texture, Wad().BadTexture());
  maps[0]->undo.Undo();
  maps[0]->undo.Redo();
  EXPECT_EQ(FaceOf(*maps[0]).texture, Wad().BadTexture());
  auto copy = CopyOf(Of("+0fire"));
  copy->entry.name = {'W', 'A', 'L', 'L'};
  ASSERT_TRUE(AddToWad(maps, Wad(), std::move(copy)));
  for (const auto& each : maps) EXPECT_EQ(FaceOf(*each).texture, &Of("wall"));
  EXPECT_EQ(Wad().Pixels(Of("wall"))[0], '0');
}

TEST_F(WadChangesTest, FramesAreThoseOfOneNameAndTakeANewOneTogether) {
  Names names;
  for (const Texture* frame : FramesOf(Of("+1fire"))) {
    names.push_back(NameOfFrame(frame->Name(), "+0lava"));
  }
  EXPECT_EQ(names, (Names{"+0lava", "+1lava", "+alava"}));
  EXPECT_EQ(FramesOf(Of("wall")).size(), 1u);
  EXPECT_EQ(NameOfFrame("+1fire", "plain"), "plain");
  EXPECT_TRUE(IsTaken(Wad(), "+1fire") && !IsTaken(Wad(), "+1fire", &Of("+1fire")));
}

}  // namespace
}  // namespace ferrowand
