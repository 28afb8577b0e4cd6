// Tells what the running program shows, for a script that works it from outside: where its windows
// lie on the screen and what they say. One answer for each line of input, closed by "end". The line
// "crash" also makes the program jump to where no code is, as a fault of its own would.
// Its argument names the desktop that the program is on.
//   frame                                            once the program's window is there
//   view LEFT TOP RIGHT BOTTOM CAPTION-TOP CAPTION   the drawing area of a 2D view, in pixels of
//                                                    the screen; the view that lies on top first
//   text TEXT                                        of its status bar, left to right
//   camera LEFT TOP RIGHT BOTTOM CAPTION-TOP CAPTION  likewise, of a 3D camera
//   window TITLE                                     any other window: a dialog, a box, a menu
#include "shell/system/text_box.h"

#include <cstdint>
#include <iostream>
#include <string>

namespace {

using ferrowand::ClassOf;

std::string TextOf(HWND window) {
  char text[300] = "";
  SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text),
                      SMTO_ABORTIFHUNG, 1000, nullptr);
  return text;
}

void TellPlace(const char* what, HWND drawing, HWND child) {
  RECT inside{};
  GetClientRect(drawing, &inside);
  MapWindowPoints(drawing, nullptr, reinterpret_cast<POINT*>(&inside), 2);
  RECT whole{};
  GetWindowRect(child, &whole);
  std::cout << what << ' ' << inside.left << ' ' << inside.top << ' ' << inside.right << ' '
            << inside.bottom << ' ' << whole.top << ' ' << TextOf(child) << '\n';
}

void TellView(HWND drawing) {
  const HWND child = GetParent(drawing);
  TellPlace("view", drawing, child);
  for (HWND text = nullptr; (text = FindWindowExA(child, text, "Static", nullptr)) != nullptr;) {
    std::cout << "text " << TextOf(text) << '\n';
  }
}

BOOL CALLBACK OnChild(HWND window, LPARAM) {
  if (IsWindowVisible(window) && ClassOf(window) == "FRWMapClass") TellView(window);
  if (IsWindowVisible(window) && ClassOf(window) == "FRWView3DClass") {
    TellPlace("camera", window, window);
  }
  return TRUE;
}

BOOL CALLBACK OnTop(HWND window, LPARAM) {
  if (!IsWindowVisible(window) || ClassOf(window) == "FFRWWinClass") return TRUE;
  std::cout << "window " << TextOf(window) << '\n';
  return TRUE;
}

void Crash(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
  const auto nowhere = reinterpret_cast<LPTHREAD_START_ROUTINE>(std::uintptr_t{16});
  CloseHandle(CreateRemoteThread(process, nullptr, 0, nowhere, nullptr, 0, nullptr));
  CloseHandle(process);
}

}  // namespace

int main(int argc, char** argv) {
  std::string line;
  bool there = false;
  while (std::getline(std::cin, line)) {
    if (!there && argc > 1) {
      const HDESK desktop = OpenDesktopA(argv[1], 0, FALSE, GENERIC_ALL);
      there = desktop && SetThreadDesktop(desktop);
    }
    if (const HWND frame = FindWindowA("FFRWWinClass", nullptr)) {
      if (line == "crash") Crash(frame);
      if (IsWindowVisible(frame)) std::cout << "frame\n";
      EnumChildWindows(frame, OnChild, 0);
      EnumWindows(OnTop, 0);
    }
    std::cout << "end" << std::endl;
  }
}
