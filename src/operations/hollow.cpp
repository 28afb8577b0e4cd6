#include "operations/hollow.h"

#include <algorithm>
#include <charconv>
#include <utility>
#include <vector>

#include "base/report.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/brush_check.h"
#include "operations/csg.h"
#include "operations/face_texture.h"

namespace ferrowand {
namespace {

// Every face moved outwards. Points that lie a little beside their plane, as those of a file may
// far from the face, come onto it: between whole units nothing else tells where the plane is.
Brush Grown(const Brush& brush, double by, Reporter& reporter) {
  Brush grown(brush.Outline());
  for (const Face& face : brush.Faces()) {
    Face moved = CopyFace(face);
    moved.w = nullptr;
    moved.plane.dist += by;
    for (Vec3& p : moved.planepts) {
      const DVec3 point(p);
      p = Vec3(point + face.plane.normal * (by - face.plane.DistanceTo(point)));
    }
    grown.AddFace(std::move(moved));
  }
  grown.Rebuild(reporter);
  return grown;
}

// None when a wall would be lost. `look` is that of new faces, null for that of the old ones.
std::vector<EntityPtr> Walls(const Brush& brush, int width, const Face* look,
                             const ClassSet& classes, Reporter& reporter) {
  Brush moved = Grown(brush, -static_cast<double>(width), reporter);
  for (int i = 0; look && i < moved.getNumFaces(); ++i) {
    moved.face(i).TakeLook(*look);
    if (moved.face(i).w) UpdateFromWinding(moved.face(i));
  }
  if (moved.getNumFaces() < SMALLEST_SOLID || !IsInsideWorld(moved.Box())) return {};
  const Brush& outer = width > 0 ? brush : moved;
  const Brush& inner = width > 0 ? moved : brush;
  Carving carving = Carve(outer, inner, classes, CapTexture::Cutter, reporter);
  const bool isSound = carving.loss == CutLoss::None &&
                       std::ranges::all_of(carving.outside, [&](const EntityPtr& wall) {
                         return IsKeepable(wall->brush, reporter);
                       });
  return isSound ? std::move(carving.outside) : std::vector<EntityPtr>();
}

void CollectBrushes(entity& e, std::vector<entity*>& found) {
  if (!IsOpen(e)) return;
  if (e.brush.getNumFaces() > 0) found.push_back(&e);
  for (const EntityPtr& child : e.getEntityList()) CollectBrushes(*child, found);
}

}  // namespace

std::optional<int> ParseWallWidth(std::string_view text) {
  constexpr std::string_view BLANKS = " \t";
  text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
  text = text.substr(0, text.find_last_not_of(BLANKS) + 1);
  int width = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), width);
  if (error != std::errc() || end != text.data() + text.size() || width == 0) return std::nullopt;
  return width;
}

bool HollowSelection(Map& map, int width, std::string_view texture) {
  Reporter& reporter = map.Data().reporter;
  if (width == 0) {
    reporter.Show("Error", WALL_WIDTH_MESSAGE);
    return false;
  }
  std::vector<entity*> targets;
  for (entity* object : SelectedRoots(map)) CollectBrushes(*object, targets);
  std::size_t solid = 0;
  const Face look = NewLook(map, texture);
  {
    EditStep step(map);
    for (entity* target : targets) {
      std::vector<EntityPtr> walls =
          Walls(target->brush, width, texture.empty() ? nullptr : &look, *map.classSet, reporter);
      if (walls.empty()) {
        ++solid;
        continue;
      }
      step.ChangeKeys(*target);
      target->brush.Clear();
      for (EntityPtr& wall : walls) step.Add(std::move(wall), *target);
    }
  }
  if (solid == 0) return true;
  reporter.Show(
      "Ferrowand says",
      Format("%u of the brushes could not be made hollow and %s: too small for such walls, "
             "or the walls would not lie on whole units or would leave the world.",
             static_cast<unsigned>(solid), solid == 1 ? "stays as it was" : "stay as they were"));
  return solid < targets.size();
}

}  // namespace ferrowand
