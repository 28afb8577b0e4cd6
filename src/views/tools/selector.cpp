#include "views/tools/selector.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "base/report.h"
#include "document/action.h"
#include "document/classes/class_set.h"
#include "document/classes/entity_class.h"
#include "document/map.h"
#include "operations/class_change.h"
#include "operations/groups.h"
#include "operations/transform_selection.h"
#include "views/map_view.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

// Boxes that a preview shows one by one; of more objects it shows the box around all.
constexpr std::size_t MAX_PREVIEW_BOXES = 200;
constexpr float UNION_START = 10000;  // world units; also the end of what views show

// Where an object is, for putting it onto the grid.
Vec3 ReferenceOf(const entity& e) {
  return e.HasOrigin() ? e.Origin() : e.GetBounds().mins;
}

std::vector<Bounds> PreviewBoxes(const Map& map) {
  std::vector<Bounds> boxes;
  Bounds all{{UNION_START, UNION_START, UNION_START}, {-UNION_START, -UNION_START, -UNION_START}};
  for (const entity* selected : map.selection) {
    boxes.push_back(selected->GetBounds());
    all.Add(boxes.back());
  }
  if (boxes.size() > MAX_PREVIEW_BOXES) boxes = {all};
  std::erase_if(boxes, [](const Bounds& box) { return box.IsEmpty(); });
  return boxes;
}

bool Takes(const PixelRect& closed, const PixelRect& object, BoxRule rule) {
  if (rule == BoxRule::Full) {
    return object.left >= closed.left && object.right <= closed.right && object.top >= closed.top &&
           object.bottom <= closed.bottom;
  }
  return object.right >= closed.left && object.left <= closed.right &&
         object.bottom >= closed.top && object.top <= closed.bottom;
}

}  // namespace

void Selector::MouseDown(MapView& view, Pixel at, int button) {
  if (IsDragging()) {
    Cancel();
    return;
  }
  if (button == BUTTON_LEFT && tools_.StartCameraDrag(*this, view, at)) return;
  Pick(view, at);
  if (button == BUTTON_RIGHT) {
    Host().TrackPopup(view, at, ToolPopup::Selection);
  } else if (view.map.selection.empty()) {
    tools_.StartRectangle(*this, view, at);
  } else {
    BeginDrag(view, at);
  }
}

std::vector<entity*> Selector::StackAt(const MapView& view, Pixel at) const {
  std::vector<entity*> stack;
  ForEachHit(view.map, QueryAt(view, at, Level()), [&](const Hit& hit) {
    entity& object = PickedBy(*hit.object, Level());
    if (std::ranges::find(stack, &object) == stack.end()) stack.push_back(&object);
    return false;
  });
  return stack;
}

void Selector::GoThrough(MapView& view, Pixel at, bool deeper) {
  if (IsDragging()) return;
  entity* const object = BesideSelected(view.map, StackAt(view, at), deeper);
  if (object && !view.map.selection.Contains(*object)) Select(view, object, false);
}

void Selector::DoubleClick(MapView& view, Pixel at, int button) {
  std::vector<entity*> stack;
  if (button == BUTTON_LEFT) stack = StackAt(view, at);
  const auto selected =
      std::ranges::find_if(stack, [&](const entity* e) { return view.map.selection.Contains(*e); });
  if (stack.size() == 1 && selected != stack.end()) {
    EditSelected(view);
    return;
  }
  if (stack.size() < 2 || selected == stack.end() || !tools_.GetOptions().smartSelection) {
    MouseDown(view, at, button);
    return;
  }
  Select(view, selected + 1 == stack.end() ? stack.front() : *(selected + 1), false);
}

bool Selector::IsOnSelection(const MapView& view, Pixel at) const {
  return HitTest(view.map.selection.Objects(), QueryAt(view, at, PickLevel::Objects)).object !=
         nullptr;
}

ToolCursor Selector::CursorAt(const MapView& view, Pixel at) const {
  const CameraGrip grip = tools_.cameraDrag.GripAt(view, at);
  if (grip != CameraGrip::None) {
    return grip == CameraGrip::Eye ? ToolCursor::Move : ToolCursor::Turn;
  }
  const bool drags =
      IsOnSelection(view, at) ||
      (IsForSelection(view, at) && !HitTest(view.map, QueryAt(view, at, Level())).object);
  return drags ? ToolCursor::Move : ToolCursor::Arrow;
}

void Selector::Pick(MapView& view, Pixel at) {
  if (IsOnSelection(view, at)) return;
  const bool add = Host().Keys().control;
  const Hit hit = ClickTest(view.map, QueryAt(view, at, Level()));
  if (!hit.object) {
    if (!IsForSelection(view, at)) Select(view, nullptr, add);
    return;
  }
  entity& object = PickedBy(*hit.object, Level());
  if (!view.map.selection.Contains(object)) Select(view, &object, add);
}

void Selector::Select(MapView& view, entity* object, bool add) {
  std::vector<entity*> objects;
  if (object) objects.push_back(object);
  SelectAll(view, objects, add);
}

void Selector::SelectAll(MapView& view, const std::vector<entity*>& objects, bool add) {
  ferrowand::Select(view.map, objects, add);
}

