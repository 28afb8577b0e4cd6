#include "shell/dialogs/bindings_page.h"

#include <algorithm>
#include <string>

#include "base/key_bindings.h"
#include "base/report.h"
#include "document/action.h"
#include "document/classes/class_set.h"
#include "shell/dialogs/bind_key.h"
#include "shell/dialogs/options_dialog.h"
#include "shell/dialogs/set_key_dialog.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Named, so that it can be told in the list.
EntityPtr MakePrototype(const ClassSet& classes, const std::string& classname) {
  auto prototype = std::make_unique<entity>(classes);
  prototype->ClearKeys();
  prototype->SetKey("classname", classname);
  prototype->SetKey("XMPentityname", classname);
  prototype->ResolveClasses(classes);
  return prototype;
}

}  // namespace

void BindingsPage::Load() {
  items_.clear();
  for (const BoundEntity& item : edit_.boundEntities.items) {
    if (item.prototype) items_.push_back({item.key, item.prototype->Copy()});
  }
  const std::string taken = edit_.selected
                                ? "Add takes what is selected: " + InWords(*edit_.selected)
                                : "Add takes the default entity: " + edit_.options.defaultEntity;
  SetDlgItemTextW(page_, ID_TO_BIND, ToWide(taken).c_str());
  ShowList(0);
}

int BindingsPage::Chosen() const {
  return static_cast<int>(SendDlgItemMessageW(page_, ID_BOUND_LIST, LB_GETCURSEL, 0, 0));
}

void BindingsPage::ShowList(int chosen) const {
  SendDlgItemMessageW(page_, ID_BOUND_LIST, LB_RESETCONTENT, 0, 0);
  for (const BoundEntity& item : items_) {
    AddLine(GetDlgItem(page_, ID_BOUND_LIST),
            ToWide(Format("%s (%s)", NameOf(*item.prototype).c_str(), KeyName(item.key).c_str())));
  }
  const int last = static_cast<int>(items_.size()) - 1;
  SendDlgItemMessageW(page_, ID_BOUND_LIST, LB_SETCURSEL,
                      static_cast<WPARAM>(std::min(chosen, last)), 0);
  SetGreys();
}

void BindingsPage::SetGreys() const {
  const BOOL isChosen = Chosen() >= 0;
  // A button that goes grey under the focus would keep the keys from everything else.
  const HWND focus = GetFocus();
  if (!isChosen &&
      (focus == GetDlgItem(page_, ID_UNBIND) || focus == GetDlgItem(page_, ID_REBIND))) {
    SetFocus(GetDlgItem(page_, ID_BIND));
  }
  EnableWindow(GetDlgItem(page_, ID_UNBIND), isChosen);
  EnableWindow(GetDlgItem(page_, ID_REBIND), isChosen);
  EnableWindow(GetDlgItem(page_, ID_BIND), items_.size() < MAXBOUND);
}

void BindingsPage::Bind() {
  if (!edit_.selected && !edit_.classes.FindClass(edit_.options.defaultEntity).StandsAtPoint()) {
    return RefuseToBind(edit_.reporter);
  }
  const int key = AskFreeKey(GetParent(page_), items_, edit_.reporter);
  if (key == NO_KEY) return;
  EntityPtr prototype = edit_.selected ? edit_.selected->Copy()
                                       : MakePrototype(edit_.classes, edit_.options.defaultEntity);
  items_.push_back({static_cast<std::uint8_t>(key), std::move(prototype)});
  ShowList(static_cast<int>(items_.size()) - 1);
}

void BindingsPage::Unbind() {
  const int chosen = Chosen();
  if (chosen < 0) return;
  items_.erase(items_.begin() + chosen);
  ShowList(chosen);
}

void BindingsPage::Rebind() {
  const int chosen = Chosen();
  const int key = chosen < 0 ? NO_KEY : AskFreeKey(GetParent(page_), items_, edit_.reporter);
  if (key == NO_KEY) return;
  items_[static_cast<std::size_t>(chosen)].key = static_cast<std::uint8_t>(key);
  ShowList(chosen);
}

void BindingsPage::OnCommand(int id, int notification) {
  switch (id) {
    case ID_BIND:
      return Bind();
    case ID_UNBIND:
      return Unbind();
    case ID_REBIND:
      return Rebind();
    case ID_BOUND_LIST:
      if (notification == LBN_DBLCLK) return Rebind();
      return SetGreys();
  }
}

}  // namespace ferrowand
