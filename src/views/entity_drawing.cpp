#include "views/entity_drawing.h"

#include <utility>

#include "document/classes/native_classes.h"
#include "document/classes/special_classes.h"
#include "views/entity_parts.h"

namespace ferrowand {
namespace {

constexpr Pen EMBED_PEN{{200, 0, 0}};

void DrawGroup(const entity& e, DrawContext& context, const entity* root);

const entity* ExpansionToDraw(const entity& instance, const DrawContext& context) {
  // Where its template is opened, that is drawn.
  const bool isDrawn = (context.flags & DRAW_TEMPLATES) && instance.IsEnabled();
  return isDrawn ? ExpandInstance(instance) : nullptr;
}

// As an entity of the class `look`.
void DrawAs(const EntityClass& look, const entity& e, DrawContext& context) {
  if (!e.IsVisible()) return;
  DrawOwnBrush(e, context);
  if (e.HasOrigin() && context.drawsEntities) DrawPointPart(e, look, context);
  DrawTargetArrows(e, context);
}

// The expansion looks like a brush entity: its brushes are not there to be edited.
void DrawInstance(const entity& e, DrawContext& context) {
  DrawAs(*e.getClass(), e, context);
  const entity* expansion = ExpansionToDraw(e, context);
  if (!expansion) return;
  DrawAs(*e.getClass(), *expansion, context);
  for (const EntityPtr& child : expansion->getEntityList()) DrawGroup(*child, context, nullptr);
}

void DrawEmbed(const entity& e, DrawContext& context) {
  if (!e.IsVisible()) return;
  if (e.HasOrigin() && context.drawsEntities) {
    DrawBox(e.GetBounds(), PenFor(context.overridePen.value_or(EMBED_PEN), context), context);
    DrawClassname(e, context);
  }
  DrawTargetArrows(e, context);
}

void DrawEntity(const entity& e, DrawContext& context) {
  switch (e.getClass()->Kind()) {
    case EntityKind::Embed:
      return DrawEmbed(e, context);
    case EntityKind::TemplateInstance:
      return DrawInstance(e, context);
    default:
      return DrawAs(*e.getClass(), e, context);
  }
}

// Unless the drawing is limited to something else. Gives what it is limited to below the entity.
const entity* DrawWithin(const entity* root, const entity& e, const Pen& pen,
                         DrawContext& context) {
  if (root != nullptr && root != &e) return root;
  const PenScope scope(context, pen);
  DrawEntity(e, context);
  return nullptr;
}

void DrawChildren(const entity& e, DrawContext& context, const entity* root) {
  for (const EntityPtr& child : e.getEntityList()) DrawTree(*child, context, root);
}

// The members of a group that acts as one are drawn as parts of it, whatever kind they are: its
// visibility rule, its pen.
void DrawGroup(const entity& e, DrawContext& context, const entity* root) {
  if (!e.IsVisible()) return;
  root = DrawWithin(root, e, context.pens.entity, context);
  if (!e.IsMarked()) return DrawChildren(e, context, root);
  for (const EntityPtr& child : e.getEntityList()) DrawGroup(*child, context, root);
}

// Without asking whether it is seen, as far as its children go.
void DrawBrushTree(const entity& e, DrawContext& context, const entity* root) {
  DrawChildren(e, context, DrawWithin(root, e, {e.brush.Outline()}, context));
}

void DrawLayer(const entity& e, DrawContext& context, const entity* root) {
  if (!e.IsVisible()) return;
  const auto outer = std::exchange(context.layerColour, LayerColour(e));
  DrawChildren(e, context, DrawWithin(root, e, context.pens.entity, context));
  context.layerColour = outer;
}

// `by` is the kind of the object that is outlined, whose members are outlined in its way.
void DrawOutlineBy(EntityKind by, const entity& e, DrawContext& context) {
  if (!e.IsVisible()) return;
  DrawBrushOutline(e.brush, PenFor(context.pens.brushOutline, context), context);
  if (e.HasOrigin() && context.drawsEntities) {
    DrawPointOutline(e, *e.getClass(), PenFor(context.pens.boxOutline, context), context);
  }
  if (e.IsMarked()) {
    for (const EntityPtr& child : e.getEntityList()) DrawOutlineBy(by, *child, context);
  }
  if (by != EntityKind::TemplateInstance) return;
  const entity* expansion = ExpansionToDraw(e, context);
  if (!expansion) return;
  DrawOutlineBy(EntityKind::Entity, *expansion, context);
  for (const EntityPtr& child : expansion->getEntityList()) {
    DrawOutlineBy(EntityKind::Entity, *child, context);
  }
}

}  // namespace

void DrawTree(const entity& e, DrawContext& context, const entity* root) {
  switch (e.getClass()->Kind()) {
    case EntityKind::Brush:
      return DrawBrushTree(e, context, root);
    case EntityKind::Layer:
      return DrawLayer(e, context, root);
    case EntityKind::Embed:
      if (e.IsVisible()) DrawWithin(root, e, context.pens.entity, context);
      return;
    default:
      return DrawGroup(e, context, root);
  }
}

void DrawOutline(const entity& e, DrawContext& context) {
  if (e.getClass()->Kind() != EntityKind::Embed) {
    return DrawOutlineBy(e.getClass()->Kind(), e, context);
  }
  if (!e.IsVisible() || !e.HasOrigin() || !context.drawsEntities) return;
  DrawBox(e.GetBounds(), PenFor(context.pens.boxOutline, context), context);
}

}  // namespace ferrowand
