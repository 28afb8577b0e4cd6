// What is drawn, by material. Every function draws its own textures, always the same ones.
#pragma once

#include <vector>

#include "surface.h"

namespace ferrowand::generator {

std::vector<Image> MakeMasonry(const Palette& palette);
std::vector<Image> MakeMetal(const Palette& palette);
std::vector<Image> MakeWood(const Palette& palette);
std::vector<Image> MakeTech(const Palette& palette);
std::vector<Image> MakeLiquids(const Palette& palette);
// Sky, and what the compilers know by name alone.
std::vector<Image> MakeSpecials(const Palette& palette);

}  // namespace ferrowand::generator
