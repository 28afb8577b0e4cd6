#include "shell/windows/texture_drawing.h"

#include <algorithm>

#include "gamedata/palette.h"
#include "gamedata/wad_file.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

constexpr int COLOURS = 256;
constexpr COLORREF DARK = RGB(40, 0, 40), BRIGHT = RGB(200, 0, 200);  // of what is missing
constexpr int SQUARE = 8;
// Pixels at the usual size of letters.
constexpr int LONGEST_SIDE = 320, MARGIN = 6, LINE = 16, AWAY = 16, LEAST_TEXT = 160;

struct TexturePicture {
  BITMAPINFOHEADER header{};
  RGBQUAD colours[COLOURS];

  TexturePicture(const Texture& texture, const Palette& palette) {
    header.biSize = sizeof header;
    header.biWidth = texture.paddedWidth;
    header.biHeight = -texture.paddedHeight;  // rows from the top
    header.biPlanes = 1;
    header.biBitCount = 8;
    for (int i = 0; i < COLOURS; ++i) {
      const PaletteEntry& entry = palette[static_cast<std::uint8_t>(i)];
      colours[i] = {entry.blue, entry.green, entry.red, 0};
    }
  }
  const BITMAPINFO* Info() const { return reinterpret_cast<const BITMAPINFO*>(&header); }
};

void DrawMissing(HDC dc, const RECT& to) {
  const OwnedBrush dark(CreateSolidBrush(DARK)), bright(CreateSolidBrush(BRIGHT));
  const int side = Scaled(SQUARE);
  FillRect(dc, &to, dark.get());
  for (LONG y = to.top; y < to.bottom; y += side) {
    const bool isOdd = (y - to.top) / side % 2 != 0;
    for (LONG x = to.left + (isOdd ? side : 0); x < to.right; x += 2 * side) {
      const RECT square{x, y, std::min(x + side, to.right), std::min(y + side, to.bottom)};
      FillRect(dc, &square, bright.get());
    }
  }
}

// As large as whole pixels a texel make it, within what is allowed.
SIZE TipSize(const Texture* texture) {
  const int width = texture ? texture->width : 64, height = texture ? texture->height : 64;
  const int longest = std::max(width, height), room = Scaled(LONGEST_SIDE);
  if (longest > room)
    return {std::max(width * room / longest, 1), std::max(height * room / longest, 1)};
  const int times = std::min(room / longest, 4);
  return {width * times, height * times};
}

}  // namespace

// Rows of a padded width end on four bytes, as the system wants them.
void DrawTexture(HDC dc, const RECT& to, Texture* texture, const Palette& palette) {
  if (!texture) return DrawMissing(dc, to);
  const auto pixels = texture->wad->Pixels(*texture);
  const TexturePicture picture(*texture, palette);
  SetStretchBltMode(dc, COLORONCOLOR);
  StretchDIBits(dc, to.left, to.top, to.right - to.left, to.bottom - to.top, 0, 0,
                texture->paddedWidth, texture->paddedHeight, pixels.data(), picture.Info(),
                DIB_RGB_COLORS, SRCCOPY);
}

TextureTip::TextureTip(HWND owner, const Palette& palette)
    : palette_(palette),
      window_(CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE, L"STATIC", L"",
                              WS_POPUP | WS_BORDER | SS_BITMAP, 0, 0, 0, 0, owner, nullptr,
                              GetModuleHandleW(nullptr), nullptr)) {}

TextureTip::~TextureTip() {
  if (IsWindow(window_)) DestroyWindow(window_);
}

void TextureTip::Show(POINT screen, Texture* texture, const std::string& text) {
  const HDC shown = GetDC(nullptr);
  const OwnedDc dc(CreateCompatibleDC(shown));
  const int margin = Scaled(MARGIN), line = Scaled(LINE);
  const std::wstring words = ToWide(text);
  SelectObject(dc.get(), InterfaceFont());
  SIZE ofWords{};
  GetTextExtentPoint32W(dc.get(), words.c_str(), static_cast<int>(words.size()), &ofWords);
  const SIZE picture = TipSize(texture);
  const LONG width =
      std::max({picture.cx, ofWords.cx, static_cast<LONG>(Scaled(LEAST_TEXT))}) + 2 * margin;
  const LONG height = picture.cy + line + 3 * margin;
  OwnedBitmap bitmap(CreateCompatibleBitmap(shown, width, height));
  ReleaseDC(nullptr, shown);
  const HGDIOBJ before = SelectObject(dc.get(), bitmap.get());
  const RECT all{0, 0, width, height};
  FillRect(dc.get(), &all, GetSysColorBrush(COLOR_INFOBK));
  const LONG left = (width - picture.cx) / 2;
  DrawTexture(dc.get(), {left, margin, left + picture.cx, margin + picture.cy}, texture, palette_);
  SetBkMode(dc.get(), TRANSPARENT);
  SetTextColor(dc.get(), GetSysColor(COLOR_INFOTEXT));
  TextOutW(dc.get(), margin, picture.cy + 2 * margin, words.c_str(),
           static_cast<int>(words.size()));
  SelectObject(dc.get(), before);
  SendMessageW(window_, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap.get()));
  picture_ = std::move(bitmap);

  // Beside the mouse, where the screen has room.
  const int away = Scaled(AWAY);
  const LONG right = GetSystemMetrics(SM_CXSCREEN), bottom = GetSystemMetrics(SM_CYSCREEN);
  const LONG x = screen.x + away + width <= right ? screen.x + away : screen.x - away - width;
  const LONG y = std::clamp(screen.y + away, LONG{0}, std::max(bottom - height - 2, LONG{0}));
  SetWindowPos(window_, HWND_TOPMOST, x, y, width + 2, height + 2, SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void TextureTip::Hide() {
  ShowWindow(window_, SW_HIDE);
}

}  // namespace ferrowand
