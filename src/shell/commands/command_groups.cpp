#include "shell/commands/command_groups.h"

#include "base/report.h"
#include "document/map.h"

namespace ferrowand {

bool RequireSelection(const Map& map, Reporter& reporter, const char* title, const char* text) {
  if (!map.selection.empty()) return true;
  reporter.Show(title, text);
  return false;
}

}  // namespace ferrowand
