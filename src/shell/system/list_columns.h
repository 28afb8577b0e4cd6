// Columns of a list of rows.
#pragma once

#include "shell/system/win32.h"

#include <span>

namespace ferrowand {

// Each so many hundredths of the room that the list has now beside its scroll bar.
void AddListColumns(HWND list, std::span<const wchar_t* const> headings,
                    std::span<const int> shares);

}  // namespace ferrowand
