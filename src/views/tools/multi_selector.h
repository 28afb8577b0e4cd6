// Select Multiple Entities: every click and every rectangle adds; with Ctrl they take away.
#pragma once

#include "views/tools/selector.h"

namespace ferrowand {

class MultiSelector : public Selector {
 public:
  using Selector::Selector;

  std::string Name() const override { return "Select Multiple Entities"; }
  void MouseDown(MapView& view, Pixel at, int button) override;
  // A click counts for whatever is seen there.
  void TakeRectangle(MapView& view, const PixelRect& closed, bool moved) override;
};

}  // namespace ferrowand
