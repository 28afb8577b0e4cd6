#include "operations/snap_corners.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/report.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "document/transform.h"
#include "geometry/convex_hull.h"
#include "geometry/tolerance.h"
#include "geometry/whole_plane.h"
#include "operations/brush_check.h"

namespace ferrowand {
namespace {

WholePoint Nearest(const Vec3& p, int grid) {
  const auto multiple = [grid](float part) {
    return std::int64_t{RoundToInt(static_cast<double>(part) / grid)} * grid;
  };
  return {multiple(p.x), multiple(p.y), multiple(p.z)};
}

bool IsOnGrid(const Vec3& p, int grid) {
  const DVec3 away = DVec3(p) - DVec3(Nearest(p, grid));
  return std::max({std::fabs(away.x), std::fabs(away.y), std::fabs(away.z)}) <= SNAP_EPSILON;
}

bool IsOnGrid(const Brush& brush, int grid) {
  return std::ranges::all_of(brush.Faces(), [grid](const Face& face) {
    return !face.w || std::ranges::all_of(std::as_const(*face.w).Points(), [&](const auto& p) {
      return IsOnGrid(p.Position(), grid);
    });
  });
}

// The corners of a face where they are to go.
std::vector<WholePoint> MovedCorners(const Face& face, int grid) {
  std::vector<WholePoint> corners;
  if (!face.w) return corners;
  for (const WindingPoint& p : std::as_const(*face.w).Points()) {
    corners.push_back(Nearest(p.Position(), grid));
  }
  return corners;
}

// A face that is bent by the way of its corners becomes several, which look as it did: of that
// face most corners are, and of equals the one that looks the same way.
Face FaceOf(const HullFace& outline, const Brush& brush,
            const std::vector<std::vector<WholePoint>>& moved) {
  const std::size_t third = outline.size() / 3;
  const std::array<Vec3, 3> points{Vec3(outline[0]), Vec3(outline[third]),
                                   Vec3(outline[2 * third])};
  const Plane plane = PlaneOf(points);
  double best = -2;
  const Face* like = nullptr;
  for (std::size_t i = 0; i < moved.size(); ++i) {
    const Face& face = brush.Faces()[i];
    double likeness = Dot(face.plane.normal, plane.normal);
    for (const WholePoint& p : outline) likeness += 3 * (std::ranges::count(moved[i], p) != 0);
    if (likeness > best) {
      best = likeness;
      like = &face;
    }
  }
  Face face;
  if (like) face.TakeLook(*like);
  face.plane = plane;  // the points follow from the corners, once those are made
  return face;
}

// Faces that are bent by less than the tools can tell cut each other's corners off.
bool HasOutline(const Face& face, const HullFace& outline) {
  const auto points = std::as_const(*face.w).Points();
  return points.size() == outline.size() && std::ranges::all_of(points, [&](const auto& p) {
           return IsOnGrid(p.Position(), 1) &&
                  std::ranges::count(outline, Nearest(p.Position(), 1)) != 0;
         });
}

// The solid around the corners where they go to, unless it is not one that can be kept.
std::optional<Brush> Snapped(const Brush& brush, int grid, Reporter& reporter) {
  if (!brush.FarFaces().empty()) return std::nullopt;
  std::vector<std::vector<WholePoint>> moved;
  std::vector<WholePoint> all;
  for (const Face& face : brush.Faces()) {
    moved.push_back(MovedCorners(face, grid));
    all.insert(all.end(), moved.back().begin(), moved.back().end());
  }
  const std::vector<HullFace> hull = ConvexHull(all);
  if (hull.empty() || hull.size() > std::size_t{MAXFACES}) return std::nullopt;
  Brush result(brush.Outline());
  for (const HullFace& outline : hull) result.AddFace(FaceOf(outline, brush, moved));
  result.Rebuild(reporter);
  if (result.getNumFaces() != static_cast<int>(hull.size())) return std::nullopt;
  for (int i = 0; i < result.getNumFaces(); ++i) {
    UpdateFromWinding(result.face(i));
    if (!HasOutline(result.face(i), hull[static_cast<std::size_t>(i)])) return std::nullopt;
  }
  const bool isSound = IsInsideWorld(result.Box()) && IsKeepable(result, reporter);
  return isSound ? std::optional(std::move(result)) : std::nullopt;
}

std::string Brushes(int count) {
  return std::to_string(count) + (count == 1 ? " brush" : " brushes");
}

class Snapping {
 public:
  Snapping(EditStep& step, int grid) : step_(step), grid_(grid) {}

  void Snap(entity& e) {
    if (e.HasOrigin() && !IsOnGrid(e.Origin(), grid_)) {
      step_.ChangeKeys(e);
      e.SetOrigin(Vec3(Nearest(e.Origin(), grid_)));
      ++origins_;
    }
    if (e.brush.getNumFaces() == 0 || IsOnGrid(e.brush, grid_)) return;
    auto snapped = Snapped(e.brush, grid_, step_.map().Data().reporter);
    if (!snapped) {
      ++left_;
      return;
    }
    step_.ChangeKeys(e);
    e.brush = std::move(*snapped);
    ++brushes_;
  }

  std::string Status() const {
    std::string text;
    if (brushes_ > 0) text = "Snapped to the grid: " + Brushes(brushes_);
    if (origins_ > 0) {
      text += (text.empty() ? "Snapped to the grid: " : " and ") + std::to_string(origins_) +
              (origins_ == 1 ? " origin" : " origins");
    }
    if (text.empty()) text = left_ > 0 ? "Nothing was snapped" : "All of it is on the grid";
    if (left_ > 0)
      text += "; " + Brushes(left_) + " would not stay sound there and stayed as before";
    return text;
  }

 private:
  EditStep& step_;
  int grid_;
  int brushes_ = 0, origins_ = 0, left_ = 0;
};

}  // namespace

EditResult SnapSelection(Map& map, int grid) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  std::string status;
  {
    EditStep step(map);
    Snapping snapping(step, grid);
    for (entity* root : roots) {
      ForEachAlong(*root, [&](entity& e) { snapping.Snap(e); });
    }
    status = snapping.Status();
  }
  map.ShowStatus(status);
  return EditResult::Done;
}

void TellOffUnits(Map& map, std::span<entity* const> trees) {
  int count = 0;
  for (const entity* tree : trees) {
    ForEachAlong(*tree, [&](const entity& e) { count += !IsOnGrid(e.brush, 1); });
  }
  if (count == 0) return;
  map.ShowStatus(Brushes(count) + (count == 1 ? " has" : " have") +
                 " corners between whole units: Operate/Snap to grid puts them there");
}

}  // namespace ferrowand
