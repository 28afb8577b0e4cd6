#include "shell/dialogs/options_dialog.h"

#include <commctrl.h>
#include <uxtheme.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>

#include "base/key_bindings.h"
#include "base/path_text.h"
#include "base/report.h"
#include "gamedata/class_file.h"
#include "shell/dialogs/bindings_page.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/option_controls.h"
#include "shell/dialogs/set_key_dialog.h"
#include "shell/resources/resource.h"
#include "shell/system/handles.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

struct PageRow {
  const wchar_t* title;
  int resource;
};

constexpr std::array<PageRow, NUMOPTIONPAGES> PAGES{{
    {L"Files", ID_OPTIONS_FILES},
    {L"Misc", ID_OPTIONS_MISC},
    {L"3D options", ID_OPTIONS_3D},
    {L"Keys", ID_OPTIONS_KEYS},
    {L"Entity bindings", ID_OPTIONS_BINDINGS},
}};

constexpr char WAD_FILTER[] = "Wad archives (*.wad)|*.wad|";
constexpr char PROGRAM_FILTER[] =
    "Executables (*.exe, *.com, *.bat, *.pif)|*.exe;*.com;*.bat;*.pif|Quake|quake.exe|"
    "WinQuake|winquake.exe|";

const char* TypeOf(const JoystickInfo& joystick) {
  if (joystick.axes >= JOYSTICK_AXES) return "SpaceOrb or simular";
  return joystick.axes > 2 ? "Extra axis" : "Normal";
}

class OptionsDialog {
 public:
  OptionsDialog(Dialogs& dialogs, const OptionsToEdit& edit) : dialogs_(dialogs), edit_(edit) {}

