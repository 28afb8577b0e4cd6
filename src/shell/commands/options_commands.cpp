// The options: asked for, and in effect at once where they do not say otherwise.
#include "document/bound_entities.h"
#include "document/classes/class_set.h"
#include "document/map.h"
#include "document/picking.h"
#include "shell/commands/command_groups.h"
#include "shell/dialogs/bind_key.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/options_dialog.h"
#include "shell/documents/documents.h"
#include "shell/documents/shared_data.h"
#include "shell/frame/frame.h"
#include "shell/windows/camera_joystick.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

// What may be bound to a key: the one point entity that is selected, if that is all.
const entity* SelectedPointEntity(const OptionsContext& in) {
  const Map* map = in.windows.ActiveMap();
  if (!map || map->selection.size() != 1) return nullptr;
  const entity* selected = map->selection[0];
  return CanBind(*selected) ? selected : nullptr;
}

bool IsSamePalette(const Options& a, const Options& b) {
  return a.gammaRed == b.gammaRed && a.gammaGreen == b.gammaGreen && a.gammaBlue == b.gammaBlue &&
         a.quakeDirectory == b.quakeDirectory;
}

void Follow(const OptionsContext& in, const Options& before) {
  if (!IsSamePalette(before, in.options)) {
    FillSearchPath(in.data, in.options, in.directory);
    LoadPalette(in.data, in.options);
  }
  LimitTextures(in.data, in.options);
  if (before.showToolbar != in.options.showToolbar) {
    in.frame.ShowToolbar(in.options.showToolbar != 0);
  }
  if (before.useJoystick != in.options.useJoystick ||
      before.joystickNumber != in.options.joystickNumber) {
    in.joystick.Open();
  }
  if (before.autosaveMinutes != in.options.autosaveMinutes) in.frame.RestartKeeping();
  in.windows.OptionsChanged();
  in.documents.FollowOptions();
}

void EditOptions(const OptionsContext& in, unsigned) {
  const Options before = in.options;
  const OptionsToEdit edit{in.options,
                           in.boundEntities,
                           in.data.reporter,
                           in.joysticks.Attached(),
                           in.data.classes.Default(),
                           SelectedPointEntity(in)};
  if (in.dialogs.AskOptions(edit) && in.options != before) Follow(in, before);
}

constexpr CommandHandler<OptionsContext> HANDLERS[] = {
    {Command::EditOptions, EditOptions},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeOptionsCommands(const OptionsContext& context) {
  return std::make_unique<HandlerGroup<OptionsContext>>(context, HANDLERS);
}

}  // namespace ferrowand
