// The Operate menu, and the flip that only keys give.
#include "base/options.h"
#include "base/report.h"
#include "document/picking.h"
#include "operations/csg_commands.h"
#include "operations/groups.h"
#include "operations/hollow.h"
#include "operations/snap_corners.h"
#include "operations/texture_choice.h"
#include "operations/transform_selection.h"
#include "operations/visibility.h"
#include "shell/commands/command_groups.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/windows/child_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr char BRUSHES_FIRST[] = "Select one or more brushes first";
// Meant: it stands so in three of the four boxes.
constexpr char MISSPELT_TITLE[] = "Cannot continued";

void ChangeLeading(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (!Conclude(map, SetAsLeading(map))) return;
  const entity* group = map.leadingGroup();
  map.ShowStatus(group ? "New objects join the " + group->getClass()->classname
                       : "New objects join the current layer");
}

template <EditResult (*operation)(Map&)>
void OnMap(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  Conclude(map, operation(map));
}

// Of new faces, where the option says that they follow the current one; empty otherwise.
std::string NewTexture(const OperateContext& in, std::uint8_t Options::*follows) {
  return in.options.*follows ? in.choice.For(*in.windows.ActiveMap()) : "";
}

void SubtractBrushes(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (!RequireSelection(map, in.reporter, "Cannot continue", BRUSHES_FIRST)) return;
  const auto before = map.undo.State();
  SubtractSelection(map, NewTexture(in, &Options::csgFollows));
  if (map.undo.State() == before) map.ShowStatus("CSG Subtraction: nothing was cut");
}

void IntersectBrushes(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (!RequireSelection(map, in.reporter, MISSPELT_TITLE, BRUSHES_FIRST)) return;
  if (map.selection.size() != 2) {
    in.reporter.Show("Cannot continue", "Select exactly two objects first");
    return;
  }
  IntersectSelection(map, NewTexture(in, &Options::csgFollows));
}

void MakeHollow(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (!RequireSelection(map, in.reporter, MISSPELT_TITLE, BRUSHES_FIRST)) return;
  const auto accept = [&](const FormValues& typed) {
    // A width of 0 is told of there.
    return HollowSelection(map, ParseWallWidth(typed.front()).value_or(0),
                           NewTexture(in, &Options::hollowFollows));
  };
  in.dialogs.Ask(
      {"Hollow", "Walls of a negative width stand outside.", {{"Wall width", {"16"}, {}}}, accept});
}

DVec3 MiddleOfSelection(const Map& map) {
  const Bounds box = SelectionBounds(map);
  return (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
}

DVec3 ToDVec3(std::span<const double> numbers) {
  return {numbers[0], numbers[1], numbers[2]};
}

void ScaleOrFlip(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (!RequireSelection(map, in.reporter, MISSPELT_TITLE, BRUSHES_FIRST)) return;
  const auto accept = [&](const FormValues& typed) {
    const auto factors = NumbersOf(in.reporter, typed);
    return factors && Conclude(map, ScaleSelection(map, ToDVec3(*factors), MiddleOfSelection(map),
                                                   in.tools.HowToTransform()));
  };
  in.dialogs.Ask({"Scale/Flip", "A negative factor flips.", {AxisRow("Factor", "1")}, accept});
}

Matrix ToMatrix(std::span<const double> numbers) {
  Matrix matrix(3, 3);
  for (unsigned i = 0; i < 9; ++i) matrix.At(i % 3, i / 3) = static_cast<float>(numbers[i]);
  return matrix;
}

// By angles or by nine numbers: whichever are left as they stand change nothing.
void TransformByMatrix(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    const auto numbers = NumbersOf(in.reporter, typed);
    if (!numbers) return false;
    const std::span all(*numbers);
    const Matrix matrix = ToMatrix(all.subspan(3)) * TurnMatrix(ToDVec3(all));
    return Conclude(
        map, TransformSelection(map, matrix, MiddleOfSelection(map), in.tools.HowToTransform()));
  };
  in.dialogs.Ask({"Matrix",
                  "Turn about the axes, multiply by nine numbers, or both.",
                  {AxisRow("Degrees about", "0"),
                   {"New X from", {"1", "0", "0"}, {}},
                   {"New Y from", {"0", "1", "0"}, {}},
                   {"New Z from", {"0", "0", "1"}, {}}},
                  accept});
}

// Whole units unless another grid is asked for.
void SnapToGrid(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    const auto grid = WholeNumberOf(in.reporter, typed.front(), "The grid", 1, LARGEST_SNAP);
    return grid && Conclude(map, SnapSelection(map, *grid));
  };
  in.dialogs.Ask({"Snap to grid",
                  "Corners go to the nearest multiple of these units.",
                  {{"Grid", {"1"}, {}}},
                  accept});
}

// By the current tool, where there is a view that it works in: not every tool can.
void GroupByTool(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (MapView* view = in.windows.ActiveView()) {
    in.tools.Current()->Group(*view);
  } else {
    Conclude(map, GroupSelection(map));
  }
}

void FlipAlongX(const OperateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  Conclude(map, FlipSelection(map, 0, in.tools.HowToTransform()));
}

constexpr CommandHandler<OperateContext> HANDLERS[] = {
    {Command::OperateMatrix, TransformByMatrix},
    {Command::ScaleFlip, ScaleOrFlip},
    {Command::CsgSubtraction, SubtractBrushes},
    {Command::CsgIntersection, IntersectBrushes},
    {Command::Hollow, MakeHollow},
    {Command::SetAsLeading, ChangeLeading},
    {Command::Group, GroupByTool},
    {Command::Ungroup, OnMap<UngroupSelection>},
    {Command::ShowHidden, OnMap<ShowHidden>},
    {Command::HideSelection, OnMap<HideSelection>},
    {Command::FlipX, FlipAlongX},
    {Command::SnapToGrid, SnapToGrid},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeOperateCommands(const OperateContext& context) {
  return std::make_unique<HandlerGroup<OperateContext>>(context, HANDLERS);
}

}  // namespace ferrowand
