// The class comments of a QuakeC file. Everything between them is passed over token by token.
#pragma once

#include <array>
#include <memory>
#include <string>

namespace ferrowand {

class ClassSet;
class EntityClass;
class Reporter;
class TextReader;

class ClassParser {
 public:
  // The reader is open. The classes are made for `set`.
  ClassParser(TextReader& reader, Reporter& reporter, const ClassSet& set)
      : reader_(reader), reporter_(reporter), set_(set) {}

  // The class of the next comment that opens with QUAKED; null at the end of the file. Each mistake
  // is reported with its line, and what it touches keeps its default.
  std::unique_ptr<EntityClass> Next();

 private:
  void ParseHeader(EntityClass& entityClass);
  void ParseColour(EntityClass& entityClass);
  void ParseBox(EntityClass& entityClass);
  void ParseFlags(EntityClass& entityClass);
  void ParseTilde(EntityClass& entityClass);
  void ParseDescription(EntityClass& entityClass);

  using Triad = std::array<float, 3>;
  // The last number must end in ')'. `name` is what the triad is called in the message.
  Triad ReadTriad(const char* name);
  bool NextTokenIs(const char* text);
  char NextChar();
  std::string ReadWord();
  unsigned long Line() const;

  TextReader& reader_;
  Reporter& reporter_;
  const ClassSet& set_;
};

}  // namespace ferrowand
