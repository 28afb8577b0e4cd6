#include "shell/direct3d/d3d_states.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ferrowand {
namespace {

constexpr double NEARER = 0.998;     // of the distance: about what a 24-bit depth tells apart
constexpr float LAMP_REACH = 1536;   // world units
constexpr float LAMP_LIGHT = 0.62f;  // on what it meets straight
constexpr D3DCOLOR LAMP_EVERYWHERE = D3DCOLOR_XRGB(96, 96, 96);

D3DMATRIX Unit() {
  D3DMATRIX matrix{};
  for (int i = 0; i < 4; ++i) matrix.m[i][i] = 1;
  return matrix;
}

DWORD Bits(float value) {
  DWORD bits;
  static_assert(sizeof bits == sizeof value);
  std::copy_n(reinterpret_cast<const char*>(&value), sizeof value, reinterpret_cast<char*>(&bits));
  return bits;
}

void SetSampler(IDirect3DDevice9& device, DWORD stage, DWORD magnify, DWORD address) {
  device.SetSamplerState(stage, D3DSAMP_MAGFILTER, magnify);
  device.SetSamplerState(stage, D3DSAMP_MINFILTER, D3DTEXF_LINEAR);
  device.SetSamplerState(stage, D3DSAMP_MIPFILTER, D3DTEXF_NONE);
  device.SetSamplerState(stage, D3DSAMP_ADDRESSU, address);
  device.SetSamplerState(stage, D3DSAMP_ADDRESSV, address);
}

void SetStage(IDirect3DDevice9& device, DWORD stage, DWORD operation, DWORD first,
              DWORD second = D3DTA_CURRENT) {
  device.SetTextureStageState(stage, D3DTSS_COLOROP, operation);
  device.SetTextureStageState(stage, D3DTSS_COLORARG1, first);
  device.SetTextureStageState(stage, D3DTSS_COLORARG2, second);
}

void EndStagesAt(IDirect3DDevice9& device, DWORD stage) {
  device.SetTextureStageState(stage, D3DTSS_COLOROP, D3DTOP_DISABLE);
  device.SetTexture(stage, nullptr);
}

D3DVECTOR ToD3d(const DVec3& v) {
  return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

}  // namespace

void SetProjection(IDirect3DDevice9& device, const CameraPicture& picture, PictureShift shift) {
  const auto [width, height] = picture.size;
  const double end = std::max(picture.backClip, 2 * NEAR_CLIP);
  const double scale = 1 / std::tan(FIELD_OF_VIEW / 2 * (std::numbers::pi / 180));
  D3DMATRIX matrix{};
  matrix.m[0][0] = static_cast<float>(scale * height / width);
  matrix.m[1][1] = static_cast<float>(scale);
  // Pixels are told by their upper left corners here, and filled by their middles.
  matrix.m[2][0] = static_cast<float>((2 * shift.right - 1) / static_cast<double>(width));
  matrix.m[2][1] = static_cast<float>((1 - 2 * shift.down) / static_cast<double>(height));
  matrix.m[2][2] = static_cast<float>(end / (end - NEAR_CLIP));
  matrix.m[2][3] = 1;
  matrix.m[3][2] = static_cast<float>(-NEAR_CLIP * end / (end - NEAR_CLIP));
  device.SetTransform(D3DTS_PROJECTION, &matrix);
}

void SetView(IDirect3DDevice9& device, const CameraPose& pose) {
  const DVec3 axes[] = {pose.Right(), pose.up, pose.direction};
  D3DMATRIX matrix = Unit();
  for (int column = 0; column < 3; ++column) {
    for (int row = 0; row < 3; ++row) {
      matrix.m[row][column] = static_cast<float>(axes[column][row]);
    }
    matrix.m[3][column] = static_cast<float>(-Dot(axes[column], pose.eye));
  }
  device.SetTransform(D3DTS_VIEW, &matrix);
}

void SetWorld(IDirect3DDevice9& device) {
  const D3DMATRIX matrix = Unit();
  device.SetTransform(D3DTS_WORLD, &matrix);
}

void SetMovedWorld(IDirect3DDevice9& device, const DVec3& eye, const Vec3& by) {
  D3DMATRIX matrix = Unit();
  for (int axis = 0; axis < 3; ++axis) {
    matrix.m[axis][axis] = static_cast<float>(NEARER);
    matrix.m[3][axis] = static_cast<float>(by[axis] * NEARER + eye[axis] * (1 - NEARER));
  }
  device.SetTransform(D3DTS_WORLD, &matrix);
}

void SetPlain(IDirect3DDevice9& device, bool dither) {
  const struct {
    D3DRENDERSTATETYPE state;
    DWORD value;
  } rows[] = {
      {D3DRS_CULLMODE, D3DCULL_NONE},  // who looks from behind is not drawn at all
      {D3DRS_ZENABLE, D3DZB_TRUE},
      {D3DRS_ZWRITEENABLE, TRUE},
      {D3DRS_ZFUNC, D3DCMP_LESS},
      {D3DRS_LIGHTING, FALSE},
      {D3DRS_FOGENABLE, FALSE},
      {D3DRS_SPECULARENABLE, FALSE},
      {D3DRS_DITHERENABLE, static_cast<DWORD>(dither ? TRUE : FALSE)},
  };
  for (const auto& row : rows) device.SetRenderState(row.state, row.value);
  SetBlend(device, Blend::None);
  SetSampler(device, 0, D3DTEXF_POINT, D3DTADDRESS_WRAP);
  SetSampler(device, 1, D3DTEXF_LINEAR, D3DTADDRESS_CLAMP);
}

void SetLook(IDirect3DDevice9& device, IDirect3DTexture9* texture, IDirect3DTexture9* light) {
  device.SetTexture(0, texture);
  SetStage(device, 0, D3DTOP_SELECTARG1, texture ? D3DTA_TEXTURE : D3DTA_DIFFUSE);
  if (!light) return EndStagesAt(device, 1);
  device.SetTexture(1, light);
  SetStage(device, 1, D3DTOP_MODULATE2X, D3DTA_TEXTURE);
}

void SetColour(IDirect3DDevice9& device, Colour colour) {
  device.SetTexture(0, nullptr);
  device.SetRenderState(D3DRS_TEXTUREFACTOR, D3DCOLOR_XRGB(colour.red, colour.green, colour.blue));
  SetStage(device, 0, D3DTOP_SELECTARG1, D3DTA_TFACTOR);
  EndStagesAt(device, 1);
}

void SetLamp(IDirect3DDevice9& device, const CameraPose& pose) {
  D3DLIGHT9 light{};
  light.Type = D3DLIGHT_DIRECTIONAL;
  light.Diffuse = {LAMP_LIGHT, LAMP_LIGHT, LAMP_LIGHT, 1};
  light.Direction = ToD3d(pose.direction);
  device.SetLight(0, &light);
  device.LightEnable(0, TRUE);
  D3DMATERIAL9 material{};
  material.Diffuse = material.Ambient = {1, 1, 1, 1};
  device.SetMaterial(&material);
  device.SetRenderState(D3DRS_LIGHTING, TRUE);
  device.SetRenderState(D3DRS_AMBIENT, LAMP_EVERYWHERE);
  device.SetRenderState(D3DRS_FOGENABLE, TRUE);
  device.SetRenderState(D3DRS_FOGCOLOR, 0);
  device.SetRenderState(D3DRS_FOGTABLEMODE, D3DFOG_LINEAR);
  device.SetRenderState(D3DRS_FOGSTART, Bits(0));
  device.SetRenderState(D3DRS_FOGEND, Bits(LAMP_REACH));
}

void SetLookInLamp(IDirect3DDevice9& device, IDirect3DTexture9* texture) {
  const DWORD ofWhat = texture ? D3DMCS_MATERIAL : D3DMCS_COLOR1;
  device.SetRenderState(D3DRS_DIFFUSEMATERIALSOURCE, ofWhat);
  device.SetRenderState(D3DRS_AMBIENTMATERIALSOURCE, ofWhat);
  device.SetTexture(0, texture);
  SetStage(device, 0, texture ? D3DTOP_MODULATE : D3DTOP_SELECTARG2, D3DTA_TEXTURE, D3DTA_DIFFUSE);
  EndStagesAt(device, 1);
}

void SetBlend(IDirect3DDevice9& device, Blend blend) {
  device.SetRenderState(D3DRS_ALPHABLENDENABLE,
                        static_cast<DWORD>(blend == Blend::None ? FALSE : TRUE));
  if (blend == Blend::None) return;
  const bool adds = blend == Blend::Add;
  device.SetRenderState(D3DRS_SRCBLEND, adds ? D3DBLEND_ONE : D3DBLEND_DESTCOLOR);
  device.SetRenderState(D3DRS_DESTBLEND, adds ? D3DBLEND_ONE : D3DBLEND_SRCCOLOR);
}

}  // namespace ferrowand
