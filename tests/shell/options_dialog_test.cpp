// The options dialog, worked as a user does: what each control sets, what is kept, what follows.
#include "shell/system/win32.h"

#include <commctrl.h>

#include <cctype>
#include <sstream>

#include "base/number_text.h"
#include "document/picking.h"
#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"
#include "shell/dialogs/set_key_dialog.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

enum Page { FILES, MISC, THREE_D, KEYS, BINDINGS };

class OptionsDialogTest : public AppTest {
 protected:
  // By the command of the menu. What it does last is to close the dialog.
  void InDialog(const std::function<void()>& act) {
    dialogs.options = [this](const OptionsToEdit& edit) {
      return AskOptions(parts->frame.Handle(), dialogs, edit);
    };
    const Visitor visitor([&](HWND dialog) {
      sheet = dialog;
      act();
    });
    Give(Command::EditOptions);
    app->Pump();
  }
  void Restart() {
    app->Shutdown();
    app.reset();
    MSG quit;
    PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    ASSERT_TRUE(StartWithStore());
  }

  HWND PageShown() const {
    for (HWND child = nullptr; (child = FindWindowExA(sheet, child, "#32770", nullptr));) {
      if (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) return child;
    }
    return nullptr;
  }
  void Turn(int page) const {
    const HWND tabs = GetDlgItem(sheet, ID_OPTIONS_TABS);
    SendMessageA(tabs, TCM_SETCURSEL, static_cast<WPARAM>(page), 0);
    NMHDR told{tabs, ID_OPTIONS_TABS, static_cast<UINT>(TCN_SELCHANGE)};
    SendMessageA(sheet, WM_NOTIFY, ID_OPTIONS_TABS, reinterpret_cast<LPARAM>(&told));
  }
  HWND Control(int id) const { return GetDlgItem(PageShown(), id); }
  void Push(int id) const { SendMessageA(Control(id), BM_CLICK, 0, 0); }
  void Type(int id, const char* text) const { SetWindowTextA(Control(id), text); }
  void Close(int id) const { SendMessageA(sheet, WM_COMMAND, static_cast<WPARAM>(id), 0); }
  // The button that opens "Set key", and what is done there.
  void PushAndChoose(int id, int code) const {
    const Visitor visitor([code](HWND dialog) {
      SendMessageA(dialog, WM_COMMAND,
                   static_cast<WPARAM>(code < 0 ? IDCANCEL : ID_KEY_CHOICE + code), 0);
    });
    Push(id);
  }
  // A text box gets the text, a list or a slider the number, all else a click.
  void Change(int id, const std::string& to) const {
    const std::string kind = ClassOf(Control(id));
    const auto number = static_cast<WPARAM>(ParseInt(to));
    if (kind == "Edit") return Type(id, to.c_str());
    if (kind == "ComboBox") return void(SendMessageA(Control(id), CB_SETCURSEL, number, 0));
    if (kind == TRACKBAR_CLASSA) {
      return void(SendMessageA(Control(id), TBM_SETPOS, TRUE, static_cast<LPARAM>(number)));
    }
    Push(id);
  }
  static std::string Value(const Options& options, const OptionField& field) {
    return std::visit(
        [&](auto member) {
          std::ostringstream text;
          if constexpr (sizeof(options.*member) == 1) {
            text << int{static_cast<std::uint8_t>(options.*member)};
          } else {
            text << options.*member;
          }
          return text.str();
        },
        field);
  }

  HWND sheet = nullptr;
};

