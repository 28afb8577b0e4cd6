// The box that asks what a compile is to do.
#pragma once

#include "shell/system/win32.h"

#include <functional>
#include <optional>
#include <vector>

#include "compile/compile_options.h"

namespace ferrowand {

class Clipboard;

struct CompileQuestion {
  CompileOptions options;  // shown at first
  std::vector<CompileProfile> profiles;
  // The user has kept, deleted or pasted some: these are all from now on.
  std::function<void(const std::vector<CompileProfile>&)> keepProfiles;
  Clipboard* clipboard;  // by which profiles travel
};

// Nothing when the user thought better of it.
std::optional<CompileOptions> AskCompileOptions(HWND owner, const CompileQuestion& question);

}  // namespace ferrowand
