// The control that shows picked faces on their texture, and lets the mouse drag that.
#pragma once

#include "shell/system/win32.h"

#include <functional>
#include <optional>
#include <vector>

#include "views/face_sheet.h"

namespace ferrowand {

class FacePicture {
 public:
  struct Answers {
    // The faces, as they are now.
    std::function<std::vector<PickedFace>()> faces;
    // The offsets are to be those of the press and so much more.
    std::function<void(const TexturePoint& more)> drag;
    std::function<void(bool isCancelled)> end;
    // A corner of the first face, or PickedFace::MIDDLE, has been clicked.
    std::function<void(int corner)> hold;
  };

  // An owner-drawn static control, whose parent hands WM_DRAWITEM on.
  FacePicture(HWND control, Answers answers);
  ~FacePicture();
  FacePicture(const FacePicture&) = delete;
  FacePicture& operator=(const FacePicture&) = delete;

  void Repaint() const;
  void Draw(const DRAWITEMSTRUCT& draw) const;

 private:
  static LRESULT CALLBACK Func(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR picture);
  bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnMove(Pixel at, bool freely);
  void OnRelease(Pixel at);
  PixelSize Area() const;

  HWND control_;
  const Answers answers_;
  std::optional<FaceSheet> pressed_;  // as the faces lay then; none while no button is down
  Pixel press_;
  bool isDragged_ = false;
};

}  // namespace ferrowand
