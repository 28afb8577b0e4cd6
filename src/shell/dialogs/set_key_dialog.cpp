#include "shell/dialogs/set_key_dialog.h"

#include <algorithm>
#include <array>

#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/handles.h"

namespace ferrowand {
namespace {

constexpr UINT_PTR SCAN_TIMER = 1;
constexpr UINT SCAN_EVERY = 100;              // milliseconds
constexpr int FIRST_KEY = 8, NUM_KEYS = 256;  // the codes below are the mouse's

using KeyStates = std::array<BYTE, NUM_KEYS>;

KeyStates KeysNow() {
  KeyStates keys{};
  GetKeyboardState(keys.data());
  return keys;
}

bool IsDown(const KeyStates& keys, int code) {
  return (keys[static_cast<std::size_t>(code)] & 0x80) != 0;
}

class SetKeyDialog {
 public:
  int Run(HWND owner) {
    return static_cast<int>(DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_SET_KEY),
                                            owner, DialogFunc, reinterpret_cast<LPARAM>(this)));
  }

  // A key may be down and up again between two ticks.
  void OnKeyDown(int code, bool repeated) {
    if (!repeated && code >= FIRST_KEY) tapped_ = std::min(tapped_, code);
  }

  void OnTick() {
    const KeyStates keys = KeysNow();
    int code = FIRST_KEY;
    while (code < NUM_KEYS && (!IsDown(keys, code) || IsDown(heldBefore_, code))) ++code;
    code = std::min(code, tapped_);
    if (code < NUM_KEYS) return End(code);
    for (std::size_t i = 0; i < keys.size(); ++i) heldBefore_[i] &= keys[i];
  }

 private:
  static INT_PTR CALLBACK DialogFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      SetObject(dialog, reinterpret_cast<void*>(lParam));
      ObjectOf<SetKeyDialog>(dialog)->OnInit(dialog);
      return FALSE;  // the focus has been set
    }
    auto* object = ObjectOf<SetKeyDialog>(dialog);
    if (!object || message != WM_COMMAND) return FALSE;
    const int id = LOWORD(wParam);
    if (id == IDCANCEL) object->End(NO_KEY);
    if (id > ID_KEY_CHOICE) object->End(id - ID_KEY_CHOICE);
    return TRUE;
  }

  void OnInit(HWND dialog) {
    dialog_ = dialog;
    heldBefore_ = KeysNow();
    const HWND entry = GetDlgItem(dialog, ID_KEY_ENTRY);
    SetFocus(entry);
    SetTimer(entry, SCAN_TIMER, SCAN_EVERY, nullptr);
  }

  void End(int code) const {
    KillTimer(GetDlgItem(dialog_, ID_KEY_ENTRY), SCAN_TIMER);
    EndDialog(dialog_, code);
  }

  HWND dialog_ = nullptr;
  KeyStates heldBefore_{};
  int tapped_ = NUM_KEYS;
};

void PaintEntry(HWND window) {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window, &paint);
  RECT area;
  GetClientRect(window, &area);
  DrawEdge(dc, &area, EDGE_SUNKEN, BF_RECT);
  char text[60] = "";
  const int length = GetWindowTextA(window, text, sizeof text);
  SelectObject(dc, InterfaceFont());
  SetBkMode(dc, TRANSPARENT);
  DrawTextA(dc, text, length, &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
  EndPaint(window, &paint);
}

}  // namespace

LRESULT CALLBACK KeyFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* dialog = ObjectOf<SetKeyDialog>(GetParent(window));
  switch (message) {
    case WM_PAINT:
      PaintEntry(window);
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (dialog) dialog->OnKeyDown(static_cast<int>(wParam), (HIWORD(lParam) & KF_REPEAT) != 0);
      return 0;
    case WM_SYSKEYUP:
      return 0;  // Alt would go on to the menu of the window
    case WM_TIMER:
      if (dialog) dialog->OnTick();
      return 0;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

int AskKey(HWND owner) {
  return SetKeyDialog().Run(owner);
}

}  // namespace ferrowand
