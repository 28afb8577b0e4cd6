// One box for every command that wants a few values first: rows of text boxes or lists, each with
// its label.
#pragma once

#include "shell/system/win32.h"

#include <functional>
#include <string>
#include <vector>

namespace ferrowand {

struct FormRow {
  std::string label;
  std::vector<std::string> values;   // shown at first: a text box each, beside each other
  std::vector<std::string> choices;  // if any, one of them is chosen instead
  bool isText = false;               // a single box then has the width of all columns
};

// One for each text box and list, in their order.
using FormValues = std::vector<std::string>;

struct Form {
  std::string title;
  std::string hint;  // a line above the rows; may be empty
  std::vector<FormRow> rows;
  // Does what the form is for. False, after saying why it cannot be, keeps the box open with
  // everything that was typed.
  std::function<bool(const FormValues& typed)> accept;
};

// Three numbers, one for each axis.
FormRow AxisRow(const std::string& label, const std::string& value);

// False when the user thought better of it.
bool AskForm(HWND owner, const Form& form);

}  // namespace ferrowand
