#include "shell/windows/face_window.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "base/options.h"
#include "base/report.h"
#include "base/text_writer.h"
#include "document/action.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "gamedata/wad_file.h"
#include "operations/map_check.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/face_picture.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr const char* DIFFERS = "(differs)";
// Turns of the wheel that follow each other sooner are one step of undo.
constexpr std::chrono::milliseconds ONE_TURN{1000};

bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

// No more digits than it needs.
std::string InWords(float value) {
  std::string text = FloatText(double{value});
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string CountInWords(std::size_t count, const char* one, const char* many) {
  return Format("%u %s", static_cast<unsigned>(count), count == 1 ? one : many);
}

std::string StateOf(std::span<const PickedFace> faces, const FaceFacts& facts) {
  if (faces.empty()) return "No face is picked: click one in the camera, or its edge in a view";
  std::string text = CountInWords(faces.size(), "face", "faces") + " of " +
                     CountInWords(facts.brushes, "brush", "brushes") + ": ";
  if (!facts.texture) return text + "textures differ";
  text += facts.texture->empty() ? "no texture" : *facts.texture;
  const Texture* texture = faces.front().Get().texture;
  if (texture) text += Format(", %u x %u", unsigned{texture->width}, unsigned{texture->height});
  return text;
}

// Of the first face with which something is wrong.
std::string CheckOf(std::span<const PickedFace> faces) {
  if (faces.empty()) return "";
  CheckCode code = CheckCode::None;
  for (const PickedFace& face : faces) {
    if (code == CheckCode::None) code = FaceCheck(face.Get(), CHECK_TOLERANCE);
  }
  return CheckName(code);
}

}  // namespace

FaceWindow::FaceWindow(SideWindows& sides, const FaceWindowContext& context)
    : MapDialog(sides, context.windows, &context.options.facePlace, FirstPlace::LowerLeft),
      context_(context) {
  Create(ID_FACES);
}

FaceWindow::~FaceWindow() = default;

bool FaceWindow::OnInit() {
  picture_ = std::make_unique<FacePicture>(
      GetDlgItem(Handle(), ID_FACES_PICTURE),
      FacePicture::Answers{.faces = [this] { return Faces(); },
                           .drag = [this](const TexturePoint& more) { Drag(more); },
                           .end = [this](bool isCancelled) { EndLive(isCancelled); },
                           .hold = [this](int corner) { Hold(corner); }});
  for (int field = 0; field < PLACEMENT_FIELDS; ++field) {
    SetWindowSubclass(GetDlgItem(Handle(), ID_FACES_FIELD + field), FieldFunc,
                      static_cast<UINT_PTR>(field), reinterpret_cast<DWORD_PTR>(this));
    SendDlgItemMessageA(Handle(), ID_FACES_SPIN + field, UDM_SETRANGE32, static_cast<WPARAM>(-1),
                        1);
  }
  return false;
}

void FaceWindow::Show(bool activate) {
  FollowActiveMap();
  Refresh();
  ShowWindow(Handle(), activate ? SW_SHOW : SW_SHOWNA);
  if (!activate) return;
  SetActiveWindow(Handle());
  const HWND first = GetDlgItem(Handle(), ID_FACES_FIELD);
  SendMessageW(first, EM_SETSEL, 0, -1);
  SetFocus(first);
}

void FaceWindow::OnClose() {
  Accept();
  Hide();
}

// --- the map

void FaceWindow::OnOtherMap() {
  live_.reset();
  again_.reset();
  typing_ = stepping_ = -1;
  isStale_ = true;
}

void FaceWindow::OnChange(const MapChange& change) {
  isStale_ = isStale_ || change.faces || change.everything || !change.changed.empty();
  if (change.faces) stepping_ = -1;
}

void FaceWindow::OnIdle() {
  FollowActiveMap();
  if (!context_.tools.IsFaceEdit() && IsWindowVisible(Handle())) OnClose();
  if (isStale_ && IsWindowVisible(Handle())) Refresh();
}

std::vector<PickedFace> FaceWindow::Faces() const {
  return map_ ? map_->pickedFaces.Faces() : std::vector<PickedFace>();
}

// --- what is shown

void FaceWindow::Refresh() {
  isStale_ = false;
  const std::vector<PickedFace> faces = Faces();
  const FaceFacts facts = FactsOf(faces);
  ShowName("Faces");
  SetDlgItemTextW(Handle(), ID_FACES_STATE, ToWide(StateOf(faces, facts)).c_str());
  SetDlgItemTextA(Handle(), ID_FACES_CHECK, CheckOf(faces).c_str());
  EnableAll(!faces.empty());
  ShowFields(facts);
  picture_->Repaint();
}

