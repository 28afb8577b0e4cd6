// What all tools of the 2D views share: their place in the set, their preview, and where a drag
// began.
#pragma once

#include <string>
#include <vector>

#include "geometry/vec.h"
#include "operations/edit_result.h"
#include "views/hit_test.h"
#include "views/tool.h"
#include "views/tools/preview.h"
#include "views/tools/tool_host.h"
#include "views/tools/transform_drag.h"

namespace ferrowand {

class Map;
class MapView;
class ToolSet;

inline constexpr int NO_PRESS = -32767;

ViewInts WorldAt(const MapView& view, Pixel at);
ViewBox ViewBoxOf(const Bounds& box, const MapView& view);
// Zero along the depth.
Vec3 ToWorld(const ViewPoint& by, const MapView& view);
Pixel ToPixel(const ViewPoint& point, const MapView& view);
PreviewShape ShapeOf(const ViewQuad& quad, const MapView& view);
// How large a box is, in world units: to its right, or where the view has room.
PreviewShape SizeBeside(const ViewBox& box, const MapView& view);

class ToolBase : public Tool {
 public:
  explicit ToolBase(ToolSet& tools);

  void MouseMove(MapView& view, Pixel at, int buttons) final;
  void MouseUp(MapView& view, Pixel at, int button) override;
  // A quick second press is a press.
  void DoubleClick(MapView& view, Pixel at, int button) override { MouseDown(view, at, button); }
  // The escape key ends a drag without effect.
  bool Key(MapView& view, char c) override;
  void Group(MapView& view) override;
  void DrawOverlay(MapView& view, Canvas& canvas) override;
  // All tools of the set hear of it.
  void SelectionChanged(const Map& map) override;
  bool IsDragging() const override { return press_[0] != NO_PRESS; }
  bool HasPreview() const override { return preview_.IsShown(); }
  void Cancel() override;

 protected:
  // --- what a tool does with a press that has become a drag, and with one that has not
  virtual void Drag(MapView& view, Pixel at) { (void)view, (void)at; }
  virtual void Drop(MapView& view, Pixel at) { (void)view, (void)at; }
  virtual void Click(MapView& view, Pixel at) { (void)view, (void)at; }
  virtual void Hover(MapView& view, Pixel at);
  // What a press there would do.
  virtual ToolCursor CursorAt(const MapView& view, Pixel at) const;

  void BeginDrag(MapView& view, Pixel at);
  void EndDrag();
  // From where the drag has begun to the cursor.
  PixelRect BandTo(Pixel at) const;

  ToolHost& Host() const;
  // A preview and its words.
  void Show(MapView& view, std::vector<PreviewShape> shapes, const std::string& status);
  // Says why not, if so.
  void Conclude(MapView& view, EditResult result);
  // What the tool draws over the selection is another: its handles, its corners.
  void RepaintOverlay(const Map& map);

  HitQuery QueryAt(const MapView& view, Pixel at, PickLevel level) const;
  void DrawSelection(MapView& view, Canvas& canvas) const;

  ToolSet& tools_;
  Preview preview_;
  Pixel pressPixel_;
  ViewInts press_{NO_PRESS, NO_PRESS};  // world units

 private:
  // Whether the drag is still about what it began with: an undo in its middle may have taken or
  // changed that.
  bool IsSound(const MapView& view) const;
  // The press stays where it was in the world when the view has been scrolled or zoomed since.
  void FollowView(const MapView& view);

  // Null also when the view was closed.
  MapView* OpenPressView() const;

  MapView* pressView_ = nullptr;         // compared only: it may be gone
  std::vector<entity*> pressSelection_;  // likewise
  Bounds pressBounds_;
  ViewTransform pressTransform_;
  bool moved_ = false;
  std::string said_;  // by the drag, last
};

}  // namespace ferrowand
