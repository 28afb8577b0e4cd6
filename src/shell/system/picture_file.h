// Pictures of other programs, read by the system's own imaging (PNG, BMP, and what else it knows)
// and by ours (TGA).
#pragma once

#include <optional>
#include <string>

#include "gamedata/picture.h"

namespace ferrowand {

inline constexpr char PICTURE_FILTER[] =
    "Pictures (*.pcx, *.png, *.bmp, *.tga)|*.pcx;*.png;*.bmp;*.tga|PCX files(*.pcx)|*.pcx|";

// Nothing for what is no picture, is damaged, or has no possible size; `why` then says so.
std::optional<Picture> ReadPictureFile(const std::string& path, std::string& why);

// Of a picture that is too large, or has no pixels.
std::string NoSizeText(const std::string& path);

}  // namespace ferrowand
