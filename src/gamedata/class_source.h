// A file that classes were read from, or that was looked for, as it was before that.
#pragma once

#include <optional>
#include <string>

#include "platform/file.h"

namespace ferrowand {

struct ClassSource {
  std::string path;
  std::optional<FileStamp> stamp;  // none where it was not there
};

}  // namespace ferrowand
