#include "operations/face_texture.h"

#include <algorithm>
#include <tuple>

#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "gamedata/texture_name.h"

namespace ferrowand {
namespace {

void SetTextureOf(EditStep& step, entity& e, std::string_view name) {
  if (e.brush.getNumFaces() == 0) return;
  step.ChangeKeys(e);
  for (int i = 0; i < e.brush.getNumFaces(); ++i) SetTexture(step.map(), e.brush.face(i), name);
}

// What is hidden or disabled within it stays as it is.
void SetTextureWithin(EditStep& step, entity& tree, std::string_view name) {
  if (!IsOpen(tree)) return;
  SetTextureOf(step, tree, name);
  for (const EntityPtr& child : tree.getEntityList()) SetTextureWithin(step, *child, name);
}

}  // namespace

void SetTexture(const Map& map, Face& face, std::string_view name) {
  face.SetName(name);
  face.texture = map.wads.FindTexture(name);
  UpdateFromWinding(face);
}

Face NewLook(const Map& map, std::string_view name) {
  Face face;
  face.SetName(name);
  face.texture = map.wads.FindTexture(name);
  face.xscale = face.yscale = 1;
  return face;
}

EditResult SetTexture(Map& map, std::span<const PickedFace> faces, std::string_view name) {
  if (faces.empty()) return EditResult::NothingSelected;
  EditStep step(map);
  for (const PickedFace& picked : faces) {
    step.ChangeKeys(*picked.brush);
    SetTexture(map, picked.Get(), name);
  }
  return EditResult::Done;
}

void SetTextureBelow(EditStep& step, entity& tree, Texture& texture) {
  if (tree.brush.HasText()) step.ChangeKeys(tree);
  for (int i = 0; i < tree.brush.getNumFaces(); ++i) {
    SetTexture(step.map(), tree.brush.face(i), texture.Name());
  }
  for (const EntityPtr& child : tree.getEntityList()) SetTextureBelow(step, *child, texture);
}

bool HasTexture(const Face& face) {
  return face.texture && face.texture != face.texture->wad->BadTexture();
}

bool IsTextureName(std::string_view name) {
  return WhyNoTextureName(name).empty();
}

EditResult ApplyTexture(Map& map, std::string_view name) {
  if (!IsTextureName(name)) return EditResult::NotATextureName;
  if (!map.pickedFaces.empty()) return SetTexture(map, map.pickedFaces.Faces(), name);
  const std::vector<entity*> objects = SelectedRoots(map);
  if (objects.empty()) return EditResult::NothingSelected;
  EditStep step(map);
  for (entity* object : objects) SetTextureWithin(step, *object, name);
  return EditResult::Done;
}

EditResult PaintFace(Map& map, entity& brush, int face, std::string_view name) {
  if (!IsTextureName(name)) return EditResult::NotATextureName;
  if (face < 0 || face >= brush.brush.getNumFaces() || !IsReachable(brush)) {
    return EditResult::NothingSelected;
  }
  const PickedFace one{&brush, face};
  return SetTexture(map, {&one, 1}, name);
}

EditResult PaintBrush(Map& map, entity& brush, std::string_view name) {
  if (!IsTextureName(name)) return EditResult::NotATextureName;
  if (!IsReachable(brush)) return EditResult::NothingSelected;
  EditStep step(map);
  SetTextureOf(step, brush, name);
  return EditResult::Done;
}

}  // namespace ferrowand
