// Everything the program says to its user in a box goes through here: the three reporters format
// their text and hand it, with its title and buttons, to one sink that answers. Nothing throws or
// unwinds; after the answer the caller goes on with what it has.
#pragma once

#include <cstdint>
#include <string>

namespace ferrowand {

enum class Buttons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Yes, No, Cancel };
enum class Icon { None, Stop, Question, Warning, Information };

struct Message {
  std::string title;
  std::string text;
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::None;
};

// Who shows the messages: message boxes in the editor, standard error in the command line program
// (which answers No), a recorder with scripted answers in tests.
class MessageSink {
 public:
  virtual ~MessageSink() = default;

  virtual Answer Show(const Message& message) = 0;
  virtual void Beep() = 0;
  // Both end the program; the recorder of the tests returns, and so must callers survive.
  virtual void FatalExit(const std::string& text) = 0;
  virtual void Exit(int status) = 0;
};

// For what has been told already.
class SilentSink : public MessageSink {
 public:
  Answer Show(const Message&) override { return Answer::No; }
  void Beep() override {}
  void FatalExit(const std::string&) override {}
  void Exit(int) override {}
};

class Reporter {
 public:
  explicit Reporter(MessageSink& sink) : sink_(sink) {}

  // A failed internal check or system call. `expression` is the condition's own text, `source` the
  // unit with its extension ("..\\winfile.cpp"), `line` the line of the check. Yes ends the
  // program.
  void Assert(const char* expression, const char* source, unsigned line);

  // Damage in an input file; titled "Parsing Error". The formatted text is cut at 1024 bytes.
  [[gnu::format(printf, 2, 3)]] void Parsing(const char* format, ...);

  // A geometric impossibility; titled "Error! Quit?". Yes ends the program with status -1.
  [[gnu::format(printf, 2, 3)]] void Geometry(const char* format, ...);

  // Any other box.
  Answer Show(const std::string& title, const std::string& text, Buttons buttons = Buttons::Ok,
              Icon icon = Icon::None);
  void Beep() { sink_.Beep(); }

 private:
  MessageSink& sink_;
};

// printf into a string, cut at 1024 bytes as the system's own formatting calls do.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...);

}  // namespace ferrowand
