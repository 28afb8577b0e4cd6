// Files that are taken for maps or WADs by mistake, known by their first bytes.
#pragma once

#include <string>

namespace ferrowand {

// What to tell of a file that is of a kind with no brushes to edit, in whole sentences; empty when
// it may be the text of a map, or cannot be read.
std::string OtherKindText(const std::string& name);

// Why a file is no WAD of textures that can be listed; empty when it is one or cannot be read.
std::string NoWadText(const std::string& name);

}  // namespace ferrowand
