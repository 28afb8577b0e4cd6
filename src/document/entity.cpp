#include "document/entity.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include "base/number_text.h"
#include "base/path_text.h"
#include "base/report.h"
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/classes/template_index.h"
#include "document/map.h"

namespace ferrowand {
namespace {

constexpr const char* SOURCE = "entity.cpp";

// Up to three numbers; from the first that is none on, the old values stay.
void ScanPosition(std::string_view text, Vec3& position) {
  constexpr std::string_view BLANKS = " \t\r\n\v\f";
  constexpr double LARGEST = std::numeric_limits<float>::max();
  for (int axis = 0; axis < 3; ++axis) {
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    if (text.starts_with('+')) text.remove_prefix(1);
    const std::size_t digit = text.find_first_not_of("-.");
    if (digit > 2 || text[digit] < '0' || text[digit] > '9') return;
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::invalid_argument) return;
    position[axis] = static_cast<float>(std::clamp(ParseFloat(text), -LARGEST, LARGEST));
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  }
}

}  // namespace

bool IsWorldspawn(std::string_view classname) {
  return EqualNoCase(classname, "worldspawn");
}

entity::entity(const ClassSet& classes)
    : brush(classes.Library().NextOutlineColour()), class_(&classes.FindClass("brush")) {
  // Plain brushes are by far the most and have no other keys.
  keys_.reserve(2);
  keys_.push_back({"classname", "brush"});
  SetFlags(class_->tildeValue);
}

entity::entity(Brush&& copiedBrush, EntityClass* copiedClass)
    : brush(std::move(copiedBrush)), class_(copiedClass) {}

entity::~entity() = default;

const char* entity::GetKey(std::string_view name) const {
  for (const KeyPair& pair : keys_) {
    if (EqualNoCase(pair.name, name)) return pair.value.c_str();
  }
  return nullptr;
}

void entity::SetKey(std::string_view name, std::string_view value) {
  // The texts may be those of the key that goes.
  KeyPair pair{std::string(name), std::string(value)};
  std::erase_if(keys_, [&](const KeyPair& old) { return old.name == pair.name; });
  Append(std::move(pair));
}

void entity::AddKey(std::string_view name, std::string_view value) {
  Append({std::string(name), std::string(value)});
}

void entity::ReportTooManyKeys() const {
  Report().Assert("(numkeys+1)<MAXKEYS", SOURCE, __LINE__);
}

void entity::Append(KeyPair pair) {
  if (numkeys() + 1 >= MAXKEYS) ReportTooManyKeys();
  Put(std::move(pair));
}

void entity::Put(KeyPair pair) {
  keys_.push_back(std::move(pair));
  Decode(keys_.back());
  Touch();
}

void entity::RemoveKey(int index) {
  if (index < 0 || index >= numkeys()) {
    Report().Assert("num<numkeys", SOURCE, __LINE__);
    return;
  }
  const std::string name = std::move(keys_[static_cast<std::size_t>(index)].name);
  keys_.erase(keys_.begin() + index);
  DecodeAnew(name);
  Touch();
}

void entity::RemoveKeys(std::string_view name) {
  for (int i = numkeys() - 1; i >= 0; --i) {
    if (EqualNoCase(KeyName(i), name)) RemoveKey(i);
  }
}

void entity::ClearKeys() {
  keys_ = {};
  Touch();
}

void entity::Decode(const KeyPair& pair) {
  if (EqualNoCase(pair.name, "origin")) {
    ScanPosition(pair.value, origin_);
  } else if (EqualNoCase(pair.name, "angle")) {
    angle_ = static_cast<std::int16_t>(ParseInt(pair.value));
  } else if (EqualNoCase(pair.name, "XMPferroflags")) {
    flags_ = ParseInt(pair.value);
  } else if (EqualNoCase(pair.name, "classname")) {
    Bind(ClassSetInUse().FindClass(pair.value));
  }
}

