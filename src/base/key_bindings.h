// The keys that steer a camera: what each pair of Options::keys is for, and what keys are called.
// Keys are virtual-key codes of Windows on every system.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/options.h"

namespace ferrowand {

// In the order of Options::keys.
enum class KeyAction : std::uint8_t {
  MoveForward,
  Backtrack,
  LookLeft,
  LookRight,
  MoveUp,
  MoveDown,
  StrafeLeft,
  StrafeRight,
  Mlook,
  Run,
  RollLeft,
  RollRight,
  LookUp,
  LookDown,
};

const char* LabelOf(KeyAction action);
// "Unknown key" for a code without a name.
std::string KeyName(int code);

// The two keys of an action do the same.
inline const std::array<std::uint8_t, 2>& KeysOf(const Options& options, KeyAction action) {
  return options.keys[static_cast<std::size_t>(action)];
}
// Whether some action has the key. A message names Shift, Control and Alt without their side:
// either side that an action has is meant then.
bool IsBound(const Options& options, int code);

}  // namespace ferrowand
