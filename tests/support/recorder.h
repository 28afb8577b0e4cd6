// A message sink for tests: keeps what the program said and answers from a script.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "base/report.h"

namespace ferrowand {

class MessageRecorder : public MessageSink {
 public:
  // The next scripted answer; without one No, or Ok where there is only that.
  Answer Show(const Message& message) override;
  void Beep() override { ++beeps; }
  void FatalExit(const std::string& text) override { fatalText = text; }
  void Exit(int status) override { exits.push_back(status); }

  // The text of the only message; what went wrong when there is another number of them.
  std::string OnlyText() const;
  // Each as "title: text".
  std::vector<std::string> Said() const;

  std::vector<Message> messages;
  std::deque<Answer> answers;
  std::vector<int> exits;
  int beeps = 0;
  std::string fatalText;
};

}  // namespace ferrowand
