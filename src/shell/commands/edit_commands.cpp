// The Edit menu.
#include <algorithm>

#include "base/report.h"
#include "document/action.h"
#include "document/classes/class_set.h"
#include "document/picking.h"
#include "operations/clipboard.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/transform_selection.h"
#include "shell/commands/command_groups.h"
#include "shell/dialogs/class_menu.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/frame/frame.h"
#include "shell/system/clipboard.h"
#include "shell/windows/child_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

template <void (UndoStore::*operation)()>
void Step(const EditContext& in, unsigned) {
  (in.windows.ActiveMap()->undo.*operation)();
}

bool Put(const EditContext& in, const std::string& text) {
  if (in.clipboard.SetText(in.frame.Handle(), text)) return true;
  in.reporter.Show("Cannot continue", "Another program keeps the clipboard");
  return false;
}

// Cut takes nothing out that has not arrived on the clipboard.
template <bool cut>
void Take(const EditContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (!Put(in, SelectionText(map))) return;
  if (cut) {
    Conclude(map, DeleteSelection(map));
  } else {
    map.ShowStatus("Copy: " + InWords(map.selection.Objects()));
  }
}

void Paste(const EditContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const auto face = in.windows.PlaceForNew(map).face;
  PasteWay way;
  if (face) way = [&face](const Bounds& box) { return face->WayFor(box); };
  Conclude(map, PasteText(map, in.clipboard.Text(in.frame.Handle()), way));
}

void Clear(const EditContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  Conclude(map, DeleteSelection(map));
}

void SelectNothing(const EditContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  map.selection.Clear();
  // They do so by themselves, but in no command.
  for (MapView* view : in.windows.Views().ViewsOf(map)) view->TellSelection();
}

// To the right and down by one step of the grid, so that the copy is seen.
void Duplicate(const EditContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  Vec3 offset;
  if (const MapView* view = in.windows.ActiveView()) {
    offset[view->transform.orienu] = static_cast<float>(1 << view->gridu);
    offset[view->transform.orienv] = -static_cast<float>(1 << view->gridv);
  }
  Conclude(map, DuplicateSelection(map, offset, in.tools.HowToTransform()));
}

void DuplicateMany(const EditContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    const auto count = WholeNumberOf(in.reporter, typed[0], "The number of copies", 1, MAXCOPIES);
    if (!count) return false;
    const auto numbers = NumbersOf(in.reporter, std::span(typed).subspan(1));
    if (!numbers) return false;
    MultiDuplicate how{.count = *count, .offset = {}, .turn = {}};
    for (std::size_t i = 0; i < 3; ++i) {
      how.offset[static_cast<int>(i)] = static_cast<float>((*numbers)[i]);
      how.turn[static_cast<int>(i)] = (*numbers)[3 + i];
    }
    return Conclude(map, DuplicateSelection(map, how, in.tools.HowToTransform()));
  };
  FormRow offset = AxisRow("Offset of each", "0");
  offset.values.front() = "64";
  in.dialogs.Ask({"Multi Dupe",
                  "Each copy is moved and turned against the one before.",
                  {{"Copies", {"1"}, {}}, offset, AxisRow("Degrees about", "0")},
                  accept});
}

void Insert(const EditContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  // Before the menu draws the cursor away.
  const NewPlace place = in.windows.PlaceForNew(map);
  // Owned by the view: the frame would take the numbers of classes for commands.
  const EntityClass* chosen =
      AskClass(in.dialogs, in.windows.ActiveWindow()->Handle(), *map.classSet, in.options);
  if (!chosen) return;
  // Of a class that is both the selection decides.
  const bool takesBrushes = chosen->isMadeOfBrushes && !map.selection.empty();
  const bool isPoint = chosen->StandsAtPoint() && !takesBrushes;
  const EditResult result = isPoint ? InsertEntity(map, *chosen, place.For(chosen->SizeBox()))
                                    : GroupSelectionAs(map, *chosen);
  if (Conclude(map, result)) in.options.AddRecentClass(chosen->classname);
}

constexpr CommandHandler<EditContext> HANDLERS[] = {
    {Command::Undo, Step<&UndoStore::Undo>},
    {Command::Redo, Step<&UndoStore::Redo>},
    {Command::Insert, Insert},
    {Command::Cut, Take<true>},
    {Command::Copy, Take<false>},
    {Command::Paste, Paste},
    {Command::Clear, Clear},
    {Command::SelectNone, SelectNothing},
    {Command::Duplicate, Duplicate},
    {Command::MultiDuplicate, DuplicateMany},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeEditCommands(const EditContext& context) {
  return std::make_unique<HandlerGroup<EditContext>>(context, HANDLERS);
}

}  // namespace ferrowand
