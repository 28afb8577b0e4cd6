// Selecting brushes, and moving, scaling, turning or skewing the selection by its box.
#pragma once

#include "views/tools/box_handles.h"
#include "views/tools/selector.h"

namespace ferrowand {

class BrushSelector : public Selector {
 public:
  using Selector::Selector;

  std::string Name() const override { return "Brush Selector"; }
  PickLevel Level() const override { return PickLevel::Brushes; }

  void MouseDown(MapView& view, Pixel at, int button) override;
  void DrawOverlay(MapView& view, Canvas& canvas) override;

  // A click on the selection goes on to the next.
  HandleMode Mode() const { return mode_; }
  void SetMode(const Map& map, HandleMode mode);
  // Something else is selected: the handles are the first ones again.
  void StartOver(const Map& map);

 protected:
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override;
  void Click(MapView& view, Pixel at) override;
  bool IsForSelection(const MapView& view, Pixel at) const override;
  ToolCursor CursorAt(const MapView& view, Pixel at) const override;

 private:
  enum class Kind { Move, Scale, Rotate, Skew };
  static const char* NameOf(Kind kind);

  // What of the handles a press there takes; no edge where there is none.
  GrabbedEdges HandleAt(const MapView& view, Pixel at) const;
  bool Grab(MapView& view, Pixel at);
  SkewGrab GrabbedForSkew() const;
  // Where the cursor, held at `at`, puts the selection.
  MoveStep MoveTo(const MapView& view, Pixel at) const;
  ScaleStep ScaleTo(const MapView& view, Pixel at) const;
  RotateStep RotateTo(const MapView& view, Pixel at) const;
  SkewStep SkewTo(const MapView& view, Pixel at) const;
  EditResult DropMove(MapView& view, Pixel at);
  EditResult DropScale(MapView& view, Pixel at);
  EditResult DropRotate(MapView& view, Pixel at);
  EditResult DropSkew(MapView& view, Pixel at);

  HandleMode mode_ = HandleMode::Scale;
  Kind kind_ = Kind::Move;
  GrabbedEdges grabbed_;
  int startAngle_ = 0;  // degrees
  bool selectedByPress_ = false;
};

}  // namespace ferrowand
