#include "operations/texture_search.h"

#include <cmath>
#include <random>
#include <set>

#include "base/options.h"
#include "document/texture_projection.h"
#include "gamedata/wad_builder.h"
#include "operations/edit_fixture.h"
#include "operations/face_texture.h"
#include "operations/layers.h"
#include "operations/texture_choice.h"
#include "operations/visibility.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

class TextureSearchTest : public EditTest {
 protected:
  TextureSearchTest() {
    wad = dir.Write("some.wad", WadBytes({{"met1_1", 64, 64, "a"},
                                          {"met1_2", 64, 32, "b"},
                                          {"met2_1", 128, 128, "c"},
                                          {"tiny", 24, 40, "d"}}));
  }
  void SetUp() override {
    Open(Textured("a", 0, "met1_1") + Textured("b", 128, "met1_2") + Textured("c", 256, "gone"));
    map->UseWads({wad});
  }
  static std::string Textured(const std::string& name, int x, const std::string& texture) {
    std::string box = Box(name, x, 0, 0);
    for (std::size_t at = 0; (at = box.find("wall", at)) != box.npos; at += texture.size()) {
      box.replace(at, 4, texture);
    }
    return box;
  }
  std::size_t Count(const TextureQuery& query, TextureScope scope = TextureScope::Map) {
    return FindFaces(*map, query, scope).faces.size();
  }
  EditResult Replace(const TextureQuery& query, const TextureReplacement& by) {
    return ReplaceTextures(*map, FindFaces(*map, query, TextureScope::Map), query, by,
                           FoundAs::Brushes, count);
  }
  std::set<std::string> NamesOn(const std::string& box) {
    std::set<std::string> names;
    for (const Face& face : Get(box).brush.Faces()) names.emplace(face.WrittenName());
    return names;
  }

  TempDir dir;
  std::string wad;
  ReplaceCount count;
};

TEST_F(TextureSearchTest, WholeNamesPatternsAndScopesFindFaces) {
  EXPECT_EQ(Count({.name = "MET1_1"}), 6u);
  EXPECT_EQ(Count({.name = "met"}), 0u);
  EXPECT_EQ(Count({.name = ""}), 0u);
  EXPECT_EQ(Count({.name = "met?_*"}), 12u);
  EXPECT_EQ(Count({.name = "*", .onlyMissing = true}), 6u);
  Get("a").brush.face(2).SetName("");
  Get("a").brush.face(3).SetName("a_name_of_16_ltr");
  EXPECT_EQ(Count({.name = "\"\""}), 1u);
  EXPECT_EQ(Count({.name = "a_name*"}), 1u);
  Pick({"b"});
  EXPECT_EQ(Count({.name = "*"}, TextureScope::Selection), 6u);
  HideSelection(*map);
  const FoundFaces found = FindFaces(*map, {.name = "met*"}, TextureScope::Map);
  EXPECT_EQ(found.faces.size(), 4u);
  EXPECT_EQ(found.unreached, 6u);
  EXPECT_EQ(found.Brushes(), std::vector<entity*>{&Get("a")});
  const PickedFace picked[] = {{&Get("a"), 1}, {&Get("a"), 2}};
  map->pickedFaces.Set(picked);
  EXPECT_EQ(Count({.name = "*_1"}, TextureScope::Selection), 1u);
  EXPECT_EQ(ApplyTexture(*map, "tiny"), EditResult::Done);
  EXPECT_EQ(NamesOn("a"), (std::set<std::string>{"a_name_of_16_ltr", "met1_1", "tiny"}));
  MakeLayerCurrent(*map, Get("locked"));
  EXPECT_EQ(Count({.name = "*"}, TextureScope::Layer), 0u);
}

TEST_F(TextureSearchTest, WildcardsGoOverIntoTheNewNameAndAllIsOneStep) {
  Open(Textured("a", 0, "met1_1") + Textured("b", 128, "met1_2") +
       Textured("beyond", 40000, "met1_1"));
  map->UseWads({wad});
  const std::string before = Text();
  EXPECT_EQ(Replace({.name = "met1_*"}, {.name = "x*y"}), EditResult::Done);
  EXPECT_EQ(NamesOn("a"), std::set<std::string>{"x1y"});
  EXPECT_EQ(NamesOn("b"), std::set<std::string>{"x2y"});
  EXPECT_EQ(Get("beyond").brush.FarFaces()[5].Name(), "x1y");
  EXPECT_EQ(count.faces, 18u);
  EXPECT_EQ(count.brushes, 3u);
  EXPECT_EQ(count.missing, (std::vector<std::string>{"x1y", "x2y"}));
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Get("a"), &Get("b"), &Get("beyond")}));
  ExpectOneStep(before);
  map->undo.Undo();
  const auto state = map->undo.State();
  for (const char* name : {"", "a b", "a_name_of_16_ltr", "x**", "q\"q"}) {
    EXPECT_EQ(Replace({.name = "met1_*"}, {.name = name}), EditResult::NotATextureName) << name;
  }
  EXPECT_EQ(Replace({.name = "nothing"}, {.name = "tiny"}), EditResult::NothingSelected);
  EXPECT_EQ(Replace({.name = "met1_1"}, {.name = "met1_1"}), EditResult::Done);
  EXPECT_EQ(count.faces, 0u);
  EXPECT_EQ(map->undo.State(), state);
}