  bool Run(HWND owner) {
    return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_OPTIONS), owner,
                           SheetFunc, reinterpret_cast<LPARAM>(this)) == IDOK;
  }

 private:
  static INT_PTR CALLBACK SheetFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      SetObject(dialog, reinterpret_cast<void*>(lParam));
      ObjectOf<OptionsDialog>(dialog)->OnInit(dialog);
      return FALSE;  // the focus has been set
    }
    auto* object = ObjectOf<OptionsDialog>(dialog);
    if (!object) return FALSE;
    if (message == WM_NOTIFY) {
      if (reinterpret_cast<const NMHDR*>(lParam)->code == TCN_SELCHANGE) object->OnTab();
      return FALSE;
    }
    if (message != WM_COMMAND) return FALSE;
    object->OnCommand(LOWORD(wParam));
    return TRUE;
  }

  static INT_PTR CALLBACK PageFunc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      SetObject(page, reinterpret_cast<void*>(lParam));
      return FALSE;
    }
    auto* object = ObjectOf<OptionsDialog>(page);
    if (!object || !object->isReady_ || message != WM_COMMAND) return FALSE;
    object->OnPageCommand(page, LOWORD(wParam), HIWORD(wParam));
    return TRUE;
  }

  HWND Page(OptionPage page) const { return pages_[static_cast<std::size_t>(page)]; }
  HWND Tabs() const { return GetDlgItem(dialog_, ID_OPTIONS_TABS); }

  void OnInit(HWND dialog) {
    dialog_ = dialog;
    for (std::size_t i = 0; i < NUMOPTIONPAGES; ++i) AddPage(static_cast<OptionPage>(i));
    AddJoysticks();
    bindings_ = std::make_unique<BindingsPage>(edit_, Page(OptionPage::Bindings));
    for (std::size_t i = 0; i < NUMOPTIONPAGES; ++i) Load(static_cast<OptionPage>(i));
    isReady_ = true;
    Show(OptionPage::Files);
    Focus(ID_DEFAULT_WAD);
  }

  void AddPage(OptionPage page) {
    const auto index = static_cast<std::size_t>(page);
    TCITEMW tab{};
    tab.mask = TCIF_TEXT;
    tab.pszText = const_cast<wchar_t*>(PAGES[index].title);
    SendMessageW(Tabs(), TCM_INSERTITEMW, index, reinterpret_cast<LPARAM>(&tab));
    const HWND window =
        CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(PAGES[index].resource),
                           dialog_, PageFunc, reinterpret_cast<LPARAM>(this));
    pages_[index] = window;
    EnableThemeDialogTexture(window, ETDT_ENABLETAB);
    RECT room;
    GetWindowRect(Tabs(), &room);
    MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&room), 2);
    SendMessageW(Tabs(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&room));
    SetWindowPos(window, HWND_TOP, room.left, room.top, room.right - room.left,
                 room.bottom - room.top, 0);
    PrepareControls(page, window);
  }

  // One that is set but not attached stays set.
  void AddJoysticks() {
    const HWND page = Page(OptionPage::ThreeD);
    bool isAttached = false;
    for (const JoystickInfo& joystick : edit_.joysticks) {
      AddChoice(page, ID_JOYSTICK,
                Format("Joystick %u: %s", joystick.number, joystick.name.c_str()),
                static_cast<int>(joystick.number));
      isAttached |= joystick.number == edit_.options.joystickNumber;
    }
    if (isAttached) return;
    const unsigned number = edit_.options.joystickNumber;
    AddChoice(page, ID_JOYSTICK, Format("Joystick %u: %s", number, "not attached"),
              static_cast<int>(number));
  }

  void ShowJoystickType() const {
    const HWND page = Page(OptionPage::ThreeD);
    const LRESULT chosen = SendDlgItemMessageW(page, ID_JOYSTICK, CB_GETCURSEL, 0, 0);
    const auto index = static_cast<std::size_t>(std::max<LRESULT>(chosen, 0));
    SetDlgItemTextA(page, ID_JOYSTICK_TYPE,
                    index < edit_.joysticks.size() ? TypeOf(edit_.joysticks[index]) : "");
  }

  void Load(OptionPage page) {
    LoadControls(page, Page(page), edit_.options);
    if (page == OptionPage::ThreeD) ShowJoystickType();
    if (page == OptionPage::Bindings) bindings_->Load();
    if (page == OptionPage::Keys) {
      keys_ = edit_.options.keys;
      for (int button = 0; button < NUM_KEY_BUTTONS; ++button) ShowKey(button);
    }
  }

  void Show(OptionPage page) {
    for (const HWND window : pages_) ShowWindow(window, window == Page(page) ? SW_SHOWNA : SW_HIDE);
    SendMessageW(Tabs(), TCM_SETCURSEL, static_cast<WPARAM>(page), 0);
    // Not left in what is out of sight.
    if (page != shown_ && IsChild(Page(shown_), GetFocus())) SetFocus(Tabs());
    shown_ = page;
  }

  // All of a text box is selected.
  void Focus(int control) const {
    SetFocus(GetDlgItem(Page(shown_), control));
    SendDlgItemMessageW(Page(shown_), control, EM_SETSEL, 0, -1);
  }

  void OnTab() { Show(static_cast<OptionPage>(SendMessageW(Tabs(), TCM_GETCURSEL, 0, 0))); }

  void OnCommand(int id) {
    if (id == ID_OPTIONS_UNDO) Load(shown_);
    if (id == IDCANCEL || (id == IDOK && Accept())) EndDialog(dialog_, id);
  }

  bool Accept() {
    Options accepted = edit_.options;
    for (std::size_t i = 0; i < NUMOPTIONPAGES; ++i) {
      const auto page = static_cast<OptionPage>(i);
      const auto refused = StoreControls(page, Page(page), accepted, edit_.reporter);
      if (!refused) continue;
      Show(page);
      Focus(*refused);
      return false;
    }
    accepted.keys = keys_;
    edit_.options = accepted;
    edit_.boundEntities.items = bindings_->Take();
    return true;
  }

  void OnPageCommand(HWND page, int id, int notification) {
    if (page == Page(OptionPage::Bindings)) return bindings_->OnCommand(id, notification);
    if (page == Page(OptionPage::Keys)) return ChangeKey(id - ID_FIRST_KEY);
    switch (id) {
      case ID_CHOOSE_WAD:
        return ChooseFile(ID_DEFAULT_WAD, "Default WAD", WAD_FILTER);
      case ID_CHOOSE_QC:
        return ChooseFile(ID_DEFAULT_QC, "Default QC", CLASS_FILE_FILTER);
      case ID_CHOOSE_EXECUTABLE:
        return ChooseExecutable();
      case ID_CHOOSE_DIRECTORY:
        return ChooseFolder(ID_QUAKE_DIRECTORY, "Quake directory");
      case ID_CHOOSE_GROUPS:
        return ChooseFolder(ID_GROUPS_DIRECTORY, "Groups directory");
      case ID_TEXTURES_LARGER:
      case ID_TEXTURES_SMALLER:
        return StepTexelCount(page, ID_TEXTURE_SIZE, id == ID_TEXTURES_LARGER);
      case ID_JOYSTICK:
        if (notification == CBN_SELCHANGE) ShowJoystickType();
        return;
    }
  }

  void SetFile(int control, const std::string& path) const {
    SetDlgItemTextW(Page(OptionPage::Files), control, ToWide(path).c_str());
  }

  void ChooseFile(int control, const char* title, const char* filter) {
    FileChoice choice;
    choice.title = title;
    choice.filter = filter;
    choice.owner = dialog_;
    if (const auto path = dialogs_.ChooseFile(choice)) SetFile(control, *path);
  }

  // It is started in the Quake directory, by the name that it has there.
  void ChooseExecutable() {
    FileChoice choice;
    choice.title = "Quake executable";
    choice.filter = PROGRAM_FILTER;
    choice.owner = dialog_;
    const auto path = dialogs_.ChooseFile(choice);
    if (!path) return;
    const PathParts parts = SplitPath(*path);
    SetFile(ID_QUAKE_EXECUTABLE, parts.base + parts.extension);
    if (parts.directory.empty()) return;
    const bool isRoot = parts.directory.size() <= 3;
    SetFile(ID_QUAKE_DIRECTORY,
            isRoot ? parts.directory : parts.directory.substr(0, parts.directory.size() - 1));
  }

  void ChooseFolder(int control, const char* title) {
    if (const auto folder = dialogs_.ChooseFolder(dialog_, title)) SetFile(control, *folder);
  }

  void ShowKey(int button) const {
    const auto index = static_cast<std::size_t>(button);
    SetDlgItemTextA(Page(OptionPage::Keys), ID_FIRST_KEY + button,
                    KeyName(keys_[index / 2][index % 2]).c_str());
  }

  void ChangeKey(int button) {
    if (button < 0 || button >= NUM_KEY_BUTTONS) return;
    const int key = AskKey(dialog_);
    if (key == NO_KEY) return;
    const auto index = static_cast<std::size_t>(button);
    keys_[index / 2][index % 2] = static_cast<std::uint8_t>(key);
    ShowKey(button);
  }

  static constexpr int NUM_KEY_BUTTONS = 2 * static_cast<int>(Options::NUMKEYACTIONS);

  Dialogs& dialogs_;
  const OptionsToEdit& edit_;
  HWND dialog_ = nullptr;
  std::array<HWND, NUMOPTIONPAGES> pages_{};
  bool isReady_ = false;  // controls tell of their own changes before
  OptionPage shown_ = OptionPage::Files;
  decltype(Options::keys) keys_{};
  std::unique_ptr<BindingsPage> bindings_;
};

}  // namespace

bool AskOptions(HWND owner, Dialogs& dialogs, const OptionsToEdit& edit) {
  return OptionsDialog(dialogs, edit).Run(owner);
}

}  // namespace ferrowand
