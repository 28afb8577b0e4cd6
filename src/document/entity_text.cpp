// Entities written as text: the body between their braces.
#include "base/report.h"
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/entity.h"

namespace ferrowand {
namespace {

bool IsLetter(char c, char upper) {
  return c == upper || c == upper - 'A' + 'a';
}

}  // namespace

bool IsEditorKey(std::string_view name) {
  return name.size() >= 3 && IsLetter(name[0], 'X') && IsLetter(name[1], 'M') &&
         IsLetter(name[2], 'P');
}

void WriteKey(TextWriter& out, std::string_view name, std::string_view value) {
  out.Put("\t\"");
  out.Put(name);
  out.Put("\" \"");
  out.Put(value);
  out.Put("\"\n");
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

void entity::WriteKeysAndFaces(TextWriter& out, const entity& keys,
                               bool (*isWritten)(std::string_view name)) const {
  WriteKeysAndFaces(out, keys.keys_, isWritten);
}

// What opens right behind a brush's faces is taken for another brush: where faces and children are
// both there, the last key stands between them.
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
