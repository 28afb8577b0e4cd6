// The tools of the program in their order, and which of them is current: there is always one.
#pragma once

#include <memory>
#include <vector>

#include "base/options.h"
#include "document/picking.h"
#include "operations/transform_selection.h"
#include "views/map_view.h"
#include "views/tool.h"
#include "views/tools/brush_selector.h"
#include "views/tools/brush_tool.h"
#include "views/tools/camera_drag.h"
#include "views/tools/camera_positioner.h"
#include "views/tools/face_tool.h"
#include "views/tools/multi_selector.h"
#include "views/tools/path_tool.h"
#include "views/tools/primitive_tool.h"
#include "views/tools/rectangle_selector.h"
#include "views/tools/selector.h"
#include "views/tools/vertex_tool.h"

namespace ferrowand {

class ToolHost;

class ToolSet {
 public:
  // All outlive it.
  ToolSet(ToolHost& host, ViewList& views, const Options& options);
  ToolSet(const ToolSet&) = delete;
  ToolSet& operator=(const ToolSet&) = delete;

  // For the views to keep.
  Tool* const& Current() const { return current_; }
  // What the current tool was about ends without effect. The name of the new one is shown.
  void Use(Tool& tool);
  // The next one of the cycle; the first one after a tool that is not in it.
  void Next();
  // The next drag makes one.
  void CreatePrimitive(PrimitiveKind kind);

  // Face edit, or back to the tool before it. No face is picked in any other.
  void ToggleFaceEdit();
  bool IsFaceEdit() const { return current_ == &faceTool; }

  // The next press aims the camera; the tool in use now has the mouse again after it.
  void PositionCamera();

  // The tools forget what they knew of the selection before.
  void SelectionChanged(const Map& map);

  // For the selectors and the rubber band between themselves.
  void StartRectangle(Selector& from, MapView& view, Pixel at);
  void ReturnTo(Tool& tool) { current_ = &tool; }
  // Whether the press takes hold of a camera, which then has the mouse until the button is let go.
  bool StartCameraDrag(Tool& from, MapView& view, Pixel at);

  // The axes that no drag may change: bit 0 X, 1 Y, 2 Z.
  std::uint8_t LimitedAxes() const { return limitedAxes_; }
  void ToggleAxisLimit(int axis);
  // For a view that has been opened or turned.
  void LimitAxes(MapView& view) const;

  ToolHost& Host() const { return host_; }
  ViewList& Views() const { return views_; }
  const Options& GetOptions() const { return options_; }
  // As the user wants textures to be treated. No axes are limited: drags see to that themselves.
  TransformOptions HowToTransform() const { return {.textureLock = options_.textureLock != 0}; }

  BoxRule boxRule = BoxRule::Partial;  // of the rubber band

 private:
  ToolHost& host_;
  ViewList& views_;
  const Options& options_;

 public:
  BrushSelector brushSelector{*this};
  EntitySelector entitySelector{*this};  // the second one is the current one at first
  BrushTool brushTool{*this};
  MultiSelector multiSelector{*this};
  VertexTool vertexTool{*this};
  FaceTool faceTool{*this};
  PrimitiveTool primitiveTool{*this};
  PathTool pathTool{*this};
  CameraPositioner cameraPositioner{*this};
  CameraDrag cameraDrag{*this};

 private:
  RectangleSelector rectangle_{*this};
  std::uint8_t limitedAxes_ = 0;
  std::vector<Tool*> cycle_;
  Tool* current_ = &entitySelector;
  Tool* beforeFaces_ = &brushSelector;
};

}  // namespace ferrowand
