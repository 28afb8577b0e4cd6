// Compile!, what it leaves to look at (where the map leaks, and its portals), and what is asked of
// a map before: its check and its figures.
#include "base/path_text.h"
#include "base/report.h"
#include "base/safe_file.h"
#include "compile/compile_files.h"
#include "document/classes/template_index.h"
#include "document/map.h"
#include "shell/commands/command_groups.h"
#include "shell/dialogs/dialogs.h"
#include "shell/documents/documents.h"
#include "shell/frame/frame.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/compile_window.h"
#include "shell/windows/info_window.h"
#include "shell/windows/window_maker.h"
#include "views/map_marks.h"

namespace ferrowand {
namespace {

void KeepProfiles(const CompileContext& in, const std::vector<CompileProfile>& profiles) {
  file::MakeFolder(in.dataFolder);
  ReplaceFileText(ProfilesFile(in.dataFolder), ProfilesText(profiles), in.reporter);
}

std::optional<CompileOptions> Ask(const CompileContext& in) {
  const std::optional<std::string> kept = FileBytes(ProfilesFile(in.dataFolder));
  return in.dialogs.AskCompile(
      {CompileOptionsOf(in.options), ReadProfiles(kept.value_or("")),
       [&in](const std::vector<CompileProfile>& profiles) { KeepProfiles(in, profiles); },
       &in.clipboard});
}

// All that can be made again when it is asked for.
void ReleaseMemory(const CompileContext& in) {
  for (const auto& map : in.documents.Maps()) map->Templates().Forget();
  for (const auto& window : in.windows.All()) window->ReleaseMemory();
  for (const auto& wad : in.data.wads.Loaded()) wad->Flush();
}

// A tool works on the files of that Quake map.
bool IsBeingCompiled(const CompileContext& in, const std::string& toolsMap) {
  return in.sides.Find<CompileWindow>([&](CompileWindow& window) {
    return window.Run().Running() && window.Run().Stage() != CompileStage::Game &&
           EqualNoCase(window.Run().Paths().map, toolsMap);
  }) != nullptr;
}

void Compile(const CompileContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const std::optional<CompileOptions> chosen = Ask(in);
  if (!chosen) return;
  StoreCompileFlags(*chosen, in.options);
  const unsigned option = chosen->Has(COMPILE_ONLY_VISIBLE) ? WRITE_VISIBLE_ONLY : 0;
  if (!map.IsUnnamed() && IsBeingCompiled(in, ToolsMapPath(map, option))) {
    in.reporter.Show("Cannot continue", "This map is being compiled already");
    return;
  }
  const std::optional<std::string> toolsMap = in.documents.WriteForTools(map, option);
  if (!toolsMap) return;
  in.documents.WriteAutoback(map);
  StoreCompileParams(*chosen, in.options);
  if (chosen->Has(COMPILE_CONSERVE_MEMORY)) ReleaseMemory(in);
  const CompileWindowContext context{in.frame, in.windows, in.dialogs, in.reporter,
                                     [&windows = in.windows] {
                                       for (const auto& w : windows.All()) w->RebuildMemory();
                                     }};
  const CompileSetup setup{.mapPath = *toolsMap,
                           .options = *chosen,
                           .quakeDirectory = in.options.quakeDirectory,
                           .quakeExecutable = in.options.quakeExecutable,
                           .toolsDirectory = "",
                           .plainFolder = PlainFolderFor(*toolsMap),
                           .wads = WadsForTools(map)};
  in.sides.Add(std::make_unique<CompileWindow>(in.sides, context, map, setup,
                                               NotesOnToolsMap(map, *toolsMap, setup.plainFolder)));
}

void CheckMap(const CompileContext& in, unsigned) {
  in.maker.ShowCheck(*in.windows.ActiveMap());
}

// A map has one such window.
void GetInfo(const CompileContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const auto isOfMap = [&](const InfoWindow& open) { return &open.GetMap() == &map; };
  if (const auto* open = in.sides.Find<InfoWindow>(isOfMap)) DestroyWindow(open->Handle());
  in.sides.Add(std::make_unique<InfoWindow>(in.sides, in.frame, map, in.reporter));
}

// --- what is drawn over the map

// What the last compile of the map has left under that extension.
std::string LeftByTools(const Map& map, const char* extension) {
  if (map.IsUnnamed()) return "";
  const PathParts parts = SplitPath(ToolsMapPath(map, 0));
  return parts.directory + parts.base + extension;
}

void ToggleLeak(const CompileContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  ViewList& views = in.windows.Views();
  const MapMarks* marks = views.marks.Find(map);
  if (!marks || marks->leak.empty()) {
    map.ShowStatus(LoadLeak(views, map, LeftByTools(map, ".pts")));
  } else {
    ShowLeak(views, map, !marks->showsLeak);
  }
}

template <int step>
void Walk(const CompileContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  map.ShowStatus(WalkLeak(in.windows.Views(), map, step));
}

void TogglePortals(const CompileContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  ViewList& views = in.windows.Views();
  const MapMarks* marks = views.marks.Find(map);
  if (!marks || marks->portals.empty()) {
    map.ShowStatus(LoadPortals(views, map, LeftByTools(map, ".prt")));
  } else {
    ShowPortals(views, map, !marks->showsPortals);
  }
}

void LoadLines(const CompileContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  FileChoice choice;
  choice.title = "Leak line or portals";
  choice.filter = "Leak lines and portals (*.pts, *.prt)|*.pts;*.prt|All files (*.*)|*.*|";
  const auto path = in.dialogs.ChooseFile(choice);
  if (!path) return;
  const bool isPortals = EqualNoCase(SplitPath(*path).extension, ".prt");
  ViewList& views = in.windows.Views();
  map.ShowStatus(isPortals ? LoadPortals(views, map, *path) : LoadLeak(views, map, *path));
}

constexpr CommandHandler<CompileContext> HANDLERS[] = {
    {Command::Compile, Compile},           {Command::ShowLeak, ToggleLeak},
    {Command::NextLeakPoint, Walk<1>},     {Command::PreviousLeakPoint, Walk<-1>},
    {Command::CheckMap, CheckMap},         {Command::GetInfo, GetInfo},
    {Command::ShowPortals, TogglePortals}, {Command::LoadLeak, LoadLines},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeCompileCommands(const CompileContext& context) {
  return std::make_unique<HandlerGroup<CompileContext>>(context, HANDLERS);
}

}  // namespace ferrowand
