#include "document/face_selection.h"

#include "document/edit_step.h"
#include "operations/edit_fixture.h"
#include "operations/face_texture.h"
#include "operations/insert.h"
#include "operations/transform_selection.h"
#include "operations/visibility.h"
#include "support/change_recorder.h"

namespace ferrowand {
namespace {

class FaceSelectionTest : public EditTest {
 protected:
  PickedFace Of(const char* name, int face) { return {&Get(name), face}; }
  FaceSelection& Picked() { return map->pickedFaces; }
};

TEST_F(FaceSelectionTest, FacesArePickedOnceAndTellTheirExtent) {
  const ChangeRecorder told(*map);
  Picked().Set(std::vector{Of("a", 1), Of("a", 4), Of("a", 1), Of("a", 6), Of("far", 0)});
  EXPECT_EQ(Picked().Faces(), (std::vector{Of("a", 1), Of("a", 4)}));
  EXPECT_TRUE(told.changes.back().faces);
  EXPECT_EQ(told.changes.back().box, Get("a").brush.Box());
  Picked().Add(std::vector{Of("a", 4), Of("b", 0)});
  EXPECT_EQ(Picked().size(), 3u);
  const std::size_t count = told.changes.size();
  Picked().Set(std::vector(Picked().Faces()));
  EXPECT_EQ(told.changes.size(), count) << "nothing new";
  Picked().Remove(std::vector{Of("a", 1), Of("b", 0), Of("b", 5)});
  EXPECT_EQ(Picked().Faces(), std::vector{Of("a", 4)});
  Picked().Clear();
  EXPECT_EQ(told.changes.back().box, Get("a").brush.Box());
  EXPECT_FALSE(Picked().Contains(Get("a"), 4));
}

TEST_F(FaceSelectionTest, ItHoldsNothingThatIsGoneAndOutlivesUndo) {
  Picked().Set(std::vector{Of("a", 1), Of("b", 2)});
  Pick({"a"});
  MoveSelection(*map, {16, 0, 0}, {});
  map->undo.Undo();
  EXPECT_EQ(Picked().size(), 2u);
  DeleteSelection(*map);
  EXPECT_EQ(Picked().Faces(), std::vector{Of("b", 2)});
  map->undo.Undo();
  EXPECT_TRUE(IsConsistent(*map));
  {
    EditStep step(*map);
    step.Change(Get("b"));
    Get("b").brush.Clear();
  }
  EXPECT_TRUE(Picked().empty());
  map->undo.Undo();
  Picked().Set(std::vector{Of("b", 2), Of("a", 0)});
  Pick({"b"});
  HideSelection(*map);
  EXPECT_EQ(Picked().Faces(), std::vector{Of("a", 0)});
}

TEST_F(FaceSelectionTest, ATextureIsPutOnTheFacesAsOneStep) {
  const std::string before = Text();
  const std::vector<PickedFace> faces{Of("a", 1), Of("b", 2), Of("a", 3)};
  EXPECT_EQ(SetTexture(*map, {}, "other"), EditResult::NothingSelected);
  ASSERT_EQ(SetTexture(*map, faces, "other"), EditResult::Done);
  for (const PickedFace& face : faces) EXPECT_EQ(face.Get().Name(), "other");
  EXPECT_EQ(Get("a").brush.face(0).Name(), "wall");
  map->undo.Undo();
  EXPECT_EQ(Text(), before);
}

}  // namespace
}  // namespace ferrowand
