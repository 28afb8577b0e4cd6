// A canvas for tests that keeps the calls instead of drawing. Text measures 7 x 12 pixels a letter.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "platform/canvas.h"

namespace ferrowand {

class CanvasRecorder : public Canvas {
 public:
  enum class Kind { Fill, Lines, Polyline, Polygon, Rectangle, Ellipse, Text, Xor, Clip };

  struct Call {
    Kind kind;
    Pen pen{};
    std::optional<Colour> fill{};  // also the colour of a text
    PixelRect rect{};              // of a text: the top left corner only
    std::vector<Pixel> points{};
    std::vector<PixelLine> lines{};
    std::string text{};
    bool on = false;
  };

  std::vector<Call> calls;

  std::vector<Call> Of(Kind kind) const {
    std::vector<Call> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const Call& call) { return call.kind == kind; });
    return found;
  }
  // Of every Lines call with that pen.
  std::vector<PixelLine> LinesIn(const Pen& pen) const {
    std::vector<PixelLine> lines;
    for (const Call& call : Of(Kind::Lines)) {
      if (call.pen == pen) lines.insert(lines.end(), call.lines.begin(), call.lines.end());
    }
    return lines;
  }

  void FillRect(const PixelRect& rect, Colour colour) override {
    calls.push_back({.kind = Kind::Fill, .fill = colour, .rect = rect});
  }
  void Lines(const Pen& pen, std::span<const PixelLine> lines) override {
    calls.push_back({.kind = Kind::Lines, .pen = pen, .lines = {lines.begin(), lines.end()}});
  }
  void Polyline(const Pen& pen, std::span<const Pixel> points) override {
    calls.push_back({.kind = Kind::Polyline, .pen = pen, .points = {points.begin(), points.end()}});
  }
  void Polygon(const Pen& pen, std::optional<Colour> fill, std::span<const Pixel> points) override {
    calls.push_back({.kind = Kind::Polygon,
                     .pen = pen,
                     .fill = fill,
                     .points = {points.begin(), points.end()}});
  }
  void Rectangle(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override {
    calls.push_back({.kind = Kind::Rectangle, .pen = pen, .fill = fill, .rect = rect});
  }
  void Ellipse(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) override {
    calls.push_back({.kind = Kind::Ellipse, .pen = pen, .fill = fill, .rect = rect});
  }
  PixelSize MeasureText(FontFace, std::string_view text) override {
    return {7 * static_cast<int>(text.size()), 12};
  }
  void Text(FontFace, Colour colour, Pixel topLeft, std::string_view text) override {
    calls.push_back({.kind = Kind::Text,
                     .fill = colour,
                     .rect = {topLeft.x, topLeft.y, topLeft.x, topLeft.y},
                     .text = std::string(text)});
  }
  void SetXor(bool on) override { calls.push_back({.kind = Kind::Xor, .on = on}); }
  void SetClip(const PixelRect& rect) override {
    calls.push_back({.kind = Kind::Clip, .rect = rect});
    clip_ = rect;
  }
  PixelRect ClipBox() const override { return clip_; }

 private:
  PixelRect clip_{-10000, -10000, 10000, 10000};
};

}  // namespace ferrowand
