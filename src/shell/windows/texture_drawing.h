// Textures as the system draws them.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <string>

#include "shell/system/handles.h"

namespace ferrowand {

class Palette;
struct Texture;

// The whole texture in the rectangle, its pixels through its WAD's cache; for null what stands for
// one that is missing.
void DrawTexture(HDC dc, const RECT& to, Texture* texture, const Palette& palette);

// A large picture with a line about it, which comes up beside the mouse and takes none of it.
class TextureTip {
 public:
  // Of that window; the palette outlives it.
  TextureTip(HWND owner, const Palette& palette);
  ~TextureTip();
  TextureTip(const TextureTip&) = delete;
  TextureTip& operator=(const TextureTip&) = delete;

  void Show(POINT screen, Texture* texture, const std::string& text);
  void Hide();
  bool IsShown() const { return IsWindowVisible(window_) != FALSE; }

 private:
  const Palette& palette_;
  HWND window_;
  OwnedBitmap picture_;
};

}  // namespace ferrowand
