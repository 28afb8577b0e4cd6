#include <cstdlib>

#include "shell/app_fixture.h"
#include "shell/direct3d/d3d.h"
#include "shell/windows/camera_window.h"

namespace ferrowand {
namespace {

constexpr PixelRect PLACE{0, 0, 420, 330};

class D3dCameraTest : public AppTest {
 protected:
  D3dCameraTest() { saved.useDirect3D = 1; }

  // Two boxes and a light.
  Map& OpenLitMap() {
    std::string text = TWO_BRUSHES;
    text += "{\n\"classname\" \"light\"\n\"origin\" \"80 0 80\"\n}\n";
    return *parts->documents.Open(dir.Write("lit.map", text));
  }
  CameraWindow* CameraOf(const Map& map) {
    for (ChildWindow* window : parts->windows.WindowsOf(map)) {
      if (auto* camera = dynamic_cast<CameraWindow*>(window)) return camera;
    }
    return nullptr;
  }
  // The map's only one, at a place of its own.
  CameraWindow& NewCamera(const Map& map, Command command) {
    if (CameraWindow* open = CameraOf(map)) parts->windows.Close(*open);
    Give(command);
    CameraWindow& made = *CameraOf(map);
    made.MoveTo(PLACE);
    CameraPose pose;
    pose.eye = {-100, -140, 90};
    pose.LookAt({90, 0, 10});
    made.GetCamera()->SetPose(pose);
    return made;
  }

  // Every third row, red, green and blue.
  std::vector<int> PictureOf(CameraWindow& window, RenderMode mode) {
    Activate(window);
    window.GetCamera()->SetMode(mode);
    UpdateWindow(window.Handle());
    const PixelSize size = window.DrawingArea();
    std::vector<int> parts;
    const HDC dc = GetDC(window.Handle());
    for (int y = 0; y < size.height; y += 3) {
      for (int x = 0; x < size.width; ++x) {
        const COLORREF pixel = GetPixel(dc, x, y);
        for (const int shift : {0, 8, 16}) parts.push_back(static_cast<int>(pixel >> shift & 255));
      }
    }
    ReleaseDC(window.Handle(), dc);
    return parts;
  }

