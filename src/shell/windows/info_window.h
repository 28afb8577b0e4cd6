// What a map holds, in figures, and what its compiled level holds. It stands beside the program's
// other windows; the map owns it.
#pragma once

#include "shell/system/win32.h"

#include <string>

#include "platform/file.h"
#include "shell/windows/side_dialog.h"

namespace ferrowand {

class Map;
class Reporter;

class InfoWindow : public SideDialog {
 public:
  // Filled as the map is now; Handle() is null when the system gave no window.
  InfoWindow(SideWindows& sides, const Frame& frame, Map& map, Reporter& reporter);

  const Map& GetMap() const { return *map_; }

  void OnMapClosing(const Map& map) override;
  void OnMapReplaced(const Map& map, Map& by) override;

 private:
  bool OnInit() override;
  void OnCommand(int id, int notification) override;
  void Fill();
  // Whether the file is there.
  bool ShowFile(const std::string& path, int pathText, int dateText, int timeText);
  void SetText(int id, const std::string& text) const;
  void ShowMore(bool isShown);

  Map* map_;
  Reporter& reporter_;
  int fullWidth_ = 0;  // of the window, pixels
  bool isWide_ = false;
};

// As the dialog shows them: "%u/%u/%u" of the day, month and year, and "%u:%.2u" of an hour that is
// one less than it was and the minutes; UTC, both.
struct DateTexts {
  std::string date;
  std::string time;
};
DateTexts TextsOf(const FileStamp& stamp);

}  // namespace ferrowand
