#include "shell/system/last_will.h"

#include "base/report.h"
#include "shell/system/win32.h"

#include <atomic>
#include <exception>
#include <utility>

namespace ferrowand {
namespace {

constexpr ULONG STACK_LEFT = 256 * 1024;  // bytes, for writing the maps after an overflow

std::function<std::string()> will;
MessageSink* sink = nullptr;
std::atomic_flag isExecuted;
std::string told;

DWORD WINAPI Tell(void*) {
  Reporter(*sink).Show("Error", told, Buttons::Ok, Icon::Stop);
  return 0;
}

// What fails in here ends the program without a word. The box has a thread of its own: one that
// waits for it hands out no messages to windows that may be what has failed.
void Execute() {
  if (!will || isExecuted.test_and_set()) return;
  told = will();
  const HANDLE thread = CreateThread(nullptr, 0, Tell, nullptr, 0, nullptr);
  if (!thread) return;
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

LONG WINAPI OnException(EXCEPTION_POINTERS*) {
  Execute();
  return EXCEPTION_EXECUTE_HANDLER;
}

[[noreturn]] void OnTerminate() {
  Execute();
  TerminateProcess(GetCurrentProcess(), 3);
  while (true) Sleep(INFINITE);
}

}  // namespace

LastWill::LastWill(MessageSink& toldBy, std::function<std::string()> write) {
  sink = &toldBy;
  will = std::move(write);
  ULONG left = STACK_LEFT;
  SetThreadStackGuarantee(&left);
  SetUnhandledExceptionFilter(OnException);
  std::set_terminate(OnTerminate);
}

LastWill::~LastWill() {
  SetUnhandledExceptionFilter(nullptr);
  will = nullptr;
}

}  // namespace ferrowand
