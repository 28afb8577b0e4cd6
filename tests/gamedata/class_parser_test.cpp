#include "gamedata/class_parser.h"

#include "base/text_reader.h"
#include "gamedata/class_log.h"
#include "gamedata/gamedata_fixture.h"

namespace ferrowand {
namespace {

class ClassParserTest : public GameDataTest {
 protected:
  // The classes of a text, in its order.
  const std::vector<ClassRecord>& Parse(const std::string& text) {
    recorder.messages.clear();
    classes.clear();
    TextReader reader(reporter);
    reader.Open(dir.Write("test.qc", text));
    ClassLog log(&reporter);
    ClassParser parser(reader, log);
    while (auto record = parser.Next()) classes.push_back(std::move(*record));
    return classes;
  }
  ClassRecord& ParseOne(const std::string& text) {
    EXPECT_EQ(Parse(text).size(), 1u) << text;
    return classes.at(0);
  }
  static std::vector<int> BoxOf(const ClassRecord& c) {
    return {c.minx, c.miny, c.minz, c.maxx, c.maxy, c.maxz};
  }

  std::vector<ClassRecord> classes;
};

TEST_F(ClassParserTest, AWholeCommentGivesAWholeClass) {
  const ClassRecord& light = ParseOne(
      "/*QUAKED light (0 1.5 0.25) (-8 -9.9 -10) (8 9.9 10) START_OFF  LOUD\r\n"
      "Gives light.\r\nSlowly.*/\r\nvoid() light = { x = 1; };\r\n");
  EXPECT_EQ(light.classname, "light");
  EXPECT_EQ(light.red, 0);
  EXPECT_EQ(light.green, 1.5f);
  EXPECT_EQ(light.blue, 0.25f);
  EXPECT_EQ(BoxOf(light), (std::vector<int>{-8, -9, -10, 8, 9, 10}));
  EXPECT_EQ(light.flags, (std::vector<std::string>{"START_OFF", "LOUD"}));
  EXPECT_EQ(light.description, "Gives light.\r\nSlowly.");
  EXPECT_FALSE(light.hasTilde);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(ClassParserTest, ABrushClassHasTheBoxOfTheDefaults) {
  const ClassRecord& door = ParseOne("/*QUAKED func_door (0 .5 .8) ?  OPEN\r\nA door.*/");
  EXPECT_EQ(BoxOf(door), (std::vector<int>{-8, -8, -8, 8, 8, 8}));
  EXPECT_EQ(door.flags, std::vector<std::string>{"OPEN"});
  EXPECT_TRUE(door.isMadeOfBrushes);
  EXPECT_FALSE(ParseOne("/*QUAKED light (0 1 0) (-8 -8 -8) (8 8 8)\r\n*/").isMadeOfBrushes);
}

TEST_F(ClassParserTest, ATildeFixesANumber) {
  const ClassRecord& door = ParseOne("/*QUAKED a (0 0 0) ?\r\n ~ -12x\r\nText ~3.*/");
  EXPECT_TRUE(door.hasTilde);
  EXPECT_EQ(door.tildeValue, -12);
  EXPECT_EQ(door.description, "Text ~3.");
}

TEST_F(ClassParserTest, CoordinatesAreFloatsAndWrapAtSixteenBits) {
  const ClassRecord& big = ParseOne("/*QUAKED a (1 1 1e99) (40000 -70000 0) (1 1 9e99)\r\n*/");
  EXPECT_EQ(BoxOf(big), (std::vector<int>{-25536, -4464, 0, 1, 1, -1}));
  EXPECT_GT(big.blue, 1e38f);
  EXPECT_EQ(BoxOf(ParseOne("/*QUAKED a (0 0 0) (-15.99999999 0 0) (15.99999999 1.9999 0)\r\n*/")),
            (std::vector<int>{-16, 0, 0, 16, 1, 0}));
}

TEST_F(ClassParserTest, BareLineFeedsGiveTheSameClassesFlagsAndHelp) {
  const std::string text =
      "// words\r\n/*QUAKED light (0 1 0) ? A\r\n~3 two\r\n\r\nwords*/\r\n"
      "/*QUAKED b (0 0 0) ? B C\r\n*/\r\nvoid() b = {};\r\n/*QUAKED c (0 0 0) ? " +
      std::string(110, 'x') + "\r\nlong\r\n*/";
  std::string bare = text;
  std::erase(bare, '\r');
  const std::vector<ClassRecord> classes = Parse(text);
  const std::vector<ClassRecord>& same = Parse(bare);
  ASSERT_EQ(same.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(same[i].flags, classes[i].flags);
    EXPECT_EQ(same[i].description, classes[i].description);
  }
  EXPECT_EQ(same[0].description, "two\r\n\r\nwords");
  EXPECT_EQ(same[1].flags, (std::vector<std::string>{"B", "C"}));
  EXPECT_EQ(same[2].flags[0].size() + same[2].description.find('\r'), 110u);
}

TEST_F(ClassParserTest, WhatIsNoClassCostsNoneBehindIt) {
  const std::string b = "/*QUAKED b (0 0 0) ?\r\nb*/";
  for (const char* front : {"/* words */",
                            "/* words */ ",
                            "/*",
                            "/* ",
                            "/ ",
                            "/**/",
                            "/***/",
                            "/*/",
                            "x */",
                            "// words\n",
                            "/*QUAKED",
                            "/*QUAKED ",
                            "/*QUAKED a",
                            "/*QUAKED a*/",
                            "/*QUAKED a (0",
                            "/*QUAKED a (0 0 0) ",
                            "/*QUAKED a (0 0 0) (-8 */\n",
                            "/*QUAKED a (0 0 0) ? FLAG */\n",
                            "/*QUAKED a (0 0 0) ?\nhelp, **/\nvoid() a = {};\n",
                            "/*QUAKED a (0 0 0) ?\nhelp\n\n"}) {
    Parse(front + b);
    ASSERT_FALSE(classes.empty()) << front;
    EXPECT_EQ(classes.back().classname, "b") << front;
    EXPECT_EQ(classes.back().description, "b") << front;
  }
  EXPECT_EQ(classes.front().description, "help\r\n\r\n");
  EXPECT_TRUE(Parse("//*QUAKED b (0 0 0) ?\r\nb*/").empty());
}

TEST_F(ClassParserTest, OnlyAStarThatNoStarPrecedesCloses) {
  EXPECT_EQ(ParseOne("/*QUAKED a (0 0 0) ?\r\nx * y **/ z */ tail").description, "x * y **/ z ");
  EXPECT_EQ(ParseOne("/*QUAKED a (0 0 0) ?\r\nx ***/").description, "x **");
  EXPECT_EQ(ParseOne("/*QUAKED a (0 0 0) ?\r\n*/").description, "");
}

TEST_F(ClassParserTest, ACommentThatIsNotClosedRunsToTheEnd) {
  for (const char* tail : {"", "*", "text", "text*", "text**/"}) {
    EXPECT_EQ(ParseOne(std::string("/*QUAKED a (0 0 0) ?\r\n") + tail).description, tail);
  }
  for (const char* header : {"", " a", " a (0 1", " a (0 1 0) (-8"}) {
    EXPECT_EQ(ParseOne(std::string("/*QUAKED") + header).description, "");
  }
}

TEST_F(ClassParserTest, EveryMistakeIsToldWithItsLine) {
  struct Case {
    const char* text;
    std::vector<std::string> messages;
    std::size_t classes;
  };
  const Case cases[] = {
      {"x\r\n// words\r\n", {"Expecting '*' after '/' in .qc file at line 2"}, 0},
      {"\r\n\r\n/* words */\r\n",
       {"Expecting 'QUAKED' after '/*' in .qc file at line 3",
        "Expecting '*' after '/' in .qc file at line 4"},
       0},
      {"// a\r\n// the same kind\r\n", {"Expecting '*' after '/' in .qc file at line 1"}, 0},
      {"/*quaked a*x", {"Expecting 'QUAKED' after '/*' in .qc file at line 1"}, 0},
      {"/*QUAKED a 0 1 0) ? words",
       {"Expecting Colour triad after classname in QC file at line 1"},
       1},
      {"/*QUAKED a (0 1 0 ?\r\n*/",
       {"Expecting ')' to close colour triad in QC file at line 1"},
       1},
      {"/*QUAKED a (0 1 0) -8\r\n*/",
       {"Expecting bounding box or ? after colour triad in QC file at line 1"},
       1},
      {"/*QUAKED a (0 1 0) (1 2 3 x4 5 6\r\n*/",
       {"Expecting ')' to close minimum triad in QC file at line 1",
        "Expecting bounding box or ? after colour triad in QC file at line 1",
        "Expecting ')' to close maximum triad in QC file at line 1"},
       1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Parse(c.text).size(), c.classes) << c.text;
    std::vector<std::string> texts;
    for (const Message& message : recorder.messages) {
      EXPECT_EQ(message.title, "Parsing Error");
      texts.push_back(message.text);
    }
    EXPECT_EQ(texts, c.messages) << c.text;
  }
}

TEST_F(ClassParserTest, ATriadMustCloseAtItsLastNumber) {
  const ClassRecord& spaced = ParseOne("/*QUAKED a ( 1 0.5 12 ) ?\r\nText*/");
  EXPECT_EQ(spaced.red, 1);
  EXPECT_EQ(spaced.blue, 1) << "the last digit goes in the bracket's place";
  EXPECT_EQ(recorder.messages.size(), 2u);
  EXPECT_EQ(ParseOne("/*QUAKED a (1 0.5 0 ) ?\r\nText*/").blue, 0);
}

}  // namespace
}  // namespace ferrowand
