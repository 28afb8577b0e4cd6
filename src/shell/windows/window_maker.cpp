#include "shell/windows/window_maker.h"

#include <algorithm>

#include "base/report.h"
#include "shell/direct3d/direct3d.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/side_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

Orientation OrientationOf(const MapView& view) {
  constexpr Orientation BY_DEPTH[] = {Orientation::Side, Orientation::Front, Orientation::Top};
  return BY_DEPTH[view.transform.DepthAxis()];
}

template <typename Window>
ChildWindow* WindowOfKind(const ChildWindows& windows, const Map& map) {
  const auto open = windows.WindowsOf(map);
  const auto found = std::ranges::find_if(
      open, [](const ChildWindow* window) { return dynamic_cast<const Window*>(window); });
  return found == open.end() ? nullptr : *found;
}

// The one of the map, in front of the others.
template <typename Window, typename Context>
void ShowOnly(ChildWindows& windows, Context& context, Map& map) {
  if (const ChildWindow* window = WindowOfKind<Window>(windows, map)) {
    return windows.BringToFront(*window);
  }
  windows.Add(std::make_unique<Window>(windows, context, map));
}

}  // namespace

WindowMaker::WindowMaker(ChildWindows& windows, SideWindows& sides, const MapWindowContext& ofViews,
                         const LayerWindowContext& ofLayers, const CameraWindowContext& ofCameras,
                         Dialogs& dialogs, const EntityTreeContext& ofTrees,
                         const TextureBrowserContext& ofTextures)
    : windows_(windows),
      sides_(sides),
      ofViews_(ofViews),
      ofLayers_(ofLayers),
      ofCameras_(ofCameras),
      dialogs_(dialogs),
      ofTrees_(ofTrees),
      ofTextures_(ofTextures) {}

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

CameraWindow* WindowMaker::AddCamera(Map& map, CameraKind kind) {
  if (kind == CameraKind::Direct3d && !ofCameras_.direct3d.IsReady()) return nullptr;
  return static_cast<CameraWindow*>(
      windows_.Add(std::make_unique<CameraWindow>(windows_, ofCameras_, map, kind)));
}

void WindowMaker::ShowLayers(Map& map) {
  ShowOnly<LayerWindow>(windows_, ofLayers_, map);
}

void WindowMaker::ShowCheck(Map& map) {
  ShowOnly<CheckWindow>(windows_, dialogs_, map);
}

void WindowMaker::ShowEntityTree(Map& map) {
  ShowOnly<EntityTreeWindow>(windows_, ofTrees_, map);
}

void WindowMaker::ShowTextures(Map& map) {
  ShowOnly<TextureBrowser>(windows_, ofTextures_, map);
}

void WindowMaker::ShowInBrowser(Map& map, std::string_view texture) {
  ShowTextures(map);
  auto* browser = dynamic_cast<TextureBrowser*>(WindowOfKind<TextureBrowser>(windows_, map));
  if (browser) browser->ShowInBrowser(texture);
}

// The view from above is made last, and so is the active one.
void WindowMaker::OnMapOpened(Map& map) {
  if (ofCameras_.options.useDirect3D) {
    CameraWindow* window = AddCamera(map, CameraKind::Direct3d);
    if (window) window->GetCamera()->GoToOpening();
  }
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
  sides_.OnMapClosing(map);
  windows_.CloseWindowsOf(map);
  windows_.Views().marks.Forget(map);
}

// The last one that was active is made last, and so is active again.
void WindowMaker::OnMapReplaced(Map& map, Map& by) {
  const bool showedLayers = WindowOfKind<LayerWindow>(windows_, map) != nullptr;
  const bool showedTextures = WindowOfKind<TextureBrowser>(windows_, map) != nullptr;
  const bool showedTree = WindowOfKind<EntityTreeWindow>(windows_, map) != nullptr;
  for (ChildWindow* window : windows_.WindowsOf(map)) {
    const auto* camera = dynamic_cast<const CameraWindow*>(window);
    CameraWindow* made = camera ? AddCamera(by, camera->Kind()) : nullptr;
    if (made) made->StandAs(*window);
  }
  const std::vector<MapView*> views = windows_.Views().ViewsOf(map);
  for (auto view = views.rbegin(); view != views.rend(); ++view) {
    const auto isOfView = [&](ChildWindow* window) { return window->View() == *view; };
    const auto old = windows_.WindowsOf(map);
    const auto place = std::ranges::find_if(old, isOfView);
    MapWindow* made = AddView(by, OrientationOf(**view));
    if (made && place != old.end()) made->StandAs(**place);
  }
  sides_.OnMapReplaced(map, by);
  windows_.CloseWindowsOf(map);
  windows_.Views().marks.Forget(map);
  if (showedLayers) ShowLayers(by);
  if (showedTree) ShowEntityTree(by);
  if (showedTextures) ShowTextures(by);
}

void WindowMaker::OnMapWanted(Map& map) {
  const std::vector<MapView*> views = windows_.Views().ViewsOf(map);
  for (ChildWindow* window : windows_.WindowsOf(map)) {
    const bool isWanted = views.empty() ? window->KeepsMapOpen() : window->View() == views.front();
    if (isWanted) windows_.BringToFront(*window);
  }
}

}  // namespace ferrowand
