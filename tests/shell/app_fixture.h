// The program itself under test: its App in real windows, with a recorder for a user.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/joystick.h"
#include "platform/settings_store.h"
#include "shell/app/app.h"
#include "shell/app/app_parts.h"
#include "shell/dialog_visitor.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/options_dialog.h"
#include "shell/system/clipboard.h"
#include "shell/system/controls.h"
#include "shell/system/wide_text.h"
#include "shell/windows/camera_window.h"
#include "shell/windows/map_window.h"
#include "support/map_text.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {

// Answers from a script; without one the user thinks better of it.
class ScriptedDialogs : public Dialogs {
 public:
  std::optional<std::string> ChooseFile(const FileChoice& choice) override {
    asked.push_back(choice);
    if (choose) return choose(choice);
    if (files.empty()) return std::nullopt;
    const std::string file = files.front();
    files.pop_front();
    return file;
  }
  std::optional<std::string> ChooseFolder(HWND, const std::string& title) override {
    FileChoice choice;
    choice.title = title;
    return ChooseFile(choice);
  }
  std::optional<Colour> ChooseColour(Colour) override {
    if (colours.empty()) return std::nullopt;
    const Colour colour = colours.front();
    colours.pop_front();
    return colour;
  }
  unsigned TrackPopup(HWND owner, HMENU menu, POINT) override {
    SendMessageA(owner, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    tracked.clear();
    order.clear();
    offered.clear();
    Track(menu);
    for (int i = 0; i < GetMenuItemCount(menu); ++i) order.push_back(GetMenuItemID(menu, i));
    if (commands.empty()) return 0;
    const unsigned command = commands.front();
    commands.pop_front();
    return command;
  }
  void ShowAbout() override { ++abouts; }
  // A form that refuses an answer gets the next one.
  bool Ask(const Form& form) override {
    forms.push_back(form);
    if (fill) return form.accept(fill(form));
    while (!answers.empty()) {
      const FormValues answer = answers.front();
      answers.pop_front();
      if (form.accept(answer)) return true;
    }
    return false;
  }

  bool AskOptions(const OptionsToEdit& edit) override { return options && options(edit); }

  // The scripted answer, or what is shown at first.
  std::optional<CompileOptions> AskCompile(const CompileQuestion& question) override {
    if (declinesCompile) return std::nullopt;
    return compile.value_or(question.options);
  }

  std::optional<CompileOptions> compile;
  bool declinesCompile = false;
  std::deque<std::string> files;
  std::deque<Colour> colours;
  std::deque<unsigned> commands;
  std::deque<FormValues> answers;
  std::map<unsigned, UINT> tracked;  // the states of the items of the last popup and of those in it
  std::vector<unsigned> order;       // its items, 0 for a separator
  std::vector<std::pair<unsigned, std::string>> offered;  // of all, those that can be chosen
  std::vector<FileChoice> asked;
  std::vector<Form> forms;
  std::function<FormValues(const Form&)> fill;                          // goes before the answers
  std::function<std::optional<std::string>(const FileChoice&)> choose;  // before the files
  std::function<bool(const OptionsToEdit&)> options;
  int abouts = 0;

 private:
  void Track(HMENU menu) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
      if (const HMENU within = GetSubMenu(menu, i)) {
        Track(within);
      } else {
        const unsigned id = GetMenuItemID(menu, i);
        tracked[id] = state;
        if ((state & (MF_GRAYED | MF_SEPARATOR)) != 0) continue;
        wchar_t text[200] = L"";
        GetMenuStringW(menu, static_cast<UINT>(i), text, 200, MF_BYPOSITION);
        offered.emplace_back(id, FromWide(text) + (state & MF_CHECKED ? " (ticked)" : ""));
      }
    }
  }
};

// One joystick, or none.
class TestJoysticks : public Joysticks {
 public:
  std::optional<JoystickInfo> Find(unsigned number) override {
    return info && number == info->number ? info : std::nullopt;
  }
  JoystickReading Read(unsigned, JoystickPosition& to) override {
    if (reading == JoystickReading::Read) to = position;
    return reading;
  }
  std::vector<JoystickInfo> Attached() override {
    if (!info) return {};
    return {*info};
  }

  std::optional<JoystickInfo> info;
  JoystickReading reading = JoystickReading::Read;
  JoystickPosition position{};
};

class TestClipboard : public Clipboard {
 public:
  std::string Text(HWND) override { return text; }
  bool SetText(HWND, const std::string& newText) override {
    text = newText;
    return true;
  }

  std::string text;
};

// Two boxes: 64 units around the origin, and one to its right.
inline constexpr char TWO_BRUSHES[] = R"({
"classname" "worldspawn"
"message" "Two boxes"
{
( -32 -32 -32 ) ( -32 -31 -32 ) ( -32 -32 -31 ) wall 0 0 0 1 1
( -32 -32 -32 ) ( -32 -32 -31 ) ( -31 -32 -32 ) wall 0 0 0 1 1
( -32 -32 -32 ) ( -31 -32 -32 ) ( -32 -31 -32 ) wall 0 0 0 1 1
( 32 32 32 ) ( 32 33 32 ) ( 33 32 32 ) wall 0 0 0 1 1
( 32 32 32 ) ( 33 32 32 ) ( 32 32 33 ) wall 0 0 0 1 1
( 32 32 32 ) ( 32 32 33 ) ( 32 33 32 ) wall 0 0 0 1 1
}
{
( 128 -32 -32 ) ( 128 -31 -32 ) ( 128 -32 -31 ) wall 0 0 0 1 1
( 128 -32 -32 ) ( 128 -32 -31 ) ( 129 -32 -32 ) wall 0 0 0 1 1
( 128 -32 -32 ) ( 129 -32 -32 ) ( 128 -31 -32 ) wall 0 0 0 1 1
( 192 32 32 ) ( 192 33 32 ) ( 193 32 32 ) wall 0 0 0 1 1
( 192 32 32 ) ( 193 32 32 ) ( 192 32 33 ) wall 0 0 0 1 1
( 192 32 32 ) ( 192 32 33 ) ( 192 33 32 ) wall 0 0 0 1 1
}
}
)";

