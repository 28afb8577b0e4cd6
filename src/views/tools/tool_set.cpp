#include "views/tools/tool_set.h"

#include <algorithm>

#include "views/tools/tool_host.h"

namespace ferrowand {

ToolSet::ToolSet(ToolHost& host, ViewList& views, const Options& options)
    : host_(host),
      views_(views),
      options_(options),
      cycle_{&entitySelector, &brushSelector, &brushTool, &multiSelector} {}

void ToolSet::Use(Tool& tool) {
  current_->Cancel();
  current_ = &tool;
  if (&tool != &faceTool && &tool != &cameraPositioner) views_.ClearPickedFaces();
  for (MapView* view : views_.Views()) {
    view->SetStatus(tool.Name());
    view->Repaint();
  }
  host_.ToolChanged();
}

void ToolSet::Next() {
  current_->Cancel();
  const auto at = std::ranges::find(cycle_, current_);
  Use(at == cycle_.end() || at + 1 == cycle_.end() ? *cycle_.front() : **(at + 1));
}

void ToolSet::CreatePrimitive(PrimitiveKind kind) {
  const bool isAgain = current_ == &primitiveTool && primitiveTool.Kind() == kind;
  if (primitiveTool.Prepare(kind, isAgain)) Use(primitiveTool);
}

void ToolSet::ToggleFaceEdit() {
  current_->Cancel();
  if (IsFaceEdit()) return Use(*beforeFaces_);
  beforeFaces_ = current_;
  Use(faceTool);
}

void ToolSet::PositionCamera() {
  current_->Cancel();
  if (current_ == &cameraPositioner) return;
  cameraPositioner.ReturnTo(*current_);
  Use(cameraPositioner);
}

bool ToolSet::StartCameraDrag(Tool& from, MapView& view, Pixel at) {
  if (cameraDrag.GripAt(view, at) == CameraGrip::None) return false;
  current_ = &cameraDrag;
  cameraDrag.Start(from, view, at);
  return true;
}

void ToolSet::SelectionChanged(const Map& map) {
  brushSelector.StartOver(map);
  vertexTool.Forget();
}

void ToolSet::StartRectangle(Selector& from, MapView& view, Pixel at) {
  current_ = &rectangle_;
  rectangle_.Start(from, view, at);
}

void ToolSet::ToggleAxisLimit(int axis) {
  limitedAxes_ = static_cast<std::uint8_t>(limitedAxes_ ^ 1 << axis);
  for (MapView* view : views_.Views()) LimitAxes(*view);
}

void ToolSet::LimitAxes(MapView& view) const {
  const int depth = 1 << view.transform.DepthAxis();
  view.axismask = static_cast<std::uint8_t>(7 & ~depth & ~limitedAxes_);
}

}  // namespace ferrowand
