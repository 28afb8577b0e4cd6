#include "shell/direct3d/direct3d.h"

#include <algorithm>
#include <span>
#include <utility>

#include "base/options.h"
#include "base/report.h"

namespace ferrowand {
namespace {

// In the order of trying. What draws in software is slow, and few systems have it.
constexpr D3DDEVTYPE ANY_DEVICE[] = {D3DDEVTYPE_REF, D3DDEVTYPE_SW, D3DDEVTYPE_HAL};
constexpr D3DDEVTYPE HARDWARE_DEVICE[] = {D3DDEVTYPE_HAL};
constexpr D3DFORMAT DEPTH_FORMATS[] = {D3DFMT_D24X8, D3DFMT_D24S8, D3DFMT_D16};
// A texture and the light on it.
constexpr DWORD STAGES = 2;
constexpr D3DCOLOR TEST_COLOUR = 0x204060;
constexpr unsigned COLOUR_BITS = 0xFFFFFF;

std::span<const D3DDEVTYPE> DeviceTypes(const Options& options) {
  if (options.useHardware != 0) return HARDWARE_DEVICE;
  return ANY_DEVICE;
}

bool Suffices(const D3DCAPS9& caps) {
  return caps.MaxVertexIndex > 0xFFFF && caps.MaxSimultaneousTextures >= STAGES;
}

// Systems without the reference rasteriser may give a device in its place that shows nothing.
bool Draws(IDirect3DDevice9& device) {
  IDirect3DSurface9* target = nullptr;
  IDirect3DSurface9* copy = nullptr;
  if (FAILED(device.GetRenderTarget(0, &target))) return false;
  const OwnedD3d<IDirect3DSurface9> ownedTarget(target);
  D3DSURFACE_DESC is;
  target->GetDesc(&is);
  if (FAILED(device.CreateOffscreenPlainSurface(is.Width, is.Height, is.Format, D3DPOOL_SYSTEMMEM,
                                                &copy, nullptr))) {
    return false;
  }
  const OwnedD3d<IDirect3DSurface9> ownedCopy(copy);
  device.Clear(0, nullptr, D3DCLEAR_TARGET, TEST_COLOUR, 1, 0);
  D3DLOCKED_RECT rows;
  const bool isRead = SUCCEEDED(device.GetRenderTargetData(target, copy)) &&
                      SUCCEEDED(copy->LockRect(&rows, nullptr, D3DLOCK_READONLY));
  if (!isRead) return false;
  const bool draws = (*static_cast<const unsigned*>(rows.pBits) & COLOUR_BITS) == TEST_COLOUR;
  copy->UnlockRect();
  return draws;
}

}  // namespace

Direct3D::Direct3D(std::string library, const Options& options, Reporter& reporter)
    : library_(std::move(library)), options_(options), reporter_(reporter) {}

Direct3D::~Direct3D() {
  direct3d_.reset();
  if (module_) FreeLibrary(module_);
}

bool Direct3D::Start() {
  if (!module_) module_ = LoadLibraryA(library_.c_str());
  if (!module_) return Refuse();
  create_ = reinterpret_cast<CreateFunction>(
      reinterpret_cast<void*>(GetProcAddress(module_, "Direct3DCreate9")));
  if (!create_) return Refuse();
  state_ = State::Started;
  return true;
}

bool Direct3D::Refuse() {
  state_ = State::Failed;
  reporter_.Show("Error", "Direct3D failed to initialize! Direct3D camera will not be available");
  return false;
}

// Not at the start: looking at the display's driver takes longer than all the rest of that.
bool Direct3D::IsReady() {
  if (state_ == State::Off) Start();
  if (state_ == State::Started && !direct3d_ && !Create()) Refuse();
  return state_ == State::Started;
}

bool Direct3D::Create() {
  direct3d_.reset(create_(D3D_SDK_VERSION));
  if (!direct3d_) return false;
  const auto types = DeviceTypes(options_);
  return std::ranges::any_of(types, [this](D3DDEVTYPE type) {
    D3DCAPS9 caps;
    return SUCCEEDED(direct3d_->GetDeviceCaps(D3DADAPTER_DEFAULT, type, &caps)) && Suffices(caps);
  });
}

OwnedD3d<IDirect3DDevice9> Direct3D::MakeDevice(D3DPRESENT_PARAMETERS& parameters) {
  for (const D3DDEVTYPE type : DeviceTypes(options_)) {
    if (auto device = MakeDevice(type, parameters)) return device;
  }
  return nullptr;
}

OwnedD3d<IDirect3DDevice9> Direct3D::MakeDevice(D3DDEVTYPE type,
                                                D3DPRESENT_PARAMETERS& parameters) {
  D3DCAPS9 caps;
  if (FAILED(direct3d_->GetDeviceCaps(D3DADAPTER_DEFAULT, type, &caps)) || !Suffices(caps)) {
    return nullptr;
  }
  const bool turnsPoints = (caps.DevCaps & D3DDEVCAPS_HWTRANSFORMANDLIGHT) != 0;
  const DWORD flags =
      turnsPoints ? D3DCREATE_HARDWARE_VERTEXPROCESSING : D3DCREATE_SOFTWARE_VERTEXPROCESSING;
  for (const D3DFORMAT depth : DEPTH_FORMATS) {
    parameters.AutoDepthStencilFormat = depth;
    IDirect3DDevice9* made = nullptr;
    direct3d_->CreateDevice(D3DADAPTER_DEFAULT, type, parameters.hDeviceWindow,
                            flags | D3DCREATE_FPU_PRESERVE, &parameters, &made);
    OwnedD3d<IDirect3DDevice9> device(made);
    if (device && (type == D3DDEVTYPE_HAL || Draws(*device))) return device;
  }
  return nullptr;
}

}  // namespace ferrowand
