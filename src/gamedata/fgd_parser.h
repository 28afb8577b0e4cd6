// Classes from an FGD, as the mappers of today write them for every mod. It tells of each class
// what a comment of QuakeC does, and of each key its type, default, help and choices.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "gamedata/class_bases.h"
#include "gamedata/class_lexer.h"
#include "gamedata/class_source.h"

namespace ferrowand {

// Reads one text. Words are known in any case; helpers in a header that mean nothing here are
// passed over, brackets and all; what is wrong is logged and costs the rest of its class.
class FgdParser {
 public:
  // `place` is what the text is called in messages. The text and the log outlive it.
  FgdParser(std::string_view text, std::string place, ClassLog& log)
      : lexer_(text), place_(std::move(place)), log_(log) {}

  // What comes next: a class, or the name of a file whose classes stand in its place.
  struct Item {
    enum class Kind : std::uint8_t { End, Class, Include };
    Kind kind = Kind::End;
    ClassDefinition definition;
    std::string include;
    unsigned long line = 0;
  };
  Item Next();

 private:
  bool ReadClass(std::string_view directive, ClassDefinition& definition);
  bool ReadHeader(ClassDefinition& definition);
  void ReadHelper(std::string_view name, ClassDefinition& definition);
  void ReadBases(ClassDefinition& definition);
  void ReadSize(ClassDefinition& definition);
  void ReadColour(ClassDefinition& definition);
  bool ReadBody(ClassDefinition& definition);
  bool ReadProperty(ClassDefinition& definition);
  bool ReadType(std::string& type);
  void ReadFields(KeyDefinition& key);
  // Of choices or of flags.
  struct ListItem {
    KeyChoice choice;
    bool isOn = false;
    std::string help;
  };
  bool ReadList(std::string_view keyName, std::vector<ListItem>& list);
  void TakeFlags(const std::vector<ListItem>& list, ClassDefinition& definition);
  std::string ReadField();
  std::string ReadListField();
  std::vector<float> ReadNumbers(bool* haveFraction = nullptr);
  bool Expect(char sign);
  void Complain(const std::string& what, std::string_view subject = {});

  ClassLexer lexer_;
  std::string place_;
  ClassLog& log_;
};

// Reads the file with all that it includes, each file once, from beside the file that names it.
// False when it cannot be opened.
bool ReadFgd(const std::string& path, std::vector<ClassDefinition>& definitions,
             std::vector<ClassSource>& sources, ClassLog& log);

}  // namespace ferrowand
