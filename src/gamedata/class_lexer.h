// Cuts a file of classes (FGD, and what stands in braces in a DEF) into words, quoted texts and
// signs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ferrowand {

struct ClassToken {
  enum class Kind : std::uint8_t { End, Word, Text, Sign };

  Kind kind = Kind::End;
  std::string_view text;      // without its quotes
  bool isFirstOfLine = true;  // nothing of its line stands in front of it
  bool isClosed = true;       // a text has its second quote

  bool Is(char sign) const { return kind == Kind::Sign && text[0] == sign; }
  bool IsWord(std::string_view word) const;  // in any case
};

class ClassLexer {
 public:
  // The text outlives it. Lines count from the given one.
  explicit ClassLexer(std::string_view text, unsigned long line = 1);

  const ClassToken& Peek() const { return next_; }
  ClassToken Take();
  bool TakeIf(char sign);
  // Of `Peek()`.
  unsigned long Line() const { return line_; }
  // What stands behind `Peek()`.
  std::string_view Rest() const { return text_.substr(position_); }

  // Behind an opening bracket of any kind, which has been taken: behind what closes it, whatever
  // brackets and texts stand between.
  void SkipBrackets();
  // On to the next sign '@' that opens a class or stands first on its line; to the end for none.
  void SkipToDirective();

 private:
  void Advance();
  void SkipBlanks();
  ClassToken ReadText();
  bool EndsTextAt(std::size_t quote) const;
  bool OpensDirectiveAt(std::size_t at) const;

  std::string_view text_;
  std::size_t position_ = 0;  // behind next_
  unsigned long line_;        // of next_
  unsigned long behind_;      // of position_
  bool atLineBegin_ = true;
  ClassToken next_;
};

}  // namespace ferrowand
