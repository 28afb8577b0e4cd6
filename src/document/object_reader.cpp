#include "document/object_reader.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "base/report.h"
#include "base/text_reader.h"
#include "document/classes/class_set.h"
#include "document/read_log.h"
#include "document/structure_repair.h"
#include "gamedata/wad_library.h"

namespace ferrowand {
namespace {

EntityKind KindOf(const entity& e) {
  return e.getClass()->Kind();
}

bool IsEditorsOwn(EntityKind kind) {
  return kind != EntityKind::Brush && kind != EntityKind::Entity && kind != EntityKind::Unknown;
}

}  // namespace

ObjectReader::ObjectReader(TextReader& reader, const WadList& wads, ReadLog& log)
    : reader_(reader), wads_(wads), log_(log), keys_(reader, log) {}

void ObjectReader::Read(entity& object) {
  open_.assign(1, Block{&object});
  ReadOpen();
}

void ObjectReader::ReadUnopened(entity& object, bool firstKey) {
  open_.assign(1, Block{&object});
  open_.back().isUnopened = true;
  if (firstKey) SetKeyOfBlock();
  ReadOpen();
}

// A loop with a list of what is open, not recursion: a stranger's file may open any number of
// braces.
void ObjectReader::ReadOpen() {
  while (!open_.empty()) {
    reader_.SkipWhitespace();
    if (!reader_.AtEof()) {
      ReadPart();
      continue;
    }
    log_.flags |= READ_END_OF_FILE;
    log_.Count(Loss::MissingBrace, reader_);
    for (const Block& block : open_) Finish(*block.object);
    open_.clear();
  }
}

void ObjectReader::ReadPart() {
  const char c = static_cast<char>(reader_.PeekChar());
  if (c == '(') {
    if (KindOf(*open_.back().object) == EntityKind::Layer) OpenChild(true);
    ReadFaces(*open_.back().object);
    open_.back().isBlank = false;
    open_.back().endsInFaces = true;
  } else if (c == '"') {
    TakeKey();
  } else if (c == '{') {
    Open();
  } else if (c == '}') {
    reader_.GetChar();
    if (open_.back().innerBraces-- == 0) CloseBlock();
  } else if (!TakeForeignWord()) {
    PassOther("entity");
  }
}

// Whether an opening brace is missing in front of the key that was read last: of any behind the
// objects of a layer, and of another classname where an object has objects in it already, or where
// nobody would have changed the one to the other.
bool ObjectReader::StartsAnother(const Block& block) const {
  const bool isLayer = KindOf(*block.object) == EntityKind::Layer;
  if (!EqualNoCase(Key(), "classname")) return isLayer && block.hasChild;
  if (!block.hasClass || Value() == block.object->GetKey("classname")) return false;
  return block.hasChild || (log_.isExtended && (isLayer || Value() == "brush"));
}

void ObjectReader::TakeKey() {
  if (!ReadKey()) return;
  if (StartsAnother(open_.back())) OpenChild(true);
  SetKeyOfBlock();
}

void ObjectReader::SetKeyOfBlock() {
  Block& block = open_.back();
  SetKey(*block.object);
  block.hasKeys = true;
  block.isBlank = block.endsInFaces = false;
  if (!EqualNoCase(Key(), "classname")) return;
  const bool isWorld = IsWorldspawn(Value()) && !block.hasClass && !block.isUnopened;
  if (isWorld) log_.Count(Loss::SecondWorld, reader_);
  block.hasClass = true;
  const EntityKind kind = KindOf(*block.object);
  if (IsEditorsOwn(kind)) log_.isExtended = true;
  // Layers lie in the world, and in a Quake map everything that has a class lies side by side.
  if (kind == EntityKind::Layer && open_.size() > 1) LeaveUnclosed(0);
  while (!log_.isExtended && open_.size() > 1 && open_[open_.size() - 2].hasClass) {
    LeaveUnclosed(open_.size() - 2);
  }
}

// The innermost object stands behind the one at the place, whose closing brace is missing.
void ObjectReader::LeaveUnclosed(std::size_t place) {
  entity& object = *open_.back().object;
  entity& beside = *open_[place].object;
  entity& parent = *object.Parent();
  EntityPtr taken = parent.TakeChild(parent.IndexOf(object));
  beside.Parent()->InsertChild(std::move(taken), beside.Parent()->IndexOf(beside) + 1);
  for (std::size_t i = place; i + 1 < open_.size(); ++i) Finish(*open_[i].object);
  open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(place), open_.end() - 1);
  log_.Count(Loss::MissingBrace, reader_);
}

