#include "support/random_user.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/picking.h"
#include "operations/class_change.h"
#include "operations/clipboard.h"
#include "operations/csg_commands.h"
#include "operations/entity_keys.h"
#include "operations/groups.h"
#include "operations/hollow.h"
#include "operations/insert.h"
#include "operations/layers.h"
#include "operations/primitives.h"
#include "operations/snap_corners.h"
#include "operations/template_editing.h"
#include "operations/templates.h"
#include "operations/visibility.h"
#include "views/tools/brush_reshape.h"

namespace ferrowand {

const char* RandomUser::DoSomething() {
  PickSomething();
  Draw();
  const Command& command = COMMANDS[Below(std::size(COMMANDS))];
  const std::size_t steps = map_.undo.StepCount();
  command.run(*this);
  ++given_[command.name];
  done_[command.name] += map_.undo.StepCount() > steps;
  return command.name;
}

void RandomUser::ExpectAllUsed() const {
  for (const Command& command : COMMANDS) {
    const int given = given_.at(command.name), done = done_.at(command.name);
    EXPECT_GE(given, 8) << command.name;
    EXPECT_GE(command.isStep ? 5 * done : given, given) << command.name << ": " << done;
  }
}

void RandomUser::Draw() {
  by_ = Offset();
  at_ = Offset() * 8.0f;
  coin_ = Below(2) == 0;
  few_ = static_cast<int>(Below(4));
  number_ = std::to_string(45 * Below(10));
  name_ = "T" + std::to_string(Below(100));
  key_ = std::array{"k1", "angle", "light", "target", "targetname"}[Below(5)];
  how_.textureLock = Below(2) == 0;
  how_.axes = Below(4) ? ALL_AXES : static_cast<unsigned>(Below(8));
  const std::vector<entity*> layers = LayersOf(map_);
  layer_ = layers[Below(layers.size())];
  const Bounds bounds = SelectionBounds(map_);
  middle_ = bounds.IsEmpty() ? DVec3() : DVec3(bounds.mins);
}

void RandomUser::PickSomething() {
  if (Below(8) == 0) return;
  const auto level = Below(4) ? PickLevel::Objects : PickLevel::Brushes;
  const std::vector<entity*> objects = PickableObjects(map_, level);
  map_.selection.Clear();
  for (std::size_t count = 1 + Below(5); count > 0 && !objects.empty(); --count) {
    Select(map_, objects[Below(objects.size())], true);
  }
}

// One object moved into another's place, so that there is something to cut.
void RandomUser::PickTwoThatOverlap() {
  if (map_.selection.size() < 2) return;
  entity* const moved = map_.selection[0];
  entity* const still = map_.selection[1];
  Select(map_, moved, false);
  MoveSelection(map_, still->GetBounds().mins - moved->GetBounds().mins + by_, {});
  Select(map_, still, true);
}

void RandomUser::PickGroups() {
  for (entity* e : PickableObjects(map_, PickLevel::Objects)) {
    if (IsGroup(*e) && Below(4) == 0) Select(map_, e, true);
  }
}

// Of a template that the map has.
entity* RandomUser::PickAnInstance() {
  for (entity* e : PickableObjects(map_, PickLevel::Objects)) {
    const bool isInstance = e->getClass()->Kind() == EntityKind::TemplateInstance;
    if (!isInstance || !FindTemplateClass(*e) || Below(2) != 0) continue;
    Select(map_, e, false);
    return e;
  }
  return nullptr;
}

// What lies farthest on one side of a brush is moved: a corner, an edge or a face.
void RandomUser::TouchUp() {
  for (entity* e : PickableObjects(map_, PickLevel::Brushes)) {
    if (e->brush.getNumFaces() == 0 || Below(4) != 0) continue;
    const Vec3 side = Offset();
    std::vector<Vec3> corners = CornersOf(e->brush);
    float farthest = Dot(corners[0], side);
    for (const Vec3& corner : corners) farthest = std::max(farthest, Dot(corner, side));
    std::erase_if(corners, [&](const Vec3& corner) { return Dot(corner, side) < farthest; });
    auto moved = MoveCorners(e->brush, corners, by_, map_.Data().reporter);
    if (!moved) continue;
    EditStep step(map_);
    step.ChangeKeys(*e);
    e->brush = std::move(*moved);
    return;
  }
}

// Of an object that has one, but none that says where it stands.
void RandomUser::RemoveAKey() {
  for (entity* e : PickableObjects(map_, PickLevel::Objects)) {
    for (const char* key : {"k1", "light", "target", "targetname"}) {
      if (!e->GetKey(key) || Below(4) != 0) continue;
      Select(map_, e, false);
      RemoveKeyOf(map_, SelectedRoots(map_), key);
      return;
    }
  }
}

// What no tool reaches, and all its instances show: the first brush of one is moved.
void RandomUser::EditTemplate() {
  for (const EntityPtr& child : map_.currentLayer()->getEntityList()) {
    if (child->getClass()->Kind() != EntityKind::TemplateClass) continue;
    if (child->getEntityList().empty()) continue;
    entity& member = *child->getEntityList().front();
    EditStep step(map_);
    step.Change(member);
    member.brush.Translate(by_);
    return;
  }
}

using R = RandomUser;
const std::vector<R::Command> R::COMMANDS = {
    {"move", [](R& r) { MoveSelection(r.map_, r.by_, r.how_); }},
    {"turn",
     [](R& r) {
       const int u = r.few_ % 3;
       RotateSelection(r.map_, u, (u + 1) % 3, r.coin_ ? 90 * (r.few_ + 1) : 33.5, r.middle_,
                       r.how_);
     }},
    {"flip", [](R& r) { FlipSelection(r.map_, r.few_ % 3, r.how_); }},
    {"scale",
     [](R& r) {
       ScaleSelection(r.map_, {1.5, r.coin_ ? 0.5 : 2, 1}, r.middle_, r.how_);
     }},
    {"skew", [](R& r) { SkewSelection(r.map_, 0, 2, r.coin_, r.by_.x, r.how_); }},
    {"matrix",
     [](R& r) {
       TransformSelection(r.map_, TurnMatrix({45, 0, 30}), r.middle_, r.how_);
     }},
    {"duplicate", [](R& r) { DuplicateSelection(r.map_, r.by_, r.how_); }},
    {"multi duplicate",
     [](R& r) {
       DuplicateSelection(r.map_, {r.few_, r.by_, {0, 0, 90}}, r.how_);
     }},
    {"touch up", [](R& r) { r.TouchUp(); }},
    {"hollow", [](R& r) { HollowSelection(r.map_, r.coin_ ? 8 : -4); }},
    {"subtract",
     [](R& r) {
       r.PickTwoThatOverlap();
       if (r.map_.selection.size() > 1) r.map_.selection.Remove(*r.map_.selection.Objects().back());
       SubtractSelection(r.map_);
     }},
    {"intersect",
     [](R& r) {
       r.PickTwoThatOverlap();
       IntersectSelection(r.map_);
     }},
    {"primitive",
     [](R& r) {
       const int sides = 3 + r.few_ * 4;
       AddPrimitive(r.map_, {static_cast<PrimitiveKind>(r.few_), {r.at_, r.at_ + r.by_}, 2, sides},
                    "wall");
     }},
    {"sphere",
     [](R& r) {
       const auto kind = r.coin_ ? PrimitiveKind::Sphere : PrimitiveKind::Hemisphere;
       AddPrimitive(r.map_, {kind, {r.at_, r.at_ + Vec3(64, 128, 256)}, r.few_ % 3, 5 + r.few_},
                    "wall");
     }},
    {"group", [](R& r) { GroupSelection(r.map_); }},
    {"group as", [](R& r) { GroupSelectionAs(r.map_, r.map_.classSet->FindClass("func_door")); }},
    {"ungroup",
     [](R& r) {
       r.PickGroups();
       UngroupSelection(r.map_);
     }},
    {"lead", [](R& r) { SetAsLeading(r.map_); }, false},
    {"hide", [](R& r) { HideSelection(r.map_); }},
    {"show", [](R& r) { ShowHidden(r.map_); }},
    {"insert",
     [](R& r) {
       const char* const classes[] = {"light", "worldspawn", "light", "func_door"};
       InsertEntity(r.map_, r.map_.classSet->FindClass(classes[r.few_]), r.by_);
     }},
    {"insert copy",
     [](R& r) {
       if (!r.map_.selection.empty()) InsertCopy(r.map_, *r.map_.selection.front(), r.by_);
     }},
    {"embed",
     [](R& r) {
       InsertEmbed(r.map_, "e.xmp", {{-8, -16, -24}, {8, 16, 24}}, r.by_);
     }},
    {"template", [](R& r) { MakeTemplate(r.map_, r.name_, r.by_); }},
    {"in the template", [](R& r) { r.EditTemplate(); }, false},
    {"instance",
     [](R& r) {
       const std::vector<std::string> names = TemplateNames(r.map_);
       if (!names.empty())
         InsertInstance(r.map_, {names[r.few_ % names.size()], 90, {1, 2, 1}}, r.by_);
     }},
    {"open template",
     [](R& r) {
       entity* const instance = r.PickAnInstance();
       if (!instance || OpenTemplate(r.map_, *instance) != EditResult::Done) return;
       MoveSelection(r.map_, r.by_, r.how_);
       // What is new does not pile up in it.
       if (r.few_ > 0) CloseTemplate(r.map_, *TemplateInUse(r.map_));
       MakeLayerCurrent(r.map_, *r.layer_);
     }},
    {"close template",
     [](R& r) {
       if (entity* used = TemplateInUse(r.map_)) CloseTemplate(r.map_, *used);
     },
     false},
    {"rename template",
     [](R& r) {
       if (r.PickAnInstance()) RenameTemplate(r.map_, *TemplateInUse(r.map_), r.name_);
     },
     false},
    {"delete template",
     [](R& r) {
       if (r.PickAnInstance()) DeleteTemplate(r.map_, *TemplateInUse(r.map_));
     },
     false},
    {"snap", [](R& r) { SnapSelection(r.map_, r.coin_ ? 1 : 8); }, false},
    {"clear", [](R& r) { DeleteSelection(r.map_); }},
    {"cut", [](R& r) { CutSelection(r.map_, r.clipboard_); }},
    {"paste", [](R& r) { PasteText(r.map_, r.clipboard_); }},
    {"save group", [](R& r) { SaveGroup(r.map_, r.groupFile_); }, false},
    {"insert group", [](R& r) { InsertGroup(r.map_, r.groupFile_); }},
    {"set key", [](R& r) { SetKeyOf(r.map_, SelectedRoots(r.map_), r.key_, r.number_); }},
    {"remove key", [](R& r) { r.RemoveAKey(); }},
    {"set class",
     [](R& r) {
       SetClassOfSelection(r.map_, r.map_.classSet->FindClass(r.coin_ ? "func_wall" : "light"));
     }},
    {"insert layer", [](R& r) { InsertLayer(r.map_, "new"); }},
    {"remove layer", [](R& r) { RemoveLayer(r.map_, *r.layer_); }},
    {"rename layer", [](R& r) { RenameLayer(r.map_, *r.layer_, r.number_); }},
    {"recolour layer", [](R& r) { RecolourLayer(r.map_, *r.layer_, {7, 200, 90}); }},
    {"layer state", [](R& r) { SetLayerState(r.map_, *r.layer_, r.few_ == 1, r.few_ == 2); }},
    {"to layer", [](R& r) { MoveSelectionToLayer(r.map_, *r.layer_); }}};

}  // namespace ferrowand
