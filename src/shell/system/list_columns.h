// Lists of rows: their columns, and which of them is chosen.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <span>
#include <string>

namespace ferrowand {

// Each so many hundredths of the room that the list has now beside its scroll bar.
void AddListColumns(HWND list, std::span<const wchar_t* const> headings,
                    std::span<const int> shares);

// In the parent: of lines, one under the other, under no heading.
HWND AddLineList(HWND parent, int id);
// That a column must have for that text. Pixels.
int WidthFor(HWND list, const std::string& text);

// Is chosen, and in sight. In a list where several can be, the others stay chosen.
void ChooseRow(HWND list, int row);

// The row that is about to be painted, as the one that takes what is dragged: a list that asks for
// its rows keeps no such state of them.
void PaintAsTarget(NMLVCUSTOMDRAW& draw);

}  // namespace ferrowand
