// The seam to the system's drawing: lines, shapes and text on a surface of pixels, (0, 0) at the
// top left. Nothing is remembered between calls but the clip rectangle and the raster mode: pens,
// fills and fonts travel with each call, and who implements the seam keeps its system objects
// cached. Coordinates far outside the surface are allowed and cost nothing visible.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/colour.h"
#include "platform/pixel.h"

namespace ferrowand {

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

  // While set, lines and texts are drawn by inverting, so that drawing them twice leaves no trace.
  virtual void SetXor(bool on) = 0;
  virtual void SetClip(const PixelRect& rect) = 0;
  // What may be drawn on at all.
  virtual PixelRect ClipBox() const = 0;
};

}  // namespace ferrowand
