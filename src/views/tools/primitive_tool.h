// Drawing the box of a new simple solid. One is made, then the brush selector has the mouse again.
#pragma once

#include <map>
#include <string>

#include "operations/primitives.h"
#include "views/tools/tool_base.h"

namespace ferrowand {

class PrimitiveTool : public ToolBase {
 public:
  using ToolBase::ToolBase;

  // With the number of sides, where there is a choice.
  std::string Name() const override;
  // What the next drag makes. Asks for the number of sides where there is a choice, once for each
  // kind unless it is to be another one; false when the user thought better of it.
  bool Prepare(PrimitiveKind kind, bool asksAnew);
  PrimitiveKind Kind() const { return kind_; }

  // One in that box, which is selected, and the brush selector is in use again. Nothing where the
  // box is none.
  void Create(Map& map, const Bounds& box);
  // World units, of what is drawn where the depth of nothing else serves.
  static int DefaultDepth(int grid);

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
  // 0 where there is no choice.
  int Sides() const;

  PrimitiveKind kind_ = PrimitiveKind::Cuboid;
  std::map<PrimitiveKind, int> sides_;  // that the user has chosen
};

const char* NameOf(PrimitiveKind kind);

}  // namespace ferrowand
