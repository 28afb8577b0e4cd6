// The windows that show the maps.
#include <algorithm>

#include "shell/app/app.h"
#include "shell/windows/key_list_window.h"
#include "shell/windows/layer_window.h"
#include "shell/windows/map_window.h"

namespace ferrowand {

ChildWindow* App::AddView(Map& map, Orientation orientation) {
  auto created = std::make_unique<MapWindow>(*this, map, orientation);
  if (!created->Handle()) {
    reporter.Assert("hwnd!=NULL", "qvwin.cpp", __LINE__);
    return nullptr;
  }
  tools.LimitAxes(*created->View());
  return windows.emplace_back(std::move(created)).get();
}

void App::ShowKeyList() {
  auto created = std::make_unique<KeyListWindow>(*this);
  if (created->Handle()) windows.push_back(std::move(created));
}

void App::ShowLayers(Map& map) {
  for (const ChildWindow* window : WindowsOf(map)) {
    if (dynamic_cast<const LayerWindow*>(window)) return BringToFront(*window);
  }
  auto created = std::make_unique<LayerWindow>(*this, map);
  if (!created->Handle()) return;
  windows.push_back(std::move(created));
  windows.back()->SetTitle();
}

void App::BringToFront(const ChildWindow& window) {
  const auto handle = reinterpret_cast<WPARAM>(window.Handle());
  if (IsIconic(window.Handle())) SendMessageA(frame.Client(), WM_MDIRESTORE, handle, 0);
  SendMessageA(frame.Client(), WM_MDIACTIVATE, handle, 0);
}

void App::CreateMapWindows(Map& map) {
  for (const Orientation orientation : {Orientation::Side, Orientation::Front, Orientation::Top}) {
    AddView(map, orientation);
  }
  Arrange(map, Arrangement::Quarters);
  const Bounds everything = map.GetBounds();
  for (MapView* view : views.ViewsOf(map)) {
    view->CentreOn({0, 0, 0});
    view->ZoomTo(everything);
  }
  SetTitles(map);
}

std::vector<ChildWindow*> App::WindowsOf(const Map& map) const {
  std::vector<ChildWindow*> found;
  for (const auto& window : windows) {
    if (window->GetMap() == &map) found.push_back(window.get());
  }
  return found;
}

void App::SetTitles(const Map& map) {
  for (ChildWindow* window : WindowsOf(map)) window->SetTitle();
}

void App::RefreshMap(const Map& map) {
  for (ChildWindow* window : WindowsOf(map)) window->Refresh();
}

void App::RefreshLists(const Map& map) {
  for (ChildWindow* window : WindowsOf(map)) {
    if (!window->View()) window->Refresh();
  }
}

void App::RefreshAll() {
  for (const auto& window : windows) window->Refresh();
}

void App::Arrange(const Map& map, Arrangement arrangement) {
  // A maximised window is restored first: it covers its sisters and their frames.
  if (const ChildWindow* active = ActiveWindow(); active && IsZoomed(active->Handle())) {
    SendMessageA(frame.Client(), WM_MDIRESTORE, reinterpret_cast<WPARAM>(active->Handle()), 0);
  }
  const PixelSize size = frame.ClientSize();
  for (ChildWindow* window : WindowsOf(map)) {
    const MapView* view = window->View();
    if (!view) continue;
    const PixelRect place = view->ArrangedPlace(arrangement, size);
    static_cast<MapWindow*>(window)->MoveWindow(place);
  }
}

void App::CloseWindow(ChildWindow& window) {
  Map* const map = window.GetMap();
  const auto keepers = WindowsOf(*map);
  const auto count = std::ranges::count_if(keepers, &ChildWindow::KeepsMapOpen);
  if (count >= 2 || !window.KeepsMapOpen()) {
    SendMessageA(frame.Client(), WM_MDIDESTROY, reinterpret_cast<WPARAM>(window.Handle()), 0);
    return;
  }
  if (map->modified &&
      reporter.Show("Continue?",
                    "Closing this window will close the map. The map has been modified. Continue?",
                    Buttons::YesNo, Icon::Question) != Answer::Yes) {
    return;
  }
  CloseMap(*map);
}

void App::Forget(const ChildWindow& window) {
  std::erase_if(windows, [&](const auto& open) { return open.get() == &window; });
}

ChildWindow* App::ActiveWindow() const {
  const auto active = reinterpret_cast<HWND>(SendMessageA(frame.Client(), WM_MDIGETACTIVE, 0, 0));
  for (const auto& window : windows) {
    if (window->Handle() == active) return window.get();
  }
  return nullptr;
}

Map* App::ActiveMap() const {
  const ChildWindow* window = ActiveWindow();
  return window ? window->GetMap() : nullptr;
}

MapView* App::ActiveView() const {
  ChildWindow* window = ActiveWindow();
  if (!window || !window->GetMap() || window->View()) return window ? window->View() : nullptr;
  const auto mapViews = views.ViewsOf(*window->GetMap());
  return mapViews.empty() ? nullptr : mapViews.front();
}

}  // namespace ferrowand
