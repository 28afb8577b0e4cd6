#include "shell/dialogs/option_controls.h"

#include <commctrl.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <type_traits>

#include "base/number_text.h"
#include "base/report.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/resources/resource.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

constexpr double LONGEST = Options::TEXTLENGTH - 1;
constexpr double LEAST_TEXELS = 16 * 16, MOST_TEXELS = 4096 * 4096;
constexpr int MAXTEXT = 512;

using enum ControlKind;

const OptionControl CONTROLS[] = {
    {OptionPage::Files, Text, ID_DEFAULT_WAD, &Options::defaultWad, "The default WAD", 1, LONGEST},
    {OptionPage::Files, Text, ID_DEFAULT_QC, &Options::defaultQc, "The default QC", 1, LONGEST},
    {OptionPage::Files, Text, ID_QUAKE_DIRECTORY, &Options::quakeDirectory, "The Quake directory",
     0, LONGEST},
    {OptionPage::Files, Text, ID_QUAKE_EXECUTABLE, &Options::quakeExecutable,
     "The Quake executable", 0, LONGEST},
    {OptionPage::Files, Text, ID_GROUPS_DIRECTORY, &Options::groupsDirectory,
     "The groups directory", 0, LONGEST},
    {OptionPage::Files, Whole, ID_BACKUPS, &Options::backups, "The number of earlier versions", 0,
     255},
    {OptionPage::Files, Whole, ID_AUTOSAVE_MINUTES, &Options::autosaveMinutes,
     "The time between two savings of unsaved work", 0, 1440},
    {OptionPage::Files, Choice, ID_WORLD_TYPE, &Options::defaultWorldType},
    {OptionPage::Files, Whole, ID_SOUNDS, &Options::defaultSounds, "The CD track", 0, 255},
    {OptionPage::Files, Check, ID_ONLY_ONE_WAD, &Options::exportOnlyOneWad},

    {OptionPage::Misc, Decimal, ID_GAMMA_RED, &Options::gammaRed, "The gamma of red", 0.1, 100},
    {OptionPage::Misc, Decimal, ID_GAMMA_GREEN, &Options::gammaGreen, "The gamma of green", 0.1,
     100},
    {OptionPage::Misc, Decimal, ID_GAMMA_BLUE, &Options::gammaBlue, "The gamma of blue", 0.1, 100},
    {OptionPage::Misc, Whole, ID_TEXTURE_CACHE, &Options::textureCache, "The texture cache", 1,
     65535},
    {OptionPage::Misc, Choice, ID_MIP_TYPE, &Options::mipType},
    {OptionPage::Misc, TexelCount, ID_TEXTURE_SIZE, &Options::maxTextureSize},
    {OptionPage::Misc, Check, ID_NO_TEXTURE_CAPTIONS, &Options::noTextureCaptions},
    {OptionPage::Misc, Whole, ID_UNDO_LEVELS, &Options::undoLevels, "The number of undo levels", 1,
     10000},
    {OptionPage::Misc, Whole, ID_UNDO_MEMORY, &Options::undoMegabytes,
     "The memory of undo, in megabytes (0: by the machine),", 0, 65535},
    {OptionPage::Misc, Whole, ID_ROTATION_STEP, &Options::rotationStep, "The rotation step", 1,
     Options::MAXROTATIONSTEP},
    {OptionPage::Misc, Whole, ID_TRAY_SIZE, &Options::rightTraySize, "The width of the right tray",
     10, 1000},
    {OptionPage::Misc, Text, ID_DEFAULT_ENTITY, &Options::defaultEntity, "The default entity", 1,
     LONGEST},
    {OptionPage::Misc, Check, ID_BLACK_BACK, &Options::blackBack},
    {OptionPage::Misc, Check, ID_ENTITY_NAMES, &Options::entityNames},
    {OptionPage::Misc, Check, ID_LIGHT_RADIUS, &Options::drawLightRadius},
    {OptionPage::Misc, Check, ID_DRAW_TEMPLATES, &Options::drawTemplates},
    {OptionPage::Misc, Check, ID_ENTITY_LINKS, &Options::forceEntityLinks},
    {OptionPage::Misc, Check, ID_PALE_OTHERS, &Options::paleOthers},
    {OptionPage::Misc, Check, ID_LARGE_FONTS, &Options::largeness},
    {OptionPage::Misc, Check, ID_SMALL_CAPTIONS, &Options::smallCaptions},
    {OptionPage::Misc, Check, ID_TOOLBAR_SHOWN, &Options::showToolbar},
    {OptionPage::Misc, Check, ID_TRACK_MOUSE, &Options::trackMouse},
    {OptionPage::Misc, Check, ID_SMART_SELECTION, &Options::smartSelection},
    {OptionPage::Misc, Check, ID_TEXTURE_LOCK, &Options::textureLock},
    {OptionPage::Misc, Check, ID_TIPS_SHOWN, &Options::showTips},
    {OptionPage::Misc, Check, ID_PRIMITIVES_FOLLOW, &Options::primitivesFollow},
    {OptionPage::Misc, Check, ID_HOLLOW_FOLLOWS, &Options::hollowFollows},
    {OptionPage::Misc, Check, ID_CSG_FOLLOWS, &Options::csgFollows},

    {OptionPage::ThreeD, Check, ID_USE_DIRECT3D, &Options::useDirect3D},
    {OptionPage::ThreeD, Check, ID_USE_HARDWARE, &Options::useHardware},
    {OptionPage::ThreeD, Check, ID_DITHER, &Options::dither3D},
    {OptionPage::ThreeD, Check, ID_POINT_ENTITIES, &Options::renderPointEntities},
    {OptionPage::ThreeD, Whole, ID_BACK_CLIP, &Options::backClip, "The back clip", 64, 100000},
    {OptionPage::ThreeD, Choice, ID_MOVE_METHOD, &Options::cameraMoveMethod},
    {OptionPage::ThreeD, Check, ID_USE_JOYSTICK, &Options::useJoystick},
    {OptionPage::ThreeD, Choice, ID_JOYSTICK, &Options::joystickNumber},
    {OptionPage::ThreeD, Slider, ID_JOYSTICK_SPEED, &Options::joystickSpeed, "", 50, 1000},
    {OptionPage::ThreeD, Check, ID_SWAP_PITCH, &Options::swapJoyPitch},
};

