#include "views/camera/camera.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

#include "document/classes/special_classes.h"
#include "document/map.h"
#include "views/camera/camera_navigation.h"
#include "views/hit_test.h"

namespace ferrowand {
namespace {

constexpr double EYE_HEIGHT = 22;    // of a player above the origin, world units
constexpr double STEPS_AHEAD = 128;  // world units
constexpr double PICK_REACH = 3;     // pixels: what a renderer may take a pixel for, and one more

// Where textures are drawn, any will do.
ShapeColours ColoursOf(RenderMode mode) {
  if (mode == RenderMode::Wireframe) return ShapeColours::OfLines;
  return mode == RenderMode::OneMip ? ShapeColours::OfTextures : ShapeColours::OfFaces;
}

const entity* FindStart(const Map& map) {
  const entity* start = nullptr;
  ForEachEntity(map, [&start](const entity& e) {
    const char* name = e.GetKey("classname");
    const bool isStart = name && std::string_view(name) == "info_player_start" && e.HasOrigin();
    if (!start && isStart) start = &e;
  });
  return start;
}

}  // namespace

Camera::Camera(Map& map, CameraHost& host, const Options& options,
               std::unique_ptr<CameraRenderer> renderer)
    : map_(map), host_(host), options_(options), renderer_(std::move(renderer)), scene_(map) {
  map_.AddObserver(*this);
  ShowCaption();
}

Camera::~Camera() {
  map_.RemoveObserver(*this);
}

std::string Camera::Caption() const {
  return "3DView: " + map_.Name();
}

void Camera::ShowCaption() {
  std::string caption = Caption();
  if (caption == caption_) return;
  caption_ = std::move(caption);
  host_.SetCaption(caption_);
}

void Camera::Stand(const CameraPose& pose) {
  const CameraPose from = std::exchange(pose_, pose);
  host_.Moved(from);
  host_.Repaint();
}

void Camera::SetPose(const CameraPose& pose) {
  glide_.Stop();
  Stand(pose);
}

void Camera::Fly(const CameraMove& move, double seconds) {
  if (move == CameraMove()) return;
  CameraPose pose = pose_;
  pose.Move(move, MethodOf(options_));
  if (pose == pose_) return;
  const double now = host_.Now();
  glide_.Start(glide_.At(now, pose_), now, seconds);
  Stand(pose);
}

bool Camera::GoToStart() {
  const entity* start = FindStart(map_);
  if (!start) return false;
  CameraPose pose;
  pose.eye = DVec3(start->Origin()) + DVec3(0, 0, EYE_HEIGHT);
  pose.Face(start->angle() == NO_ANGLE ? 0 : start->angle(), 0);
  SetPose(pose);
  return true;
}

void Camera::GoToOpening() {
  if (GoToStart()) return;
  const Bounds box = map_.GetBounds();
  if (box.IsEmpty()) return;
  const DVec3 middle = (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
  CameraPose pose;
  pose.eye = middle + (DVec3(box.maxs) - middle) * 2.5;
  pose.LookAt(middle);
  SetPose(pose);
}

Vec3 Camera::PlaceForNew() const {
  const DVec3 ahead = pose_.eye + pose_.direction * STEPS_AHEAD;
  Vec3 place;
  for (int axis = 0; axis < 3; ++axis) place[axis] = static_cast<float>(RoundToInt(ahead[axis]));
  return place;
}

void Camera::SetMode(RenderMode mode) {
  if (ColoursOf(mode) != ColoursOf(mode_)) scene_.MakeAllStale();
  mode_ = mode;
  host_.Repaint();
}

void Camera::SetTintsEntities(bool on) {
  tintsEntities_ = on;
  host_.Repaint();
}

ShapeStyle Camera::Style() const {
  return {ColoursOf(mode_), static_cast<OneColour>(options_.mipType)};
}

void Camera::FollowScene() {
  if (!std::exchange(knowsScene_, true)) {
    renderer_->DropAll();
    scene_.Learn();
  }
  for (const ShapeName name : scene_.TakeGone()) renderer_->DropShape(name);
  for (const ShapeName name : scene_.TakeStale()) {
    const Shape shape = ShapeOf(*scene_[name].shown, Style());
    renderer_->SetShape(name, shape);
    scene_.SetBox(name, BoxOf(shape));
  }
}

CameraPicture Camera::PictureWithout() const {
  return {.pose = pose_,
          .size = host_.DrawingArea(),
          .backClip = static_cast<double>(options_.backClip),
          .mode = mode_,
          .dither = options_.dither3D != 0};
}

void Camera::Paint() {
  CameraPicture picture = PictureWithout();
  if (picture.size.width <= 0 || picture.size.height <= 0) return;
  if (isReleased_) return renderer_->Draw(picture);
  const double now = host_.Now();
  picture.pose = glide_.At(now, pose_);
  FollowScene();
  const std::vector<ShapeName> seen = scene_.Seen(FrustumOf(picture), picture.pose.eye);
  std::vector<ShapeName> tinted, selected;
  if (tintsEntities_) {
    std::ranges::copy_if(seen, std::back_inserter(tinted),
                         [this](ShapeName name) { return scene_[name].isOfEntity; });
  }
  const std::vector<ShapeName>& chosen = scene_.Selected();
  std::ranges::copy_if(seen, std::back_inserter(selected), [&chosen](ShapeName name) {
    return std::ranges::binary_search(chosen, name);
  });
  picture.seen = seen;
  picture.tinted = tinted;
  picture.selected = selected;
  renderer_->Draw(picture);
  if (glide_.IsUnderWay(now)) host_.Repaint();
}

void Camera::Update() {
  knowsScene_ = false;
  host_.Repaint();
}

void Camera::Release() {
  isReleased_ = true;
  knowsScene_ = false;
  renderer_->DropAll();
  host_.Repaint();
}

void Camera::Restore() {
  if (!isReleased_) return;
  isReleased_ = false;
  host_.Repaint();
}

std::vector<entity*> Camera::PickAll(Pixel at) {
  CameraPicture picture = PictureWithout();
  std::vector<entity*> objects;
  if (picture.size.width <= 0 || picture.size.height <= 0 || isReleased_) return objects;
  FollowScene();
  std::vector<ShapeName> names = scene_.Seen(FrustumAround(picture, at, PICK_REACH), pose_.eye);
  std::erase_if(names, [this](ShapeName name) { return !scene_[name].isReachable; });
  picture.seen = names;
  for (const ShapeName name : renderer_->Pick(picture, at)) {
    objects.push_back(scene_[name].shown);
  }
  return objects;
}

CameraHit Camera::Pick(Pixel at) {
  CameraHit hit;
  const std::vector<entity*> objects = PickAll(at);
  if (objects.empty()) return hit;
  hit.object = objects.front();
  hit.face =
      FaceOnRay(hit.object->brush, pose_.eye, DirectionThrough(PictureWithout(), at), hit.point);
  return hit;
}

void Camera::Click(Pixel at, PickLevel level, bool add) {
  std::vector<entity*> objects = PickAll(at);
  if (level == PickLevel::Brushes) {
    std::erase_if(objects, [](const entity* e) { return e->brush.getNumFaces() == 0; });
  }
  if (objects.empty()) return;
  entity& object = PickedBy(*objects.front(), level);
  if (!map_.selection.Contains(object)) Select(map_, &object, add);
}

void Camera::OnChange(const MapChange& change) {
  if (change.everything) knowsScene_ = false;
  if (knowsScene_) scene_.Learn(change);
  ShowCaption();
  const bool showsOther = change.everything || change.selection || !change.changed.empty() ||
                          !change.came.empty() || !change.went.empty() || !change.moved.empty();
  if (showsOther) host_.Repaint();
}

int FaceOnRay(const Brush& brush, const DVec3& from, const DVec3& direction, DVec3& point) {
  double enters = -std::numeric_limits<double>::infinity();
  double leaves = std::numeric_limits<double>::infinity();
  int face = -1;
  for (int i = 0; i < brush.getNumFaces(); ++i) {
    const Plane& plane = brush.face(i).plane;
    const double distance = plane.DistanceTo(from);
    const double speed = Dot(plane.normal, direction);
    if (speed == 0) {
      if (distance > 0) return -1;
    } else if (speed < 0) {
      if (const double meets = -distance / speed; meets > enters) {
        enters = meets;
        face = i;
      }
    } else {
      leaves = std::min(leaves, -distance / speed);
    }
  }
  if (face < 0 || enters < 0 || enters > leaves) return -1;
  point = from + direction * enters;
  return face;
}

}  // namespace ferrowand
