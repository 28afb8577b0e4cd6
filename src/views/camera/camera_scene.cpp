#include "views/camera/camera_scene.h"

#include <algorithm>
#include <utility>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/reach.h"

namespace ferrowand {
namespace {

// Objects beside the tree are looked at one by one: so many more, and so many of all in it, before
// it is made anew.
constexpr std::size_t LOOSE_ALLOWED = 64, LOOSE_PART = 16;

bool IsBrushEntity(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  return kind == EntityKind::Entity || kind == EntityKind::Unknown;
}

// Whatever it turns out to show.
bool MayShow(const entity& e) {
  return e.brush.getNumFaces() > 0 || e.HasOrigin() ||
         e.getClass()->Kind() == EntityKind::TemplateInstance;
}

}  // namespace

void CameraScene::Learn() {
  objects_.assign(FIRST_OBJECT_SHAPE, {});
  names_.clear();
  templates_.clear();
  instances_.clear();
  for (auto* list : {&free_, &gone_, &stale_, &inTree_, &loose_, &selected_}) list->clear();
  tree_.reset();
  selectionIsKnown_ = false;
  for (const EntityPtr& child : map_.getEntityList()) {
    NoteTemplates(*child);
    Visit(*child, {});
  }
}

void CameraScene::Learn(const MapChange& change) {
  if (change.everything) return Learn();
  for (const entity* e : change.went) Forget(*e);
  for (const entity* e : change.changed) {
    if (e->getClass()->Kind() == EntityKind::TemplateClass) NoteTemplates(*e);
    VisitAgain(*e, true);
  }
  for (const entity* e : change.came) {
    NoteTemplates(*e);
    VisitAgain(*e, true);
  }
  for (const entity* e : change.moved) VisitAgain(*e, false);
  selectionIsKnown_ = false;
  FollowTemplates();
}

CameraScene::Above CameraScene::Below(const entity& e, Above above) {
  above.isReachable = above.isReachable && IsOpen(e);
  above.isOfEntity = above.isOfEntity || IsBrushEntity(e);
  return above;
}

std::optional<CameraScene::Above> CameraScene::AboveOf(const entity& e) const {
  Above above;
  for (const entity* at = e.Parent(); at; at = at->Parent()) {
    if (at == &map_) return above;
    if (!at->IsVisible()) return std::nullopt;
    above = Below(*at, above);
  }
  return std::nullopt;
}

void CameraScene::Visit(entity& e, const Above& above) {
  if (!e.IsVisible()) return Forget(e);
  if (MayShow(e) && !OnlyHolds(e)) {
    const auto [found, isNew] = names_.try_emplace(&e, ShapeName{});
    if (isNew && free_.empty()) {
      found->second = static_cast<ShapeName>(objects_.size());
      objects_.emplace_back();
    } else if (isNew) {
      found->second = free_.back();
      free_.pop_back();
    }
    Object& object = objects_[found->second];
    object.shown = &e;
    object.isReachable = above.isReachable && IsOpen(e);
    object.isOfEntity = above.isOfEntity;
    if (isNew) MakeStale(found->second);
    if (e.getClass()->Kind() == EntityKind::TemplateInstance) {
      instances_[&e] = found->second;
    } else {
      instances_.erase(&e);
    }
  }
  const Above ofChildren = Below(e, above);
  for (const EntityPtr& child : e.getEntityList()) Visit(*child, ofChildren);
}

void CameraScene::VisitAgain(const entity& e, bool isChanged) {
  const std::optional<Above> above = AboveOf(e);
  if (!above) return Forget(e);
  if (!MayShow(e) || OnlyHolds(e)) Free(e);
  const entity& parent = *e.Parent();
  Visit(*parent.getEntityList()[parent.IndexOf(e)], *above);
  if (const auto found = names_.find(&e); isChanged && found != names_.end()) {
    MakeStale(found->second);
  }
}

void CameraScene::Forget(const entity& tree) {
  Free(tree);
  for (const EntityPtr& child : tree.getEntityList()) Forget(*child);
}

void CameraScene::Free(const entity& e) {
  const auto found = names_.find(&e);
  if (found == names_.end()) return;
  const ShapeName name = found->second;
  names_.erase(found);
  instances_.erase(&e);
  const bool isLoose = objects_[name].isLoose;
  objects_[name] = {};
  objects_[name].isLoose = isLoose;
  gone_.push_back(name);
  free_.push_back(name);
}

void CameraScene::MakeStale(ShapeName name) {
  if (std::exchange(objects_[name].isStale, true)) return;
  stale_.push_back(name);
}

void CameraScene::MakeAllStale() {
  for (const auto& [e, name] : names_) MakeStale(name);
}

void CameraScene::MakeStaleWithin(const Bounds& box) {
  for (ShapeName name = 0; name < objects_.size(); ++name) {
    if (objects_[name].shown && BoxesOverlap(objects_[name].box, box)) MakeStale(name);
  }
}

void CameraScene::NoteTemplates(const entity& tree) {
  if (tree.getClass()->Kind() == EntityKind::TemplateClass) {
    templates_.try_emplace(&tree, tree.Revision() - 1);
  }
  for (const EntityPtr& child : tree.getEntityList()) NoteTemplates(*child);
}

// Templates count their changes; one that is gone leaves instances that show nothing.
void CameraScene::FollowTemplates() {
  const auto isGone = [this](const auto& known) { return known.first->OwningMap() != &map_; };
  bool isOther = std::erase_if(templates_, isGone) > 0;
  for (auto& [templateClass, revision] : templates_) {
    isOther |= std::exchange(revision, templateClass->Revision()) != templateClass->Revision();
  }
  if (!isOther) return;
  for (const auto& [instance, name] : instances_) MakeStale(name);
}

std::vector<ShapeName> CameraScene::TakeGone() {
  return std::exchange(gone_, {});
}

std::vector<ShapeName> CameraScene::TakeStale() {
  std::vector<ShapeName> stale = std::exchange(stale_, {});
  std::erase_if(stale,
                [this](ShapeName name) { return !std::exchange(objects_[name].isStale, false); });
  return stale;
}

void CameraScene::SetBox(ShapeName name, const Bounds& box) {
  Object& object = objects_[name];
  if (object.box == box) return;
  object.box = box;
  object.isInTree = false;
  if (!std::exchange(object.isLoose, true)) loose_.push_back(name);
}

void CameraScene::MakeTree() {
  std::vector<Bounds> boxes;
  inTree_.clear();
  loose_.clear();
  for (ShapeName name = 0; name < objects_.size(); ++name) {
    Object& object = objects_[name];
    object.isLoose = false;
    object.isInTree = object.shown && !object.box.IsEmpty();
    if (!object.isInTree) continue;
    boxes.push_back(object.box);
    inTree_.push_back(name);
  }
  tree_.emplace(std::move(boxes));
}

std::vector<ShapeName> CameraScene::Seen(std::span<const Plane> planes, const DVec3& from) {
  if (!tree_ || loose_.size() > LOOSE_ALLOWED + inTree_.size() / LOOSE_PART) MakeTree();
  struct Place {
    double distance;
    ShapeName name;
  };
  std::vector<Place> places;
  const auto add = [&](ShapeName name) {
    const Bounds& box = objects_[name].box;
    const DVec3 middle = (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
    const DVec3 way = middle - from;
    places.push_back({Dot(way, way), name});
  };
  for (const std::size_t index : tree_->InFrontOf(planes)) {
    if (objects_[inTree_[index]].isInTree) add(inTree_[index]);
  }
  for (const ShapeName name : loose_) {
    const Object& object = objects_[name];
    if (!object.box.IsEmpty() && IsInFrontOf(object.box, planes)) add(name);
  }
  std::ranges::sort(places, {}, &Place::distance);
  std::vector<ShapeName> names;
  names.reserve(places.size());
  for (const Place& place : places) names.push_back(place.name);
  return names;
}

const std::vector<ShapeName>& CameraScene::Selected() {
  if (std::exchange(selectionIsKnown_, true)) return selected_;
  selected_.clear();
  for (const entity* e : map_.selection) AddNames(*e, selected_);
  std::ranges::sort(selected_);
  selected_.erase(std::unique(selected_.begin(), selected_.end()), selected_.end());
  return selected_;
}

void CameraScene::AddNames(const entity& e, std::vector<ShapeName>& names) const {
  if (const auto found = names_.find(&e); found != names_.end()) names.push_back(found->second);
  for (const EntityPtr& child : e.getEntityList()) AddNames(*child, names);
}

}  // namespace ferrowand