// A key that is down for the life of the object, as the thread sees it.
class HeldKey {
 public:
  explicit HeldKey(int key) : key_(static_cast<std::size_t>(key)) { Set(0x80); }
  ~HeldKey() { Set(0); }
  HeldKey(const HeldKey&) = delete;
  HeldKey& operator=(const HeldKey&) = delete;

 private:
  void Set(BYTE state) const {
    std::array<BYTE, 256> keys;
    GetKeyboardState(keys.data());
    keys[key_] = state;
    SetKeyboardState(keys.data());
  }
  std::size_t key_;
};

class AppTest : public testing::Test {
 protected:
  AppTest() : settings(MakeMemorySettingsStore()) {
    saved.showTips = 0;
    saved.trackMouse = 0;
    saved.useDirect3D = 0;  // three windows a map, no camera
    saved.groupsDirectory = dir.Path("groups");
  }

  // Whatever settings the test has changed in `saved` are what the program finds.
  bool Start(const std::string& commandLine = "") {
    Reporter reporter(sink);
    saved.Save(*settings, reporter);
    return StartWithStore(commandLine);
  }
  bool StartWithStore(const std::string& commandLine = "") {
    app = std::make_unique<App>(GetModuleHandleA(nullptr),
                                Seams{sink, dialogs, clipboard, *settings, joysticks,
                                      FERROWAND_DATA, dir.Path("data"), direct3dLibrary});
    parts = &app->Parts();
    const bool started = app->Start(commandLine);
    app->Pump();
    return started;
  }
  // With the two boxes in it.
  Map& OpenTwoBrushes() {
    Map* map = parts->documents.Open(dir.Write("two.map", TWO_BRUSHES));
    app->Pump();
    return *map;
  }
  ~AppTest() override {
    app.reset();
    MSG quit;  // the frame's end has asked the thread to end
    PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  }

  MapWindow& WindowOf(Orientation orientation) {
    const char* name = orientation == Orientation::Top     ? "(Top)"
                       : orientation == Orientation::Front ? "(Front)"
                                                           : "(Side)";
    for (const auto& window : parts->windows.All()) {
      if (TextOf(window->Handle()).find(name) == std::string::npos) continue;
      return static_cast<MapWindow&>(*window);
    }
    ADD_FAILURE() << "no view " << name;
    return static_cast<MapWindow&>(*parts->windows.All().front());
  }
  // Every seventh row of what the window shows.
  static std::vector<COLORREF> PictureOf(const MapWindow& window) {
    std::vector<COLORREF> pixels;
    UpdateWindow(window.Drawing());
    const HDC dc = GetDC(window.Drawing());
    const PixelSize area = window.DrawingArea();
    for (int y = 0; y < area.height; y += 7) {
      for (int x = 0; x < area.width; ++x) pixels.push_back(GetPixel(dc, x, y));
    }
    ReleaseDC(window.Drawing(), dc);
    return pixels;
  }
  void Activate(const ChildWindow& window) {
    SendMessageA(parts->frame.Client(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(window.Handle()),
                 0);
  }
  // As a menu, an accelerator or a button would.
  void Give(unsigned id) { SendMessageA(parts->frame.Handle(), WM_COMMAND, id, 0); }
  void Give(Command command) { Give(Id(command)); }
  // Through the message loop, as from a keyboard.
  void Type(HWND window, WPARAM key) {
    // The mouse of the machine has no button down: what it tells would end a drag of the test's.
    MSG told;
    while (PeekMessageA(&told, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE)) {
    }
    Post(window, WM_KEYDOWN, key);
  }
  void Post(HWND to, UINT message, WPARAM wParam, LPARAM lParam = 0) const {
    PostMessageW(to, message, wParam, lParam);
    app->Pump();
  }
  // Until it is so, for half a minute at the most.
  template <typename Fact>
  void WaitFor(const Fact& fact) const {
    for (const DWORD began = GetTickCount(); !fact() && GetTickCount() - began < 30'000; Sleep(5)) {
      app->Pump();
    }
    EXPECT_TRUE(fact());
  }
  // Null while there is none.
  HWND Toolbar() const {
    return FindWindowExA(parts->frame.Handle(), nullptr, TOOLBARCLASSNAMEA, nullptr);
  }
  bool IsTicked(Command command) const { return parts->commands.IsChecked(Id(command)); }

  // The only one, or the first of several; null without one.
  CameraWindow* AnyCamera() const {
    for (const auto& window : parts->windows.All()) {
      if (auto* camera = dynamic_cast<CameraWindow*>(window.get())) return camera;
    }
    return nullptr;
  }

  static std::string TextOf(HWND window) { return FromWide(WindowText(window)); }
  static std::string TextOf(const ChildWindow& window, int control) {
    return TextOf(GetDlgItem(window.Handle(), control));
  }
  TempDir dir;
  MessageRecorder sink;
  ScriptedDialogs dialogs;
  TestClipboard clipboard;
  TestJoysticks joysticks;
  std::string direct3dLibrary = "d3d9.dll";
  std::unique_ptr<SettingsStore> settings;
  Options saved;
  std::unique_ptr<App> app;
  AppParts* parts = nullptr;  // of it
};

}  // namespace ferrowand
