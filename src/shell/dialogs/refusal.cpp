#include "shell/dialogs/refusal.h"

#include "base/report.h"
#include "document/map.h"

namespace ferrowand {

bool Conclude(const Map& map, EditResult result) {
  if (const char* why = Reason(result); *why) {
    map.Data().reporter.Show("Cannot continue", why);
  }
  return result == EditResult::Done;
}

}  // namespace ferrowand
