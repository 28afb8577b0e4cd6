// The class comments of a QuakeC file. Everything between them is passed over token by token.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "gamedata/class_record.h"

namespace ferrowand {

class ClassLog;
class TextReader;

class ClassParser {
 public:
  // The reader is open. Both outlive it.
  ClassParser(TextReader& reader, ClassLog& log) : reader_(reader), log_(log) {}

  // The class of the next comment that opens with QUAKED; none at the end of the file. Each mistake
  // is logged with its line, and what it touches keeps its default. No mistake costs the class that
  // follows. Lines may end in CR LF or in LF alone: the class is the same, its help in CR LF.
  std::optional<ClassRecord> Next();

 private:
  void ParseHeader(ClassRecord& record);
  void ParseColour(ClassRecord& record);
  void ParseBox(ClassRecord& record);
  void ParseFlags(ClassRecord& record);
  void ParseTilde(ClassRecord& record);
  void ParseDescription(ClassRecord& record);

  using Triad = std::array<float, 3>;
  // The last number must end in ')'. `name` is what the triad is called in the message.
  Triad ReadTriad(const char* name);
  // Whether the next token is that. Any other one is told of, and looked at again.
  bool TakeToken(const char* text, const char* after);
  void PassLineComment();
  bool OpensClass();
  char NextChar();
  std::string ReadWord();
  std::string ReadHeaderLine();
  std::string TextBetween(std::uint32_t begin, std::uint32_t end);
  void Complain(const std::string& what, const char* place = "QC file");

  TextReader& reader_;
  ClassLog& log_;
};

}  // namespace ferrowand
