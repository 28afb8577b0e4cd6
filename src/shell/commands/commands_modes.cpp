// The Modes menu, what bears on drags, and the tools that make primitives.
#include "shell/app/app.h"
#include "shell/commands/commands.h"

namespace ferrowand {
namespace {

template <auto ToolSet::*tool>
void Use(App& app, unsigned) {
  app.tools.Use(app.tools.*tool);
}

void SelectPartial(App& app, unsigned) {
  app.tools.boxRule = BoxRule::Partial;
}

// Its button is pressed once more to let it go.
void SelectFull(App& app, unsigned) {
  app.tools.boxRule = app.tools.boxRule == BoxRule::Full ? BoxRule::Partial : BoxRule::Full;
}

void Next(App& app, unsigned) {
  app.tools.Next();
}

void TouchUp(App& app, unsigned) {
  if (app.tools.Current() == &app.tools.vertexTool) {
    app.tools.Use(app.tools.brushSelector);
  } else if (RequireSelection(app, "Cannot continue", "Select some brushes first")) {
    app.tools.Use(app.tools.vertexTool);
  }
}

template <int axis>
void LimitAxis(App& app, unsigned) {
  app.tools.ToggleAxisLimit(axis);
}

template <PrimitiveKind kind>
void Create(App& app, unsigned) {
  app.tools.CreatePrimitive(kind);
}

void ChoosePrimitive(App& app, unsigned) {
  app.TrackCommandPopup(app.frame.PrimitivePopup());
}

void ToggleTextureLock(App& app, unsigned) {
  app.options.textureLock = app.options.textureLock == 0;
}

void SetRotationStep(App& app, int degrees) {
  app.options.rotationStep = static_cast<std::uint8_t>(degrees);
  for (MapView* view : app.views.Views()) view->rotationStep = app.options.rotationStep;
}

void AskRotationStep(App& app) {
  const auto accept = [&](const FormValues& typed) {
    const auto step =
        WholeNumberOf(app, typed.front(), "The rotation step", 1, Options::MAXROTATIONSTEP);
    if (step) SetRotationStep(app, *step);
    return step.has_value();
  };
  const std::string present = std::to_string(app.options.rotationStep);
  app.dialogs.Ask(app.frame.Handle(), {"Rotation step", "", {{"Degrees", {present}, {}}}, accept});
}

// The items of the popup are numbered by their degrees.
void ChooseRotationStep(App& app, unsigned) {
  constexpr unsigned OTHER = 1000;
  const OwnedMenu menu(CreatePopupMenu());
  for (const unsigned step : {1, 5, 10, 15, 30, 45, 90}) {
    const UINT tick = step == app.options.rotationStep ? MF_CHECKED : 0;
    AppendMenuA(menu.get(), MF_STRING | tick, step,
                Format(step == 1 ? "%u degree" : "%u degrees", step).c_str());
  }
  AppendMenuA(menu.get(), MF_SEPARATOR, 0, nullptr);
  AppendMenuA(menu.get(), MF_STRING, OTHER, "Other...");
  POINT at;
  GetCursorPos(&at);
  const unsigned chosen = app.dialogs.TrackPopup(app.frame.Handle(), menu.get(), at);
  if (chosen == OTHER) return AskRotationStep(app);
  if (chosen != 0) SetRotationStep(app, static_cast<int>(chosen));
}

constexpr CommandHandler HANDLERS[] = {
    {Command::ModeEntity, Use<&ToolSet::entitySelector>},
    {Command::ModeBrush, Use<&ToolSet::brushSelector>},
    {Command::BrushHandles, Use<&ToolSet::brushTool>},
    {Command::SelectMultiple, Use<&ToolSet::multiSelector>},
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

std::span<const CommandHandler> ModeCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
