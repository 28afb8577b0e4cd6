// The popup of groups and recent maps that File/Insert Group opens.
#pragma once

#include <string>
#include <vector>

#include "shell/services/options.h"
#include "shell/ui/handles.h"

namespace ferrowand {

// The files of the groups directory, in the order of the popup.
std::vector<std::string> GroupFiles(const Options& options);
OwnedMenu MakeGroupPopup(const Options& options);

}  // namespace ferrowand
