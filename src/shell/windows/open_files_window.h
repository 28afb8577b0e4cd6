// The files that the program holds and the memory that they take, looked at once a second, and the
// closing of those that no map uses. It stands beside the program's other windows.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <string>
#include <vector>

#include "operations/held_files.h"
#include "shell/windows/side_windows.h"

namespace ferrowand {

class Documents;
class Frame;

class OpenFilesWindow : public SideWindow {
 public:
  // All outlive it. Handle() is null when the system gave no window.
  OpenFilesWindow(SideWindows& sides, const Frame& frame, const Documents& documents,
                  GameData& data);

  // --- as a window beside the frame
  bool LeavesToProgram(const MSG& message) const override;

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnInit();
  void Fill();
  void GiveRow(LVITEMW& item);
  void Purge();

  const Documents& documents_;
  GameData& data_;
  std::vector<HeldFile> files_;
  std::wstring text_;  // the cell that the system was given last
};

// What is said of what a purge has closed.
std::string PurgedInWords(const std::vector<std::string>& closed);

}  // namespace ferrowand
