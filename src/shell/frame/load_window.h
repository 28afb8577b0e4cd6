// The progress window: what is being loaded, how far it has come, and what has been counted.
#pragma once

#include "shell/system/win32.h"

#include <string>
#include <vector>

#include "base/progress.h"

namespace ferrowand {

inline constexpr char LOAD_WINDOW_CLASS[] = "FRWLoadWindow";

LRESULT CALLBACK LoadWindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Shown from the first Begin to the last End: loads nest, since a map loads its WADs. Meanwhile the
// owner takes no input, but the interface stays alive.
class LoadWindow : public LoadProgress {
 public:
  explicit LoadWindow(HINSTANCE instance) : instance_(instance) {}
  ~LoadWindow() override;
  LoadWindow(const LoadWindow&) = delete;
  LoadWindow& operator=(const LoadWindow&) = delete;

  void SetOwner(HWND owner) { owner_ = owner; }
  bool IsLoading() const { return !texts_.empty(); }
  HWND Handle() const { return window_; }

  void Begin(const std::string& fileName) override;
  void BeginWork(const std::string& name) override;
  void Step(const char* format, unsigned count, unsigned part, unsigned whole) override;
  void End() override;

 private:
  void BeginShowing(const char* title, const std::string& text);
  void ShowText();
  void Pump();

  HINSTANCE instance_;
  HWND owner_ = nullptr;
  HWND window_ = nullptr;
  HWND before_ = nullptr;           // that had the keys, and gets them back
  std::vector<std::string> texts_;  // of what is under way, the innermost last
  DWORD lastShown_ = 0;             // milliseconds
};

}  // namespace ferrowand
