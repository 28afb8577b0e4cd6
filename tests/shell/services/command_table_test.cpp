#include "shell/services/command_table.h"

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
  const auto isTicked = [&](Command command) { return FindCommand(Id(command))->checked(facts); };
  facts.grid = true;
  facts.mapMode = 2;
  EXPECT_FALSE(isTicked(Command::GridToggle)) << "no map, no grid";
  EXPECT_FALSE(isTicked(Command::ModeHeights));
  facts.hasMap = facts.hasView = true;
  EXPECT_TRUE(isTicked(Command::GridToggle));
  EXPECT_FALSE(isTicked(Command::SnapToggle));
  EXPECT_TRUE(isTicked(Command::ModeHeights));
  EXPECT_FALSE(isTicked(Command::ModeNormal));
  EXPECT_FALSE(isTicked(Command::DrawClassnames));
  options.entityNames = 1;
  EXPECT_TRUE(isTicked(Command::DrawClassnames));
}

TEST(CommandTable, NoNumberMeansTwoCommands) {
  std::set<unsigned> ids;
  for (const auto rows : {MainMenuCommands(), OtherCommands()}) {
    for (const CommandRow& row : rows) EXPECT_TRUE(ids.insert(Id(row.command)).second) << row.text;
  }
}

TEST(CommandTable, RangesAreFoundByAnyOfTheirNumbers) {
  const auto commandOf = [](unsigned id) {
    const CommandRow* row = FindCommand(id);
    return row ? Id(row->command) : 0;
  };
  EXPECT_EQ(commandOf(10007), 10000u);
  EXPECT_EQ(commandOf(10008), 0u);
  EXPECT_EQ(commandOf(10105), 10100u);
  EXPECT_EQ(commandOf(10106), 0u);
  EXPECT_EQ(commandOf(10250), 10200u);
  EXPECT_EQ(commandOf(51745), 51745u);
  EXPECT_EQ(commandOf(0), 0u);
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
