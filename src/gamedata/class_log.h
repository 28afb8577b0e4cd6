// What is wrong with a file of classes, as a list with lines. The first of each kind is said in a
// box as well.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

class Reporter;

struct ClassMessage {
  std::string text;
  unsigned long line = 0;  // of the file, from 1; a box names it behind the text
};

class ClassLog {
 public:
  static constexpr std::size_t MAXKEPT = 10000;  // messages in the list

  // Without a reporter nothing is said in boxes. It outlives the log.
  explicit ClassLog(Reporter* reporter) : reporter_(reporter) {}

  // "<kind> "<subject>" in <place>"; messages of one kind differ in the rest.
  void Add(const std::string& kind, std::string_view place, unsigned long line,
           std::string_view subject = {});

  // In the order of the file; the first of them, where there are too many.
  const std::vector<ClassMessage>& Messages() const { return messages_; }
  // Of all.
  std::size_t Count() const { return count_; }

 private:
  Reporter* reporter_;
  std::set<std::string> kinds_;
  std::vector<ClassMessage> messages_;
  std::size_t count_ = 0;
};

}  // namespace ferrowand
