// How large the interface is on this screen. The system's figure is one for the whole life of the
// program.
#pragma once

#include "shell/system/win32.h"

namespace ferrowand {

// A length given in pixels of a screen of 96 dots an inch, in pixels of this one.
int Scaled(int pixels);
// The letters of what is no dialog of the system's, as large as in those. Never to be deleted.
HFONT InterfaceFont();
// The same in columns.
HFONT FixedFont();

}  // namespace ferrowand
