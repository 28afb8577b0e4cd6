// The seam to the system's programs: starting one, asking how it does, reading what it prints,
// ending it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ferrowand {

enum class ProcessKind {
  Tool,  // a console of its own, out of the way, and high priority; its output is ours to read, it
         // is given no input, and it never outlives this program
  Game   // its window fills the screen; it goes on when this program ends
};

struct ProcessStart {
  ProcessKind kind = ProcessKind::Tool;
  std::string application;  // a bare name is looked for in the current folder only
  std::string commandLine;  // whole, the program's name first
  std::string directory;    // that it starts in; empty: the current folder
  std::string title;        // of its window, where the system has such a thing
};

class Process {
 public:
  // A tool that runs is ended.
  virtual ~Process() = default;

  // Nothing while it runs. One that a signal or an exception has ended has a code other than 0.
  virtual std::optional<std::uint32_t> ExitCode() = 0;
  // With all that it has started. False when the system refuses.
  virtual bool Terminate(std::uint32_t exitCode) = 0;
  // What it has printed since the last call, no more than some hundred kilobytes of it: empty when
  // there is nothing more by now. Of a game always. A tool that prints more than is read waits.
  virtual std::string ReadOutput() = 0;
  // Comes back when it has ended or printed something, or after that time.
  virtual void Wait(unsigned milliseconds) = 0;
};

// Null when it could not be started.
std::unique_ptr<Process> StartProcess(const ProcessStart& start);
using ProcessStarter = std::function<std::unique_ptr<Process>(const ProcessStart&)>;

// The argument that gives a program the text as one word, blanks and all.
std::string QuotedArgument(const std::string& text);

}  // namespace ferrowand
