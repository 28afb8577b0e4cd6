// How large the interface is on this screen: lengths, and the letters of what is no dialog of the
// system's, as large as in those.
#pragma once

#include "shell/system/win32.h"

#include "platform/display.h"

namespace ferrowand {

// Never to be deleted.
HFONT InterfaceFont();
// The same in columns.
HFONT FixedFont();

}  // namespace ferrowand
