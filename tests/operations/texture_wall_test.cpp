// What the wall of a texture browser holds, and where it stands.
#include "operations/texture_wall.h"

#include "gamedata/wad_builder.h"
#include "operations/edit_fixture.h"
#include "operations/texture_use.h"
#include "support/temp_dir.h"
#include "views/wall_layout.h"

namespace ferrowand {
namespace {

class TextureWallTest : public EditTest {
 protected:
  // A box of each of the names, in a map with two WADs: "two" has a texture of the first, too.
  void OpenTextured(const std::vector<std::string>& names) {
    const std::string one = dir.Write("one.wad", WadBytes({{"wall", 64, 64, "w"},
                                                           {"Floor", 128, 64, "f"},
                                                           {"+1lamp", 16, 16, "b"},
                                                           {"+0lamp", 16, 16, "a"},
                                                           {"+alamp", 16, 16, "c"}}));
    const std::string two =
        dir.Write("two.wad", WadBytes({{"WALL", 32, 32, "x"}, {"sky", 256, 128, "s"}}));
    std::string boxes;
    int x = 0;
    for (const std::string& name : names) {
      std::string box = Cuboid(x, 0, 0, x + 64, 64, 64);
      for (std::size_t at = 0; (at = box.find("wall", at)) != box.npos; at += name.size()) {
        box.replace(at, 4, name);
      }
      boxes += box;
      x += 128;
    }
    map = ReadText("{\"classname\" \"worldspawn\" \"wad\" \"" + one + ";" + two + "\"\n" + boxes +
                   "}");
  }
  std::string Shown(const WallQuery& query) const {
    const TextureWall wall = WallOf(*map, TextureUses(*map), query);
    std::string text;
    for (const WallGroup& group : wall.groups) {
      if (!text.empty()) text += "| ";
      for (std::size_t i = group.begin; i < group.end; ++i) {
        text += ShownTextureName(wall.items[i].name) + " ";
      }
    }
    return text;
  }

  TempDir dir;
};

TEST_F(TextureWallTest, ViewsOrdersAndTypedWordsDecideWhatIsSeen) {
  OpenTextured({"wall", "Wall", "+1lamp", "gone", "\"\"", "a_name_of_16_ltr"});
  const std::string missing = "(no name) a_name_of_16_ltr gone ";
  const std::vector<std::string> recent{"sky", "wall", "GONE"}, favourites{"floor", "+ALAMP"};
  const auto shows = [&](WallShows which, WallOrder order, const char* text = "") {
    return Shown({which, order, text, recent, favourites});
  };
  EXPECT_EQ(shows(WallShows::Full, WallOrder::Name), missing + "| +0lamp Floor sky wall ");
  EXPECT_EQ(shows(WallShows::Full, WallOrder::Size), missing + "| +0lamp wall Floor sky ");
  EXPECT_EQ(shows(WallShows::Full, WallOrder::Use), missing + "| wall +0lamp Floor sky ");
  EXPECT_EQ(shows(WallShows::Full, WallOrder::Wad), missing + "| +0lamp Floor wall | sky ");
  EXPECT_EQ(shows(WallShows::Used, WallOrder::Name), missing + "| +0lamp wall ");
  EXPECT_EQ(shows(WallShows::Recent, WallOrder::Name), "gone | sky wall ");
  EXPECT_EQ(shows(WallShows::Favourites, WallOrder::Wad), "+0lamp Floor ");
  EXPECT_EQ(shows(WallShows::Cached, WallOrder::Name), "");
  map->wads.FindTexture("sky")->wad->Pixels(*map->wads.FindTexture("sky"));
  EXPECT_EQ(shows(WallShows::Cached, WallOrder::Name), "sky ");

  for (const auto& [text, found] :
       std::initializer_list<std::pair<const char*, const char*>>{{"64x64", "wall "},
                                                                  {"*x64", "Floor wall "},
                                                                  {"l OO", "Floor "},
                                                                  {"+a", "+0lamp "},
                                                                  {"s?y", "sky "},
                                                                  {"64x64 floor", ""},
                                                                  {"ltr", "a_name_of_16_ltr "},
                                                                  {"0x0", ""}}) {
    EXPECT_EQ(shows(WallShows::Full, WallOrder::Name, text), found) << text;
  }
}

TEST_F(TextureWallTest, UsesAreCountedByFacesAndBrushes) {
  OpenTextured({"wall", "WALL", "gone"});
  map->getEntityList().front()->getEntityList().front()->brush.face(0).SetName("sky");
  const TextureUses uses(*map);
  EXPECT_EQ(InWords(uses.Of("Wall")), "11 faces of 2 brushes");
  EXPECT_EQ(InWords(uses.Of("sky")), "1 face of 1 brush");
  EXPECT_EQ(InWords(uses.Of("floor")), "not used");
  const TextureWall wall = WallOf(*map, uses, {});
  EXPECT_EQ(wall.numTextures, 5u);
  EXPECT_EQ(wall.items[wall.Find("+ALAMP")].name, "+0lamp");
  EXPECT_EQ(wall.Find("nowhere"), wall.items.size());
}

TEST_F(TextureWallTest, RowsAreFilledAndKeysGoToTheNearestOfTheNextRow) {
  OpenTextured({"gone"});
  const TextureWall wall = WallOf(*map, TextureUses(*map), {});
  // gone | +0lamp Floor sky wall
  const WallLayout layout(wall, 300,
                          {.zoom = 100,
                           .gap = 10,
                           .caption = 20,
                           .heading = 30,
                           .leastWidth = 40,
                           .missing = {64, 64}});
  EXPECT_EQ(layout.Heading(1), (PixelRect{0, 134, 300, 164}));
  EXPECT_EQ(layout.Cell(0), (PixelRect{10, 40, 74, 124}));
  EXPECT_EQ(layout.Cell(1), (PixelRect{10, 174, 50, 210}));
  EXPECT_EQ(layout.Picture(1), (PixelRect{10, 174, 26, 190}));
  EXPECT_EQ(layout.Cell(2), (PixelRect{60, 174, 188, 258}));
  EXPECT_EQ(layout.Cell(3), (PixelRect{10, 278, 266, 426}));
  EXPECT_EQ(layout.Cell(4), (PixelRect{10, 446, 74, 530}));
  EXPECT_EQ(layout.Height(), 540);
  EXPECT_EQ(layout.At({187, 257}), 2u);
  EXPECT_FALSE(layout.At({187, 258}));
  EXPECT_EQ(layout.Within(134, 268), std::pair(std::size_t{1}, std::size_t{3}));
  EXPECT_EQ(layout.Beside(2, WallStep::Down, 200), 3u);
  EXPECT_EQ(layout.Beside(3, WallStep::Up, 200), 2u);
  EXPECT_EQ(layout.Beside(0, WallStep::Up, 200), 0u);
  EXPECT_EQ(layout.Beside(0, WallStep::PageDown, 10), 1u);
  EXPECT_EQ(layout.Beside(0, WallStep::PageDown, 300), 3u);
  EXPECT_EQ(layout.Beside(4, WallStep::PageUp, 9999), 0u);
  EXPECT_EQ(layout.Beside(4, WallStep::Right, 200), 4u);
  EXPECT_EQ(layout.Beside(99, WallStep::Down, 200), 0u);
}

}  // namespace
}  // namespace ferrowand
