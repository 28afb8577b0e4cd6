#include "cli/cli.h"

#include <algorithm>
#include <iomanip>
#include <memory>
#include <ostream>

#include "base/options.h"
#include "cli/arguments.h"
#include "cli/compile_command.h"
#include "cli/printable.h"
#include "compile/compile_files.h"
#include "document/map.h"
#include "gamedata/bsp_file.h"
#include "gamedata/file_kind.h"
#include "operations/map_findings.h"
#include "operations/map_statistics.h"
#include "platform/file.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

constexpr int CLEAN = 0;
constexpr int REPORTED = 1;
constexpr int NO_FILE = 2;

// Prints what the editor would show in a box, and answers No: go on with what there is.
class StreamSink : public MessageSink {
 public:
  explicit StreamSink(std::ostream& err) : err_(err) {}

  Answer Show(const Message& message) override {
    err_ << message.title << ": " << PrintableLines(message.text) << '\n';
    reported_ = true;
    return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  }
  // Nobody is listening, and nobody answers Yes.
  void Beep() override {}
  void FatalExit(const std::string&) override {}
  void Exit(int) override {}

  bool Reported() const { return reported_; }

 private:
  std::ostream& err_;
  bool reported_ = false;
};

// Prints what a save says behind the format: what the file does not have as the map has it.
class LossPrinter : public MapObserver {
 public:
  explicit LossPrinter(std::ostream& err) : err_(err) {}

  void OnStatus(const std::string& text) override {
    const std::size_t behind = text.find("; ");
    if (behind == text.npos) return;
    err_ << text.substr(behind + 2) << '\n';
    printed_ = true;
  }
  bool Printed() const { return printed_; }

 private:
  std::ostream& err_;
  bool printed_ = false;
};

class Session {
 public:
  Session(const CliArguments& arguments, std::ostream& out, std::ostream& err)
      : arguments_(arguments), out_(out), err_(err), sink_(err), reporter_(sink_) {}

  int Run() {
    struct Verb {
      std::string_view name;
      int (Session::*run)();
    };
    constexpr Verb VERBS[] = {{"info", &Session::Info},          {"convert", &Session::Convert},
                              {"check", &Session::Check},        {"compile", &Session::Compile},
                              {"bsp", &Session::SummariseBsp},   {"wad", &Session::ListWad},
                              {"classes", &Session::ListClasses}};
    const auto* verb = std::ranges::find(VERBS, arguments_.command, &Verb::name);
    const int status = (this->*verb->run)();
    return status == CLEAN && sink_.Reported() ? REPORTED : status;
  }

 private:
  int Info();
  int Convert();
  int Check();
  int Compile();
  int SummariseBsp();
  int ListWad();
  int ListClasses();

  std::unique_ptr<Map> Load();
  bool WriteForTools(Map& map, const std::string& target, unsigned option);
  void SetUpGameData(const std::string& mapName);
  bool FoundInSearchPath(const std::string& name) const;
  // With what is wrong, where that is known.
  int CannotOpen(const std::string& name, const std::string& reason = "") {
    err_ << "Cannot open file! (" << (reason.empty() ? name : reason) << ")\n";
    return NO_FILE;
  }

  const CliArguments& arguments_;
  std::ostream& out_;
  std::ostream& err_;
  StreamSink sink_;
  Reporter reporter_;
  LoadProgress progress_;
  GameData data_{reporter_, progress_};
};

bool Session::FoundInSearchPath(const std::string& name) const {
  for (const std::string& folder : data_.searchPath.Entries()) {
    if (file::Find(folder + name) == FindResult::Found) return true;
  }
  return false;
}

