// Classes that change while maps use them.
#include "document/classes/class_set.h"
#include "document/document_fixture.h"
#include "document/edit_step.h"
#include "document/picking.h"
#include "support/change_recorder.h"

namespace ferrowand {
namespace {

class ClassReloadTest : public DocumentTest {
 protected:
  std::string WriteClasses(const std::string& names, int size, const char* file = "own.fgd") {
    std::string text;
    for (const char name : names) {
      text += "@PointClass size(" + std::to_string(2 * size) + " 4 4) = " + name + " []\n";
    }
    return temp.Write(file, text);
  }
  static std::string ClassAndWidth(const entity& e) {
    const Bounds box = e.GetBounds();
    return e.getClass()->classname + ' ' + std::to_string(std::lround(box.maxs.x - e.Origin().x));
  }
};

TEST_F(ClassReloadTest, WhatTheFileTellsByNowIsTrueOfTheMapAndOfWhatWasDeleted) {
  const std::string path = WriteClasses("abx", 20);
  std::string text = "{\"classname\" \"worldspawn\" \"XMPqc\" \"" + path + "\"";
  for (const char name : {'a', 'b', 'c', 'd'}) {
    text += std::string("{\"XMPentityname\" \"") + name + "\" \"classname\" \"" +
            (name == 'd' ? 'a' : name) + "\" \"origin\" \"8 8 8\"}";
  }
  const auto map = ReadText(text + "}");
  const auto look = [&](const char* name) { return ClassAndWidth(*FindNamed(*map, name)); };
  EXPECT_EQ(look("a") + look("b") + look("c"), "a 20b 20unknown 8");
  EXPECT_TRUE(data.classes.LoadChanged().empty());
  for (const char* name : {"c", "d"}) {
    EditStep step(*map);
    step.Remove(const_cast<entity&>(*FindNamed(*map, name)));
  }

  WriteClasses("ac", 16);
  ASSERT_EQ(data.classes.LoadChanged(), std::vector<ClassSet*>{map->classSet});
  ChangeRecorder changes(*map);
  map->BindClassesAnew();
  EXPECT_EQ(look("a") + look("b"), "a 16unknown 8");
  EXPECT_TRUE(changes.changes.back().everything);
  map->undo.Undo();
  map->undo.Undo();
  EXPECT_EQ(look("c") + look("d"), "c 16a 16");
  EXPECT_EQ(FindNamed(*map, "a")->getClass(), FindNamed(*map, "d")->getClass());

  EXPECT_TRUE(data.classes.LoadChanged().empty());
  ASSERT_TRUE(file::Delete(path));
  EXPECT_TRUE(data.classes.LoadChanged().empty());
  EXPECT_EQ(look("a"), "a 16") << "while the file is being written anew";
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(ClassReloadTest, AnotherFileOfClassesIsOneStep) {
  const std::string first = WriteClasses("a", 4), other = WriteClasses("a", 12, "other.fgd");
  const auto map =
      ReadText("{\"classname\" \"worldspawn\" \"XMPqc\" \"" + first +
               "\"{\"XMPentityname\" \"a\" \"classname\" \"a\" \"origin\" \"0 0 0\"}}");
  map->MarkSaved();
  const std::string before = map->ExtendedText({});
  const ClassSet* set = data.classes.Choose(other);
  ASSERT_NE(set, nullptr);
  {
    EditStep step(*map);
    step.ChooseClasses(set->FileName());
  }
  const std::string after = map->ExtendedText({});
  EXPECT_EQ(ClassAndWidth(*FindNamed(*map, "a")), "a 12");
  EXPECT_NE(after, before);
  for (int i = 0; i < 2; ++i) {
    map->undo.Undo();
    EXPECT_EQ(ClassAndWidth(*FindNamed(*map, "a")), "a 4");
    EXPECT_EQ(map->ExtendedText({}), before);
    EXPECT_FALSE(map->modified());
    map->undo.Redo();
    EXPECT_EQ(map->ExtendedText({}), after);
  }
  {
    EditStep step(*map);
    step.ChooseClasses(set->FileName());
  }
  EXPECT_EQ(map->undo.StepCount(), 1u) << "it has them already";
  EXPECT_EQ(data.classes.Choose(temp.Path("missing.fgd")), nullptr);
  EXPECT_EQ(data.classes.Choose(other), set);
}

}  // namespace
}  // namespace ferrowand
