// One class of entities: what the comments of a QuakeC file tell of it, and how its entities
// behave: whether they are seen, how far they reach, how they are written for the game. A class
// read from a file is of the base type; the editor's own seven override what differs.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "gamedata/class_record.h"
#include "geometry/vec.h"
#include "platform/colour.h"

namespace ferrowand {

class ClassSet;
class TextWriter;
class entity;

// What an entity of a class is, for whoever must treat kinds apart.
enum class EntityKind : std::uint8_t {
  Brush = 0,
  Entity = 1,
  Layer = 2,
  Hidden = 3,
  TemplateClass = 4,
  TemplateInstance = 5,
  Unknown = 6,
  Embed = 7
};

// Bits of the option word of a write for the game.
inline constexpr unsigned WRITE_VISIBLE_ONLY = 0x800;
inline constexpr unsigned WRITE_KEEP_INSTANCES = 0x4000;
inline constexpr unsigned WRITE_TEMPLATE_CLASSES = 0x8000;

class EntityClass : public ClassRecord {
 public:
  // `set` owns the class and outlives it.
  explicit EntityClass(const ClassSet& set, ClassRecord record = {})
      : ClassRecord(std::move(record)), set_(set) {}
  virtual ~EntityClass() = default;
  EntityClass(const EntityClass&) = delete;
  EntityClass& operator=(const EntityClass&) = delete;

  const ClassSet& Set() const { return set_; }
  // What its entities are drawn in. A component above 1 wraps, as it always did.
  Colour ClassColour() const;

  // The name up to its first '_': what groups the class menu.
  virtual std::string Prefix() const;
  virtual bool HasSizeBox() const;
  // Around the origin of its entities; nothing but that point for those that have none.
  Bounds SizeBox() const;
  // Whether an entity of the class may do without brushes.
  bool StandsAtPoint() const { return HasSizeBox() && (!isMadeOfBrushes || isPointToo); }
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

 private:
  const ClassSet& set_;
};

}  // namespace ferrowand
