#include "views/tools/camera_faces.h"

#include <algorithm>
#include <string>

#include "document/action.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "operations/face_editing.h"
#include "operations/face_wrapping.h"
#include "views/camera/camera.h"
#include "views/tools/face_tool.h"
#include "views/tools/tool_host.h"

namespace ferrowand {
namespace {

const char* NameOf(FaceKey key) {
  if (key <= FaceKey::Down) return "Move texture";
  return key <= FaceKey::TurnRight ? "Turn texture" : "Scale texture";
}

std::optional<Settled> Nudged(const PickedFace& face, FaceKey key, const FaceNudge::Eye& eye,
                              int presses) {
  const int texels = presses * eye.texels;
  const double scale = presses * (eye.finely ? FINE_SCALE_STEP : SCALE_STEP);
  switch (key) {
    case FaceKey::Left:
      return Moved(face, eye.right, eye.up, -texels, 0);
    case FaceKey::Right:
      return Moved(face, eye.right, eye.up, texels, 0);
    case FaceKey::Up:
      return Moved(face, eye.right, eye.up, 0, texels);
    case FaceKey::Down:
      return Moved(face, eye.right, eye.up, 0, -texels);
    case FaceKey::TurnLeft:
      return Turned(face, presses * eye.degrees);
    case FaceKey::TurnRight:
      return Turned(face, -presses * eye.degrees);
    case FaceKey::Narrower:
      return WithMore(face, PlacementField::XScale, -scale);
    case FaceKey::Wider:
      return WithMore(face, PlacementField::XScale, scale);
    case FaceKey::Lower:
      return WithMore(face, PlacementField::YScale, -scale);
    case FaceKey::Higher:
      break;
  }
  return WithMore(face, PlacementField::YScale, scale);
}

}  // namespace

void CameraFaces::Press(Camera& camera, Pixel at, bool control, bool alt) {
  Cancel();
  map_ = &camera.GetMap();
  const std::optional<PickedFace> face = camera.FaceAt(at);
  if (!face) return;
  const bool isPicked = map_->pickedFaces.Contains(*face->brush, face->face);
  if (alt) {
    kind_ = Kind::Paint;
    onlyTexture_ = control;
    way_ = {*face};
    state_ = map_->undo.State();
  } else {
    kind_ = control && isPicked ? Kind::Drop : Kind::Pick;
    PickFace(*map_, *face, control);
  }
}

void CameraFaces::Move(Camera& camera, Pixel at) {
  if (kind_ == Kind::None) return;
  const std::optional<PickedFace> face = camera.FaceAt(at);
  if (!face) return;
  const std::vector<PickedFace> one{*face};
  if (kind_ == Kind::Pick) return map_->pickedFaces.Add(one);
  if (kind_ == Kind::Drop) return map_->pickedFaces.Remove(one);
  WrapOnto(*face);
}

bool CameraFaces::IsWayThere() const {
  return live_ ? live_->IsNewest() : map_->undo.State() == state_;
}

// Not back onto a face of the way, nor onto one that does not lie beside the last.
void CameraFaces::WrapOnto(const PickedFace& face) {
  if (!IsWayThere()) return Cancel();
  const bool isKnown = std::ranges::any_of(way_, [&](const PickedFace& known) {
    return known.brush == face.brush && known.face == face.face;
  });
  if (isKnown || !WrappedFrom(way_.back().Get(), face.Get())) return;
  way_.push_back(face);
  if (!live_) live_.emplace(*map_);
  const ActionScope action(map_->Data(), "Wrap texture");
  live_->Do([this](EditStep& step) { WrapAlong(step, way_); });
}

void CameraFaces::Paint() {
  std::string texture;
  std::optional<TexturePlacement> placement;
  if (!map_->pickedFaces.empty()) {
    const Face& from = map_->pickedFaces.Faces().front().Get();
    if (&from == &way_.front().Get()) return;  // it has that already
    texture = from.WrittenName();
    if (!onlyTexture_) placement = PlacementOf(from);
  }
  if (texture.empty()) {
    texture = host_.CurrentTexture(*map_);
  } else {
    host_.NoteTexture(texture);
  }
  const ActionScope action(map_->Data(), "Paint");
  EditStep step(*map_);
  GiveLook(step, way_.front(), texture, placement);
}

void CameraFaces::Release() {
  if (kind_ == Kind::Paint && way_.size() == 1 && IsWayThere()) Paint();
  live_.reset();
  Cancel();
}

void CameraFaces::Cancel() {
  kind_ = Kind::None;
  way_.clear();
  if (live_) live_->Cancel();
  live_.reset();
}

void CameraFaces::DoubleClick(Camera& camera, Pixel at, bool add) {
  Cancel();
  const std::optional<PickedFace> face = camera.FaceAt(at);
  if (!face) return;
  FaceSelection& picked = camera.GetMap().pickedFaces;
  const std::vector<PickedFace> all = FacesOf(*face->brush);
  if (add) return picked.Add(all);
  picked.Set(all);
}

void FaceNudge::Press(Map& map, FaceKey key, const Eye& eye, bool isRepeated) {
  if (!isRepeated || !live_ || !live_->IsNewest()) {
    live_.emplace(map);
    presses_ = 0;
  }
  ++presses_;
  const ActionScope action(map.Data(), NameOf(key));
  live_->Do([&](EditStep& step) {
    ChangeFaces(step, map.pickedFaces.Faces(),
                [&](const PickedFace& face) { return Nudged(face, key, eye, presses_); });
  });
}

}  // namespace ferrowand
