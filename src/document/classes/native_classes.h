// The editor's own seven classes. They organise a map and never reach the game as they are: on the
// way out they are folded into the world, expanded, or left out.
#pragma once

#include <memory>
#include <vector>

#include "document/classes/entity_class.h"
#include "platform/colour.h"

namespace ferrowand {

// Shared by all seven: one group in the class menu.
class NativeClass : public EntityClass {
 public:
  NativeClass(const ClassSet& set, const char* name, const char* help);

  std::string Prefix() const override { return "special"; }
  bool IsNative() const override { return true; }
};

class UnknownClass : public NativeClass {
 public:
  explicit UnknownClass(const ClassSet& set);
  EntityKind Kind() const override { return EntityKind::Unknown; }
};

class BrushClass : public NativeClass {
 public:
  explicit BrushClass(const ClassSet& set);
  bool IsOwnBlock() const override { return false; }
  EntityKind Kind() const override { return EntityKind::Brush; }
};

class EmbedClass : public NativeClass {
 public:
  explicit EmbedClass(const ClassSet& set);
  EntityKind Kind() const override { return EntityKind::Embed; }
  // The box that the keys XMPminx .. XMPmaxz tell, 16 units each way where they are silent.
  Bounds EntityBounds(const entity& e) const override;
};

class HiddenClass : public NativeClass {
 public:
  explicit HiddenClass(const ClassSet& set);
  bool IsOwnBlock() const override { return false; }
  bool IsVisible(const entity&) const override { return false; }
  bool IsEnabled(const entity&) const override { return false; }
  EntityKind Kind() const override { return EntityKind::Hidden; }
};

// Bits of a layer's XMPstate.
inline constexpr int LAYER_HIDDEN = 1;
inline constexpr int LAYER_DISABLED = 2;

class LayerClass : public NativeClass {
 public:
  explicit LayerClass(const ClassSet& set);
  bool IsOwnBlock() const override { return false; }
  bool IsVisible(const entity& e) const override;
  bool IsEnabled(const entity& e) const override;
  bool IsMarked(const entity&) const override { return false; }
  EntityKind Kind() const override { return EntityKind::Layer; }
};

// What its keys tell, 0 to 1 each; the class's own where one is missing.
Colour LayerColour(const entity& layer);

class TemplateInstanceClass : public NativeClass {
 public:
  explicit TemplateInstanceClass(const ClassSet& set);
  bool HasSizeBox() const override { return true; }
  // Where its template is opened that is worked on, not the instance.
  bool IsEnabled(const entity& e) const override;
  EntityKind Kind() const override { return EntityKind::TemplateInstance; }
  // Of the expanded template; empty when it names none.
  Bounds EntityBounds(const entity& e) const override;
  void WriteBrushPart(const entity& e, TextWriter& out, unsigned option) const override;
  void WriteEntityBlock(const entity& e, TextWriter& out, unsigned option) const override;
};

class TemplateClassClass : public NativeClass {
 public:
  explicit TemplateClassClass(const ClassSet& set);
  bool IsOwnBlock() const override { return false; }
  bool IsMarked(const entity& e) const override;
  // A template is seen and edited only while it is opened.
  bool IsVisible(const entity& e) const override { return !IsMarked(e); }
  bool IsEnabled(const entity& e) const override { return !IsMarked(e); }
  EntityKind Kind() const override { return EntityKind::TemplateClass; }
  void WriteBrushPart(const entity& e, TextWriter& out, unsigned option) const override;
  void WriteEntityBlock(const entity& e, TextWriter& out, unsigned option) const override;
};

// One of each: unknown, brush, embed, hidden, layer, templateInstance, templateClass.
std::vector<std::unique_ptr<EntityClass>> MakeNativeClasses(const ClassSet& set);

}  // namespace ferrowand
