// The files that ship: each must load without a word from the program, and fit the others.
#include <algorithm>
#include <cctype>
#include <set>

#include "document/classes/class_set.h"
#include "document/document_fixture.h"

namespace ferrowand {
namespace {

const std::string SHIPPED = FERROWAND_DATA;

class ShippedDataTest : public DocumentTest {
 protected:
  ShippedDataTest() {
    LoadShippedClasses();
    data.palette.Load(data.searchPath, {}, reporter);
    data.wads.LoadDefault("quake.wad");
  }
  // What a good file has no reason to cause.
  ~ShippedDataTest() override {
    for (const Message& message : recorder.messages) ADD_FAILURE() << message.text;
  }
};

TEST_F(ShippedDataTest, TheMapsAreWrittenAsTheyWereReadAndNameNothingThatIsMissing) {
  for (const std::string name : {"sample.xmp", "altar.xmp"}) {
    const auto map = LoadMap(data, SHIPPED + "/maps/" + name);
    ASSERT_NE(map, nullptr);
    std::set<std::string> targets, names;
    ForEachEntity(*map, [&](const entity& e) {
      const EntityKind kind = e.getClass()->Kind();
      EXPECT_NE(kind, EntityKind::Unknown) << e.GetKey("classname");
      EXPECT_EQ(ExpandInstance(e) != nullptr, kind == EntityKind::TemplateInstance);
      for (const Face& face : e.brush.Faces()) EXPECT_EQ(face.texture->Name(), face.Name());
      if (const char* target = e.GetKey("target")) targets.insert(target);
      if (const char* targetname = e.GetKey("targetname")) names.insert(targetname);
    });
    EXPECT_TRUE(std::ranges::includes(names, targets)) << name;
    ASSERT_TRUE(map->Save(temp.Path(name), 0, {}));
    EXPECT_TRUE(temp.Read(name) == FileText(SHIPPED + "/maps/" + name)) << name;
  }
}

TEST_F(ShippedDataTest, EveryClassAndEveryTextureCanBeUsed) {
  for (const auto& shown : data.classes.Default().Classes()) {
    if (shown->IsNative()) continue;
    // A header that runs on into the text would take the first lines with it.
    EXPECT_TRUE(std::isupper(static_cast<unsigned char>(shown->description[0])))
        << shown->classname;
    EXPECT_EQ(shown->numflags(), shown->classname == "worldspawn" ? 0u : 12u) << shown->classname;
    for (int axis = 0; axis < 3; ++axis) EXPECT_LT(shown->Min(axis), shown->Max(axis));
  }
  WadFile& wad = data.wads.Default();
  for (const auto& texture : wad.Textures()) {
    EXPECT_FALSE(wad.Pixels(*texture).empty() || texture->flags & TEXTURE_BUILTIN);
    EXPECT_LE(texture->Name().size(), 15u);
    EXPECT_EQ(texture->width % 16 + texture->height % 16, 0) << texture->Name();
  }
}

}  // namespace
}  // namespace ferrowand
