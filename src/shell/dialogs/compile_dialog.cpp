#include "shell/dialogs/compile_dialog.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/options.h"
#include "shell/resources/resource.h"
#include "shell/system/clipboard.h"
#include "shell/system/controls.h"
#include "shell/system/handles.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

struct CheckBox {
  int id;
  std::uint16_t flag;
};
constexpr CheckBox CHECKS[] = {
    {ID_COMPILE_QBSP, COMPILE_QBSP},
    {ID_COMPILE_NO_FILL, COMPILE_NO_FILL},
    {ID_COMPILE_ONLY_ENTITIES, COMPILE_ONLY_ENTITIES},
    {ID_COMPILE_QBSP_VERBOSE, COMPILE_QBSP_VERBOSE},
    {ID_COMPILE_NO_WAIT, COMPILE_NO_WAIT},
    {ID_COMPILE_LIGHT, COMPILE_LIGHT},
    {ID_COMPILE_EXTRA, COMPILE_EXTRA},
    {ID_COMPILE_VIS, COMPILE_VIS},
    {ID_COMPILE_VIS_FAST, COMPILE_VIS_FAST},
    {ID_COMPILE_VIS_VERBOSE, COMPILE_VIS_VERBOSE},
    {ID_COMPILE_GAME, COMPILE_GAME},
    {ID_COMPILE_MEMORY, COMPILE_CONSERVE_MEMORY},
    {ID_COMPILE_ONLY_VISIBLE, COMPILE_ONLY_VISIBLE},
    {ID_COMPILE_AUTO_CLOSE, COMPILE_AUTO_CLOSE},
};

struct ParamsBox {
  int id;
  std::string CompileOptions::*field;
};
constexpr ParamsBox PARAMS[] = {{ID_COMPILE_QBSP_PARAMS, &CompileOptions::qbspParams},
                                {ID_COMPILE_LIGHT_PARAMS, &CompileOptions::lightParams},
                                {ID_COMPILE_VIS_PARAMS, &CompileOptions::visParams},
                                {ID_COMPILE_QUAKE_PARAMS, &CompileOptions::quakeParams}};
constexpr int THREAD_BUTTONS = 4, MAXTHREADS = 255;
constexpr WPARAM LONGEST_NAME = Options::TEXTLENGTH - 1;

class CompileDialog {
 public:
  explicit CompileDialog(const CompileQuestion& question)
      : question_(question), profiles_(question.profiles) {}

