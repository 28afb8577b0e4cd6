// A handful of commands that work with the same things, and what they work with. A command that no
// group has is not built yet.
#pragma once

#include <algorithm>
#include <span>

#include "base/command_table.h"

namespace ferrowand {

class CommandGroup {
 public:
  virtual ~CommandGroup() = default;

  virtual bool Has(Command command) const = 0;
  // One that it has and that is available. `id` differs from the command's own only within a range.
  virtual void Run(Command command, unsigned id) const = 0;
};

template <typename Context>
struct CommandHandler {
  Command command;
  void (*run)(const Context& in, unsigned id);
};

template <typename Context>
class HandlerGroup : public CommandGroup {
 public:
  // The handlers outlive it, and so does what the context names.
  HandlerGroup(const Context& context, std::span<const CommandHandler<Context>> handlers)
      : context_(context), handlers_(handlers) {}

  bool Has(Command command) const override { return HandlerOf(command) != handlers_.end(); }
  void Run(Command command, unsigned id) const override { HandlerOf(command)->run(context_, id); }

 private:
  auto HandlerOf(Command command) const {
    return std::ranges::find(handlers_, command, &CommandHandler<Context>::command);
  }

  const Context context_;
  const std::span<const CommandHandler<Context>> handlers_;
};

}  // namespace ferrowand