  struct Shown {
    std::vector<int> picture;
    std::vector<std::vector<entity*>> picks;
  };
  Shown ShownBy(CameraWindow& window, int mode) {
    Shown shown{PictureOf(window, static_cast<RenderMode>(mode)), {}};
    for (int y = 4; y < 290; y += 13) {
      for (int x = 4; x < 400; x += 13) shown.picks.push_back(window.GetCamera()->PickAll({x, y}));
    }
    return shown;
  }
};

double Sum(const std::vector<int>& values) {
  double sum = 0;
  for (const int value : values) sum += value;
  return sum;
}

TEST_F(D3dCameraTest, ShowsAndPicksWhatTheOpenGlCameraDoes) {
  ASSERT_TRUE(Start());
  Map& map = OpenLitMap();
  map.selection.Set({map.getEntityList().front().get()});
  std::vector<Shown> byGl;
  CameraWindow& gl = NewCamera(map, Command::NewGLCamera);
  for (int mode = 0; mode < 6; ++mode) byGl.push_back(ShownBy(gl, mode));
  CameraWindow& d3d = NewCamera(map, Command::NewD3DCamera);
  for (int mode = 0; mode < 6; ++mode) {
    const Shown& a = byGl[static_cast<std::size_t>(mode)];
    const Shown b = ShownBy(d3d, mode);
    ASSERT_EQ(a.picture.size(), b.picture.size());
    double difference = 0;
    for (std::size_t i = 0; i < a.picture.size(); ++i) {
      difference += std::abs(a.picture[i] - b.picture[i]);
    }
    EXPECT_GT(Sum(a.picture), 0) << mode;
    EXPECT_LT(difference / static_cast<double>(a.picture.size()), 0.6) << mode;
    std::size_t same = 0, hits = 0;
    for (std::size_t i = 0; i < a.picks.size(); ++i) {
      same += a.picks[i] == b.picks[i] ? 1 : 0;
      hits += a.picks[i].empty() ? 0 : 1;
    }
    EXPECT_GT(hits, 100u) << mode;
    EXPECT_GE(same, a.picks.size() - 2) << mode;
  }
}

TEST_F(D3dCameraTest, ComesBackLargerAndAfterARelease) {
  ASSERT_TRUE(Start());
  Map& map = OpenLitMap();
  CameraWindow& d3d = NewCamera(map, Command::NewD3DCamera);
  const std::vector<int> before = PictureOf(d3d, RenderMode::Textured);
  d3d.MoveTo({0, 0, 700, 600});
  EXPECT_GT(Sum(PictureOf(d3d, RenderMode::Textured)), 2 * Sum(before));
  d3d.GetCamera()->Release();
  EXPECT_EQ(Sum(PictureOf(d3d, RenderMode::Textured)), 0);
  d3d.GetCamera()->Restore();
  d3d.MoveTo(PLACE);
  EXPECT_EQ(PictureOf(d3d, RenderMode::Textured), before);
}

// What every Direct3D device of the program says of its state, and does about it.
class DeviceState {
 public:
  DeviceState() {
    state = refusal = D3D_OK;
    resets = 0;
    const HMODULE library = LoadLibraryA("d3d9.dll");
    const auto create = reinterpret_cast<IDirect3D9*(WINAPI*)(UINT)>(
        reinterpret_cast<void*>(GetProcAddress(library, "Direct3DCreate9")));
    const OwnedD3d<IDirect3D9> direct3d(create(D3D_SDK_VERSION));
    D3DPRESENT_PARAMETERS parameters{};
    parameters.Windowed = TRUE;
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.BackBufferWidth = parameters.BackBufferHeight = 8;
    parameters.hDeviceWindow = GetDesktopWindow();
    IDirect3DDevice9* made = nullptr;
    direct3d->CreateDevice(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, GetDesktopWindow(),
                           D3DCREATE_SOFTWARE_VERTEXPROCESSING, &parameters, &made);
    const OwnedD3d<IDirect3DDevice9> device(made);
    functions = *reinterpret_cast<void***>(made);
    ask = reinterpret_cast<Ask>(functions[ASK]);
    reset = reinterpret_cast<Reset>(functions[RESET]);
    Put(&Answer, &SetAnew);
  }
  ~DeviceState() { Put(ask, reset); }
  DeviceState(const DeviceState&) = delete;
  DeviceState& operator=(const DeviceState&) = delete;

  void Set(HRESULT newState, HRESULT newRefusal = D3D_OK) {
    state = newState;
    refusal = newRefusal;
  }
  int Resets() const { return resets; }

 private:
  using Ask = HRESULT(WINAPI*)(IDirect3DDevice9*);
  using Reset = HRESULT(WINAPI*)(IDirect3DDevice9*, D3DPRESENT_PARAMETERS*);
  static constexpr std::size_t ASK = 3, RESET = 16;  // in the interface's table of functions
  inline static void** functions = nullptr;
  inline static Ask ask = nullptr;
  inline static Reset reset = nullptr;
  inline static HRESULT state = D3D_OK, refusal = D3D_OK;
  inline static int resets = 0;