  std::optional<CompileOptions> Run(HWND owner) {
    const INT_PTR result = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_COMPILE),
                                           owner, CompileProc, reinterpret_cast<LPARAM>(this));
    return result == IDOK ? std::optional(chosen_) : std::nullopt;
  }

 private:
  static INT_PTR CALLBACK CompileProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      auto* created = reinterpret_cast<CompileDialog*>(lParam);
      SetObject(dialog, created);
      created->OnInit(dialog);
      return FALSE;  // the focus has been set
    }
    auto* box = ObjectOf<CompileDialog>(dialog);
    if (!box || message != WM_COMMAND) return FALSE;
    box->OnCommand(LOWORD(wParam), HIWORD(wParam));
    return TRUE;
  }

  void OnInit(HWND dialog) {
    dialog_ = dialog;
    for (const ParamsBox& box : PARAMS) {
      SendDlgItemMessageW(dialog_, box.id, EM_LIMITTEXT, Options::TEXTLENGTH - 1, 0);
    }
    SendDlgItemMessageW(dialog_, ID_COMPILE_THREADS, EM_LIMITTEXT, 3, 0);
    SendDlgItemMessageW(dialog_, ID_COMPILE_PROFILE, CB_LIMITTEXT, LONGEST_NAME, 0);
    FillProfiles();
    Put(question_.options);
    SetFocus(GetDlgItem(dialog_, IDOK));
  }

  void OnCommand(int id, int notice) {
    if (id == IDOK) chosen_ = Get();
    if (id == IDOK || id == IDCANCEL) {
      EndDialog(dialog_, id);
    } else if (id == ID_COMPILE_PROFILE) {
      if (notice == CBN_SELCHANGE) ShowChosenProfile();
    } else if (notice == BN_CLICKED) {
      OnButton(id);
    }
  }

  void OnButton(int id) {
    if (id >= ID_COMPILE_THREAD_BUTTON && id < ID_COMPILE_THREAD_BUTTON + THREAD_BUTTONS) {
      SetDlgItemInt(dialog_, ID_COMPILE_THREADS,
                    static_cast<UINT>(id - ID_COMPILE_THREAD_BUTTON + 1), FALSE);
      return;
    }
    switch (id) {
      case ID_COMPILE_THREADS_ENABLED:
        return EnableThreads();
      case ID_COMPILE_STANDARD:
        return Put({});
      case ID_COMPILE_KEEP:
        return KeepProfile();
      case ID_COMPILE_DELETE:
        return DeleteProfile();
      case ID_COMPILE_COPY:
        return CopyProfile();
      case ID_COMPILE_PASTE:
        return PasteProfiles();
    }
  }

  // --- the controls

  void Put(const CompileOptions& options) const {
    for (const CheckBox& check : CHECKS) {
      CheckDlgButton(dialog_, check.id, options.Has(check.flag) ? BST_CHECKED : BST_UNCHECKED);
    }
    const int level = std::clamp(int{options.visLevel}, 1, int{MAXVISLEVEL});
    CheckRadioButton(dialog_, ID_COMPILE_LEVEL, ID_COMPILE_LEVEL + MAXVISLEVEL - 1,
                     ID_COMPILE_LEVEL + level - 1);
    CheckDlgButton(dialog_, ID_COMPILE_THREADS_ENABLED,
                   options.threads != 0 ? BST_CHECKED : BST_UNCHECKED);
    SetText(ID_COMPILE_THREADS, options.threads != 0 ? std::to_string(options.threads) : "");
    EnableThreads();
    for (const ParamsBox& box : PARAMS) SetText(box.id, options.*box.field);
  }

  CompileOptions Get() const {
    CompileOptions options;
    options.flags = 0;
    for (const CheckBox& check : CHECKS) {
      if (IsChecked(check.id)) options.flags |= check.flag;
    }
    for (int level = 1; level <= MAXVISLEVEL; ++level) {
      if (IsChecked(ID_COMPILE_LEVEL + level - 1)) {
        options.visLevel = static_cast<std::uint8_t>(level);
      }
    }
    const int threads = std::clamp(ParseInt(TextOf(ID_COMPILE_THREADS)), 0, MAXTHREADS);
    options.threads =
        static_cast<std::uint8_t>(IsChecked(ID_COMPILE_THREADS_ENABLED) ? threads : 0);
    for (const ParamsBox& box : PARAMS) options.*box.field = TextOf(box.id);
    return options;
  }

  void EnableThreads() const {
    const BOOL isOn = IsChecked(ID_COMPILE_THREADS_ENABLED);
    EnableWindow(GetDlgItem(dialog_, ID_COMPILE_THREADS), isOn);
    for (int i = 0; i < THREAD_BUTTONS; ++i) {
      EnableWindow(GetDlgItem(dialog_, ID_COMPILE_THREAD_BUTTON + i), isOn);
    }
  }

  bool IsChecked(int id) const { return IsTicked(dialog_, id); }
  void SetText(int id, const std::string& text) const {
    SetDlgItemTextW(dialog_, id, ToWide(text).c_str());
  }
  std::string TextOf(int id) const { return FromWide(WindowText(GetDlgItem(dialog_, id))); }

  // --- the profiles

  void FillProfiles() const {
    SendDlgItemMessageW(dialog_, ID_COMPILE_PROFILE, CB_RESETCONTENT, 0, 0);
    for (const CompileProfile& profile : profiles_) {
      AddChoice(GetDlgItem(dialog_, ID_COMPILE_PROFILE), ToWide(profile.name));
    }
  }

  void ProfilesChanged(const std::string& name) {
    question_.keepProfiles(profiles_);
    FillProfiles();
    SetText(ID_COMPILE_PROFILE, name);
  }

  void ShowChosenProfile() const {
    const auto index = static_cast<std::size_t>(
        SendDlgItemMessageW(dialog_, ID_COMPILE_PROFILE, CB_GETCURSEL, 0, 0));
    if (index < profiles_.size()) Put(profiles_[index].options);
  }

  // Without brackets: the text form parts profiles by them.
  std::string ProfileName() const {
    std::string name = TextOf(ID_COMPILE_PROFILE);
    std::erase_if(name, [](char c) { return c == '[' || c == ']'; });
    const std::size_t first = name.find_first_not_of(' ');
    return first == name.npos ? "" : name.substr(first, name.find_last_not_of(' ') - first + 1);
  }

  void AskForName() const {
    MessageBeep(MB_ICONWARNING);
    SetFocus(GetDlgItem(dialog_, ID_COMPILE_PROFILE));
  }

  void KeepProfile() {
    const std::string name = ProfileName();
    if (name.empty()) return AskForName();
    PutProfile(profiles_, {name, Get()});
    ProfilesChanged(name);
  }

  void DeleteProfile() {
    const CompileProfile* profile = FindProfile(profiles_, ProfileName());
    if (!profile) return AskForName();
    profiles_.erase(profiles_.begin() + (profile - profiles_.data()));
    ProfilesChanged("");
  }

  void CopyProfile() const {
    const std::string name = ProfileName();
    const CompileProfile shown{name.empty() ? "copied" : name, Get()};
    if (!question_.clipboard->SetText(dialog_, ProfilesText({&shown, 1}))) AskForName();
  }

  void PasteProfiles() {
    const std::vector<CompileProfile> pasted = ReadProfiles(question_.clipboard->Text(dialog_));
    if (pasted.empty()) return AskForName();
    for (const CompileProfile& profile : pasted) PutProfile(profiles_, profile);
    ProfilesChanged(pasted.back().name);
    Put(pasted.back().options);
  }

  const CompileQuestion& question_;
  std::vector<CompileProfile> profiles_;
  CompileOptions chosen_;
  HWND dialog_ = nullptr;
};

}  // namespace

std::optional<CompileOptions> AskCompileOptions(HWND owner, const CompileQuestion& question) {
  return CompileDialog(question).Run(owner);
}

}  // namespace ferrowand
