// The main window: menu, toolbar and the client area that holds all others.
#pragma once

#include "shell/system/win32.h"

#include <shellapi.h>

#include "platform/canvas.h"
#include "shell/frame/primitive_popup.h"
#include "shell/frame/toolbar.h"
#include "shell/system/handles.h"

namespace ferrowand {

class App;

LRESULT CALLBACK WindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class Frame {
 public:
  explicit Frame(App& app);
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;

  bool Create();
  void Destroy();
  HWND Handle() const { return window_; }
  HWND Client() const { return client_; }
  PixelSize ClientSize() const;
  HMENU PrimitivePopup() const { return primitivePopup_.Menu(); }

  void ShowToolbar(bool shown);
  // The six recent maps in the File menu.
  void ShowRecentMaps();
  // Greys and ticks, as they are now.
  void RefreshToolbar();

  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  void OnCreate(HWND window);
  void OnSize();
  void OnInitMenu(HMENU menu);
  void OnDropFiles(HDROP files);
  LRESULT OnNotify(LPARAM lParam);

  App& app_;
  HWND window_ = nullptr;
  HWND client_ = nullptr;
  Toolbar toolbar_;
  ferrowand::PrimitivePopup primitivePopup_;

  friend LRESULT CALLBACK WindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};

}  // namespace ferrowand
