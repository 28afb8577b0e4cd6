// What opens and moves a map's camera, and what it shows.
#include "base/report.h"
#include "document/map.h"
#include "shell/commands/command_groups.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/window_maker.h"

namespace ferrowand {
namespace {

void NewGlCamera(const CameraContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (in.windows.CameraOf(map)) {
    in.reporter.Show("Cannot continue", "You can only have one 3D view per map");
  } else if (CameraWindow* window = in.maker.AddCamera(map)) {
    window->GetCamera()->GoToOpening();
  }
}

// Null, after saying so, when the map has none.
Camera* RequireCamera(const CameraContext& in) {
  Camera* camera = in.windows.CameraOf(*in.windows.ActiveMap());
  if (!camera) in.reporter.Show("Cannot continue", "You must have a 3D camera open");
  return camera;
}

void GoToStart(const CameraContext& in, unsigned) {
  Camera* camera = RequireCamera(in);
  if (camera && !camera->GoToStart()) {
    in.reporter.Show("Cannot continue", "No info_player_start entity!");
  }
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
    {Command::NewGLCamera, NewGlCamera},       {Command::CameraToStart, GoToStart},
    {Command::ToolCameraDetail, ChooseDetail}, {Command::ToolRecolour3D, Recolour},
    {Command::ToolUpdate3D, Update},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeCameraCommands(const CameraContext& context) {
  return std::make_unique<HandlerGroup<CameraContext>>(context, HANDLERS);
}

}  // namespace ferrowand
