// The Modes menu, the axes that the mouse may change, and the tools that make primitives.
#include "shell/ui/app.h"
#include "shell/ui/commands.h"

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
  app.tools.ToggleAxisLimit(*app.ActiveMap(), axis);
}

template <PrimitiveKind kind>
void Create(App& app, unsigned) {
  app.tools.CreatePrimitive(kind);
}

void ChoosePrimitive(App& app, unsigned) {
  const OwnedMenu menu(CreatePopupMenu());
  for (const Command command :
       {Command::CreateCuboid, Command::CreateWedge, Command::CreateColumn, Command::CreatePyramid,
        Command::CreateSphere, Command::CreateHemisphere}) {
    // The table's texts end in a zero byte: they are literals.
    AppendMenuA(menu.get(), MF_STRING, Id(command), ToolTip(Id(command)).data());
  }
  app.TrackCommandPopup(menu.get());
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
};

}  // namespace

std::span<const CommandHandler> ModeCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