// The default WAD and classes come from the usual places, whatever the options say of the map's
// own; a copy of the program without its data files works too, and does not complain.
void Session::SetUpGameData(const std::string& mapName) {
  data_.searchPath.Add("");
  data_.searchPath.Add(SplitPath(mapName).directory);
  data_.searchPath.Add(CurrentDirectory());
  data_.searchPath.Add(ProgramDirectory());
  if (FoundInSearchPath("quake.pal")) data_.palette.Load(data_.searchPath, Gamma{}, reporter_);
  if (FoundInSearchPath("quake.wad")) data_.wads.LoadDefault("quake.wad");
  if (arguments_.qcFile) {
    data_.classes.LoadForAll(*arguments_.qcFile);
  } else if (FoundInSearchPath("ents.qc")) {
    data_.classes.LoadDefault("ents.qc");
  }

  if (arguments_.wadPath.empty()) return;
  data_.searchPath = SearchPath();
  for (const std::string& folder : arguments_.wadPath) data_.searchPath.Add(folder);
  if (arguments_.qcFile) data_.searchPath.Add(SplitPath(*arguments_.qcFile).directory);
}

std::unique_ptr<Map> Session::Load() {
  const std::string& name = arguments_.operands.front();
  SetUpGameData(name);
  const std::string refusal = OtherKindText(name);
  std::unique_ptr<Map> map = refusal.empty() ? LoadMap(data_, name) : nullptr;
  if (!map) CannotOpen(name, refusal);
  return map;
}

int Session::Info() {
  const std::unique_ptr<Map> map = Load();
  if (!map) return NO_FILE;

  const MapStatistics counts = CountMap(*map);
  out_ << "message: " << Printable(map->Name()) << '\n';
  if (const std::string wads = map->wads.Names(); !wads.empty()) {
    out_ << "wads: " << Printable(wads) << '\n';
  }
  out_ << "entities: " << counts.entities << '\n'
       << "brushes: " << counts.brushes << '\n'
       << "faces: " << counts.faces << '\n'
       << "textures: " << counts.textures.size() << '\n'
       << "faces without their texture: " << counts.missingTextures << '\n'
       << "layers: " << counts.layers << '\n'
       << "hidden: " << counts.hidden << '\n'
       << "template classes: " << counts.templateClasses << '\n'
       << "template instances: " << counts.templateInstances << '\n'
       << "embeds: " << counts.embeds << '\n';
  if (!counts.bounds.IsEmpty()) {
    const Vec3& mins = counts.bounds.mins;
    const Vec3& maxs = counts.bounds.maxs;
    out_ << "bounds: (" << mins.x << ' ' << mins.y << ' ' << mins.z << ") (" << maxs.x << ' '
         << maxs.y << ' ' << maxs.z << ")\n";
  }
  out_ << "classes:\n";
  for (const auto& [name, count] : counts.classnames) {
    out_ << std::setw(8) << count << "  " << Printable(name) << '\n';
  }
  return CLEAN;
}

int Session::Convert() {
  const std::unique_ptr<Map> map = Load();
  if (!map) return NO_FILE;
  const std::string& source = arguments_.operands[0];
  const std::string target = SaveTarget(arguments_.operands[1]);
  if (map->readWithLoss() && file::IsSame(source, target)) {
    err_ << "Not written over the file that could not all be read: " << target << '\n';
    return NO_FILE;
  }
  const unsigned option = arguments_.visibleOnly ? WRITE_VISIBLE_ONLY : 0;
  SaveSettings settings;
  settings.copyFolder = UserDataDirectory();
  LossPrinter losses(err_);
  map->AddObserver(losses);
  const bool isSaved = map->Save(target, option, settings);
  map->RemoveObserver(losses);
  return !isSaved ? NO_FILE : losses.Printed() ? REPORTED : CLEAN;
}

int Session::Check() {
  const std::unique_ptr<Map> map = Load();
  if (!map) return NO_FILE;
  std::vector<Problem> problems;
  CheckMap(*map, problems, map->wads, arguments_.strict ? STRICT_TOLERANCE : CHECK_TOLERANCE);
  for (const Problem& problem : problems) out_ << Printable(ReportLine(problem)) << '\n';
  std::vector<Finding> findings;
  FindInTree(*map, findings);
  FindInMap(*map, findings);
  if (!findings.empty()) out_ << FINDINGS_HEADING << '\n';
  for (const Finding& finding : findings) out_ << Printable(ReportLine(finding)) << '\n';
  return problems.empty() && findings.empty() ? CLEAN : REPORTED;
}

