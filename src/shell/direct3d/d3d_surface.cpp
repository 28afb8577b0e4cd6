#include "shell/direct3d/d3d_surface.h"

#include <algorithm>

#include "shell/direct3d/d3d_renderer.h"
#include "shell/direct3d/direct3d.h"
#include "shell/system/hidden_picture.h"

namespace ferrowand {
namespace {

// The buffer grows in such steps, pixels: a new one for each size of a window that is being drawn
// larger would take longer than the pictures.
constexpr int SIZE_STEP = 128;
constexpr UINT_PTR ASK_TIMER = 0x3D9;
constexpr UINT ASK_INTERVAL = 300;  // milliseconds

UINT Stepped(int size) {
  return static_cast<UINT>((size + SIZE_STEP - 1) / SIZE_STEP * SIZE_STEP);
}

void CALLBACK OnAskTimer(HWND window, UINT, UINT_PTR timer, DWORD) {
  KillTimer(window, timer);
  InvalidateRect(window, nullptr, FALSE);
}

}  // namespace

D3dSurface::D3dSurface(HWND window, Direct3D& direct3d)
    : window_(window),
      direct3d_(direct3d),
      hidden_(DrawsIntoChildren() ? nullptr : MakeHiddenWindow()) {
  parameters_.BackBufferFormat = D3DFMT_X8R8G8B8;
  parameters_.BackBufferCount = 1;
  parameters_.SwapEffect = D3DSWAPEFFECT_COPY;  // of which a part can be shown
  parameters_.hDeviceWindow = hidden_ ? hidden_ : window_;
  parameters_.Windowed = TRUE;
  parameters_.EnableAutoDepthStencil = TRUE;
  parameters_.PresentationInterval = D3DPRESENT_INTERVAL_IMMEDIATE;
  isUsable_ = MakeDevice({1, 1}) || direct3d_.Refuse();
}

D3dSurface::~D3dSurface() {
  KillTimer(window_, ASK_TIMER);
  copy_.reset();
  device_.reset();
  if (hidden_) DestroyWindow(hidden_);
}

std::unique_ptr<CameraRenderer> D3dSurface::MakeRenderer(const Palette& palette) {
  return std::make_unique<D3dRenderer>(*this, palette);
}

bool D3dSurface::MakeDevice(PixelSize size) {
  parameters_.BackBufferWidth = Stepped(size.width);
  parameters_.BackBufferHeight = Stepped(size.height);
  device_ = direct3d_.MakeDevice(parameters_);
  return device_ != nullptr;
}

void D3dSurface::GiveUpDevice() {
  copy_.reset();
  device_.reset();
  ++generation_;
}

// All that is made with the device is kept by the system for it; only its own picture is not.
bool D3dSurface::Fit(PixelSize size) {
  const UINT width = std::max(parameters_.BackBufferWidth, Stepped(size.width));
  const UINT height = std::max(parameters_.BackBufferHeight, Stepped(size.height));
  const HRESULT state = device_->TestCooperativeLevel();
  if (state == D3DERR_DEVICELOST) return false;
  const bool fits = width == parameters_.BackBufferWidth && height == parameters_.BackBufferHeight;
  if (state == D3D_OK && fits) return true;
  copy_.reset();
  parameters_.BackBufferWidth = width;
  parameters_.BackBufferHeight = height;
  const HRESULT result = device_->Reset(&parameters_);
  if (FAILED(result) && result != D3DERR_DEVICELOST) GiveUpDevice();
  return SUCCEEDED(result);
}

IDirect3DDevice9* D3dSurface::Prepare(PixelSize size) {
  drawn_ = size;
  const bool isThere = device_ || MakeDevice(size);
  if (!isThere || !Fit(size)) {
    AskAgain();
    return nullptr;
  }
  return device_.get();
}

void D3dSurface::AskAgain() const {
  SetTimer(window_, ASK_TIMER, ASK_INTERVAL, OnAskTimer);
}

void D3dSurface::Present() {
  if (!device_) return;
  if (hidden_) return Copy();
  const RECT area{0, 0, drawn_.width, drawn_.height};
  if (FAILED(device_->Present(&area, &area, window_, nullptr))) AskAgain();
}

void D3dSurface::Copy() {
  IDirect3DSurface9* target = nullptr;
  if (FAILED(device_->GetRenderTarget(0, &target))) return AskAgain();
  const OwnedD3d<IDirect3DSurface9> ownedTarget(target);
  if (!copy_) {
    IDirect3DSurface9* made = nullptr;
    device_->CreateOffscreenPlainSurface(parameters_.BackBufferWidth, parameters_.BackBufferHeight,
                                         parameters_.BackBufferFormat, D3DPOOL_SYSTEMMEM, &made,
                                         nullptr);
    copy_.reset(made);
  }
  D3DLOCKED_RECT rows;
  const bool isRead = copy_ && SUCCEEDED(device_->GetRenderTargetData(target, copy_.get())) &&
                      SUCCEEDED(copy_->LockRect(&rows, nullptr, D3DLOCK_READONLY));
  if (!isRead) return AskAgain();
  ShowPicture(window_, {rows.pBits, rows.Pitch / 4, RowOrder::FromTop}, drawn_);
  copy_->UnlockRect();
}

}  // namespace ferrowand