template <typename Member>
constexpr bool IS_TEXT = std::is_same_v<Member, std::string Options::*>;

double NumberIn(const Options& options, const OptionField& field) {
  return std::visit(
      [&](auto member) -> double {
        if constexpr (IS_TEXT<decltype(member)>) {
          return 0;
        } else {
          return static_cast<double>(options.*member);
        }
      },
      field);
}

void SetNumber(Options& options, const OptionField& field, double number) {
  std::visit(
      [&](auto member) {
        if constexpr (!IS_TEXT<decltype(member)>) {
          options.*member = static_cast<std::decay_t<decltype(options.*member)>>(number);
        }
      },
      field);
}

std::string DecimalText(double number) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<float>(number),
                                 std::chars_format::fixed);
  return {digits, end.ptr};
}

// Twice as wide as high, or square.
std::string TexelText(double texels) {
  const int power = std::ilogb(std::max(texels, 1.0));
  return Format("%i x %i", 1 << (power + 1) / 2, 1 << power / 2);
}

double TexelsOf(const std::string& text) {
  const std::size_t by = std::min(text.find('x'), text.size() - 1);
  return static_cast<double>(ParseInt(text)) * ParseInt(std::string_view(text).substr(by + 1));
}

std::string ShownText(const OptionControl& control, const Options& options) {
  const double number = NumberIn(options, control.field);
  switch (control.kind) {
    case Text:
      return options.*std::get<std::string Options::*>(control.field);
    case Decimal:
      return DecimalText(number);
    case TexelCount:
      return TexelText(number);
    default:
      return Format("%.0f", number);
  }
}

std::string TextOf(HWND dialog, int id) {
  std::array<wchar_t, MAXTEXT> text{};
  GetDlgItemTextW(dialog, id, text.data(), MAXTEXT);
  return FromWide(text.data());
}

LRESULT Send(HWND dialog, int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  return SendDlgItemMessageW(dialog, id, message, wParam, lParam);
}

// None where no item has the number.
void SelectChoice(HWND dialog, int id, LRESULT number) {
  auto chosen = static_cast<WPARAM>(-1);
  const auto count = static_cast<WPARAM>(Send(dialog, id, CB_GETCOUNT));
  for (WPARAM i = 0; i < count; ++i) {
    if (Send(dialog, id, CB_GETITEMDATA, i) == number) chosen = i;
  }
  Send(dialog, id, CB_SETCURSEL, chosen);
}

void Load(const OptionControl& control, HWND dialog, const Options& options) {
  const double number = NumberIn(options, control.field);
  switch (control.kind) {
    case Check:
      CheckDlgButton(dialog, control.id, number != 0 ? BST_CHECKED : BST_UNCHECKED);
      break;
    case Choice:
      SelectChoice(dialog, control.id, static_cast<LRESULT>(number));
      break;
    case Slider:
      Send(dialog, control.id, TBM_SETPOS, TRUE, static_cast<LPARAM>(number));
      break;
    default:
      SetDlgItemTextW(dialog, control.id, ToWide(ShownText(control, options)).c_str());
  }
}

std::optional<double> TypedNumber(const OptionControl& control, const std::string& typed,
                                  Reporter& reporter) {
  if (control.kind == TexelCount) return TexelsOf(typed);
  if (control.kind == Whole) {
    return WholeNumberOf(reporter, typed, control.what, static_cast<int>(control.least),
                         static_cast<int>(control.most));
  }
  const std::optional<double> number = ReadNumber(typed);
  if (number && *number >= control.least && *number <= control.most) return number;
  reporter.Show("Cannot continue", Format("%s must be a number from %g to %g", control.what,
                                          control.least, control.most));
  return std::nullopt;
}

