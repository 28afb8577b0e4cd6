// The life of the program: its start, step by step, the message loop, its end.
#include "shell/system/win32.h"

#include <commctrl.h>

#include <algorithm>
#include <vector>

#include "platform/system.h"
#include "shell/app/app.h"
#include "shell/resources/resource.h"
#include "shell/system/shortcut.h"

namespace ferrowand {
namespace {

BYTE HeldModifiers() {
  const auto flag = [](int key, BYTE held) { return GetKeyState(key) < 0 ? held : BYTE{}; };
  return flag(VK_SHIFT, FSHIFT) | flag(VK_CONTROL, FCONTROL) | flag(VK_MENU, FALT);
}

// What the accelerator table gives for the message; 0 for nothing.
unsigned CommandOfKey(HACCEL table, const MSG& message) {
  const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  if (!isKey && message.message != WM_CHAR) return 0;
  std::vector<ACCEL> entries(static_cast<std::size_t>(CopyAcceleratorTableA(table, nullptr, 0)));
  CopyAcceleratorTableA(table, entries.data(), static_cast<int>(entries.size()));
  const BYTE flags = isKey ? FVIRTKEY | HeldModifiers() : 0;
  constexpr BYTE ALL = FVIRTKEY | FSHIFT | FCONTROL | FALT;
  const auto found = std::ranges::find_if(entries, [&](const ACCEL& entry) {
    return entry.key == message.wParam && (entry.fVirt & ALL) == flags;
  });
  return found == entries.end() ? 0 : found->cmd;
}

}  // namespace

App::App(HINSTANCE instance_, const Seams& seams)
    : instance(instance_),
      dialogs(seams.dialogs),
      clipboard(seams.clipboard),
      settings(seams.settings),
      directory(seams.directory),
      reporter(seams.sink),
      progress(instance_),
      data(reporter, progress),
      classes(instance_),
      frame(*this),
      tips(options, objects) {}

App::~App() {
  Shutdown();
}

bool App::Start(const std::string& commandLine) {
  InitCommonControls();
  if (!classes.Register()) return false;
  LoadOptions();
  BuildSearchPath();
  data.palette.Load(data.searchPath, {options.gammaRed, options.gammaGreen, options.gammaBlue},
                    reporter);
  LoadPopups();
  if (!frame.Create()) return false;
  started_ = true;
  progress.SetOwner(frame.Handle());
  LoadGameData();
  boundEntities.Load(settings, data.classes.Default(), reporter);
  ShowWindow(frame.Handle(), SW_SHOWMAXIMIZED);
  if (!commandLine.empty()) OpenMap(PathOfCommandLine(commandLine));
  if (options.showTips) tips.Show(instance, frame.Handle());
  accelerators_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(ID_FRAME));
  return true;
}

void App::LoadOptions() {
  if (options.Load(settings, reporter)) return;
  RunFirstTimeSetup(settings, reporter, directory, [this] {
    if (!MakeStartMenuShortcut()) {
      reporter.Show("Error", "The shortcut could not be created.", Buttons::Ok, Icon::Warning);
    }
  });
}

void App::BuildSearchPath() {
  data.searchPath.Add("");
  data.searchPath.Add(options.quakeDirectory);
  data.searchPath.Add(directory);
  if (const auto folder = FindOnSystemPath("quake.pal")) data.searchPath.Add(*folder);
}

void App::LoadPopups() {
  for (const unsigned id : {1006u, 1008u, 1009u, 1010u, 1004u, 1011u, 1012u, 1003u, 1005u, 1007u}) {
    popups[id].reset(LoadMenuA(instance, MAKEINTRESOURCEA(id)));
  }
}

void App::LoadGameData() {
  data.wads.SetLimits({options.textureCache, options.maxTextureSize});
  data.wads.LoadDefault(options.defaultWad);
  data.classes.LoadDefault(options.defaultQc);
}

int App::Run() {
  MSG message{};
  while (true) {
    if (!PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) frame.RefreshToolbar();
    if (GetMessageA(&message, nullptr, 0, 0) <= 0) break;
    Dispatch(message);
  }
  Shutdown();
  return static_cast<int>(message.wParam);
}

bool App::Pump() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return false;
    Dispatch(message);
  }
  frame.RefreshToolbar();
  return true;
}

// Keys that write into a text box are none of the accelerators' business.
bool App::IsForAccelerators(const MSG& message) const {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (message.message != WM_KEYDOWN && message.message != WM_CHAR) return true;
  char name[16] = "";
  GetClassNameA(message.hwnd, name, sizeof name);
  return CompareNoCase(name, "Edit") != 0;
}

bool App::TranslateKey(MSG& message) {
  // The system gives no commands while the mouse is captured: a drag makes way for them.
  if (tools.Current()->IsDragging() && IsAvailable(CommandOfKey(accelerators_, message))) EndDrag();
  return TranslateAcceleratorA(frame.Handle(), accelerators_, &message) != 0;
}

void App::Dispatch(MSG& message) {
  if (TranslateMDISysAccel(frame.Client(), &message)) return;
  if (tips.Handle() && IsDialogMessageA(tips.Handle(), &message)) return;
  if (ChildWindow* active = ActiveWindow(); active && active->TakesMessage(message)) return;
  if (IsForAccelerators(message) && TranslateKey(message)) {
    // Some systems open the menu when Alt is let go, unless they have seen a key come with it.
    if (message.message == WM_SYSKEYDOWN) {
      DefWindowProcA(frame.Handle(), WM_SYSKEYDOWN, message.wParam, message.lParam);
    }
    return;
  }
  TranslateMessage(&message);
  DispatchMessageA(&message);
}

void App::Shutdown() {
  if (!started_) return;
  started_ = false;
  tips.Close();
  frame.Destroy();
  windows.clear();
  maps.clear();
  popups.clear();
  if (options.Save(settings, reporter)) boundEntities.Save(settings, reporter);
}

}  // namespace ferrowand
