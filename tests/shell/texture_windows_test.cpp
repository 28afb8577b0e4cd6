// The texture browser, Replace Texture, the WAD manager and Open Files, driven by their controls.
#include "shell/system/win32.h"

#include <commctrl.h>

#include <functional>
#include <set>
#include <utility>

#include "document/picking.h"
#include "gamedata/wad_builder.h"
#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"
#include "shell/resources/resource.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/side_windows.h"
#include "shell/windows/texture_browser.h"
#include "views/camera/camera.h"

namespace ferrowand {
namespace {

class TextureWindowsTest : public AppTest {
 protected:
  // Three boxes with a WAD of 300 textures.
  void Open(const std::string& wads = "some.wad") {
    ASSERT_TRUE(Start());
    std::vector<LumpPlan> plans{{"wall", 64, 64, "\x10\x20"}, {"door", 64, 128, "\x30\x40"}};
    for (int i = 0; i < 298; ++i) plans.push_back({Format("tex%03i", i), 64, 64, "\x50\x60\x70"});
    dir.Write("some.wad", WadBytes(plans));
    std::string brushes;
    for (int x = 0; x < 3; ++x) brushes += Cuboid(x * 128, 0, 0, x * 128 + 64, 64, 64);
    const std::string text =
        "{\"classname\" \"worldspawn\" \"wad\" \"" + wads + "\"\n" + brushes + "}\n";
    map = parts->documents.Open(dir.Write("textures.map", text));
    sink.messages.clear();
    app->Pump();
    before = ExtendedText(*map);
  }
  TextureBrowser& Browse() {
    Give(Command::TextureBrowser);
    app->Pump();
    auto* open = dynamic_cast<TextureBrowser*>(parts->windows.ActiveWindow());
    EXPECT_NE(open, nullptr);
    wall = open->List().Handle();
    UpdateWindow(wall);
    return *open;
  }
  HWND SideWindowTitled(const char* title) const {
    for (const auto& side : parts->sides.All()) {
      if (TextOf(side->Handle()).starts_with(title) && IsWindowVisible(side->Handle())) {
        return side->Handle();
      }
    }
    ADD_FAILURE() << "no window " << title;
    return nullptr;
  }
  entity& Box(std::size_t index) const {
    return *map->getEntityList().front()->getEntityList()[index];
  }
  std::string NameOn(std::size_t box, int face = 0) const {
    return std::string(std::as_const(Box(box).brush).face(face).WrittenName());
  }
  LPARAM PlaceOf(const TextureBrowser& browser, const char* name) const {
    const PixelRect& cell = browser.List().Layout().Cell(browser.Wall().Find(name));
    return MAKELPARAM(cell.left + 4, cell.top + 4 - browser.List().Top());
  }
  void Click(const TextureBrowser& browser, const char* name, WPARAM held = 0) const {
    const LPARAM at = PlaceOf(browser, name);
    SendMessageA(wall, WM_LBUTTONDOWN, MK_LBUTTON | held, at);
    SendMessageA(wall, WM_LBUTTONUP, held, at);
    app->Pump();
  }
  void Write(const char* text) const {
    for (const char* c = text; *c; ++c) PostMessageW(wall, WM_CHAR, static_cast<WPARAM>(*c), 0);
    app->Pump();
  }

