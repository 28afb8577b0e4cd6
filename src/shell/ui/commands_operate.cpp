// The Operate menu, and the flip that only keys give.
#include "document/csg_commands.h"
#include "document/edit/arrange.h"
#include "document/edit/groups.h"
#include "document/edit/selection.h"
#include "document/edit/visibility.h"
#include "document/hollow.h"
#include "shell/services/number_text.h"
#include "shell/ui/app.h"
#include "shell/ui/commands.h"

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
  const auto answer = app.dialogs.Ask(app.frame.Handle(), {"Hollow", {{"Wall width", "16", {}}}});
  if (!answer) return;
  const std::optional<int> width = ParseWallWidth(answer->front());
  Map& map = *app.ActiveMap();
  // A width of 0 is told of there.
  HollowSelection(map, width.value_or(0));
  Conclude(app, map, EditResult::Done);
}

DVec3 MiddleOfSelection(const Map& map) {
  const Bounds box = SelectionBounds(map);
  DVec3 middle;
  for (int axis = 0; axis < 3; ++axis) {
    middle[axis] = (double{box.mins[axis]} + double{box.maxs[axis]}) / 2;
  }
  return middle;
}

void ScaleOrFlip(App& app, unsigned) {
  if (!RequireSelection(app, MISSPELT_TITLE, BRUSHES_FIRST)) return;
  const auto answer = app.dialogs.Ask(
      app.frame.Handle(),
      {"Scale/Flip (a negative factor flips)",
       {{"Factor along X", "1", {}}, {"Factor along Y", "1", {}}, {"Factor along Z", "1", {}}}});
  if (!answer) return;
  Map& map = *app.ActiveMap();
  DVec3 factors;
  for (std::size_t i = 0; i < 3; ++i) factors[static_cast<int>(i)] = ParseFloat((*answer)[i]);
  Conclude(app, map, ScaleSelection(map, factors, MiddleOfSelection(map), {}));
}

void TurnByAngles(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  if (map.selection.empty()) return Conclude(app, map, EditResult::NothingSelected);
  const auto answer = app.dialogs.Ask(
      app.frame.Handle(),
      {"Matrix",
       {{"Degrees about X", "0", {}}, {"Degrees about Y", "0", {}}, {"Degrees about Z", "0", {}}}});
  if (!answer) return;
  DVec3 degrees;
  for (std::size_t i = 0; i < 3; ++i) degrees[static_cast<int>(i)] = ParseFloat((*answer)[i]);
  Conclude(app, map, TransformSelection(map, TurnMatrix(degrees), MiddleOfSelection(map), {}));
}

// By the current tool, where there is a view that it works in: not every tool can.
void GroupByTool(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  if (map.selection.empty()) return Conclude(app, map, EditResult::NothingSelected);
  MapView* view = app.ActiveView();
  if (!view) return Conclude(app, map, GroupSelection(map));
  app.tools.Current()->Group(*view);
}

void FlipAlongX(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  Conclude(app, map, FlipSelection(map, 0, {}));
}

constexpr CommandHandler HANDLERS[] = {
    {Command::OperateMatrix, TurnByAngles},
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
