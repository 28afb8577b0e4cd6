// How large things are drawn on this screen. The system's figure is one for the whole life of the
// program; where nothing is shown it is the usual one of 96 dots an inch.
#pragma once

namespace ferrowand {

int ScreenDpi();
// A length given in pixels of a screen of 96 dots an inch, in pixels of this one.
int Scaled(int pixels);

}  // namespace ferrowand
