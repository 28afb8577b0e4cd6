#include "support/system_calls.h"

#if defined(__linux__) && defined(__x86_64__)
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#endif

namespace ferrowand {

#if defined(__linux__) && defined(__x86_64__)
namespace {

constexpr int STOPPED_AT_CALL = SIGTRAP | 0x80;

// What a program does between its calls for files.
bool IsAside(long call) {
  constexpr std::array ASIDE{
      SYS_mmap,        SYS_munmap,        SYS_mprotect,       SYS_madvise,
      SYS_brk,         SYS_futex,         SYS_sched_yield,    SYS_gettid,
      SYS_getpid,      SYS_rt_sigaction,  SYS_rt_sigprocmask, SYS_rt_sigreturn,
      SYS_sigaltstack, SYS_clock_gettime, SYS_exit_group,     SYS_set_robust_list,
      SYS_rseq};
  return std::ranges::find(ASIDE, call) != ASIDE.end();
}

class Tracer {
 public:
  explicit Tracer(pid_t child) : child_(child) {}

  bool Start() {
    return Wait() && WIFSTOPPED(status_) &&
           ptrace(PTRACE_SETOPTIONS, child_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) ==
               0;
  }

  TracedRun Run(InTheWay what, std::size_t at) {
    TracedRun run;
    while (NextCall()) {
      user_regs_struct registers{};
      ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
      const long call = static_cast<long>(registers.orig_rax);
      const bool isAside = IsAside(call);
      const bool isMine = !isAside && run.calls.size() == at;
      if (!isAside) run.calls.push_back(call);
      if (isMine && what == InTheWay::Kill) kill(child_, SIGKILL);
      if (isMine && what == InTheWay::Fail) {
        Skip(registers);
      } else if (!NextCall()) {  // its return
        break;
      }
    }
    run.killed = WIFSIGNALED(status_);
    run.result = WIFEXITED(status_) && WEXITSTATUS(status_) == 0;
    return run;
  }

 private:
  bool Wait() { return waitpid(child_, &status_, 0) == child_; }

  // To the next begin or end of a call; false when the process has ended.
  bool NextCall() {
    int signal = 0;
    do {
      ptrace(PTRACE_SYSCALL, child_, nullptr, signal);
      if (!Wait() || !WIFSTOPPED(status_)) return false;
      signal = WSTOPSIG(status_);
    } while (signal != STOPPED_AT_CALL);
    return true;
  }

  void Skip(user_regs_struct registers) {
    registers.orig_rax = static_cast<unsigned long long>(-1);
    ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
    if (!NextCall()) return;
    ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
    registers.rax = static_cast<unsigned long long>(-EIO);
    ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
  }

  pid_t child_;
  int status_ = 0;
};

}  // namespace

TracedRun RunTraced(const std::function<bool()>& work, InTheWay what, std::size_t at) {
  const pid_t child = fork();
  if (child == 0) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(1);
    raise(SIGSTOP);
    _exit(work() ? 0 : 1);
  }
  Tracer tracer(child);
  return tracer.Start() ? tracer.Run(what, at) : TracedRun{};
}

bool CanTrace() {
  return RunTraced([] { return true; }).result;
}
#else
TracedRun RunTraced(const std::function<bool()>&, InTheWay, std::size_t) {
  return {};
}

bool CanTrace() {
  return false;
}
#endif

}  // namespace ferrowand
