// The tab of the options dialog that binds entities to keys.
#pragma once

#include "shell/system/win32.h"

#include <vector>

#include "document/bound_entities.h"

namespace ferrowand {

struct OptionsToEdit;

class BindingsPage {
 public:
  // Both outlive it.
  BindingsPage(const OptionsToEdit& edit, HWND page) : edit_(edit), page_(page) {}

  // As they are in use.
  void Load();
  // As they stand in the list.
  std::vector<BoundEntity> Take() { return std::move(items_); }
  void OnCommand(int id, int notification);

 private:
  void Bind();
  void Unbind();
  void Rebind();
  void ShowList(int chosen) const;
  void SetGreys() const;
  int Chosen() const;

  const OptionsToEdit& edit_;
  HWND page_;
  std::vector<BoundEntity> items_;
};

}  // namespace ferrowand
