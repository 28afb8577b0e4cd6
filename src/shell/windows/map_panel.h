// A panel about one map, beside the map's views: its layers, its entities, what is wrong with it.
// It is called after the map and goes with it.
#pragma once

#include "shell/windows/panel_window.h"

#include <string>

#include "document/announcement.h"

namespace ferrowand {

struct PanelLook {
  const char* windowClass;
  const char* title;  // before the map's name
  // Pixels at the usual size of letters, at first, in the corner that the arranged views leave
  // free.
  int width, height;
};

class MapPanel : public PanelWindow, public MapObserver {
 public:
  ~MapPanel() override;

  Map* GetMap() const override { return &map_; }
  // Keys that mean something to its controls. All others are commands here as everywhere.
  bool TakesMessage(MSG& message) override;

 protected:
  // All outlive it. Where such a window stood last is kept in `place`, if there is one.
  MapPanel(ChildWindows& windows, Map& map, const PanelLook& look, std::string* place = nullptr);
  // From the constructor of what the window is to be: messages come at once.
  void Open();
  // The map's, as it is called now.
  void ShowName();

  // Where no text is written.
  virtual bool IsOwnKey(WPARAM key, bool withControl) const = 0;
  // That the controls stand in.
  virtual HWND Dialog() const { return Handle(); }

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  Map& map_;

 private:
  const PanelLook look_;
  std::string* const place_;
};

}  // namespace ferrowand
