#include "support/recorder.h"

namespace ferrowand {

Answer MessageRecorder::Show(const Message& message) {
  messages.push_back(message);
  if (answers.empty()) return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::string MessageRecorder::OnlyText() const {
  if (messages.size() == 1) return messages.front().text;
  std::string all = "(" + std::to_string(messages.size()) + " messages)";
  for (const Message& message : messages) all += "\n" + message.text;
  return all;
}

std::vector<std::string> MessageRecorder::Said() const {
  std::vector<std::string> said;
  for (const Message& message : messages) said.push_back(message.title + ": " + message.text);
  return said;
}

}  // namespace ferrowand
