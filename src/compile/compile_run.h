// One run of the game's tools over a Quake map, stage after stage, and the game behind them. Who
// has one asks it once a second how it does, and is told every line that the user is to see.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "compile/compile_files.h"
#include "compile/compile_options.h"
#include "compile/plain_copy.h"
#include "compile/tool_output.h"
#include "platform/process.h"

namespace ferrowand {

class Reporter;

enum class CompileStage : std::uint8_t { None, Qbsp, Light, Vis, Game };

struct CompileSetup {
  std::string mapPath;  // of the Quake map
  CompileOptions options;
  std::string quakeDirectory;
  std::string quakeExecutable;  // its name there
  std::string toolsDirectory;   // empty: the current folder, and no other
  std::string plainFolder;      // empty: the tools read the map's own (see plain_copy.h)
  std::vector<ToolsWad> wads;   // for that
};

class CompileListener {
 public:
  virtual ~CompileListener() = default;

  // A line of the overview's list.
  virtual void OnStageLine(const std::string& line) = 0;
  // The output has more lines than before.
  virtual void OnOutput() = 0;
  // Qbsp has made a level; it may have told where that leaks.
  virtual void OnLevelMade(bool leaks) = 0;
  // All stages are done. The last thing to be heard, but for the line that says so.
  virtual void OnOver() = 0;
};

class CompileRun {
 public:
  // In milliseconds, of any beginning.
  using Clock = std::function<std::uint32_t()>;

  // The listener and the reporter outlive it. Nothing is started yet.
  CompileRun(CompileSetup setup, ProcessStarter start, Clock clock, CompileListener& listener,
             Reporter& reporter);
  // A tool that runs is ended; a game is not.
  ~CompileRun();
  CompileRun(const CompileRun&) = delete;
  CompileRun& operator=(const CompileRun&) = delete;

  // Starts what comes next. False when nothing has been started: the run is over.
  bool NextStage();
  // Looks after what has been started. False when the run is over.
  bool Tick();
  // Takes what the tool has printed by now, so that it need not wait.
  void TakeOutput();
  // Ends the tool that runs, and the run with it. Of a game, or when nothing runs, nothing.
  void Cancel();

  const CompileSetup& Setup() const { return setup_; }
  const CompilePaths& Paths() const { return paths_; }
  const ToolOutput& Output() const { return output_; }
  ToolOutput& Output() { return output_; }
  Process* Running() { return process_.get(); }
  CompileStage Stage() const { return stage_; }
  // Since the run began, as "%u:%02u".
  std::string Elapsed() const;
  bool HasStarted(CompileStage stage) const;
  // A stage could not be started, ended with a fault, or was cancelled.
  bool HasFailed() const { return hasFailed_; }
  bool Leaks() const { return leaks_; }

 private:
  struct Tool;

  static const Tool* ToolOf(CompileStage stage);
  bool StartTool(const Tool& tool);
  bool Refuse(const Tool& tool, const std::string& why);
  void FetchCopy();
  std::string Arguments(CompileStage stage) const;
  bool StartGame();
  bool Finish();
  bool EndStage(std::uint32_t exitCode);
  bool EndQbsp(const std::string& time);
  void TellExit(const Tool& tool, std::uint32_t exitCode);
  std::string StageTime() const;
  void Fail(const std::string& why);

  const CompileSetup setup_;
  const CompilePaths paths_;
  std::optional<PlainCopy> copy_;  // where the tools are told of one
  const ProcessStarter start_;
  const Clock clock_;
  CompileListener& listener_;
  Reporter& reporter_;
  ToolOutput output_;
  std::unique_ptr<Process> process_;
  std::optional<FilesAside> aside_;
  std::optional<FileStamp> bspBefore_;  // the stage
  CompileStage stage_ = CompileStage::None;
  std::uint32_t runStart_, stageStart_;
  unsigned started_ = 0;  // a bit a stage
  bool hasFailed_ = false;
  bool leaks_ = false;
};

// "%u:%02u", minutes and seconds.
std::string TimeText(std::uint32_t milliseconds);

}  // namespace ferrowand
