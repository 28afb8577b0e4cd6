// Where a window stood last, as the settings keep it: "left top width height", in pixels.
#pragma once

#include "shell/system/win32.h"

#include <string>

#include "platform/pixel.h"
#include "shell/windows/child_window.h"

namespace ferrowand {

// The place of the window in its parent, or on the screen where it has none; what was kept before
// while it is maximised or an icon.
std::string PlaceText(HWND window, const std::string& before);
// What was kept, moved and cut until it lies in the area, or else the given place.
ChildPlace PlaceOfText(const std::string& text, const ChildPlace& otherwise, const PixelSize& area);

}  // namespace ferrowand