  Map* map = nullptr;
  HWND wall = nullptr;
  std::string before;
};

TEST_F(TextureWindowsTest, TheWallIsSearchedChosenFromAndApplied) {
  Open();
  const TextureBrowser& browser = Browse();
  EXPECT_EQ(browser.GetMap(), map);
  EXPECT_EQ(TextOf(browser, ID_TEXTURES_COUNT), "300 textures");
  Write("door");
  WaitFor([&] { return browser.Wall().items.size() == 1; });
  EXPECT_EQ(TextOf(browser, ID_TEXTURES_COUNT), "1 of 300 textures");
  Type(GetFocus(), VK_RETURN);
  EXPECT_EQ(GetFocus(), wall);
  EXPECT_EQ(parts->choice.Current(), "door");
  EXPECT_EQ(TextOf(browser, ID_TEXTURES_STATE), "door, 64 x 128, not used, some.wad");
  sink.messages.clear();
  Type(wall, VK_RETURN);
  EXPECT_EQ(sink.OnlyText(), "Select something that can be changed first");
  Select(*map, &Box(1), false);
  Type(wall, VK_RETURN);
  EXPECT_EQ(NameOn(1), "door");
  EXPECT_EQ(NameOn(0), "wall");
  WaitFor([&] { return browser.Wall().items[0].faces == 6; });
  EXPECT_EQ(TextOf(browser, ID_TEXTURES_STATE), "door, 64 x 128, 6 faces of 1 brush, some.wad");
  Type(wall, VK_ESCAPE);
  EXPECT_EQ(browser.Wall().items.size(), 300u);
  Give(Command::Undo);
  EXPECT_EQ(ExtendedText(*map), before);
  WaitFor([&] { return browser.Wall().items[browser.Wall().Find("door")].faces == 0; });

  Type(wall, VK_END);
  EXPECT_EQ(parts->choice.Current(), "wall");
  EXPECT_GT(browser.List().Top(), 0);
  Type(wall, VK_HOME);
  Type(wall, VK_RIGHT);
  EXPECT_EQ(parts->choice.Current(), "tex000");
  Give(Command::ApplyTexture);
  EXPECT_EQ(NameOn(1), "tex000");
  Give(Command::CreateCuboid);
  parts->tools.primitiveTool.Create(*map, {{0, 0, 128}, {64, 64, 192}});
  EXPECT_EQ(NameOn(3), "tex000");
}

TEST_F(TextureWindowsTest, TheMouseChoosesAppliesSelectsAndLooksClosely) {
  Open();
  const TextureBrowser& browser = Browse();
  Click(browser, "tex000", MK_SHIFT);
  EXPECT_TRUE(map->selection.empty());
  Select(*map, &Box(2), false);
  Click(browser, "tex001");
  SendMessageA(wall, WM_LBUTTONDBLCLK, MK_LBUTTON, PlaceOf(browser, "tex001"));
  EXPECT_EQ(NameOn(2), "tex001");
  app->Pump();
  Select(*map, nullptr, false);
  Click(browser, "tex001", MK_SHIFT);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Box(2)});
  SendMessageA(wall, WM_MOUSEHOVER, 0, PlaceOf(browser, "tex000"));
  EXPECT_TRUE(browser.List().ShowsTip());
  SendMessageA(wall, WM_MOUSELEAVE, 0, 0);
  EXPECT_FALSE(browser.List().ShowsTip());

  dialogs.commands = {1000, 1004};
  SendMessageA(wall, WM_CONTEXTMENU, 0, -1);
  app->Pump();
  EXPECT_TRUE(parts->choice.IsFavourite("tex001"));
  SendMessageA(wall, WM_CONTEXTMENU, 0, -1);
  EXPECT_EQ(browser.Wall().items.size(), 1u);
  EXPECT_EQ(dialogs.order[0], 1000u);
  parts->maker.ShowInBrowser(*map, "TEX250");
  EXPECT_EQ(browser.Wall().items.size(), 300u);
  EXPECT_GT(browser.List().Top(), 0);
  const WPARAM notch = MAKEWPARAM(MK_CONTROL, WHEEL_DELTA);
  SendMessageA(wall, WM_MOUSEWHEEL, notch, 0);
  EXPECT_EQ(parts->options.texturesZoom, 150);
}

