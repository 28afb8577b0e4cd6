// Face edit in real windows: faces are clicked in the camera, and laid by the controls of the
// window, undo included.
#include "shell/windows/face_window.h"

#include <set>

#include "base/text_parts.h"
#include "shell/app_fixture.h"
#include "shell/dialog_visitor.h"
#include "shell/resources/resource.h"
#include "shell/windows/camera_window.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class FaceWindowTest : public AppTest {
 protected:
  void Open() {
    ASSERT_TRUE(Start());
    map = &OpenTwoBrushes();
    Give(Command::NewGLCamera);
    app->Pump();
    camera = AnyCamera();
    ASSERT_NE(camera, nullptr);
    CameraPose pose;
    pose.eye = DVec3(0, -150, 0);
    pose.LookAt({0, 0, 0});
    camera->GetCamera()->SetPose(pose);
    Give(Command::FaceEdit);
    app->Pump();
    window = parts->sides.Find<FaceWindow>();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(IsWindowVisible(window->Handle()));
    before = ExtendedText(*map);
  }
  LPARAM Middle() const {
    const PixelSize area = camera->DrawingArea();
    return MAKELPARAM(area.width / 2, area.height / 2);
  }
  void ClickCamera() {
    SendMessageA(camera->Handle(), WM_LBUTTONDOWN, MK_LBUTTON, Middle());
    SendMessageA(camera->Handle(), WM_LBUTTONUP, 0, Middle());
    app->Pump();
  }
  HWND Control(int id) const { return GetDlgItem(window->Handle(), id); }
  std::string Shown(int id) const { return TextOf(Control(id)); }
  std::string Field(PlacementField field) const {
    return Shown(ID_FACES_FIELD + static_cast<int>(field));
  }
  void TypeInto(PlacementField field, const char* text) {
    const HWND edit = Control(ID_FACES_FIELD + static_cast<int>(field));
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 0, -1);
    for (const char* c = text; *c; ++c) SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*c), 0);
  }
  void Push(int button) {
    SendMessageA(Control(button), BM_CLICK, 0, 0);
    app->Pump();
  }
  void UndoAll(std::size_t steps) {
    EXPECT_EQ(map->undo.StepCount(), steps);
    for (std::size_t i = 0; i < steps; ++i) Give(Command::Undo);
    app->Pump();
    EXPECT_EQ(ExtendedText(*map), before);
  }
  Face& Picked() const { return map->pickedFaces.Faces().front().Get(); }

  Map* map = nullptr;
  CameraWindow* camera = nullptr;
  FaceWindow* window = nullptr;
  std::string before;
};

TEST_F(FaceWindowTest, WhatIsTypedIsSeenAtOnceAndIsOneStep) {
  Open();
  ExpectTidy(window->Handle());
  std::set<std::string> letters;
  for (const HWND control : ShownChildren(window->Handle())) {
    const std::string text = TextOf(control);
    const std::size_t sign = text.find('&');
    if (sign != text.npos) {
      EXPECT_TRUE(letters.insert(LowerCase(text.substr(sign + 1, 1))).second) << text;
    } else {
      EXPECT_TRUE(ClassOf(control) != "Button" || text == "Close") << text;
    }
  }
  EXPECT_TRUE(IsTicked(Command::FaceEdit));
  EXPECT_FALSE(IsWindowEnabled(Control(ID_FACES_WRAP))) << "nothing is picked yet";
  ClickCamera();
  ASSERT_EQ(map->pickedFaces.size(), 1u);
  EXPECT_EQ(Picked().plane.normal, DVec3(0, -1, 0));
  EXPECT_EQ(Shown(ID_FACES_STATE), "1 face of 1 brush: wall, 64 x 64");
  EXPECT_EQ(Shown(ID_FACES_CHECK), "No error");
  TypeInto(PlacementField::XOffset, "12");
  EXPECT_EQ(Picked().xoff, 12) << "before it is ended";
  TypeInto(PlacementField::XScale, "0");
  EXPECT_EQ(Picked().xscale, 1);
  SendMessageA(window->Handle(), WM_COMMAND, IDOK, 0);
  EXPECT_EQ(Field(PlacementField::XScale), "1") << "refused";
  TypeInto(PlacementField::Rotation, "33");
  SendMessageA(window->Handle(), WM_COMMAND, IDCANCEL, 0);
  EXPECT_EQ(Picked().rotation, 0) << "and taken back";
  UndoAll(1);
  EXPECT_EQ(Field(PlacementField::XOffset), "0");
}

