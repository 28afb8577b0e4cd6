// Direct3D 9, and an owner for its objects.
#pragma once

#include "shell/system/win32.h"

#include <d3d9.h>

#include <memory>

namespace ferrowand {

struct D3dRelease {
  template <typename T>
  void operator()(T* object) const {
    object->Release();
  }
};
template <typename T>
using OwnedD3d = std::unique_ptr<T, D3dRelease>;

}  // namespace ferrowand
