// One box for every command that wants a few values first: labels with text boxes or lists.
#pragma once

#include "shell/ui/win32.h"

#include <optional>
#include <string>
#include <vector>

namespace ferrowand {

struct FormField {
  std::string label;
  std::string value;                 // shown at first
  std::vector<std::string> choices;  // if any, one of them is chosen
};

struct Form {
  std::string title;
  std::vector<FormField> fields;
};

// The values as they were typed, one a field; nothing when the user thinks better of it.
std::optional<std::vector<std::string>> AskForm(HWND owner, const Form& form);

}  // namespace ferrowand
