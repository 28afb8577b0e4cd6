#include "views/tools/primitive_tool.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/texture_choice.h"
#include "views/map_view.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr int DEFAULT_DEPTH = 64;  // world units

}  // namespace

const char* NameOf(PrimitiveKind kind) {
  switch (kind) {
    case PrimitiveKind::Cuboid:
      return "Cuboid";
    case PrimitiveKind::Wedge:
      return "Wedge";
    case PrimitiveKind::Column:
      return "Column";
    case PrimitiveKind::Pyramid:
      return "Pyramid";
    case PrimitiveKind::Sphere:
      return "Sphere";
    case PrimitiveKind::Hemisphere:
      return "Hemisphere";
  }
  return "";
}

bool PrimitiveTool::Prepare(PrimitiveKind kind, bool asksAnew) {
  if (SidesOf(kind).most > 0 && (asksAnew || !sides_.contains(kind))) {
    const std::optional<int> sides = Host().AskSides(kind);
    if (!sides) return false;
    sides_[kind] = *sides;
  }
  kind_ = kind;
  return true;
}

std::string PrimitiveTool::Name() const {
  if (Sides() == 0) return "Create primitive";
  return Format("Create primitive: %i sides (choose it again to change them)", Sides());
}

int PrimitiveTool::Sides() const {
  const auto sides = sides_.find(kind_);
  return sides == sides_.end() ? 0 : sides->second;
}

void PrimitiveTool::MouseDown(MapView& view, Pixel at, int button) {
  if (IsDragging()) {
    Cancel();
  } else if (button == BUTTON_RIGHT) {
    tools_.Use(tools_.brushSelector);
  } else {
    BeginDrag(view, at);
  }
}

int PrimitiveTool::DefaultDepth(int grid) {
  return std::max(DEFAULT_DEPTH, 1 << grid);
}

Bounds PrimitiveTool::BoxTo(const MapView& view, Pixel at) const {
  const DragRules rules = RulesOf(view);
  const ViewInts cursor = WorldAt(view, at);
  const int depth = view.transform.DepthAxis();
  const std::array<int, 2> axes{view.transform.orienu, view.transform.orienv};
  Bounds box{{0, 0, 0}, {0, 0, 0}};
  for (std::size_t i = 0; i < 2; ++i) {
    const int from = rules.snap ? rules.Snap(i, press_[i]) : press_[i];
    const int to = rules.snap ? rules.Snap(i, cursor[i]) : cursor[i];
    box.mins[axes[i]] = static_cast<float>(std::min(from, to));
    box.maxs[axes[i]] = static_cast<float>(std::max(from, to));
  }
  const Bounds& last = view.LastSelected();
  if (!last.IsEmpty() && last.mins[depth] < last.maxs[depth]) {
    box.mins[depth] = last.mins[depth];
    box.maxs[depth] = last.maxs[depth];
  } else {
    box.maxs[depth] = static_cast<float>(DefaultDepth(view.gridu));
  }
  return box;
}

void PrimitiveTool::Drag(MapView& view, Pixel at) {
  const Bounds box = BoxTo(view, at);
  const Vec3 size = box.maxs - box.mins;
  Show(view,
       {RectangleShape(view.transform.ToScreen(box.mins, box.maxs)),
        SizeBeside(ViewBoxOf(box, view), view)},
       Format("%s: %ix%i", NameOf(kind_), RoundToInt(size[view.transform.orienu]),
              RoundToInt(size[view.transform.orienv])));
}

void PrimitiveTool::Drop(MapView& view, Pixel at) {
  Create(view.map, BoxTo(view, at));
}

void PrimitiveTool::Create(Map& map, const Bounds& box) {
  const Vec3 size = box.maxs - box.mins;
  if (size.x <= 0 || size.y <= 0 || size.z <= 0) return;
  const Primitive primitive{.kind = kind_, .box = box, .sides = Sides()};
  const ActionScope action(map.Data(), Format("Create %s", NameOf(kind_)));
  const bool follows = tools_.GetOptions().primitivesFollow != 0;
  const std::string texture = follows ? Host().CurrentTexture(map) : FirstTextureOf(map);
  if (!AddPrimitive(map, primitive, texture)) return;
  tools_.Use(tools_.brushSelector);
  map.ShowStatus(map.undo.NewestName());  // the tool has told its own
}

}  // namespace ferrowand
