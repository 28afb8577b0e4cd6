// The resource script against the command table, and the way of a command to the map.
#include "shell/system/win32.h"

#include <commctrl.h>

#include <filesystem>
#include <map>
#include <set>

#include "shell/app_fixture.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/group_popup.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

std::string ItemText(HMENU menu, int position) {
  char text[300] = "";
  GetMenuStringA(menu, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
  return text;
}

std::string WithoutMnemonic(std::string text) {
  std::erase(text, '&');
  return text;
}

struct Item {
  std::string path;
  unsigned id;
  std::string text;
};

void Collect(HMENU menu, const std::string& path, std::vector<Item>& items) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const std::string text = ItemText(menu, i);
    if (const HMENU popup = GetSubMenu(menu, i)) {
      Collect(popup, (path.empty() ? "" : path + "/") + WithoutMnemonic(text), items);
    } else if (!text.empty()) {
      items.push_back({path, GetMenuItemID(menu, i), text});
    }
  }
}

TEST(Resources, TheMenuIsTheCommandTable) {
  const OwnedMenu menu(LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(ID_FRAME)));
  std::vector<Item> items;
  Collect(menu.get(), "", items);
  const auto rows = MainMenuCommands();
  ASSERT_EQ(items.size(), rows.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    EXPECT_EQ(items[i].id, Id(rows[i].command)) << items[i].text;
    EXPECT_EQ(items[i].path, rows[i].menu) << items[i].text;
    EXPECT_EQ(items[i].text, MenuText(rows[i]));
  }
}

struct Key {
  BYTE flags;
  WORD key;
  friend auto operator<=>(const Key&, const Key&) = default;
};

// What the first entry of the accelerator table for each key gives.
std::map<Key, unsigned> Accelerators() {
  const HACCEL table = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(ID_FRAME));
  std::vector<ACCEL> entries(static_cast<std::size_t>(CopyAcceleratorTableA(table, nullptr, 0)));
  CopyAcceleratorTableA(table, entries.data(), static_cast<int>(entries.size()));
  std::map<Key, unsigned> keys;
  for (const ACCEL& entry : entries) {
    const BYTE flags = entry.fVirt & (FVIRTKEY | FSHIFT | FCONTROL | FALT);
    keys.emplace(Key{flags, entry.key}, entry.cmd);
  }
  return keys;
}

Key KeyOf(std::string_view text) {
  Key key{FVIRTKEY, 0};
  while (true) {
    const auto strip = [&](std::string_view prefix, BYTE flag) {
      if (!text.starts_with(prefix)) return false;
      text.remove_prefix(prefix.size());
      key.flags |= flag;
      return true;
    };
    if (!strip("Ctrl+", FCONTROL) && !strip("Shift+", FSHIFT) && !strip("Alt+", FALT)) break;
  }
  if (text == "ins")
    key.key = VK_INSERT;
  else if (text == "Del")
    key.key = VK_DELETE;
  else if (text == "TAB")
    key.key = VK_TAB;
  else if (text == "Enter")
    key.key = VK_RETURN;
  else if (text.size() == 2 && text.front() == 'F')
    key.key = static_cast<WORD>(VK_F1 + text.back() - '1');
  else if (text == "?")
    return {0, '?'};
  else if (text == "G" && key.flags == FVIRTKEY)
    return {0, 'G'};
  else
    key.key = static_cast<WORD>(text.front());
  return key;
}

TEST(Resources, EveryMenuKeyGivesItsCommandButTheTwoThatAreTaken) {
  const auto keys = Accelerators();
  for (const CommandRow& row : MainMenuCommands()) {
    const std::string_view text = row.accelerator;
    // The view's own keys, and the system's.
    if (text.empty() || text == "+" || text == "-" || text == "[" || text == "]") continue;
    if (text == "(hold d)" || text == "Alt+F4") continue;
    const auto found = keys.find(KeyOf(text));
    ASSERT_NE(found, keys.end()) << text;
    const Command expected = row.command == Command::NewFrontView ? Command::Undo
                             : row.command == Command::SnapToggle ? Command::GridToggle
                                                                  : row.command;
    EXPECT_EQ(found->second, Id(expected)) << text;
  }
}

