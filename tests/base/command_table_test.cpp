#include "base/command_table.h"

#include <gtest/gtest.h>

#include <set>

#include "support/cases.h"

namespace ferrowand {
namespace {

using enum Command;
using Commands = std::set<Command>;
using Fact = CommandRow::Fact CommandRow::*;

const Commands ANYTIME = {
    FileNew,     FileOpen,       InsertGroup,     EditOptions,      Exit,
    ZoomTo,      DrawClassnames, DrawLightRadius, DrawTemplates,    RenderPointEntities,
    TileWindows, CascadeWindows, ArrangeQuarters, ArrangeXYLarge,   Arrange3DLarge,
    ShowToolbar, Keylist,        About,           PopupRecentMap,   ToolLimitX,
    ToolLimitY,  ToolLimitZ,     ToolTextureLock, ToolRotationStep, PaleOthers};
const Commands IN_A_VIEW = {ZoomIn,      ZoomOut,         GridToggle,        SnapToggle,
                            GridSmaller, GridLarger,      ModeNormal,        ModeOneMip,
                            ModeHeights, ModeLayerColour, ToggleGridAndSnap, ToolMapMode};

const Commands OF_A_SELECTION = {
    InsertTemplate, SaveGroup,       Cut,           Copy,       Clear,          SelectNone,
    Duplicate,      MultiDuplicate,  OperateMatrix, Group,      Ungroup,        HideSelection,
    SnapToGrid,     CentreSelection, CentreAndZoom, FlipX,      DuplicateLinks, Connect,
    FollowLinks,    FollowLinksBack, TieToEntity,   TieToWorld, BindToKey};

class CommandTableTest : public testing::Test {
 protected:
  // All of which the row's fact is true.
  Commands Where(Fact fact) {
    Commands commands;
    for (const auto rows : {MainMenuCommands(), OtherCommands()}) {
      for (const CommandRow& row : rows) {
        if (row.*fact && (row.*fact)(facts)) commands.insert(row.command);
      }
    }
    return commands;
  }
  static Commands Without(Commands all, const Commands& some) {
    for (const Command command : some) EXPECT_EQ(all.erase(command), 1u) << Id(command);
    return all;
  }

  Options options;
  CommandFacts facts{.options = &options};
};

TEST_F(CommandTableTest, WhatNeedsNoMapWhatNeedsAViewAndAllTheOthersNeedAMap) {
  Commands more{Undo, Redo, NextLeakPoint, PreviousLeakPoint};
  for (unsigned i = 0; i < Options::NUMRECENTMAPS; ++i) {
    more.insert(static_cast<Command>(Id(RecentMap) + i));
  }
  Commands all;
  for (const auto rows : {MainMenuCommands(), OtherCommands()}) {
    for (const CommandRow& row : rows) EXPECT_TRUE(all.insert(row.command).second) << row.text;
  }
  EXPECT_EQ(Where(&CommandRow::available), ANYTIME);
  facts.hasMap = true;
  EXPECT_EQ(Where(&CommandRow::available),
            Without(Without(Without(all, more), IN_A_VIEW), OF_A_SELECTION));
  facts.hasView = facts.hasSelection = true;
  EXPECT_EQ(Where(&CommandRow::available), Without(all, more));
  facts = {.canUndo = true, .options = &options};
  EXPECT_EQ(Without(Where(&CommandRow::available), ANYTIME), Commands{Undo});
  facts = {.canRedo = true, .options = &options};
  options.previousFiles[1] = "a.map";
  EXPECT_EQ(Without(Where(&CommandRow::available), ANYTIME),
            (Commands{Redo, static_cast<Command>(Id(RecentMap) + 1)}));
}

TEST_F(CommandTableTest, EachStateTicksItsCommands) {
  const auto expect = [&](const Commands& ticked) {
    EXPECT_EQ(Where(&CommandRow::checked), ticked);
    facts = {
        .hasMap = true, .hasView = true, .mapMode = 9, .selectsFull = true, .options = &options};
  };
  options.renderPointEntities = options.showToolbar = 0;
  std::uint8_t mapMode = 0;
  facts.grid = facts.snap = true;
  facts.mode = ModeBrush;
  expect({});  // without a map
  facts.selectsFull = false;
  expect({SelectPartial});
  facts.grid = true;
  expect({SelectFull, GridToggle});
  facts.snap = true;
  expect({SelectFull, SnapToggle});
  for (const Command mode : {ModeNormal, ModeOneMip, ModeHeights, ModeLayerColour}) {
    facts.mapMode = mapMode++;
    expect({SelectFull, mode});
  }
  for (const Command mode : {ModeEntity, ModeBrush, BrushHandles, SelectMultiple, TouchUp,
                             CreatePyramid, CreateSphere, CreateHemisphere}) {
    facts.mode = mode;
    expect({SelectFull, mode});
  }
  for (const auto& [mode, button] : Cases<Command, Command>{
           {CreateCuboid, ToolCube}, {CreateWedge, ToolWedge}, {CreateColumn, ToolColumn}}) {
    facts.mode = mode;
    expect({SelectFull, mode, button});
  }
  for (const auto& [axis, command] :
       Cases<int, Command>{{0, ToolLimitX}, {1, ToolLimitY}, {2, ToolLimitZ}}) {
    facts.limitedAxes = static_cast<std::uint8_t>(1 << axis);
    expect({SelectFull, command});
  }
  for (const auto& [option, command] :
       Cases<std::uint8_t Options::*, Command>{{&Options::entityNames, DrawClassnames},
                                               {&Options::drawLightRadius, DrawLightRadius},
                                               {&Options::drawTemplates, DrawTemplates},
                                               {&Options::renderPointEntities, RenderPointEntities},
                                               {&Options::paleOthers, PaleOthers},
                                               {&Options::textureLock, ToolTextureLock},
                                               {&Options::showToolbar, ShowToolbar}}) {
    options.*option = 1;
    expect({SelectFull, command});
    options.*option = 0;
  }
}

TEST_F(CommandTableTest, ANumberMeansOneCommandAndARangeOneToo) {
  const std::pair<unsigned, unsigned> found[] = {{10007, 10000}, {10008, 0},     {10105, 10100},
                                                 {10106, 0},     {10250, 10200}, {51745, 51745},
                                                 {0, 0}};
  for (const auto& [id, command] : found) {
    const CommandRow* row = FindCommand(id);
    EXPECT_EQ(row ? Id(row->command) : 0, command) << id;
  }
}

TEST_F(CommandTableTest, TextsSayWhatIsMissing) {
  options.previousFiles[1] = "c:\\a&b.map";
  EXPECT_EQ(RecentMapText(options, 0), "- NO FILE -");
  EXPECT_EQ(RecentMapText(options, 1), "c:\\a&&b.map");
  EXPECT_EQ(ToolTip(Id(Command::Group)), "&Group");
  EXPECT_EQ(ToolTip(4711), "Undefined Tool Tip! Take pity on the beta-author.");
}

}  // namespace
}  // namespace ferrowand
