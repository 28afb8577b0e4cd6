#include "document/undo_store.h"

#include "document/document_fixture.h"
#include "document/edit_step.h"
#include "gamedata/wad_builder.h"

namespace ferrowand {
namespace {

class UndoStoreTest : public DocumentTest {
 protected:
  entity& Add(EditStep& step, const std::string& name) {
    auto added = std::make_unique<entity>(data.classes.Default());
    added->SetKey("name", name);
    return step.Add(std::move(added), map);
  }
  entity& Add(const std::string& name) {
    EditStep step(map);
    return Add(step, name);
  }
  std::string Text() const { return ExtendedText(map); }

  Map map{data, 30};
};

TEST_F(UndoStoreTest, WhatIsUndoneStandsWhereItStood) {
  for (const char* name : {"a", "b", "c", "d"}) Add(name);
  const std::string before = Text();
  const auto& list = map.currentLayer()->getEntityList();
  {
    EditStep step(map);
    step.Remove(*list[1]);
    step.Change(*list[1]);
    list[1]->SetKey("name", "changed");
    step.Move(*list[0], *list[1]);
    Add(step, "e");
  }
  const std::string after = Text();
  for (int i = 0; i < 3; ++i) {
    map.undo.Undo();
    EXPECT_EQ(Text(), before);
    map.undo.Redo();
    EXPECT_EQ(Text(), after);
  }
}

TEST_F(UndoStoreTest, TheOldestStepsGoWhenThereAreTooMany) {
  const auto names = [&] {
    std::string all;
    for (const EntityPtr& e : map.currentLayer()->getEntityList()) all += e->GetKey("name");
    return all;
  };
  for (char name = 'A'; name <= 'Z'; ++name) Add(std::string(1, name));
  for (char name = 'a'; name <= 'e'; ++name) Add(std::string(1, name));
  EXPECT_EQ(map.undo.StepCount(), 30u);
  map.undo.SetLevels(3);
  map.undo.Undo();
  EXPECT_EQ(names(), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcd");
  map.undo.Redo();
  EXPECT_EQ(names(), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcde");
  Add("f");
  for (int i = 0; i < 5; ++i) map.undo.Undo();
  EXPECT_EQ(names(), "ABCDEFGHIJKLMNOPQRSTUVWXYZabc");
  EXPECT_FALSE(map.undo.CanUndo());
  map.undo.SetLevels(0);
  Add("g");
  EXPECT_EQ(map.undo.StepCount(), 1u);
}

TEST_F(UndoStoreTest, AMoveIsKeptAsItsWayAndOldStepsGoBeyondTheBudget) {
  const auto read = ReadText("{\"classname\" \"worldspawn\"" + Cuboid(0, 0, 0, 64, 64, 64) +
                             Cuboid(1, 2, 3, 4, 5, 6) + "}");
  UndoStore& undo = read->undo;
  const auto& brushes = read->currentLayer()->getEntityList();
  // With its textures or without.
  const auto move = [&](const Vec3& by, float texels = 0) {
    EditStep step(*read);
    for (const EntityPtr& e : brushes) {
      step.Change(*e);
      e->brush.Translate(by);
      for (int i = 0; i < e->brush.getNumFaces(); ++i) e->brush.face(i).xoff += texels;
    }
  };
  for (const float texels : {0.0f, 0.1f}) {
    const std::uint64_t held = undo.Bytes();
    const Brush before = brushes[1]->brush.Copy();
    move({8, 0, -8}, texels);
    EXPECT_LT(undo.Bytes(), held + 300);
    const Brush after = brushes[1]->brush.Copy();
    for (int i = 0; i < 2; ++i) {
      undo.Undo();
      EXPECT_TRUE(IsSame(brushes[1]->brush, before));
      EXPECT_LT(undo.Bytes(), held + 300);
      undo.Redo();
      EXPECT_TRUE(IsSame(brushes[1]->brush, after));
    }
  }
  move({0.5f, 0, 0});
  const std::uint64_t copies = undo.Bytes();
  EXPECT_GT(copies, 1000u);
  for (int i = 0; i < 5; ++i) {
    undo.Undo();
    move({0.5f, 0, 0});
  }
  EXPECT_LT(undo.Bytes(), copies + 300) << "what can no longer be redone weighs nothing";
  undo.SetBudget(2 * copies);
  for (int i = 0; i < 5; ++i) move({0.5f, 0, 0});
  EXPECT_EQ(undo.StepCount(), 2u);
  undo.SetBudget(0);
  EXPECT_EQ(undo.StepCount(), 1u) << "the newest, whatever it holds";
}

TEST_F(UndoStoreTest, AsManyStepsAreRedoneAsWereUndoneUntilANewOne) {
  std::vector<std::pair<UndoStore::StateId, std::string>> states{{map.undo.State(), Text()}};
  for (const char* name : {"a", "b", "c"}) {
    Add(name);
    states.emplace_back(map.undo.State(), Text());
  }
  for (int i = 0; i < 5; ++i) map.undo.Undo();
  for (const auto& [state, text] : states) {
    EXPECT_EQ(map.undo.State(), state);
    EXPECT_EQ(Text(), text);
    map.undo.Redo();
  }
  EXPECT_FALSE(map.undo.CanRedo());
  for (int i = 0; i < 2; ++i) map.undo.Undo();
  map.undo.SetBudget(0);
  map.undo.Redo();
  EXPECT_FALSE(map.undo.CanRedo()) << "beyond the budget";
  map.undo.Undo();
  Add("d");
  EXPECT_FALSE(map.undo.CanRedo());
}

TEST_F(UndoStoreTest, NothingShowsATextureThatIsRemovedFromItsWad) {
  const std::string path = temp.Write("own.wad", WadBytes({{"wall", 8, 8, "a"}, {"z", 8, 8, "z"}}));
  const auto own = ReadText("{\"classname\" \"worldspawn\" \"wad\" \"" + path + "\"" +
                            Cuboid(0, 0, 0, 8, 8, 8) + Cuboid(8, 0, 0, 16, 8, 8) + "}");
  WadFile& wad = *own->wads.Items().front().wad;
  Texture* const wall = wad.FindTexture("wall");
  const auto& brushes = own->currentLayer()->getEntityList();
  ASSERT_EQ(brushes[0]->brush.face(0).texture, wall);
  {
    EditStep step(*own);
    step.Remove(*brushes[0]);
  }
  ASSERT_TRUE(wad.RemoveTexture(*wall));
  own->BindTexturesAnew();
  own->undo.Undo();
  ASSERT_EQ(brushes.size(), 2u);
  for (const EntityPtr& brush : brushes) {
    for (const Face& face : brush->brush.Faces()) EXPECT_EQ(face.texture, wad.BadTexture());
  }
}

}  // namespace
}  // namespace ferrowand
