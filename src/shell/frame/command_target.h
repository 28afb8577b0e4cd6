// Whoever carries commands out, as the menus, bars and windows see it that give them.
#pragma once

#include <string>

namespace ferrowand {

class CommandTarget {
 public:
  virtual ~CommandTarget() = default;

  virtual bool IsAvailable(unsigned id) const = 0;
  virtual bool IsChecked(unsigned id) const = 0;
  // Nothing happens when the command is not available. It ends a drag without effect.
  virtual void Execute(unsigned id) = 0;
  // What the virtual key is bound to comes into the active map. False when it is bound to nothing,
  // or there is no map.
  virtual bool InsertBoundEntity(unsigned key) = 0;
  // Whether a tool follows a press that has not been released.
  virtual bool IsDragging() const = 0;
  // The name of the active map's file, with a mark behind it while the map is modified. Empty when
  // there is no map.
  virtual std::string ActiveFile() const = 0;
};

}  // namespace ferrowand
