// The popup of groups and recent maps that File/Insert Group opens.
#pragma once

#include <string>
#include <vector>

#include "base/options.h"
#include "shell/system/handles.h"

namespace ferrowand {

// The files of the groups directory, in the order of the popup.
std::vector<std::string> GroupFiles(const Options& options);
OwnedMenu MakeGroupPopup(const Options& options);

}  // namespace ferrowand
