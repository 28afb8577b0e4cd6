// What a drag shows before anything is changed: lines and words drawn by inverting, so that drawing
// them again takes them away. All that is on the screen is kept here, and a repaint in the middle
// of a drag draws just that.
#pragma once

#include <string>
#include <vector>

#include "platform/canvas.h"

namespace ferrowand {

class MapView;
class ToolHost;
class ViewList;

// Pixels of the view.
struct PreviewShape {
  std::vector<Pixel> points;
  bool squares = false;    // 4 by 4 pixels at each point
  bool broken = false;     // dashed: what may not be
  std::string words = {};  // at the first point
};

PreviewShape ClosedShape(std::vector<Pixel> corners);
PreviewShape RectangleShape(const PixelRect& closed);

class Preview {
 public:
  Preview(ToolHost& host, const ViewList& views) : host_(host), views_(views) {}

  // Instead of what is shown now.
  void Show(MapView& view, std::vector<PreviewShape> shapes);
  void Clear();
  bool IsShown() const { return view_ != nullptr; }

  // As part of a paint of a view; nothing in any but its own.
  void Draw(const MapView& view, Canvas& canvas) const;

 private:
  void Invert();

  ToolHost& host_;
  const ViewList& views_;
  MapView* view_ = nullptr;
  std::vector<PreviewShape> shapes_;
};

}  // namespace ferrowand
