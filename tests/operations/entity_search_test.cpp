#include "operations/entity_search.h"

#include "operations/edit_fixture.h"
#include "operations/visibility.h"

namespace ferrowand {
namespace {

class EntitySearchTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    Open(Cuboid(0, 0, 0, 64, 64, 64) + Box("wall", 128, 0, 0) +
             "{\"classname\" \"func_door\" \"XMPentityname\" \"gate\" \"targetname\" \"t1\" "
             "\"spawnflags\" \"1\"" +
             Cuboid(256, 0, 0, 300, 64, 64) + "}" +
             Lamp("lamp", "\"light\" \"300\" \"spawnflags\" \"1\" \"targetname\" \"T1\"") +
             Lamp("other", "\"light\" \"150\" \"_note\" \"t1\""),
         Lamp("dark", "\"target\" \"t12\""));
  }
  static std::string Lamp(const std::string& name, const std::string& keys) {
    return "{\"classname\" \"light\" \"XMPentityname\" \"" + name + "\" \"origin\" \"0 0 128\" " +
           keys + "}";
  }
  Names NamesOf(const std::vector<entity*>& objects) {
    Names names;
    for (const entity* e : objects) {
      const char* name = e->GetKey("XMPentityname");
      names.push_back(name ? name : "");
    }
    return names;
  }
};

TEST_F(EntitySearchTest, EachFieldRestrictsWhatIsFound) {
  struct Case {
    EntityQuery query;
    Names found;
  };
  const Case cases[] = {
      {{}, {}},
      {{.classname = "LIGHT"}, {"lamp", "other", "dark", "dark"}},
      {{.classname = "func_*"}, {"gate"}},
      {{.classname = "ligh", .wholeTexts = true}, {}},
      {{.classname = "brush"}, {"", "wall", ""}},
      {{.key = "light", .value = "300"}, {"lamp"}},
      {{.value = "300"}, {"lamp"}},
      {{.value = "gate"}, {"gate"}},
      {{.classname = "light", .key = "light", .keyIsAbsent = true}, {"dark", "dark"}},
      {{.target = "t1"}, {"gate", "lamp", "dark", "dark"}},
      {{.target = "t1", .wholeTexts = true, .caseCounts = true}, {"gate"}},
      {{.flag = "START_O*"}, {"gate", "lamp"}},
      {{.flag = "START_OPEN"}, {"gate"}},
      {{.classname = "light", .flag = "START_OPEN"}, {}},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(NamesOf(FindEntities(*map, row.query)), row.found)
        << row.query.classname << row.query.key << row.query.value << row.query.target
        << row.query.flag;
  }
}

TEST_F(EntitySearchTest, HiddenOnesAreWhatTheyWereAndASelectionIsSearchedWithAllThatItHolds) {
  Pick({"lamp", "gate"});
  entity* const scope[] = {&Get("gate"), Get("gate").getEntityList()[0].get(), &Get("lamp")};
  HideSelection(*map);
  EXPECT_EQ(NamesOf(FindEntities(*map, {.flag = "START_O*"})), (Names{"gate", "lamp"}));
  EXPECT_EQ(FindEntitiesIn(scope, {.classname = "brush"}).size(), 1u) << "once";
  EXPECT_EQ(NamesOf(FindEntitiesIn(scope, {.classname = "light"})), Names{"lamp"});
  EXPECT_TRUE(ClassesIn(*map).contains("func_door"));
  EXPECT_FALSE(ClassesIn(*map).contains("hidden"));
}

}  // namespace
}  // namespace ferrowand
