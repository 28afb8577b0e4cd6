#include "shell/dialogs/bind_key.h"

#include <algorithm>

#include "base/key_bindings.h"
#include "base/report.h"
#include "document/classes/entity_class.h"
#include "shell/dialogs/set_key_dialog.h"

namespace ferrowand {

bool CanBind(const entity& e) {
  return e.getClass()->StandsAtPoint() && e.getEntityList().empty() && !e.brush.HasText();
}

void RefuseToBind(Reporter& reporter) {
  reporter.Show("Cannot continue", "Only point entities can be bound to a key");
}

std::string NameOf(const entity& prototype) {
  const char* name = prototype.GetKey("XMPentityname");
  return name ? name : "Unnamed";
}

int AskFreeKey(HWND owner, const std::vector<BoundEntity>& bound, Reporter& reporter) {
  const int key = AskKey(owner);
  const auto same = std::ranges::find_if(
      bound, [key](const BoundEntity& item) { return item.key == key && item.prototype; });
  if (key == NO_KEY || same == bound.end()) return key;
  reporter.Show("Cannot continue", Format("%s is bound to %s already", KeyName(key).c_str(),
                                          NameOf(*same->prototype).c_str()));
  return NO_KEY;
}

bool BindToKey(HWND owner, const entity& e, BoundEntities& bound, Reporter& reporter) {
  if (!CanBind(e)) {
    RefuseToBind(reporter);
    return false;
  }
  std::erase_if(bound.items, [](const BoundEntity& item) { return !item.prototype; });
  if (bound.items.size() >= MAXBOUND) {
    reporter.Show("Cannot continue", "There are as many bound entities as can be kept");
    return false;
  }
  const int key = AskFreeKey(owner, bound.items, reporter);
  if (key == NO_KEY) return false;
  bound.items.push_back({static_cast<std::uint8_t>(key), e.Copy()});
  return true;
}

}  // namespace ferrowand
