// What instances show is kept, and so must be what a freshly read map would show, whatever was done
// to the map in between.
#include "document/classes/template_index.h"

#include <functional>
#include <random>

#include "document/document_fixture.h"
#include "document/edit_step.h"
#include "document/object_reader.h"
#include "document/read_log.h"
#include "document/transform.h"

namespace ferrowand {
namespace {

std::string Entity(const std::string& classname, const std::string& keys,
                   const std::string& inside = "") {
  return "{\"classname\" \"" + classname + "\"" + keys + inside + "}\n";
}
std::string Named(const std::string& name) {
  return "\"XMPentityname\" \"" + name + "\"";
}
std::string Instance(const std::string& of, const std::string& origin) {
  return Entity("templateInstance",
                Named("a " + of) + "\"XMPclass\" \"" + of + "\"\"origin\" \"" + origin + "\"");
}

// Two templates of one name and one that holds a group and an instance of the other, in two layers.
const std::string TOWN =
    "{\"classname\" \"worldspawn\"\n" +
    Entity("layer", Named("west"),
           Entity("templateClass", Named("crate"), Cuboid(0, 0, 0, 16, 32, 64)) +
               Instance("crate", "100 0 0") + Cuboid(-64, 0, 0, -32, 32, 32) +
               Entity("func_wall", "", Instance("tower", "0 500 0") + Cuboid(0, 0, 0, 8, 8, 8))) +
    Entity("layer", Named("east"),
           Instance("tower", "500 0 0") +
               Entity("templateClass", Named("tower"),
                      Entity("func_door", "", Cuboid(0, 0, 0, 64, 64, 64)) +
                          Entity("light", "\"origin\" \"8 8 8\"") + Instance("crate", "0 0 64")) +
               Entity("templateClass", Named("crate"), Cuboid(0, 0, 0, 100, 100, 8)) +
               Instance("crate", "0 -300 0")) +
    "}";

struct Seen {
  std::string text;
  std::vector<Bounds> bounds;
};

Seen Look(const Map& map) {
  Seen seen{QuakeText(map), {}};
  ForEachEntity(map, [&](const entity& e) { seen.bounds.push_back(e.GetBounds()); });
  return seen;
}

std::vector<entity*> All(const Map& map, const std::function<bool(const entity&)>& which) {
  std::vector<entity*> found;
  ForEachEntity(map, [&](const entity& e) {
    if (e.Parent() && which(e)) found.push_back(const_cast<entity*>(&e));
  });
  return found;
}

class TemplateIndexTest : public DocumentTest {
 protected:
  entity& Get(const Map& map, const std::string& name) {
    return const_cast<entity&>(*FindNamed(map, name));
  }
};

// One edit after another, each a step that may look at the instances half-way or be given up.
class RandomEditor {
 public:
  RandomEditor(Map& map, unsigned seed) : map_(map), random_(seed) {}

  void DoSomething() {
    switch (Below(10)) {
      case 0:
        return map_.undo.Undo();
      case 1:
        map_.undo.Undo();
        All(map_, ExpandInstance);
        return map_.undo.Redo();
      default:
        EditStep step(map_);
        Edit(step);
        if (Below(4) == 0) Edit(step);
        if (Below(8) == 0) step.Cancel();
    }
  }

 private:
  std::size_t Below(std::size_t count) { return random_() % count; }
  entity* One(const std::function<bool(const entity&)>& which) {
    const std::vector<entity*> found = All(map_, which);
    return found.empty() ? nullptr : found[Below(found.size())];
  }
  entity* OneOf(EntityKind kind) {
    return One([=](const entity& e) { return e.getClass()->Kind() == kind; });
  }
  void MayLook() {
    if (Below(2) == 0) All(map_, ExpandInstance);
  }
  std::string Name() { return std::array{"crate", "tower", "nothing"}[Below(3)]; }

