// The system's clipboard as text. A seam, so that tests have one of their own.
#pragma once

#include "shell/system/win32.h"

#include <string>

namespace ferrowand {

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  // Empty when there is none, or another program keeps it.
  virtual std::string Text(HWND owner) = 0;
  // False, with the clipboard as it was or empty, when the system refuses.
  virtual bool SetText(HWND owner, const std::string& text) = 0;
};

class SystemClipboard : public Clipboard {
 public:
  std::string Text(HWND owner) override;
  bool SetText(HWND owner, const std::string& text) override;
};

}  // namespace ferrowand
