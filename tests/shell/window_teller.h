// What the program shows, as lines of text: its menu, its windows control by control, the views and
// cameras. Held against what was shown when somebody looked at it last.
#pragma once

#include "shell/system/win32.h"

#include <string>
#include <utility>
#include <vector>

#include "shell/app/app_parts.h"

namespace ferrowand {

// Pixels, of the drawing areas of which it is told where they look.
inline constexpr int TOLD_WIDTH = 480, TOLD_HEIGHT = 360;

class WindowTeller {
 public:
  // What is another each time, and what is told for it.
  using Names = std::vector<std::pair<std::string, std::string>>;

  WindowTeller(AppParts& parts, Names names) : parts_(parts), names_(std::move(names)) {}

  // All that is shown, each window's controls below its title.
  std::vector<std::string> All();
  // Each line that is shown now and was not when this or All was called last, with the window it
  // is in. Of a window that was not there, that it was opened.
  std::vector<std::string> Changes();
  // Without what is another each time.
  std::string Told(std::string text) const;

 private:
  struct Line {
    std::string window, text;
    std::size_t depth = 0;

    friend auto operator<=>(const Line&, const Line&) = default;
  };

  void Look();
  void Tell(std::size_t depth, const std::string& text);
  void TellMenu(HMENU menu, std::size_t depth);
  void TellWindow(HWND window);
  void TellChildren(HWND parent, std::size_t depth);
  void TellRows(HWND list, std::size_t depth);
  void TellItems(HWND box, bool isCombo, std::size_t depth);
  void TellPictures();

  AppParts& parts_;
  const Names names_;
  std::string window_;  // that is being told of
  std::vector<Line> lines_, before_;
};

// The part of a title that does not name what the window shows.
std::string KindOfWindow(const std::string& title);

// Fails where the lines are not those of the file among the tests' data; then they are written
// beside the program under that name, to be looked at and, if they are right, taken over.
void ExpectLookedAt(const std::vector<std::string>& lines, const std::string& name);

}  // namespace ferrowand