void Selector::Group(MapView& view) {
  const ActionScope action(view.map.Data(), "Group");
  Conclude(view, GroupSelection(view.map));
}

void Selector::PopupCommand(MapView& view, unsigned command) {
  const auto& classes = view.map.classSet->Classes();
  if (command >= classes.size()) return;
  const EntityClass& chosen = *classes[command];
  const ActionScope action(view.map.Data(), "Make " + chosen.classname);
  const bool brushes = std::ranges::any_of(view.map.selection, [](const entity* e) {
    return e->getClass()->Kind() == EntityKind::Brush;
  });
  Conclude(view,
           brushes ? GroupSelectionAs(view.map, chosen) : SetClassOfSelection(view.map, chosen));
}

std::vector<entity*> Selector::ObjectsIn(const MapView& view, const PixelRect& closed) const {
  std::vector<entity*> objects;
  std::unordered_set<const entity*> known;
  for (entity* e : PickableObjects(view.map, Level())) {
    entity& object = PickedBy(*e, Level());
    if (&object != e && !known.insert(&object).second) continue;
    const Bounds box = SeenBounds(object);
    if (box.IsEmpty()) continue;
    const PixelRect seen = view.transform.ToScreen(box.mins, box.maxs);
    if (Takes(closed, seen, tools_.boxRule)) objects.push_back(&object);
  }
  return objects;
}

void Selector::TakeRectangle(MapView& view, const PixelRect& closed, bool moved) {
  if (moved) SelectAll(view, ObjectsIn(view, closed), Host().Keys().control);
}

// Without the grid exactly as the cursor goes; with it in steps of the grid; with Shift, too, so
// that the first object comes onto the grid.
ViewPoint Selector::DragOffset(const MapView& view, Pixel at) const {
  const DragRules rules = RulesOf(view);
  const ViewInts cursor = WorldAt(view, at);
  const Vec3 reference = ReferenceOf(*view.map.selection.front());
  const std::array<int, 2> axes{view.transform.orienu, view.transform.orienv};
  ViewPoint offset{};
  for (std::size_t i = 0; i < 2; ++i) {
    if (!rules.edits[i]) continue;
    offset[i] = cursor[i] - press_[i];
    if (!rules.snap) continue;
    const double from = Host().Keys().shift ? double{reference[axes[i]]} : 0;
    offset[i] = rules.Snap(i, from + offset[i]) - from;
  }
  return offset;
}

void Selector::Drag(MapView& view, Pixel at) {
  if (view.map.selection.empty()) {
    Cancel();
    return;
  }
  const ViewPoint offset = DragOffset(view, at);
  const Vec3 by = ToWorld(offset, view);
  std::vector<PreviewShape> shapes;
  for (const Bounds& box : PreviewBoxes(view.map)) {
    shapes.push_back(RectangleShape(view.transform.ToScreen(box.mins + by, box.maxs + by)));
  }
  if (const Bounds all = SelectionBounds(view.map); !all.IsEmpty()) {
    shapes.push_back(SizeBeside(ViewBoxOf({all.mins + by, all.maxs + by}, view), view));
  }
  Show(view, std::move(shapes),
       Format("Translating: (%i, %i)", RoundToInt(offset[0]), RoundToInt(offset[1])));
}

void Selector::Drop(MapView& view, Pixel at) {
  if (view.map.selection.empty()) return;
  const Vec3 by = ToWorld(DragOffset(view, at), view);
  if (by == Vec3()) return;
  const bool copies = Host().Keys().control;
  const ActionScope action(view.map.Data(), copies ? "Duplicate" : "Move");
  const TransformOptions how = tools_.HowToTransform();
  Conclude(view, copies ? DuplicateSelection(view.map, by, how) : MoveSelection(view.map, by, how));
}

void EntitySelector::MouseDown(MapView& view, Pixel at, int button) {
  if (button != BUTTON_RIGHT || IsDragging()) {
    Selector::MouseDown(view, at, button);
    return;
  }
  Pick(view, at);
  rightPressed_ = !Host().TrackPopup(view, at, ToolPopup::Selection);
}

void EntitySelector::MouseUp(MapView& view, Pixel at, int button) {
  if (button != BUTTON_RIGHT) {
    Selector::MouseUp(view, at, button);
  } else if (std::exchange(rightPressed_, false)) {
    EditSelected(view);
  }
}

void Selector::EditSelected(MapView& view) {
  const std::size_t count = view.map.selection.size();
  Reporter& report = Host().Report();
  if (count == 1) {
    Host().EditProperties(*view.map.selection.front());
  } else if (count == 0) {
    report.Show("Cannot continue", "Cannot group with this tool");
  } else if (report.Show("Ferrowand asks", "Cannot edit multiple entities. Group then edit?",
                         Buttons::YesNo, Icon::Question) == Answer::Yes) {
    Group(view);
    if (view.map.selection.size() == 1) Host().EditProperties(*view.map.selection.front());
  }
}

void EntitySelector::Hover(MapView& view, Pixel at) {
  const Hit hit = ClickTest(view.map, QueryAt(view, at, Level()));
  Host().SetCursor(view, hit.object ? ToolCursor::Entity : ToolCursor::Arrow);
  if (!hit.object) return;
  view.SetStatus(InWords(PickedBy(*hit.object, Level())));
}

}  // namespace ferrowand
