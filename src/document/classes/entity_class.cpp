#include "document/classes/entity_class.h"

#include "document/entity.h"

namespace ferrowand {
namespace {

// Cut to a whole number of which the low 8 bits remain; what no whole number holds is 0.
std::uint8_t ToPart(float component) {
  const double scaled = static_cast<double>(component) * 255;
  return scaled > -2147483648.0 && scaled < 2147483648.0
             ? static_cast<std::uint8_t>(static_cast<std::int32_t>(scaled))
             : std::uint8_t{0};
}

}  // namespace

Colour EntityClass::ClassColour() const {
  return {ToPart(red), ToPart(green), ToPart(blue)};
}

std::string EntityClass::Prefix() const {
  return classname.substr(0, classname.find('_'));
}

bool EntityClass::HasSizeBox() const {
  return minx != 32000;
}

bool EntityClass::IsVisible(const entity&) const {
  return true;
}

bool EntityClass::IsEnabled(const entity&) const {
  return true;
}

Bounds EntityClass::SizeBox() const {
  if (!HasSizeBox()) return {{0, 0, 0}, {0, 0, 0}};
  Bounds box{Vec3(minx, miny, minz), Vec3(minx, miny, minz)};
  box.Add(Vec3(maxx, maxy, maxz));
  return box;
}

bool EntityClass::IsMarked(const entity& e) const {
  return e.state == 1;
}

Bounds EntityClass::EntityBounds(const entity& e) const {
  Bounds bounds = e.brush.Box();
  for (const EntityPtr& child : e.getEntityList()) bounds.Add(child->GetBounds());
  if (e.HasOrigin() && HasSizeBox()) bounds.Add(Moved(SizeBox(), e.Origin()));
  return bounds;
}

}  // namespace ferrowand
