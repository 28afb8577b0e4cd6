#include "views/camera/camera.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <string_view>
#include <utility>

#include "document/classes/special_classes.h"
#include "document/map.h"
#include "platform/display.h"
#include "views/camera/camera_navigation.h"
#include "views/hit_test.h"

namespace ferrowand {
namespace {

constexpr double EYE_HEIGHT = 22;    // of a player above the origin, world units
constexpr double STEPS_AHEAD = 128;  // world units
constexpr int CORNER_REACH = 8;      // pixels at the usual size of letters
constexpr double DEGREE = std::numbers::pi / 180;
constexpr double PICK_REACH = 3;  // pixels: what a renderer may take a pixel for, and one more

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
  if (!map_.pickedFaces.empty()) marks_.SetPicked(map_.pickedFaces);
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
  // A turn of the mouse does not cut short the way that a key has begun.
  glide_.Start(glide_.At(now, pose_), now, std::max(seconds, glide_.Left(now)));
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

void Camera::SetLamp(bool on) {
  hasLamp_ = on;
  host_.Repaint();
}

void Camera::SetLighting(CameraLighting lighting) {
  lightingKind_ = lighting;
  std::uint32_t flags = options_.quakeLightingFlags;
  if (lighting == CameraLighting::Preview) flags &= LIGHT_BY_ANGLE;
  lighting_.reset();
  if (lighting != CameraLighting::None) lighting_.emplace(map_, flags);
  scene_.MakeAllStale();
  host_.Repaint();
}

ShapeStyle Camera::Style() const {
  return {ColoursOf(mode_), static_cast<OneColour>(options_.mipType)};
}

void Camera::FollowScene(LoadProgress& progress) {
  const bool isNew = !std::exchange(knowsScene_, true);
  if (isNew) {
    renderer_->DropAll();
    scene_.Learn();
    if (lighting_) lighting_->Learn();
  }
  marks_.GiveTo(*renderer_, isNew);
  for (const ShapeName name : scene_.TakeGone()) renderer_->DropShape(name);
  const std::vector<ShapeName> stale = scene_.TakeStale();
  unsigned faces = 0, part = 0;
  for (const ShapeName name : stale) {
    Shape shape = ShapeOf(*scene_[name].shown, Style());
    if (lighting_) lighting_->Light(shape);
    renderer_->SetShape(name, shape);
    scene_.SetBox(name, BoxOf(shape));
    faces += static_cast<unsigned>(shape.polygons.size());
    progress.Step("Quake preview, faces: %u", faces, ++part, static_cast<unsigned>(stale.size()));
  }
}

void Camera::MakeReady(LoadProgress& progress) {
  if (!isReleased_) FollowScene(progress);
}

CameraPicture Camera::Picture() const {
  return {.pose = pose_,
          .size = host_.DrawingArea(),
          .backClip = static_cast<double>(options_.backClip),
          .mode = mode_,
          .dither = options_.dither3D != 0,
          .lamp = hasLamp_,
          .isLit = lighting_.has_value()};
}

void Camera::Paint() {
  CameraPicture picture = Picture();
  if (picture.size.width <= 0 || picture.size.height <= 0) return;
  if (isReleased_) return renderer_->Draw(picture);
  const double now = host_.Now();
  picture.pose = glide_.At(now, pose_);
  FollowScene(nobody_);
  const std::vector<ShapeName> seen = scene_.Seen(FrustumOf(picture), picture.pose.eye);
  std::vector<ShapeName> tinted, selected;
  if (tintsEntities_) {
    std::ranges::copy_if(seen, std::back_inserter(tinted),
                         [this](ShapeName name) { return scene_[name].isOfEntity; });
  }
  // The tint of what is selected would hide the textures that are worked on.
  if (map_.pickedFaces.empty()) {
    const std::vector<ShapeName>& chosen = scene_.Selected();
    std::ranges::copy_if(seen, std::back_inserter(selected), [&chosen](ShapeName name) {
      return std::ranges::binary_search(chosen, name);
    });
  }
  picture.seen = seen;
  picture.tinted = tinted;
  picture.selected = selected;
  picture.preview = preview_;
  picture.outlines = marks_.Outlines();
  renderer_->Draw(picture);
  if (glide_.IsUnderWay(now)) host_.Repaint();
}

void Camera::ShowPreview(const std::optional<Vec3>& by) {
  if (by == preview_) return;
  preview_ = by;
  host_.Repaint();
}

void Camera::ShowDraft(const std::optional<Bounds>& box) {
  if (box == draft_) return;
  draft_ = box;
  marks_.SetDraft(box);
  host_.Repaint();
}

void Camera::ShowMarks(const MapMarks& marks) {
  marks_.SetMarks(marks);
  host_.Repaint();
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
  CameraPicture picture = Picture();
  std::vector<entity*> objects;
  if (picture.size.width <= 0 || picture.size.height <= 0 || isReleased_) return objects;
  FollowScene(nobody_);
  std::vector<ShapeName> names = scene_.Seen(FrustumAround(picture, at, PICK_REACH), pose_.eye);
  std::erase_if(names, [this](ShapeName name) { return !scene_[name].isReachable; });
  picture.seen = names;
  for (const ShapeName name : renderer_->Pick(picture, at)) {
    objects.push_back(scene_[name].shown);
  }
  return objects;
}

std::vector<entity*> Camera::PickAll(Pixel at, PickLevel level) {
  std::vector<entity*> picked;
  for (entity* e : PickAll(at)) {
    if (level == PickLevel::Brushes && e->brush.getNumFaces() == 0) continue;
    entity& object = PickedBy(*e, level);
    if (std::ranges::find(picked, &object) == picked.end()) picked.push_back(&object);
  }
  return picked;
}

CameraHit Camera::HitOf(entity* object, Pixel at) const {
  CameraHit hit;
  if (!object) return hit;
  hit.object = object;
  hit.face = FaceOnRay(object->brush, pose_.eye, DirectionThrough(Picture(), at), hit.point);
  return hit;
}

CameraHit Camera::Pick(Pixel at) {
  const std::vector<entity*> objects = PickAll(at);
  return HitOf(objects.empty() ? nullptr : objects.front(), at);
}

std::optional<FacePlace> Camera::PlaceAt(Pixel at, const SpaceRules& rules) {
  for (entity* object : PickAll(at)) {
    const CameraHit hit = HitOf(object, at);
    if (hit.face < 0) continue;
    return FacePlace(hit.point, object->brush.face(hit.face).plane.normal, rules);
  }
  return std::nullopt;
}

std::optional<PickedFace> Camera::FaceAt(Pixel at) {
  CameraHit nearest;
  for (entity* object : PickAll(at)) {
    const CameraHit hit = HitOf(object, at);
    if (hit.face < 0) continue;
    const bool isNearer =
        nearest.face < 0 || Length(hit.point - pose_.eye) < Length(nearest.point - pose_.eye);
    if (isNearer) nearest = hit;
  }
  if (nearest.face < 0) return std::nullopt;
  return PickedFace{nearest.object, nearest.face, CornerAt(nearest)};
}

int Camera::CornerAt(const CameraHit& hit) const {
  const double half = Length(hit.point - pose_.eye) * std::tan(FIELD_OF_VIEW / 2 * DEGREE);
  const double reach = Scaled(CORNER_REACH) * 2 * half / std::max(host_.DrawingArea().height, 1);
  const auto corners = std::as_const(*hit.object->brush.face(hit.face).w).Points();
  for (std::size_t i = 0; i < corners.size(); ++i) {
    if (Length(DVec3(corners[i].Position()) - hit.point) <= reach) return static_cast<int>(i);
  }
  return PickedFace::MIDDLE;
}

CameraHit Camera::PickSelected(Pixel at, PickLevel level) {
  const std::vector<entity*> objects = PickAll(at);
  const auto selected = std::ranges::find_if(
      objects, [this, level](entity* e) { return map_.selection.Contains(PickedBy(*e, level)); });
  return HitOf(selected == objects.end() ? nullptr : *selected, at);
}

void Camera::Click(Pixel at, PickLevel level, bool add) {
  const std::vector<entity*> objects = PickAll(at, level);
  if (objects.empty() || map_.selection.Contains(*objects.front())) return;
  Select(map_, objects.front(), add);
}

void Camera::GoThrough(Pixel at, PickLevel level, bool deeper) {
  entity* const object = BesideSelected(map_, PickAll(at, level), deeper);
  if (object && !map_.selection.Contains(*object)) Select(map_, object, false);
}

void Camera::OnChange(const MapChange& change) {
  if (change.everything) knowsScene_ = false;
  if (knowsScene_) scene_.Learn(change);
  if (knowsScene_ && lighting_) {
    for (const Bounds& box : lighting_->Learn(change)) scene_.MakeStaleWithin(box);
  }
  const bool movesFaces =
      !map_.pickedFaces.empty() && (change.everything || !change.changed.empty());
  if (change.faces || movesFaces) marks_.SetPicked(map_.pickedFaces);
  ShowCaption();
  const bool showsOther = change.everything || change.selection || change.faces ||
                          !change.changed.empty() || !change.came.empty() || !change.went.empty() ||
                          !change.moved.empty();
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
