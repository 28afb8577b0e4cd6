// The Canvas over the system's drawing, on a bitmap in memory that goes to the screen at once.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "base/options.h"
#include "platform/canvas.h"
#include "shell/system/handles.h"

namespace ferrowand {

inline COLORREF ToColorRef(Colour c) {
  return RGB(c.red, c.green, c.blue);
}

// Pens, brushes and fonts of all windows, each made when it is first asked for.
class GdiObjects {
 public:
  // The options decide on the size of labels.
  explicit GdiObjects(const Options& options) : options_(options) {}

  HPEN Get(const Pen& pen);
  HBRUSH Get(Colour colour);
  HFONT Get(FontFace face);
  // Of a dialog's large words.
  HFONT HeadingFont();

 private:
  std::vector<std::pair<Pen, OwnedPen>> pens_;
  std::vector<std::pair<Colour, OwnedBrush>> brushes_;
  const Options& options_;
  OwnedFont label_, largeLabel_, caption_, heading_;
};

// A bitmap in memory, as large as the largest window that was drawn on it.
class BackBuffer {
 public:
  // At least that large; false when the system has no memory for it.
  bool Prepare(HDC screen, PixelSize size);
  HDC Dc() const { return dc_.get(); }

 private:
  OwnedBitmap bitmap_;
  OwnedDc dc_;  // goes before the bitmap, which it holds
  PixelSize size_;
};

class GdiCanvas : public Canvas {
 public:
  GdiCanvas(HDC dc, GdiObjects& objects);
  ~GdiCanvas() override;
  GdiCanvas(const GdiCanvas&) = delete;
  GdiCanvas& operator=(const GdiCanvas&) = delete;

  void FillRect(const PixelRect& rect, Colour colour) override;
  void Lines(const Pen& pen, std::span<const PixelLine> lines) override;
  void Polyline(const Pen& pen, std::span<const Pixel> points) override;
  void Polygon(const Pen& pen, std::optional<Colour> fill, std::span<const Pixel> points) override;
  void Rectangle(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override;
  void Ellipse(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override;
  PixelSize MeasureText(FontFace font, std::string_view text) override;
  void Text(FontFace font, Colour colour, Pixel topLeft, std::string_view text) override;
  void SetXor(bool on) override;
  void SetClip(const PixelRect& rect) override;
  PixelRect ClipBox() const override;

 private:
  void Select(const Pen& pen);
  void SelectFill(std::optional<Colour> fill);
  void InvertText(FontFace font, POINT at, std::string_view text);

  HDC dc_;
  GdiObjects& objects_;
  int saved_;
  bool xor_ = false;
  std::vector<POINT> points_;  // of the call under way; kept for its memory
  std::vector<DWORD> counts_;
};

}  // namespace ferrowand
