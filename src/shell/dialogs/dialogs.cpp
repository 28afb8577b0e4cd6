#include "shell/dialogs/dialogs.h"

#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <memory>

#include "shell/dialogs/options_dialog.h"
#include "shell/resources/resource.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

constexpr std::size_t LONGEST_PATH = 32768;  // characters

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
  std::wstring filter = ToWide(choice.filter), name = ToWide(choice.name);
  std::ranges::replace(filter, L'|', L'\0');
  const std::wstring title = ToWide(choice.title), extension = ToWide(choice.extension);
  name.resize(LONGEST_PATH);

  OPENFILENAMEW chooser{};
  chooser.lStructSize = sizeof chooser;
  chooser.hwndOwner = choice.owner ? choice.owner : owner_;
  chooser.lpstrFilter = filter.c_str();
  chooser.nFilterIndex = choice.filterIndex;
  chooser.lpstrFile = name.data();
  chooser.nMaxFile = static_cast<DWORD>(name.size());
  chooser.lpstrTitle = title.empty() ? nullptr : title.c_str();
  chooser.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  chooser.Flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
  chooser.Flags |= choice.saving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST;
  const BOOL chosen = choice.saving ? GetSaveFileNameW(&chooser) : GetOpenFileNameW(&chooser);
  if (!chosen) return std::nullopt;
  return FromWide(name.c_str());
}

std::optional<std::string> SystemDialogs::ChooseFolder(HWND owner, const std::string& title) {
  const std::wstring words = ToWide(title);
  std::array<wchar_t, MAX_PATH> path{};
  BROWSEINFOW chooser{};
  chooser.hwndOwner = owner;
  chooser.pszDisplayName = path.data();
  chooser.lpszTitle = words.c_str();
  chooser.ulFlags = BIF_RETURNONLYFSDIRS;
  const std::unique_ptr<ITEMIDLIST, decltype(&CoTaskMemFree)> chosen(SHBrowseForFolderW(&chooser),
                                                                     &CoTaskMemFree);
  if (!chosen || !SHGetPathFromIDListW(chosen.get(), path.data())) return std::nullopt;
  return FromWide(path.data());
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

bool SystemDialogs::AskOptions(const OptionsToEdit& edit) {
  return ferrowand::AskOptions(owner_, *this, edit);
}

std::optional<CompileOptions> SystemDialogs::AskCompile(const CompileQuestion& question) {
  return AskCompileOptions(owner_, question);
}

}  // namespace ferrowand
