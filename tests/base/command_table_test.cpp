#include "base/command_table.h"

#include <gtest/gtest.h>

#include <set>

namespace ferrowand {
namespace {

struct Case {
  Command command;
  bool nothing, map, view;  // available with nothing open, a map's window active, a 2D view active
};

TEST(CommandTable, AvailabilityFollowsWhatIsOpen) {
  const Options options;
  CommandFacts nothing, map, view;
  nothing.options = map.options = view.options = &options;
  map.hasMap = view.hasMap = view.hasView = true;
  for (const Case& c :
       {Case{Command::FileNew, true, true, true}, Case{Command::DrawTemplates, true, true, true},
        Case{Command::ArrangeQuarters, true, true, true},
        Case{Command::FileSave, false, true, true}, Case{Command::ZoomToFit, false, true, true},
        Case{Command::ZoomIn, false, false, true}, Case{Command::ModeHeights, false, false, true},
        Case{Command::Undo, false, false, false}}) {
    const CommandRow* row = FindCommand(Id(c.command));
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->available(nothing), c.nothing) << row->text;
    EXPECT_EQ(row->available(map), c.map) << row->text;
    EXPECT_EQ(row->available(view), c.view) << row->text;
  }
  view.canUndo = true;
  EXPECT_TRUE(FindCommand(Id(Command::Undo))->available(view));
  EXPECT_FALSE(FindCommand(Id(Command::Redo))->available(view));
}

TEST(CommandTable, TicksFollowTheActiveViewAndTheOptions) {
  Options options;
  CommandFacts facts;
  facts.options = &options;
  facts.grid = true;
  facts.mapMode = 2;
  facts.limitedAxes = 4;
  const auto ticked = [&] {
    std::set<Command> commands;
    for (const auto rows : {MainMenuCommands(), OtherCommands()}) {
      for (const CommandRow& row : rows) {
        if (row.checked && row.checked(facts)) commands.insert(row.command);
      }
    }
    return commands;
  };
  using Commands = std::set<Command>;
  const Commands ofOptions{Command::RenderPointEntities, Command::ShowToolbar, Command::ToolLimitZ};
  EXPECT_EQ(ticked(), ofOptions) << "no map, no grid";
  facts.hasMap = facts.hasView = true;
  options = {};
  options.renderPointEntities = options.showToolbar = 0;
  options.entityNames = options.textureLock = 1;
  EXPECT_EQ(ticked(),
            (Commands{Command::GridToggle, Command::ModeHeights, Command::SelectPartial,
                      Command::DrawClassnames, Command::ToolTextureLock, Command::ToolLimitZ}));
}

TEST(CommandTable, ANumberMeansOneCommandAndARangeOneToo) {
  std::set<unsigned> ids;
  for (const auto rows : {MainMenuCommands(), OtherCommands()}) {
    for (const CommandRow& row : rows) EXPECT_TRUE(ids.insert(Id(row.command)).second) << row.text;
  }
  const std::pair<unsigned, unsigned> found[] = {{10007, 10000}, {10008, 0},     {10105, 10100},
                                                 {10106, 0},     {10250, 10200}, {51745, 51745},
                                                 {0, 0}};
  for (const auto& [id, command] : found) {
    const CommandRow* row = FindCommand(id);
    EXPECT_EQ(row ? Id(row->command) : 0, command) << id;
  }
}

TEST(CommandTable, RecentMapsAreOnlyAvailableWhereThereIsOne) {
  Options options;
  CommandFacts facts;
  facts.options = &options;
  options.previousFiles[1] = "c:\\a&b.map";
  EXPECT_FALSE(FindCommand(51740)->available(facts));
  EXPECT_TRUE(FindCommand(51741)->available(facts));
  EXPECT_EQ(RecentMapText(options, 0), "- NO FILE -");
  EXPECT_EQ(RecentMapText(options, 1), "c:\\a&&b.map");
}

TEST(CommandTable, AButtonWithoutATipAsksForPity) {
  EXPECT_EQ(ToolTip(Id(Command::Group)), "&Group");
  EXPECT_EQ(ToolTip(4711), "Undefined Tool Tip! Take pity on the beta-author.");
}

}  // namespace
}  // namespace ferrowand
