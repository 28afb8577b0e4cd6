// What the windows of the program look like, at whatever size the system wants them: nothing covers
// anything else, nothing is cut off, and what draws itself can be told apart.
#include "shell/system/win32.h"

#include <commctrl.h>

#include <functional>
#include <set>

#include "base/command_table.h"
#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"
#include "shell/frame/primitive_popup.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

TEST_F(AppTest, AFormIsTidyHasALetterForEachRowAndTakesAnyLanguage) {
  ASSERT_TRUE(Start());
  std::vector<FormValues> taken;
  const Form form{"Название",
                  "Each copy is moved and turned against the one before, and then once more.",
                  {{"Copies", {"1"}, {}},
                   AxisRow("Offset of each", "0"),
                   AxisRow("Options & others", "2"),
                   {"Template", {}, {"door", "Дверь"}},
                   {"Name", {"地图"}, {}, true}},
                  [&](const FormValues& typed) {
                    taken.push_back(typed);
                    return taken.size() > 1;
                  }};
  const Visitor visitor([&](HWND dialog) {
    ExpectTidy(dialog);
    LOGFONTA systems{}, own{};
    GetObjectA(reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0)), sizeof systems,
               &systems);
    GetObjectA(InterfaceFont(), sizeof own, &own);
    EXPECT_EQ(own.lfHeight, systems.lfHeight) << "letters as large as the system's";
    EXPECT_EQ(WindowText(dialog), L"Название");
    std::set<wchar_t> letters;
    std::set<LONG> widths;
    for (const HWND child : ShownChildren(dialog)) {
      const std::wstring text = WindowText(child);
      const std::size_t mark = text.find(L'&');
      if (mark != text.npos) letters.insert(towlower(text[mark + 1]));
      if (ClassOf(child) == "Edit") widths.insert(PlaceOf(child).right - PlaceOf(child).left);
    }
    EXPECT_EQ(letters, (std::set<wchar_t>{L'c', L'o', L'p', L't', L'n'}));
    EXPECT_EQ(widths.size(), 2u) << "numbers, and the wide one";
    SendMessageW(GetFocus(), WM_CHAR, L'Ж', 0);  // goes over what was there
    SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    SendMessageW(GetFocus(), WM_CHAR, L'7', 0);
    SendMessageA(dialog, WM_COMMAND, IDOK, 0);
  });
  EXPECT_TRUE(SystemDialogs().Ask(form));
  ASSERT_EQ(taken.size(), 2u);
  EXPECT_EQ(taken[0], (FormValues{"Ж", "0", "0", "0", "2", "2", "2", "door", "地图"}));
  EXPECT_EQ(taken[1].front(), "7");
}

