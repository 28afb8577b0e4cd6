// The object that everything in a map is: the world, a point entity, a brush entity, a layer, a
// plain brush. Keys and values as in the file, what is decoded from the special keys, a class, an
// embedded brush and the owned children.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/brush.h"
#include "geometry/vec.h"

namespace ferrowand {

class ClassSet;
class EntityClass;
class Map;
class ObjectReader;
class Reporter;
class Selection;
class TextWriter;
class WadList;
class entity;

inline constexpr int MAXKEYS = 250;
inline constexpr float NO_ORIGIN = 65000.0f;     // in origin.x of an entity without one
inline constexpr std::int16_t NO_ANGLE = 32600;  // in angle of an entity without one
inline constexpr int MAXDEPTH = 200;             // of entities within entities, when reading

// Bits of `flags`, the key XMPferroflags.
inline constexpr std::int32_t ENTITY_DRAWS_TARGETS = 1;
inline constexpr std::int32_t ENTITY_IS_LIGHT = 2;

using EntityPtr = std::unique_ptr<entity>;

class entity {
 public:
  // A plain brush, whose class is bound in `classes` until a "classname" says otherwise.
  explicit entity(const ClassSet& classes);
  virtual ~entity();
  entity(const entity&) = delete;
  entity& operator=(const entity&) = delete;

  // --- keys: ordered pairs. Looking up ignores case; setting removes only an exact match and
  // appends, so that a key that is set moves to the end. Both asymmetries are meant.
  int numkeys() const { return static_cast<int>(keys_.size()); }
  const std::string& KeyName(int index) const {
    return keys_[static_cast<std::size_t>(index)].name;
  }
  const std::string& KeyValue(int index) const {
    return keys_[static_cast<std::size_t>(index)].value;
  }
  // Null when there is none. Valid until the keys change.
  const char* GetKey(std::string_view name) const;
  void SetKey(std::string_view name, std::string_view value);
  // From the 250th on this is a failed assertion, and added all the same.
  void AddKey(std::string_view name, std::string_view value);
  // What it has said of the object is not so any more; the class stays.
  void RemoveKey(int index);
  // For good, where a name stands in several cases.
  void RemoveKeys(std::string_view name);
  void ClearKeys();

  // --- decoded keys
  const Vec3& Origin() const { return origin_; }
  bool HasOrigin() const { return origin_.x != NO_ORIGIN; }
  std::int16_t angle() const { return angle_; }
  std::int32_t flags() const { return flags_; }
  void SetOrigin(std::int16_t x, std::int16_t y, std::int16_t z);
  void SetOrigin(const Vec3& position);
  void SetOriginAxis(int axis, std::int16_t value);
  void SetFlags(std::int32_t value);

  // --- class
  EntityClass* getClass() const { return class_; }
  void SetClass(EntityClass* newClass);
  // For this entity and all below it.
  void ResolveClasses(const ClassSet& set);
  bool IsVisible() const;
  bool IsEnabled() const;
  bool IsMarked() const;
  bool IsOwnBlock() const;
  Bounds GetBounds() const;

  // --- tree. Children in file order, owned.
  entity* Parent() const { return parent_; }
  const std::vector<EntityPtr>& getEntityList() const { return children_; }
  // To the end. The map puts the child into its current layer instead.
  virtual entity* AddChild(EntityPtr child);
  // At this entity itself, before the child that now has the index (or at the end).
  entity* InsertChild(EntityPtr child, std::size_t index);
  std::size_t IndexOf(const entity& child) const;
  EntityPtr TakeChild(std::size_t index);
  std::vector<EntityPtr> TakeChildren();
  // Those at the places, which ascend; in one walk. Whatever leaves a map leaves its selection too:
  // who takes many out at once empties that first.
  std::vector<EntityPtr> TakeChildren(std::span<const std::size_t> places);
  // Undoes that: afterwards the children stand at the places. Beyond the end is at the end.
  void InsertChildren(std::vector<EntityPtr> children, std::span<const std::size_t> places);
  // This entity itself, or one below it.
  bool IsWithin(const entity& tree) const;
  // The document that holds this entity, or null.
  virtual Map* OwningMap();
  const Map* OwningMap() const { return const_cast<entity*>(this)->OwningMap(); }

  // --- writing; an ObjectReader reads. `option` is a set of WRITE_ bits.
  virtual void WriteMapBrushes(TextWriter& out, unsigned option) const;
  virtual void WriteMapEntity(TextWriter& out, unsigned option) const;
  virtual void WriteExtended(TextWriter& out) const;
  // The keys that the game may see.
  void WriteGameKeys(TextWriter& out) const;
  virtual void ResolveTextures(const WadList& wads);

  // Deep; belongs to nothing yet.
  EntityPtr Copy() const;
  // To the letter, but without what lies below.
  EntityPtr CopyAlone() const;
  // To the letter, class included.
  bool HasSameKeys(const entity& other) const;
  // Of the object alone: class, brush and keys, in whatever order these stand.
  bool IsSameInAnyOrder(const entity& other) const;
  // Of the object alone, about.
  std::size_t Bytes() const;
  // What the object itself is changes places: keys, class, brush and what is decoded. The tree
  // stays as it is, and so does what the views keep.
  void SwapContents(entity& other);

  // Another one after every change of this object or of what lies below it.
  std::uint32_t Revision() const { return revision_; }
  // To be said of a change of what stands open here: of `brush`, when no step of editing keeps it,
  // and of `state`.
  void Touch();

  Brush brush;
  std::uint8_t state = 1;       // 1: a group acts as one object; 0: its members act alone
  std::int32_t viewIndex = -1;  // of the views

 protected:
  Reporter& Report() const;
  // With the keys of another, of which those are written that may be.
  void WriteKeysAndFaces(TextWriter& out, const entity& keys,
                         bool (*isWritten)(std::string_view name)) const;
  // The extended text, but with the keys of another.
  void WriteExtended(TextWriter& out, const entity& keys) const;

 private:
  friend class ObjectReader;
  friend class Selection;

  struct KeyPair {
    std::string name;
    std::string value;
    friend bool operator==(const KeyPair&, const KeyPair&) = default;
  };

  void WriteKeysAndFaces(TextWriter& out, const std::vector<KeyPair>& keys,
                         bool (*isWritten)(std::string_view name)) const;

  // Without keys: what a copy is filled into.
  entity(Brush&& copiedBrush, EntityClass* copiedClass);

  const ClassSet& ClassSetInUse() const;
  void Append(KeyPair pair);
  void Put(KeyPair pair);
  void ReportTooManyKeys() const;
  void Decode(const KeyPair& pair);
  void DecodeAnew(std::string_view name);
  void Bind(EntityClass& newClass);
  EntityPtr Adopt(EntityPtr child);
  void Release(entity& child);

  entity* parent_ = nullptr;
  EntityClass* class_ = nullptr;
  Vec3 origin_{NO_ORIGIN, 0, 0};
  std::int16_t angle_ = NO_ANGLE;
  bool isSelected_ = false;  // in the map's selection
  std::int32_t flags_ = 0;
  std::vector<KeyPair> keys_;
  std::vector<EntityPtr> children_;
  mutable std::uint32_t lastFound_ = 0;  // by IndexOf
  std::uint32_t revision_ = 0;
};

// The class of which a map has one, itself.
bool IsWorldspawn(std::string_view classname);
// Keys that begin with XMP, in any case, are the editor's own and never reach the game.
bool IsEditorKey(std::string_view name);
// One line, as in both formats. There is no escaping.
void WriteKey(TextWriter& out, std::string_view name, std::string_view value);

}  // namespace ferrowand
