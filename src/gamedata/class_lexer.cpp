#include "gamedata/class_lexer.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"

namespace ferrowand {
namespace {

constexpr std::string_view WHITE(" \t\r\n\v\f\0", 7);
constexpr std::string_view SIGNS = "()[]{}=:,;+";
constexpr std::string_view BEHINDTEXT = ":=[](){},;+\r\n";  // what may follow a quoted text

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool Contains(std::string_view set, char c) {
  return set.find(c) != set.npos;
}

}  // namespace

bool ClassToken::IsWord(std::string_view word) const {
  return kind == Kind::Word && EqualNoCase(text, word);
}

ClassLexer::ClassLexer(std::string_view text, unsigned long line)
    : text_(text), line_(line), behind_(line) {
  constexpr std::string_view BYTEORDERMARK = "\xef\xbb\xbf";
  if (text_.starts_with(BYTEORDERMARK)) position_ = BYTEORDERMARK.size();
  Advance();
}

ClassToken ClassLexer::Take() {
  const ClassToken token = next_;
  Advance();
  return token;
}

bool ClassLexer::TakeIf(char sign) {
  if (!next_.Is(sign)) return false;
  Advance();
  return true;
}

// Comments as well.
void ClassLexer::SkipBlanks() {
  while (position_ < text_.size()) {
    if (text_.substr(position_).starts_with("//")) {
      position_ = std::min(text_.find('\n', position_), text_.size());
    } else if (Contains(WHITE, text_[position_])) {
      if (text_[position_++] != '\n') continue;
      ++behind_;
      atLineBegin_ = true;
    } else {
      return;
    }
  }
}

void ClassLexer::Advance() {
  SkipBlanks();
  line_ = behind_;
  next_ = {};
  const bool isFirst = std::exchange(atLineBegin_, false);
  if (position_ >= text_.size()) return;
  const std::size_t begin = position_;
  const char c = text_[begin];
  if (c == '"') {
    next_ = ReadText();
  } else if (Contains(SIGNS, c) || c == '@') {
    ++position_;
    next_ = {ClassToken::Kind::Sign, text_.substr(begin, 1)};
  } else {
    const auto* const end = std::find_if(text_.begin() + begin, text_.end(), [](char b) {
      return Contains(WHITE, b) || Contains(SIGNS, b) || b == '"';
    });
    position_ = static_cast<std::size_t>(end - text_.begin());
    next_ = {ClassToken::Kind::Word, text_.substr(begin, position_ - begin)};
  }
  next_.isFirstOfLine = isFirst;
}

// May run over several lines, but never into the next class: a quote that is missing costs one.
ClassToken ClassLexer::ReadText() {
  const std::size_t begin = ++position_;
  bool isClosed = false;
  while (position_ < text_.size() && !OpensDirectiveAt(position_)) {
    const char c = text_[position_++];
    if (c == '\n') ++behind_;
    isClosed = c == '"' && EndsTextAt(position_ - 1);
    if (isClosed) break;
  }
  const std::size_t end = position_ - (isClosed ? 1 : 0);
  return {ClassToken::Kind::Text, text_.substr(begin, end - begin), false, isClosed};
}

// One behind a backslash is part of the text, unless what follows can only follow a whole text:
// "maps\" ends.
bool ClassLexer::EndsTextAt(std::size_t quote) const {
  if (text_[quote - 1] != '\\') return true;
  const std::size_t behind = text_.find_first_not_of(" \t", quote + 1);
  return behind == text_.npos || Contains(BEHINDTEXT, text_[behind]);
}

// Whether a line begins there with a directive.
bool ClassLexer::OpensDirectiveAt(std::size_t at) const {
  return text_[at] == '@' && at > 0 && text_[at - 1] == '\n' && at + 1 < text_.size() &&
         IsLetter(text_[at + 1]);
}

void ClassLexer::SkipBrackets() {
  for (std::size_t depth = 1; depth > 0 && next_.kind != ClassToken::Kind::End;) {
    if (next_.Is('@') && next_.isFirstOfLine) return;  // the bracket is missing
    const ClassToken token = Take();
    if (token.kind != ClassToken::Kind::Sign) continue;
    if (Contains("([{", token.text[0])) ++depth;
    if (Contains(")]}", token.text[0])) --depth;
  }
}

void ClassLexer::SkipToDirective() {
  while (next_.kind != ClassToken::Kind::End) {
    if (next_.Is('@')) {
      if (next_.isFirstOfLine) return;
      const std::string_view rest = text_.substr(position_);
      const auto* const end = std::ranges::find_if_not(rest, IsLetter);
      const std::string_view word = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
      if (word.size() > 5 && EqualNoCase(word.substr(word.size() - 5), "class")) return;
    }
    Advance();
  }
}

}  // namespace ferrowand
