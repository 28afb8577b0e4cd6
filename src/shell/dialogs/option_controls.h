// The controls of the options dialog that show one setting each: which setting, and what may stand
// there.
#pragma once

#include "shell/system/win32.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "base/options.h"

namespace ferrowand {

class Reporter;

// In the order of the tabs.
enum class OptionPage : std::uint8_t { Files, Misc, ThreeD, Keys, Bindings };
inline constexpr std::size_t NUMOPTIONPAGES = 5;

enum class ControlKind : std::uint8_t {
  Text,
  Whole,    // a number in a text box
  Decimal,  // likewise
  Check,
  Choice,  // of a list, the item with that number
  Slider,
  TexelCount,  // "256 x 256"
};

struct OptionControl {
  OptionPage page;
  ControlKind kind;
  int id;
  OptionField field;
  const char* what = "";  // as a message names it
  double least = 0, most = 0;
};

// What the lists offer and how far the sliders go.
void PrepareControls(OptionPage page, HWND dialog);
// An item of a list, by the number that the setting would have.
void AddChoice(HWND dialog, int id, const std::string& text, int number);

void LoadControls(OptionPage page, HWND dialog, const Options& options);
// What is as it was loaded stays as it was set. The control that holds what cannot be, after saying
// so; what stands before it has been stored.
std::optional<int> StoreControls(OptionPage page, HWND dialog, Options& options,
                                 Reporter& reporter);

// The next size that is larger, or smaller, by half of its texels.
void StepTexelCount(HWND dialog, int id, bool larger);

}  // namespace ferrowand
