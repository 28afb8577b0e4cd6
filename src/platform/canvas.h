// The seam to the system's drawing: lines, shapes and text on a surface of pixels, (0, 0) at the
// top left. Nothing is remembered between calls but the clip rectangle and the raster mode: pens,
// fills and fonts travel with each call, and who implements the seam keeps its system objects
// cached. Coordinates far outside the surface are allowed and cost nothing visible.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace ferrowand {

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const Colour&, const Colour&) = default;
};

struct Pixel {
  int x = 0;
  int y = 0;

  friend bool operator==(const Pixel&, const Pixel&) = default;
  friend auto operator<=>(const Pixel&, const Pixel&) = default;
};

struct PixelSize {
  int width = 0;
  int height = 0;

  friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

// Right and bottom are the first column and row outside.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool Empty() const { return right <= left || bottom <= top; }

  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

// Both ends are drawn.
struct PixelLine {
  Pixel from;
  Pixel to;

  friend bool operator==(const PixelLine&, const PixelLine&) = default;
  friend auto operator<=>(const PixelLine&, const PixelLine&) = default;
};

enum class PenStyle : std::uint8_t { Solid, Dash, Dot };

struct Pen {
  Colour colour;
  int width = 1;  // pixels
  PenStyle style = PenStyle::Solid;

  friend bool operator==(const Pen&, const Pen&) = default;
};

enum class FontFace : std::uint8_t { Label, Caption };

class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void FillRect(const PixelRect& rect, Colour colour) = 0;
  // Lines that have nothing to do with each other, in one call.
  virtual void Lines(const Pen& pen, std::span<const PixelLine> lines) = 0;
  virtual void Polyline(const Pen& pen, std::span<const Pixel> points) = 0;
  // The shapes are closed; without a fill only their outline is drawn.
  virtual void Polygon(const Pen& pen, std::optional<Colour> fill,
                       std::span<const Pixel> points) = 0;
  virtual void Rectangle(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) = 0;
  virtual void Ellipse(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) = 0;

  virtual PixelSize MeasureText(FontFace font, std::string_view text) = 0;
  // One line; `topLeft` is the corner of the rectangle that MeasureText gives. The background shows
  // through.
  virtual void Text(FontFace font, Colour colour, Pixel topLeft, std::string_view text) = 0;

  // While set, every line is drawn by inverting, so that drawing it twice leaves no trace.
  virtual void SetXor(bool on) = 0;
  virtual void SetClip(const PixelRect& rect) = 0;
};

}  // namespace ferrowand
