// A canvas for tests and benchmarks whose pixels can be read. Lines, shapes and clipping are exact:
// which pixels a call sets does not depend on the clip rectangle. Text is a filled block a letter.
#pragma once

#include <optional>
#include <vector>

#include "platform/canvas.h"

namespace ferrowand {

class SoftwareCanvas : public Canvas {
 public:
  // Black.
  explicit SoftwareCanvas(PixelSize size);

  PixelSize Size() const { return size_; }
  Colour At(int x, int y) const { return pixels_[Index(x, y)]; }
  const std::vector<Colour>& Pixels() const { return pixels_; }
  // What comes from outside keeps what was there.
  void Scroll(Pixel by);

  void FillRect(const PixelRect& rect, Colour colour) override;
  void Lines(const Pen& pen, std::span<const PixelLine> lines) override;
  void Polyline(const Pen& pen, std::span<const Pixel> points) override;
  void Polygon(const Pen& pen, std::optional<Colour> fill, std::span<const Pixel> points) override;
  void Rectangle(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override;
  void Ellipse(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override;
  PixelSize MeasureText(FontFace font, std::string_view text) override;
  void Text(FontFace font, Colour colour, Pixel topLeft, std::string_view text) override;
  void SetXor(bool on) override { xor_ = on; }
  void SetClip(const PixelRect& rect) override;
  PixelRect ClipBox() const override { return clip_; }

 private:
  // Columns first .. last, both inside; empty when first > last.
  struct Span {
    int first = 0, last = -1;
  };

  std::size_t Index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width) +
           static_cast<std::size_t>(x);
  }
  void Plot(int x, int y, Colour colour);
  void Row(Span span, int y, Colour colour);
  // Without the pixel `except`, which the line before has drawn.
  void Line(const Pen& pen, const PixelLine& line, std::optional<Pixel> except = std::nullopt);

  PixelSize size_;
  std::vector<Colour> pixels_;
  PixelRect clip_;
  bool xor_ = false;
};

}  // namespace ferrowand
