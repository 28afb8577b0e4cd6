// The rubber band of all selectors. It hands control back to the tool that started it.
#pragma once

#include "views/tools/tool_base.h"

namespace ferrowand {

class Selector;

class RectangleSelector : public ToolBase {
 public:
  using ToolBase::ToolBase;

  std::string Name() const override { return "Rectangle Selector"; }
  void Start(Selector& from, MapView& view, Pixel at);
  // Another button gives it up.
  void MouseDown(MapView&, Pixel, int) override { Cancel(); }
  void Cancel() override;
  // As the tool that started it does.
  void DrawOverlay(MapView& view, Canvas& canvas) override;

 protected:
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override { Finish(view, at, true); }
  void Click(MapView& view, Pixel at) override { Finish(view, at, false); }

 private:
  void Finish(MapView& view, Pixel at, bool moved);
  Selector* HandBack();

  Selector* from_ = nullptr;
};

}  // namespace ferrowand
