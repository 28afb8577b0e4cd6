// The pictures of the commands, as the toolbar and the popup of primitives show them.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

namespace ferrowand {

// Width and height, pixels of this screen.
int ToolPictureSize();
// One for each button, grey for what cannot be done. The caller destroys them. Null when the system
// has no memory for it.
HIMAGELIST LoadToolPictures(HINSTANCE instance, bool isGrey);

}  // namespace ferrowand
