// The window of a map's 3D camera: where it is drawn, what the mouse does there, and how it flies.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <string>

#include "shell/system/camera_surface.h"
#include "shell/windows/child_window.h"
#include "views/camera/camera.h"
#include "views/camera/camera_navigation.h"
#include "views/camera/selection_drag.h"
#include "views/tools/camera_faces.h"

namespace ferrowand {

class CameraJoystick;
class Dialogs;
class Direct3D;
class PopupMenus;
class ToolSet;

inline constexpr char CAMERA_CLASS[] = "FRWView3DClass";

LRESULT CALLBACK View3DWindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What a camera is drawn with.
enum class CameraKind { OpenGl, Direct3d };

// What the windows of cameras work with. All outlive them.
struct CameraWindowContext {
  const Options& options;
  Reporter& reporter;
  Dialogs& dialogs;
  PopupMenus& popups;
  ToolSet& tools;
  CameraJoystick& joystick;
  Direct3D& direct3d;
};

class CameraWindow : public ChildWindow, public CameraHost {
 public:
  // Lives until its window goes; Handle() is null when the system gave none. Direct3D is ready, if
  // that is what it is to be drawn with.
  CameraWindow(ChildWindows& windows, const CameraWindowContext& context, Map& map,
               CameraKind kind);

  CameraKind Kind() const { return kind_; }

  // --- as a child of the frame
  Map* GetMap() const override { return &map_; }
  Camera* GetCamera() override { return camera_.get(); }
  bool KeepsMapOpen() const override { return true; }
  // A bound key goes before the command that has it, but for those with Ctrl.
  bool TakesMessage(MSG& message) override;
  void OptionsChanged() override;
  std::optional<FacePlace> FaceUnder(POINT screen) override;
  CameraHit HitUnder(POINT screen) override;
  // Black until it is told to show the map again, or the user turns to it before.
  void ReleaseMemory() override {
    if (camera_) camera_->Release();
  }
  void RebuildMemory() override {
    if (camera_) camera_->Restore();
  }

  // Where the other one stands, and showing what it shows.
  void StandAs(ChildWindow& other);
  // The modes that it can show the map in, at the cursor.
  void OfferModes();

  // --- as the camera's host
  PixelSize DrawingArea() const override;
  void Repaint() override;
  void SetCaption(const std::string& caption) override;
  double Now() const override;
  void Moved(const CameraPose& from) override;

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  // Whether the message was one that moves the camera, and nothing else.
  bool OnNavigation(UINT message, WPARAM wParam, LPARAM lParam);
  // Whether the key moves the camera here, whatever else it is for.
  bool IsCameraKey(UINT message, int key) const;
  void FollowKeys();
  bool OnCharacter(char c);
  void OnWheel(int turned);
  bool StartLooking(Pixel at);
  bool LookTo(Pixel at, bool isHeld);
  void EndLooking();
  // As far as the mouse has been moved with these buttons held.
  void FollowMouse(Pixel at, int buttons);
  void FollowJoystick();
  // Whether the message was for the faces: face edit is on.
  bool OnFaceMessage(UINT message, WPARAM wParam, LPARAM lParam);
  bool NudgeFaces(const MSG& message);
  // Whether the message was one of the mouse's.
  bool OnMouse(UINT message, WPARAM wParam, LPARAM lParam);

  std::unique_ptr<CameraSurface> MakeSurface();
  void OnCreate();
  void OnDestroy();
  void OnPaint();
  void OnLeftPress(Pixel at);
  void Click(Pixel at);
  // Of what is selected there.
  void BeginDrag(Pixel at);
  void OnLeftMove(Pixel at);
  void OnLeftRelease(Pixel at);
  void EndDrag();
  Vec3 DragTo(Pixel at) const;
  SpaceRules Rules() const;
  // Of the drawing area; none where another window lies.
  std::optional<Pixel> PixelUnder(POINT screen) const;
  // Of a new primitive, on the face there.
  void BeginBox(Pixel at);
  Bounds BoxTo(Pixel at) const;
  void OnDepthWheel(int turned, Pixel at);
  void OnRightPress(Pixel at);
  void OnRightMove(Pixel at);
  void OnRightRelease();

  const CameraWindowContext context_;
  Map& map_;
  const CameraKind kind_;
  std::unique_ptr<CameraSurface> surface_;
  std::unique_ptr<Camera> camera_;
  Pixel press_;         // of the button that is down
  bool drags_ = false;  // and the mouse has been moved since
  bool looks_ = false;  // the left button is held to look around
  CameraMouse mouse_;
  std::optional<SelectionDrag> drag_;   // from the press that took the selection
  bool clicks_ = false;                 // unless that becomes a drag
  std::optional<FacePlace> boxCorner_;  // of the box that is being drawn
  int wheelRest_ = 0;                   // of turns smaller than a notch
  CameraFaces faces_;
  FaceNudge nudge_;
  bool altIsForFaces_ = false;  // it has been held for a click, and opens no menu
};

}  // namespace ferrowand