void FaceWindow::EnableAll(bool on) const {
  for (int id = ID_FACES_FIELD; id <= ID_FACES_LAST; ++id) {
    const HWND control = GetDlgItem(Handle(), id);
    if (control) EnableWindow(control, on && (id != ID_FACES_PASTE || copied_) ? TRUE : FALSE);
  }
}

// What is being typed stays.
void FaceWindow::ShowFields(const FaceFacts& facts) {
  isFilling_ = true;
  for (int field = 0; field < PLACEMENT_FIELDS; ++field) {
    if (field == typing_) continue;
    const std::optional<float>& value = facts.values[static_cast<std::size_t>(field)];
    const std::string text = facts.brushes == 0 ? "" : value ? InWords(*value) : DIFFERS;
    SetDlgItemTextA(Handle(), ID_FACES_FIELD + field, text.c_str());
    if (GetFocus() != GetDlgItem(Handle(), ID_FACES_FIELD + field)) continue;
    SendDlgItemMessageA(Handle(), ID_FACES_FIELD + field, EM_SETSEL, 0, -1);
  }
  isFilling_ = false;
}

// --- steps

void FaceWindow::Do(const std::string& name, const std::function<void(EditStep&)>& change) {
  Accept();
  live_.reset();
  if (!map_ || map_->pickedFaces.empty()) return;
  const ActionScope action(map_->Data(), name);
  EditStep step(*map_);
  change(step);
}

void FaceWindow::DoLive(const std::string& name, const std::function<void(EditStep&)>& change) {
  if (!map_ || map_->pickedFaces.empty()) return;
  if (!live_ || !live_->IsNewest()) live_.emplace(*map_);
  const ActionScope action(map_->Data(), name);
  live_->Do(change);
}

void FaceWindow::EndLive(bool isCancelled) {
  if (live_ && isCancelled) live_->Cancel();
  live_.reset();
}

// --- numbers

void FaceWindow::OnTyped(int field) {
  if (typing_ != field) {
    Accept();
    live_.reset();
    typing_ = field;
  }
  stepping_ = -1;
  std::array<char, 64> text{};
  GetDlgItemTextA(Handle(), ID_FACES_FIELD + field, text.data(), static_cast<int>(text.size()));
  const std::optional<double> value = ReadNumber(text.data());
  const auto which = static_cast<PlacementField>(field);
  isRefused_ = !value || !IsSensible(which, *value);
  if (isRefused_) {
    if (live_) live_->Cancel();
    return;
  }
  DoLive("Lay texture", [&](EditStep& step) {
    ChangeFaces(step, Faces(),
                [&](const PickedFace& face) { return WithValue(face, which, *value); });
  });
}

// What is typed is done; false where it was no number that a texture can have, which is told.
bool FaceWindow::Accept() {
  if (typing_ < 0) return true;
  const bool isRefused = std::exchange(isRefused_, false);
  live_.reset();
  const int field = std::exchange(typing_, -1);
  isStale_ = true;
  if (isRefused && map_) {
    const bool isScale = field >= static_cast<int>(PlacementField::XScale);
    map_->ShowStatus(isScale ? "A scale is a number from 0.001 to 1000, or less than 0"
                             : "That is no number that a texture can have");
    MessageBeep(MB_ICONWARNING);
  }
  return !isRefused;
}

void FaceWindow::OnEscape() {
  if (typing_ >= 0) {
    EndLive(true);
    isRefused_ = false;
    typing_ = -1;
    return Refresh();
  }
  SetActiveWindow(windows_.GetFrame().Handle());
}

double FaceWindow::StepOf(PlacementField field, bool finely) const {
  switch (field) {
    case PlacementField::XOffset:
    case PlacementField::YOffset: {
      const std::vector<MapView*> views = context_.windows.Views().ViewsOf(*map_);
      return finely || views.empty() ? 1 : 1 << views.front()->gridu;
    }
    case PlacementField::Rotation:
      return finely ? 1 : context_.options.rotationStep;
    case PlacementField::XScale:
    case PlacementField::YScale:
      break;
  }
  return finely ? FINE_SCALE_STEP : SCALE_STEP;
}

