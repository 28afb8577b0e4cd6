// Files of the game as keys of entities name them.
#pragma once

#include <string>
#include <string_view>

namespace ferrowand {

// With slashes, from where the game counts: a sound from the folder "sound", anything else from the
// folder of the game or of a mod, which lies in `quakeDirectory`. A file that lies nowhere there by
// its name alone.
std::string GameFileForKey(std::string_view path, std::string_view quakeDirectory);

}  // namespace ferrowand