  void Edit(EditStep& step) {
    const Vec3 by(static_cast<float>(Below(9)) * 8 - 32, 8, 0);
    entity* brush = One([](const entity& e) { return e.brush.getNumFaces() > 0; });
    entity* object = One([](const entity& e) { return e.getClass()->Kind() != EntityKind::Layer; });
    entity* original = OneOf(EntityKind::TemplateClass);
    entity* instance = OneOf(EntityKind::TemplateInstance);
    entity* layer = OneOf(EntityKind::Layer);
    switch (Below(12)) {
      case 0:
        return Move(step, brush, by);
      case 1:
        return Move(step, object, by);
      case 2:
        return SetKey(step, original, "XMPentityname", Name());
      case 3:
        return SetKey(step, instance, "XMPclass", Name());
      case 4:
        return SetKey(step, instance, "angle", std::to_string(Below(4) * 90));
      case 5:
        for (const char* key : SCALE_KEYS) {
          SetKey(step, instance, key, std::to_string(Below(3) + 1));
        }
        return;
      case 6:
        return SetKey(step, Below(3) ? original : object, "classname",
                      std::array{"brush", "templateClass", "func_wall"}[Below(3)]);
      case 7:
        if (object) step.Remove(*object);
        return;
      case 8:
        // A map without a layer is given one when it is read.
        if (map_.getEntityList().size() > 1) step.Remove(*layer);
        return;
      case 9:
        if (object && layer) step.Move(*object, *layer);
        return;
      case 10:
        return RemoveKeys(step, Below(2) ? original : instance);
      default:
        if (object) step.Add(object->Copy(), layer ? *layer : map_);
    }
  }
  void Move(EditStep& step, entity* e, const Vec3& by) {
    if (!e) return;
    MayLook();
    step.Change(*e);
    MayLook();
    // In place, and in two parts.
    e->brush.Translate(by);
    MayLook();
    for (const EntityPtr& child : e->getEntityList()) child->brush.Translate(by);
    for (int i = 0; i < e->brush.getNumFaces(); ++i) e->brush.face(i).SetName("other");
  }
  void SetKey(EditStep& step, entity* e, const char* key, const std::string& value) {
    if (!e) return;
    MayLook();
    step.ChangeKeys(*e);
    e->SetKey(key, value);
    MayLook();
  }
  void RemoveKeys(EditStep& step, entity* e) {
    if (!e) return;
    step.ChangeKeys(*e);
    for (int i = e->numkeys() - 1; i >= 0; --i) {
      MayLook();
      if (e->KeyName(i).starts_with("XMP") && Below(3) == 0) e->RemoveKey(i);
    }
  }

