#include "shell/windows/child_windows.h"

#include <algorithm>

#include "base/report.h"
#include "shell/documents/documents.h"
#include "shell/frame/frame.h"
#include "views/camera/camera.h"

namespace ferrowand {
namespace {

WPARAM ToParameter(const ChildWindow& window) {
  return reinterpret_cast<WPARAM>(window.Handle());
}

}  // namespace

ChildWindows::ChildWindows(Frame& frame, Documents& documents, Reporter& reporter,
                           const Options& options)
    : frame_(frame), documents_(documents), reporter_(reporter), options_(options) {}

ChildWindow* ChildWindows::Add(std::unique_ptr<ChildWindow> window) {
  if (!window->Handle()) return nullptr;
  return windows_.emplace_back(std::move(window)).get();
}

std::vector<ChildWindow*> ChildWindows::WindowsOf(const Map& map) const {
  std::vector<ChildWindow*> found;
  for (const auto& window : windows_) {
    if (window->GetMap() == &map) found.push_back(window.get());
  }
  return found;
}

void ChildWindows::BringToFront(const ChildWindow& window) {
  const HWND client = frame_.Client();
  if (IsIconic(window.Handle())) SendMessageA(client, WM_MDIRESTORE, ToParameter(window), 0);
  SendMessageA(client, WM_MDIACTIVATE, ToParameter(window), 0);
}

void ChildWindows::Close(ChildWindow& window) {
  if (!window.KeepsMapOpen()) return Destroy(window);
  Map& map = *window.GetMap();
  const auto keepers = WindowsOf(map);
  if (std::ranges::count_if(keepers, &ChildWindow::KeepsMapOpen) >= 2) return Destroy(window);
  if (map.modified() &&
      reporter_.Show("Continue?",
                     "Closing this window will close the map. The map has been modified. Continue?",
                     Buttons::YesNo, Icon::Question) != Answer::Yes) {
    return;
  }
  documents_.Close(map);
}

void ChildWindows::CloseWindowsOf(const Map& map) {
  for (const ChildWindow* window : WindowsOf(map)) Destroy(*window);
}

void ChildWindows::Destroy(const ChildWindow& window) {
  SendMessageA(frame_.Client(), WM_MDIDESTROY, ToParameter(window), 0);
}

void ChildWindows::Forget(const ChildWindow& window) {
  std::erase_if(windows_, [&](const auto& open) { return open.get() == &window; });
}

ChildWindow* ChildWindows::ActiveWindow() const {
  const auto active = reinterpret_cast<HWND>(SendMessageA(frame_.Client(), WM_MDIGETACTIVE, 0, 0));
  for (const auto& window : windows_) {
    if (window->Handle() == active) return window.get();
  }
  return nullptr;
}

Map* ChildWindows::ActiveMap() const {
  const ChildWindow* window = ActiveWindow();
  return window ? window->GetMap() : nullptr;
}

MapView* ChildWindows::ActiveView() const {
  ChildWindow* window = ActiveWindow();
  if (!window || !window->GetMap() || window->View()) return window ? window->View() : nullptr;
  const auto mapViews = views_.ViewsOf(*window->GetMap());
  return mapViews.empty() ? nullptr : mapViews.front();
}

Camera* ChildWindows::CameraOf(const Map& map) const {
  for (ChildWindow* window : WindowsOf(map)) {
    if (Camera* camera = window->GetCamera()) return camera;
  }
  return nullptr;
}

NewPlace ChildWindows::PlaceForNew(const Map& map) const {
  POINT mouse{};
  GetCursorPos(&mouse);
  for (ChildWindow* window : WindowsOf(map)) {
    if (const auto face = window->FaceUnder(mouse)) return {face->WayFor({{}, {}}), face};
  }
  const MapView* view = ActiveView();
  const std::vector<MapView*> views = views_.ViewsOf(map);
  if (!view && !views.empty()) view = views.front();
  if (view) return {view->PlaceForNew(), {}};
  const Camera* camera = CameraOf(map);
  return {camera ? camera->PlaceForNew() : Vec3(0, 0, 0), {}};
}

void ChildWindows::CentreOn(const Map& map, const Bounds& box) const {
  if (box.IsEmpty()) return;
  for (MapView* view : views_.ViewsOf(map)) view->CentreOn((box.mins + box.maxs) * 0.5f);
}

void ChildWindows::OptionsChanged() {
  for (const auto& window : windows_) window->OptionsChanged();
}

bool ChildWindows::MouseHasMoved(POINT to) {
  const bool moved = to.x != mouse_.x || to.y != mouse_.y;
  mouse_ = to;
  return moved;
}

void ChildWindows::Arrange(const Map& map, Arrangement arrangement) {
  // A maximised window is restored first: it covers its sisters and their frames.
  if (const ChildWindow* active = ActiveWindow(); active && IsZoomed(active->Handle())) {
    SendMessageA(frame_.Client(), WM_MDIRESTORE, ToParameter(*active), 0);
  }
  const PixelSize size = frame_.ClientSize();
  for (ChildWindow* window : WindowsOf(map)) {
    if (const MapView* view = window->View()) {
      window->MoveTo(view->ArrangedPlace(arrangement, size));
    } else if (window->GetCamera()) {
      window->MoveTo(CameraPlace(arrangement, size));
    }
  }
}

void ChildWindows::Tile() {
  SendMessageA(frame_.Client(), WM_MDITILE, MDITILE_VERTICAL, 0);
}

void ChildWindows::Cascade() {
  SendMessageA(frame_.Client(), WM_MDICASCADE, 0, 0);
}

}  // namespace ferrowand
