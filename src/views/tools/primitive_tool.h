// Drawing the box of a new simple solid. One is made, then the brush selector has the mouse again.
#pragma once

#include "operations/primitives.h"
#include "views/tools/tool_base.h"

namespace ferrowand {

class PrimitiveTool : public ToolBase {
 public:
  using ToolBase::ToolBase;

  std::string Name() const override { return "Create primitive"; }
  // What the next drag makes. Asks for the number of sides where there is a choice; false when the
  // user thought better of it.
  bool Prepare(PrimitiveKind kind);
  PrimitiveKind Kind() const { return kind_; }

  // The right button gives it up.
  void MouseDown(MapView& view, Pixel at, int button) override;

 protected:
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override;
  ToolCursor CursorAt(const MapView&, Pixel) const override { return ToolCursor::Cross; }

 private:
  // Across the view from the press to the cursor, on the grid when that is on. Along the depth as
  // the last selection was, else one grid step of 64 units up from the world's middle.
  Bounds BoxTo(const MapView& view, Pixel at) const;

  PrimitiveKind kind_ = PrimitiveKind::Cuboid;
  int sides_ = 8;
};

const char* NameOf(PrimitiveKind kind);

}  // namespace ferrowand
