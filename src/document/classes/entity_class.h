// One class of entities: what the comments of a QuakeC file tell of it, and how its entities
// behave: whether they are seen, how they are written for the game, how they are drawn. A class
// read from a file is of the base type; the editor's own seven override what differs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "geometry/vec.h"
#include "platform/canvas.h"

namespace ferrowand {

class ClassSet;
class TextWriter;
class entity;
struct DrawContext;

// What an entity of a class is, for whoever must treat kinds apart.
enum class EntityKind : std::uint8_t {
  Brush = 0,
  Entity = 1,
  Layer = 2,
  Hidden = 3,
  TemplateClass = 4,
  TemplateInstance = 5,
  Unknown = 6
};

// Bits of the option word of a write for the game.
inline constexpr unsigned WRITE_VISIBLE_ONLY = 0x800;
inline constexpr unsigned WRITE_KEEP_INSTANCES = 0x4000;
inline constexpr unsigned WRITE_TEMPLATE_CLASSES = 0x8000;

class EntityClass {
 public:
  // `set` owns the class and outlives it.
  explicit EntityClass(const ClassSet& set) : set_(set) {}
  virtual ~EntityClass() = default;
  EntityClass(const EntityClass&) = delete;
  EntityClass& operator=(const EntityClass&) = delete;

  std::string classname;    // matched letter by letter
  std::string description;  // the help text
  float red = 0, green = 0, blue = 0;
  std::int16_t minx = -8, miny = -8, minz = -8;  // size box around the origin, world units
  std::int16_t maxx = 8, maxy = 8, maxz = 8;
  bool isMadeOfBrushes = false;    // a "?" for the box; the box is then that of the defaults
  std::vector<std::string> flags;  // names of the spawnflags, bit 0 first
  bool hasTilde = false;           // the header fixes the editor flags of its entities ...
  std::int32_t tildeValue = 0;     // ... to this

  std::size_t numflags() const { return flags.size(); }
  const ClassSet& Set() const { return set_; }
  // One pixel, in the class colour. A component above 1 wraps, as it always did.
  Pen ClassPen() const;

  // The name up to its first '_': what groups the class menu.
  virtual std::string Prefix() const;
  virtual bool HasSizeBox() const;
  std::int16_t Min(int axis) const { return axis == 0 ? minx : axis == 1 ? miny : minz; }
  std::int16_t Max(int axis) const { return axis == 0 ? maxx : axis == 1 ? maxy : maxz; }
  virtual bool IsOwnBlock() const { return true; }
  virtual bool IsNative() const { return false; }
  virtual EntityKind Kind() const { return EntityKind::Entity; }

  virtual bool IsVisible(const entity& e) const;
  virtual bool IsEnabled(const entity& e) const;
  virtual bool IsMarked(const entity& e) const;

  // Of the entity's own brush and those below it, and of the size box where it has an origin; empty
  // when there is nothing.
  virtual Bounds EntityBounds(const entity& e) const;

  // The two halves of a write for the game: brushes that belong to the world, then blocks of their
  // own. `option` is a set of WRITE_ bits.
  virtual void WriteBrushPart(const entity& e, TextWriter& out, unsigned option) const;
  virtual void WriteEntityBlock(const entity& e, TextWriter& out, unsigned option) const;

  // `root` limits the drawing to that entity and what lies below it; null draws everything.
  virtual void DrawTree(const entity& e, DrawContext& context, const entity* root) const;
  virtual void DrawEntity(const entity& e, DrawContext& context) const;
  virtual void DrawOutline(const entity& e, DrawContext& context) const;

 private:
  const ClassSet& set_;
};

}  // namespace ferrowand
