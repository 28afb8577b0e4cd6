// How entities are written for the game, by their classes. What is not a block of its own belongs
// to the world: its brushes are written there and it leaves no other trace.
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/classes/native_classes.h"
#include "document/classes/special_classes.h"
#include "document/entity.h"

namespace ferrowand {
namespace {

void WriteName(const entity& e, TextWriter& out) {
  const char* name = e.GetKey("XMPentityname");
  if (!name) return;
  out.Put("//");
  // A name of several lines would be taken for text of the map behind the first.
  for (const char* c = name; *c; ++c) out.Put(*c == '\r' || *c == '\n' ? ' ' : *c);
  out.Put('\n');
}

void WriteBrush(const entity& e, TextWriter& out, Reporter& reporter) {
  if (!e.brush.HasText()) return;
  out.Put("\t{\n");
  e.brush.WriteFaces(out, reporter);
  out.Put("\t}\n");
}

}  // namespace

void EntityClass::WriteBrushPart(const entity& e, TextWriter& out, unsigned option) const {
  if ((option & WRITE_VISIBLE_ONLY) && !e.IsVisible()) return;
  if (e.IsOwnBlock() && e.IsMarked()) return;
  WriteName(e, out);
  if (!e.IsOwnBlock()) WriteBrush(e, out, Set().Library().Report());
  for (const EntityPtr& child : e.getEntityList()) child->WriteMapBrushes(out, option);
}

void EntityClass::WriteEntityBlock(const entity& e, TextWriter& out, unsigned option) const {
  if ((option & WRITE_VISIBLE_ONLY) && !e.IsVisible()) return;
  if (e.IsOwnBlock()) {
    WriteName(e, out);
    // Meant: only the opening brace asks for keys; every entity has its classname at least.
    if (e.numkeys() > 0) {
      out.Put("{\n");
      e.WriteGameKeys(out);
      WriteBrush(e, out, Set().Library().Report());
    }
    if (e.IsMarked()) {
      for (const EntityPtr& child : e.getEntityList()) child->WriteMapBrushes(out, option);
    }
    out.Put("}\n");
  }
  // Behind it: the game knows no block within a block.
  for (const EntityPtr& child : e.getEntityList()) child->WriteMapEntity(out, option);
}

void TemplateInstanceClass::WriteBrushPart(const entity& e, TextWriter& out,
                                           unsigned option) const {
  if (option & WRITE_KEEP_INSTANCES) return;
  if (const entity* shape = ExpandInstance(e)) EntityClass::WriteBrushPart(*shape, out, option);
}

void TemplateInstanceClass::WriteEntityBlock(const entity& e, TextWriter& out,
                                             unsigned option) const {
  if (option & WRITE_KEEP_INSTANCES) return;
  if (const entity* shape = ExpandInstance(e)) EntityClass::WriteEntityBlock(*shape, out, option);
}

void TemplateClassClass::WriteBrushPart(const entity& e, TextWriter& out, unsigned option) const {
  if (option & WRITE_TEMPLATE_CLASSES) EntityClass::WriteBrushPart(e, out, option);
}

void TemplateClassClass::WriteEntityBlock(const entity& e, TextWriter& out, unsigned option) const {
  if (option & WRITE_TEMPLATE_CLASSES) EntityClass::WriteEntityBlock(e, out, option);
}

}  // namespace ferrowand
