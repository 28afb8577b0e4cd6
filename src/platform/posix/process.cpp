#include "platform/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/system.h"

namespace ferrowand {
namespace {

constexpr std::size_t PIECE_BYTES = 1 << 18;  // of one read
constexpr int CANNOT_START = 127;

// Owns a file descriptor; -1 is none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    Close();
    fd_ = std::exchange(other.fd_, -1);
    return *this;
  }

  int Get() const { return fd_; }
  void Close() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
  }

 private:
  int fd_ = -1;
};

// Blanks part words, quotes hold them together.
std::vector<std::string> Words(std::string_view line) {
  std::vector<std::string> words;
  bool isQuoted = false, isOpen = false;
  for (const char c : line) {
    if (c == '"') {
      isQuoted = !isQuoted;
      if (!isOpen) words.emplace_back();
      isOpen = true;
    } else if ((c == ' ' || c == '\t') && !isQuoted) {
      isOpen = false;
    } else {
      if (!isOpen) words.emplace_back();
      isOpen = true;
      words.back() += c;
    }
  }
  return words;
}

class PosixProcess : public Process {
 public:
  PosixProcess(pid_t pid, ProcessKind kind, Descriptor output)
      : pid_(pid), kind_(kind), output_(std::move(output)) {}
  ~PosixProcess() override {
    if (kind_ != ProcessKind::Tool) return;
    if (!PosixProcess::ExitCode()) PosixProcess::Terminate(1);
    kill(-pid_, SIGKILL);  // what it has started and left
  }

  std::optional<std::uint32_t> ExitCode() override {
    int status = 0;
    if (!code_ && waitpid(pid_, &status, WNOHANG) == pid_) {
      constexpr int BY_SIGNAL = 128;
      code_ = static_cast<std::uint32_t>(WIFEXITED(status) ? WEXITSTATUS(status)
                                                           : BY_SIGNAL + WTERMSIG(status));
    }
    return code_;
  }

  bool Terminate(std::uint32_t exitCode) override {
    if (kill(-pid_, SIGKILL) != 0 || waitpid(pid_, nullptr, 0) != pid_) return false;
    code_ = exitCode;
    return true;
  }

  std::string ReadOutput() override {
    std::string text;
    while (output_.Get() >= 0 && text.size() < PIECE_BYTES) {
      char piece[4096];
      const ssize_t count = read(output_.Get(), piece, sizeof piece);
      if (count <= 0) break;
      text.append(piece, static_cast<std::size_t>(count));
    }
    return text;
  }

  // A terminal tells of its end by an error, and so does not sleep any more then.
  void Wait(unsigned milliseconds) override {
    pollfd output{output_.Get(), POLLIN, 0};
    poll(&output, 1, static_cast<int>(milliseconds));
    constexpr useconds_t A_MOMENT = 1000;
    if (!(output.revents & POLLIN) && output.revents != 0) usleep(A_MOMENT);
  }

 private:
  pid_t pid_;
  ProcessKind kind_;
  Descriptor output_;
  std::optional<std::uint32_t> code_;
};

// A terminal for the tool, so that it prints at once what it would hold back on a pipe; bytes pass
// as they are.
struct Terminal {
  Descriptor ours;
  Descriptor tools;
};

Terminal OpenTerminal() {
  Terminal terminal;
  terminal.ours = Descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  const int ours = terminal.ours.Get();
  if (ours < 0 || grantpt(ours) != 0 || unlockpt(ours) != 0) return {};
  char name[128];
  if (ptsname_r(ours, name, sizeof name) != 0) return {};
  terminal.tools = Descriptor(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios settings;
  if (tcgetattr(terminal.tools.Get(), &settings) != 0) return {};
  cfmakeraw(&settings);
  tcsetattr(terminal.tools.Get(), TCSANOW, &settings);
  fcntl(ours, F_SETFL, O_NONBLOCK);
  return terminal;
}

// Between fork and exec nothing may allocate.
struct Child {
  const char* path;
  char* const* words;
  const char* directory;  // null: the current one
  int output;             // -1: this program's own
  int nothing;
  int failure;  // told when it could not be started
};

[[noreturn]] void Become(const Child& child, pid_t parent) {
  setsid();
  if (child.output >= 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(CANNOT_START);
    dup2(child.output, STDOUT_FILENO);
    dup2(child.output, STDERR_FILENO);
  }
  dup2(child.nothing, STDIN_FILENO);
  if (!child.directory || chdir(child.directory) == 0) execv(child.path, child.words);
  const int error = errno;
  if (write(child.failure, &error, sizeof error) < 0) _exit(CANNOT_START);
  _exit(CANNOT_START);
}

// As seen from here: the program begins in a folder of its own.
std::string PathOf(const std::string& application) {
  std::string path = application;
  std::ranges::replace(path, '\\', '/');
  return path.starts_with('/') ? path : CurrentDirectory() + '/' + path;
}

std::unique_ptr<Process> Start(const ProcessStart& start, Terminal terminal) {
  std::vector<std::string> words = Words(start.commandLine);
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  const std::string path = PathOf(start.application);
  std::string directory = start.directory;
  std::ranges::replace(directory, '\\', '/');
  const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  int failure[2];
  if (pipe2(failure, O_CLOEXEC) != 0) return nullptr;
  const Descriptor failed(failure[0]);
  Descriptor failing(failure[1]);

  const pid_t parent = getpid();
  const pid_t pid = fork();
  if (pid < 0) return nullptr;
  if (pid == 0) {
    Become({path.c_str(), pointers.data(), directory.empty() ? nullptr : directory.c_str(),
            terminal.tools.Get(), nothing.Get(), failure[1]},
           parent);
  }
  failing.Close();
  int error = 0;
  if (read(failed.Get(), &error, sizeof error) > 0) {
    waitpid(pid, nullptr, 0);
    errno = error;
    return nullptr;
  }
  return std::make_unique<PosixProcess>(pid, start.kind, std::move(terminal.ours));
}

}  // namespace

std::unique_ptr<Process> StartProcess(const ProcessStart& start) {
  if (start.kind == ProcessKind::Game) return Start(start, {});
  Terminal terminal = OpenTerminal();
  if (terminal.tools.Get() < 0) return nullptr;
  return Start(start, std::move(terminal));
}

}  // namespace ferrowand
