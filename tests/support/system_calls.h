// Follows a process through its system calls and gets in its way. Linux on x86-64 only; elsewhere
// CanTrace() is false.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace ferrowand {

enum class InTheWay { Nothing, Kill, Fail };

struct TracedRun {
  std::vector<long> calls;  // their numbers, in their order; those of memory and signals left out
  bool killed = false;
  bool result = false;  // what the work gave
};

bool CanTrace();

// The work, in a process of its own. When it comes to the call with the index `at` that process is
// killed, or the call is not made and fails with EIO.
TracedRun RunTraced(const std::function<bool()>& work, InTheWay what = InTheWay::Nothing,
                    std::size_t at = 0);

}  // namespace ferrowand
