// Compile! in real windows with real processes, and what is asked of a map before: its check and
// its figures.
#include "document/edit_step.h"
#include "shell/app_fixture.h"
#include "shell/resources/resource.h"
#include "shell/windows/check_window.h"
#include "shell/windows/compile_window.h"
#include "shell/windows/info_window.h"
#include "support/cases.h"
#include "support/document_checks.h"
#include "support/tool_bench.h"

namespace ferrowand {
namespace {

using Lines = std::vector<std::string>;

// The current folder, where the tools are looked for, while it lives.
class InFolderOf {
 public:
  explicit InFolderOf(const ToolBench& bench) : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(bench.dir.Path());
  }
  ~InFolderOf() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_;
};

class CompileTest : public AppTest {
 protected:
  Map& Open(ToolBench& bench) {
    saved.quakeDirectory = bench.dir.Path("quake");
    EXPECT_TRUE(Start());
    Map* map = parts->documents.Open(bench.map);
    app->Pump();
    return *map;
  }
  CompileWindow& Compile(std::uint16_t flags) {
    dialogs.compile = CompileOptions{.flags = flags};
    Give(Command::Compile);
    return dynamic_cast<CompileWindow&>(*parts->sides.All().back());
  }
  void Finish(CompileWindow& window) {
    WaitFor([&] { return !window.Run().Running(); });
  }
  // As the list box has them, without their times.
  static Lines Listed(const CompileWindow& window) {
    Lines lines;
    const HWND list = GetDlgItem(window.Handle(), ID_OVERVIEW_LIST);
    for (int i = 0; i < SendMessageA(list, LB_GETCOUNT, 0, 0); ++i) {
      char text[300] = "";
      SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
      std::string line = text;
      if (line.size() > 4 && line[line.size() - 3] == ':') line.erase(line.rfind(' '));
      lines.push_back(line);
    }
    return lines;
  }
  static bool IsAlive(const HWND window) { return IsWindow(window) != FALSE; }

