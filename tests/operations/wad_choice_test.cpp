#include "operations/wad_choice.h"

#include "gamedata/wad_builder.h"
#include "operations/csg_commands.h"
#include "operations/edit_fixture.h"
#include "operations/face_texture.h"
#include "operations/held_files.h"
#include "operations/hollow.h"
#include "operations/texture_use.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

class WadChoiceTest : public EditTest {
 protected:
  void SetUp() override {
    dir.Write("maps/gfx/one.wad", WadBytes({{"wall", 8, 8, "w"}, {"floor", 8, 8, "f"}}));
    dir.Write("maps/two.wad", WadBytes({{"WALL", 16, 16, "x"}, {"sky", 8, 8, "s"}}));
    dir.Write("far/gone.wad", WadBytes({{"lava", 8, 8, "l"}}));
    Open(Box("a", 0, 0, 0));
    map->filename = dir.Path("maps/some.map");
    map->UseWads({"gfx/one.wad"});
  }
  std::vector<std::string> Order() const { return map->wads.ItemNames(); }
  // The texture that the box has.
  const Texture& Shown() { return *Get("a").brush.face(0).texture; }

  TempDir dir;
};

TEST_F(WadChoiceTest, TheListIsArrangedInSingleStepsAndFacesFollow) {
  EXPECT_EQ(Shown().width, 8);
  const std::string before = Text();
  EXPECT_EQ(AddWad(*map, dir.Path("maps/two.wad")), EditResult::Done);
  EXPECT_EQ(Order(), (Names{"gfx/one.wad", "two.wad"})) << "short, and with slashes";
  EXPECT_EQ(MoveWad(*map, 1, 0), EditResult::Done);
  EXPECT_EQ(Shown().width, 16) << "the first WAD wins";
  EXPECT_TRUE(map->modified());
  map->undo.Undo();
  EXPECT_EQ(Shown().width, 8);
  EXPECT_EQ(RemoveWad(*map, 0), EditResult::Done);
  EXPECT_EQ(Order(), Names{"two.wad"});
  EXPECT_EQ(RemoveWad(*map, 0), EditResult::LastWad);
  for (int i = 0; i < 2; ++i) map->undo.Undo();
  EXPECT_EQ(Order(), Names{"gfx/one.wad"});
  EXPECT_EQ(Text(), before);
  EXPECT_FALSE(map->undo.CanUndo());
  map->undo.Redo();
  EXPECT_EQ(Order(), (Names{"gfx/one.wad", "two.wad"}));

  const auto state = map->undo.State();
  EXPECT_EQ(AddWad(*map, dir.Path("maps/two.wad")), EditResult::WadTaken);
  EXPECT_EQ(AddWad(*map, dir.Path("nowhere.wad")), EditResult::CannotOpen);
  EXPECT_EQ(AddWad(*map, dir.Write("a;b.wad", WadBytes({}))), EditResult::NotAWadName);
  data.wads.Get(dir.Path("far/gone.wad"));
  EXPECT_EQ(AddWad(*map, dir.Write("gone.wad", WadBytes({}))), EditResult::OtherWadOpen);
  EXPECT_EQ(MoveWad(*map, 0, 2), EditResult::NothingSelected);
  EXPECT_EQ(map->undo.State(), state);
}

TEST_F(WadChoiceTest, RowsTellOfUseEqualNamesAndWhatIsMissing) {
  map->UseWads({"gfx/one.wad", "two.wad", "old/gone.wad"});
  std::vector<WadRow> rows = WadRows(*map, TextureUses(*map));
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].textures, 2u);
  EXPECT_EQ(rows[0].used, 1u);
  EXPECT_EQ(rows[0].faces, 6u);
  EXPECT_EQ(rows[0].shared, Names{"wall"});
  EXPECT_EQ(rows[1].used, 0u);
  EXPECT_EQ(rows[1].shared, Names{"WALL"});
  EXPECT_TRUE(rows[2].IsMissing());
  EXPECT_EQ(FindMissingWads(*map), 0u);
  data.wads.SetFolders({dir.Path("far")});
  EXPECT_EQ(FindMissingWads(*map), 1u);
  EXPECT_FALSE(WadRows(*map, TextureUses(*map))[2].IsMissing());
  EXPECT_FALSE(map->undo.CanUndo());
}

TEST_F(WadChoiceTest, WhatNoMapUsesIsClosedAndUndoOpensItAgain) {
  MapList maps;
  maps.push_back(std::move(map));
  map = nullptr;
  Map& open = *maps.front();
  AddWad(open, dir.Path("maps/two.wad"));
  RemoveWad(open, 0);
  const entity* box = FindNamed(open, "a");
  EXPECT_EQ(HeldFiles(data, maps).size(), 3u);
  EXPECT_EQ(PurgeWads(data, maps), Names{dir.Path("maps/gfx/one.wad")});
  EXPECT_EQ(PurgeWads(data, maps), Names{});
  EXPECT_EQ(HeldFiles(data, maps).size(), 2u);
  open.undo.Undo();
  EXPECT_EQ(box->brush.face(0).texture->width, 8);
  EXPECT_EQ(HeldFiles(data, maps)[2].users, 1u);
}

TEST_F(WadChoiceTest, NewFacesTakeTheTextureThatIsNamed) {
  const auto counts = [&] {
    const TextureUses uses(*map);
    return std::pair(uses.Of("wall").faces, uses.Of("floor").faces);
  };
  Pick({"a"});
  ASSERT_TRUE(HollowSelection(*map, 8, "floor"));
  EXPECT_EQ(counts(), std::pair(18u, 18u)) << "what is left of the sides, and the rest";
  map->undo.Undo();
  Open(Box("a", 0, 0, 0) + Box("cutter", 32, 32, 32));
  map->UseWads({dir.Path("maps/gfx/one.wad")});
  Pick({"cutter"});
  SubtractSelection(*map, "floor");
  const TextureUses uses(*map);
  EXPECT_GT(uses.Of("floor").faces, 0u);
  EXPECT_EQ(Get("a").getEntityList().front()->brush.face(0).xscale, 1);
}

}  // namespace
}  // namespace ferrowand
