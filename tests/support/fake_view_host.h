// The window of a view for tests: a size, and what the view asked for.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/software_canvas.h"
#include "views/map_view.h"

namespace ferrowand {

class FakeViewHost : public ViewHost {
 public:
  explicit FakeViewHost(PixelSize size = {400, 300}) : area(size) {}

  PixelSize area;
  PixelRect frame{-1000, -1000, 2000, 2000};
  bool statusBar = true;
  int invalidations = 0;
  std::vector<Pixel> scrolled;  // by that much
  ScrollBar horizontal, vertical;
  std::map<ViewText, std::string> texts;
  std::string caption;
  std::vector<Pixel> cursors;
  bool captured = false;
  PixelRect place;

  PixelSize DrawingArea() const override { return area; }
  void Invalidate() override { ++invalidations; }
  void Invalidate(const PixelRect&) override { ++invalidations; }
  void ScrollPicture(Pixel by, std::span<const PixelRect>) override { scrolled.push_back(by); }
  void SetScrollBars(const ScrollBar& h, const ScrollBar& v) override {
    horizontal = h;
    vertical = v;
  }
  void SetText(ViewText which, const std::string& text) override { texts[which] = text; }
  bool StatusBarShown() const override { return statusBar; }
  void SetCaption(const std::string& text) override { caption = text; }
  PixelRect Frame() const override { return frame; }
  PixelSize MeasureLabel(std::string_view text) override {
    return SoftwareCanvas({1, 1}).MeasureText(FontFace::Label, text);
  }
  void MoveCursor(Pixel to) override { cursors.push_back(to); }
  void CaptureMouse(bool on) override { captured = on; }
  void MoveWindow(const PixelRect& to) override { place = to; }
};

}  // namespace ferrowand
