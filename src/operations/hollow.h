// Solid brushes made into rooms.
#pragma once

#include <optional>
#include <string_view>

namespace ferrowand {

class Map;

inline constexpr const char* WALL_WIDTH_MESSAGE =
    "The wall width must be an integer, and not equal to 0";

// World units; nothing for a text that is no such number.
std::optional<int> ParseWallWidth(std::string_view text);

// Each brush of the selected objects gives way to its walls, which become children of the entity
// that had it. Walls of a negative width stand around the brush instead of inside it. The inner
// faces take the textures of the outer ones, or, where one is named, all new faces that one. What
// is too thin for its walls stays as it is, which is said in one message. False when that is all of
// them, or the width is 0.
bool HollowSelection(Map& map, int width, std::string_view texture = {});

}  // namespace ferrowand
