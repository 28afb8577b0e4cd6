#include "compile/tool_output.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/number_text.h"
#include "base/path_text.h"
#include "base/text_parts.h"

namespace ferrowand {
namespace {

constexpr std::size_t LINE_COST = sizeof(ToolOutput::Line);  // beside its letters
constexpr std::size_t TAB = 8;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// "0 errors" and "no warnings" tell of none.
bool Tells(std::string_view lower, std::string_view word) {
  for (std::size_t at = lower.find(word); at != lower.npos; at = lower.find(word, at + 1)) {
    const std::string_view before = lower.substr(0, at);
    const bool ofNone = before.ends_with("no ") || before == "0 " || before.ends_with(" 0 ");
    if (!ofNone) return true;
  }
  return false;
}

// The whole number behind the word and what may stand between, as in "entity 12" and "brush #7".
std::optional<int> NumberBehind(std::string_view lower, std::string_view word) {
  for (std::size_t at = lower.find(word); at != lower.npos; at = lower.find(word, at + 1)) {
    const std::size_t from = lower.find_first_not_of(" #:=", at + word.size());
    if (from != lower.npos && from > at + word.size() && IsDigit(lower[from])) {
      return ParseInt(lower.substr(from));
    }
  }
  return std::nullopt;
}

// Three numbers parted by blanks or commas, from the front; nothing when there are not three.
std::optional<Vec3> NumbersAtFront(std::string_view text) {
  Vec3 point;
  for (int axis = 0; axis < 3; ++axis) {
    const std::size_t from = text.find_first_not_of(axis == 0 ? " \t" : " \t,");
    if (from == text.npos) return std::nullopt;
    text.remove_prefix(from);
    const std::size_t end = std::min(text.find_first_not_of("+-.0123456789e"), text.size());
    const std::optional<double> number = ReadNumber(text.substr(0, end));
    if (!number) return std::nullopt;
    point[axis] = static_cast<float>(*number);
    text.remove_prefix(end);
  }
  return point;
}

// In parentheses, or behind a word that tells of a place.
std::optional<Vec3> PointIn(std::string_view lower) {
  for (std::size_t at = lower.find('('); at != lower.npos; at = lower.find('(', at + 1)) {
    if (const auto point = NumbersAtFront(lower.substr(at + 1))) return point;
  }
  for (const std::string_view word : {" at ", "near ", "point ", "origin "}) {
    const std::size_t at = lower.find(word);
    if (at == lower.npos) continue;
    if (const auto point = NumbersAtFront(lower.substr(at + word.size()))) return point;
  }
  return std::nullopt;
}

}  // namespace

NamedPlace PlaceIn(std::string_view line) {
  const std::string lower = LowerCase(line);
  return {NumberBehind(lower, "entity"), NumberBehind(lower, "brush"), PointIn(lower)};
}

// The message of an error stands in the line below its stars.
LineKind ToolOutput::KindOf(std::string_view text) {
  const std::string lower = LowerCase(text);
  const bool isStars = lower.starts_with("**");
  const bool follows = errorFollows_ && !text.empty();
  if (!text.empty()) errorFollows_ = false;
  if (Tells(lower, "error")) {
    errorFollows_ = isStars;
    return LineKind::Error;
  }
  if (follows) return LineKind::Error;
  const bool warns = Tells(lower, "warning") || Tells(lower, "leak");
  return warns ? LineKind::Warning : LineKind::Plain;
}

void ToolOutput::Append(std::string_view bytes) {
  for (const char c : bytes) Put(c);
}

void ToolOutput::Put(char c) {
  if (IsPartOfCommand(c)) return;
  if (c == '\n') {
    Close();
    return;
  }
  if (c == '\r') {
    returns_ = true;
    return;
  }
  if (returns_) open_.clear();
  returns_ = false;
  if (c == '\t') {
    open_.append(TAB - open_.size() % TAB, ' ');
  } else if (c == '\b') {
    if (!open_.empty()) open_.pop_back();
  } else if (static_cast<unsigned char>(c) >= ' ' && c != '\x7f') {
    open_ += c;
  }
  if (open_.size() >= MAXLINE) Close();
}

// ESC, one letter; ESC [ numbers and a letter; ESC ] a text and BEL.
bool ToolOutput::IsPartOfCommand(char c) {
  switch (escape_) {
    case Escape::None:
      if (c == '\x1b') escape_ = Escape::Begun;
      return c == '\x1b';
    case Escape::Begun:
      escape_ = c == '[' ? Escape::Command : c == ']' ? Escape::Title : Escape::None;
      return true;
    case Escape::Command:
      if (c >= '@' && c <= '~') escape_ = Escape::None;
      return true;
    case Escape::Title:
      if (c == '\a' || c == '\n') escape_ = Escape::None;
      return true;
  }
  return false;
}

void ToolOutput::Close() {
  returns_ = false;
  const LineKind kind = KindOf(open_);
  Keep({std::exchange(open_, {}), kind});
}

void ToolOutput::EndTool() {
  escape_ = Escape::None;
  if (!open_.empty()) Close();
  errorFollows_ = false;
}

void ToolOutput::Say(LineKind kind, std::string text) {
  EndTool();
  Keep({std::move(text), kind});
}

void ToolOutput::Keep(Line line) {
  bytes_ += line.text.size() + LINE_COST;
  lines_.push_back(std::move(line));
  while (bytes_ > MAXBYTES) {
    bytes_ -= lines_.front().text.size() + LINE_COST;
    lines_.pop_front();
    ++dropped_;
  }
}

ToolOutput::Line ToolOutput::At(std::size_t index) const {
  if (index == 0 && dropped_ > 0) {
    return {"(The first " + std::to_string(dropped_ + 1) + " lines are not kept.)",
            LineKind::Heading};
  }
  return index < lines_.size() ? lines_[index] : Line{open_, LineKind::Plain};
}

std::string ToolOutput::Text() const {
  std::string text;
  for (std::size_t i = 0; i < size(); ++i) text.append(At(i).text).append("\n");
  return text;
}

}  // namespace ferrowand
