#include "document/classes/class_set.h"

#include "gamedata/gamedata_fixture.h"

namespace ferrowand {
namespace {

std::string ClassText(const std::string& name, const std::string& words = "") {
  return "/*QUAKED " + name + " (0 1 0) ?\r\n" + words + "*/\r\n";
}

class ClassSetTest : public GameDataTest {
 protected:
  ClassSetTest() {
    path.Add("");
    path.Add(dir.Path());
  }
  ClassSet& Load(std::initializer_list<const char*> names) {
    std::string text;
    for (const char* name : names) text += ClassText(name);
    dir.Write("test.qc", text);
    return library.Get("test.qc");
  }
  static std::string MenuText(const std::vector<ClassMenuItem>& items) {
    std::string text;
    for (const ClassMenuItem& item : items) {
      text +=
          item.text +
          (item.items.empty() ? '=' + std::to_string(item.id) : '[' + MenuText(item.items) + ']') +
          ' ';
    }
    return text;
  }

  LoadProgress progress;
  ClassLibrary library{path, reporter, progress};
};

const char NATIVEMENU[] =
    "special[unknown=1000 templateInstance=1001 templateClass=1002 layer=1003 hidden=1004 "
    "embed=1005 brush=1006 ] ";

TEST_F(ClassSetTest, NativesDescendInFrontOfTheFilesClassesAscending) {
  std::string names;
  for (const auto& entityClass : Load({"Zeta", "beta", "Alpha", "_x"}).Classes()) {
    names += entityClass->classname + ' ';
  }
  EXPECT_EQ(names,
            "unknown templateInstance templateClass layer hidden embed brush _x Alpha beta Zeta ");
}

TEST_F(ClassSetTest, AClassIsFoundByItsExactNameElseItIsUnknown) {
  const ClassSet& set = Load({"light", "unknown", "Light"});
  EXPECT_EQ(set.FindClass("light").classname, "light");
  EXPECT_EQ(set.FindClass("Light").classname, "Light");
  for (const char* name : {"LIGHT", "ligh", "", "unknown"}) {
    EXPECT_EQ(set.FindClass(name).Kind(), EntityKind::Unknown) << name;
  }
  dir.Write("two.qc", ClassText("b") + ClassText("a", "first") + ClassText("a", "last"));
  EXPECT_EQ(library.Get("two.qc").FindClass("a").description, "last") << "of equal names";
}

TEST_F(ClassSetTest, OnlyAPrefixOfTwoOrMoreMakesAGroup) {
  const ClassSet& set = Load({"func_door", "light", "func_wall", "info_null", "light_torch"});
  EXPECT_EQ(MenuText(set.Menu()), NATIVEMENU + std::string("func[func_door=1007 func_wall=1008 ] "
                                                           "info_null=1009 "
                                                           "light[light=1010 light_torch=1011 ] "));
  EXPECT_EQ(set.ClassOfMenuId(1008)->classname, "func_wall");
  EXPECT_EQ(set.ClassOfMenuId(1012), nullptr);
  EXPECT_EQ(set.ClassOfMenuId(999), nullptr);
  EXPECT_EQ(MenuText(library.Native().Menu()), NATIVEMENU);
}

TEST_F(ClassSetTest, BeyondFiftyGroupsClassesStandAlone) {
  std::string text;
  for (int i = 0; i < 60; ++i) {
    text += ClassText("g" + std::to_string(100 + i) + "_a");
    text += ClassText("g" + std::to_string(100 + i) + "_b");
  }
  dir.Write("test.qc", text);
  const auto& menu = library.Get("test.qc").Menu();
  EXPECT_EQ(menu.size(), 50u + 2 * 11);
  EXPECT_EQ(menu[49].text, "g148");
  EXPECT_EQ(menu[50].text, "g149_a");
}

TEST_F(ClassSetTest, OneFileIsOneSetWhateverTheCaseAndWherever) {
  ClassSet& set = Load({"light"});
  EXPECT_EQ(&library.Get("TEST.QC"), &set);
  EXPECT_EQ(set.FileName(), "test.qc");
  const std::string file = dir.Write("deep/other.qc", ClassText("light"));
  EXPECT_EQ(library.Get(file).FindClass("light").Kind(), EntityKind::Entity);
}

TEST_F(ClassSetTest, AMissingFileIsSaidAndTheNativeSetGiven) {
  Load({"light"});
  library.LoadDefault("test.qc");
  EXPECT_EQ(library.Default().FindClass("light").classname, "light");
  EXPECT_EQ(&library.Get("missing.qc", true), &library.Native());
  EXPECT_TRUE(recorder.messages.empty());
  EXPECT_EQ(&library.Get("missing.qc"), &library.Native());
  EXPECT_EQ(recorder.OnlyText(), "Could not load .qc file \"missing.qc\", using default");
  EXPECT_EQ(recorder.messages[0].title, "Error");
  EXPECT_EQ(&library.Get("", true), &library.Native());
  recorder.messages.clear();
  library.LoadDefault("missing.qc");
  EXPECT_EQ(recorder.OnlyText(),
            "Could not load default .qc file missing.qc! Set the default in Options.");
  EXPECT_EQ(&library.Default(), &library.Native());
  EXPECT_EQ(library.DefaultName(), "missing.qc");
}

}  // namespace
}  // namespace ferrowand
