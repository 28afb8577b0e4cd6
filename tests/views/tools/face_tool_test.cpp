// Face edit in the 2D views and in a camera, without windows.
#include "views/tools/face_tool.h"

#include "operations/face_editing.h"
#include "support/fake_camera_host.h"
#include "views/tools/camera_faces.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

// Everything lies under every pixel; the camera itself asks where the ray goes.
class BlindRenderer : public CameraRenderer {
 public:
  void SetShape(ShapeName name, const Shape& shape) override {
    if (name == PICKED_SHAPE) marks = shape.polygons.size();
  }
  void DropShape(ShapeName) override {}
  void DropAll() override {}
  void Draw(const CameraPicture& picture) override { selected = picture.selected.size(); }
  std::vector<ShapeName> Pick(const CameraPicture& picture, Pixel) override {
    return {picture.seen.begin(), picture.seen.end()};
  }
  std::size_t marks = 0, selected = 0;
};

class FaceToolTest : public ToolTest {
 protected:
  // Faces of a cuboid: 0 +X, 1 -X, 2 +Y, 3 -Y, 4 +Z, 5 -Z.
  entity& brush = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  entity& beside = small.AddCuboid({64, 0, 0}, {128, 64, 64});

  std::vector<std::pair<const entity*, int>> Picked() const {
    std::vector<std::pair<const entity*, int>> faces;
    for (const PickedFace& face : map.pickedFaces) faces.emplace_back(face.brush, face.face);
    return faces;
  }
  using Faces = std::vector<std::pair<const entity*, int>>;
};

TEST_F(FaceToolTest, FacesArePickedByTheirEdges) {
  tools.ToggleFaceEdit();
  EXPECT_TRUE(tools.IsFaceEdit());
  Click(0, 32);
  EXPECT_EQ(Picked(), (Faces{{&brush, 1}})) << "seen as a line";
  Click(0, 32);
  EXPECT_EQ(Picked(), (Faces{{&brush, 4}})) << "again: the next one there, turned to the eye";
  host.keys.control = true;
  Click(32, 0);
  EXPECT_EQ(Picked(), (Faces{{&brush, 4}, {&brush, 3}}));
  Click(32, 0);
  EXPECT_EQ(Picked(), (Faces{{&brush, 4}}));
  host.keys.control = false;
  Click(32, 32);
  EXPECT_TRUE(Picked().empty()) << "no edge is there";
  const std::vector<Colour> before = FreshPaint();
  Drag(-16, -16, 8, 80);
  EXPECT_EQ(Picked().size(), 4u) << "a corner of each lies in it, and none looks away";
  EXPECT_NE(FreshPaint(), before);
  Drag(16, -16, 48, 8);
  EXPECT_EQ(Picked(), (Faces{{&brush, 3}, {&brush, 4}})) << "no corner, but edges of both";
  Drag(16, 16, 48, 48);
  EXPECT_TRUE(Picked().empty()) << "no edge either";
  view.OnDoubleClick(At(0, 32), BUTTON_LEFT);
  EXPECT_EQ(Picked().size(), 6u);
  Press(32, 32, BUTTON_RIGHT);
  EXPECT_EQ(host.lastPopup, ToolPopup::FaceEdit);
}

TEST_F(FaceToolTest, TheKeysOfThePopupPickAllTheOthersAndEndIt) {
  map.selection.Set({&beside});
  tools.ToggleFaceEdit();
  Click(64, 32);
  for (const unsigned command : {0u, 1u}) {
    tools.Current()->PopupCommand(view, command);
    EXPECT_EQ(Picked().size(), command == 0 ? 6u : 0u);
  }
  EXPECT_TRUE(view.OnCharacter('l', false));
  EXPECT_EQ(Picked().size(), 6u) << "of what is selected";
  map.selection.Clear();
  EXPECT_TRUE(view.OnCharacter('I', false));
  EXPECT_EQ(Picked().size(), 6u) << "of all";
  EXPECT_EQ(Picked().front().first, &brush);
  EXPECT_TRUE(view.OnCharacter('\x1b', false));
  EXPECT_TRUE(Picked().empty());
  map.pickedFaces.Set(FacesOf(brush));
  tools.Current()->PopupCommand(view, 2);
  EXPECT_EQ(tools.Current(), &tools.entitySelector) << "the tool before";
  EXPECT_TRUE(Picked().empty()) << "and nothing is picked out of it";
}

