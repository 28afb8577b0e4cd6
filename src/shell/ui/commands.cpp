// The way of a command from its number to its handler.
#include "shell/ui/commands.h"

#include <algorithm>

#include "shell/ui/app.h"

namespace ferrowand {
namespace {

const CommandHandler* HandlerOf(Command command) {
  for (const auto handlers : {FileCommands(), ViewCommands(), WindowCommands()}) {
    const auto handler = std::ranges::find(handlers, command, &CommandHandler::command);
    if (handler != handlers.end()) return &*handler;
  }
  return nullptr;
}

}  // namespace

CommandFacts App::Facts() const {
  CommandFacts facts;
  facts.options = &options;
  if (const Map* map = ActiveMap()) {
    facts.hasMap = true;
    facts.canUndo = map->undo.CanUndo();
    facts.canRedo = map->undo.CanRedo();
    facts.grid = (map->optionBits & MAP_GRID) != 0;
    facts.snap = (map->optionBits & MAP_SNAP) != 0;
  }
  if (const MapView* view = ActiveView()) {
    facts.hasView = true;
    facts.mapMode = static_cast<std::uint8_t>(view->mapmode);
  }
  return facts;
}

bool App::IsAvailable(unsigned id) const {
  const CommandRow* row = FindCommand(id);
  return row && HandlerOf(row->command) && row->available(Facts());
}

bool App::IsChecked(unsigned id) const {
  const CommandRow* row = FindCommand(id);
  return row && row->checked && row->checked(Facts());
}

void App::Execute(unsigned id) {
  // Nothing may touch the documents while one is being read.
  if (progress.IsLoading() || !IsAvailable(id)) return;
  HandlerOf(FindCommand(id)->command)->run(*this, id);
  frame.RefreshToolbar();
}

void App::TrackCommandPopup(HMENU menu) {
  POINT at;
  GetCursorPos(&at);
  Execute(dialogs.TrackPopup(frame.Handle(), menu, at));
}

}  // namespace ferrowand
