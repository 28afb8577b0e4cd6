#include "compile/compile_run.h"

#include <utility>

#include "base/path_text.h"
#include "base/report.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

constexpr char SOURCE[] = "compile.cpp";
constexpr std::uint32_t CANCELLED = static_cast<std::uint32_t>(-1);

// What the tools of this system are called.
std::string ToolFile(const char* name) {
  return PathSeparator() == '\\' ? std::string(name) + ".exe" : name;
}

}  // namespace

// The misspelling is meant.
struct CompileRun::Tool {
  std::uint16_t flag;
  const char* name;
  const char* started;
  const char* failed;
  const char* successful;
  const char* cancelled;
};

const CompileRun::Tool* CompileRun::ToolOf(CompileStage stage) {
  static constexpr Tool TOOLS[] = {
      {COMPILE_QBSP, "qbsp", "Qbsp started", "Failed to spawn qbsp!",
       "Qbsping successful, time elaspsed: ", "Qbsping cancelled after "},
      {COMPILE_LIGHT, "light", "Light started", "Failed to spawn light!",
       "Lighting successful, time elaspsed: ", "Lighting cancelled after "},
      {COMPILE_VIS, "vis", "Vis started", "Failed to spawn vis!",
       "Vissing successful, time elaspsed: ", "Vissing cancelled after "},
  };
  const bool isTool = stage >= CompileStage::Qbsp && stage <= CompileStage::Vis;
  return isTool ? &TOOLS[static_cast<std::size_t>(stage) - 1] : nullptr;
}

std::string TimeText(std::uint32_t milliseconds) {
  const unsigned seconds = milliseconds / 1000;
  return Format("%u:%02u", seconds / 60, seconds % 60);
}

CompileRun::CompileRun(CompileSetup setup, ProcessStarter start, Clock clock,
                       CompileListener& listener, Reporter& reporter)
    : setup_(std::move(setup)),
      paths_(setup_.mapPath),
      start_(std::move(start)),
      clock_(std::move(clock)),
      listener_(listener),
      reporter_(reporter),
      runStart_(clock_()),
      stageStart_(runStart_) {
  if (!setup_.plainFolder.empty()) copy_.emplace(paths_, setup_.plainFolder, setup_.wads);
}

// A tool that still writes would write into what is put back.
CompileRun::~CompileRun() {
  process_.reset();
}

std::string CompileRun::Elapsed() const {
  return TimeText(clock_() - runStart_);
}

std::string CompileRun::StageTime() const {
  return TimeText(clock_() - stageStart_);
}

bool CompileRun::HasStarted(CompileStage stage) const {
  return (started_ >> static_cast<unsigned>(stage) & 1) != 0;
}

void CompileRun::Fail(const std::string& why) {
  hasFailed_ = true;
  output_.Say(LineKind::Error, why);
  listener_.OnOutput();
}

// A switch that is not given leaves its blank, and threads are misspelled: so the tools have always
// been called.
std::string CompileRun::Arguments(CompileStage stage) const {
  const CompileOptions& options = setup_.options;
  const std::string& argument = copy_ ? copy_->Paths().argument : paths_.argument;
  const auto given = [&options](std::uint16_t flag, const char* text) {
    return options.Has(flag) ? std::string(text) + ' ' : " ";
  };
  const std::string threads =
      options.threads != 0 ? Format("-threds %u ", unsigned{options.threads}) : " ";
  switch (stage) {
    case CompileStage::Qbsp:
      return threads + options.qbspParams + ' ' + given(COMPILE_NO_FILL, "-nofill") +
             given(COMPILE_ONLY_ENTITIES, "-onlyents") + given(COMPILE_QBSP_VERBOSE, "-verbose") +
             given(COMPILE_NO_WAIT, "-nowait") + argument;
    case CompileStage::Light:
      return threads + options.lightParams + ' ' + given(COMPILE_EXTRA, "-extra") + argument;
    default:
      return threads + options.visParams + ' ' + given(COMPILE_VIS_FAST, "-fast") +
             given(COMPILE_VIS_VERBOSE, "-v") + argument;
  }
}

bool CompileRun::Refuse(const Tool& tool, const std::string& why) {
  aside_.reset();
  listener_.OnStageLine(tool.failed);
  Fail(why);
  return false;
}

bool CompileRun::StartTool(const Tool& tool) {
  const bool makesLevel = stage_ == CompileStage::Qbsp;
  if (makesLevel && !setup_.options.Has(COMPILE_ONLY_ENTITIES)) aside_.emplace(paths_);
  bspBefore_ = file::Stamp(paths_.bsp);
  const std::string file = ToolFile(tool.name);
  const bool isHere = setup_.toolsDirectory.empty();
  if (copy_ && !copy_->Send()) {
    // What is there may be an older map.
    return Refuse(tool, "The map could not be copied to " + copy_->Paths().map + ".");
  }
  process_ = start_({.kind = ProcessKind::Tool,
                     .application = isHere ? file : InFolder(setup_.toolsDirectory, file),
                     .commandLine = file + ' ' + Arguments(stage_),
                     .directory = "",
                     .title = ""});
  stageStart_ = clock_();
  if (!process_) {
    const std::string folder = isHere ? CurrentDirectory() : setup_.toolsDirectory;
    return Refuse(tool, file + " could not be started from " + folder + ".");
  }
  started_ |= 1u << static_cast<unsigned>(stage_);
  listener_.OnStageLine(tool.started);
  output_.Say(LineKind::Heading, "--- " + file + ' ' + Arguments(stage_));
  listener_.OnOutput();
  return true;
}

