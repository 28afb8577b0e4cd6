// What the tests of the commands share: a map of a few objects, each found by its name, and its
// text before and after.
#pragma once

#include "document/document_fixture.h"
#include "document/picking.h"
#include "support/document_checks.h"

namespace ferrowand {

class EditTest : public DocumentTest {
 protected:
  // Two boxes, a point above them, and a box that cannot be reached.
  void SetUp() override {
    Open(Box("a", 0, 0, 0) + Box("b", 128, 0, 0) + Point("p", "\"origin\" \"0 0 128\""),
         Box("far", 512, 0, 0));
  }
  // What stands in one layer "main", behind a layer "hidden" and a layer "locked".
  void Open(const std::string& objects, const std::string& others = {}) {
    map = ReadText("{\"classname\" \"worldspawn\"" + Layer("main", 0, objects) +
                   Layer("hidden", 1, others) + Layer("locked", 2, others) + "}");
  }
  static std::string Layer(const std::string& name, int state, const std::string& objects) {
    return "{\"classname\" \"layer\" \"XMPentityname\" \"" + name + "\" \"XMPstate\" \"" +
           std::to_string(state) + "\"" + objects + "}";
  }
  // A brush, or anything else that stands between braces.
  static std::string Named(const std::string& name, const std::string& brush) {
    return "{\"XMPentityname\" \"" + name + "\" " + brush.substr(1);
  }
  static std::string Box(const std::string& name, int x, int y, int z, int side = 64) {
    return Named(name, Cuboid(x, y, z, x + side, y + side, z + side));
  }
  static std::string Block(const std::string& name, int x0, int y0, int z0, int x1, int y1,
                           int z1) {
    return Named(name, Cuboid(x0, y0, z0, x1, y1, z1));
  }
  static std::string Point(const std::string& name, const std::string& keys) {
    return "{\"classname\" \"thing\" \"XMPentityname\" \"" + name + "\" " + keys + "}";
  }

  entity& Get(const std::string& name) {
    const entity* found = FindNamed(*map, name);
    EXPECT_NE(found, nullptr) << name;
    return const_cast<entity&>(*found);
  }
  void Pick(std::initializer_list<const char*> names) {
    map->selection.Clear();
    for (const char* name : names) Select(*map, &Get(name), true);
  }
  std::string Text() const { return ExtendedText(*map); }
  // One undo must give `before` back and one redo what is there now.
  void ExpectOneStep(const std::string& before) {
    const std::string after = Text();
    EXPECT_NE(after, before);
    EXPECT_TRUE(IsConsistent(*map));
    map->undo.Undo();
    EXPECT_EQ(Text(), before);
    EXPECT_TRUE(IsConsistent(*map));
    map->undo.Redo();
    EXPECT_EQ(Text(), after);
    EXPECT_TRUE(IsConsistent(*map));
  }
  std::vector<std::string> Children(const std::string& name) {
    std::vector<std::string> names;
    for (const EntityPtr& child : Get(name).getEntityList()) {
      const char* childName = child->GetKey("XMPentityname");
      names.push_back(childName ? childName : "");
    }
    return names;
  }

  std::unique_ptr<Map> map;
};

using Names = std::vector<std::string>;

}  // namespace ferrowand
