// What a folder holds, as the system lists it.
#pragma once

#include <string>
#include <vector>

namespace ferrowand {

// Names of all files, without the folders, in no order; none where it cannot be read.
std::vector<std::string> FileNames(const std::string& directory);

}  // namespace ferrowand
