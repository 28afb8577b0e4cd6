// The files that ship: each must load without a word from the program, and keep what is promised.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "document/classes/special_classes.h"
#include "document/map.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

const std::string SHIPPED = FERROWAND_DATA;
constexpr std::size_t GAMECLASSES = 97;

std::string Contents(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

class ShippedDataTest : public testing::Test {
 protected:
  ShippedDataTest() {
    data.searchPath.Add(SHIPPED);
    data.palette.Load(data.searchPath, {}, reporter);
  }
  // What a good file has no reason to cause.
  ~ShippedDataTest() override {
    for (const Message& message : recorder.messages) ADD_FAILURE() << message.text;
  }

  std::unique_ptr<Map> ReadMap(const std::string& name) {
    data.wads.LoadDefault("quake.wad");
    data.classes.LoadDefault("ents.qc");
    return LoadMap(data, SHIPPED + "/maps/" + name);
  }

  MessageRecorder recorder;
  Reporter reporter{recorder};
  LoadProgress progress;
  GameData data{reporter, progress};
};

TEST_F(ShippedDataTest, ThePaletteBeginsBehindSeventeenBytes) {
  const Colour first{0, 0, 0}, fifteenth{235, 235, 235}, white{255, 255, 255}, last{159, 91, 83};
  EXPECT_EQ(data.palette[0].ToColour(), first);
  EXPECT_EQ(data.palette[15].ToColour(), fifteenth);
  EXPECT_EQ(data.palette[254].ToColour(), white);
  EXPECT_EQ(data.palette[255].ToColour(), last);
}

TEST_F(ShippedDataTest, EveryEntityClassSaysWhatItIs) {
  std::set<std::string> names;
  for (const auto& shown : data.classes.Get("ents.qc").Classes()) {
    if (shown->IsNative()) continue;
    SCOPED_TRACE(shown->classname);
    EXPECT_TRUE(names.insert(shown->classname).second);
    // A header that runs on into the text would take the first lines with it.
    EXPECT_GT(shown->description.size(), 20u);
    EXPECT_NE(std::isupper(static_cast<unsigned char>(shown->description[0])), 0);
    for (const float part : {shown->red, shown->green, shown->blue}) {
      EXPECT_GE(part, 0);
      EXPECT_LE(part, 1);
    }
    for (int axis = 0; axis < 3; ++axis) EXPECT_LT(shown->Min(axis), shown->Max(axis));
    EXPECT_EQ(shown->hasTilde, shown->classname.starts_with("light"));
    EXPECT_EQ(shown->tildeValue, shown->hasTilde ? ENTITY_IS_LIGHT : 0);
  }
  EXPECT_EQ(names.size(), GAMECLASSES);
}

TEST_F(ShippedDataTest, TheSkillFlagsStandOnBitsEightToElevenOfEveryClass) {
  for (const auto& shown : data.classes.Get("ents.qc").Classes()) {
    if (shown->IsNative() || shown->classname == "worldspawn") continue;
    ASSERT_EQ(shown->numflags(), 12u) << shown->classname;
    const std::vector<std::string> skills(shown->flags.begin() + 8, shown->flags.end());
    EXPECT_EQ(skills, (std::vector<std::string>{"NOT_EASY", "NOT_NORMAL", "NOT_HARD", "NOT_DM"}));
  }
}

TEST_F(ShippedDataTest, TheDoorFlagsAreTheGamesOwnBits) {
  const EntityClass& door = data.classes.Get("ents.qc").FindClass("func_door");
  const std::map<std::string, int> bits{
      {"START_OPEN", 1}, {"DONT_LINK", 4}, {"GOLD_KEY", 8}, {"SILVER_KEY", 16}, {"TOGGLE", 32}};
  for (std::size_t bit = 0; bit < 8; ++bit) {
    const auto named = bits.find(door.flags[bit]);
    if (named != bits.end()) {
      EXPECT_EQ(named->second, 1 << bit);
    } else {
      EXPECT_EQ(door.flags[bit], "x");
    }
  }
}

TEST_F(ShippedDataTest, EveryTextureCanBeUsedInTheGame) {
  WadFile& wad = data.wads.Get("quake.wad");
  std::set<std::string> names;
  for (const auto& texture : wad.Textures()) {
    const std::string name(texture->Name());
    SCOPED_TRACE(name);
    EXPECT_TRUE(names.insert(name).second);
    EXPECT_LE(name.size(), 15u);
    EXPECT_EQ(name.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ "), std::string::npos);
    EXPECT_EQ(texture->width % 16, 0);
    EXPECT_EQ(texture->height % 16, 0);
    const auto pixels = wad.Pixels(*texture);
    EXPECT_EQ(texture->flags & TEXTURE_BUILTIN, 0);
    EXPECT_GT(std::set<int>(pixels.begin(), pixels.end()).size(), 3u);
  }
  EXPECT_GE(names.size(), 60u);
  EXPECT_LT(std::filesystem::file_size(SHIPPED + "/quake.wad"), 1'500'000u);
}

TEST_F(ShippedDataTest, OnlyLightsScreensAndLavaShineInTheDark) {
  constexpr std::uint8_t SHINING = 224;
  WadFile& wad = data.wads.Get("quake.wad");
  for (const auto& texture : wad.Textures()) {
    const std::string name(texture->Name());
    const bool may = name.starts_with("light_") || name.starts_with("+") || name == "sign_exit" ||
                     name == "*lava1";
    for (const std::uint8_t pixel : wad.Pixels(*texture)) {
      ASSERT_TRUE(may || pixel < SHINING) << name;
    }
  }
}

TEST_F(ShippedDataTest, AnimatedTexturesRunThroughTheirFrames) {
  WadFile& wad = data.wads.Get("quake.wad");
  const struct {
    const char* name;
    unsigned step;
    const char* shown;
  } cases[] = {{"+0lite", 3, "+3lite"},
               {"+1lite", 3, "+0lite"},
               {"+0screen", 2, "+2screen"},
               {"+1button", 2, "+1button"}};
  for (const auto& c : cases) {
    EXPECT_EQ(wad.AnimatedFrame(wad.FindTexture(c.name), c.step)->Name(), c.shown) << c.name;
  }
}

TEST_F(ShippedDataTest, TheMapsAreWrittenAsTheyWereRead) {
  const TempDir temp;
  for (const char* name : {"sample.xmp", "altar.xmp"}) {
    const auto map = ReadMap(name);
    ASSERT_NE(map, nullptr);
    ASSERT_TRUE(map->Save(temp.Path(name), 0, {}));
    EXPECT_TRUE(temp.Read(name) == Contents(SHIPPED + "/maps/" + name)) << name;
  }
}

TEST_F(ShippedDataTest, EveryBrushOfTheMapsIsClosedAndHasItsTextures) {
  for (const char* name : {"sample.xmp", "altar.xmp"}) {
    const auto map = ReadMap(name);
    ASSERT_NE(map, nullptr);
    int brushes = 0;
    ForEachEntity(*map, [&](const entity& e) {
      brushes += e.brush.getNumFaces() > 0 ? 1 : 0;
      for (const Face& face : e.brush.Faces()) {
        ASSERT_NE(face.texture, nullptr);
        EXPECT_EQ(face.texture->Name(), face.Name());
        for (const WindingPoint& p : face.w->Points()) {
          for (int axis = 0; axis < 3; ++axis) EXPECT_LE(std::abs(p.Position()[axis]), 2048);
        }
      }
    });
    EXPECT_GE(brushes, 3) << name;
  }
}

TEST_F(ShippedDataTest, EveryTargetOfTheSampleMapIsThere) {
  const auto map = ReadMap("sample.xmp");
  ASSERT_NE(map, nullptr);
  std::set<std::string> targets, names;
  ForEachEntity(*map, [&](const entity& e) {
    EXPECT_NE(e.getClass()->Kind(), EntityKind::Unknown) << e.GetKey("classname");
    if (e.GetKey("target")) targets.insert(e.GetKey("target"));
    if (e.GetKey("targetname")) names.insert(e.GetKey("targetname"));
  });
  EXPECT_GE(targets.size(), 5u);
  for (const std::string& target : targets) EXPECT_TRUE(names.contains(target)) << target;
}

TEST_F(ShippedDataTest, TheSampleMapShowsWhatTheEditorsOwnClassesDo) {
  const auto map = ReadMap("sample.xmp");
  ASSERT_NE(map, nullptr);
  std::map<EntityKind, int> kinds;
  int unseenLayers = 0;
  ForEachEntity(*map, [&](const entity& e) {
    const EntityKind kind = e.getClass()->Kind();
    ++kinds[kind];
    if (kind == EntityKind::Layer && !e.IsVisible()) ++unseenLayers;
    EXPECT_EQ(ExpandInstance(e) != nullptr, kind == EntityKind::TemplateInstance);
    if (const char* embedded = e.GetKey("XMPfilename")) {
      EXPECT_TRUE(std::filesystem::exists(SHIPPED + "/" + embedded)) << embedded;
    }
  });
  EXPECT_EQ(kinds[EntityKind::Layer], 4);
  EXPECT_EQ(kinds[EntityKind::Hidden], 2);
  EXPECT_EQ(kinds[EntityKind::TemplateClass], 1);
  EXPECT_EQ(kinds[EntityKind::TemplateInstance], 2);
  EXPECT_EQ(unseenLayers, 1);
  EXPECT_EQ(std::string(map->currentLayer()->GetKey("XMPentityname")), "structure");
}

TEST_F(ShippedDataTest, TheKeyListIsTextForAWindow) {
  const std::string text = Contents(SHIPPED + "/keylist.txt");
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 100u) << line;
    EXPECT_TRUE(lines.eof() || line.ends_with('\r')) << line;
    EXPECT_EQ(line.find('\t'), std::string::npos) << line;
  }
}

