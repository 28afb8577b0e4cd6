#include <algorithm>
#include <cmath>
#include <utility>

#include "base/text_reader.h"
#include "document/classes/native_classes.h"
#include "document/classes/special_classes.h"
#include "views/entity_drawing.h"

namespace ferrowand {
namespace {

constexpr Pen EMBED_PEN{{200, 0, 0}};

void DrawChildren(const entity& e, DrawContext& context, const entity* root) {
  for (const EntityPtr& child : e.getEntityList()) {
    if (child->getClass()) child->getClass()->DrawTree(*child, context, root);
  }
}

EntityPtr ExpansionToDraw(const entity& instance, const DrawContext& context) {
  return context.flags & DRAW_TEMPLATES ? ExpandInstance(instance) : nullptr;
}

}  // namespace

Colour LayerColour(const entity& layer) {
  const EntityClass& own = *layer.getClass();
  const auto component = [&](const char* key, float otherwise) {
    const char* value = layer.GetKey(key);
    const double part = value ? ParseFloat(value) : otherwise;
    return static_cast<std::uint8_t>(std::lround(255 * std::clamp(part, 0.0, 1.0)));
  };
  return {component("XMPcolourr", own.red), component("XMPcolourg", own.green),
          component("XMPcolourb", own.blue)};
}

void BrushClass::DrawTree(const entity& e, DrawContext& context, const entity* root) const {
  if (root == &e) root = nullptr;
  if (root == nullptr) {
    const PenScope pen(context, {e.brush.Outline()});
    DrawEntity(e, context);
  }
  DrawChildren(e, context, root);
}

void EmbedClass::DrawTree(const entity& e, DrawContext& context, const entity* root) const {
  if (!e.IsVisible() || (root != nullptr && root != &e)) return;
  const PenScope pen(context, context.pens.entity);
  DrawEntity(e, context);
}

void EmbedClass::DrawEntity(const entity& e, DrawContext& context) const {
  if (!e.IsVisible()) return;
  if (e.HasOrigin() && context.drawsEntities) {
    DrawBox(e.GetBounds(), PenFor(context.overridePen.value_or(EMBED_PEN), context), context);
    DrawClassname(e, context);
  }
  DrawTargetArrows(e, context);
}

void EmbedClass::DrawOutline(const entity& e, DrawContext& context) const {
  if (!e.IsVisible() || !e.HasOrigin() || !context.drawsEntities) return;
  DrawBox(e.GetBounds(), PenFor(context.pens.boxOutline, context), context);
}

void LayerClass::DrawTree(const entity& e, DrawContext& context, const entity* root) const {
  if (!e.IsVisible()) return;
  if (root == &e) root = nullptr;
  const auto outer = std::exchange(context.layerColour, LayerColour(e));
  if (root == nullptr) {
    const PenScope pen(context, context.pens.entity);
    DrawEntity(e, context);
  }
  DrawChildren(e, context, root);
  context.layerColour = outer;
}

// The expansion looks like a brush entity: its brushes are not there to be edited.
void TemplateInstanceClass::DrawEntity(const entity& e, DrawContext& context) const {
  EntityClass::DrawEntity(e, context);
  const EntityPtr expansion = ExpansionToDraw(e, context);
  if (!expansion) return;
  EntityClass::DrawEntity(*expansion, context);
  for (const EntityPtr& child : expansion->getEntityList()) {
    EntityClass::DrawTree(*child, context, nullptr);
  }
}

void TemplateInstanceClass::DrawOutline(const entity& e, DrawContext& context) const {
  EntityClass::DrawOutline(e, context);
  const EntityPtr expansion = ExpansionToDraw(e, context);
  if (!expansion) return;
  EntityClass::DrawOutline(*expansion, context);
  for (const EntityPtr& child : expansion->getEntityList()) {
    EntityClass::DrawOutline(*child, context);
  }
}

}  // namespace ferrowand