// What the key has said is said by those of its name that are left, or by none.
void entity::DecodeAnew(std::string_view name) {
  if (EqualNoCase(name, "origin")) {
    origin_ = {NO_ORIGIN, 0, 0};
  } else if (EqualNoCase(name, "angle")) {
    angle_ = NO_ANGLE;
  } else if (EqualNoCase(name, "XMPferroflags")) {
    flags_ = 0;
  } else {
    return;
  }
  for (const KeyPair& pair : keys_) {
    if (EqualNoCase(pair.name, name)) Decode(pair);
  }
}

// What was a template class, or is one now, is said to the map in both cases.
void entity::Bind(EntityClass& newClass) {
  if (class_ == &newClass) return;
  Touch();
  class_ = &newClass;
  Touch();
}

void entity::Touch() {
  for (entity* e = this; e; e = e->parent_) ++e->revision_;
  if (class_->Kind() != EntityKind::TemplateClass) return;
  if (Map* map = OwningMap()) map->Templates().Forget();
}

void entity::SetOrigin(std::int16_t x, std::int16_t y, std::int16_t z) {
  SetOrigin(Vec3(x, y, z));
}

void entity::SetOriginAxis(int axis, std::int16_t value) {
  Vec3 position = origin_;
  position[axis] = value;
  SetOrigin(position);
}

void entity::SetOrigin(const Vec3& position) {
  SetKey("origin",
         FloatText(position.x) + ' ' + FloatText(position.y) + ' ' + FloatText(position.z));
}

void entity::SetFlags(std::int32_t value) {
  SetKey("XMPferroflags", std::to_string(value));
}

void entity::SetClass(EntityClass* newClass) {
  if (!newClass) {
    Report().Assert("newClass", SOURCE, __LINE__);
    return;
  }
  Bind(*newClass);
}

void entity::ResolveClasses(const ClassSet& set) {
  const char* classname = GetKey("classname");
  Bind(set.FindClass(classname ? classname : "unknown"));
  for (const EntityPtr& child : children_) child->ResolveClasses(set);
}

bool entity::IsVisible() const {
  return class_->IsVisible(*this);
}

bool entity::IsEnabled() const {
  return class_->IsEnabled(*this);
}

bool entity::IsMarked() const {
  return class_->IsMarked(*this);
}

bool entity::IsOwnBlock() const {
  return class_->IsOwnBlock();
}

Bounds entity::GetBounds() const {
  return class_->EntityBounds(*this);
}

entity* entity::AddChild(EntityPtr child) {
  return InsertChild(std::move(child), children_.size());
}

EntityPtr entity::Adopt(EntityPtr child) {
  child->parent_ = this;
  Touch();
  if (Map* map = OwningMap()) map->Templates().Came(*child);
  return child;
}

bool entity::IsWithin(const entity& tree) const {
  const entity* e = this;
  while (e && e != &tree) e = e->parent_;
  return e != nullptr;
}

void entity::Release(entity& child) {
  if (Map* map = OwningMap()) {
    map->Forget(child);
    map->Templates().Left(child);
  }
  child.parent_ = nullptr;
  Touch();
}

entity* entity::InsertChild(EntityPtr child, std::size_t index) {
  const auto place = children_.begin() + static_cast<std::ptrdiff_t>(index);
  return children_.insert(place, Adopt(std::move(child)))->get();
}

std::size_t entity::IndexOf(const entity& child) const {
  // Edits go through a list in order: the next one stands near the last one.
  std::size_t above = std::min<std::size_t>(lastFound_, children_.size());
  std::size_t below = above;
  while (below > 0 || above < children_.size()) {
    if (below > 0) --below;
    for (const std::size_t index : {below, above}) {
      if (index >= children_.size() || children_[index].get() != &child) continue;
      lastFound_ = static_cast<std::uint32_t>(index);
      return index;
    }
    if (above < children_.size()) ++above;
  }
  return children_.size();
}

