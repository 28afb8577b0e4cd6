// How a device draws: where from, and what it makes of textures, colours and light.
#pragma once

#include "shell/direct3d/d3d.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

// A shift of the picture, pixels.
struct PictureShift {
  int right = 0, down = 0;
};
void SetProjection(IDirect3DDevice9& device, const CameraPicture& picture, PictureShift shift = {});
void SetView(IDirect3DDevice9& device, const CameraPose& pose);
// The world as it is.
void SetWorld(IDirect3DDevice9& device);
// All of it moved by so much, and so much nearer to the eye that lines win over the faces they lie
// on.
void SetMovedWorld(IDirect3DDevice9& device, const DVec3& eye, const Vec3& by);

// What every picture begins with: depth is looked at and written, nothing is lit.
void SetPlain(IDirect3DDevice9& device, bool dither);
// The texture, or, where there is none, the vertices' own colour; then the light on it, where there
// is some.
void SetLook(IDirect3DDevice9& device, IDirect3DTexture9* texture, IDirect3DTexture9* light);
// One colour for all.
void SetColour(IDirect3DDevice9& device, Colour colour);

// From the eye along the look, so far and no farther.
void SetLamp(IDirect3DDevice9& device, const CameraPose& pose);
// The same as SetLook for what the lamp shines on.
void SetLookInLamp(IDirect3DDevice9& device, IDirect3DTexture9* texture);

enum class Blend { None, Add, DoubleProduct };
void SetBlend(IDirect3DDevice9& device, Blend blend);

}  // namespace ferrowand
