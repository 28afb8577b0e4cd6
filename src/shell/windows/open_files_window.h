// The files that the program holds and the memory that they take, looked at once a second, and the
// closing of those that no map uses. It stands beside the program's other windows.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <string>
#include <vector>

#include "operations/held_files.h"
#include "shell/windows/side_dialog.h"

namespace ferrowand {

class Documents;

class OpenFilesWindow : public SideDialog {
 public:
  // All outlive it. Handle() is null when the system gave no window.
  OpenFilesWindow(SideWindows& sides, const Frame& frame, const Documents& documents,
                  GameData& data);

  // --- as a window beside the frame
  bool LeavesToProgram(const MSG& message) const override;

 private:
  // --- as a dialog
  bool OnInit() override;
  void OnCommand(int id, int notification) override;
  LRESULT OnNotify(NMHDR& header) override;
  void OnTimer() override { Fill(); }

  void Fill();
  void Purge();

  const Documents& documents_;
  GameData& data_;
  std::vector<HeldFile> files_;
  std::wstring text_;  // the cell that the system was given last
};

// What is said of what a purge has closed.
std::string PurgedInWords(const std::vector<std::string>& closed);

}  // namespace ferrowand
