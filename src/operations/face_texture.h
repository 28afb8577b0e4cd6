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

// A face without shape that looks as new ones do: the texture as it is, from the world's own
// corner.
Face NewLook(const Map& map, std::string_view name);

// On those faces of the map, as one step.
EditResult SetTexture(Map& map, std::span<const PickedFace> faces, std::string_view name);

// On all faces of the object and of what lies below it.
void SetTextureBelow(EditStep& step, entity& tree, Texture& texture);

// Of a WAD; else it shows what stands for a missing one.
bool HasTexture(const Face& face);
// Whether a face can have the name, and a file hold it.
bool IsTextureName(std::string_view name);

// On the picked faces, where there are some, or else on all faces of the selected objects, as far
// as they can be reached; one step.
EditResult ApplyTexture(Map& map, std::string_view name);
// On one face of a brush, which can be reached, or on all of them; one step.
EditResult PaintFace(Map& map, entity& brush, int face, std::string_view name);
EditResult PaintBrush(Map& map, entity& brush, std::string_view name);

}  // namespace ferrowand
