// The window of a map's 3D camera: where it is drawn, what the mouse does there, and how it flies.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <string>

#include "shell/system/camera_surface.h"
#include "shell/windows/child_window.h"
#include "views/camera/camera.h"
#include "views/camera/camera_navigation.h"

namespace ferrowand {

class CameraJoystick;
class Dialogs;
class PopupMenus;
class ToolSet;

inline constexpr char CAMERA_CLASS[] = "FRWView3DClass";

LRESULT CALLBACK View3DWindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What the windows of cameras work with. All outlive them.
struct CameraWindowContext {
  const Options& options;
  Reporter& reporter;
  Dialogs& dialogs;
  PopupMenus& popups;
  ToolSet& tools;
  CameraJoystick& joystick;
};

class CameraWindow : public ChildWindow, public CameraHost {
 public:
  // Lives until its window goes; Handle() is null when the system gave none.
  CameraWindow(ChildWindows& windows, const CameraWindowContext& context, Map& map);

  // --- as a child of the frame
  Map* GetMap() const override { return &map_; }
  Camera* GetCamera() override { return camera_.get(); }
  bool KeepsMapOpen() const override { return true; }
  // A bound key goes before the command that has it, but for those with Ctrl.
  bool TakesMessage(MSG& message) override;
  void OptionsChanged() override;
  // Black until the user turns to it again.
  void ReleaseMemory() override { camera_->Release(); }

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
  bool OnCharacter(char c);
  void OnWheel(int turned);
  bool StartLooking(Pixel at);
  void EndLooking();
  // As far as the mouse has been moved with these buttons held.
  void FollowMouse(Pixel at, int buttons);
  void FollowJoystick();
  // Whether the message was one of the mouse's.
  bool OnMouse(UINT message, WPARAM wParam, LPARAM lParam);

  void OnCreate();
  void OnDestroy();
  void OnPaint();
  void OnLeftPress(Pixel at);
  void OnRightPress(Pixel at);
  void OnRightMove(Pixel at);
  void OnRightRelease();

  const CameraWindowContext context_;
  Map& map_;
  std::unique_ptr<CameraSurface> surface_;
  std::unique_ptr<Camera> camera_;
  Pixel press_;         // of the right button
  bool drags_ = false;  // the right button has moved since
  bool looks_ = false;  // the left button is held to look around
  CameraMouse mouse_;
  int wheelRest_ = 0;  // of turns smaller than a notch
};

}  // namespace ferrowand