  static HRESULT WINAPI Answer(IDirect3DDevice9*) { return state; }
  static HRESULT WINAPI SetAnew(IDirect3DDevice9* device, D3DPRESENT_PARAMETERS* parameters) {
    ++resets;
    if (refusal != D3D_OK) return refusal;
    state = D3D_OK;
    return reset(device, parameters);
  }
  static void Put(Ask toAsk, Reset toReset) {
    DWORD before = 0;
    const SIZE_T size = (RESET + 1) * sizeof(void*);
    VirtualProtect(functions, size, PAGE_READWRITE, &before);
    functions[ASK] = reinterpret_cast<void*>(toAsk);
    functions[RESET] = reinterpret_cast<void*>(toReset);
    VirtualProtect(functions, size, before, &before);
  }
};

TEST_F(D3dCameraTest, ALostDeviceComesBackOrIsReplaced) {
  ASSERT_TRUE(Start());
  Map& map = OpenLitMap();
  CameraWindow& d3d = NewCamera(map, Command::NewD3DCamera);
  const std::vector<int> before = PictureOf(d3d, RenderMode::Textured);
  // Something must be drawn anew, and is as soon as the device lets it.
  const auto comesBack = [&](int resets, const DeviceState& device) {
    for (int i = 0; i < 40 && device.Resets() < resets; ++i) {
      Sleep(50);
      app->Pump();
    }
    EXPECT_EQ(device.Resets(), resets);
    EXPECT_EQ(PictureOf(d3d, RenderMode::Textured), before);
  };
  DeviceState device;
  device.Set(D3DERR_DEVICELOST);
  PictureOf(d3d, RenderMode::Wireframe);
  EXPECT_EQ(device.Resets(), 0) << "it cannot be set anew yet";
  device.Set(D3DERR_DEVICENOTRESET);
  comesBack(1, device);
  device.Set(D3DERR_DEVICENOTRESET, D3DERR_DRIVERINTERNALERROR);
  PictureOf(d3d, RenderMode::Wireframe);
  EXPECT_EQ(device.Resets(), 2);
  device.Set(D3D_OK);
  comesBack(2, device);
  EXPECT_TRUE(sink.Said().empty());
}

TEST_F(D3dCameraTest, LampAndLightAreSwitchedByTheirCommands) {
  ASSERT_TRUE(Start());
  Map& map = OpenLitMap();
  CameraWindow& d3d = NewCamera(map, Command::NewD3DCamera);
  const auto brightness = [&] { return Sum(PictureOf(d3d, RenderMode::Textured)); };
  const double plain = brightness();
  Give(Command::LightingPreview);
  EXPECT_TRUE(IsTicked(Command::LightingPreview));
  const double preview = brightness();
  EXPECT_LT(preview, plain);
  Give(Command::HeadLamp);
  EXPECT_TRUE(IsTicked(Command::HeadLamp));
  EXPECT_GT(brightness(), preview);
  EXPECT_LT(brightness(), plain) << "less with the distance, and on what is turned away";
  Give(Command::HeadLamp);
  Give(Command::QuakeLightingOn);
  EXPECT_LE(brightness(), preview) << "there are shadows now";
  EXPECT_FALSE(parts->progress.IsLoading());
  Give(Command::QuakeLightingOff);
  EXPECT_EQ(brightness(), plain);

  CameraWindow& gl = NewCamera(map, Command::NewGLCamera);
  Give(Command::HeadLamp);
  parts->windows.Close(gl);
  Give(Command::HeadLamp);
  EXPECT_EQ(sink.Said(),
            (std::vector<std::string>{"Cannot continue: Only the Direct3D camera shows lighting.",
                                      "Cannot continue: You must have a 3D camera open"}));
}

TEST_F(D3dCameraTest, WithoutDirect3DThatIsSaidOnceAndOpenGlIsLeft) {
  direct3dLibrary = "nosuch9.dll";
  ASSERT_TRUE(Start());
  OpenTwoBrushes();
  parts->documents.Open(dir.Write("other.map", TWO_BRUSHES));
  EXPECT_EQ(parts->windows.All().size(), 6u);
  EXPECT_EQ(sink.OnlyText(),
            "Direct3D failed to initialize! Direct3D camera will not be available");
  Give(Command::NewGLCamera);
  EXPECT_EQ(parts->windows.All().size(), 7u);
  Give(Command::NewD3DCamera);
  parts->windows.Close(*parts->windows.All().back());
  parts->options.useDirect3D = 0;
  Give(Command::NewD3DCamera);
  sink.messages.erase(sink.messages.begin());
  EXPECT_EQ(sink.Said(),
            (std::vector<std::string>{
                "Cannot continue: You can only have one 3D view per map",
                "Cannot continue: Direct3d has been turned off. Use OpenGL, or turn in on in the "
                "options."}));
}

}  // namespace
}  // namespace ferrowand
