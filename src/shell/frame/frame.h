// The main window: menu, toolbar and the client area that holds all others.
#pragma once

#include "shell/system/win32.h"

#include <shellapi.h>

#include <functional>
#include <string>
#include <utility>

#include "platform/canvas.h"
#include "shell/frame/primitive_popup.h"
#include "shell/frame/toolbar.h"
#include "shell/system/handles.h"

namespace ferrowand {

class CommandTarget;
class Documents;
class LoadWindow;
class Reporter;
struct Options;

inline constexpr char FRAME_CLASS[] = "FFRWWinClass";

LRESULT CALLBACK WindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class Frame {
 public:
  // All outlive it. The options keep its place.
  Frame(HINSTANCE instance, Options& options, Reporter& reporter, const LoadWindow& progress,
        CommandTarget& commands, Documents& documents);
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;

  // False when the system gave no window.
  bool Create(const char* clientClass);
  // Where it stood when the program ended last; at first it fills the screen.
  void Show();
  void Destroy();
  HINSTANCE Instance() const { return instance_; }
  HWND Handle() const { return window_; }
  HWND Client() const { return client_; }
  PixelSize ClientSize() const;
  HMENU PrimitivePopup() const { return primitivePopup_.Menu(); }

  // When the user logs off the program may be ended without another message.
  void SetOnSessionEnd(std::function<void()> save) { onSessionEnd_ = std::move(save); }

  void ShowToolbar(bool shown);
  // The time between two savings of unsaved work is another.
  void RestartKeeping();
  // What it shows of the state of the program: greys and ticks of the bars, the caption.
  void Refresh();

  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  void OnCreate(HWND window);
  void KeepPlace();
  void RefreshMenuBar();
  void RefreshCaption();
  void OnCommand(unsigned id, bool isButton);
  void OnSize();
  void OnInitMenu(HMENU menu);
  void SetMenuItem(HMENU menu, unsigned at, unsigned id) const;
  void OnDropFiles(HDROP files);
  void StartTimer(UINT milliseconds);
  void OnTimer();
  void OnCameToFront();
  void TellChildren(UINT message, WPARAM wParam, LPARAM lParam) const;
  LRESULT OnNotify(LPARAM lParam);

  HINSTANCE instance_;
  Options& options_;
  Reporter& reporter_;
  const LoadWindow& progress_;
  CommandTarget& commands_;
  Documents& documents_;
  const char* clientClass_ = nullptr;
  HWND window_ = nullptr;
  HWND client_ = nullptr;
  std::string caption_;
  std::function<void()> onSessionEnd_ = [] {};
  Toolbar toolbar_;
  ferrowand::PrimitivePopup primitivePopup_;

  friend LRESULT CALLBACK WindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};

}  // namespace ferrowand
