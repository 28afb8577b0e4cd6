// The Operate menu, and the flip that only keys give.
#include "document/picking.h"
#include "operations/arrange.h"
#include "operations/csg_commands.h"
#include "operations/groups.h"
#include "operations/hollow.h"
#include "operations/visibility.h"
#include "shell/app/app.h"
#include "shell/commands/commands.h"

namespace ferrowand {
namespace {

constexpr char BRUSHES_FIRST[] = "Select one or more brushes first";
// Meant: it stands so in three of the four boxes.
constexpr char MISSPELT_TITLE[] = "Cannot continued";

template <EditResult (*operation)(Map&)>
void OnMap(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  Conclude(app, map, operation(map));
}

void SubtractBrushes(App& app, unsigned) {
  if (!RequireSelection(app, "Cannot continue", BRUSHES_FIRST)) return;
  Map& map = *app.ActiveMap();
  SubtractSelection(map);
  Conclude(app, map, EditResult::Done);
}

void IntersectBrushes(App& app, unsigned) {
  if (!RequireSelection(app, MISSPELT_TITLE, BRUSHES_FIRST)) return;
  Map& map = *app.ActiveMap();
  if (map.selection.size() != 2) {
    app.reporter.Show("Cannot continue", "Select exactly two objects first");
    return;
  }
  IntersectSelection(map);
  Conclude(app, map, EditResult::Done);
}

void MakeHollow(App& app, unsigned) {
  if (!RequireSelection(app, MISSPELT_TITLE, BRUSHES_FIRST)) return;
  Map& map = *app.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    // A width of 0 is told of there.
    const bool done = HollowSelection(map, ParseWallWidth(typed.front()).value_or(0));
    return Conclude(app, map, EditResult::Done) && done;
  };
  app.dialogs.Ask(
      app.frame.Handle(),
      {"Hollow", "Walls of a negative width stand outside.", {{"Wall width", {"16"}, {}}}, accept});
}

DVec3 MiddleOfSelection(const Map& map) {
  const Bounds box = SelectionBounds(map);
  return (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
}

DVec3 ToDVec3(std::span<const double> numbers) {
  return {numbers[0], numbers[1], numbers[2]};
}

void ScaleOrFlip(App& app, unsigned) {
  if (!RequireSelection(app, MISSPELT_TITLE, BRUSHES_FIRST)) return;
  Map& map = *app.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    const auto factors = NumbersOf(app, typed);
    return factors && Conclude(app, map,
                               ScaleSelection(map, ToDVec3(*factors), MiddleOfSelection(map),
                                              app.tools.HowToArrange()));
  };
  app.dialogs.Ask(app.frame.Handle(),
                  {"Scale/Flip", "A negative factor flips.", {AxisRow("Factor", "1")}, accept});
}

Matrix ToMatrix(std::span<const double> numbers) {
  Matrix matrix(3, 3);
  for (unsigned i = 0; i < 9; ++i) matrix.At(i % 3, i / 3) = static_cast<float>(numbers[i]);
  return matrix;
}

// By angles or by nine numbers: whichever are left as they stand change nothing.
void TransformByMatrix(App& app, unsigned) {
  if (!RequireSelection(app)) return;
  Map& map = *app.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    const auto numbers = NumbersOf(app, typed);
    if (!numbers) return false;
    const std::span all(*numbers);
    const Matrix matrix = ToMatrix(all.subspan(3)) * TurnMatrix(ToDVec3(all));
    return Conclude(
        app, map,
        TransformSelection(map, matrix, MiddleOfSelection(map), app.tools.HowToArrange()));
  };
  app.dialogs.Ask(app.frame.Handle(), {"Matrix",
                                       "Turn about the axes, multiply by nine numbers, or both.",
                                       {AxisRow("Degrees about", "0"),
                                        {"New X from", {"1", "0", "0"}, {}},
                                        {"New Y from", {"0", "1", "0"}, {}},
                                        {"New Z from", {"0", "0", "1"}, {}}},
                                       accept});
}

// By the current tool, where there is a view that it works in: not every tool can.
void GroupByTool(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  if (!RequireSelection(app)) return;
  if (MapView* view = app.ActiveView()) {
    app.tools.Current()->Group(*view);
  } else {
    Conclude(app, map, GroupSelection(map));
  }
}

void FlipAlongX(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  Conclude(app, map, FlipSelection(map, 0, app.tools.HowToArrange()));
}

constexpr CommandHandler HANDLERS[] = {
    {Command::OperateMatrix, TransformByMatrix},
    {Command::ScaleFlip, ScaleOrFlip},
    {Command::CsgSubtraction, SubtractBrushes},
    {Command::CsgIntersection, IntersectBrushes},
    {Command::Hollow, MakeHollow},
    {Command::SetAsLeading, OnMap<SetAsLeading>},
    {Command::Group, GroupByTool},
    {Command::Ungroup, OnMap<UngroupSelection>},
    {Command::ShowHidden, OnMap<ShowHidden>},
    {Command::HideSelection, OnMap<HideSelection>},
    {Command::FlipX, FlipAlongX},
};

}  // namespace

std::span<const CommandHandler> OperateCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
