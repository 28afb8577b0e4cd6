// The Modes menu, what bears on drags, and the tools that make primitives.
#include "base/report.h"
#include "document/map.h"
#include "shell/commands/command_groups.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/frame/frame.h"
#include "shell/system/handles.h"
#include "shell/windows/child_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

void Tell(const ModeContext& in, const std::string& text) {
  if (Map* map = in.windows.ActiveMap()) map->ShowStatus(text);
}

template <auto ToolSet::*tool>
void Use(const ModeContext& in, unsigned) {
  in.tools.Use(in.tools.*tool);
}

void SelectPartial(const ModeContext& in, unsigned) {
  in.tools.boxRule = BoxRule::Partial;
  Tell(in, "A selection box takes what it touches");
}

void SelectFull(const ModeContext& in, unsigned) {
  in.tools.boxRule = BoxRule::Full;
  Tell(in, "A selection box takes what lies within it");
}

void Next(const ModeContext& in, unsigned) {
  in.tools.Next();
}

void TouchUp(const ModeContext& in, unsigned) {
  if (in.tools.Current() == &in.tools.vertexTool) {
    in.tools.Use(in.tools.brushSelector);
  } else if (RequireSelection(*in.windows.ActiveMap(), in.reporter, "Cannot continue",
                              "Select some brushes first")) {
    in.tools.Use(in.tools.vertexTool);
  }
}

template <int axis>
void LimitAxis(const ModeContext& in, unsigned) {
  in.tools.ToggleAxisLimit(axis);
  const bool isHeld = (in.tools.LimitedAxes() >> axis & 1) != 0;
  Tell(in, Format("Drags %s along %c", isHeld ? "move nothing" : "move", "XYZ"[axis]));
}

template <PrimitiveKind kind>
void Create(const ModeContext& in, unsigned) {
  in.tools.CreatePrimitive(kind);
}

void ChoosePrimitive(const ModeContext& in, unsigned) {
  in.commands.Offer(in.frame.PrimitivePopup());
}

void ToggleTextureLock(const ModeContext& in, unsigned) {
  in.options.textureLock = in.options.textureLock == 0;
  Tell(in, in.options.textureLock ? "Textures go along with their brushes"
                                  : "Textures stay where they are in the world");
}

void SetRotationStep(const ModeContext& in, int degrees) {
  in.options.rotationStep = static_cast<std::uint8_t>(degrees);
  for (MapView* view : in.windows.Views().Views()) view->rotationStep = in.options.rotationStep;
  Tell(in, Format("Rotation step: %i\u00B0", degrees));
}

void AskRotationStep(const ModeContext& in) {
  const auto accept = [&](const FormValues& typed) {
    const auto step =
        WholeNumberOf(in.reporter, typed.front(), "The rotation step", 1, Options::MAXROTATIONSTEP);
    if (step) SetRotationStep(in, *step);
    return step.has_value();
  };
  const std::string present = std::to_string(in.options.rotationStep);
  in.dialogs.Ask({"Rotation step", "", {{"Degrees", {present}, {}}}, accept});
}

// The items of the popup are numbered by their degrees.
void ChooseRotationStep(const ModeContext& in, unsigned) {
  constexpr unsigned OTHER = 1000;
  const OwnedMenu menu(CreatePopupMenu());
  for (const unsigned step : {1, 5, 10, 15, 30, 45, 90}) {
    const UINT tick = step == in.options.rotationStep ? MF_CHECKED : 0;
    AppendMenuA(menu.get(), MF_STRING | tick, step,
                Format(step == 1 ? "%u degree" : "%u degrees", step).c_str());
  }
  AppendMenuA(menu.get(), MF_SEPARATOR, 0, nullptr);
  AppendMenuA(menu.get(), MF_STRING, OTHER, "Other...");
  const unsigned chosen = in.dialogs.TrackAtCursor(menu.get());
  if (chosen == OTHER) return AskRotationStep(in);
  if (chosen != 0) SetRotationStep(in, static_cast<int>(chosen));
}

constexpr CommandHandler<ModeContext> HANDLERS[] = {
    {Command::ModeEntity, Use<&ToolSet::entitySelector>},
    {Command::ModeBrush, Use<&ToolSet::brushSelector>},
    {Command::BrushHandles, Use<&ToolSet::brushTool>},
    {Command::SelectMultiple, Use<&ToolSet::multiSelector>},
    {Command::LayPath, Use<&ToolSet::pathTool>},
    {Command::SelectPartial, SelectPartial},
    {Command::SelectFull, SelectFull},
    {Command::SelectNext, Next},
    {Command::TouchUp, TouchUp},
    {Command::ToolLimitX, LimitAxis<0>},
    {Command::ToolLimitY, LimitAxis<1>},
    {Command::ToolLimitZ, LimitAxis<2>},
    {Command::CreateCuboid, Create<PrimitiveKind::Cuboid>},
    {Command::CreateWedge, Create<PrimitiveKind::Wedge>},
    {Command::CreateColumn, Create<PrimitiveKind::Column>},
    {Command::CreatePyramid, Create<PrimitiveKind::Pyramid>},
    {Command::CreateSphere, Create<PrimitiveKind::Sphere>},
    {Command::CreateHemisphere, Create<PrimitiveKind::Hemisphere>},
    {Command::ToolCube, Create<PrimitiveKind::Cuboid>},
    {Command::ToolWedge, Create<PrimitiveKind::Wedge>},
    {Command::ToolColumn, Create<PrimitiveKind::Column>},
    {Command::ToolPrimitive, ChoosePrimitive},
    {Command::ToolTextureLock, ToggleTextureLock},
    {Command::ToolRotationStep, ChooseRotationStep},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeModeCommands(const ModeContext& context) {
  return std::make_unique<HandlerGroup<ModeContext>>(context, HANDLERS);
}

}  // namespace ferrowand
