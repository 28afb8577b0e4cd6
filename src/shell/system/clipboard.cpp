#include "shell/system/clipboard.h"

#include <cstring>

#include "shell/system/wide_text.h"

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

// Maps keep every byte that they were read with; what is written for other programs is text.
UINT MapFormat() {
  static const UINT format = RegisterClipboardFormatA("Ferrowand map text");
  return format;
}

// What lies there in the format, as units of a character each, up to the zero behind them, which
// other programs may forget.
template <typename Char>
std::basic_string<Char> Taken(UINT format) {
  const HANDLE data = GetClipboardData(format);
  const auto* text = data ? static_cast<const Char*>(GlobalLock(data)) : nullptr;
  if (!text) return {};
  std::basic_string<Char> copy(text, GlobalSize(data) / sizeof(Char));
  GlobalUnlock(data);
  return copy.substr(0, copy.find(Char{}));
}

template <typename Char>
bool Put(UINT format, const std::basic_string<Char>& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(Char);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (!memory) return false;
  std::memcpy(GlobalLock(memory), text.c_str(), bytes);
  GlobalUnlock(memory);
  if (SetClipboardData(format, memory)) return true;  // the system's from here on
  GlobalFree(memory);
  return false;
}

}  // namespace

std::string SystemClipboard::Text(HWND owner) {
  const OpenClip clip(owner);
  if (!clip) return {};
  if (IsClipboardFormatAvailable(MapFormat())) return Taken<char>(MapFormat());
  return FromWide(Taken<wchar_t>(CF_UNICODETEXT));
}

bool SystemClipboard::SetText(HWND owner, const std::string& text) {
  const OpenClip clip(owner);
  return clip && EmptyClipboard() && Put(MapFormat(), text) && Put(CF_UNICODETEXT, ToWide(text));
}

}  // namespace ferrowand