EntityPtr entity::TakeChild(std::size_t index) {
  EntityPtr child = std::move(children_[index]);
  children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(index));
  Release(*child);
  return child;
}

std::vector<EntityPtr> entity::TakeChildren() {
  for (const EntityPtr& child : children_) Release(*child);
  return std::exchange(children_, {});
}

std::vector<EntityPtr> entity::TakeChildren(std::span<const std::size_t> places) {
  std::vector<EntityPtr> taken;
  if (places.empty()) return taken;
  taken.reserve(places.size());
  auto end = children_.begin() + static_cast<std::ptrdiff_t>(places.front());
  for (std::size_t i = places.front(); i < children_.size(); ++i) {
    if (taken.size() < places.size() && places[taken.size()] == i) {
      Release(*children_[i]);
      taken.push_back(std::move(children_[i]));
    } else {
      *end++ = std::move(children_[i]);
    }
  }
  children_.erase(end, children_.end());
  return taken;
}

void entity::InsertChildren(std::vector<EntityPtr> children, std::span<const std::size_t> places) {
  children_.resize(children_.size() + children.size());
  std::size_t end = children_.size();  // behind it everything stands where it belongs
  for (std::size_t i = children.size(); i-- > 0;) {
    for (; end - 1 > places[i]; --end) children_[end - 1] = std::move(children_[end - 2 - i]);
    children_[--end] = Adopt(std::move(children[i]));
  }
}

Map* entity::OwningMap() {
  return parent_ ? parent_->OwningMap() : nullptr;
}

EntityPtr entity::Copy() const {
  EntityPtr ret(new entity(brush.Copy(), class_));
  ret->origin_ = origin_;
  ret->angle_ = angle_;
  ret->flags_ = flags_;
  ret->state = state;
  ret->viewIndex = viewIndex;
  ret->keys_.reserve(keys_.size());
  for (const KeyPair& pair : keys_) ret->SetKey(pair.name, pair.value);
  if (ret->angle_ != angle_) Report().Assert("ret->angle==angle", SOURCE, __LINE__);
  ret->class_ = class_;
  ret->children_.reserve(children_.size());
  for (const EntityPtr& child : children_) ret->AddChild(child->Copy());
  return ret;
}

EntityPtr entity::CopyAlone() const {
  EntityPtr copy(new entity(brush.Copy(), class_));
  copy->origin_ = origin_;
  copy->angle_ = angle_;
  copy->flags_ = flags_;
  copy->keys_ = keys_;
  return copy;
}

bool entity::HasSameKeys(const entity& other) const {
  return class_ == other.class_ && keys_ == other.keys_;
}

bool entity::IsSameInAnyOrder(const entity& other) const {
  return class_ == other.class_ && state == other.state && keys_.size() == other.keys_.size() &&
         IsSame(brush, other.brush) && std::ranges::is_permutation(keys_, other.keys_);
}

std::size_t entity::Bytes() const {
  std::size_t bytes = sizeof(entity) + brush.Bytes() - sizeof brush;
  for (const KeyPair& pair : keys_) {
    bytes += sizeof pair + pair.name.capacity() + pair.value.capacity();
  }
  return bytes;
}

void entity::SwapContents(entity& other) {
  Touch();
  std::swap(class_, other.class_);
  std::swap(origin_, other.origin_);
  std::swap(angle_, other.angle_);
  std::swap(flags_, other.flags_);
  keys_.swap(other.keys_);
  std::swap(brush, other.brush);
  Touch();
}

void entity::ResolveTextures(const WadList& wads) {
  brush.ResolveTextures(wads);
  Touch();
  for (const EntityPtr& child : children_) child->ResolveTextures(wads);
}

Reporter& entity::Report() const {
  return class_->Set().Library().Report();
}

const ClassSet& entity::ClassSetInUse() const {
  const Map* map = OwningMap();
  return map ? *map->classSet : class_->Set().Library().Default();
}

}  // namespace ferrowand