// A map that is a Quake map is what the tools read. Nobody can be asked here about the files of
// others.
bool Session::WriteForTools(Map& map, const std::string& target, unsigned option) {
  if (target == map.filename) return true;
  if (file::Find(target) == FindResult::Found && !IsOwnQuakeMap(target)) {
    err_ << "Not written over what Ferrowand has not made: " << Printable(target) << '\n';
    return false;
  }
  SaveSettings settings;
  settings.copyFolder = UserDataDirectory();
  LossPrinter losses(err_);
  map.AddObserver(losses);
  const bool isWritten = map.WriteForTools(target, option, settings);
  map.RemoveObserver(losses);
  return isWritten;
}

int Session::Compile() {
  const std::optional<CompileOptions> options = ChosenOptions(arguments_, err_);
  const std::unique_ptr<Map> map = options ? Load() : nullptr;
  if (!map) return NO_FILE;
  const unsigned option = options->Has(COMPILE_ONLY_VISIBLE) ? WRITE_VISIBLE_ONLY : 0;
  const std::string target = ToolsMapPath(*map, option);
  if (!WriteForTools(*map, target, option)) return NO_FILE;
  const CompileSetup setup{.mapPath = target,
                           .options = *options,
                           .quakeDirectory = arguments_.quake,
                           .quakeExecutable = Options().quakeExecutable,
                           .toolsDirectory = arguments_.tools,
                           .plainFolder = PlainFolderFor(target),
                           .wads = WadsForTools(*map)};
  for (const std::string& note : NotesOnToolsMap(*map, target, setup.plainFolder)) {
    err_ << Printable(note) << '\n';
  }
  return RunCompile(setup, arguments_.report, reporter_, out_, err_);
}

int Session::SummariseBsp() {
  const std::string& name = arguments_.operands.front();
  if (file::Find(name) != FindResult::Found) return CannotOpen(name);
  for (const std::string& line : BspSummary(name)) out_ << line << '\n';
  return CLEAN;
}

int Session::ListWad() {
  WadFile wad(WadLimits{}, data_.palette, reporter_);
  const std::string& name = arguments_.operands.front();
  if (!wad.Open(name)) return CannotOpen(name, NoWadText(name));
  for (const std::unique_ptr<Texture>& texture : wad.Textures()) {
    out_ << std::left << std::setw(16) << Printable(texture->Name()) << std::right << std::setw(6)
         << texture->width << " x " << std::setw(5) << texture->height << "  padded "
         << std::setw(5) << texture->paddedWidth << " x " << std::setw(5) << texture->paddedHeight
         << "  offset " << texture->entry.filepos << '\n';
  }
  return CLEAN;
}

int Session::ListClasses() {
  ClassSet set(data_.classes);
  const std::string& name = arguments_.operands.front();
  if (!set.Load(name)) return CannotOpen(name);
  for (const std::unique_ptr<EntityClass>& c : set.Classes()) {
    if (c->IsNative()) continue;
    out_ << Printable(c->classname) << "  (" << c->red << ' ' << c->green << ' ' << c->blue << ") ("
         << c->minx << ' ' << c->miny << ' ' << c->minz << ") (" << c->maxx << ' ' << c->maxy << ' '
         << c->maxz << ')';
    for (const std::string& flag : c->flags) out_ << ' ' << (flag.empty() ? "-" : Printable(flag));
    out_ << '\n';
  }
  return CLEAN;
}

}  // namespace

int RunCli(std::span<const std::string> arguments, std::ostream& out, std::ostream& err) {
  const CliArguments parsed = ParseCliArguments(arguments);
  if (!parsed.error.empty()) {
    err << "ferrowand-cli: " << parsed.error << '\n' << CliUsage();
    return NO_FILE;
  }
  return Session(parsed, out, err).Run();
}

}  // namespace ferrowand
