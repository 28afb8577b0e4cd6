#include "cli/compile_command.h"

#include <chrono>
#include <ostream>
#include <vector>

#include "base/safe_file.h"
#include "cli/printable.h"
#include "compile/report.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

constexpr unsigned PERIOD = 100;  // milliseconds between two looks at a tool that says nothing

std::uint32_t Milliseconds() {
  using namespace std::chrono;
  return static_cast<std::uint32_t>(
      duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

class Printer : public CompileListener {
 public:
  explicit Printer(std::ostream& out) : out_(out) {}

  void SetRun(const CompileRun& run) { run_ = &run; }
  const std::vector<std::string>& Lines() const { return lines_; }

  void OnStageLine(const std::string& line) override {
    lines_.push_back(line);
    out_ << Printable(line) << std::endl;
  }
  void OnOutput() override {
    const ToolOutput& output = run_->Output();
    for (; printed_ < output.Dropped() + output.Finished(); ++printed_) {
      if (printed_ < output.Dropped()) continue;
      out_ << "  " << Printable(output.At(printed_ - output.Dropped()).text) << '\n';
    }
    out_.flush();
  }
  void OnLevelMade(bool) override {}
  void OnOver() override {}

 private:
  std::ostream& out_;
  const CompileRun* run_ = nullptr;
  std::vector<std::string> lines_;
  std::size_t printed_ = 0;  // lines of the tools, those that are not kept any more included
};

}  // namespace

std::optional<CompileOptions> ChosenOptions(const CliArguments& arguments, std::ostream& err) {
  CompileOptions options;
  if (!arguments.profile.empty()) {
    const std::string file = ProfilesFile(UserDataDirectory());
    const std::vector<CompileProfile> profiles = ReadProfiles(FileBytes(file).value_or(""));
    const CompileProfile* profile = FindProfile(profiles, arguments.profile);
    if (!profile) {
      err << "No profile " << Printable(arguments.profile) << " in " << Printable(file) << '\n';
      return std::nullopt;
    }
    options = profile->options;
  }
  options.flags &= static_cast<std::uint16_t>(~COMPILE_GAME);
  if (arguments.flags) options.flags = *arguments.flags;
  if (arguments.visibleOnly) options.flags |= COMPILE_ONLY_VISIBLE;
  return options;
}

int RunCompile(const CompileSetup& setup, const std::string& reportFile, Reporter& reporter,
               std::ostream& out, std::ostream& err) {
  Printer printer(out);
  CompileRun run(setup, StartProcess, Milliseconds, printer, reporter);
  printer.SetRun(run);
  for (bool goesOn = run.NextStage(); goesOn; goesOn = run.Tick()) run.Running()->Wait(PERIOD);
  if (!reportFile.empty()) {
    const std::string report = CompileReport(run, printer.Lines(), MachineProcessor());
    if (!ReplaceFile(reportFile, report, {}, nullptr)) {
      err << "Cannot open file (" << Printable(reportFile) << ") for write!\n";
      return 2;
    }
  }
  return run.HasFailed() || run.Leaks() ? 1 : 0;
}

}  // namespace ferrowand
