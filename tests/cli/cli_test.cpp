#include "cli/cli.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/cases.h"
#include "support/map_text.h"
#include "support/temp_dir.h"
#include "support/tool_bench.h"

namespace ferrowand {
namespace {

struct Result {
  int status;
  std::string out;
  std::string err;
};

Result RunLine(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = RunCli(arguments, out, err);
  return {status, out.str(), err.str()};
}

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

const std::string CUBE = Cuboid(0, 0, 0, 64, 64, 64);

std::string MapText(const std::string& extra = "") {
  return "{\n\"classname\" \"worldspawn\"\n\"message\" \"Cube\"\n" + CUBE + "}\n" +
         "{\n\"classname\" \"light\"\n\"origin\" \"8 8 80\"\n}\n" + extra;
}

TEST(Cli, TellsWhatAMapHolds) {
  const TempDir folder;
  std::string text = MapText();
  text.replace(text.find("wall"), 4, "WALL");  // the same texture
  const Result result = RunLine({"info", folder.Write("cube.map", text)});
  EXPECT_EQ(result.status, 0) << result.err;
  for (const char* line :
       {"message: Cube\n", "entities: 2\n", "brushes: 1\n", "faces: 6\n", "textures: 1",
        "layers: 1\n", "bounds: (0 0 0) (64 64 64)\n", "       1  light\n"}) {
    EXPECT_TRUE(Contains(result.out, line)) << line << "missing in\n" << result.out;
  }
}

TEST(Cli, ConvertsByTheNameOfTheTarget) {
  const TempDir folder;
  const std::string source = folder.Write("cube.map", MapText());
  EXPECT_EQ(RunLine({"convert", source, folder.Path("bare")}).status, 0);
  const std::string extended = folder.Read("bare.xmp");
  EXPECT_TRUE(Contains(extended, "\"XMPversion\" \"1.01\""));

  EXPECT_EQ(RunLine({"convert", folder.Path("bare.xmp"), folder.Path("again.MAP")}).status, 0);
  const std::string quake = folder.Read("again.MAP");
  EXPECT_FALSE(Contains(quake, "XMP"));
  EXPECT_TRUE(quake.starts_with("//////////////////////////////\n"));

  EXPECT_EQ(RunLine({"convert", folder.Path("again.MAP"), folder.Path("second.xmp")}).status, 0);
  EXPECT_TRUE(Contains(RunLine({"info", folder.Path("second.xmp")}).out, "faces: 6\n"));
}

TEST(Cli, LeavesOutWhatIsHiddenWhenAsked) {
  const TempDir folder;
  const std::string source =
      folder.Write("layers.xmp",
                   "{\n\"classname\" \"worldspawn\"\n"
                   "{\n\"classname\" \"layer\"\n\"XMPentityname\" \"off\"\n\"XMPstate\" \"1\"\n" +
                       CUBE + "}\n}\n");
  EXPECT_EQ(RunLine({"convert", source, folder.Path("all.map")}).status, 0);
  EXPECT_EQ(RunLine({"convert", source, folder.Path("seen.map"), "--visible-only"}).status, 0);
  EXPECT_TRUE(Contains(folder.Read("all.map"), " wall "));
  EXPECT_FALSE(Contains(folder.Read("seen.map"), " wall "));
}

TEST(Cli, ReportsDamageWithItsLineAndSaysSoByItsStatus) {
  const TempDir folder;
  const Result result =
      RunLine({"info", folder.Write("bad.map", MapText("{\n\"classname\" \"odd\"\n?\n}\n"))});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(Contains(result.err,
                       "Parsing Error: An invalid char(?) was found in entity definition at "
                       "line:19."))
      << result.err;
  EXPECT_TRUE(Contains(result.out, "entities: 3\n"));
}

TEST(Cli, SaysWhichFileItCouldNotOpenOrWrite) {
  const TempDir folder;
  const std::string map = folder.Write("cube.map", MapText());
  const std::string text = folder.Write("text.wad", "not a WAD at all");
  const std::string missing = folder.Path("missing");
  const std::vector<std::vector<std::string>> commands = {
      {"info", missing},
      {"convert", missing, folder.Path("out.map")},
      {"convert", map, folder.Path("no such folder/out.map")},
      {"wad", missing},
      {"wad", text},
      {"classes", missing},
  };
  for (const auto& command : commands) {
    const Result result = RunLine(command);
    EXPECT_EQ(result.status, 2) << command.front();
    EXPECT_FALSE(result.err.empty()) << command.front();
  }
}

TEST(Cli, NamesWhatIsNoMapOrNoWad) {
  const TempDir folder;
  const std::string bsp = folder.Write("a.bsp", std::string("\x1d\0\0\0lots of it ....", 20));
  const std::string wad = folder.Write("a.wad", "WAD3............");
  const std::string pcx = folder.Write("a.pcx", "\x0a\x05\x01\x08............");
  const std::string map = folder.Write("cube.map", MapText());
  for (const auto& [command, file, says] : Cases<const char*, std::string, const char*>{
           {"info", bsp, "a compiled Quake map (BSP), not a map"},
           {"info", wad, "a Half-Life WAD of textures (WAD3), not a map"},
           {"info", pcx, "a picture (PCX), not a map"},
           {"info", folder.Write("u.map", "\xff\xfe{"), "a text in UTF-16, not a map"},
           {"wad", wad, "a Half-Life WAD of textures (WAD3), not a WAD2"},
           {"wad", map, "is not a WAD2 file"}}) {
    const Result result = RunLine({command, file});
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(Contains(result.err, says)) << result.err;
  }
}

TEST(Cli, NeverWritesOverTheFileThatItCouldNotAllRead) {
  const TempDir folder;
  const std::string text = MapText("}\n");
  const std::string map = folder.Write("bad.map", text);
  EXPECT_EQ(RunLine({"convert", map, map}).status, 2);
  EXPECT_EQ(folder.Read("bad.map"), text);
  EXPECT_EQ(RunLine({"convert", folder.Write("bad.xmp", text), folder.Path("bad")}).status, 2);
  EXPECT_EQ(folder.Read("bad.xmp"), text);
  ASSERT_TRUE(file::Link(map, folder.Path("other.map")));
  EXPECT_EQ(RunLine({"convert", map, folder.Path("other.map")}).status, 2);
  EXPECT_EQ(folder.Read("bad.map"), text);
  EXPECT_EQ(RunLine({"convert", map, folder.Path("good.map")}).status, 1);
  EXPECT_EQ(RunLine({"info", folder.Path("good.map")}).status, 0);
}

TEST(Cli, TellsWhatTheGameGetsElsewhereThanItStands) {
  const TempDir folder;
  const std::string source =
      folder.Write("a.xmp",
                   "{\n\"classname\" \"worldspawn\"\n{\n\"classname\" \"templateClass\"\n"
                   "\"XMPentityname\" \"t\"\n" +
                       std::string(CUBE) +
                       "}\n{\n\"classname\" \"templateInstance\"\n\"XMPclass\" \"t\"\n"
                       "\"origin\" \"0.5 0 0\"\n}\n}\n");
  EXPECT_EQ(RunLine({"convert", source, folder.Path("b.xmp")}).status, 0);
  const Result result = RunLine({"convert", source, folder.Path("b.map")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "2 faces lie between whole units and were moved, by up to 0.50 units\n");
}

TEST(Cli, NamesNothingWhereThereIsNothingToName) {
  const TempDir folder;
  const std::string source = folder.Write("cube.map", MapText());
  RunLine({"convert", source, folder.Path("a.xmp"), "--qc", folder.Write("none.qc", "")});
  EXPECT_FALSE(Contains(folder.Read("a.xmp"), "\"\"\n"));
}

TEST(Cli, NothingThatAFileNamesControlsTheTerminal) {
  const TempDir folder;
  const std::string map = folder.Write(
      "a.map",
      "{\n\"message\" \"a\x1b[2Jb\xc3\xa9\x9b\xe2\x82\x1b\"\n\"wad\" \"\x07.wad\"\n?\x1b\n}\n");
  const Result info = RunLine({"info", map});
  EXPECT_TRUE(Contains(info.out, "message: a\\x1b[2Jb\xc3\xa9\\x9b\\xe2\\x82\\x1b\n")) << info.out;
  const std::string qc =
      folder.Write("a.qc", "/*QUAKED light (0 1 0) (-8 -8 -8) (8 8 8) START_OFF\nA lamp.\n" +
                               std::string(99, 'x') +
                               "\n*/\n"
                               "/*QUAKED b\x1b[0m (0 1 0) ?\n*/\n");
  const Result classes = RunLine({"classes", qc});
  EXPECT_EQ(std::ranges::count(classes.out, '\n'), 2) << classes.out;
  for (const std::string& text : {info.out, info.err, classes.out, classes.err}) {
    EXPECT_TRUE(std::ranges::none_of(text, [](char c) { return c >= 0 && c < ' ' && c != '\n'; }))
        << text;
  }
}

TEST(Cli, RefusesALineThatMakesNoSense) {
  const std::vector<std::vector<std::string>> lines = {
      {},
      {"fly"},
      {"info"},
      {"info", "a", "b"},
      {"convert", "a"},
      {"info", "a", "--wad-path"},
      {"info", "a", "--loud"},
      {"wad", "a", "--qc", "b"},
      {"info", "a", "--visible-only"},
      {"info", "a", "--strict"},
      {"compile", "a"},
      {"compile", "a", "--tools", "b", "--flags", "0x4000"},
  };
  for (const auto& line : lines) {
    const Result result = RunLine(line);
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(Contains(result.err, "usage: ferrowand-cli"));
  }
}

TEST(Cli, ChecksAMapAndSaysWhenThereIsNothing) {
  const TempDir folder;
  const Result bad = RunLine({"check", folder.Write("cube.map", MapText())});
  EXPECT_EQ(bad.status, 1);
  EXPECT_TRUE(bad.out.starts_with("Unknown texture, Unnamed brush, face 0\n")) << bad.out;
  EXPECT_TRUE(
      bad.out.ends_with("Further findings:\n"
                        "Entity outside the world's brushes (at 8 8 80), Unnamed light\n"
                        "No player start, worldspawn named: worldspawn\n"))
      << bad.out;
  const Result good = RunLine({"check", FERROWAND_DATA "/maps/sample.xmp", "--strict", "--wad-path",
                               FERROWAND_DATA, "--qc", FERROWAND_DATA "/ents.qc"});
  EXPECT_EQ(good.status, 0) << good.out << good.err;
  EXPECT_EQ(good.out, "");
}

TEST(Cli, CompilesWithTheToolsOfTheSystemAndTellsWhatCameOfIt) {
  const ToolBench bench;
  bench.PutAll();
  const std::string tools = bench.dir.Path(), report = bench.dir.Path("out.log");
  const auto compile = [&](std::vector<std::string> more) {
    more.insert(more.begin(), {"compile", bench.map, "--tools", tools});
    return RunLine(more);
  };
  const std::string quake = bench.dir.Path("quake");
  Result result = compile({"--quake", quake, "--report", report});
  EXPECT_EQ(result.status, 0) << result.out << result.err;
  EXPECT_TRUE(Contains(result.out, "Qbsp started\n")) << result.out;
  EXPECT_TRUE(Contains(result.out, "  lit\n")) << result.out;
  EXPECT_TRUE(bench.Called("quake/quake").empty()) << "not asked for";
  EXPECT_EQ(bench.dir.Read("quake/id1/maps/room.bsp"), "vis");
  EXPECT_TRUE(Contains(bench.dir.Read("out.log"), "Fast approximation\n"));
  const std::string here = std::filesystem::relative(quake).string();
  EXPECT_EQ(compile({"--quake", here.empty() ? quake : here, "--flags", "0x200"}).status, 0)
      << "a path that is relative is so to here, not to the game";
  EXPECT_EQ(bench.Called("quake/quake").size(), 3u);

  bench.Put("qbsp", "leave bsp level");
  EXPECT_EQ(compile({"--flags", "1"}).status, 1) << "leaks";
  bench.Put("qbsp", "print no\nend 1");
  result = compile({"--flags", "1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(Contains(result.out, "ended with status 1.\nQbsping unsuccessful!")) << result.out;
  EXPECT_EQ(compile({"--profile", "nobody's"}).status, 2);
  EXPECT_EQ(compile({"--report", bench.dir.Path("none/out.log")}).status, 2);

  const std::string foreign = bench.dir.Read("room.map");
  result = RunLine({"compile", bench.dir.Write("room.xmp", foreign), "--tools", tools});
  EXPECT_EQ(result.status, 2) << "that Quake map is somebody else's";
  EXPECT_EQ(bench.dir.Read("room.map"), foreign);
}

TEST(Cli, SummarisesALevel) {
  const TempDir folder;
  const Result result = RunLine({"bsp", folder.Write("a.bsp", std::string("\x1d\0\0\0", 4))});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.out.starts_with("BSP Version: 29\n    0 models, (    0 bytes)\n"));
  EXPECT_EQ(RunLine({"bsp", folder.Path("none.bsp")}).status, 2);
}

TEST(Cli, ListsTheTexturesOfAWad) {
  const Result result = RunLine({"wad", FERROWAND_DATA "/quake.wad"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(Contains(result.out, "offset 12\n"));
}

TEST(Cli, ListsTheClassesOfAQuakeCFile) {
  const TempDir folder;
  const std::string qc =
      folder.Write("two.qc",
                   "/*QUAKED light (0 1 0) (-8 -8 -8) (8 8 8) START_OFF\r\nA lamp.\r\n*/\r\n"
                   "/*QUAKED func_wall (0 .5 .8) ?\r\nA wall.\r\n*/\r\n");
  const Result result = RunLine({"classes", qc});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out,
            "func_wall  (0 0.5 0.8) (-8 -8 -8) (8 8 8)\n"
            "light  (0 1 0) (-8 -8 -8) (8 8 8) START_OFF\n");
}

TEST(Cli, TakesWadsAndClassesFromWhereItIsTold) {
  const TempDir folder;
  const std::string map =
      folder.Write("cube.map", "{\n\"wad\" \"gfx/other.wad\"\n\"XMPqc\" \"own.qc\"\n" + CUBE +
                                   "}\n{\n\"classname\" \"own_thing\"\n}\n");
  folder.Write("elsewhere/gfx/other.wad", std::string("WAD2\0\0\0\0\x0c\0\0\0", 12));
  const std::string qc =
      folder.Write("classes/own.qc", "/*QUAKED own_thing (0 1 0) ? A B\r\nOurs.\r\n*/\r\n");

  EXPECT_EQ(RunLine({"info", map}).status, 1);
  const Result told = RunLine({"info", map, "--wad-path", folder.Path("elsewhere"), "--qc", qc});
  EXPECT_EQ(told.status, 0) << told.err;
  EXPECT_TRUE(Contains(told.out, "wads: gfx/other.wad\n"));
}

TEST(Cli, FindsWhatAMapNamesAroundItAndTheToldClassesGoBefore) {
  const TempDir folder;
  const std::string text =
      "{\n\"wad\" \"c:\\x\\near.wad;gfx/far.wad\"\n\"XMPqc\" \"own.qc\"\n}\n"
      "{\n\"classname\" \"thing\"\n}\n";
  const std::string map = folder.Write("game/maps/new/a.map", text);
  const std::string wad("WAD2\0\0\0\0\x0c\0\0\0", 12);
  folder.Write("game/maps/near.wad", wad);
  folder.Write("game/gfx/far.wad", wad);
  // The flags in the written text tell the class.
  folder.Write("game/own.qc", "/*QUAKED thing (0 1 0) ?\r\n~1\r\n*/\r\n");
  const std::string other = folder.Write("other.qc", "/*QUAKED thing (0 1 0) ?\r\n~2\r\n*/\r\n");

  const auto convert = [&](std::vector<std::string> line) {
    line.insert(line.begin(), {"convert", map, folder.Path("out.xmp")});
    const Result result = RunLine(line);
    EXPECT_EQ(result.status, 0) << result.err;
    return folder.Read("out.xmp");
  };
  EXPECT_TRUE(Contains(convert({}), "\"XMPferroflags\" \"1\""));
  const std::string told = convert({"--qc", other});
  EXPECT_TRUE(Contains(told, "\"XMPferroflags\" \"2\""));
  EXPECT_TRUE(Contains(told, "\"XMPqc\" \"own.qc\""));
}

}  // namespace
}  // namespace ferrowand
