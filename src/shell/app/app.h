// The program from its start to its end.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <string>

namespace ferrowand {

class Clipboard;
class Dialogs;
class Joysticks;
class MessageSink;
class SettingsStore;
struct AppParts;

// What the program meets outside itself. All outlive it.
struct Seams {
  MessageSink& sink;
  Dialogs& dialogs;
  Clipboard& clipboard;
  SettingsStore& settings;
  Joysticks& joysticks;
  std::string directory;   // the current one
  std::string dataFolder;  // the user's own; it need not be there
  std::string direct3dLibrary = "d3d9.dll";
};

class App {
 public:
  App(HINSTANCE instance, const Seams& seams);
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  // False when the system refuses the program its window classes or its frame.
  bool Start(const std::string& commandLine);
  // Until the program is to end; its exit code. Saves the options.
  int Run();
  // Handles the messages that wait and comes back. False once the program is to end.
  bool Pump();
  void Shutdown();

  AppParts& Parts() { return *parts_; }

 private:
  void LoadOptions();
  void LoadGameData();
  void SaveSettings();
  void Dispatch(MSG& message);
  // What shows the state of things, when there is nothing else to do.
  void Refresh();

  HINSTANCE instance_;
  const Seams seams_;
  std::unique_ptr<AppParts> parts_;
  bool started_ = false;
};

}  // namespace ferrowand
