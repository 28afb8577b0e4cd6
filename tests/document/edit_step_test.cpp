#include "document/edit_step.h"

#include "document/action.h"
#include "document/classes/class_set.h"
#include "document/document_fixture.h"
#include "support/change_recorder.h"
#include "support/document_checks.h"

namespace ferrowand {
namespace {

class EditStepTest : public DocumentTest {
 protected:
  EntityPtr Make() { return std::make_unique<entity>(data.classes.Default()); }
  entity& Add(entity& parent) { return EditStep(map).Add(Make(), parent); }

  Map map{data, 2};
};

TEST_F(EditStepTest, AnEmptyStepLeavesNoTrace) {
  Add(map);
  Add(map);
  Add(map);
  map.undo.Undo();
  map.MarkSaved();
  { EditStep step(map); }
  {
    EditStep step(map);
    step.Add(Make(), map);
    step.Cancel();
  }
  EXPECT_TRUE(map.undo.CanRedo());
  EXPECT_EQ(map.undo.StepCount(), 1u);
  EXPECT_FALSE(map.modified());
  Add(map);
  EXPECT_TRUE(map.modified());
  EXPECT_FALSE(map.undo.CanRedo());
}

TEST_F(EditStepTest, CancelTakesBackWhatPointsIntoTheMapToo) {
  entity& group = Add(map);
  entity& member = Add(group);
  map.selection.Set({&member, &group});
  map.SetLeadingGroup(&group);
  entity* const layer = map.currentLayer();
  const std::string before = ExtendedText(map);
  EditStep step(map);
  step.Change(*layer);
  member.SetKey("changed", "yes");
  step.Remove(*layer);
  EXPECT_TRUE(map.selection.empty());
  EXPECT_EQ(map.leadingGroup(), nullptr);
  step.Cancel();
  EXPECT_EQ(ExtendedText(map), before);
  EXPECT_EQ(map.selection, (std::vector<entity*>{&member, &group}));
  EXPECT_EQ(map.leadingGroup(), &group);
  EXPECT_EQ(map.currentLayer(), layer);
}

TEST_F(EditStepTest, AnAnnouncementNamesWhatCameWentMovedAndChangedBackAndForth) {
  entity &first = Add(map), &second = Add(map), &gone = Add(map);
  using Objects = std::vector<const entity*>;
  const ChangeRecorder told(map);
  const auto expect = [&](const Objects& came, const Objects& went) {
    ASSERT_FALSE(told.changes.empty());
    const MapChange& change = told.changes.back();
    EXPECT_EQ(change.came, came);
    EXPECT_EQ(change.went, went);
    EXPECT_EQ(change.moved, Objects{&second});
    EXPECT_EQ(change.changed, Objects{&first});
  };
  const entity* made = nullptr;
  {
    EditStep step(map);
    step.ChangeKeys(first);
    first.SetKey("changed", "yes");
    step.Move(second, first);
    step.Remove(gone);
    made = &step.Add(Make(), map);
    entity& passing = step.Add(Make(), map);
    step.Remove(passing);
  }
  expect({made}, {&gone});
  map.undo.Undo();
  expect({&gone}, {made});
  map.undo.Redo();
  expect({made}, {&gone});
}

// The step before must find what it left, whatever later steps did to what holds it.
TEST_F(EditStepTest, WhatChangesStaysTheSameObject) {
  entity& group = Add(map);
  entity& member = Add(group);
  map.undo.SetLevels(10);
  const auto change = [&](entity& kept, const char* value) {
    EditStep step(map);
    step.Change(kept);
    member.SetKey("value", value);
  };
  change(member, "1");
  change(group, "2");
  map.selection.Set({&member});
  map.undo.Undo();
  EXPECT_STREQ(member.GetKey("value"), "1");
  map.undo.Undo();
  EXPECT_EQ(member.GetKey("value"), nullptr);
  EXPECT_EQ(map.selection, std::vector<entity*>{&member});
  EXPECT_EQ(group.getEntityList().front().get(), &member);
}

TEST_F(EditStepTest, KeysComeBackWithWhatIsDecodedOfThemEvenThoseThatStandTwice) {
  entity& e = Add(map);
  e.AddKey("twice", "1");
  e.AddKey("twice", "2");
  e.SetKey("angle", "45");
  const std::string before = ExtendedText(map);
  {
    EditStep step(map);
    step.ChangeKeys(e);
    e.SetKey("twice", "3");
    step.Change(e);
    e.SetKey("twice", "4");
    e.SetKey("angle", "90");
    e.SetKey("origin", "1 2 3");
    e.SetKey("classname", "layer");
    e.SetFlags(3);
  }
  map.undo.Undo();
  EXPECT_EQ(ExtendedText(map), before);
  EXPECT_TRUE(IsConsistent(map));
  map.undo.Redo();
  EXPECT_STREQ(e.GetKey("twice"), "4");
  EXPECT_TRUE(IsConsistent(map));
}

TEST_F(EditStepTest, WhatComesBackIsOfTheClassesThatTheMapUsesByNow) {
  entity& removed = Add(map);
  removed.SetKey("classname", "light");
  entity& changed = Add(map);
  changed.SetKey("classname", "light");
  {
    EditStep step(map);
    step.Remove(removed);
    step.ChangeKeys(changed);
    changed.SetKey("key", "1");
  }
  const std::string qc = temp.Write("g.qc", "/*QUAKED light (0 1 0) (-8 -8 -8) (8 8 8)\r\n*/");
  ClassSet classes(data.classes);
  ASSERT_TRUE(classes.Load(qc));
  map.classSet = &classes;
  map.ResolveClasses(*map.classSet);
  map.undo.Undo();
  EXPECT_EQ(removed.getClass()->classname, "light");
  EXPECT_EQ(changed.getClass()->classname, "light");
}

TEST_F(EditStepTest, ManyObjectsFindTheirPlacesAgain) {
  std::vector<entity*> odd;
  for (int i = 0; i < 100; ++i) {
    entity& e = *map.AddChild(Make());
    e.SetKey("number", std::to_string(i));
    if (i % 2) odd.push_back(&e);
  }
  std::swap(odd.front(), odd.back());
  entity& target = *map.AddLayer("target");
  const std::string before = ExtendedText(map);
  {
    EditStep step(map);
    step.Move(odd, target);
    step.Remove(target);
  }
  for (int i = 0; i < 2; ++i) {
    map.undo.Undo();
    EXPECT_EQ(ExtendedText(map), before);
    map.undo.Redo();
    EXPECT_NE(ExtendedText(map), before);
  }
}

TEST_F(EditStepTest, InAListThatBecameShorterPlacesEndAtItsEnd) {
  for (int i = 0; i < 4; ++i) Add(map);
  entity& layer = *map.currentLayer();
  entity* const last[] = {layer.getEntityList()[2].get(), layer.getEntityList()[3].get()};
  EditStep(map).Remove(last);
  layer.TakeChild(0);
  map.undo.Undo();
  ASSERT_EQ(layer.getEntityList().size(), 3u);
  EXPECT_EQ(layer.getEntityList()[1].get(), last[0]);
  EXPECT_EQ(layer.getEntityList()[2].get(), last[1]);
}

// The last thing that the status line was told.
struct StatusLine : MapObserver {
  void OnStatus(const std::string& text) override { shown = text; }
  std::string shown;
};

TEST_F(EditStepTest, AStepIsToldByTheNameOfWhatTheUserDoesAndToHowMany) {
  StatusLine status;
  map.AddObserver(status);
  entity& group = Add(map);
  entity& member = Add(group);
  EXPECT_EQ(status.shown, "") << "nobody said what it is";
  {
    const ActionScope action(data, "Turn");
    const ActionScope inner(data, "Move");
    EditStep step(map);
    step.Change(group);
    for (entity* e : {&group, &member}) e->SetKey("angle", "90");
  }
  EXPECT_EQ(status.shown, "Turn: 1 brush") << "its members go with it";
  {
    const ActionScope action(data, "Take apart");
    EditStep step(map);
    step.Move(member, *map.currentLayer());
    step.Remove(group);
    step.ChangeKeys(*map.currentLayer());
    map.currentLayer()->SetKey("changed", "yes");
  }
  EXPECT_EQ(status.shown, "Take apart: 1 brush");
  map.undo.Undo();
  EXPECT_EQ(status.shown, "Undo Take apart: 1 brush");
  map.undo.Undo();
  map.undo.Redo();
  EXPECT_EQ(status.shown, "Redo Turn: 1 brush");
  {
    const ActionScope action(data, "Delete");
    EditStep(map).Remove(*map.currentLayer());
  }
  EXPECT_EQ(status.shown, "Delete: 1 layer");
  Add(map);
  map.undo.Undo();
  EXPECT_EQ(status.shown, "Undo");
  map.RemoveObserver(status);
}

}  // namespace
}  // namespace ferrowand
