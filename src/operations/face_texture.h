// Another texture for faces.
#pragma once

namespace ferrowand {

class EditStep;
class entity;
struct Texture;

// On all faces of the object and of what lies below it; how it lies stays.
void SetTextureBelow(EditStep& step, entity& tree, Texture& texture);

}  // namespace ferrowand