TEST_F(AppTest, WithoutAMapItsCommandsDoNothingAndSayNothing) {
  ASSERT_TRUE(Start());
  for (const CommandRow& row : MainMenuCommands()) {
    CommandFacts facts;
    facts.options = &parts->options;
    if (!row.available(facts)) Give(row.command);
  }
  EXPECT_TRUE(sink.messages.empty());
  EXPECT_TRUE(dialogs.asked.empty());
}

TEST_F(AppTest, TheMenuGreysWhatCannotBeDoneNow) {
  ASSERT_TRUE(Start());
  const HMENU bar = GetMenu(parts->frame.Handle());
  const auto isGrey = [&](Command command) {
    for (int i = 0; i < GetMenuItemCount(bar); ++i) {
      const HMENU popup = GetSubMenu(bar, i);
      if (!popup) continue;
      SendMessageA(parts->frame.Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), i);
    }
    return (GetMenuState(bar, Id(command), MF_BYCOMMAND) & MF_GRAYED) != 0;
  };
  EXPECT_TRUE(isGrey(Command::FileSave));
  EXPECT_FALSE(isGrey(Command::FileNew));
  EXPECT_TRUE(isGrey(Command::RecentMap));
  OpenTwoBrushes();
  EXPECT_FALSE(isGrey(Command::FileSave));
  EXPECT_FALSE(isGrey(Command::RecentMap));
  EXPECT_TRUE(isGrey(Command::Undo));
  parts->windows.ActiveMap()->selection.Set(
      {parts->windows.ActiveMap()->currentLayer()->getEntityList()[0].get()});
  Give(Command::Clear);
  EXPECT_FALSE(isGrey(Command::Undo));
}

