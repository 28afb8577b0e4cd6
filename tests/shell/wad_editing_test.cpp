// WADs edited by the texture browser's popup: pictures in and out, names, what goes.
#include "shell/windows/wad_editing.h"
#include "document/picking.h"
#include "gamedata/wad_builder.h"
#include "shell/app_fixture.h"
#include "shell/system/picture_file.h"

namespace ferrowand {
namespace {

TEST(PictureFile, ReadsWhatTheSystemKnowsAndSaysWhatItIsNot) {
  std::string why;
  const auto fence = ReadPictureFile(std::string(FERROWAND_TEST_DATA) + "/fence.png", why);
  ASSERT_TRUE(fence) << why;
  ASSERT_EQ(fence->width * 100 + fence->height, 3216);
  EXPECT_EQ(fence->colours[15], (PictureColour{100, 100, 100, 255}));
  EXPECT_EQ(fence->colours[16].alpha, 0);
  const auto steps = ReadPictureFile(std::string(FERROWAND_TEST_DATA) + "/steps.png", why);
  ASSERT_TRUE(steps) << why;
  ASSERT_EQ(steps->indices.size(), 256u);
  for (int i = 0; i < 16; ++i) {
    const auto at = static_cast<std::size_t>(i);
    EXPECT_EQ(steps->colours[steps->indices[at]].red, i * 10);
  }
  const TempDir dir;
  const std::string whole = [] {
    std::ifstream file(std::string(FERROWAND_TEST_DATA) + "/fence.png", std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }();
  // A part of the picture may be there: what counts is that nothing else is touched.
  for (const std::size_t length : {std::size_t{0}, std::size_t{20}, whole.size() / 2}) {
    ReadPictureFile(dir.Write("cut.png", whole.substr(0, length)), why);
  }
  EXPECT_FALSE(ReadPictureFile(dir.Path("no.png"), why));
  EXPECT_EQ(why, dir.Path("no.png") + " is no picture that can be read");
  std::string huge = whole;
  huge.replace(16, 8, std::string("\0\0\x27\x10\0\0\x27\x10", 8));
  EXPECT_FALSE(ReadPictureFile(dir.Write("huge.png", huge), why));
  std::string tga(18, '\0');
  tga.replace(12, 4, std::string("\x10\x27\x10\x27", 4));
  EXPECT_FALSE(ReadPictureFile(dir.Write("huge.tga", tga), why));
  EXPECT_EQ(why, NoSizeText(dir.Path("huge.tga")));
}

class WadEditingTest : public AppTest {
 protected:
  void Open() {
    ASSERT_TRUE(Start());
    dir.Write("one.wad", WadBytes({{"wall", 16, 16, "w"},
                                   {"*odd", 24, 24, "abc"},
                                   {"+0a", 16, 16, "0"},
                                   {"+1a", 16, 16, "1"}}));
    dir.Write("two.wad", WadBytes({}));
    map = parts->documents.Open(
        dir.Write("wads.map", "{\"classname\" \"worldspawn\" \"wad\" \"one.wad;two.wad\"\n" +
                                  Cuboid(0, 0, 0, 64, 64, 64) + "}\n"));
    app->Pump();
    sink.messages.clear();
    edits = std::make_unique<WadEditing>(parts->data, dialogs, parts->documents);
  }
  WadFile& Wad(std::size_t index) const { return *map->wads.Items()[index].wad; }
  void Do(WadEdit edit, const char* name = "", std::vector<std::string> files = {},
          std::vector<FormValues> answers = {}) {
    dialogs.files.assign(files.begin(), files.end());
    dialogs.answers.assign(answers.begin(), answers.end());
    edits->Do(edit, *map, *name ? Wad(0).FindTexture(name) : nullptr);
  }

  Map* map = nullptr;
  std::unique_ptr<WadEditing> edits;
};

TEST_F(WadEditingTest, PicturesGoInAndOutAndTexturesFromWadToWad) {
  Open();
  const std::string fence = std::string(FERROWAND_TEST_DATA) + "/fence.png";
  Do(WadEdit::Insert, "", {fence}, {{"{fence", "two.wad", "Crop to multiples of 16", "All"}});
  EXPECT_EQ(sink.Said(), std::vector<std::string>{});
  Texture* made = Wad(1).FindTexture("{fence");
  ASSERT_EQ(made->width, 32);
  EXPECT_EQ(Wad(1).Pixels(*made)[16], 255);
  Do(WadEdit::Export, "*odd", {dir.Path("odd.pcx")});
  EXPECT_EQ(dialogs.asked.back().name, "#odd.pcx");
  Do(WadEdit::Insert, "", {dir.Path("odd.pcx")}, {{"*odd", "one.wad"}, {"*new", "one.wad"}});
  EXPECT_EQ(Wad(0).WholeImage(*Wad(0).FindTexture("*new")),
            Wad(0).WholeImage(*Wad(0).FindTexture("*odd")));
  Do(WadEdit::Alter, "wall", {dir.Path("odd.pcx")});
  Do(WadEdit::Alter, "wall", {dir.Path("one.wad")});
  EXPECT_EQ(
      sink.Said(),
      (std::vector<std::string>{
          "Cannot continue: one.wad has a texture called *odd already",
          "Cannot continue: Selected file has different dimensions. It can not be used to alter "
          "this texture. Instead, try inserting it.",
          "Cannot continue: Invalid PCX file. It must be in 256 colour format!"}));
  Do(WadEdit::Export, "+0a", {dir.Path("zero.pcx")});
  Do(WadEdit::Alter, "wall", {dir.Path("zero.pcx")});
  const auto colourOf = [this](const char* name) {
    return parts->data.palette[Wad(0).WholeImage(*Wad(0).FindTexture(name))[0]].ToColour();
  };
  EXPECT_EQ(colourOf("wall"), colourOf("+0a"));
  Do(WadEdit::Copy, "*odd", {}, {{"two.wad"}});
  EXPECT_EQ(Wad(1).FindTexture("*odd")->width, 24);
  Do(WadEdit::Copy, "+1a", {}, {{"two.wad"}});
  EXPECT_EQ(Wad(1).Pixels(*Wad(1).FindTexture("+0a"))[0], '0') << "with its animation";
}

TEST_F(WadEditingTest, FramesAreRenamedAndRemovedTogetherIfTheUserWants) {
  Open();
  sink.answers = {Answer::Yes};
  Do(WadEdit::Rename, "+1a", {}, {{"two words"}, {"+0b"}});
  EXPECT_EQ(std::string(Wad(0).Textures()[3]->Name()), "+1b");
  sink.answers = {Answer::No};
  Do(WadEdit::Rename, "+1b", {}, {{"+5b"}});
  EXPECT_EQ(std::string(Wad(0).Textures()[3]->Name()), "+5b") << "alone it may be another frame";
  sink.answers = {Answer::Cancel};
  Do(WadEdit::Remove, "+0b");
  EXPECT_EQ(Wad(0).Textures().size(), 4u);
  sink.answers = {Answer::Yes};
  Do(WadEdit::Remove, "+0b");
  EXPECT_EQ(Wad(0).Textures().size(), 2u);
  sink.answers = {Answer::No, Answer::Yes};
  Do(WadEdit::Remove, "wall");
  EXPECT_EQ(Wad(0).Textures().size(), 2u);
  Do(WadEdit::Remove, "wall");
  EXPECT_EQ(Wad(0).Textures().size(), 1u);
}

}  // namespace
}  // namespace ferrowand
