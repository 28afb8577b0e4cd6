#include "views/tools/multi_selector.h"

#include <unordered_set>

#include "document/map.h"
#include "views/map_view.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

void MultiSelector::MouseDown(MapView& view, Pixel at, int button) {
  const bool starts = button == BUTTON_LEFT && !IsDragging();
  if (starts && tools_.StartCameraDrag(*this, view, at)) return;
  if (starts && (Host().Keys().control || !IsOnSelection(view, at))) {
    tools_.StartRectangle(*this, view, at);
  } else {
    Selector::MouseDown(view, at, button);
  }
}

void MultiSelector::TakeRectangle(MapView& view, const PixelRect& closed, bool moved) {
  std::vector<entity*> objects;
  if (moved) {
    objects = ObjectsIn(view, closed);
  } else if (const Hit hit = ClickTest(view.map, QueryAt(view, {closed.left, closed.top}, Level()));
             hit.object) {
    objects = {&PickedBy(*hit.object, Level())};
  }
  if (!Host().Keys().control) {
    SelectAll(view, objects, true);
    return;
  }
  const std::unordered_set<const entity*> away(objects.begin(), objects.end());
  std::vector<entity*> rest = view.map.selection.Objects();
  std::erase_if(rest, [&](const entity* e) { return away.contains(e); });
  SelectAll(view, rest, false);
}

}  // namespace ferrowand