// The system takes the first image whose size and depth suit it; offsets that lie end in no icon.
TEST_F(ShippedDataTest, TheIconsHoldThreeSizesInTwoDepths) {
  for (const char* name : {"/ferrowand.ico", "/document.ico"}) {
    const std::string icon = Contents(SHIPPED + name);
    const auto number = [&](std::size_t at, int bytes) {
      std::size_t value = 0;
      for (int i = bytes; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(icon.at(at + i));
      return value;
    };
    std::multiset<std::pair<std::size_t, std::size_t>> images;
    ASSERT_EQ(number(4, 2), 6u) << name;
    for (std::size_t entry = 6; entry < 6 + 6 * 16; entry += 16) {
      const std::size_t size = number(entry, 1), depth = number(entry + 6, 2);
      const std::size_t length = number(entry + 8, 4), at = number(entry + 12, 4);
      EXPECT_LE(at + length, icon.size());
      EXPECT_EQ(number(at + 4, 4), size);
      EXPECT_EQ(number(at + 8, 4), size * 2);
      EXPECT_EQ(number(at + 14, 2), depth);
      const std::size_t colours = depth == 8 ? 1024 : 0, mask = (size + 31) / 32 * 4 * size;
      EXPECT_EQ(length, 40 + colours + size * size * depth / 8 + mask);
      images.insert({size, depth});
    }
    const std::multiset<std::pair<std::size_t, std::size_t>> wanted{{16, 8},  {16, 32}, {32, 8},
                                                                    {32, 32}, {48, 8},  {48, 32}};
    EXPECT_EQ(images, wanted) << name;
  }
}

}  // namespace
}  // namespace ferrowand