TEST_F(FaceWindowTest, OfManyFacesWhatDiffersIsSetInAllOrStepsInEach) {
  Open();
  ClickCamera();
  Push(ID_FACES_PICK_BRUSH);
  EXPECT_EQ(map->pickedFaces.size(), 6u);
  map->pickedFaces.Faces()[2].Get().xscale = 2;
  Push(ID_FACES_MIRROR_DOWN);
  EXPECT_EQ(Field(PlacementField::XScale), "(differs)");
  EXPECT_EQ(Field(PlacementField::YScale), "-1");
  const HWND scale = Control(ID_FACES_FIELD + static_cast<int>(PlacementField::XScale));
  for (int i = 0; i < 2; ++i) SendMessageA(scale, WM_KEYDOWN, VK_UP, 0);
  EXPECT_EQ(map->pickedFaces.Faces()[2].Get().xscale, 2.25f);
  EXPECT_EQ(Picked().xscale, 1.25f);
  TypeInto(PlacementField::XScale, "0.5");
  app->Pump();
  EXPECT_EQ(Picked().xscale, 0.5f);
  SendMessageA(window->Handle(), WM_COMMAND, IDOK, 0);
  EXPECT_EQ(Field(PlacementField::XScale), "0.5");
  EXPECT_EQ(map->undo.StepCount(), 3u) << "mirrored, stepped, typed";
}

TEST_F(FaceWindowTest, ButtonsFitAlignAndPasteAndKeysMoveWhatTheCameraShows) {
  Open();
  ClickCamera();
  for (const auto& [held, scale] :
       Cases<int, float>{{0, 1.0f}, {0, 0.5f}, {VK_SHIFT, 1.0f}, {VK_CONTROL, 2.0f}}) {
    const HeldKey key(held == 0 ? VK_F24 : held);
    Push(ID_FACES_FIT_BOTH);
    EXPECT_EQ(Picked().xscale, scale) << held;
  }
  Push(ID_FACES_COPY);
  Push(ID_FACES_WORLD);
  EXPECT_EQ(Picked().xscale, 1);
  Push(ID_FACES_PASTE);
  EXPECT_EQ(Picked().xscale, 2);
  Push(ID_FACES_EDGE);
  const float first = Picked().rotation;
  Push(ID_FACES_EDGE);
  EXPECT_NE(Picked().rotation, first) << "the next edge";
  Push(ID_FACES_WORLD);
  UndoAll(map->undo.StepCount());

  Activate(*camera);
  SetFocus(camera->Handle());
  const CameraPose pose = camera->GetCamera()->Pose();
  Type(camera->Handle(), VK_RIGHT);
  EXPECT_EQ(Picked().xoff, 0) << "a step of 64 texels is a whole texture";
  {
    const HeldKey shift(VK_SHIFT);
    Type(camera->Handle(), VK_RIGHT);
    EXPECT_EQ(Picked().xoff, -1);
    Type(camera->Handle(), VK_PRIOR);
    EXPECT_EQ(Picked().rotation, 1);
  }
  EXPECT_EQ(camera->GetCamera()->Pose(), pose) << "and the camera stays";
  UndoAll(2);
  PostMessageA(camera->Handle(), WM_CHAR, VK_ESCAPE, 0);
  app->Pump();
  EXPECT_TRUE(map->pickedFaces.empty());
  const HeldKey right(VK_RIGHT);
  Type(camera->Handle(), VK_RIGHT);
  EXPECT_NE(camera->GetCamera()->Pose(), pose) << "which has its keys again";
}

TEST_F(FaceWindowTest, ThePictureIsDraggedAndTheModeEnds) {
  Open();
  ClickCamera();
  const HWND picture = Control(ID_FACES_PICTURE);
  RECT area;
  GetClientRect(picture, &area);
  const int x = area.right / 2, y = area.bottom / 2;
  const auto send = [&](UINT message, int dx) {
    SendMessageA(picture, message, MK_LBUTTON | MK_SHIFT, MAKELPARAM(x + dx, y));
  };
  send(WM_LBUTTONDOWN, 0);
  for (const int dx : {4, 9, 30}) send(WM_MOUSEMOVE, dx);
  EXPECT_LT(Picked().xoff, 0);
  send(WM_LBUTTONUP, 30);
  UndoAll(1);
  {
    const PickedFace clicked = map->pickedFaces.Faces().front();
    map->pickedFaces.Clear();
    const HeldKey alt(VK_MENU);
    Post(camera->Handle(), WM_SYSKEYDOWN, VK_MENU, 1 << 29);
    ClickCamera();
    EXPECT_NE(std::as_const(clicked.Get()).Name(), "wall") << "painted with the current texture";
    PostMessageA(camera->Handle(), WM_SYSKEYUP, VK_MENU, 0);
    app->Pump();
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    EXPECT_EQ(info.flags & GUI_INMENUMODE, 0u);
  }
  UndoAll(1);
  ClickCamera();
  Give(Command::Properties);
  EXPECT_EQ(GetFocus(), Control(ID_FACES_FIELD));
  Give(Command::FaceEdit);
  app->Pump();
  EXPECT_FALSE(IsWindowVisible(window->Handle()));
  EXPECT_TRUE(map->pickedFaces.empty());
  map->selection.Set({map->getEntityList().front()->getEntityList().front().get()});
  Give(Command::FaceEdit);
  app->Pump();
  EXPECT_EQ(map->pickedFaces.size(), 6u) << "of what is selected";
  EXPECT_TRUE(IsWindowVisible(window->Handle()));
  parts->documents.Close(*map);
  app->Pump();
  EXPECT_EQ(Shown(ID_FACES_STATE),
            "No face is picked: click one in the camera, or its edge in a view");
}

}  // namespace
}  // namespace ferrowand
