// Another texture for faces. How it lies stays.
#pragma once

#include <span>
#include <string_view>

#include "operations/edit_result.h"

namespace ferrowand {

class EditStep;
class Map;
class entity;
struct Face;
struct PickedFace;
struct Texture;

// The texture of that name, as the map's WADs have it, or none of theirs. Within a step that keeps
// the face.
void SetTexture(const Map& map, Face& face, std::string_view name);

// On those faces of the map, as one step.
EditResult SetTexture(Map& map, std::span<const PickedFace> faces, std::string_view name);

// On all faces of the object and of what lies below it.
void SetTextureBelow(EditStep& step, entity& tree, Texture& texture);

}  // namespace ferrowand
