#include "platform/process.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace ferrowand {
namespace {

constexpr DWORD PIPE_BYTES = 1 << 20;   // that a tool may be ahead of its reader
constexpr DWORD ENDING_TIME = 2000;     // milliseconds that a process takes to go, at most
constexpr DWORD PIECE_BYTES = 1 << 18;  // of one read

struct HandleClose {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, HandleClose>;

class WinProcess : public Process {
 public:
  WinProcess(OwnedHandle process, OwnedHandle job, OwnedHandle output)
      : process_(std::move(process)), job_(std::move(job)), output_(std::move(output)) {}
  ~WinProcess() override {
    if (!job_ || WinProcess::ExitCode()) return;
    WinProcess::Terminate(static_cast<UINT>(-1));
  }

  std::optional<std::uint32_t> ExitCode() override {
    DWORD code = 0;
    if (WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT) return std::nullopt;
    GetExitCodeProcess(process_.get(), &code);
    return code;
  }

  bool Terminate(std::uint32_t exitCode) override {
    const bool isEnded = TerminateProcess(process_.get(), exitCode) != 0;
    if (job_) TerminateJobObject(job_.get(), exitCode);
    // Its files are free only when it has gone.
    WaitForSingleObject(process_.get(), ENDING_TIME);
    return isEnded;
  }

  std::string ReadOutput() override {
    DWORD there = 0;
    if (!output_ || !PeekNamedPipe(output_.get(), nullptr, 0, nullptr, &there, nullptr)) return "";
    std::string text(std::min(there, PIECE_BYTES), '\0');
    DWORD read = 0;
    if (text.empty() ||
        !ReadFile(output_.get(), text.data(), static_cast<DWORD>(text.size()), &read, nullptr)) {
      read = 0;
    }
    text.resize(read);
    return text;
  }

  // Nothing of the system waits for a pipe and a process together.
  void Wait(unsigned milliseconds) override {
    constexpr DWORD STEP = 10;
    for (unsigned waited = 0; waited < milliseconds; waited += STEP) {
      DWORD there = 0;
      if (output_ && PeekNamedPipe(output_.get(), nullptr, 0, nullptr, &there, nullptr) &&
          there > 0) {
        return;
      }
      if (WaitForSingleObject(process_.get(), STEP) != WAIT_TIMEOUT) return;
    }
  }

 private:
  OwnedHandle process_;
  OwnedHandle job_;  // holds a tool and all that it starts; they end with it
  OwnedHandle output_;
};

// The handles that a tool is given, and no others of this program.
class ToolHandles {
 public:
  ToolHandles() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE read = nullptr, write = nullptr;
    if (!CreatePipe(&read, &write, &inherited, PIPE_BYTES)) return;
    SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
    output_.reset(read);
    given_[0].reset(write);
    const HANDLE nothing = CreateFileA("NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       &inherited, OPEN_EXISTING, 0, nullptr);
    if (nothing != INVALID_HANDLE_VALUE) given_[1].reset(nothing);
  }

  bool AreThere() const { return given_[0] && given_[1]; }
  void PutInto(STARTUPINFOEXA& info) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    list_.resize(size);
    info.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(list_.data());
    InitializeProcThreadAttributeList(info.lpAttributeList, 1, 0, &size);
    inherited_ = {given_[0].get(), given_[1].get()};
    UpdateProcThreadAttribute(info.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                              inherited_.data(), sizeof inherited_, nullptr, nullptr);
    info.StartupInfo.dwFlags |= STARTF_USESTDHANDLES;
    info.StartupInfo.hStdOutput = info.StartupInfo.hStdError = given_[0].get();
    info.StartupInfo.hStdInput = given_[1].get();
  }
  OwnedHandle TakeOutput() { return std::move(output_); }

 private:
  OwnedHandle output_;
  std::array<OwnedHandle, 2> given_;  // to print to, to read from
  std::array<HANDLE, 2> inherited_{};
  std::vector<char> list_;
};

OwnedHandle MakeJob() {
  OwnedHandle job(CreateJobObjectA(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

// What has been started, its thread closed; nothing when it was not.
OwnedHandle Create(const ProcessStart& start, STARTUPINFOEXA& info, bool inherits, DWORD flags,
                   HANDLE job) {
  std::string line = start.commandLine;  // the system may write into it
  std::string title = start.title;
  if (!title.empty()) info.StartupInfo.lpTitle = title.data();
  PROCESS_INFORMATION made{};
  if (!CreateProcessA(start.application.c_str(), line.data(), nullptr, nullptr, inherits,
                      flags | CREATE_SUSPENDED, nullptr,
                      start.directory.empty() ? nullptr : start.directory.c_str(),
                      &info.StartupInfo, &made)) {
    return nullptr;
  }
  if (job) {
    AssignProcessToJobObject(job, made.hProcess);
    SetPriorityClass(made.hProcess,
                     HIGH_PRIORITY_CLASS);  // not every system takes it from the flag
  }
  ResumeThread(made.hThread);
  CloseHandle(made.hThread);
  return OwnedHandle(made.hProcess);
}

std::unique_ptr<Process> StartTool(const ProcessStart& start) {
  ToolHandles handles;
  if (!handles.AreThere()) return nullptr;
  STARTUPINFOEXA info{};
  info.StartupInfo.cb = sizeof info;
  info.StartupInfo.dwFlags = STARTF_USESHOWWINDOW;
  info.StartupInfo.wShowWindow = SW_SHOWMINNOACTIVE;
  handles.PutInto(info);
  OwnedHandle job = MakeJob();
  OwnedHandle process =
      Create(start, info, true,
             CREATE_NEW_CONSOLE | HIGH_PRIORITY_CLASS | EXTENDED_STARTUPINFO_PRESENT, job.get());
  const DWORD error = GetLastError();
  DeleteProcThreadAttributeList(info.lpAttributeList);
  SetLastError(error);
  if (!process) return nullptr;
  return std::make_unique<WinProcess>(std::move(process), std::move(job), handles.TakeOutput());
}

std::unique_ptr<Process> StartGame(const ProcessStart& start) {
  STARTUPINFOEXA info{};
  info.StartupInfo.cb = sizeof info.StartupInfo;
  info.StartupInfo.dwFlags = STARTF_USESHOWWINDOW;
  info.StartupInfo.wShowWindow = SW_SHOWMAXIMIZED;
  OwnedHandle process = Create(start, info, false, 0, nullptr);
  if (!process) return nullptr;
  return std::make_unique<WinProcess>(std::move(process), nullptr, nullptr);
}

}  // namespace

std::unique_ptr<Process> StartProcess(const ProcessStart& start) {
  return start.kind == ProcessKind::Tool ? StartTool(start) : StartGame(start);
}

}  // namespace ferrowand