// What a save and the game make of it: every corner at the same part of the picture, but for the
// whole texels that offsets have.
TEST_F(TextureSearchTest, AKeptLookIsThatOfTheOldPictureInTheFile) {
  std::mt19937 random(5);
  const auto among = [&](double from, double to) {
    return static_cast<float>(std::uniform_real_distribution<double>(from, to)(random));
  };
  for (int i = 0; i < 300; ++i) {
    Brush& brush = Get("a").brush;
    for (int f = 0; f < brush.getNumFaces(); ++f) {
      Face& face = brush.face(f);
      SetTexture(*map, face, "met1_2");
      face.rotation = std::round(among(-180, 180));
      face.xscale = (i % 2 == 0 ? 1 : -1) * (0.25f + std::round(among(0, 4) * 100) / 100);
      face.yscale = 0.5f;
      face.xoff = std::round(among(-300, 300));
      face.yoff = std::round(among(-300, 300));
    }
    std::vector<TexturePoint> before;
    const Vec3 corner(64, 64, 64);
    for (const Face& face : brush.Faces()) {
      before.push_back(TextureProjection(face).Textures(DVec3(corner)));
    }
    const char* const names[] = {"met2_1", "tiny", "met1_1"};
    ASSERT_EQ(Replace({.name = "met1_2"}, {.name = names[i % 3], .keepsLook = true}),
              EditResult::Done);
    const auto saved = ReadText(Text());
    saved->UseWads({wad});
    const entity* read = FindNamed(*saved, "a");
    for (int f = 0; f < brush.getNumFaces(); ++f) {
      const Face& face = read->brush.face(f);
      const TexturePoint after = TextureProjection(face).Textures(DVec3(corner));
      const TexturePoint& was = before[static_cast<std::size_t>(f)];
      EXPECT_LE(std::abs(std::remainder(after.s - was.s, 1)) * face.texture->width, 0.51) << i;
      EXPECT_LE(std::abs(std::remainder(after.t - was.t, 1)) * face.texture->height, 0.51) << i;
      EXPECT_LE(std::abs(face.xoff), face.texture->width);
    }
  }
}

TEST_F(TextureSearchTest, TheCurrentTextureGoesToWhatIsSelectedAndCanBeReached) {
  Options options;
  TextureChoice choice(options);
  EXPECT_EQ(choice.For(*map), "met1_1") << "the first of the first WAD";
  choice.Choose("nowhere");
  EXPECT_EQ(choice.For(*map), "met1_1");
  for (const char* none : {"", "a b", "a_name_of_16_ltr"}) choice.Choose(none);
  EXPECT_EQ(choice.Current(), "nowhere");
  choice.Choose("GONE");
  EXPECT_EQ(choice.For(*map), "GONE") << "faces have it";
  choice.Choose("tiny");
  EXPECT_EQ(ApplyTexture(*map, choice.For(*map)), EditResult::NothingSelected);
  Pick({"a", "b"});
  const std::string before = Text();
  EXPECT_EQ(ApplyTexture(*map, "tiny"), EditResult::Done);
  EXPECT_EQ(NamesOn("a"), std::set<std::string>{"tiny"});
  ExpectOneStep(before);
  EXPECT_EQ(PaintFace(*map, Get("c"), 2, "met1_1"), EditResult::Done);
  EXPECT_EQ(NamesOn("c"), (std::set<std::string>{"gone", "met1_1"}));
  EXPECT_EQ(PaintFace(*map, Get("c"), 6, "met1_1"), EditResult::NothingSelected);

  for (const char* name : {"one", "two", "ONE"}) choice.NoteUse(name);
  EXPECT_EQ(choice.Recent(), (std::vector<std::string>{"ONE", "two"}));
  choice.SetFavourite("one", true);
  choice.SetFavourite("two", true);
  choice.SetFavourite("ONE", false);
  EXPECT_EQ(choice.Favourites(), std::vector<std::string>{"two"});
}

}  // namespace
}  // namespace ferrowand