bool StoreText(const OptionControl& control, const std::string& typed, Options& options,
               Reporter& reporter) {
  if (typed == ShownText(control, options)) return true;
  if (control.kind != Text) {
    const std::optional<double> number = TypedNumber(control, typed, reporter);
    if (number) SetNumber(options, control.field, *number);
    return number.has_value();
  }
  const auto length = static_cast<double>(typed.size());
  if (length < control.least || length > control.most) {
    reporter.Show("Cannot continue",
                  length < control.least
                      ? Format("%s must have a name", control.what)
                      : Format("%s can have %.0f characters at most", control.what, control.most));
    return false;
  }
  options.*std::get<std::string Options::*>(control.field) = typed;
  return true;
}

// What a control says that is no text box; nothing where nothing is chosen.
std::optional<double> ShownNumber(const OptionControl& control, HWND dialog) {
  if (control.kind == Check) return IsDlgButtonChecked(dialog, control.id) == BST_CHECKED ? 1 : 0;
  if (control.kind == Slider) return static_cast<double>(Send(dialog, control.id, TBM_GETPOS));
  const LRESULT chosen = Send(dialog, control.id, CB_GETCURSEL);
  if (chosen == CB_ERR) return std::nullopt;
  return static_cast<double>(Send(dialog, control.id, CB_GETITEMDATA, static_cast<WPARAM>(chosen)));
}

// The same of a setting: any number but 0 is a tick, and a slider ends where it ends.
double AsShown(const OptionControl& control, double number) {
  if (control.kind == Check) return number != 0 ? 1 : 0;
  return control.kind == Slider ? std::clamp(number, control.least, control.most) : number;
}

bool Store(const OptionControl& control, HWND dialog, Options& options, Reporter& reporter) {
  if (control.kind != Check && control.kind != Choice && control.kind != Slider) {
    return StoreText(control, TextOf(dialog, control.id), options, reporter);
  }
  const std::optional<double> shown = ShownNumber(control, dialog);
  if (shown && *shown != AsShown(control, NumberIn(options, control.field))) {
    SetNumber(options, control.field, *shown);
  }
  return true;
}

void PrepareSlider(const OptionControl& control, HWND dialog) {
  const auto least = static_cast<LPARAM>(control.least), most = static_cast<LPARAM>(control.most);
  Send(dialog, control.id, TBM_SETRANGEMIN, FALSE, least);
  Send(dialog, control.id, TBM_SETRANGEMAX, TRUE, most);
  Send(dialog, control.id, TBM_SETTICFREQ, static_cast<WPARAM>(most / 10));
  Send(dialog, control.id, TBM_SETPAGESIZE, 0, most / 10);
}

void AddChoices(HWND dialog, int id, std::initializer_list<const char*> texts) {
  int number = 0;
  for (const char* text : texts) AddChoice(dialog, id, text, number++);
}

}  // namespace

void AddChoice(HWND dialog, int id, const std::string& text, int number) {
  const LRESULT item =
      Send(dialog, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(text).c_str()));
  Send(dialog, id, CB_SETITEMDATA, static_cast<WPARAM>(item), number);
}

void PrepareControls(OptionPage page, HWND dialog) {
  for (const OptionControl& control : CONTROLS) {
    if (control.page != page) continue;
    if (control.kind == Slider) PrepareSlider(control, dialog);
    if (control.kind == Text) {
      Send(dialog, control.id, EM_LIMITTEXT, static_cast<WPARAM>(control.most));
    }
  }
  if (page == OptionPage::Files) {
    AddChoices(dialog, ID_WORLD_TYPE, {"Medieval", "Metal", "Base"});
  } else if (page == OptionPage::Misc) {
    AddChoices(dialog, ID_MIP_TYPE, {"Mip Type Mean", "Mip Type Mode"});
  } else if (page == OptionPage::ThreeD) {
    AddChoices(dialog, ID_MOVE_METHOD, {"Unrestricted", "Like Quake"});
  }
}

void LoadControls(OptionPage page, HWND dialog, const Options& options) {
  for (const OptionControl& control : CONTROLS) {
    if (control.page == page) Load(control, dialog, options);
  }
}

std::optional<int> StoreControls(OptionPage page, HWND dialog, Options& options,
                                 Reporter& reporter) {
  for (const OptionControl& control : CONTROLS) {
    if (control.page == page && !Store(control, dialog, options, reporter)) return control.id;
  }
  return std::nullopt;
}

void StepTexelCount(HWND dialog, int id, bool larger) {
  const double texels = TexelsOf(TextOf(dialog, id));
  const double next = std::clamp(larger ? texels * 2 : texels / 2, LEAST_TEXELS, MOST_TEXELS);
  SetDlgItemTextW(dialog, id, ToWide(TexelText(next)).c_str());
}

}  // namespace ferrowand