  static constexpr std::uint16_t TOOLS = COMPILE_QBSP | COMPILE_LIGHT | COMPILE_VIS;
};

TEST_F(CompileTest, AllStagesRunAndTheReportIsSaved) {
  ToolBench bench;
  bench.PutAll("print WARNING: near (8 16 24)\nleave bsp level\nleave prt PRT1\n");
  Map& map = Open(bench);
  const InFolderOf folder(bench);
  {
    EditStep step(map);
    step.ChangeKeys(map);
    map.SetKey("message", "Test room");
  }
  const std::string text = ExtendedText(map), before = bench.dir.Read("room.map");
  CompileWindow& window = Compile(TOOLS | COMPILE_GAME);
  EXPECT_EQ(TextOf(window.Handle()), "Compiling Overview - Test room");
  EXPECT_TRUE(map.modified());
  EXPECT_EQ(map.filename, bench.map);
  EXPECT_EQ(ExtendedText(map), text);
  EXPECT_EQ(bench.dir.Read("room.map.1.bak"), before) << "it went over the map's own file";
  EXPECT_TRUE(bench.Exists("autoback.xmp"));
  Finish(window);
  EXPECT_EQ(Listed(window),
            (Lines{"Qbsp started", "Qbsping successful, time elaspsed:", "Light started",
                   "Lighting successful, time elaspsed:", "Vis started",
                   "Vissing successful, time elaspsed:", "Quake launched",
                   "Quake closed, time elaspsed:", "Compiling finished"}));
  EXPECT_EQ(ListView_GetItemCount(GetDlgItem(window.Handle(), ID_OVERVIEW_OUTPUT)),
            static_cast<int>(std::ranges::count(window.Run().Output().Text(), '\n')));
  EXPECT_EQ(bench.dir.Read("quake/id1/maps/room.BSP"), "vis");
  const Lines qbsp = bench.Called("qbsp");
  ASSERT_EQ(qbsp.size(), 3u);
  EXPECT_EQ(qbsp[0], "qbsp.exe       " + CompilePaths(bench.map).argument);
  EXPECT_EQ(qbsp[1], std::filesystem::current_path().string());
  EXPECT_TRUE(qbsp[2].starts_with("priority 128 console show 7 ")) << qbsp[2] << "not high";
  EXPECT_TRUE(bench.Called("quake/quake")[2].ends_with("show 3 title QUAKE")) << "maximised";

  dialogs.files = {bench.dir.Path("none/out.log"), bench.dir.Path("out.log")};
  SendMessageA(window.Handle(), WM_COMMAND, ID_OVERVIEW_SAVE, 0);
  EXPECT_EQ(sink.OnlyText(),
            "Cannot open file (" + bench.dir.Path("none/out.log") + ") for write!");
  SendMessageA(window.Handle(), WM_COMMAND, ID_OVERVIEW_SAVE, 0);
  const std::string report = bench.dir.Read("out.log");
  EXPECT_NE(report.find("Compiling finished\n"), report.npos);
  EXPECT_NE(report.find("WARNING: near (8 16 24)\n"), report.npos);
}

TEST_F(CompileTest, OfAnUnmodifiedQuakeMapTheToolsGetTheFileItself) {
  ToolBench bench;
  bench.PutAll();
  Open(bench);
  const InFolderOf folder(bench);
  const auto time = std::filesystem::last_write_time(bench.map);
  Finish(Compile(TOOLS));
  EXPECT_EQ(std::filesystem::last_write_time(bench.map), time);
  EXPECT_FALSE(bench.Exists("room.map.1.bak"));
}

TEST_F(CompileTest, CancelAndClosingEndTheToolAndTheEditorStaysAlive) {
  ToolBench bench;
  bench.PutAll();
  bench.Put("qbsp", "print begun\nsleep 60000\n");
  Map& map = Open(bench);
  const InFolderOf folder(bench);
  CompileWindow& first = Compile(TOOLS);
  WaitFor([&] { return first.Run().Output().Text().find("begun") != std::string::npos; });
  EXPECT_EQ(GetDlgItemInt(first.Handle(), ID_OVERVIEW_TIME, nullptr, FALSE), 0u);
  SendDlgItemMessageA(first.Handle(), ID_OVERVIEW_CANCEL, BM_CLICK, 0, 0);
  EXPECT_EQ(Listed(first), (Lines{"Qbsp started", "Qbsping cancelled after"}));

  const HWND second = Compile(TOOLS).Handle();
  auto& run = dynamic_cast<CompileWindow&>(*parts->sides.All().back()).Run();
  WaitFor([&] { return run.Output().Text().find("begun") != std::string::npos; });
  Give(Command::NewTopView);
  WaitFor([&] { return run.Elapsed() > "0:02"; });
  EXPECT_EQ(parts->windows.WindowsOf(map).size(), 4u) << "the editor works meanwhile";
  parts->documents.Close(map);
  app->Pump();
  ASSERT_TRUE(IsAlive(second)) << "a closed map's compile goes on";
  EXPECT_NE(run.Running(), nullptr);
  const std::string lock = bench.dir.Path("qbsp.exe");
  SendMessageA(second, WM_CLOSE, 0, 0);
  app->Pump();
  EXPECT_FALSE(IsAlive(second));
  EXPECT_TRUE(std::filesystem::remove(lock)) << "nothing runs it any more";
}

TEST_F(CompileTest, TheEndOfTheProgramEndsAToolAndNoGame) {
  ToolBench bench;
  bench.PutAll();
  bench.Put("quake", "sleep 1500\nleave txt played on\n", "quake");
  Open(bench);
  const InFolderOf folder(bench);
  Compile(COMPILE_GAME);
  bench.dir.Write("qbsp.txt", "print begun\nsleep 60000\n");
  CompileWindow& window = Compile(COMPILE_QBSP);
  WaitFor([&] { return window.Run().Output().Text().find("begun") != std::string::npos; });
  app.reset();
  EXPECT_TRUE(std::filesystem::remove(bench.dir.Path("qbsp.exe"))) << "nothing runs it any more";
  Sleep(2500);
  EXPECT_EQ(bench.dir.Read("quake/room.txt"), "played on");
}

TEST_F(CompileTest, TwoMapsCompileAtOnceAndALeakIsDrawnAndWalked) {
  ToolBench bench;
  bench.PutAll("leave bsp level\nleave pts 0 0 0\nsleep 300\n");
  Map& map = Open(bench);
  Map& other = *parts->documents.Open(bench.dir.Write("other.map", bench.dir.Read("room.map")));
  const InFolderOf folder(bench);
  CompileWindow& ofOther = Compile(COMPILE_QBSP);
  Activate(*parts->windows.WindowsOf(map).front());
  CompileWindow& ofRoom = Compile(COMPILE_QBSP);
  Finish(ofOther);
  Finish(ofRoom);
  for (const Map* each : {&map, &other}) {
    const MapMarks* marks = parts->windows.Views().marks.Find(*each);
    ASSERT_TRUE(marks && marks->showsLeak);
  }
  EXPECT_EQ(Listed(ofRoom), (Lines{"Qbsp started", "Qbsping successful, time elaspsed:",
                                   "Map has leaks", "Compiling finished"}));
  EXPECT_EQ(Listed(ofOther), Listed(ofRoom));

  dialogs.files = {bench.dir.Write("long.pts", "0 0 0\n64 64 0\n64 0 64\n")};
  Give(Command::LoadLeak);
  const MapWindow& top = WindowOf(Orientation::Top);
  Activate(top);
  const auto drawn = PictureOf(top);
  Give(Command::ShowLeak);
  EXPECT_NE(PictureOf(top), drawn);
  Give(Command::ShowLeak);
  EXPECT_EQ(PictureOf(top), drawn);
  Give(Command::NextLeakPoint);
  EXPECT_EQ(TextOf(top, ID_MESSAGE_TEXT), "Leak line: point 2 of 3 (64 64 0)");
  Give(Command::PreviousLeakPoint);
  Give(Command::PreviousLeakPoint);
  EXPECT_EQ(TextOf(top, ID_MESSAGE_TEXT), "Leak line: point 3 of 3 (64 0 64)");
  EXPECT_TRUE(IsTicked(Command::ShowLeak));
}

TEST_F(CompileTest, WhatTheToolsHaveLeftBesideTheMapIsDrawn) {
  ToolBench bench;
  const Map& map = Open(bench);
  Give(Command::ShowLeak);
  MapWindow& top = WindowOf(Orientation::Top);
  Activate(top);
  EXPECT_EQ(top.View()->Status(), "room.pts cannot be read: nothing tells where the map leaks.");
  const auto bare = PictureOf(top);
  bench.dir.Write("room.pts", "0 0 0\n64 64 0\n");
  Give(Command::ShowLeak);
  EXPECT_NE(PictureOf(top), bare);
  Give(Command::ShowLeak);
  EXPECT_EQ(PictureOf(top), bare);
  bench.dir.Write("room.prt", "PRT1\n2\n1\n4 0 1 (0 0 0 ) (90 0 0 ) (90 90 0 ) (0 90 0 )\n");
  Give(Command::ShowPortals);
  EXPECT_EQ(parts->windows.Views().marks.Find(map)->portals.size(), 1u);
  EXPECT_TRUE(IsTicked(Command::ShowPortals));
  EXPECT_NE(PictureOf(top), bare);
  Give(Command::ShowPortals);
  EXPECT_EQ(PictureOf(top), bare);
}

TEST_F(CompileTest, AClickOnALineGoesToWhatItNames) {
  ToolBench bench;
  bench.PutAll("print entity 0, brush 0 is bad\nprint at (64 0 0)\nleave bsp level\n");
  Map& map = Open(bench);
  const InFolderOf folder(bench);
  CompileWindow& window = Compile(COMPILE_QBSP);
  Finish(window);
  const HWND output = GetDlgItem(window.Handle(), ID_OVERVIEW_OUTPUT);
  MapView& top = *WindowOf(Orientation::Top).View();
  top.CentreOn({4000, 4000, 0});
  NMITEMACTIVATE click{};
  click.hdr = {output, ID_OVERVIEW_OUTPUT, static_cast<UINT>(NM_CLICK)};
  click.iItem = 1;
  SendMessageA(window.Handle(), WM_NOTIFY, ID_OVERVIEW_OUTPUT, reinterpret_cast<LPARAM>(&click));
  ASSERT_EQ(map.selection.size(), 1u);
  EXPECT_EQ(map.selection.front()->brush.getNumFaces(), 6);
  EXPECT_NEAR(top.transform.ToScreenU(32), top.DrawingArea().width / 2, 2);
  click.iItem = 2;
  SendMessageA(window.Handle(), WM_NOTIFY, ID_OVERVIEW_OUTPUT, reinterpret_cast<LPARAM>(&click));
  EXPECT_NEAR(top.transform.ToScreenU(64), top.DrawingArea().width / 2, 2);
}

TEST_F(CompileTest, MemoryIsReleasedTheWindowClosesItselfAndTheChoiceIsKept) {
  ToolBench bench;
  bench.PutAll();
  Open(bench);
  const InFolderOf folder(bench);
  dialogs.declinesCompile = true;
  Give(Command::Compile);
  EXPECT_TRUE(parts->sides.All().empty());
  dialogs.declinesCompile = false;
  CompileOptions chosen{.flags = COMPILE_CONSERVE_MEMORY | COMPILE_AUTO_CLOSE, .visLevel = 2};
  chosen.threads = 3;
  chosen.visParams = "-extra";
  dialogs.compile = chosen;
  bench.dir.Write("room.bsp", "old");
  Give(Command::Compile);
  app->Pump();
  EXPECT_TRUE(parts->sides.All().empty());
  EXPECT_EQ(sink.beeps, 1);
  EXPECT_EQ(bench.dir.Read("quake/id1/maps/room.BSP"), "old");
  EXPECT_EQ(CompileOptionsOf(parts->options), chosen);
}

TEST_F(CompileTest, TheCheckFollowsTheMapSelectsAndRepairs) {
  ToolBench bench;
  Map& map = Open(bench);
  Give(Command::CheckMap);
  auto& window = dynamic_cast<CheckWindow&>(*parts->windows.ActiveWindow());
  WaitFor([&] { return window.IsDone(); });
  const auto told = [&] {
    WaitFor([&] { return window.IsDone(); });
    app->Pump();
    Lines lines;
    for (std::size_t i = 0; i < window.NumRows(); ++i) lines.push_back(window.At(i).text);
    return lines;
  };
  // The brush's texture is in no WAD.
  const Lines lines = told();
  ASSERT_EQ(lines.size(), 8u);
  EXPECT_EQ(lines[2], "Unknown texture, Unnamed brush, face 2");
  EXPECT_EQ(lines[6], "Further findings:");
  EXPECT_EQ(lines[7], "No player start, worldspawn named: worldspawn");
  window.ChooseRow(2);
  EXPECT_EQ(map.selection.size(), 1u);
  EXPECT_FALSE(parts->windows.Views().marks.Find(map)->face.empty());
  const std::string texture(parts->data.wads.Default().Textures().front()->Name());
  dialogs.answers = {{"no such"}, {texture}};
  SendDlgItemMessageA(window.Handle(), ID_CHECK_REPAIR, BM_CLICK, 0, 0);
  EXPECT_EQ(sink.OnlyText(), "No WAD of this map has a texture of that name");
  EXPECT_EQ(told(), (Lines{"Further findings:", "No player start, worldspawn named: worldspawn"}));
  Give(Command::Undo);
  EXPECT_EQ(told(), lines);
  CheckDlgButton(window.Handle(), ID_CHECK_STRICT, BST_CHECKED);
  SendMessageA(window.Handle(), WM_COMMAND, ID_CHECK_STRICT, 0);
  EXPECT_FALSE(window.IsDone()) << "all of it again";
  EXPECT_EQ(told(), lines);
  map.selection.Set({map.currentLayer()->getEntityList().front().get()});
  Give(Command::Copy);
  Give(Command::Paste);
  const auto& objects = map.currentLayer()->getEntityList();
  ASSERT_EQ(objects.size(), 2u);
  const Lines twice = told();
  const auto found = std::ranges::find_if(
      twice, [](const std::string& line) { return line.starts_with("Duplicate brush"); });
  ASSERT_NE(found, twice.end());
  window.ChooseRow(static_cast<std::size_t>(found - twice.begin()));
  SendDlgItemMessageA(window.Handle(), ID_CHECK_REPAIR, BM_CLICK, 0, 0);
  EXPECT_EQ(objects.size(), 1u);
  EXPECT_EQ(told(), lines);
  parts->documents.Close(map);
}

TEST_F(CompileTest, InfoTellsFiguresFilesAndTheLevel) {
  ToolBench bench;
  Map& map = Open(bench);
  {
    EditStep step(map);
    for (const char* name : {"light", "info_player_deathmatch", "trigger_changelevel"}) {
      auto made = std::make_unique<entity>(*map.classSet);
      made->SetKey("classname", name);
      if (std::string(name).starts_with("trigger")) made->SetKey("map", "e1m2");
      step.Add(std::move(made), *map.currentLayer());
    }
  }
  const auto info = [&]() -> HWND {
    Give(Command::GetInfo);
    return parts->sides.All().back()->Handle();
  };
  const auto text = [](HWND dialog, int id) { return TextOf(GetDlgItem(dialog, id)); };
  HWND dialog = info();
  for (const auto& [id, shown] : Cases<int, std::string>{
           {ID_INFO_NAME, "Unnamed"},
           {ID_INFO_BRUSHES, "1"},
           {ID_INFO_ENTITIES, "4"},
           {ID_INFO_LIGHTS, "1"},
           {ID_INFO_FACES, "6"},
           {ID_INFO_STARTS, "1"},
           {ID_INFO_MODIFIED, "True"},
           {ID_INFO_MAP_FILE, bench.map},
           {ID_INFO_BSP_FILE, "Does not exist (" + bench.dir.Path("room.bsp") + ")"},
           {ID_INFO_BSP_DATE, ""}}) {
    EXPECT_EQ(text(dialog, id), shown);
  }
  EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, ID_INFO_MORE)));
  RECT small, wide;
  bench.dir.Write("room.bsp", std::string("\x1d\0\0\0", 4) + std::string(120, '\0'));
  dialog = info();
  EXPECT_EQ(parts->sides.All().size(), 1u) << "a map has one";
  GetWindowRect(dialog, &small);
  SendDlgItemMessageA(dialog, ID_INFO_MORE, BM_CLICK, 0, 0);
  GetWindowRect(dialog, &wide);
  EXPECT_GT(wide.right - wide.left, small.right - small.left);
  EXPECT_EQ(SendDlgItemMessageA(dialog, ID_INFO_BSP, LB_GETCOUNT, 0, 0), 16);
  EXPECT_EQ(SendDlgItemMessageA(dialog, ID_INFO_EXITS, LB_GETCOUNT, 0, 0), 1);
  parts->documents.Close(map);
  EXPECT_FALSE(IsAlive(dialog));
  constexpr std::int64_t SECOND = 1'000'000'000;
  const DateTexts early = TextsOf({(946'684'800 + 1800) * SECOND, 0});
  EXPECT_EQ(early.date, "1/1/2000");
  EXPECT_EQ(early.time, "4294967295:30");
  EXPECT_EQ(TextsOf({(946'684'800 + 15 * 3600 + 5 * 60) * SECOND, 0}).time, "14:05");
}

}  // namespace
}  // namespace ferrowand
