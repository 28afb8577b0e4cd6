// The window classes of the program.
#pragma once

#include "shell/system/win32.h"

#include <string>
#include <vector>

#include "shell/system/handles.h"

namespace ferrowand {

// "FRWMDIClient" where the display can show its colour, the system's own class elsewhere.
const char* MdiClientClass(int bitsPerPixel);
int ScreenBitsPerPixel();

// Registered classes go when this does; their windows must be gone by then.
class WindowClasses {
 public:
  explicit WindowClasses(HINSTANCE instance);
  ~WindowClasses();
  WindowClasses(const WindowClasses&) = delete;
  WindowClasses& operator=(const WindowClasses&) = delete;

  // False at the first class that the system refuses.
  bool Register();
  const char* MdiClient() const { return mdiClient_; }

 private:
  bool RegisterMdiClient();

  HINSTANCE instance_;
  OwnedBrush clientBrush_;
  const char* mdiClient_;
  std::vector<const char*> registered_;
};

}  // namespace ferrowand
