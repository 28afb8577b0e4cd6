#include "views/tools/rectangle_selector.h"

#include <utility>

#include "views/map_view.h"
#include "views/tools/selector.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

void RectangleSelector::Start(Selector& from, MapView& view, Pixel at) {
  from_ = &from;
  BeginDrag(view, at);
}

void RectangleSelector::Drag(MapView& view, Pixel at) {
  preview_.Show(view, {RectangleShape(BandTo(at))});
}

void RectangleSelector::Finish(MapView& view, Pixel at, bool moved) {
  if (Selector* from = HandBack()) from->TakeRectangle(view, BandTo(at), moved);
}

Selector* RectangleSelector::HandBack() {
  Selector* from = std::exchange(from_, nullptr);
  if (from) tools_.ReturnTo(*from);
  return from;
}

void RectangleSelector::Cancel() {
  EndDrag();
  HandBack();
}

void RectangleSelector::DrawOverlay(MapView& view, Canvas& canvas) {
  if (from_) from_->DrawOverlay(view, canvas);
  preview_.Draw(view, canvas);
}

}  // namespace ferrowand
