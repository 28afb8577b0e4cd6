#include "base/key_bindings.h"

#include <algorithm>
#include <span>

namespace ferrowand {
namespace {

constexpr std::array<const char*, Options::NUMKEYACTIONS> LABELS{
    "Move forward", "Backtrack",   "Look left",    "Look right", "Move Up",
    "Move Down",    "Strafe Left", "Strafe Right", "Mlook",      "Run",
    "Roll Left",    "Roll Right",  "Look up",      "Look down",
};

struct NamedKey {
  int code;
  const char* name;
};

constexpr NamedKey NAMED[] = {
    {1, "Left mouse button"},
    {2, "Right mouse button"},
    {3, "Cancel"},
    {4, "Middle mouse button"},
    {8, "Backspace"},
    {9, "TAB"},
    {12, "Clear"},
    {13, "Return"},
    {16, "Shift"},
    {17, "Control"},
    {18, "Alt"},
    {19, "Pause"},
    {20, "Caps lock"},
    {27, "Escape"},
    {32, "Space"},
    {33, "Page Up"},
    {34, "Page Down"},
    {35, "End"},
    {36, "Home"},
    {37, "Left"},
    {38, "Up"},
    {39, "Right"},
    {40, "Down"},
    {41, "Select"},
    {42, "Print"},
    {43, "Execute"},
    {44, "Snapshot"},
    {45, "Insert"},
    {46, "Delete"},
    {47, "Help"},
    {91, "Left windows button"},
    {92, "Right windows button"},
    {93, "Apps button"},
    {106, "Multiply"},
    {107, "Add"},
    {108, "Separator"},
    {109, "Subtract"},
    {110, "Decimal point"},
    {111, "Divide"},
    {144, "Numlock"},
    {145, "Scroll lock"},
    {160, "Left shift"},
    {161, "Right shift"},
    {162, "Left control"},
    {163, "Right control"},
    {164, "Left alt"},
    {165, "Right alt"},
};

constexpr int PAD_0 = 96, PAD_9 = 105, F1 = 112, F24 = 135;
constexpr int SHIFT = 16, ALT = 18, LEFT_SHIFT = 160;

bool Has(const Options& options, int code) {
  return std::ranges::any_of(
      options.keys, [code](const auto& pair) { return pair[0] == code || pair[1] == code; });
}

}  // namespace

const char* LabelOf(KeyAction action) {
  return LABELS[static_cast<std::size_t>(action)];
}

std::string KeyName(int code) {
  const bool isItself = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z');
  if (isItself) return std::string(1, static_cast<char>(code));
  if (code >= PAD_0 && code <= PAD_9) return "Numeric pad " + std::to_string(code - PAD_0);
  if (code >= F1 && code <= F24) return "F" + std::to_string(code - F1 + 1);
  const auto named = std::ranges::find(NAMED, code, &NamedKey::code);
  return named == std::end(NAMED) ? "Unknown key" : named->name;
}

bool IsBound(const Options& options, int code) {
  if (Has(options, code)) return true;
  if (code < SHIFT || code > ALT) return false;
  const int left = LEFT_SHIFT + 2 * (code - SHIFT);
  return Has(options, left) || Has(options, left + 1);
}

}  // namespace ferrowand
