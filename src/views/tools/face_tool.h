// Face edit: picking faces by their edges in the 2D views. What is picked is the map's
// (document/face_selection.h); what is done with it is done in the camera and in a window.
#pragma once

#include <vector>

#include "document/face_selection.h"
#include "views/tools/tool_base.h"

namespace ferrowand {

class FaceTool : public ToolBase {
 public:
  using ToolBase::ToolBase;

  std::string Name() const override { return "Face edit"; }
  // The right button opens the popup of the mode.
  void MouseDown(MapView& view, Pixel at, int button) override;
  // All faces of the brush there.
  void DoubleClick(MapView& view, Pixel at, int button) override;
  // In the popup's order: all faces, the others, the end of the mode.
  void PopupCommand(MapView& view, unsigned command) override;
  // 'L' all faces, 'I' the others, the escape key none.
  bool Key(MapView& view, char c) override;
  bool KeyOf(Map& map, char c) const;
  void DrawOverlay(MapView& view, Canvas& canvas) override;

 protected:
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override;
  void Click(MapView& view, Pixel at) override;
  ToolCursor CursorAt(const MapView& view, Pixel at) const override;

 private:
  // Whose edges run through the pixel: those seen as a line first, none that is turned away.
  std::vector<PickedFace> FacesAt(const MapView& view, Pixel at) const;
  // Of which an edge runs through the rectangle, or that lie in it whole, as the user has it.
  std::vector<PickedFace> FacesIn(const MapView& view, const PixelRect& closed) const;
};

// The face is picked instead of what is, or joins it, or leaves it.
void PickFace(Map& map, const PickedFace& face, bool toggle);

}  // namespace ferrowand
