// The messages of the program in the system's own boxes.
#pragma once

#include "base/report.h"

namespace ferrowand {

class MessageBoxSink : public MessageSink {
 public:
  Answer Show(const Message& message) override;
  void Beep() override;
  void FatalExit(const std::string& text) override;
  void Exit(int status) override;
};

}  // namespace ferrowand
