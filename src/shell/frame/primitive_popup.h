// The popup of the primitives that the toolbar opens: the toolbar's pictures with their words.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include "shell/system/handles.h"

namespace ferrowand {

class PrimitivePopup {
 public:
  explicit PrimitivePopup(HINSTANCE instance);
  ~PrimitivePopup();
  PrimitivePopup(const PrimitivePopup&) = delete;
  PrimitivePopup& operator=(const PrimitivePopup&) = delete;

  HMENU Menu() const { return menu_.get(); }
  // What the window that tracks it is asked by the system.
  void Measure(MEASUREITEMSTRUCT& item) const;
  void Draw(const DRAWITEMSTRUCT& item) const;

 private:
  OwnedMenu menu_;
  HIMAGELIST pictures_;
};

}  // namespace ferrowand