TEST_F(OptionsDialogTest, EveryControlSetsItsOwnFieldAndARestartKeepsThemAll) {
  joysticks.info = JoystickInfo{1, "Ball", 6};
  ASSERT_TRUE(Start());
  struct Case {
    int id;
    OptionField field;
    const char* to;
  };
  const Case cases[] = {{ID_DEFAULT_WAD, &Options::defaultWad, "quake.wad;x"},
                        {ID_DEFAULT_QC, &Options::defaultQc, "Дверь.qc"},
                        {ID_QUAKE_DIRECTORY, &Options::quakeDirectory, "d:\\games\\quake"},
                        {ID_QUAKE_EXECUTABLE, &Options::quakeExecutable, "winquake.exe"},
                        {ID_GROUPS_DIRECTORY, &Options::groupsDirectory, "pieces"},
                        {ID_BACKUPS, &Options::backups, "255"},
                        {ID_AUTOSAVE_MINUTES, &Options::autosaveMinutes, "600"},
                        {ID_WORLD_TYPE, &Options::defaultWorldType, "2"},
                        {ID_SOUNDS, &Options::defaultSounds, "11"},
                        {ID_ONLY_ONE_WAD, &Options::exportOnlyOneWad, "1"},
                        {ID_GAMMA_RED, &Options::gammaRed, "1.5"},
                        {ID_GAMMA_GREEN, &Options::gammaGreen, "0.1"},
                        {ID_GAMMA_BLUE, &Options::gammaBlue, "100"},
                        {ID_TEXTURE_CACHE, &Options::textureCache, "77"},
                        {ID_MIP_TYPE, &Options::mipType, "0"},
                        {ID_TEXTURES_LARGER, &Options::maxTextureSize, "131072"},
                        {ID_NO_TEXTURE_CAPTIONS, &Options::noTextureCaptions, "1"},
                        {ID_UNDO_LEVELS, &Options::undoLevels, "300"},
                        {ID_UNDO_MEMORY, &Options::undoMegabytes, "64"},
                        {ID_ROTATION_STEP, &Options::rotationStep, "180"},
                        {ID_TRAY_SIZE, &Options::rightTraySize, "10"},
                        {ID_DEFAULT_ENTITY, &Options::defaultEntity, "info_null"},
                        {ID_BLACK_BACK, &Options::blackBack, "1"},
                        {ID_ENTITY_NAMES, &Options::entityNames, "1"},
                        {ID_LIGHT_RADIUS, &Options::drawLightRadius, "1"},
                        {ID_DRAW_TEMPLATES, &Options::drawTemplates, "1"},
                        {ID_ENTITY_LINKS, &Options::forceEntityLinks, "1"},
                        {ID_PALE_OTHERS, &Options::paleOthers, "1"},
                        {ID_LARGE_FONTS, &Options::largeness, "1"},
                        {ID_SMALL_CAPTIONS, &Options::smallCaptions, "1"},
                        {ID_TOOLBAR_SHOWN, &Options::showToolbar, "0"},
                        {ID_TRACK_MOUSE, &Options::trackMouse, "1"},
                        {ID_SMART_SELECTION, &Options::smartSelection, "0"},
                        {ID_TEXTURE_LOCK, &Options::textureLock, "1"},
                        {ID_TIPS_SHOWN, &Options::showTips, "1"},
                        {ID_USE_DIRECT3D, &Options::useDirect3D, "1"},
                        {ID_USE_HARDWARE, &Options::useHardware, "1"},
                        {ID_DITHER, &Options::dither3D, "1"},
                        {ID_POINT_ENTITIES, &Options::renderPointEntities, "0"},
                        {ID_BACK_CLIP, &Options::backClip, "20000"},
                        {ID_MOVE_METHOD, &Options::cameraMoveMethod, "1"},
                        {ID_USE_JOYSTICK, &Options::useJoystick, "0"},
                        {ID_JOYSTICK_SPEED, &Options::joystickSpeed, "50"},
                        {ID_SWAP_PITCH, &Options::swapJoyPitch, "1"}};
  const auto newKey = [](std::size_t button) { return static_cast<int>(112 + button % 24); };
  InDialog([&] {
    for (const Case& c : cases) {
      Turn(c.id / 100 - 2);  // as the controls are numbered
      EXPECT_NE(Value(parts->options, c.field), c.to) << "not changed by " << c.id;
      Change(c.id, c.to);
    }
    EXPECT_EQ(TextOf(Control(ID_JOYSTICK)), "Joystick 0: not attached");
    SendMessageA(Control(ID_JOYSTICK), CB_SETCURSEL, 0, 0);
    SendMessageA(PageShown(), WM_COMMAND, MAKEWPARAM(ID_JOYSTICK, CBN_SELCHANGE), 0);
    EXPECT_EQ(TextOf(Control(ID_JOYSTICK)), "Joystick 1: Ball");
    EXPECT_EQ(TextOf(Control(ID_JOYSTICK_TYPE)), "SpaceOrb or simular");
    Turn(KEYS);
    EXPECT_EQ(TextOf(Control(101)), "Up");
    EXPECT_EQ(TextOf(Control(128)), "End");
    for (int i = 0; i < 28; ++i) PushAndChoose(101 + i, newKey(static_cast<std::size_t>(i)));
    PushAndChoose(101, NO_KEY);
    EXPECT_EQ(TextOf(Control(102)), "F2");
    Close(IDOK);
  });
  ASSERT_TRUE(sink.messages.empty()) << sink.messages[0].text;
  Options accepted = parts->options;
  Restart();
  for (const Case& c : cases) EXPECT_EQ(Value(parts->options, c.field), c.to) << c.id;
  EXPECT_EQ(parts->options.joystickNumber, 1);
  for (std::size_t i = 0; i < 28; ++i) EXPECT_EQ(parts->options.keys[i / 2][i % 2], newKey(i));
  for (std::int32_t Options::*side :
       {&Options::frameLeft, &Options::frameTop, &Options::frameRight, &Options::frameBottom}) {
    accepted.*side = parts->options.*side;
  }
  accepted.frameMaximised = parts->options.frameMaximised;
  EXPECT_TRUE(parts->options == accepted) << "and nothing else was touched";
}

