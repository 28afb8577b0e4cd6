#include "support/document_checks.h"

#include <set>
#include <string>

#include "base/number_text.h"
#include "base/path_text.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/picking.h"

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
  const entity *layer = map.currentLayer(), *group = map.leadingGroup();
  if (layer && layer->Parent() != &map) return "the current layer has left";
  if (group && group->OwningMap() != &map) return "the leading group has left";
  return "";
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

}  // namespace ferrowand
