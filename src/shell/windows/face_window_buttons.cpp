// What the buttons of the window of face edit do.
#include <algorithm>
#include <array>
#include <span>

#include "base/options.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "operations/face_wrapping.h"
#include "shell/resources/resource.h"
#include "shell/windows/face_window.h"

namespace ferrowand {
namespace {

struct Button {
  int id;
  const char* name;  // of the step
  void (*run)(EditStep& step, std::span<const PickedFace> faces, bool asOne);
};

template <FaceSide side>
void Justify(EditStep& step, std::span<const PickedFace> faces, bool asOne) {
  JustifyFaces(step, faces, side, asOne);
}

template <TextureAxis axis>
void Mirror(EditStep& step, std::span<const PickedFace> faces, bool) {
  ChangeFaces(step, faces, [](const PickedFace& face) { return Mirrored(face, axis); });
}

constexpr std::array<Button, 10> BUTTONS{{
    {ID_FACES_LEFT, "Texture left", Justify<FaceSide::Left>},
    {ID_FACES_CENTRE, "Centre texture", Justify<FaceSide::Centre>},
    {ID_FACES_RIGHT, "Texture right", Justify<FaceSide::Right>},
    {ID_FACES_TOP, "Texture top", Justify<FaceSide::Top>},
    {ID_FACES_BOTTOM, "Texture bottom", Justify<FaceSide::Bottom>},
    {ID_FACES_WORLD, "Align to the world",
     [](EditStep& step, std::span<const PickedFace> faces, bool) {
       ChangeFaces(step, faces, [](const PickedFace& face) { return AlignedToWorld(face.Get()); });
     }},
    {ID_FACES_SLOPE, "Align to the slope",
     [](EditStep& step, std::span<const PickedFace> faces, bool) {
       ChangeFaces(step, faces, AlignedToSlope);
     }},
    {ID_FACES_WRAP, "Wrap texture",
     [](EditStep& step, std::span<const PickedFace> faces, bool) { WrapFaces(step, faces); }},
    {ID_FACES_MIRROR_ACROSS, "Mirror texture", Mirror<TextureAxis::Across>},
    {ID_FACES_MIRROR_DOWN, "Mirror texture", Mirror<TextureAxis::Down>},
}};

}  // namespace

int* FaceWindow::Again(int button, int first) {
  const bool isAgain = again_ && again_->map == map_ && again_->state == map_->undo.State() &&
                       again_->button == button && again_->faces == Faces();
  if (!isAgain) again_ = Repeats{map_, 0, Faces(), button, first};
  return isAgain ? &again_->count : nullptr;
}

void FaceWindow::Fit(int button) {
  const FitChange change = GetKeyState(VK_SHIFT) < 0     ? FitChange::Fewer
                           : GetKeyState(VK_CONTROL) < 0 ? FitChange::Part
                                                         : FitChange::More;
  const int first = change == FitChange::Part ? NextRepeats(1, change) : 1;
  if (int* const repeats = Again(button, first)) *repeats = NextRepeats(*repeats, change);
  const FitHow how{.width = button != ID_FACES_FIT_HEIGHT,
                   .height = button != ID_FACES_FIT_WIDTH,
                   .repeats = again_->count,
                   .keepsRatio = IsTicked(ID_FACES_KEEP_RATIO)};
  Do("Fit texture",
     [&](EditStep& step) { FitFaces(step, Faces(), how, IsTicked(ID_FACES_AS_ONE)); });
  again_->state = map_->undo.State();
}

void FaceWindow::AlignToEdge() {
  if (int* const edge = Again(ID_FACES_EDGE, 0)) ++*edge;
  Do("Align to an edge", [&](EditStep& step) {
    ChangeFaces(step, Faces(),
                [&](const PickedFace& face) { return AlignedToEdge(face.Get(), again_->count); });
  });
  again_->state = map_->undo.State();
}

void FaceWindow::OnButton(int id) {
  if (!map_) return;
  Accept();
  const std::vector<PickedFace> faces = Faces();
  const auto button = std::ranges::find(BUTTONS, id, &Button::id);
  if (button != BUTTONS.end()) {
    Do(button->name, [&](EditStep& step) { button->run(step, faces, IsTicked(ID_FACES_AS_ONE)); });
  } else if (id == ID_FACES_FIT_WIDTH || id == ID_FACES_FIT_HEIGHT || id == ID_FACES_FIT_BOTH) {
    Fit(id);
  } else if (id == ID_FACES_EDGE) {
    AlignToEdge();
  } else if (id == ID_FACES_COPY && !faces.empty()) {
    copied_ = PlacementOf(faces.front().Get());
    isStale_ = true;
  } else if (id == ID_FACES_PASTE && copied_) {
    Do("Paste alignment", [&](EditStep& step) {
      ChangeFaces(step, faces, [&](const PickedFace&) { return Settled{*copied_, 0}; });
    });
  } else if (id >= ID_FACES_PICK_BRUSH && id <= ID_FACES_PICK_TEXTURE) {
    PickMoreFaces(*map_, static_cast<PickMore>(id - ID_FACES_PICK_BRUSH));
  }
  if (isStale_) Refresh();
}

}  // namespace ferrowand
