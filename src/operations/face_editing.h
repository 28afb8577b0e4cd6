// Work on picked faces, within a step of editing.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "operations/face_alignment.h"

namespace ferrowand {

class EditStep;
class Map;
class entity;

// By how much a texture misses what it was meant to be.
std::string MissInWords(double texels);
inline constexpr double TOLD_MISS = 0.5;  // texels: one of no more is not told

// How a face is to be laid; nothing where it is to stay as it is.
using FaceChange = std::function<std::optional<Settled>(const PickedFace&)>;

// What cannot be seen cannot be laid.
std::vector<PickedFace> WithShape(std::span<const PickedFace> faces);
// One after the other. Misses of more than half a texel are told.
void ChangeFaces(EditStep& step, std::span<const PickedFace> faces, const FaceChange& change);
void FitFaces(EditStep& step, std::span<const PickedFace> faces, const FitHow& how, bool asOne);
void JustifyFaces(EditStep& step, std::span<const PickedFace> faces, FaceSide side, bool asOne);
// The texture of that name, and how it is to lie; without that it stays as it lies.
void GiveLook(EditStep& step, const PickedFace& face, std::string_view texture,
              const std::optional<TexturePlacement>& placement);

// What faces have in common: nothing where they differ.
struct FaceFacts {
  std::array<std::optional<float>, PLACEMENT_FIELDS> values;
  std::optional<std::string> texture;
  std::size_t brushes = 0;
};
FaceFacts FactsOf(std::span<const PickedFace> faces);

// --- which faces

std::vector<PickedFace> FacesOf(entity& brush);
// Those that all of them, or their inverse, are picked from: of the selected brushes, or of all
// that can be reached where none is selected.
std::vector<PickedFace> FacesInQuestion(Map& map);
void PickAllFaces(Map& map);
// Those of the selected brushes, if any are.
void PickSelectedFaces(Map& map);
void InvertPickedFaces(Map& map);
// What is picked, and more: all of the brushes, all in the same planes, all with the same textures.
enum class PickMore { Brushes, Planes, Textures };
void PickMoreFaces(Map& map, PickMore which);

}  // namespace ferrowand
