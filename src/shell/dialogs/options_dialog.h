// The "Options" dialog: every setting of the user, on five tabs.
#pragma once

#include "shell/system/win32.h"

#include <vector>

#include "platform/joystick.h"

namespace ferrowand {

class BoundEntities;
class ClassSet;
class Dialogs;
class Reporter;
class entity;
struct Options;

struct OptionsToEdit {
  Options& options;
  BoundEntities& boundEntities;
  Reporter& reporter;
  std::vector<JoystickInfo> joysticks;  // that are attached
  const ClassSet& classes;              // of the default entity
  const entity* selected = nullptr;     // a point entity, to be bound instead of that one
};

// Both change together when the user accepts, and not at all when the user thinks better of it:
// false then. Files are chosen by way of `dialogs`.
bool AskOptions(HWND owner, Dialogs& dialogs, const OptionsToEdit& edit);

}  // namespace ferrowand