TEST_F(FaceToolTest, PicksGrowByBrushPlaneAndTexture) {
  const std::vector<PickedFace> one{{&brush, 4}};
  brush.brush.face(2).SetName("other");
  for (const auto& [which, count] :
       {std::pair{PickMore::Brushes, 6u}, {PickMore::Planes, 2u}, {PickMore::Textures, 11u}}) {
    map.pickedFaces.Set(one);
    PickMoreFaces(map, which);
    EXPECT_EQ(Picked().size(), count);
  }
}

TEST_F(FaceToolTest, TheMouseInACameraPicksPaintsAndWraps) {
  FakeCameraHost window;
  auto owned = std::make_unique<BlindRenderer>();
  BlindRenderer& drawn = *owned;
  Camera camera(map, window, options, std::move(owned));
  CameraPose pose;
  pose.eye = DVec3(64, -200, 300);
  pose.LookAt({64, 32, 32});
  camera.SetPose(pose);
  CameraFaces faces(host);
  const Pixel left{85, 65}, right{115, 65}, front{85, 82};  // tops and a front
  ASSERT_EQ(camera.FaceAt(left)->face, 4);
  ASSERT_EQ(camera.FaceAt(right)->brush, &beside);
  ASSERT_EQ(camera.FaceAt(front)->face, 3);
  map.selection.Set({&brush});
  faces.Press(camera, left, false, false);
  faces.Move(camera, right);
  faces.Release();
  EXPECT_EQ(Picked(), (Faces{{&brush, 4}, {&beside, 4}}));
  camera.Paint();
  EXPECT_EQ(drawn.marks, 2u);
  EXPECT_EQ(drawn.selected, 0u) << "no tint over what is worked on";
  faces.Press(camera, left, true, false);
  faces.Release();
  EXPECT_EQ(Picked(), (Faces{{&beside, 4}}));

  beside.brush.face(4).rotation = 30;
  beside.brush.face(4).SetName("brick");
  const std::string before = Text();
  faces.Press(camera, front, false, true);
  faces.Release();
  EXPECT_EQ(brush.brush.face(3).Name(), "brick") << "of the picked one, not the current one";
  EXPECT_EQ(brush.brush.face(3).rotation, 30);
  faces.Press(camera, left, true, true);
  faces.Release();
  EXPECT_EQ(brush.brush.face(4).rotation, 0) << "the texture alone";
  EXPECT_EQ(brush.brush.face(4).Name(), "brick");
  EXPECT_EQ(map.undo.StepCount(), 2u);
  faces.Press(camera, front, false, true);
  faces.Move(camera, left);
  EXPECT_EQ(brush.brush.face(4).rotation, 30);
  faces.Move(camera, right);
  faces.Release();
  EXPECT_EQ(map.undo.StepCount(), 3u);
  faces.Press(camera, front, false, true);
  for (int i = 0; i < 3; ++i) map.undo.Undo();
  faces.Move(camera, left);
  faces.Release();
  EXPECT_EQ(Text(), before) << "what is pressed on when the map becomes another is left alone";
  faces.Press(camera, front, false, true);
  faces.Move(camera, left);
  faces.Cancel();
  EXPECT_EQ(Text(), before);
}

TEST_F(FaceToolTest, AKeyThatIsHeldIsOneStep) {
  map.pickedFaces.Set(std::vector<PickedFace>{{&brush, 4}});
  FaceNudge nudge;
  const FaceNudge::Eye eye{{1, 0, 0}, {0, 1, 0}, 8, 15};
  for (int i = 0; i < 3; ++i) nudge.Press(map, FaceKey::Right, eye, i > 0);
  EXPECT_EQ(brush.brush.face(4).xoff, -24);
  nudge.Press(map, FaceKey::TurnLeft, eye, false);
  EXPECT_EQ(brush.brush.face(4).rotation, 15);
  nudge.Press(map, FaceKey::Wider, eye, false);
  EXPECT_EQ(brush.brush.face(4).xscale, 1.125f);
  EXPECT_EQ(map.undo.StepCount(), 3u);
}

}  // namespace
}  // namespace ferrowand
