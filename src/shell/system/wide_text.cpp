#include "shell/system/wide_text.h"

#include "shell/system/win32.h"

namespace ferrowand {
namespace {

constexpr UINT WESTERN_EUROPEAN = 1252;

// Empty when the code page refuses.
std::wstring Decoded(std::string_view text, UINT codePage, DWORD flags) {
  const int size = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(codePage, flags, text.data(), size, wide.data(), needed);
  return wide;
}

}  // namespace

std::wstring ToWide(std::string_view text) {
  if (text.empty()) return {};
  std::wstring wide = Decoded(text, CP_UTF8, MB_ERR_INVALID_CHARS);
  return wide.empty() ? Decoded(text, WESTERN_EUROPEAN, 0) : wide;
}

std::string FromWide(std::wstring_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  const int needed =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

std::string AsUtf8(std::string_view text) {
  return FromWide(ToWide(text));
}

}  // namespace ferrowand
