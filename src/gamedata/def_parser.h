// Classes from a DEF: comments like those of QuakeC in a file of their own, as several editors read
// them, with more freedom. Words are known in any case; blanks, tabs and commas part numbers and
// names; what stands in braces behind the header tells of keys, choices and bases.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "gamedata/class_bases.h"
#include "gamedata/class_lexer.h"

namespace ferrowand {

class DefParser {
 public:
  // `place` is what the text is called in messages. All outlive it.
  DefParser(std::string_view text, std::string place, ClassLog& log)
      : text_(text), place_(std::move(place)), log_(log) {}

  // In the order of the text. What is wrong with a class is logged and costs no other one.
  std::vector<ClassDefinition> Read();

 private:
  struct Comment {
    std::size_t begin = 0, end = 0;  // of what stands behind the opening word
  };

  bool FindNext(Comment& comment);
  ClassDefinition ReadComment(const Comment& comment);
  // Each takes what it has read from the front.
  void ReadHeader(std::string_view& text, ClassDefinition& definition);
  bool ReadTriad(std::string_view& text, float (&triad)[3]) const;
  void ReadColour(std::string_view& text, ClassDefinition& definition);
  void ReadBox(std::string_view& text, ClassDefinition& definition);
  void ReadBraces(std::string_view& text, ClassDefinition& definition);
  void ReadProperty(ClassLexer& lexer, ClassDefinition& definition);
  void ReadChoices(ClassLexer& lexer, ClassDefinition& definition);
  void ReadDefault(ClassLexer& lexer, ClassDefinition& definition);
  unsigned long LineOf(const char* at);
  void Complain(const std::string& what, std::string_view at);

  std::string_view text_;
  std::string place_;
  ClassLog& log_;
  std::size_t position_ = 0;
  std::size_t nextClose_ = 0;  // of a comment, when it lies behind position_
  std::size_t countedTo_ = 0;  // lines in front of it
  unsigned long countedLine_ = 1;
};

}  // namespace ferrowand
