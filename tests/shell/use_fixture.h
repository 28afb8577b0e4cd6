// Doing to the program, one at a time, whatever a user can do, and telling what comes of each:
// after it the map is as it was, and so is the selection.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "shell/shown_fixture.h"

namespace ferrowand {

class UseTest : public ShownTest {
 protected:
  // Two boxes, a light and what it aims at, a door of one box; two WADs, two layers.
  void OpenMap(std::vector<std::size_t> selected);
  // Lets it be done, tells what came of it, and takes that back. Where it offers a choice, once
  // more for each item.
  void Act(const std::string& name, const std::function<void()>& act);
  void PutBack();
  // That have been chosen since.
  void ForgetOptions();
  // Whatever else is to be as it was before each act.
  virtual void Restore() {}
  // The drawing area in it gets the size at which it is told where it looks: captions and borders
  // are another system's own.
  static void Fit(const ChildWindow& window, HWND drawing);
  // Letters into what has the keys.
  void Write(const char* text);
  void SendMouse(HWND to, UINT message, WPARAM held, POINT at);

  std::string where;  // stands before what is done
  DWORD wait = 0;     // milliseconds, for what comes of it after a while

 private:
  using Items = std::vector<std::pair<unsigned, std::string>>;

  static FormValues Filled(const Form& form);
  std::string Chosen(const FileChoice& choice) const;
  void Settle();
  Items ActOnce(const std::string& name, const std::function<void()>& act);
  // That was asked and said.
  std::vector<std::string> Told();

  std::vector<std::size_t> selected_;  // of the layer's objects
  Options options_;                    // at first
};

}  // namespace ferrowand
