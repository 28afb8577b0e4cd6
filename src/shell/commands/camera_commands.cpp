// What opens and moves a map's camera, and what it shows.
#include "base/progress.h"
#include "base/report.h"
#include "document/map.h"
#include "shell/commands/command_groups.h"
#include "shell/direct3d/direct3d.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/window_maker.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

bool HasCameraAlready(const CameraContext& in) {
  if (!in.windows.CameraOf(*in.windows.ActiveMap())) return false;
  in.reporter.Show("Cannot continue", "You can only have one 3D view per map");
  return true;
}

void Open(const CameraContext& in, CameraKind kind) {
  CameraWindow* window = in.maker.AddCamera(*in.windows.ActiveMap(), kind);
  if (window) window->GetCamera()->GoToOpening();
}

void NewGlCamera(const CameraContext& in, unsigned) {
  if (!HasCameraAlready(in)) Open(in, CameraKind::OpenGl);
}

void NewD3dCamera(const CameraContext& in, unsigned) {
  if (HasCameraAlready(in)) return;
  if (in.options.useDirect3D == 0) {
    in.reporter.Show("Cannot continue",
                     "Direct3d has been turned off. Use OpenGL, or turn in on in the options.");
  } else if (in.direct3d.Start()) {
    Open(in, CameraKind::Direct3d);
  }
}

// Null, after saying so, when the map has none.
Camera* RequireCamera(const CameraContext& in) {
  Camera* camera = in.windows.CameraOf(*in.windows.ActiveMap());
  if (!camera) in.reporter.Show("Cannot continue", "You must have a 3D camera open");
  return camera;
}

// Null, after saying so, when the map has none, or one that knows no light.
Camera* RequireLight(const CameraContext& in) {
  Camera* camera = RequireCamera(in);
  if (!camera || camera->CanLight()) return camera;
  in.reporter.Show("Cannot continue", "Only the Direct3D camera shows lighting.");
  return nullptr;
}

void ToggleLamp(const CameraContext& in, unsigned) {
  if (Camera* camera = RequireLight(in)) camera->SetLamp(!camera->HasLamp());
}

void TogglePreview(const CameraContext& in, unsigned) {
  Camera* camera = RequireLight(in);
  if (!camera) return;
  const bool isOn = camera->Lighting() == CameraLighting::Preview;
  camera->SetLighting(isOn ? CameraLighting::None : CameraLighting::Preview);
}

// Shadows take their time.
void QuakeLightingOn(const CameraContext& in, unsigned) {
  Camera* camera = RequireLight(in);
  if (!camera) return;
  camera->SetLighting(CameraLighting::Quake);
  const ProgressScope progress(in.progress, ProgressScope::Work{"Lighting"});
  camera->MakeReady(in.progress);
}

void QuakeLightingOff(const CameraContext& in, unsigned) {
  if (Camera* camera = RequireLight(in)) camera->SetLighting(CameraLighting::None);
}

void GoToStart(const CameraContext& in, unsigned) {
  Camera* camera = RequireCamera(in);
  if (camera && !camera->GoToStart()) {
    in.reporter.Show("Cannot continue", "No info_player_start entity!");
  }
}

void Position(const CameraContext& in, unsigned) {
  if (RequireCamera(in)) in.tools.PositionCamera();
}

void ChooseDetail(const CameraContext& in, unsigned) {
  if (!RequireCamera(in)) return;
  for (ChildWindow* window : in.windows.WindowsOf(*in.windows.ActiveMap())) {
    if (auto* camera = dynamic_cast<CameraWindow*>(window)) return camera->OfferModes();
  }
}

// The colours that stand for textures are found anew.
void Recolour(const CameraContext& in, unsigned) {
  Camera* camera = RequireCamera(in);
  if (!camera) return;
  for (const WadList::Item& item : camera->GetMap().wads.Items()) {
    item.wad->SetRepresentativeColours(static_cast<OneColour>(in.options.mipType));
  }
  camera->Update();
}

void Update(const CameraContext& in, unsigned) {
  if (Camera* camera = RequireCamera(in)) camera->Update();
}

constexpr CommandHandler<CameraContext> HANDLERS[] = {
    {Command::NewGLCamera, NewGlCamera},
    {Command::NewD3DCamera, NewD3dCamera},
    {Command::CameraToStart, GoToStart},
    {Command::ToolCameraPositioner, Position},
    {Command::ToolCameraDetail, ChooseDetail},
    {Command::ToolRecolour3D, Recolour},
    {Command::ToolUpdate3D, Update},
    {Command::HeadLamp, ToggleLamp},
    {Command::LightingPreview, TogglePreview},
    {Command::QuakeLightingOn, QuakeLightingOn},
    {Command::QuakeLightingOff, QuakeLightingOff},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeCameraCommands(const CameraContext& context) {
  return std::make_unique<HandlerGroup<CameraContext>>(context, HANDLERS);
}

}  // namespace ferrowand
