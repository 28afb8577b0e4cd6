// The menu of a map's classes, at the cursor.
#pragma once

#include "shell/system/win32.h"

namespace ferrowand {

class ClassSet;
class Dialogs;
class EntityClass;
struct Options;

// Null when the user thinks better of it. Those that something was made of last, in whatever map,
// stand in front.
const EntityClass* AskClass(Dialogs& dialogs, HWND owner, const ClassSet& classes,
                            const Options& options);

}  // namespace ferrowand
