#include "base/report.h"

#include <cstdarg>
#include <cstdio>

#include "platform/file.h"

namespace ferrowand {
namespace {

constexpr std::size_t TEXTLIMIT = 1024;  // the zero byte included

[[gnu::format(printf, 1, 0)]] std::string FormatList(const char* format, std::va_list arguments) {
  char text[TEXTLIMIT];
  if (std::vsnprintf(text, sizeof text, format, arguments) < 0) return format;
  return text;
}

}  // namespace

void Reporter::Assert(const char* expression, const char* source, unsigned line) {
  const unsigned long error = LastError();  // before anything else can change it
  // The misspelling is meant.
  const std::string text = Format(
      "At line %u in file %s: \"%s\". GetLastError:%lu. The program has attempted to perform "
      "something invalid. Please write to the author at bugs@ferrowand.example to inform him, and "
      "include the first sentance of this message box. Press Yes to terminate program, or No "
      "attempt to continue (in which case you should save and exit immediately)?",
      line, source, expression, error);
  sink_.Beep();
  if (Show("ASSERTION FAILURE", text, Buttons::YesNo, Icon::Stop) == Answer::Yes)
    sink_.FatalExit("Fatal Exit!");
}

void Reporter::Parsing(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::string text = FormatList(format, arguments);
  va_end(arguments);
  Show("Parsing Error", text);
}

void Reporter::Geometry(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::string text = FormatList(format, arguments);
  va_end(arguments);
  if (Show("Error! Quit?", text, Buttons::YesNo) == Answer::Yes) sink_.Exit(-1);
}

Answer Reporter::Show(const std::string& title, const std::string& text, Buttons buttons,
                      Icon icon) {
  return sink_.Show({title, text, buttons, icon});
}

std::string Format(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::string text = FormatList(format, arguments);
  va_end(arguments);
  return text;
}

}  // namespace ferrowand
