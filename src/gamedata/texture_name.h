// Names of textures: what maps and compilers can hold, and what their signs mean to the game.
#pragma once

#include <string>
#include <string_view>

namespace ferrowand {

// Nothing to say of a name of 1 to 15 characters, none of them a blank, a quote or a line end: maps
// and the compilers can hold it. Else why not.
std::string WhyNoTextureName(std::string_view name);

// The names of files may not have the sign that liquids begin with: "#lava" is "*lava".
std::string TextureNameOfFile(std::string_view path);
std::string FileNameOfTexture(std::string_view name);

// What the frames of an animation ("+0" to "+9" and "+a" to "+j" before one name) have in common,
// in small letters; empty for what is no frame.
std::string AnimationOf(std::string_view name);

}  // namespace ferrowand
