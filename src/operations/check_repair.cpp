#include "operations/check_repair.h"

#include <algorithm>
#include <array>

#include "base/path_text.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/brush_check.h"
#include "operations/new_entity.h"
#include "operations/snap_corners.h"

namespace ferrowand {
namespace {

bool HasFace(const entity& e, const std::string& name) {
  return std::ranges::any_of(
      e.brush.Faces(), [&](const Face& face) { return EqualNoCase(face.WrittenName(), name); });
}

void CollectWithFace(entity& e, const std::string& name, std::vector<entity*>& found) {
  if (HasFace(e, name)) found.push_back(&e);
  for (const EntityPtr& child : e.getEntityList()) CollectWithFace(*child, name, found);
}

}  // namespace

Repair RepairOf(const Problem& problem) {
  switch (problem.code) {
    case CheckCode::NoWinding:
    case CheckCode::TooFewPoints:
    case CheckCode::NoNormal:
    case CheckCode::DegenerateEdge:
      return Repair::DropFace;
    case CheckCode::PointOffPlane:
      return Repair::SnapCorners;
    case CheckCode::UnknownTexture:
      return Repair::ReplaceTexture;
    default:
      return Repair::None;
  }
}

Repair RepairOf(const Finding& finding) {
  switch (finding.kind) {
    case FindingKind::MovedFaces:
      return Repair::SnapCorners;
    case FindingKind::DuplicateBrush:
      return Repair::RemoveBrush;
    case FindingKind::LongWord:
    case FindingKind::LongTextureName:
      return Repair::ReplaceTexture;
    default:
      return Repair::None;
  }
}

const char* RepairName(Repair repair) {
  static constexpr std::array NAMES = {"", "Drop the face", "Snap to whole units",
                                       "Replace the texture", "Remove the brush"};
  return NAMES[static_cast<std::size_t>(repair)];
}

EditResult DropFace(Map& map, entity& e, int face) {
  if (face >= e.brush.getNumFaces()) return EditResult::NothingSelected;
  Brush without(e.brush.Outline());
  for (int i = 0; i < e.brush.getNumFaces(); ++i) {
    if (i != face && e.brush.face(i).w) without.AddFace(CopyFace(e.brush.face(i)));
  }
  for (const Face& far : e.brush.FarFaces()) without.FarFaces().push_back(CopyFace(far));
  // The others must bound the same solid.
  if (!without.RenewWindings(map.Data().reporter)) return EditResult::BreaksBrush;
  if (!SurvivesSaving(without, map.Data().reporter)) return EditResult::BreaksBrush;
  EditStep step(map);
  step.Change(e);
  e.brush = std::move(without);
  return EditResult::Done;
}

EditResult SnapCorners(Map& map, entity& e) {
  const UndoStore::StateId before = map.undo.State();
  Select(map, &e, false);
  const EditResult result = SnapSelection(map, 1);
  const bool isLeft = result == EditResult::Done && map.undo.State() == before;
  return isLeft ? EditResult::BreaksBrush : result;
}

EditResult ReplaceTexture(Map& map, const std::string& name, const std::string& by, int& replaced) {
  Texture* texture = map.wads.FindTexture(by);
  if (!texture || !EqualNoCase(texture->Name(), by)) return EditResult::NoTexture;
  std::vector<entity*> objects;
  CollectWithFace(map, name, objects);
  replaced = 0;
  EditStep step(map);
  for (entity* e : objects) {
    step.ChangeKeys(*e);
    for (int i = 0; i < e->brush.getNumFaces(); ++i) {
      Face& face = e->brush.face(i);
      if (!EqualNoCase(face.WrittenName(), name)) continue;
      face.SetName(by);
      face.texture = texture;
      UpdateFromWinding(face);
      ++replaced;
    }
  }
  return EditResult::Done;
}

EditResult RemoveBrush(Map& map, entity& e) {
  EditStep step(map);
  entity* const object = &e;
  RemoveObjects(step, {&object, 1});
  return EditResult::Done;
}

}  // namespace ferrowand
