#include "compile/tool_output.h"

#include <gtest/gtest.h>

#include "support/cases.h"

namespace ferrowand {
namespace {

TEST(ToolOutput, LinesComeOutWholeHoweverTheyCameIn) {
  ToolOutput output;
  for (const char c : std::string("one\r\ntwo 10%\rtwo 90%\na\tb\n\x1b[31mred\x1b[0m x\by\nrest")) {
    output.Append(std::string(1, c));
  }
  EXPECT_EQ(output.Text(), "one\ntwo 90%\na       b\nred y\nrest\n");
  output.EndTool();
  output.Say(LineKind::Heading, "next");
  output.Append(std::string(2500, 'x') + "\n");
  EXPECT_EQ(output.size(), 5 + 1 + 3u);
  EXPECT_EQ(output.At(5).text, "next");
  EXPECT_EQ(output.At(6).text.size(), ToolOutput::MAXLINE);
}

TEST(ToolOutput, ErrorsAndWarningsAreToldFromTheRest) {
  for (const auto& [text, kind] :
       Cases<const char*, LineKind>{{"************ ERROR ************\nno room", LineKind::Error},
                                    {"WARNING: node without a volume", LineKind::Warning},
                                    {"reached occupant: LEAK", LineKind::Warning},
                                    {"0 errors, 0 warnings", LineKind::Plain},
                                    {"no errors", LineKind::Plain},
                                    {"10 errors", LineKind::Error},
                                    {"----- light -----", LineKind::Plain}}) {
    ToolOutput output;
    output.Append(std::string(text) + "\n");
    EXPECT_EQ(output.At(output.size() - 1).kind, kind) << text;
  }
}

TEST(ToolOutput, PlacesAreFoundHoweverAToolNamesThem) {
  const NamedPlace all = PlaceIn("WARNING: Entity 12, Brush #3: bad near (1 -2.5 3e1)");
  EXPECT_EQ(all.entity, 12);
  EXPECT_EQ(all.brush, 3);
  EXPECT_EQ(all.point, (Vec3{1, -2.5f, 30}));
  EXPECT_EQ(PlaceIn("reached occupant at: (8 16 24)").point, (Vec3{8, 16, 24}));
  EXPECT_EQ(PlaceIn("face at 1, 2, 3 is bad").point, (Vec3{1, 2, 3}));
  for (const char* none : {"", "brushes 12", "12 entities", "(1 2)", "near here", "( x y z )"}) {
    EXPECT_TRUE(PlaceIn(none).IsNone()) << none;
  }
}

}  // namespace
}  // namespace ferrowand
