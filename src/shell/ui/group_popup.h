// The popup of groups and recent maps that File/Insert Group opens.
#pragma once

#include <string>

#include "shell/services/options.h"
#include "shell/ui/handles.h"

namespace ferrowand {

OwnedMenu MakeGroupPopup(const Options& options);

}  // namespace ferrowand