TEST_F(TextureWindowsTest, WhatIsDroppedOnTheCameraPaintsTheFaceThere) {
  Open();
  Give(Command::NewGLCamera);
  app->Pump();
  ChildWindow& camera = *parts->windows.ActiveWindow();
  camera.MoveTo({0, 0, 400, 400});
  CameraPose pose;
  pose.eye = {32, 32, 200};
  pose.Face(0, 90);
  camera.GetCamera()->SetPose(pose);
  UpdateWindow(camera.Handle());
  const TextureBrowser& browser = Browse();
  SendMessageA(wall, WM_LBUTTONDOWN, MK_LBUTTON, PlaceOf(browser, "door"));
  RECT area;
  GetClientRect(camera.Handle(), &area);
  POINT to{area.right / 2, area.bottom / 2};
  MapWindowPoints(camera.Handle(), wall, &to, 1);
  SendMessageA(wall, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
  EXPECT_TRUE(browser.List().IsDragging());
  SendMessageA(wall, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
  int painted = 0;
  for (int face = 0; face < 6; ++face) {
    if (NameOn(0, face) != "door") continue;
    ++painted;
    EXPECT_EQ(std::as_const(Box(0).brush).face(face).plane.normal.z, 1);
  }
  EXPECT_EQ(painted, 1);
  Give(Command::Undo);
  EXPECT_EQ(ExtendedText(*map), before);
}

TEST_F(TextureWindowsTest, WhatIsDraggedOntoAWadIsCopiedThere) {
  const std::string path = dir.Write("other.wad", WadBytes({{"own", 8, 8, "o"}}));
  Open("some.wad;other.wad");
  const TextureBrowser& browser = Browse();
  Give(Command::WadManager);
  app->Pump();
  const HWND window = SideWindowTitled("WADs"), list = GetDlgItem(window, ID_WADS_LIST);
  const HCURSOR yes = LoadCursorA(nullptr, IDC_HAND), no = LoadCursorA(nullptr, IDC_NO);
  const auto dropAt = [&](POINT screen) {
    ScreenToClient(wall, &screen);
    const LPARAM at = MAKELPARAM(screen.x, screen.y);
    SendMessageA(wall, WM_MOUSEMOVE, MK_LBUTTON, at);
    const HCURSOR cursor = GetCursor();
    SendMessageA(wall, WM_LBUTTONUP, 0, at);
    app->Pump();
    return cursor;
  };
  const auto drag = [&](const char* name, int row) {
    SendMessageA(wall, WM_LBUTTONDOWN, MK_LBUTTON, PlaceOf(browser, name));
    // Where no window manager keeps it above its owner.
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    RECT place{};
    ListView_GetItemRect(list, row, &place, LVIR_BOUNDS);
    POINT to{place.left + 4, (place.top + place.bottom) / 2};
    ClientToScreen(list, &to);
    return dropAt(to);
  };
  WadFile& other = *map->wads.Items()[1].wad;
  EXPECT_EQ(drag("door", 0), no) << "its own";
  EXPECT_EQ(drag("door", 1), yes);
  EXPECT_EQ(other.FindTexture("door")->height, 128);
  EXPECT_EQ(CellOf(list, 1, 1), "2");
  drag("door", 1);
  EXPECT_EQ(sink.OnlyText(), "other.wad has a texture called door already");
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(drag("tex000", 1), no) << "it may not be written";
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  SendMessageA(window, WM_COMMAND, IDCANCEL, 0);

  SendDlgItemMessageA(browser.Handle(), ID_TEXTURES_ORDER, CB_SETCURSEL, 3, 0);
  SendMessageA(browser.Handle(), WM_COMMAND, MAKEWPARAM(ID_TEXTURES_ORDER, CBN_SELCHANGE), 0);
  SendMessageA(wall, WM_LBUTTONDOWN, MK_LBUTTON, PlaceOf(browser, "tex000"));
  SendMessageA(wall, WM_VSCROLL, SB_BOTTOM, 0);
  const PixelRect& heading = browser.List().Layout().Heading(1);
  POINT to{heading.left + 20, heading.top + 4 - browser.List().Top()};
  ClientToScreen(wall, &to);
  EXPECT_EQ(dropAt(to), yes) << "the heading of the WAD";
  EXPECT_EQ(other.Textures().size(), 3u);
}

// What has been drawn and moved along must be what would be drawn anew.
TEST_F(TextureWindowsTest, AScrolledWallIsTheWallAtThatPlace) {
  Open();
  const TextureBrowser& browser = Browse();
  const auto picture = [&] {
    UpdateWindow(wall);
    RECT area;
    GetClientRect(wall, &area);
    std::vector<COLORREF> pixels;
    const HDC dc = GetDC(wall);
    for (int y = 0; y < area.bottom; y += 3) {
      for (int x = 0; x < area.right; x += 5) pixels.push_back(GetPixel(dc, x, y));
    }
    ReleaseDC(wall, dc);
    return pixels;
  };
  for (const int code : {SB_LINEDOWN, SB_LINEDOWN, SB_PAGEDOWN, SB_LINEUP}) {
    SendMessageA(wall, WM_VSCROLL, MAKEWPARAM(code, 0), 0);
    UpdateWindow(wall);
  }
  const auto scrolled = picture();
  const_cast<TextureList&>(browser.List()).DrawAnew();
  EXPECT_EQ(scrolled, picture());
  EXPECT_GT(std::set<COLORREF>(scrolled.begin(), scrolled.end()).size(), 4u);
}

TEST_F(TextureWindowsTest, ReplacementsAreCountedMadeAndTakenBack) {
  Open();
  Select(*map, &Box(0), false);
  Give(Command::ReplaceTexture);
  app->Pump();
  const HWND window = SideWindowTitled("Replace texture");
  ExpectTidy(window);
  const auto state = [&] { return TextOf(GetDlgItem(window, ID_REPLACE_STATE)); };
  EXPECT_EQ(TextOf(GetDlgItem(window, ID_REPLACE_FIND)), "wall");
  for (const auto& [scope, found] :
       {std::pair(2, "6 faces of 1 brush"), {0, "18 faces of 3 brushes"}}) {
    SendDlgItemMessageA(window, ID_REPLACE_SCOPE, CB_SETCURSEL, static_cast<WPARAM>(scope), 0);
    SendMessageA(window, WM_COMMAND, MAKEWPARAM(ID_REPLACE_SCOPE, CBN_SELCHANGE), 0);
    EXPECT_EQ(state(), found);
    EXPECT_EQ(parts->options.replaceFlags, scope);
  }
  SendDlgItemMessageA(window, ID_REPLACE_NEXT, BM_CLICK, 0, 0);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Box(1)});
  parts->choice.Choose("door");
  EXPECT_EQ(TextOf(GetDlgItem(window, ID_REPLACE_WITH)), "door") << "it follows the browser";
  SendDlgItemMessageA(window, ID_REPLACE_DO, BM_CLICK, 0, 0);
  EXPECT_EQ(state(), "18 faces of 3 brushes changed. Left: Nothing found");
  EXPECT_EQ(map->selection.size(), 3u);
  EXPECT_TRUE(IsWindowVisible(window));
  Give(Command::Undo);
  EXPECT_EQ(ExtendedText(*map), before);
  WaitFor([&] { return state() == "18 faces of 3 brushes"; });
  SetDlgItemTextA(window, ID_REPLACE_WITH, "no such name at all");
  SendDlgItemMessageA(window, ID_REPLACE_DO, BM_CLICK, 0, 0);
  EXPECT_EQ(ExtendedText(*map), before);
  PostMessageA(GetDlgItem(window, ID_REPLACE_NEXT), WM_KEYDOWN, VK_ESCAPE, 0);
  app->Pump();
  EXPECT_FALSE(IsWindowVisible(window));
}

