// The box that offers work which was kept from the end of a program.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/rescue.h"

namespace ferrowand {

class Dialogs;

enum class RescueChoice { Open, Later, Delete };

// Each with its name and the time when it was kept. All stay for later when the user thinks better
// of the whole.
std::vector<RescueChoice> AskWhatToRescue(Dialogs& dialogs, const std::vector<Rescue>& rescues);

}  // namespace ferrowand