TEST_F(OptionsDialogTest, UndoPageIsAboutTheOneThatIsSeenAndCancelAboutAll) {
  ASSERT_TRUE(Start());
  const auto change = [&] {
    Turn(FILES);
    Type(ID_QUAKE_DIRECTORY, "e:\\");
    Turn(MISC);
    Type(ID_UNDO_LEVELS, "7");
    Push(ID_BLACK_BACK);
    Turn(KEYS);
    PushAndChoose(101, 'K');
  };
  const Options before = parts->options;
  InDialog([&] { change(), Close(IDCANCEL); });
  EXPECT_EQ(parts->options, before);
  InDialog([&] {
    change();
    Close(ID_OPTIONS_UNDO);
    EXPECT_EQ(TextOf(Control(101)), "Up");
    Turn(MISC);
    Close(ID_OPTIONS_UNDO);
    EXPECT_EQ(TextOf(Control(ID_UNDO_LEVELS)), "30");
    Close(IDOK);
  });
  EXPECT_EQ(parts->options.quakeDirectory, "e:\\");
  Options asBefore = parts->options;
  asBefore.quakeDirectory = before.quakeDirectory;
  EXPECT_EQ(asBefore, before);
}

TEST_F(OptionsDialogTest, WhatCannotBeIsSaidWhereItStandsAndNothingIsTaken) {
  ASSERT_TRUE(Start());
  struct Case {
    Page page;
    int id;
    std::string typed, said;
  };
  const Case cases[] = {
      {FILES, ID_QUAKE_DIRECTORY, std::string(100, 'q'),
       "The Quake directory can have 99 characters at most"},
      {MISC, ID_GAMMA_RED, "0", "The gamma of red must be a number from 0.1 to 100"},
      {MISC, ID_UNDO_LEVELS, "x",
       "The number of undo levels must be a whole number from 1 to 10000"},
  };
  const Options before = parts->options;
  for (const Case& c : cases) {
    sink.messages.clear();
    InDialog([&] {
      Turn(MISC);
      Push(ID_BLACK_BACK);
      Turn(c.page);
      Type(c.id, c.typed.c_str());
      Turn(BINDINGS);
      Close(IDOK);
      EXPECT_EQ(GetFocus(), Control(c.id)) << "on its page again";
      Close(IDCANCEL);
    });
    EXPECT_EQ(sink.OnlyText(), c.said);
    EXPECT_EQ(parts->options, before);
  }
}

TEST_F(OptionsDialogTest, FilesAreChosenWithTheirFiltersAndAnExecutableTellsItsDirectory) {
  ASSERT_TRUE(Start());
  dialogs.files = {"c:\\w.wad", "c:\\p.qc", "d:\\quake\\WinQuake.exe", "d:\\groups"};
  InDialog([&] {
    for (const int id : {ID_CHOOSE_WAD, ID_CHOOSE_QC, ID_CHOOSE_EXECUTABLE, ID_CHOOSE_GROUPS})
      Push(id);
    Close(IDOK);
  });
  const Options& options = parts->options;
  EXPECT_EQ(options.defaultWad + options.defaultQc, "c:\\w.wadc:\\p.qc");
  EXPECT_EQ(options.quakeDirectory + " " + options.quakeExecutable, "d:\\quake WinQuake.exe");
  EXPECT_EQ(options.groupsDirectory, "d:\\groups");
  EXPECT_EQ(dialogs.asked[0].filter, "Wad archives (*.wad)|*.wad|");
  EXPECT_EQ(dialogs.asked[2].filter,
            "Executables (*.exe, *.com, *.bat, *.pif)|*.exe;*.com;*.bat;*.pif|Quake|quake.exe|"
            "WinQuake|winquake.exe|");
}

TEST_F(OptionsDialogTest, TheLowestKeyThatIsDownIsTakenUnlessItWasDownBefore) {
  ASSERT_TRUE(Start());
  struct Case {
    std::vector<int> before, during;
    int taken;
  };
  const Case cases[] = {
      {{}, {'A', VK_SHIFT}, VK_SHIFT},
      {{}, {VK_LBUTTON, 'B'}, 'B'},
      {{VK_RETURN}, {'C'}, 'C'},
      {{}, {255}, 255},
  };
  const auto press = [](std::vector<std::unique_ptr<HeldKey>>& held, const std::vector<int>& keys) {
    for (const int key : keys) held.push_back(std::make_unique<HeldKey>(key));
  };
  for (const Case& c : cases) {
    std::vector<std::unique_ptr<HeldKey>> held;
    press(held, c.before);
    const Visitor visitor([&](HWND) { press(held, c.during); });
    EXPECT_EQ(AskKey(parts->frame.Handle()), c.taken);
  }
  const Visitor visitor(
      [](HWND dialog) { SendMessageA(GetDlgItem(dialog, ID_KEY_ENTRY), WM_KEYDOWN, 'T', 1); });
  EXPECT_EQ(AskKey(parts->frame.Handle()), 'T') << "down and up between two looks";
}