TEST_F(TextureWindowsTest, WadsAreArrangedLocatedAndClosed) {
  Open("some.wad;gone.wad");
  Give(Command::WadManager);
  app->Pump();
  const HWND window = SideWindowTitled("WADs"), list = GetDlgItem(window, ID_WADS_LIST);
  ExpectTidy(window);
  const auto push = [&](int button) {
    SendDlgItemMessageA(window, button, BM_CLICK, 0, 0);
    app->Pump();
  };
  EXPECT_EQ(CellOf(list, 0, 3), "18");
  EXPECT_EQ(CellOf(list, 1, 4), "missing");
  dialogs.files = {dir.Write("new.wad", WadBytes({{"WALL", 8, 8, "n"}}))};
  push(ID_WADS_ADD);
  EXPECT_EQ(CellOf(list, 2, 0), "new.wad");
  EXPECT_EQ(CellOf(list, 0, 4), "1 shared");
  push(ID_WADS_UP);
  EXPECT_TRUE(IsWindowEnabled(GetDlgItem(window, ID_WADS_UP)));
  push(ID_WADS_UP);
  EXPECT_EQ(CellOf(list, 0, 0), "new.wad");
  EXPECT_FALSE(IsWindowEnabled(GetDlgItem(window, ID_WADS_UP))) << "it is the first";
  EXPECT_EQ(std::as_const(Box(0).brush).face(0).texture->width, 8);
  sink.answers = {Answer::Yes};
  PostMessageA(list, WM_KEYDOWN, VK_DELETE, 0);
  app->Pump();
  EXPECT_EQ(ListView_GetItemCount(list), 2);
  ListView_SetItemState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
  dialogs.files = {dir.Write("elsewhere/gone.wad", WadBytes({{"lava", 8, 8, "l"}}))};
  push(ID_WADS_LOCATE);
  EXPECT_EQ(CellOf(list, 1, 4), "");
  EXPECT_NE(parts->options.wadFolders, "");
  while (map->undo.CanUndo()) map->undo.Undo();
  app->Pump();
  EXPECT_EQ(ExtendedText(*map), before);
  EXPECT_EQ(CellOf(list, 0, 0), "some.wad");

  Give(Command::OpenFiles);
  app->Pump();
  const HWND files = SideWindowTitled("Open files");
  ExpectTidy(files);
  const HWND held = GetDlgItem(files, ID_OPEN_FILES_LIST);
  const int count = ListView_GetItemCount(held);
  SendDlgItemMessageA(files, ID_OPEN_FILES_PURGE, BM_CLICK, 0, 0);
  EXPECT_EQ(ListView_GetItemCount(held), count - 1) << "new.wad";
  EXPECT_NE(TextOf(GetDlgItem(files, ID_OPEN_FILES_STATE)).find("new.wad"), std::string::npos);
  parts->documents.Close(*map);
  app->Pump();
}

}  // namespace
}  // namespace ferrowand
