// Entities as text: the body between their braces, read and written.
#include <algorithm>

#include "base/report.h"
#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/entity.h"
#include "gamedata/wad_library.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXTEXT = 1024;  // bytes of a key, and of a value

// A quote right behind the longest text belongs to it; of anything longer the rest is read on as it
// comes.
void ReadText(TextReader& reader, std::string& text) {
  if (reader.ReadUntil('"', text, MAXTEXT, true) == MAXTEXT && reader.PeekChar() == '"') {
    reader.GetChar();
  }
}

bool IsLetter(char c, char upper) {
  return c == upper || c == upper - 'A' + 'a';
}

}  // namespace

bool IsEditorKey(std::string_view name) {
  return name.size() >= 3 && IsLetter(name[0], 'X') && IsLetter(name[1], 'M') &&
         IsLetter(name[2], 'P');
}

// What is longer than a reader takes would be the end of all that follows.
void WriteKey(TextWriter& out, std::string_view name, std::string_view value) {
  out.Put("\t\"");
  out.Put(name.substr(0, MAXTEXT));
  out.Put("\" \"");
  out.Put(value.substr(0, MAXTEXT));
  out.Put("\"\n");
}

// A look at all keys for each of them is cheap up to the limit; a stranger's file may go far
// beyond.
void entity::ReadKey(TextReader& reader, KeyText& text) {
  ReadText(reader, text.name);
  reader.SkipPast('"', true);
  ReadText(reader, text.value);
  if (numkeys() < MAXKEYS) {
    SetKey(text.name, text.value);
    return;
  }
  if (text.owner != this) {
    text.owner = this;
    text.known.clear();
    for (const KeyPair& pair : keys_) text.known.insert(pair.name);
  }
  if (text.known.insert(text.name).second) {
    AddKey(text.name, text.value);
  } else {
    SetKey(text.name, text.value);
  }
}

unsigned entity::ReportChar(char c, const char* part, const TextReader& reader,
                            unsigned flags) const {
  if (!(flags & READ_CHAR_REPORTED)) {
    Report().Parsing(
        "An invalid char(%c) was found in %s definition at line:%lu.\nThis file may not be a map "
        "file.\n\nFerrowand will attempt to read the rest, but some data may be lost!",
        c, part, static_cast<unsigned long>(reader.LineNumber()));
  }
  return flags | READ_CHAR_REPORTED;
}

// A loop with a list of what is open, not recursion: a stranger's file may open any number of
// braces. What is nested deeper than MAXDEPTH stands side by side at the limit.
unsigned entity::Read(TextReader& reader, const WadList& wads, unsigned flags) {
  std::vector<entity*> open;  // below this entity, outermost first
  KeyText text;
  bool blank = false;  // nothing has been read into the innermost one yet
  for (;;) {
    entity& current = open.empty() ? *this : *open.back();
    reader.SkipWhitespace();
    if (reader.AtEof()) {
      flags |= READ_END_OF_FILE;
      break;
    }
    const char c = static_cast<char>(reader.PeekChar());
    if (c == '(') {
      flags = current.ReadFaces(reader, wads, flags);
      blank = false;
      continue;
    }
    reader.GetChar();
    if (c == '"') {
      current.ReadKey(reader, text);
      blank = false;
    } else if (c == '{') {
      if (open.size() >= MAXDEPTH && !(flags & READ_DEPTH_REPORTED)) {
        Report().Parsing(
            "The entities in this map are nested too deep.\n\nThis first occurred at line %lu.\n "
            "Ferrowand will attempt to continue, but be warned: the innermost groups will be "
            "flattened!",
            static_cast<unsigned long>(reader.LineNumber()));
        flags |= READ_DEPTH_REPORTED;
      }
      // Beyond the limit a brace that only opens another one needs no entity of its own.
      open.push_back(open.size() >= MAXDEPTH && blank ? open.back() : ReadChild(open));
      blank = true;
    } else if (c == '}') {
      current.FinishReading();
      if (open.empty()) return flags;
      open.pop_back();
      blank = false;
    } else if (c == '/' && reader.PeekChar() == '/') {
      reader.SkipLine();
    } else {
      flags = ReportChar(c, "entity", reader, flags);
    }
  }
  for (entity* unclosed : open) unclosed->FinishReading();
  FinishReading();
  return flags;
}

unsigned entity::ReadFaces(TextReader& reader, const WadList& wads, unsigned flags) {
  flags = brush.ReadBody(reader, wads, flags, Report());
  Touch();
  return flags;
}

entity* entity::ReadChild(std::vector<entity*>& open) {
  const std::size_t depth = std::min<std::size_t>(open.size(), MAXDEPTH - 1);
  entity& parent = depth == 0 ? *this : *open[depth - 1];
  return parent.AddChild(std::make_unique<entity>(ClassSetInUse()));
}

void entity::FinishReading() {
  if (class_->hasTilde) SetFlags(class_->tildeValue);
  keys_.shrink_to_fit();
  children_.shrink_to_fit();
}

void entity::WriteMapBrushes(TextWriter& out, unsigned option) const {
  class_->WriteBrushPart(*this, out, option);
}

void entity::WriteMapEntity(TextWriter& out, unsigned option) const {
  class_->WriteEntityBlock(*this, out, option);
}

void entity::WriteExtended(TextWriter& out) const {
  WriteExtended(out, *this);
}

void entity::WriteExtended(TextWriter& out, const entity& keys) const {
  out.Put("{\n");
  WriteKeysAndFaces(out, keys.keys_, [](std::string_view) { return true; });
  for (const EntityPtr& child : children_) child->WriteExtended(out);
  out.Put("}\n");
}

void entity::WriteKeysAndFaces(TextWriter& out, bool (*isWritten)(std::string_view name)) const {
  WriteKeysAndFaces(out, keys_, isWritten);
}

// Faces are read on to a closing brace or a key, and a child's brace would be taken for damage:
// where both are there, the last key stands between them.
void entity::WriteKeysAndFaces(TextWriter& out, const std::vector<KeyPair>& keys,
                               bool (*isWritten)(std::string_view name)) const {
  const bool needsKeyBehind = brush.HasText() && !children_.empty();
  const KeyPair* last = nullptr;
  for (const KeyPair& pair : keys) {
    if (!isWritten(pair.name)) continue;
    if (last) WriteKey(out, last->name, last->value);
    last = &pair;
  }
  if (last && !needsKeyBehind) WriteKey(out, last->name, last->value);
  brush.WriteFaces(out, Report());
  if (last && needsKeyBehind) WriteKey(out, last->name, last->value);
}

void entity::WriteGameKeys(TextWriter& out) const {
  for (const KeyPair& pair : keys_) {
    if (!IsEditorKey(pair.name)) WriteKey(out, pair.name, pair.value);
  }
}

}  // namespace ferrowand