TEST_F(OptionsDialogTest, EntitiesAreBoundReboundAndUnboundAndInsertedByTheirKeys) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  const auto line = [&](int i) {
    char text[200] = "";
    SendMessageA(Control(ID_BOUND_LIST), LB_GETTEXT, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(text));
    return std::string(text);
  };
  InDialog([&] {
    Turn(BINDINGS);
    PushAndChoose(ID_BIND, VK_F5);
    PushAndChoose(ID_BIND, VK_F5);
    PushAndChoose(ID_BIND, VK_F6);
    EXPECT_EQ(line(0) + line(1) + line(2), "light (F5)light (F6)");
    PushAndChoose(ID_REBIND, VK_F9);
    {
      const Visitor visitor([](HWND dialog) {
        SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(ID_KEY_CHOICE + VK_F7), 0);
      });
      SendMessageA(PageShown(), WM_COMMAND, MAKEWPARAM(ID_BOUND_LIST, LBN_DBLCLK), 0);
    }
    SendMessageA(Control(ID_BOUND_LIST), LB_SETCURSEL, 0, 0);
    Push(ID_UNBIND);
    Close(IDOK);
  });
  EXPECT_EQ(sink.OnlyText(), "F5 is bound to light already");
  AppTest::Type(WindowOf(Orientation::Top).Drawing(), VK_F7);
  ASSERT_EQ(map.selection.size(), 1u);
  EXPECT_STREQ(map.selection[0]->GetKey("classname"), "light");
  map.selection[0]->RemoveKeys("XMPentityname");
  map.selection[0]->SetKey("light", "150");
  InDialog([&] {
    Turn(BINDINGS);
    PushAndChoose(ID_BIND, VK_F8);
    EXPECT_EQ(line(0) + line(1), "light (F7)Unnamed (F8)");
    Close(IDOK);
  });
  Restart();
  const auto& items = parts->boundEntities.items;
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(items[0].key + items[1].key, VK_F7 + VK_F8);
  EXPECT_STREQ(items[items[0].key == VK_F8 ? 0 : 1].prototype->GetKey("light"), "150");
}

TEST_F(OptionsDialogTest, WhatIsAcceptedIsInEffectAtOnce) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  for (int i = 0; i < 3; ++i) {
    map.selection.Set(PickableObjects(map, PickLevel::Objects));
    Give(Command::Duplicate);
  }
  const MapWindow& window = WindowOf(Orientation::Top);
  const auto picture = PictureOf(window);
  const auto red = parts->data.palette[100].red;
  RECT before, after;
  GetClientRect(window.Handle(), &before);
  InDialog([&] {
    Turn(MISC);
    Type(ID_GAMMA_RED, "3");
    Type(ID_UNDO_LEVELS, "2");
    Type(ID_ROTATION_STEP, "90");
    for (const int id : {ID_BLACK_BACK, ID_SMALL_CAPTIONS, ID_TOOLBAR_SHOWN}) Push(id);
    Close(IDOK);
  });
  GetClientRect(window.Handle(), &after);
  EXPECT_NE(PictureOf(window), picture);
  EXPECT_GT(parts->data.palette[100].red, red);
  EXPECT_EQ(map.undo.StepCount(), 2u);
  EXPECT_EQ(parts->windows.Views().Views()[0]->rotationStep, 90);
  EXPECT_GT(after.bottom, before.bottom) << "a thinner caption";
  EXPECT_EQ(Toolbar(), nullptr);
}

TEST_F(OptionsDialogTest, EveryPageIsTidyAndItsLettersDiffer) {
  ASSERT_TRUE(Start());
  InDialog([&] {
    for (int page = FILES; page <= BINDINGS; ++page) {
      Turn(page);
      ExpectTidy(PageShown());
      std::string letters = "u";
      for (const HWND child : ShownChildren(PageShown())) {
        const std::string text = TextOf(child);
        const std::size_t mark = text.find('&');
        if (mark == text.npos) continue;
        const auto letter =
            static_cast<char>(std::tolower(static_cast<unsigned char>(text[mark + 1])));
        EXPECT_EQ(letters.find(letter), letters.npos) << text << " on page " << page;
        letters += letter;
      }
    }
    Turn(KEYS);
    const Visitor visitor([](HWND dialog) {
      ExpectTidy(dialog);
      SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    Push(101);
    Close(IDCANCEL);
  });
}

}  // namespace
}  // namespace ferrowand
