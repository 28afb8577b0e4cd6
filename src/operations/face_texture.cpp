#include "operations/face_texture.h"

#include "document/edit_step.h"
#include "document/map.h"

namespace ferrowand {

void SetTexture(const Map& map, Face& face, std::string_view name) {
  face.SetName(name);
  face.texture = map.wads.FindTexture(name);
  UpdateFromWinding(face);
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

}  // namespace ferrowand
