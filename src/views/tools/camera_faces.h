// Face edit in a camera: what the mouse and the keys do to the faces that it shows.
#pragma once

#include <optional>
#include <vector>

#include "document/live_step.h"
#include "document/undo_store.h"
#include "operations/face_alignment.h"
#include "platform/pixel.h"

namespace ferrowand {

class Camera;
class Map;
class ToolHost;

// From press to release. A press picks the face there, with Ctrl it takes it to what is picked or
// away, and the faces that the mouse is drawn across go the same way. With Alt a click gives the
// face texture and layout of the first picked face, with Ctrl and Alt only the texture; with no
// face picked it is the current texture. A drag with Alt wraps the texture of the face where it
// began round edge after edge; all of it is one step.
class CameraFaces {
 public:
  explicit CameraFaces(ToolHost& host) : host_(host) {}

  void Press(Camera& camera, Pixel at, bool control, bool alt);
  void Move(Camera& camera, Pixel at);
  void Release();
  // What has been picked stays so; what has been wrapped is as it was.
  void Cancel();
  bool IsDragging() const { return kind_ != Kind::None; }
  // All faces of the brush there.
  void DoubleClick(Camera& camera, Pixel at, bool add);

 private:
  enum class Kind { None, Pick, Drop, Paint };

  void WrapOnto(const PickedFace& face);
  // Where the map has become another under the mouse, what was pressed on may be gone.
  bool IsWayThere() const;
  void Paint();

  ToolHost& host_;
  Kind kind_ = Kind::None;
  Map* map_ = nullptr;
  bool onlyTexture_ = false;
  std::vector<PickedFace> way_;   // of the wrapping
  UndoStore::StateId state_ = 0;  // of the map, when the way began
  std::optional<LiveStep> live_;
};

// What a key does to the picked faces.
enum class FaceKey { Left, Right, Up, Down, TurnLeft, TurnRight, Narrower, Wider, Lower, Higher };

// As long as a key is held it is one step.
class FaceNudge {
 public:
  // Texels and degrees of one press; the directions are those of the picture.
  struct Eye {
    DVec3 right, up;
    int texels = 1, degrees = 1;
    bool finely = false;  // of scales
  };

  void Press(Map& map, FaceKey key, const Eye& eye, bool isRepeated);

 private:
  std::optional<LiveStep> live_;
  int presses_ = 0;
};

}  // namespace ferrowand
