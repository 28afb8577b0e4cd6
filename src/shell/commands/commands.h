// The way of a command from its number to what carries it out.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <optional>
#include <vector>

#include "base/command_table.h"
#include "document/undo_store.h"
#include "shell/commands/command_group.h"
#include "shell/frame/command_target.h"

namespace ferrowand {

class BoundEntities;
class ChildWindows;
class Dialogs;
class Frame;
class LoadWindow;
class SideWindows;
class ToolSet;
struct GameData;

// What decides on commands.
struct CommandsContext {
  GameData& data;
  const Options& options;
  const LoadWindow& progress;
  const BoundEntities& boundEntities;
  ChildWindows& windows;
  SideWindows& sides;
  ToolSet& tools;
  Frame& frame;
  Dialogs& dialogs;
};

class Commands : public CommandTarget {
 public:
  // All that the context names outlives it.
  explicit Commands(const CommandsContext& context) : context_(context) {}

  void Add(std::unique_ptr<CommandGroup> group) { groups_.push_back(std::move(group)); }

  bool IsAvailable(unsigned id) const override;
  bool IsChecked(unsigned id) const override;
  void Execute(unsigned id) override;
  bool InsertBoundEntity(unsigned key) override;
  bool IsDragging() const override;
  std::string ActiveFile() const override;
  // Tracks the popup at the cursor and does what the user chooses.
  void Offer(HMENU popup);

  // Without effect.
  void EndDrag();

 private:
  const CommandGroup* GroupOf(Command command) const;
  CommandFacts Facts() const;
  void TellState(const CommandRow& row) const;
  // Of the active map, to see whether a command changed anything.
  std::optional<UndoStore::StateId> StateOfMap() const;

  const CommandsContext context_;
  std::vector<std::unique_ptr<CommandGroup>> groups_;
};

}  // namespace ferrowand
