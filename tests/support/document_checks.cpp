#include "support/document_checks.h"

#include <set>
#include <sstream>
#include <string>

#include "base/number_text.h"
#include "base/path_text.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/picking.h"
#include "support/map_text.h"

namespace ferrowand {
namespace {

// Of keys in several spellings the last one counts.
std::string FaultOfKeys(const entity& e, const Map& map) {
  Vec3 origin(NO_ORIGIN, 0, 0);
  std::int16_t angle = NO_ANGLE;
  std::int32_t flags = 0;
  const EntityClass* expected = &map.classSet->FindClass("unknown");
  for (int i = 0; i < e.numkeys(); ++i) {
    const std::string& value = e.KeyValue(i);
    if (EqualNoCase(e.KeyName(i), "origin")) {
      entity fresh(*map.classSet);
      fresh.SetOrigin(origin);
      fresh.SetKey("origin", value);
      origin = fresh.Origin();
    } else if (EqualNoCase(e.KeyName(i), "angle")) {
      angle = static_cast<std::int16_t>(ParseInt(value));
    } else if (EqualNoCase(e.KeyName(i), "XMPferroflags")) {
      flags = ParseInt(value);
    } else if (EqualNoCase(e.KeyName(i), "classname")) {
      expected = &map.classSet->FindClass(value);
    }
  }
  if (e.Origin() != origin) return "its origin is not that of its key";
  if (e.angle() != angle) return "its angle is not that of its key";
  if (e.flags() != flags) return "its flags are not those of its key";
  return e.getClass() == expected ? "" : "its class is " + e.getClass()->classname;
}

std::string FaultOfBrush(const Brush& brush, const Map& map) {
  Bounds bounds;
  for (const Face& face : brush.Faces()) {
    if (face.texture != map.wads.FindTexture(face.Name())) return "a texture is not bound";
    if (!face.HasShape()) return "";
    for (const WindingPoint& p : std::as_const(*face.w).Points()) bounds.Add(p.Position());
  }
  return bounds == brush.Box() ? "" : "its bounds are not those of its windings";
}

std::string FaultOf(const entity& e, const Map& map) {
  for (const EntityPtr& child : e.getEntityList()) {
    if (child->Parent() != &e) return "a child has another parent";
  }
  const std::string fault = FaultOfKeys(e, map);
  return fault.empty() ? FaultOfBrush(e.brush, map) : fault;
}

std::string FaultOfPointers(const Map& map) {
  std::set<const entity*> known;
  for (const entity* e : map.selection) {
    if (!known.insert(e).second) return "something is selected twice";
    if (e->OwningMap() != &map) return "something is selected that has left";
    if (!IsReachable(*e)) return "something is selected that cannot be reached";
  }
  std::set<std::pair<const entity*, int>> faces;
  for (const PickedFace& picked : map.pickedFaces) {
    if (!faces.insert({picked.brush, picked.face}).second) return "a face is picked twice";
    if (picked.brush->OwningMap() != &map) return "a face is picked that has left";
    if (picked.face >= picked.brush->brush.getNumFaces()) return "a face is picked that is gone";
    if (!IsReachable(*picked.brush)) return "a face is picked that cannot be reached";
  }
  const entity *layer = map.currentLayer(), *group = map.leadingGroup();
  if (layer && layer->Parent() != &map) return "the current layer has left";
  if (group && group->OwningMap() != &map) return "the leading group has left";
  return "";
}

struct Count {
  int blocks = 0, worlds = 0, brushes = 0;
  friend bool operator==(const Count&, const Count&) = default;
};

void CountTree(const entity& e, Count& count);

void CountShape(const entity& e, Count& count) {
  count.brushes += e.brush.getNumFaces() > 0;
  for (const EntityPtr& child : e.getEntityList()) CountTree(*child, count);
}

void CountTree(const entity& e, Count& count) {
  switch (e.getClass()->Kind()) {
    case EntityKind::TemplateClass:
      return;
    case EntityKind::TemplateInstance:
      if (const entity* shape = ExpandInstance(e)) CountShape(*shape, count);
      return;
    default:
      count.blocks += e.IsOwnBlock();
      CountShape(e, count);
  }
}

// Line by line, as our own text is: the least that a strict reader takes.
std::string ReadStrictly(const std::string& text, Count& count) {
  std::istringstream in(text);
  std::string line;
  int depth = 0, faces = 0;
  for (int number = 1; std::getline(in, line); ++number) {
    line.erase(0, line.find_first_not_of('\t'));
    const std::string where = " in line " + std::to_string(number);
    if (line.empty() || line.starts_with("//")) continue;
    if (line == "{") {
      if (++depth > 2) return "a block within a block" + where;
      if (depth == 1) ++count.blocks;
      if (depth == 2) faces = 0;
    } else if (line == "}") {
      if (depth == 2 && faces < 4) return "an open brush" + where;
      if (depth == 2) ++count.brushes;
      if (--depth < 0) return "a brace too many" + where;
    } else if (line.starts_with("( ") && depth == 2) {
      ++faces;
    } else if (line.starts_with('"') && depth == 1) {
      const bool isWorld = line == "\"classname\" \"worldspawn\"";
      if (isWorld && count.blocks > 1) return "a second world" + where;
      count.worlds += isWorld;
    } else {
      return "what is no map" + where;
    }
  }
  return depth == 0 ? "" : "a block without end";
}

}  // namespace

testing::AssertionResult IsConsistent(const Map& map) {
  std::string fault = FaultOfPointers(map);
  ForEachEntity(map, [&](const entity& e) {
    if (!fault.empty()) return;
    fault = FaultOf(e, map);
    const char* name = e.GetKey("XMPentityname");
    if (!fault.empty()) fault = (name ? name : "an entity without a name") + (": " + fault);
  });
  return fault.empty() ? testing::AssertionSuccess() : testing::AssertionFailure() << fault;
}

testing::AssertionResult IsPlayable(const Map& map) {
  Count told, held{1, 1, 0};
  CountShape(map, held);
  const std::string fault = ReadStrictly(QuakeText(map), told);
  if (!fault.empty()) return testing::AssertionFailure() << fault;
  if (told == held) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << "entities " << told.blocks << " of " << held.blocks << ", worlds " << told.worlds
         << ", brushes " << told.brushes << " of " << held.brushes;
}

}  // namespace ferrowand
