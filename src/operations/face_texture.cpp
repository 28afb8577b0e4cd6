#include "operations/face_texture.h"

#include "document/edit_step.h"
#include "document/map.h"

namespace ferrowand {

void SetTextureBelow(EditStep& step, entity& tree, Texture& texture) {
  if (tree.brush.HasText()) step.ChangeKeys(tree);
  for (int i = 0; i < tree.brush.getNumFaces(); ++i) {
    Face& face = tree.brush.face(i);
    face.SetName(texture.Name());
    face.texture = &texture;
    UpdateFromWinding(face);
  }
  for (const EntityPtr& child : tree.getEntityList()) SetTextureBelow(step, *child, texture);
}

}  // namespace ferrowand