TEST_F(AppTest, TheToolbarShowsItsTipsInOrderAndGoesAndComes) {
  ASSERT_TRUE(Start());
  const HWND bar = Toolbar();
  ASSERT_NE(bar, nullptr);
  std::vector<int> ids;
  for (int i = 0; i < SendMessageA(bar, TB_BUTTONCOUNT, 0, 0); ++i) {
    TBBUTTON button{};
    SendMessageA(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
    if (button.fsStyle & BTNS_SEP) continue;
    EXPECT_EQ(button.iBitmap, static_cast<int>(ids.size()));
    ids.push_back(button.idCommand);
  }
  ASSERT_EQ(ids.size(), NUMTOOLBUTTONS);
  const auto tip = [&](int id) {
    NMTTDISPINFOA info{};
    info.hdr.code = TTN_GETDISPINFOA;
    info.hdr.idFrom = static_cast<UINT_PTR>(id);
    SendMessageA(parts->frame.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    return std::string(info.lpszText);
  };
  EXPECT_EQ(tip(ids[0]), "Create cuboid (Alt+1)");
  EXPECT_EQ(tip(ids[18]), "Open map (Ctrl+O)");
  EXPECT_EQ(tip(ids[32]), "New window");
  const auto is = [&](UINT question, Command command) {
    return SendMessageA(bar, question, Id(command), 0) != 0;
  };
  EXPECT_FALSE(is(TB_ISBUTTONENABLED, Command::FileSave));
  Give(Command::ToolLimitY);
  parts->documents.New();
  app->Pump();
  EXPECT_TRUE(is(TB_ISBUTTONENABLED, Command::FileSave));
  EXPECT_TRUE(is(TB_ISBUTTONCHECKED, Command::ToolLimitY)) << "for maps that come, too";
  EXPECT_FALSE(is(TB_ISBUTTONCHECKED, Command::ToolLimitX));
  for (const MapView* view : parts->windows.Views().Views()) EXPECT_FALSE(view->axismask & 2);

  Give(Command::ShowToolbar);
  EXPECT_EQ(Toolbar(), nullptr);
  EXPECT_EQ(parts->options.showToolbar, 0);
  Give(Command::ShowToolbar);
  EXPECT_NE(Toolbar(), nullptr);
}

TEST_F(AppTest, TheKeyListShowsItsFile) {
  ASSERT_TRUE(Start());
  const std::filesystem::path before = std::filesystem::current_path();
  dir.Write("keylist.txt", "first\nsecond\r\n");
  std::filesystem::current_path(dir.Path());
  Give(Command::Keylist);
  std::filesystem::current_path(before);
  ASSERT_EQ(parts->windows.All().size(), 1u);
  const HWND window = parts->windows.All()[0]->Handle();
  EXPECT_EQ(TextOf(window), "Key List");
  EXPECT_EQ(TextOf(GetWindow(window, GW_CHILD)), "first\r\nsecond\r\n");
  SendMessageA(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(parts->windows.All().empty());
}

TEST_F(AppTest, WhatIsOnlyShown) {
  ASSERT_TRUE(Start());
  Give(Command::About);
  EXPECT_EQ(dialogs.abouts, 1);
  Give(Command::ZoomTo);
  EXPECT_EQ(sink.Said(), (std::vector<std::string>{
                             "Ferrowand says: Hold down D and click a position on a 2d map to zoom "
                             "in on it. Hold down Shift+D and click a position to zoom out."}));
}

TEST_F(AppTest, SwitchesTurnTheirOptions) {
  ASSERT_TRUE(Start());
  for (const auto& [command, option] :
       {std::pair{Command::DrawClassnames, &Options::entityNames},
        std::pair{Command::DrawLightRadius, &Options::drawLightRadius},
        std::pair{Command::DrawTemplates, &Options::drawTemplates},
        std::pair{Command::RenderPointEntities, &Options::renderPointEntities},
        std::pair{Command::PaleOthers, &Options::paleOthers},
        std::pair{Command::ToolTextureLock, &Options::textureLock}}) {
    const std::uint8_t before = parts->options.*option;
    Give(command);
    EXPECT_EQ(parts->options.*option, before ^ 1);
    EXPECT_EQ(IsTicked(command), before == 0);
    Give(command);
    EXPECT_EQ(parts->options.*option, before);
  }
}

TEST_F(AppTest, CommandsDoWhatTheyAreNamedFor) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  MapView& top = *WindowOf(Orientation::Top).View();
  Activate(WindowOf(Orientation::Top));
  const int grid = top.gridu;
  Give(Command::GridSmaller);
  EXPECT_EQ(top.gridu, grid - 1);
  Give(Command::GridLarger);
  EXPECT_EQ(top.gridu, grid);
  Give(Command::RenderPointEntities);
  EXPECT_FALSE(map.Data().shown.pointEntities);
  Give(Command::Insert);  // nothing is chosen
  EXPECT_FALSE(map.undo.CanUndo());

  entity& first = *map.currentLayer()->getEntityList().front();
  map.selection.Set({&first});
  Give(Command::Duplicate);
  const float step = static_cast<float>(1 << grid);
  EXPECT_EQ(map.selection.front()->GetBounds().mins, first.GetBounds().mins + Vec3(step, -step, 0));
  const auto& all = map.currentLayer()->getEntityList();
  map.selection.Set({all[0].get(), all[1].get(), all[2].get()});
  sink.messages.clear();
  Give(Command::CsgIntersection);
  EXPECT_EQ(sink.Said(),
            std::vector<std::string>{"Cannot continue: Select exactly two objects first"});
  Give(Command::Group);
  EXPECT_EQ(map.selection.size(), 1u);
  Give(Command::Ungroup);
  EXPECT_EQ(map.selection.size(), 3u);
  for (int i = 0; i < 2; ++i) map.undo.Undo();
  const std::string before = ExtendedText(map);
  sink.messages.clear();
  dialogs.answers = {{"(new, of the selection)", "crate", "0", "1", "1", "1"},
                     {"(new, of the selection)", "crate", "0", "1", "1", "1"},
                     {"crate", "", "361", "1", "1", "1"},
                     {"crate", "", "90", "1", "2", "1"}};
  for (int i = 0; i < 2; ++i) Give(Command::InsertTemplate);
  EXPECT_EQ(sink.Said(),
            (std::vector<std::string>{
                "Cannot continue: This map has a template of that name",
                "Cannot continue: The angle must be a whole number from -360 to 360"}));
  const entity& instance = *map.currentLayer()->getEntityList().back();
  EXPECT_EQ(instance.getClass()->Kind(), EntityKind::TemplateInstance);
  EXPECT_STREQ(instance.GetKey("XMPscaley"), "2.000000");
  for (int i = 0; i < 2; ++i) map.undo.Undo();
  EXPECT_EQ(ExtendedText(map), before);
  sink.messages.clear();
  dialogs.files = {dir.Path("inner.xmp")};
  dialogs.answers = {{"64", "0", "64"}};
  Give(Command::Embed);
  EXPECT_EQ(sink.Said(),
            std::vector<std::string>{"Cannot continue: Every size must be greater than 0"});
  EXPECT_EQ(map.undo.StepCount(), 1u);
}

TEST_F(AppTest, TheRotationStepIsChosenTypedAndThatOfEveryView) {
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  const auto steps = [&] {
    std::set<int> found;
    for (const MapView* view : parts->windows.Views().Views()) found.insert(view->rotationStep);
    return found;
  };
  dialogs.commands = {45, 1000};
  dialogs.answers = {{"0"}, {"7.5"}, {"181"}, {"7"}};
  Give(Command::ToolRotationStep);
  EXPECT_EQ(steps(), std::set{45});
  Give(Command::ToolRotationStep);
  EXPECT_EQ(dialogs.forms[0].rows[0].values[0], "45");
  EXPECT_EQ(sink.messages.size(), 3u);
  EXPECT_EQ(sink.messages[0].text, "The rotation step must be a whole number from 1 to 180");
  Give(Command::NewFrontView);
  EXPECT_EQ(steps(), std::set{7});
  EXPECT_EQ(parts->options.rotationStep, 7);
}

TEST_F(AppTest, ThePopupOfTheMapModeButtonRunsItsCommand) {
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  dialogs.commands = {Id(Command::ModeHeights)};
  MapWindow& top = WindowOf(Orientation::Top);
  Activate(top);
  SendDlgItemMessageA(top.Handle(), ID_MAP_MODE_BUTTON, BM_CLICK, 0, 0);
  EXPECT_EQ(top.View()->mapmode, MapMode::Heights);
}

TEST(GroupPopup, ListsGroupsTheDirectoryAndRecentMaps) {
  const TempDir dir;
  Options options;
  options.groupsDirectory = dir.Path("groups");
  options.previousGroups[0] = "c:\\a&b.xmp";
  options.previousGroups[2] = "behind a gap";
  options.previousFiles[0] = "c:\\one.map";
  const auto list = [&](int popup) {
    const OwnedMenu menu = MakeGroupPopup(options);
    const HMENU at = popup < 0 ? menu.get() : GetSubMenu(menu.get(), popup);
    std::string text;
    for (int i = 0; i < GetMenuItemCount(at); ++i) {
      const UINT id = GetMenuItemID(at, i);
      text += ItemText(at, i) + (id == UINT(-1) ? "" : "=" + std::to_string(id)) + "|";
    }
    return text;
  };
  EXPECT_EQ(list(-1),
            "c:\\a&&b.xmp=10000|=0|Another...\tCtrl+I=51717|=0|Group Directory|"
            "Previous files|");
  EXPECT_EQ(list(4), "(Empty)=0|");
  EXPECT_EQ(list(5), "c:\\one.map=10100|");
  dir.Write("groups/b.map", "");
  dir.Write("groups/c.xmp", "");
  EXPECT_EQ(list(4), "c.xmp=10200|b.map=10201|");
}

}  // namespace
}  // namespace ferrowand
