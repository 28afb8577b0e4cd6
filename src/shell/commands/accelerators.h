// The keys that give commands.
#pragma once

#include "shell/system/win32.h"

namespace ferrowand {

class Commands;
class Frame;

class Accelerators {
 public:
  // Both outlive it.
  Accelerators(HINSTANCE instance, Commands& commands, const Frame& frame);

  // Whether the message was a key that gives a command, which has been carried out if it was
  // available.
  bool Translate(MSG& message);

 private:
  Commands& commands_;
  const Frame& frame_;
  HACCEL table_;  // a resource: the system frees it
};

}  // namespace ferrowand