  Map& map_;
  std::minstd_rand random_;
};

TEST_F(TemplateIndexTest, WhateverWasDoneInstancesShowWhatAFreshlyReadMapShows) {
  std::size_t expanded = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const auto map = ReadText(TOWN);
    RandomEditor editor(*map, seed);
    for (int i = 0; i < 25; ++i) {
      editor.DoSomething();
      const Seen seen = Look(*map), again = Look(*ReadText(ExtendedText(*map)));
      ASSERT_EQ(seen.text, again.text) << "seed " << seed << " edit " << i;
      ASSERT_EQ(seen.bounds, again.bounds) << "seed " << seed << " edit " << i;
      expanded += All(*map, ExpandInstance).size();
    }
  }
  EXPECT_GT(expanded, 1000u) << "one a map, or there was nothing to see";
}

TEST_F(TemplateIndexTest, OfOneNameTheFirstInMapOrderIsTheTemplate) {
  const auto map = ReadText(TOWN);
  entity& instance = Get(*map, "a crate");
  const float first = 64, second = 8;
  const auto height = [&] { return instance.GetBounds().maxs.z; };
  EXPECT_EQ(height(), first);
  {
    EditStep step(*map);
    step.Move(Get(*map, "crate"), Get(*map, "east"));
  }
  EXPECT_EQ(height(), second);
  map->undo.Undo();
  EXPECT_EQ(height(), first);
  // The class is that of the last key of this name, what the entity is called that of the first.
  entity& original = Get(*map, "crate");
  original.SetKey("classname", "brush");
  EXPECT_EQ(height(), second);
  original.SetKey("Classname", "templateClass");
  EXPECT_EQ(height(), second);
}

TEST_F(TemplateIndexTest, WhatNothingHasChangedIsKept) {
  const auto map = ReadText(TOWN);
  const entity& crate = Get(*map, "a crate");
  const entity& tower = Get(*map, "a tower");
  const entity* const crateShape = ExpandInstance(crate);
  const entity* const towerShape = ExpandInstance(tower);
  {
    EditStep step(*map);
    entity& brush = *Get(*map, "west").getEntityList()[2];
    step.Change(brush);
    brush.brush.Translate({8, 0, 0});
    step.Remove(brush);
    step.ChangeKeys(*map);
    map->SetKey("message", "A town");
  }
  map->undo.Undo();
  EXPECT_EQ(ExpandInstance(crate), crateShape);
  EXPECT_EQ(ExpandInstance(tower), towerShape);
  const Bounds before = crate.GetBounds(), holder = tower.GetBounds();
  {
    EditStep step(*map);
    step.Change(*Get(*map, "crate").getEntityList()[0]);
    Get(*map, "crate").getEntityList()[0]->brush.Translate({0, 0, 8});
  }
  EXPECT_EQ(crate.GetBounds().maxs, before.maxs + Vec3(0, 0, 8));
  EXPECT_EQ(tower.GetBounds().maxs, holder.maxs + Vec3(0, 0, 8)) << "which holds a crate";
  EXPECT_EQ(ExpandInstance(crate), ExpandInstance(crate)) << "kept again after the step";
}

TEST_F(TemplateIndexTest, TemplatesWithinTemplatesEndSomewhere) {
  std::string text = "{\"classname\" \"worldspawn\"" + Instance("t0", "0 0 0");
  for (int i = 0; i < 20000; ++i) {
    const std::string next = "t" + std::to_string(i + 1);
    text += Entity("templateClass", Named("t" + std::to_string(i)),
                   Cuboid(0, 0, 16 * i, 8, 8, 16 * i + 8) + Instance(next, "0 0 0"));
  }
  const auto map = ReadText(text + "}");
  const float top = Get(*map, "a t0").GetBounds().maxs.z;
  EXPECT_GE(top, 16 * 8);
  EXPECT_LE(top, 16 * 200);
}

TEST_F(TemplateIndexTest, ChangesOutsideOfStepsAreSeenToo) {
  const auto map = ReadText(TOWN);
  entity& instance = Get(*map, "a crate");
  entity& original = Get(*map, "crate");
  const auto height = [&] { return instance.GetBounds().maxs.z; };
  EXPECT_EQ(height(), 64);
  TranslateEntity(original, {0, 0, 8});
  EXPECT_EQ(height(), 72);
  TransformEntity(original, Matrix::Diagonal(1, 1, 2), {});
  EXPECT_EQ(height(), 144);
  entity& brush = *original.AddChild(std::make_unique<entity>(*map->classSet));
  EXPECT_EQ(height(), 144);
  TextReader reader(reporter);
  reader.Open(temp.Write("brush.txt", Cuboid(0, 0, 0, 8, 8, 800).substr(1)));
  ReadLog log(reporter);
  ObjectReader(reader, map->wads, log).Read(brush);
  EXPECT_EQ(height(), 800);
  original.SetClass(&map->classSet->FindClass("nothing"));
  EXPECT_EQ(height(), 8);
  map->ResolveClasses(*map->classSet);
  EXPECT_EQ(height(), 800);
  instance.ClearKeys();
  EXPECT_EQ(ExpandInstance(instance), nullptr);
}

TEST_F(TemplateIndexTest, AnInstanceOutsideTheMapShowsNothing) {
  const auto map = ReadText(TOWN);
  entity& instance = Get(*map, "a crate");
  EXPECT_NE(ExpandInstance(instance), nullptr);
  EXPECT_EQ(ExpandInstance(*instance.Copy()), nullptr);
  {
    EditStep step(*map);
    step.Remove(instance);
  }
  EXPECT_EQ(ExpandInstance(instance), nullptr);
  map->undo.Undo();
  EXPECT_NE(ExpandInstance(instance), nullptr);
}

TEST_F(TemplateIndexTest, TexturesAndClassesOfTheTemplateAreThoseOfItsInstances) {
  const auto map = ReadText(TOWN);
  const entity& instance = Get(*map, "a tower");
  const auto door = [](const entity& tower) -> const entity& { return *tower.getEntityList()[0]; };
  const auto texture = [&](const entity& tower) {
    return door(tower).getEntityList()[0]->brush.face(0).texture;
  };
  const entity& original = Get(*map, "tower");
  ASSERT_NE(texture(*ExpandInstance(instance)), nullptr);
  map->ResolveTextures(WadList());
  EXPECT_EQ(texture(*ExpandInstance(instance)), nullptr);

  data.searchPath.Add(temp.Path());
  temp.Write("doors.qc", "/*QUAKED func_door (0 1 0) ?\r\n*/");
  map->classSet = &data.classes.Get("doors.qc");
  map->ResolveClasses(*map->classSet);
  EXPECT_EQ(door(original).getClass()->classname, "func_door");
  EXPECT_EQ(door(*ExpandInstance(instance)).getClass(), door(original).getClass());
}

}  // namespace
}  // namespace ferrowand
