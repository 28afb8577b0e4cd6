#include "shell/system/clipboard.h"

#include <cstring>

namespace ferrowand {
namespace {

// The clipboard is one for all programs: open only as long as this lives.
class OpenClip {
 public:
  explicit OpenClip(HWND owner) : open_(OpenClipboard(owner) != 0) {}
  ~OpenClip() {
    if (open_) CloseClipboard();
  }
  OpenClip(const OpenClip&) = delete;
  OpenClip& operator=(const OpenClip&) = delete;
  explicit operator bool() const { return open_; }

 private:
  bool open_;
};

}  // namespace

std::string SystemClipboard::Text(HWND owner) {
  const OpenClip clip(owner);
  const HANDLE data = clip ? GetClipboardData(CF_TEXT) : nullptr;
  const auto* text = data ? static_cast<const char*>(GlobalLock(data)) : nullptr;
  if (!text) return {};
  // Other programs may forget the zero byte at the end.
  std::string copy(text, strnlen(text, GlobalSize(data)));
  GlobalUnlock(data);
  return copy;
}

bool SystemClipboard::SetText(HWND owner, const std::string& text) {
  const OpenClip clip(owner);
  if (!clip || !EmptyClipboard()) return false;
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  if (!memory) return false;
  std::memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
  GlobalUnlock(memory);
  if (SetClipboardData(CF_TEXT, memory)) return true;  // the system's from here on
  GlobalFree(memory);
  return false;
}

}  // namespace ferrowand