// What is opened right behind the faces of a brush stands beside it: between faces and children of
// one object there is always a key. The brace is not consumed then.
void ObjectReader::Open() {
  const Block& block = open_.back();
  if (block.endsInFaces && KindOf(*block.object) == EntityKind::Brush) {
    log_.Count(Loss::MissingBrace, reader_);
    return CloseBlock();
  }
  reader_.GetChar();
  OpenChild(false);
}

// What is nested deeper than MAXDEPTH stands side by side at the limit.
void ObjectReader::OpenChild(bool isUnopened) {
  if (isUnopened) log_.Count(Loss::MissingBrace, reader_);
  const bool isDeep = open_.size() > MAXDEPTH;
  if (isDeep) log_.Count(Loss::Depth, reader_);
  // Beyond the limit a brace that only opens another one needs no entity of its own.
  entity* child = open_.back().object;
  if (!isDeep || !open_.back().isBlank) {
    entity& parent = *open_[std::min<std::size_t>(open_.size(), MAXDEPTH) - 1].object;
    child = parent.AddChild(std::make_unique<entity>(parent.ClassSetInUse()));
  }
  open_.push_back(Block{child});
  open_.back().isUnopened = isUnopened;
}

void ObjectReader::CloseBlock() {
  const Block done = open_.back();
  open_.pop_back();
  Finish(*done.object);
  // As a brush it would not be written for the game.
  const bool isEntity = done.object->HasOrigin() || done.hasChild;
  const bool isNamed = done.hasClass || done.isUnopened;
  if (done.hasKeys && !isNamed && isEntity) log_.Count(Loss::NoClass, reader_);
  if (open_.empty()) return;
  Block& outer = open_.back();
  outer.isBlank = outer.endsInFaces = false;
  outer.hasChild = true;
  if (done.isUnopened && !done.hasClass) JoinPrevious(*done.object);
}

// Brush primitives have braces of their own around their faces; the rest of what later games put
// into a block is none of it.
bool ObjectReader::TakeForeignWord() {
  const std::uint8_t first = reader_.PeekChar();
  if (first != 'b' && first != 'p' && first != 't') return false;
  const std::uint32_t offset = reader_.Offset();
  std::string word;
  reader_.ReadPlainWord(word, 20);
  const bool isPrimitive = word == "brushDef";
  const bool isKnown = isPrimitive || word.starts_with("brushDef") ||
                       word.starts_with("patchDef") || word.starts_with("terrainDef");
  reader_.SkipWhitespace();
  if (!isKnown || reader_.PeekChar() != '{') {
    reader_.SeekTo(offset);
    return false;
  }
  if (isPrimitive) {
    reader_.GetChar();
    ++open_.back().innerBraces;
    return true;
  }
  log_.Count(Loss::Patch, reader_);
  int braces = 0;
  do {
    const std::uint8_t c = reader_.GetChar();
    braces += c == '{' ? 1 : c == '}' ? -1 : 0;
  } while (braces > 0 && !reader_.AtEof());
  return true;
}

void ObjectReader::ReadFaces(entity& object) {
  object.brush.ReadBody(reader_, wads_, log_, object.Report());
  object.Touch();
}

void ObjectReader::PassOther(const char* part) {
  const char c = static_cast<char>(reader_.GetChar());
  if (c == '/' && reader_.PeekChar() == '/') {
    log_.PassComment(reader_);
  } else {
    log_.InvalidChar(c, part, reader_);
  }
}

void ObjectReader::SetKey(entity& object) {
  if (IsEditorKey(Key())) log_.isExtended = true;
  SetKey(object, Key(), Value());
}

// A look at all keys for each of them is cheap up to the limit; a stranger's file may go far
// beyond.
void ObjectReader::SetKey(entity& object, const std::string& name, const std::string& value) {
  bool isNew = false;
  if (object.numkeys() >= MAXKEYS) {
    if (std::exchange(owner_, &object) != &object) {
      known_.clear();
      for (const auto& pair : object.keys_) known_.insert(pair.name);
    }
    isNew = known_.insert(name).second;
  }
  if (!isNew) std::erase_if(object.keys_, [&](const auto& pair) { return pair.name == name; });
  if (object.numkeys() + 1 >= MAXKEYS && log_.FirstTime(READ_KEYS_REPORTED)) {
    object.ReportTooManyKeys();
  }
  object.Put({name, value});
}

void ObjectReader::Finish(entity& object) {
  const EntityClass& c = *object.getClass();
  if (c.hasTilde) SetKey(object, "XMPferroflags", std::to_string(c.tildeValue));
  object.keys_.shrink_to_fit();
  object.children_.shrink_to_fit();
}

}  // namespace ferrowand
