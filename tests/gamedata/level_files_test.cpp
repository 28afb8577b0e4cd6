// What qbsp leaves: the level's header, the leak line, the portals; also damaged.
#include <gtest/gtest.h>

#include "gamedata/bsp_file.h"
#include "gamedata/level_lines.h"
#include "gamedata/little_endian.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

using Lines = std::vector<std::string>;

// A level of that version whose lumps have these lengths, all behind the header.
std::string Level(std::int32_t version, const std::vector<std::pair<std::size_t, int>>& lengths) {
  std::string bytes(4 + 15 * 8, '\0');
  const auto put = [&](std::size_t at, std::int32_t value) {
    PutLe32(reinterpret_cast<std::uint8_t*>(bytes.data() + at), static_cast<std::uint32_t>(value));
  };
  put(0, version);
  for (const auto& [lump, length] : lengths) {
    put(4 + lump * 8, 124);
    put(8 + lump * 8, length);
  }
  return bytes;
}

TEST(BspFile, EachLumpIsALineWithItsCountAndBytes) {
  const std::string level = Level(29, {{14, 128}, {1, 30}, {0, 7}, {3, -25}});
  const Lines lines = BspSummaryOf(level, 1000);
  const Lines expected = {"BSP Version: 29",
                          "    2 models, (  128 bytes)",
                          "   -2 vertices, (  -25 bytes)",
                          "    1 planes, (   30 bytes)",
                          "    0 leafs, (    0 bytes)",
                          "    0 nodes, (    0 bytes)",
                          "    0 texinfo, (    0 bytes)",
                          "    0 clipnodes, (    0 bytes)",
                          "    0 faces, (    0 bytes)",
                          "    0 surfaces, (    0 bytes)",
                          "    0 surfedges, (    0 bytes)",
                          "    0 edges, (    0 bytes)",
                          "    0 texture data bytes, (    0 bytes)",
                          "    0 vis data bytes, (    0 bytes)",
                          "    0 light data bytes, (    0 bytes)",
                          "    7 entity data bytes, (    7 bytes)",
                          "Outside the file: vertices."};
  EXPECT_EQ(lines, expected);
}

TEST(BspFile, WhatCannotBeALevelIsSaid) {
  const TempDir dir;
  EXPECT_EQ(BspSummary(dir.Path("none.bsp")), Lines{"Could not open bsp file for read"});
  const Lines empty = BspSummary(dir.Write("empty.bsp", ""));
  ASSERT_EQ(empty.size(), 17u);
  EXPECT_EQ(empty.front(), "BSP Version: 0");
  EXPECT_EQ(empty.back(), "The file ends in its header, after 0 bytes.");
  EXPECT_EQ(BspSummary(dir.Write("cut.bsp", Level(29, {}).substr(0, 60))).back(),
            "The file ends in its header, after 60 bytes.");
  EXPECT_EQ(BspSummary(dir.Write("lies.bsp", Level(30, {{7, 2147483647}}))).size(), 18u);
}

TEST(LevelLines, ALeakLineKeepsItsCornersAndPassesOverWhatIsNoPoint) {
  const Polyline line =
      ParseLeakLine("0 0 0\r\n8 0 0\n\nnothing\n16 0 0\n16 8 0\n1e30 0 0\n16 8 nan\n");
  EXPECT_EQ(line, (Polyline{{0, 0, 0}, {16, 0, 0}, {16, 8, 0}}));
  EXPECT_EQ(ParseLeakLine("0 0 0\n8 0 0\n0 0 0\n").size(), 3u) << "there and back";
  EXPECT_TRUE(ParseLeakLine("").empty());
}

TEST(LevelLines, PortalsAreReadUpToWhereTheyAreDamaged) {
  const std::string head = "PRT1\n3\n2\n";
  const std::string portal = "4 0 1 (0 0 0 ) (0 8 0 ) (0 8 8 ) (0 0 8 ) \n";
  const auto portals = ParsePortals(head + portal + portal);
  ASSERT_TRUE(portals && portals->size() == 2);
  EXPECT_EQ(portals->front(), (Polyline{{0, 0, 0}, {0, 8, 0}, {0, 8, 8}, {0, 0, 8}}));
  EXPECT_EQ(ParsePortals(head + portal + "9 0 1 (0 0 0 )\n" + portal)->size(), 1u);
  EXPECT_FALSE(ParsePortals("{\n"));
}

}  // namespace
}  // namespace ferrowand
