// The entry of the editor.
#include "shell/system/win32.h"

#include "platform/system.h"
#include "platform/win32/registry_settings_store.h"
#include "shell/app/app.h"
#include "shell/app/app_parts.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/message_box_sink.h"
#include "shell/system/clipboard.h"
#include "shell/system/last_will.h"
#include "shell/system/system_joysticks.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int) {
  using namespace ferrowand;
  MessageBoxSink sink;
  SystemDialogs dialogs;
  SystemClipboard clipboard;
  const auto settings = MakeRegistrySettingsStore();
  SystemJoysticks joysticks;
  App app(instance, {sink, dialogs, clipboard, *settings, joysticks, CurrentDirectory(),
                     UserDataDirectory()});
  Documents& documents = app.Parts().documents;
  sink.SetBeforeEnd([&] { documents.KeepAll(); });
  const LastWill lastWill(sink, [&] { return documents.KeepForTheEnd(); });
  if (!app.Start(commandLine)) return 0;
  return app.Run();
}
