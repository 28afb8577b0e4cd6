// The life of the program: its start, step by step, the message loop, its end.
#include "shell/app/app.h"

#include <commctrl.h>

#include "platform/settings_store.h"
#include "shell/app/app_parts.h"
#include "shell/dialogs/dialogs.h"
#include "shell/documents/shared_data.h"
#include "shell/system/shortcut.h"

namespace ferrowand {

App::App(HINSTANCE instance, const Seams& seams)
    : instance_(instance), seams_(seams), parts_(std::make_unique<AppParts>(instance, seams_)) {}

App::~App() {
  Shutdown();
}

bool App::Start(const std::string& commandLine) {
  InitCommonControls();
  if (!parts_->classes.Register()) return false;
  LoadOptions();
  parts_->documents.FollowOptions();
  GameData& data = parts_->data;
  FillSearchPath(data, parts_->options, seams_.directory);
  LoadPalette(data, parts_->options);
  if (!parts_->frame.Create(parts_->classes.MdiClient())) return false;
  started_ = true;
  parts_->frame.SetOnSessionEnd([this] { SaveSettings(); });
  const HWND frame = parts_->frame.Handle();
  seams_.dialogs.SetOwner(frame);
  parts_->progress.SetOwner(frame);
  if (parts_->options.useDirect3D) parts_->direct3d.Start();
  parts_->joystick.Open();
  LoadGameData();
  parts_->frame.Show();
  parts_->documents.OfferRescues();
  if (!commandLine.empty()) parts_->documents.Open(PathOfCommandLine(commandLine));
  if (parts_->options.showTips) parts_->tips.Show(instance_, frame);
  return true;
}

void App::LoadOptions() {
  Reporter& reporter = parts_->reporter;
  if (parts_->options.Load(seams_.settings, reporter)) return;
  RunFirstTimeSetup(seams_.settings, reporter, seams_.directory, [&reporter] {
    if (!MakeStartMenuShortcut()) {
      reporter.Show("Error", "The shortcut could not be created.", Buttons::Ok, Icon::Warning);
    }
  });
  TellShellOfFileTypes();
}

void App::LoadGameData() {
  const Options& options = parts_->options;
  GameData& data = parts_->data;
  LimitTextures(data, options);
  data.wads.LoadDefault(options.defaultWad);
  data.classes.LoadDefault(options.defaultQc);
  parts_->boundEntities.Load(seams_.settings, data.classes.Default(), data.reporter);
}

int App::Run() {
  MSG message{};
  while (true) {
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) Refresh();
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) break;
    Dispatch(message);
  }
  Shutdown();
  return static_cast<int>(message.wParam);
}

bool App::Pump() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return false;
    Dispatch(message);
  }
  Refresh();
  return true;
}

void App::Refresh() {
  parts_->sides.OnIdle();
  parts_->frame.Refresh();
}

void App::Dispatch(MSG& message) {
  if (parts_->sides.TakesMessage(message)) return;
  if (TranslateMDISysAccel(parts_->frame.Client(), &message)) return;
  const HWND tips = parts_->tips.Handle();
  if (tips && IsDialogMessageW(tips, &message)) return;
  ChildWindow* active = parts_->windows.ActiveWindow();
  if (active && active->TakesMessage(message)) return;
  if (parts_->accelerators.Translate(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void App::Shutdown() {
  if (!started_) return;
  started_ = false;
  parts_->tips.Close();
  parts_->frame.Destroy();
  parts_->documents.Clear();
  SaveSettings();
}

void App::SaveSettings() {
  if (parts_->options.Save(seams_.settings, parts_->reporter)) {
    parts_->boundEntities.Save(seams_.settings, parts_->reporter);
  }
}

}  // namespace ferrowand
