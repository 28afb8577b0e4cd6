// The file of classes that a map uses, and keys that insert entities.
#include <algorithm>

#include "base/key_bindings.h"
#include "base/path_text.h"
#include "base/report.h"
#include "document/bound_entities.h"
#include "document/map.h"
#include "gamedata/class_file.h"
#include "shell/commands/command_groups.h"
#include "shell/dialogs/bind_key.h"
#include "shell/dialogs/dialogs.h"
#include "shell/documents/documents.h"
#include "shell/frame/frame.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/class_messages_window.h"

namespace ferrowand {
namespace {

// Begins with the kind of file that the map has.
void SetQc(const ClassContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const std::string extension = SplitPath(map.classSetName).extension;
  FileChoice choice;
  choice.title = "Set QC";
  choice.filter = CLASS_FILE_FILTER;
  choice.filterIndex = EqualNoCase(extension, ".def") ? 2 : EqualNoCase(extension, ".fgd") ? 3 : 1;
  if (const auto path = in.dialogs.ChooseFile(choice)) in.documents.ChooseClasses(map, *path);
}

// A map has one such window.
void ShowMessages(const ClassContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const auto isOfMap = [&](const ClassMessagesWindow& open) { return &open.GetMap() == &map; };
  if (const auto* open = in.sides.Find<ClassMessagesWindow>(isOfMap)) {
    SetForegroundWindow(open->Handle());
    return;
  }
  in.sides.Add(std::make_unique<ClassMessagesWindow>(in.sides, in.frame, map));
}

void Bind(const ClassContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (map.selection.size() != 1) return RefuseToBind(in.reporter);
  const entity& selected = *map.selection[0];
  if (!BindToKey(in.frame.Handle(), selected, in.boundEntities, in.reporter)) return;
  const BoundEntity& bound = in.boundEntities.items.back();
  map.ShowStatus(KeyName(bound.key) + " inserts " + NameOf(*bound.prototype) +
                 "; Options, Entity bindings takes it back");
}

constexpr CommandHandler<ClassContext> HANDLERS[] = {
    {Command::SetQc, SetQc},
    {Command::ClassMessages, ShowMessages},
    {Command::BindToKey, Bind},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeClassCommands(const ClassContext& context) {
  return std::make_unique<HandlerGroup<ClassContext>>(context, HANDLERS);
}

}  // namespace ferrowand
