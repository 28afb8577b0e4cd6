#include "shell/windows/window_maker.h"

#include "base/report.h"
#include "shell/windows/child_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

WindowMaker::WindowMaker(ChildWindows& windows, const MapWindowContext& ofViews,
                         const LayerWindowContext& ofLayers)
    : windows_(windows), ofViews_(ofViews), ofLayers_(ofLayers) {}

MapWindow* WindowMaker::AddView(Map& map, Orientation orientation) {
  auto* window = static_cast<MapWindow*>(
      windows_.Add(std::make_unique<MapWindow>(windows_, ofViews_, map, orientation)));
  if (window) {
    ofViews_.tools.LimitAxes(*window->View());
  } else {
    ofViews_.reporter.Assert("hwnd!=NULL", "qvwin.cpp", __LINE__);
  }
  return window;
}

void WindowMaker::ShowLayers(Map& map) {
  for (const ChildWindow* window : windows_.WindowsOf(map)) {
    if (dynamic_cast<const LayerWindow*>(window)) return windows_.BringToFront(*window);
  }
  windows_.Add(std::make_unique<LayerWindow>(windows_, ofLayers_, map));
}

void WindowMaker::OnMapOpened(Map& map) {
  for (const Orientation orientation : {Orientation::Side, Orientation::Front, Orientation::Top}) {
    AddView(map, orientation);
  }
  windows_.Arrange(map, Arrangement::Quarters);
  const Bounds everything = map.GetBounds();
  for (MapView* view : windows_.Views().ViewsOf(map)) {
    view->CentreOn({0, 0, 0});
    view->ZoomTo(everything);
  }
}

void WindowMaker::OnMapClosing(Map& map) {
  windows_.CloseWindowsOf(map);
}

}  // namespace ferrowand
