// An owner for objects of the system's component model.
#pragma once

#include <memory>

namespace ferrowand {

struct ComRelease {
  template <typename T>
  void operator()(T* object) const {
    object->Release();
  }
};
template <typename T>
using OwnedCom = std::unique_ptr<T, ComRelease>;

}  // namespace ferrowand