void FaceWindow::Step(int field, int steps, bool finely) {
  Accept();
  if (!map_) return;
  const Clock::time_point now = Clock::now();
  const bool goesOn = stepping_ == field && finely_ == finely && live_ && live_->IsNewest() &&
                      now - steppedAt_ < ONE_TURN;
  if (!goesOn) {
    live_.reset();
    steps_ = 0;
  }
  stepping_ = field;
  finely_ = finely;
  steppedAt_ = now;
  steps_ += steps;
  const auto which = static_cast<PlacementField>(field);
  const double more = steps_ * StepOf(which, finely);
  DoLive("Lay texture", [&](EditStep& step) {
    ChangeFaces(step, Faces(), [&](const PickedFace& face) { return WithMore(face, which, more); });
  });
  stepping_ = field;
  Refresh();
}

int FaceWindow::NotchesOf(int turned) {
  wheelRest_ += turned;
  const int notches = wheelRest_ / WHEEL_DELTA;
  wheelRest_ -= notches * WHEEL_DELTA;
  return notches;
}

// Up and down, by keys and by the wheel.
LRESULT CALLBACK FaceWindow::FieldFunc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR field, DWORD_PTR data) {
  auto& window = *reinterpret_cast<FaceWindow*>(data);
  const auto step = [&](int steps) {
    if (steps != 0) window.Step(static_cast<int>(field), steps, IsDown(VK_SHIFT));
    return 0;
  };
  switch (message) {
    case WM_KEYDOWN:
      if (wParam == VK_UP || wParam == VK_DOWN) return step(wParam == VK_UP ? 1 : -1);
      break;
    case WM_MOUSEWHEEL:
      return step(window.NotchesOf(GET_WHEEL_DELTA_WPARAM(wParam)));
    case WM_NCDESTROY:
      RemoveWindowSubclass(edit, FieldFunc, field);
      break;
    default:
      break;
  }
  return DefSubclassProc(edit, message, wParam, lParam);
}

// --- the picture

void FaceWindow::Drag(const TexturePoint& more) {
  Accept();
  stepping_ = -1;
  DoLive("Move texture", [&](EditStep& step) {
    ChangeFaces(step, Faces(), [&](const PickedFace& face) -> std::optional<Settled> {
      TexturePlacement placement = PlacementOf(face.Get());
      placement.xoff += static_cast<float>(more.s);
      placement.yoff += static_cast<float>(more.t);
      return Settled{placement, 0};
    });
  });
  Refresh();
}

void FaceWindow::Hold(int corner) {
  std::vector<PickedFace> faces = Faces();
  if (faces.empty()) return;
  faces.front().held = corner;
  map_->pickedFaces.Set(faces);
}

// --- messages

void FaceWindow::FinishTyping() {
  Accept();
  live_.reset();
}

void FaceWindow::OnCommand(int id, int notice) {
  const int field = id - ID_FACES_FIELD;
  if (field >= 0 && field < PLACEMENT_FIELDS) {
    if (notice == EN_CHANGE && !isFilling_) OnTyped(field);
    if (notice == EN_KILLFOCUS && typing_ == field) Accept();
    return;
  }
  if (notice != BN_CLICKED) return;
  if (id == IDOK) {
    Accept();
    Refresh();
  } else if (id == IDCANCEL) {
    OnEscape();
  } else if (id == ID_FACES_CLOSE) {
    OnClose();
  } else {
    OnButton(id);
  }
}

LRESULT FaceWindow::OnNotify(NMHDR& header) {
  if (header.code != static_cast<UINT>(UDN_DELTAPOS)) return FALSE;
  const int turned = reinterpret_cast<const NMUPDOWN&>(header).iDelta;
  Step(static_cast<int>(header.idFrom) - ID_FACES_SPIN, turned > 0 ? 1 : -1, IsDown(VK_SHIFT));
  return TRUE;
}

LRESULT FaceWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DRAWITEM && wParam == ID_FACES_PICTURE) {
    picture_->Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return TRUE;
  }
  if (message == WM_DESTROY) picture_.reset();
  return MapDialog::OnMessage(message, wParam, lParam);
}

void ShowFaceWindow(SideWindows& sides, const FaceWindowContext& context, bool activate) {
  if (auto* open = sides.Find<FaceWindow>()) return open->Show(activate);
  auto* made = sides.Add(std::make_unique<FaceWindow>(sides, context));
  if (made) static_cast<FaceWindow*>(made)->Show(activate);
}

}  // namespace ferrowand
