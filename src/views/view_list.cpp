#include <algorithm>
#include <iterator>

#include "views/camera/camera.h"
#include "views/map_view.h"

namespace ferrowand {

void ViewList::Add(MapView& view) {
  counted_ = {};  // another map may lie where one was
  views_.push_back(&view);
}

void ViewList::Remove(MapView& view) {
  std::erase(views_, &view);
}

void ViewList::BringToFront(MapView& view) {
  const auto found = std::find(views_.begin(), views_.end(), &view);
  if (found != views_.end()) std::rotate(views_.begin(), found, found + 1);
}

void ViewList::Add(Camera& camera) {
  cameras_.push_back(&camera);
  CameraMoved(camera, camera.Pose());
  if (const MapMarks* shown = marks.Find(camera.GetMap())) camera.ShowMarks(*shown);
}

void ViewList::Remove(Camera& camera) {
  std::erase(cameras_, &camera);
  CameraMoved(camera, camera.Pose());
}

Camera* ViewList::CameraOf(const Map& map) const {
  const auto found =
      std::ranges::find_if(cameras_, [&](Camera* camera) { return &camera->GetMap() == &map; });
  return found == cameras_.end() ? nullptr : *found;
}

void ViewList::CameraMoved(const Camera& camera, const CameraPose& from) const {
  for (MapView* view : ViewsOf(camera.GetMap())) {
    view->RepaintCamera(from);
    view->RepaintCamera(camera.Pose());
  }
}

void ViewList::ClearPickedFaces() const {
  for (MapView* view : views_) view->map.pickedFaces.Clear();
  for (Camera* camera : cameras_) camera->GetMap().pickedFaces.Clear();
}

const MapFigures& ViewList::FiguresOf(const Map& map) {
  const std::pair now{&map, map.Revision()};
  if (counted_ != now) figures_ = ferrowand::FiguresOf(map);
  counted_ = now;
  return figures_;
}

std::vector<MapView*> ViewList::ViewsOf(const Map& map) const {
  std::vector<MapView*> views;
  std::copy_if(views_.begin(), views_.end(), std::back_inserter(views),
               [&](const MapView* view) { return &view->map == &map; });
  return views;
}

}  // namespace ferrowand
