// Makes the windows that show maps. A map that is opened gets its three views.
#pragma once

#include "shell/documents/documents.h"
#include "shell/windows/camera_window.h"
#include "shell/windows/check_window.h"
#include "shell/windows/entity_tree_window.h"
#include "shell/windows/layer_window.h"
#include "shell/windows/map_window.h"
#include "shell/windows/texture_browser.h"

namespace ferrowand {

class SideWindows;

class WindowMaker : public DocumentsObserver {
 public:
  // The windows and all that the contexts name outlive it.
  WindowMaker(ChildWindows& windows, SideWindows& sides, const MapWindowContext& ofViews,
              const LayerWindowContext& ofLayers, const CameraWindowContext& ofCameras,
              Dialogs& dialogs, const EntityTreeContext& ofTrees,
              const TextureBrowserContext& ofTextures);

  // Null, after an assertion, when the system gave no window.
  MapWindow* AddView(Map& map, Orientation orientation);
  // The map has none yet. Null when the system gave no window, or Direct3D is not to be had.
  CameraWindow* AddCamera(Map& map, CameraKind kind);
  // The one of the map, in front of the others.
  void ShowLayers(Map& map);
  void ShowCheck(Map& map);
  void ShowEntityTree(Map& map);
  void ShowTextures(Map& map);
  // Where it stands in the wall, whatever that was filtered by.
  void ShowInBrowser(Map& map, std::string_view texture);

  // Three views, and a camera if the options want Direct3D, arranged and showing all of it.
  void OnMapOpened(Map& map) override;
  void OnMapClosing(Map& map) override;
  void OnMapReplaced(Map& map, Map& by) override;
  void OnMapWanted(Map& map) override;

 private:
  ChildWindows& windows_;
  SideWindows& sides_;
  MapWindowContext ofViews_;
  LayerWindowContext ofLayers_;
  CameraWindowContext ofCameras_;
  Dialogs& dialogs_;
  EntityTreeContext ofTrees_;
  TextureBrowserContext ofTextures_;
};

}  // namespace ferrowand