bool CompileRun::NextStage() {
  while (stage_ < CompileStage::Vis) {
    stage_ = static_cast<CompileStage>(static_cast<int>(stage_) + 1);
    const Tool& tool = *ToolOf(stage_);
    if (setup_.options.Has(tool.flag) && StartTool(tool)) return true;
  }
  if (stage_ == CompileStage::Vis) {
    stage_ = CompileStage::Game;
    for (const std::string& trouble : CopyToGame(paths_, setup_.quakeDirectory)) {
      output_.Say(LineKind::Warning, trouble);
      listener_.OnOutput();
    }
    if (setup_.options.Has(COMPILE_GAME)) return StartGame();
  }
  return Finish();
}

bool CompileRun::StartGame() {
  const std::string program = setup_.quakeDirectory + PathSeparator() + setup_.quakeExecutable;
  process_ = start_({.kind = ProcessKind::Game,
                     .application = program,
                     .commandLine = QuotedArgument(program) + ' ' + setup_.options.quakeParams +
                                    " +map " + QuotedArgument(paths_.base),
                     .directory = setup_.quakeDirectory,
                     .title = "QUAKE"});
  stageStart_ = clock_();
  if (process_) {
    started_ |= 1u << static_cast<unsigned>(stage_);
    listener_.OnStageLine("Quake launched");
    return true;
  }
  hasFailed_ = true;
  reporter_.Show("Error", "Can't find quake.exe! Check Quake's directory in the options.");
  return false;
}

bool CompileRun::Finish() {
  process_.reset();
  stage_ = CompileStage::None;
  reporter_.Beep();
  listener_.OnOver();
  return false;
}

void CompileRun::TakeOutput() {
  if (!process_) return;
  const std::string text = process_->ReadOutput();
  if (text.empty()) return;
  output_.Append(text);
  listener_.OnOutput();
}

bool CompileRun::Tick() {
  if (!process_) return false;
  const std::optional<std::uint32_t> code = process_->ExitCode();
  if (!code) {
    TakeOutput();
    return true;
  }
  for (std::string text = process_->ReadOutput(); !text.empty(); text = process_->ReadOutput()) {
    output_.Append(text);
  }
  output_.EndTool();
  process_.reset();
  if (!EndStage(*code)) return false;
  if (NextStage()) return true;
  listener_.OnStageLine("Compiling finished");
  return false;
}

void CompileRun::FetchCopy() {
  if (!copy_) return;
  for (const std::string& trouble : copy_->Fetch()) Fail(trouble);
}

// False when the run cannot go on.
bool CompileRun::EndStage(std::uint32_t exitCode) {
  const std::string time = StageTime();
  const Tool* tool = ToolOf(stage_);
  if (tool) FetchCopy();
  if (tool) TellExit(*tool, exitCode);
  listener_.OnOutput();
  if (stage_ == CompileStage::Qbsp) return EndQbsp(time);
  listener_.OnStageLine(tool ? tool->successful + time : "Quake closed, time elaspsed: " + time);
  return true;
}

bool CompileRun::EndQbsp(const std::string& time) {
  const bool isMade = aside_ ? aside_->IsBspNew() : file::Find(paths_.bsp) == FindResult::Found;
  if (!isMade) {
    hasFailed_ = true;
    aside_.reset();
    listener_.OnStageLine("Qbsping unsuccessful! Time elaspsed: " + time);
    return false;
  }
  if (aside_) aside_->Drop();
  aside_.reset();
  listener_.OnStageLine(ToolOf(CompileStage::Qbsp)->successful + time);
  if (file::Find(paths_.prt) != FindResult::Found) {
    leaks_ = !setup_.options.Has(COMPILE_NO_FILL);
    listener_.OnStageLine(leaks_ ? "Map has leaks" : "Map was not filled");
  }
  listener_.OnLevelMade(leaks_);
  return true;
}

// The lines of the list are the same however a tool has ended; here the user reads how.
void CompileRun::TellExit(const Tool& tool, std::uint32_t exitCode) {
  const std::string file = ToolFile(tool.name);
  if (exitCode != 0) {
    Fail(file + Format(" ended with status %d.", static_cast<std::int32_t>(exitCode)));
  } else if (file::Stamp(paths_.bsp) == bspBefore_ && stage_ != CompileStage::Qbsp) {
    output_.Say(LineKind::Warning, file + " has written nothing into " + paths_.bsp + ".");
  }
}

void CompileRun::Cancel() {
  const Tool* tool = ToolOf(stage_);
  if (!process_ || !tool) return;
  TakeOutput();
  if (!process_->Terminate(CANCELLED)) {
    reporter_.Assert("TerminateProcess(di->process, -1)", SOURCE, __LINE__);
  }
  process_.reset();
  aside_.reset();
  hasFailed_ = true;
  output_.EndTool();
  listener_.OnStageLine(tool->cancelled + StageTime());
}

}  // namespace ferrowand
