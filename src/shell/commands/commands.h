// What carries the commands out. A command that no room has built yet has no handler and is greyed.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/command_table.h"
#include "geometry/vec.h"
#include "operations/edit_result.h"

namespace ferrowand {

class App;
class Map;
class MapView;

struct CommandHandler {
  Command command;
  // `id` differs from the command's own only within a range. Called when the command is available.
  void (*run)(App& app, unsigned id);
};

// The end of every command on a map: its windows show what it did, or the user reads why it did
// nothing. Whether it was done.
bool Conclude(App& app, Map& map, EditResult result);
// Whether something is selected; says the text otherwise.
bool RequireSelection(App& app, const char* title = "Cannot continue",
                      const char* text = Reason(EditResult::NothingSelected));
// To be asked before a menu or a box draws the cursor away. In the active view, or in the last used
// one when a window of another kind is active.
Vec3 PlaceForNew(const App& app, const Map& map);
// False when the virtual key is bound to no entity.
bool InsertBoundEntity(App& app, unsigned key);

// What a user typed; nothing, after saying so, when it is no such number.
std::optional<std::vector<double>> NumbersOf(App& app, std::span<const std::string> typed);
std::optional<int> WholeNumberOf(App& app, const std::string& typed, const char* what, int least,
                                 int most);

std::span<const CommandHandler> FileCommands();
std::span<const CommandHandler> EditCommands();
std::span<const CommandHandler> ModeCommands();
std::span<const CommandHandler> OperateCommands();
std::span<const CommandHandler> InsertCommands();
std::span<const CommandHandler> ViewCommands();
std::span<const CommandHandler> WindowCommands();

}  // namespace ferrowand
