// Objects out of the text of a map: the bodies between braces, nested to any depth. Where braces
// are missing or too many, what follows is read as what it looks like.
#pragma once

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "document/entity.h"
#include "document/key_reader.h"

namespace ferrowand {

class ReadLog;
class TextReader;
class WadList;

class ObjectReader {
 public:
  // All outlive it, and so do the objects that are read.
  ObjectReader(TextReader& reader, const WadList& wads, ReadLog& log);

  // The body of an object that has its place in a tree, from behind its opening brace to behind its
  // closing one. Where that is missing, up to what cannot be a part of it; objects that turn out to
  // be none of its parts stand behind it then.
  void Read(entity& object);
  // The same without an opening brace; `firstKey`: whose key has been read already.
  void ReadUnopened(entity& object, bool firstKey);

  void ReadFaces(entity& object);
  // False when there was none to set.
  bool ReadKey() { return keys_.Read(); }
  const TextReader& Reader() const { return reader_; }
  const std::string& Key() const { return keys_.name; }
  const std::string& Value() const { return keys_.value; }
  // Sets what was read last.
  void SetKey(entity& object);
  // A comment, or a character that belongs nowhere.
  void PassOther(const char* part);

 private:
  struct Block {
    entity* object;
    bool isBlank = true;  // nothing has been read into it yet
    bool hasKeys = false;
    bool hasClass = false;  // it says its class itself
    bool hasChild = false;
    bool endsInFaces = false;  // nothing has come behind its last face
    bool isUnopened = false;
    int innerBraces = 0;  // open ones that are no object
  };

  void ReadOpen();
  void ReadPart();
  bool StartsAnother(const Block& block) const;
  void TakeKey();
  void SetKeyOfBlock();
  void Open();
  void OpenChild(bool isUnopened);
  void CloseBlock();
  void LeaveUnclosed(std::size_t place);
  bool TakeForeignWord();
  void SetKey(entity& object, const std::string& name, const std::string& value);
  void Finish(entity& object);

  TextReader& reader_;
  const WadList& wads_;
  ReadLog& log_;
  KeyReader keys_;
  std::vector<Block> open_;  // outermost first
  const entity* owner_ = nullptr;
  std::unordered_set<std::string> known_;  // keys of an owner with more than any honest entity
};

}  // namespace ferrowand
