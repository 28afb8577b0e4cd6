// Runs through real processes: stages, messages, what is left of files, and the report.
#include "compile/compile_run.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "compile/report.h"
#include "support/cases.h"
#include "support/recorder.h"
#include "support/small_map.h"
#include "support/tool_bench.h"

namespace ferrowand {
namespace {

using Lines = std::vector<std::string>;

class CompileRunTest : public testing::Test, public CompileListener {
 protected:
  static constexpr std::uint32_t MINUTE = 60'000;  // passes at each look at the clock
  static constexpr std::uint16_t TOOLS = COMPILE_QBSP | COMPILE_LIGHT | COMPILE_VIS;

  CompileRun& Begin(std::uint16_t flags) {
    setup.mapPath = bench.map;
    setup.options.flags = flags;
    setup.toolsDirectory = bench.dir.Path();
    setup.quakeDirectory = bench.dir.Path("quake");
    setup.quakeExecutable = "quake.exe";
    lines.clear();
    run = std::make_unique<CompileRun>(
        setup, StartProcess, [this] { return now += MINUTE; }, *this, reporter);
    return *run;
  }
  // To its end; the lines without their times.
  Lines Finish(std::uint16_t flags) {
    Begin(flags);
    for (bool goesOn = run->NextStage(); goesOn; goesOn = run->Tick()) run->Running()->Wait(20);
    return Lines(lines.begin(), lines.end());
  }
  bool Says(const std::string& text) const {
    return run->Output().Text().find(text) != std::string::npos;
  }
  // Until the tool has printed that.
  void Await(const std::string& text) {
    for (int i = 0; i < 500 && !Says(text); ++i) {
      run->Running()->Wait(20);
      run->TakeOutput();
    }
    EXPECT_TRUE(Says(text)) << run->Output().Text();
  }

  void OnStageLine(const std::string& line) override {
    std::string told = line;
    if (told.size() > 4 && told[told.size() - 3] == ':') {
      EXPECT_EQ(told.substr(told.rfind(' ')), " 1:00") << told;  // since its own stage began
      told.erase(told.rfind(' '));
    }
    lines.push_back(told);
  }
  void OnOutput() override {}
  void OnLevelMade(bool leaks) override { leaked = leaks; }
  void OnOver() override { ++overs; }

