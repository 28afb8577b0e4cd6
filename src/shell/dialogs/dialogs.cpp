#include "shell/dialogs/dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <array>

#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

INT_PTR CALLBACK AboutFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
  if (message == WM_INITDIALOG) return TRUE;
  if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)) return FALSE;
  EndDialog(dialog, IDOK);
  return TRUE;
}

}  // namespace

unsigned Dialogs::TrackAtCursor(HWND owner, HMENU menu) {
  POINT at;
  GetCursorPos(&at);
  return TrackPopup(owner, menu, at);
}

std::optional<std::string> SystemDialogs::ChooseFile(const FileChoice& choice) {
  std::string filter = choice.filter;
  std::ranges::replace(filter, '|', '\0');
  std::array<char, 1024> path{};
  choice.name.copy(path.data(), path.size() - 1);

  OPENFILENAMEA chooser{};
  chooser.lStructSize = sizeof chooser;
  chooser.hwndOwner = owner_;
  chooser.lpstrFilter = filter.c_str();
  chooser.nFilterIndex = choice.filterIndex;
  chooser.lpstrFile = path.data();
  chooser.nMaxFile = static_cast<DWORD>(path.size());
  chooser.lpstrTitle = choice.title.empty() ? nullptr : choice.title.c_str();
  chooser.lpstrDefExt = choice.extension.empty() ? nullptr : choice.extension.c_str();
  chooser.Flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
  chooser.Flags |= choice.saving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST;
  const BOOL chosen = choice.saving ? GetSaveFileNameA(&chooser) : GetOpenFileNameA(&chooser);
  if (!chosen) return std::nullopt;
  return std::string(path.data());
}

std::optional<Colour> SystemDialogs::ChooseColour(Colour colour) {
  CHOOSECOLORA chooser{};
  chooser.lStructSize = sizeof chooser;
  chooser.hwndOwner = owner_;
  chooser.rgbResult = RGB(colour.red, colour.green, colour.blue);
  chooser.lpCustColors = ownColours_.data();
  chooser.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (!ChooseColorA(&chooser)) return std::nullopt;
  return Colour{GetRValue(chooser.rgbResult), GetGValue(chooser.rgbResult),
                GetBValue(chooser.rgbResult)};
}

unsigned SystemDialogs::TrackPopup(HWND owner, HMENU menu, POINT screen) {
  const UINT flags = TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD;
  return static_cast<unsigned>(TrackPopupMenu(menu, flags, screen.x, screen.y, 0, owner, nullptr));
}

void SystemDialogs::ShowAbout() {
  DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(ID_ABOUT), owner_, AboutFunc, 0);
}

bool SystemDialogs::Ask(const Form& form) {
  return AskForm(owner_, form);
}

}  // namespace ferrowand
