// Faces found by their texture, and given another one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/face_selection.h"
#include "operations/edit_result.h"

namespace ferrowand {

class Map;
class entity;

// All; the current layer; the picked faces, if there are some, or else the selected objects.
enum class TextureScope { Map, Layer, Selection };

// Beyond the world: it has no shape, and cannot be picked.
struct FarFace {
  entity* brush = nullptr;
  std::size_t face = 0;  // of the brush's far ones
};

struct FoundFaces {
  std::vector<PickedFace> faces{};  // that can be reached
  std::vector<FarFace> beyond{};    // likewise
  std::size_t unreached = 0;        // hidden or disabled

  bool empty() const { return faces.empty() && beyond.empty(); }
  std::size_t size() const { return faces.size() + beyond.size(); }
  std::vector<entity*> Brushes() const;  // each once
};

struct TextureQuery {
  // A pattern of the whole name; `""`, as files write it, is that of faces without one. An empty
  // one finds nothing.
  std::string name{};
  bool onlyMissing = false;  // of those, what no WAD of the map has
};

FoundFaces FindFaces(Map& map, const TextureQuery& query, TextureScope scope);
// All that have one of these very names.
FoundFaces FacesWith(Map& map, const std::vector<std::string>& names);

struct TextureReplacement {
  // Its wildcards stand for what those of the query's pattern do, in their order.
  std::string name{};
  // Where the sizes differ, scales and offsets are such that the new picture covers what the old
  // one did, as far as a file can hold that.
  bool keepsLook = false;
};

struct ReplaceCount {
  std::size_t faces = 0, brushes = 0;
  std::vector<std::string> missing;  // new names that no WAD of the map has
};

// What is selected when something has been found: the brushes, or, in face edit, the faces.
enum class FoundAs { Brushes, Faces };
void SelectFound(Map& map, const FoundFaces& found, FoundAs as);

// One step, which selects what it changed. The count is of that; faces that have the texture
// already are none.
EditResult ReplaceTextures(Map& map, const FoundFaces& found, const TextureQuery& query,
                           const TextureReplacement& by, FoundAs as, ReplaceCount& count);

}  // namespace ferrowand
