#include "shell/app/window_classes.h"

#include "shell/dialogs/set_key_dialog.h"
#include "shell/frame/frame.h"
#include "shell/frame/load_window.h"
#include "shell/resources/resource.h"
#include "shell/windows/camera_window.h"
#include "shell/windows/check_window.h"
#include "shell/windows/compile_window.h"
#include "shell/windows/entity_tree_window.h"
#include "shell/windows/key_list_window.h"
#include "shell/windows/layer_list.h"
#include "shell/windows/layer_window.h"
#include "shell/windows/map_window.h"
#include "shell/windows/properties_window.h"
#include "shell/windows/texture_browser.h"

namespace ferrowand {
namespace {

constexpr COLORREF CLIENT_COLOUR = 0x206029;

}  // namespace

const char* MdiClientClass(int bitsPerPixel) {
  return bitsPerPixel > 8 ? "FRWMDIClient" : "MDICLIENT";
}

int ScreenBitsPerPixel() {
  const OwnedDc screen(CreateDCA("DISPLAY", nullptr, nullptr, nullptr));
  return GetDeviceCaps(screen.get(), BITSPIXEL) * GetDeviceCaps(screen.get(), PLANES);
}

WindowClasses::WindowClasses(HINSTANCE instance)
    : instance_(instance),
      clientBrush_(CreateSolidBrush(CLIENT_COLOUR)),
      mdiClient_(MdiClientClass(ScreenBitsPerPixel())) {}

WindowClasses::~WindowClasses() {
  for (const char* name : registered_) UnregisterClassA(name, instance_);
}

bool WindowClasses::RegisterMdiClient() {
  WNDCLASSEXA client{};
  client.cbSize = sizeof client;
  if (!GetClassInfoExA(nullptr, "MDICLIENT", &client)) return false;
  client.hInstance = instance_;
  client.lpszClassName = mdiClient_;
  client.hbrBackground = clientBrush_.get();
  if (!RegisterClassExA(&client)) return false;
  registered_.push_back(mdiClient_);
  return true;
}

bool WindowClasses::Register() {
  if (std::string(mdiClient_) != "MDICLIENT" && !RegisterMdiClient()) return false;

  // The extra bytes are part of the classes and the same in every build. The objects behind the
  // windows hang elsewhere: four bytes are too few for a pointer of the 64-bit program.
  struct Row {
    const char* name;
    WNDPROC procedure;
    UINT style;
    int extraBytes;
    int background;  // a stock brush
    LPCSTR cursor;
    bool isFrame;
  };
  const Row rows[] = {
      {FRAME_CLASS, WindowFunc, 0, 0, LTGRAY_BRUSH, IDC_ARROW, true},
      {TEXTURE_BROWSER_CLASS, TextureBrowserFunc, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {TEXTURE_LIST_CLASS, TextureListFunc, CS_DBLCLKS, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {ENTITY_TREE_CLASS, EntityTreeFunc, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {KEY_ENTRY_CLASS, KeyFunc, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {KEY_LIST_CLASS, KeyList, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {CLIENT_CLASS, ClientWindowFunc, CS_DBLCLKS, 4, LTGRAY_BRUSH, IDC_ARROW, false},
      {MAP_CLASS, MapFunc, CS_DBLCLKS, 4, NULL_BRUSH, nullptr, false},
      {CAMERA_CLASS, View3DWindowFunc, CS_DBLCLKS, 4, BLACK_BRUSH, IDC_ARROW, false},
      {COMPILE_CLASS, CompileFunc, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {LAYER_CLASS, LayerFunc, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {LAYER_LIST_CLASS, LayerListFunc, CS_DBLCLKS, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {LOAD_WINDOW_CLASS, LoadWindowFunc, 0, 8, LTGRAY_BRUSH, IDC_ARROW, false},
      {PROPERTIES_CLASS, SideWindow::Dispatch, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
      {CHECK_CLASS, ChildWindow::Dispatch, 0, 0, LTGRAY_BRUSH, IDC_ARROW, false},
  };
  for (const Row& row : rows) {
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = row.style;
    windowClass.lpfnWndProc = row.procedure;
    windowClass.cbWndExtra = row.extraBytes;
    windowClass.hInstance = instance_;
    windowClass.hIcon = LoadIconA(instance_, MAKEINTRESOURCEA(ID_FRAME));
    windowClass.hCursor = row.cursor ? LoadCursorA(nullptr, row.cursor) : nullptr;
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(row.background));
    windowClass.lpszMenuName = row.isFrame ? MAKEINTRESOURCEA(ID_FRAME) : nullptr;
    windowClass.lpszClassName = row.name;
    if (!RegisterClassExA(&windowClass)) return false;
    registered_.push_back(row.name);
  }
  return true;
}

}  // namespace ferrowand
