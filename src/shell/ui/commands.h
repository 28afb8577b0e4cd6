// What carries the commands out. A command that no room has built yet has no handler and is greyed.
#pragma once

#include <span>

#include "shell/services/command_table.h"

namespace ferrowand {

class App;

struct CommandHandler {
  Command command;
  // `id` differs from the command's own only within a range. Called when the command is available.
  void (*run)(App& app, unsigned id);
};

std::span<const CommandHandler> FileCommands();
std::span<const CommandHandler> ViewCommands();
std::span<const CommandHandler> WindowCommands();

}  // namespace ferrowand
