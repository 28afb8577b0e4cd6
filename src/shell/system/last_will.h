// What is still done when the program dies of an exception that nobody handles.
#pragma once

#include <functional>
#include <string>

namespace ferrowand {

class MessageSink;

// From its making to its end. `write` saves what can be saved and gives what the user is told then;
// it is called once, by the thread that has failed, and may fail itself. `toldBy` shows that from a
// thread of its own. The program ends after it.
class LastWill {
 public:
  LastWill(MessageSink& toldBy, std::function<std::string()> write);
  ~LastWill();
  LastWill(const LastWill&) = delete;
  LastWill& operator=(const LastWill&) = delete;
};

}  // namespace ferrowand
