// Draws on another canvas in colours that are most of the way to the background.
#pragma once

#include "platform/canvas.h"

namespace ferrowand {

class PaleCanvas : public Canvas {
 public:
  PaleCanvas(Canvas& canvas, Colour background) : canvas_(canvas), background_(background) {}

  void FillRect(const PixelRect& rect, Colour colour) override {
    canvas_.FillRect(rect, Paled(colour));
  }
  void Lines(const Pen& pen, std::span<const PixelLine> lines) override {
    canvas_.Lines(Paled(pen), lines);
  }
  void Polyline(const Pen& pen, std::span<const Pixel> points) override {
    canvas_.Polyline(Paled(pen), points);
  }
  void Polygon(const Pen& pen, std::optional<Colour> fill, std::span<const Pixel> points) override {
    canvas_.Polygon(Paled(pen), Paled(fill), points);
  }
  void Rectangle(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override {
    canvas_.Rectangle(Paled(pen), Paled(fill), rect);
  }
  void Ellipse(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override {
    canvas_.Ellipse(Paled(pen), Paled(fill), rect);
  }
  PixelSize MeasureText(FontFace font, std::string_view text) override {
    return canvas_.MeasureText(font, text);
  }
  void Text(FontFace font, Colour colour, Pixel topLeft, std::string_view text) override {
    canvas_.Text(font, Paled(colour), topLeft, text);
  }
  void SetXor(bool on) override { canvas_.SetXor(on); }
  void SetClip(const PixelRect& rect) override { canvas_.SetClip(rect); }
  PixelRect ClipBox() const override { return canvas_.ClipBox(); }

 private:
  static constexpr int SHARE = 3;  // one part in so many is left of a colour

  static std::uint8_t Mixed(int part, int background) {
    return static_cast<std::uint8_t>((part + (SHARE - 1) * background) / SHARE);
  }
  Colour Paled(Colour c) const {
    return {Mixed(c.red, background_.red), Mixed(c.green, background_.green),
            Mixed(c.blue, background_.blue)};
  }
  std::optional<Colour> Paled(std::optional<Colour> c) const {
    return c ? std::optional(Paled(*c)) : std::nullopt;
  }
  Pen Paled(const Pen& pen) const { return {Paled(pen.colour), pen.width, pen.style}; }

  Canvas& canvas_;
  const Colour background_;
};

}  // namespace ferrowand
