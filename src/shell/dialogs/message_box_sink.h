// The messages of the program in the system's own boxes.
#pragma once

#include <functional>
#include <utility>

#include "base/report.h"

namespace ferrowand {

class MessageBoxSink : public MessageSink {
 public:
  // What is done before the user's answer ends the program.
  void SetBeforeEnd(std::function<void()> beforeEnd) { beforeEnd_ = std::move(beforeEnd); }

  Answer Show(const Message& message) override;
  void Beep() override;
  void FatalExit(const std::string& text) override;
  void Exit(int status) override;

 private:
  std::function<void()> beforeEnd_ = [] {};
};

}  // namespace ferrowand
