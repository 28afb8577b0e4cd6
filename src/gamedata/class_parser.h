// The class comments of a QuakeC file. Everything between them is passed over token by token.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "gamedata/class_record.h"

namespace ferrowand {

class Reporter;
class TextReader;

class ClassParser {
 public:
  // The reader is open.
  ClassParser(TextReader& reader, Reporter& reporter) : reader_(reader), reporter_(reporter) {}

  // The class of the next comment that opens with QUAKED; none at the end of the file. Each mistake
  // is reported with its line, and what it touches keeps its default.
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
  bool NextTokenIs(const char* text);
  char NextChar();
  std::string ReadWord();
  unsigned long Line() const;

  TextReader& reader_;
  Reporter& reporter_;
};

}  // namespace ferrowand