TEST_F(AppTest, ViewsLayersAndProgressAreTidyAtEverySizeOfLetters) {
  saved.smallCaptions = 1;
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  Give(Command::LayersList);
  app->Pump();
  for (const auto& window : parts->windows.All()) {
    ExpectTidy(window->Handle());
    if (!window->View()) ExpectTidy(GetWindow(window->Handle(), GW_CHILD));
  }
  parts->progress.Begin("a.map");
  parts->progress.Step("Objects: %u", 4'000'000'000u, 1, 2);
  ExpectTidy(parts->progress.Handle());
  parts->progress.End();
}

TEST_F(AppTest, WhatBelongsToACompileAndWhatFindsIsTidyAtEverySizeOfLetters) {
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  const Visitor visitor([&](HWND dialog) {
    ExpectTidy(dialog);
    RECT place;
    GetWindowRect(dialog, &place);
    EXPECT_LE(place.right - place.left, Scaled(800));
    EXPECT_LE(place.bottom - place.top, Scaled(600));
    SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_FALSE(SystemDialogs().AskCompile({{}, {}, {}, &clipboard}));
  Give(Command::GetInfo);
  const HWND info = parts->sides.All().front()->Handle();
  SendMessageA(info, WM_COMMAND, ID_INFO_MORE, 0);
  ExpectTidy(info);
  dialogs.compile = CompileOptions{.flags = COMPILE_QBSP};
  Give(Command::Compile);
  const HWND overview = parts->sides.All().back()->Handle();
  EXPECT_NE(overview, info);
  ExpectTidy(overview);
  for (const Command command : {Command::CheckMap, Command::EntityTree}) {
    Give(command);
    ExpectTidy(parts->windows.ActiveWindow()->Handle());
  }
  Give(Command::FindEntity);
  ExpectTidy(parts->sides.All().back()->Handle());
}

TEST_F(AppTest, ProfilesAreKeptChosenAndTravelAsText) {
  ASSERT_TRUE(Start());
  std::vector<CompileProfile> kept;
  const auto ask = [&](const std::function<void(HWND)>& use) {
    const Visitor visitor([&](HWND dialog) {
      use(dialog);
      SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    });
    return SystemDialogs().AskCompile({CompileOptions{.flags = 0, .visLevel = 2, .threads = 3},
                                       kept, [&](const auto& profiles) { kept = profiles; },
                                       &clipboard});
  };
  const auto press = [](HWND dialog, int id) { SendDlgItemMessageA(dialog, id, BM_CLICK, 0, 0); };
  const auto chosen = ask([&](HWND dialog) {
    SetDlgItemTextW(dialog, ID_COMPILE_QUAKE_PARAMS, L"+name \x0416");
    press(dialog, ID_COMPILE_EXTRA);
    press(dialog, ID_COMPILE_THREAD_BUTTON);
    SetDlgItemTextA(dialog, ID_COMPILE_PROFILE, "night");
    press(dialog, ID_COMPILE_KEEP);
    press(dialog, ID_COMPILE_COPY);
  });
  const CompileOptions night{COMPILE_EXTRA, 2, 1, "", "", "", "+name \xd0\x96"};
  EXPECT_EQ(chosen, night);
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(kept.front().options, night);
  EXPECT_EQ(ask([&](HWND dialog) { press(dialog, ID_COMPILE_STANDARD); }), CompileOptions());
  EXPECT_EQ(ask([&](HWND dialog) {
              SendDlgItemMessageA(dialog, ID_COMPILE_PROFILE, CB_SETCURSEL, 0, 0);
              SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(ID_COMPILE_PROFILE, CBN_SELCHANGE), 0);
              press(dialog, ID_COMPILE_DELETE);
            }),
            night);
  EXPECT_TRUE(kept.empty());
  EXPECT_EQ(ask([&](HWND dialog) { press(dialog, ID_COMPILE_PASTE); }), night);
  EXPECT_EQ(kept.size(), 1u);
}

TEST_F(AppTest, EveryCommandOfTheBarHasAButtonInTheGroupsOfTheDesign) {
  ASSERT_TRUE(Start());
  const HWND bar = Toolbar();
  RECT area, last{};
  GetClientRect(bar, &area);
  std::string groups;
  const auto count = static_cast<int>(SendMessageA(bar, TB_BUTTONCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    TBBUTTON button{};
    RECT place;
    SendMessageA(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
    SendMessageA(bar, TB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&place));
    EXPECT_GE(place.left, last.right);
    EXPECT_LE(place.right, area.right) << i;
    EXPECT_LE(place.bottom, area.bottom);
    last = place;
    groups += button.fsStyle & BTNS_SEP ? '|' : '.';
  }
  EXPECT_EQ(groups, "......|..|..|..|..|....|..|..|...|..|.....|.|..");
}

// A bitmap that is drawn on, filled with a colour that nothing has.
class Sheet {
 public:
  static constexpr COLORREF BLANK = RGB(1, 2, 3);

  Sheet(int width, int height) : width_(width), height_(height) {
    const HDC screen = GetDC(nullptr);
    bitmap_.reset(CreateCompatibleBitmap(screen, width, height));
    dc_.reset(CreateCompatibleDC(screen));
    ReleaseDC(nullptr, screen);
    SelectObject(dc_.get(), bitmap_.get());
    const OwnedBrush blank(CreateSolidBrush(BLANK));
    const RECT area = Area();
    FillRect(dc_.get(), &area, blank.get());
  }
  HDC Dc() const { return dc_.get(); }
  RECT Area() const { return {0, 0, width_, height_}; }
  std::vector<COLORREF> Pixels() const {
    std::vector<COLORREF> pixels;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) pixels.push_back(GetPixel(dc_.get(), x, y));
    }
    return pixels;
  }
  // Of the columns from `left` on, how many have a pixel that is not as the top left one.
  int ColumnsDrawn(int left, int right) const {
    int columns = 0;
    for (int x = left; x < right; ++x) {
      bool isDrawn = false;
      for (int y = 0; y < height_; ++y) isDrawn |= GetPixel(Dc(), x, y) != GetPixel(Dc(), 0, 0);
      columns += isDrawn;
    }
    return columns;
  }

 private:
  OwnedBitmap bitmap_;
  OwnedDc dc_;
  int width_, height_;
};

TEST_F(AppTest, TheItemsOfThePrimitivesPopupShowPictureWordAndState) {
  ASSERT_TRUE(Start());
  std::set<std::vector<COLORREF>> pictures;
  for (ULONG_PTR i = 0; i < 6; ++i) {
    MEASUREITEMSTRUCT size{};
    size.itemData = i;
    SendMessageA(parts->frame.Handle(), WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&size));
    const int width = static_cast<int>(size.itemWidth), height = static_cast<int>(size.itemHeight);
    EXPECT_GE(height, Scaled(16));
    for (const UINT state : {0u, UINT{ODS_SELECTED}, UINT{ODS_GRAYED}}) {
      const Sheet sheet(width, height);
      DRAWITEMSTRUCT item{};
      item.itemState = state;
      item.hDC = sheet.Dc();
      item.rcItem = sheet.Area();
      item.itemData = i;
      SendMessageA(parts->frame.Handle(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
      EXPECT_GT(sheet.ColumnsDrawn(0, height), Scaled(7)) << i << ": the picture";
      EXPECT_GT(sheet.ColumnsDrawn(height, width), Scaled(40)) << i << ": the word";
      EXPECT_EQ(sheet.ColumnsDrawn(width - Scaled(3), width), 0) << "the word has room";
      pictures.insert(sheet.Pixels());
    }
  }
  EXPECT_EQ(pictures.size(), 18u);
}

TEST_F(AppTest, TheButtonsOfTheStatusBarAreDrawnEvenOnBothSides) {
  ASSERT_TRUE(Start());
  parts->documents.New();
  const HWND view = parts->windows.All().front()->Handle();
  std::set<std::vector<COLORREF>> pictures;
  for (const UINT id : {ID_CONTROLS, ID_MAP_MODE_BUTTON, ID_GRID_SNAP_BUTTON}) {
    RECT place;
    GetClientRect(GetDlgItem(view, static_cast<int>(id)), &place);
    const Sheet sheet(place.right, place.bottom);
    DRAWITEMSTRUCT item{};
    item.CtlID = id;
    item.hDC = sheet.Dc();
    item.rcItem = sheet.Area();
    SendMessageA(view, WM_DRAWITEM, id, reinterpret_cast<LPARAM>(&item));
    int left = 0, right = 0;
    for (int y = 0; y < place.bottom; ++y) {
      for (int x = 2; x < place.right - 2; ++x) {
        if (GetPixel(sheet.Dc(), x, y) != 0) continue;
        (2 * x < place.right ? left : right) += 1;
      }
    }
    EXPECT_GE(left, 2) << id;
    EXPECT_GE(right, 2) << id;
    pictures.insert(sheet.Pixels());
  }
  EXPECT_EQ(pictures.size(), 3u);
}

}  // namespace
}  // namespace ferrowand
