// Direct3D 9, and an owner for its objects.
#pragma once

#include "shell/system/win32.h"

#include <d3d9.h>

#include "shell/system/com.h"

namespace ferrowand {

template <typename T>
using OwnedD3d = OwnedCom<T>;

}  // namespace ferrowand