  ToolBench bench;
  CompileSetup setup;
  MessageRecorder sink;
  Reporter reporter{sink};
  std::uint32_t now = 0;
  std::unique_ptr<CompileRun> run;
  Lines lines;
  bool leaked = false;
  int overs = 0;
};

const Lines ALL_STAGES = {"Qbsp started",      "Qbsping successful, time elaspsed:",
                          "Light started",     "Lighting successful, time elaspsed:",
                          "Vis started",       "Vissing successful, time elaspsed:",
                          "Compiling finished"};

TEST_F(CompileRunTest, EveryStageRunsIsToldAndLeavesTheLevelInTheGame) {
  bench.PutAll("print hello\nleave bsp level\nleave prt PRT1\nleave pts 1 2 3\n");
  Lines expected = ALL_STAGES;
  expected.insert(expected.end() - 1, {"Quake launched", "Quake closed, time elaspsed:"});
  EXPECT_EQ(Finish(TOOLS | COMPILE_GAME), expected);
  EXPECT_FALSE(run->HasFailed() || run->Leaks() || leaked);
  EXPECT_EQ(sink.beeps, 1);
  EXPECT_EQ(overs, 1);
  const bool isWindows = PathSeparator() == '\\';
  EXPECT_EQ(bench.dir.Read(isWindows ? "quake/id1/maps/room.BSP" : "quake/id1/maps/room.bsp"),
            "vis");
  EXPECT_EQ(bench.dir.Read(isWindows ? "quake/id1/maps/room.PTS" : "quake/id1/maps/room.pts"),
            "1 2 3");
  EXPECT_TRUE(Says("hello\n") && Says("lit\n"));

  // A folder stands where the level goes.
  bench.Put("quake", "", "quake");
  const std::string place = isWindows ? "quake/id1/maps/room.BSP" : "quake/id1/maps/room.bsp";
  std::filesystem::remove(FsPath(bench.dir.Path(place)));
  std::filesystem::create_directories(FsPath(bench.dir.Path(place + "/in")));
  Finish(TOOLS);
  EXPECT_TRUE(Says("could not be copied to")) << run->Output().Text();
}

TEST_F(CompileRunTest, SwitchesMakeTheCommandLinesAsTheyAlwaysWere) {
  CompileOptions& options = setup.options;
  options.qbspParams = "-q";
  options.lightParams = "-l";
  options.visParams = "-w";
  options.quakeParams = "+skill 3";
  std::vector<ProcessStart> starts;
  const auto linesFor = [&](std::uint16_t flags, std::uint8_t threads) {
    starts.clear();
    options.threads = threads;
    Begin(flags);
    const auto refuse = [&](const ProcessStart& start) {
      starts.push_back(start);
      return nullptr;
    };
    setup.toolsDirectory.clear();
    CompileRun refused(
        setup, refuse, [] { return 0u; }, *this, reporter);
    EXPECT_FALSE(refused.NextStage());
  };
  linesFor(0x03FF, 3);
  const std::string map = CompilePaths(bench.map).argument;
  const std::string exe = PathSeparator() == '\\' ? ".exe" : "";
  ASSERT_EQ(starts.size(), 4u);
  EXPECT_EQ(starts[0].application, "qbsp" + exe);
  EXPECT_EQ(starts[0].commandLine,
            "qbsp" + exe + " -threds 3 -q -nofill -onlyents -verbose  " + map);
  EXPECT_EQ(starts[1].commandLine, "light" + exe + " -threds 3 -l -extra " + map);
  EXPECT_EQ(starts[2].commandLine, "vis" + exe + " -threds 3 -w -fast -v " + map);
  const std::string game = bench.dir.Path("quake") + PathSeparator() + "quake.exe";
  EXPECT_EQ(starts[3].commandLine, game + " +skill 3 +map room");
  EXPECT_EQ(starts[3].directory, bench.dir.Path("quake"));
  EXPECT_EQ(lines,
            (Lines{"Failed to spawn qbsp!", "Failed to spawn light!", "Failed to spawn vis!"}));
  EXPECT_EQ(sink.OnlyText(), "Can't find quake.exe! Check Quake's directory in the options.");
  EXPECT_EQ(sink.beeps, 0) << "not over as it should be";

  linesFor(0x2051, 0);
  EXPECT_EQ(starts[0].commandLine, "qbsp" + exe + "  -q    -nowait " + map);
  EXPECT_EQ(starts[1].commandLine, "light" + exe + "  -l  " + map);
  EXPECT_EQ(starts[2].commandLine, "vis" + exe + "  -w   " + map);
}

TEST_F(CompileRunTest, WhatWasThereBeforeIsPutBackUnlessThereIsANewLevel) {
  struct Case {
    const char* orders;
    std::uint16_t flags;
    Lines lines;
    const char* bsp;
    const char* prt;  // null: not there
    bool fails, leaks;
  };
  const Case cases[] = {
      {"end 0", COMPILE_QBSP, {"Qbsping unsuccessful! Time elaspsed:"}, "old", "old", true, false},
      {"leave bsp new\nleave pts 0 0 0",
       COMPILE_QBSP,
       {"Qbsping successful, time elaspsed:", "Map has leaks", "Compiling finished"},
       "new",
       nullptr,
       false,
       true},
      {"leave bsp new",
       COMPILE_QBSP | COMPILE_NO_FILL,
       {"Qbsping successful, time elaspsed:", "Map was not filled", "Compiling finished"},
       "new",
       nullptr,
       false,
       false},
      {"print entities",
       COMPILE_QBSP | COMPILE_ONLY_ENTITIES,
       {"Qbsping successful, time elaspsed:", "Compiling finished"},
       "old",
       "old",
       false,
       false},
      {"print ******** ERROR ********\nprint no\nend 1",
       COMPILE_QBSP,
       {"Qbsping unsuccessful! Time elaspsed:"},
       "old",
       "old",
       true,
       false},
      {"leave bsp half\ndie",
       COMPILE_QBSP,
       {"Qbsping successful, time elaspsed:", "Map has leaks", "Compiling finished"},
       "half",
       nullptr,
       true,
       true},
  };
  for (const Case& row : cases) {
    bench.Put("qbsp", row.orders);
    for (const char* extension : {"bsp", "prt", "pts"}) {
      bench.dir.Write(std::string("room.") + extension, "old");
    }
    Lines expected = row.lines;
    expected.insert(expected.begin(), "Qbsp started");
    EXPECT_EQ(Finish(row.flags), expected) << row.orders;
    EXPECT_EQ(bench.dir.Read("room.bsp"), row.bsp) << row.orders;
    EXPECT_EQ(bench.Exists("room.prt") ? bench.dir.Read("room.prt") : "", row.prt ? row.prt : "")
        << row.orders;
    EXPECT_EQ(run->HasFailed(), row.fails) << row.orders;
    EXPECT_EQ(run->Leaks(), row.leaks) << row.orders;
    EXPECT_FALSE(bench.Exists("room.bsp.before")) << row.orders;
  }
}

TEST_F(CompileRunTest, CancelEndsTheToolOfEachStageAndNeverTheGame) {
  constexpr const char* FOREVER = "leave bsp half\nprint begun\nsleep 60000\n";
  for (const auto& [tool, flag, told] : Cases<const char*, std::uint16_t, const char*>{
           {"qbsp", COMPILE_QBSP, "Qbsping cancelled after"},
           {"light", COMPILE_LIGHT, "Lighting cancelled after"},
           {"vis", COMPILE_VIS, "Vissing cancelled after"}}) {
    bench.dir.Write("room.bsp", "old");
    bench.Put(tool, FOREVER);
    Begin(flag);
    ASSERT_TRUE(run->NextStage());
    Await("begun");
    run->Cancel();
    EXPECT_EQ(lines.back(), told);
    EXPECT_FALSE(run->Running() || run->Tick());
    run->Cancel();
    EXPECT_EQ(lines.size(), 2u);
    EXPECT_EQ(bench.dir.Read("room.bsp"), flag == COMPILE_QBSP ? "old" : "half");
  }
  bench.Put("quake", "sleep 1000\n", "quake");
  Begin(COMPILE_GAME);
  ASSERT_TRUE(run->NextStage());
  run->Cancel();
  EXPECT_EQ(lines, Lines{"Quake launched"});
  EXPECT_TRUE(run->Tick());
  for (; run->Tick(); run->Running()->Wait(20)) {
  }
  EXPECT_EQ(lines.back(), "Compiling finished");
  EXPECT_TRUE(sink.messages.empty());
}

TEST_F(CompileRunTest, NoToolOutlivesItsRunAndTheOldLevelComesBack) {
  bench.dir.Write("room.bsp", "old");
  bench.Put("qbsp", "leave bsp half\nprint begun\nsleep 1500\nleave bsp late\n");
  Begin(COMPILE_QBSP);
  ASSERT_TRUE(run->NextStage());
  Await("begun");
  run.reset();
  EXPECT_EQ(bench.dir.Read("room.bsp"), "old");
  std::this_thread::sleep_for(std::chrono::milliseconds(1800));
  EXPECT_EQ(bench.dir.Read("room.bsp"), "old");
}

TEST_F(CompileRunTest, BlanksAndLettersInFoldersDoNotBreakACompile) {
  setup.mapPath.clear();
  const ToolBench other("my maps/\xd0\xba\xd0\xb0\xd1\x80\xd1\x82\xd0\xb0/a room.map");
  other.PutAll();
  setup.options.flags = TOOLS;
  setup.mapPath = other.map;
  setup.toolsDirectory = other.dir.Path();
  setup.quakeDirectory = other.dir.Path("quake");
  run = std::make_unique<CompileRun>(
      setup, StartProcess, [this] { return now += MINUTE; }, *this, reporter);
  for (bool goesOn = run->NextStage(); goesOn; goesOn = run->Tick()) run->Running()->Wait(20);
  EXPECT_EQ(lines, ALL_STAGES) << run->Output().Text();
  EXPECT_TRUE(other.Exists("my maps/\xd0\xba\xd0\xb0\xd1\x80\xd1\x82\xd0\xb0/a room.bsp"));
  EXPECT_TRUE(other.Exists("quake/id1/maps/a room.bsp"));
}

TEST_F(CompileRunTest, ACopyIsCompiledWhereTheToolsCannotBeToldOfTheMap) {
  SmallMap empty;
  empty.map.filename = "maps/room.map";
  EXPECT_TRUE(NotesOnToolsMap(empty.map, "maps/room.map", "").empty());
  const auto notes = NotesOnToolsMap(empty.map, "maps/room_tools.map", "plain");
  ASSERT_EQ(notes.size(), 2u);
  EXPECT_EQ(notes[1].find("The tools work on a copy in plain, not in maps/"), 0u) << notes[1];
  bench.dir.Write("x.wad", "a wad");
  bench.dir.Write("room.bsp", "old");
  bench.PutAll("need map\nleave bsp level\nleave prt PRT1\n");
  bench.Put("vis", "need prt\nend 3\n");
  setup.plainFolder = bench.dir.Path("plain");
  setup.wads = {{"gfx/x.wad", bench.dir.Path("x.wad")}, {"../y.wad", bench.dir.Path("x.wad")}};
  EXPECT_EQ(Finish(TOOLS), ALL_STAGES) << run->Output().Text();
  const std::string copy = "plain/quake/id1/maps/";
  EXPECT_NE(bench.Called("qbsp").front().find("maps"), std::string::npos);
  EXPECT_EQ(bench.dir.Read(copy + "room.map"), bench.dir.Read("room.map"));
  EXPECT_EQ(bench.dir.Read("plain/quake/gfx/x.wad") + bench.dir.Read(copy + "gfx/x.wad"),
            "a wada wad");
  EXPECT_FALSE(bench.Exists("plain/y.wad"));
  EXPECT_EQ(bench.dir.Read("room.bsp"), "light");
  EXPECT_EQ(bench.dir.Read("room.prt"), "PRT1");
  EXPECT_EQ(bench.dir.Read("quake/id1/maps/room.bsp"), "light");

  // One that fails leaves what was there, and nothing of the level before is taken for a new one.
  bench.Put("qbsp", "end 1\n");
  EXPECT_EQ(Finish(TOOLS), (Lines{"Qbsp started", "Qbsping unsuccessful! Time elaspsed:"}));
  EXPECT_EQ(bench.dir.Read("room.bsp"), "light");
  setup.plainFolder = bench.dir.Path("x.wad");
  EXPECT_EQ(Finish(COMPILE_QBSP), Lines{"Failed to spawn qbsp!"});
  EXPECT_TRUE(Says("could not be copied"));
}

TEST_F(CompileRunTest, AGigabyteIsReadToItsEndAndItsNewestLinesAreKept) {
  bench.Put("qbsp",
            "repeat 400000 a line of sixty letters that nobody will ever want to read at all"
            "\nleave bsp new\nleave prt PRT1\nprint the end\n");
  Finish(COMPILE_QBSP);
  EXPECT_TRUE(Says("at all 399999\nthe end\n"));
  EXPECT_GT(run->Output().Dropped(), 0u);
  EXPECT_TRUE(run->Output().At(0).text.ends_with("lines are not kept.)"));
}

TEST_F(CompileRunTest, TheReportTellsWhatWasChosenWhatRanAndWhatWasPrinted) {
  bench.PutAll("print hello\nleave bsp level\n");
  setup.options.qbspParams = "-x";
  setup.options.visLevel = 3;
  Finish(COMPILE_QBSP | COMPILE_NO_FILL | COMPILE_QBSP_VERBOSE | COMPILE_VIS |
         COMPILE_ONLY_VISIBLE);
  const std::string report = CompileReport(*run, lines, {ProcessorKind::Intel, 6, 0});
  const std::string head =
      "---   Compiler overview output\n---   Generated by Ferrowand version 1.01\n"
      "Run on a Intel based system, Pentium Pro/686\nSource: " +
      bench.map +
      "\nSaved only visible\n* QBSP *\nNo filling performed, Verbose output\nExtra params: -x\n"
      "* LIGHT *\nNot executed\n* VIS *\nVis level: 3\n* QUAKE *\nNot executed\nQbsp started\n";
  EXPECT_EQ(report.substr(0, head.size()), head);
  EXPECT_NE(report.find("Compiling finished\n\n--- What the tools have printed\n--- qbsp"),
            std::string::npos)
      << report;
  EXPECT_NE(report.find("\nhello\n"), std::string::npos);
}

TEST(ProcessorWords, NameEachKind) {
  for (const auto& [processor, words] : Cases<Processor, const char*>{
           {{ProcessorKind::Intel, 3, 0}, "Intel based system, 386... That was risky"},
           {{ProcessorKind::Intel, 15, 0}, "Intel based system, Unknown Intel processor level: 15"},
           {{ProcessorKind::Mips, 4, 0}, "MIPS system, Implementation 4"},
           {{ProcessorKind::Alpha, 5, 0}, "Alpha system, Version 5"},
           {{ProcessorKind::PowerPc, 0, 9}, "PPC system, Version 604+"},
           {{ProcessorKind::PowerPc, 0, 2}, "PPC system, Unknown PPC version, 2"},
           {{ProcessorKind::Other, 0, 7}, "Unknown system, Unknown processor version, 7"}}) {
    EXPECT_EQ(ProcessorInWords(processor), words);
  }
}

}  // namespace
}  // namespace ferrowand
