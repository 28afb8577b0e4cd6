// What comes of each control of the windows, held against what came of it when somebody looked at
// it last.
#include "shell/use_fixture.h"

#include <commctrl.h>

#include <algorithm>
#include <cctype>

#include "shell/dialog_visitor.h"

namespace ferrowand {
namespace {

struct UsedWindow {
  const char* title;
  Command opens;
  std::vector<std::size_t> selected = {};
  DWORD wait = 0;  // for what it does while the program has nothing else to do
};

constexpr DWORD TYPING = 80;  // what is typed is looked for after a while

class ControlUseTest : public UseTest, public testing::WithParamInterface<UsedWindow> {
 protected:
  void UseAll() {
    wait = GetParam().wait;
    OpenMap(GetParam().selected);
    for (const Place& place : ControlsOf(Window())) {
      at_ = place;
      where = place.kind + Format(" %i: ", place.id);
      PutBack();
      Use();
    }
    at_ = {};
    where.clear();
    Act("Close", [&] { SendMessageA(Window(), WM_CLOSE, 0, 0); });
  }

 private:
  struct Place {
    int id = 0;
    std::string kind;
  };

  HWND Window() const {
    std::vector<HWND> all;
    for (const auto& window : parts->windows.All()) all.push_back(window->Handle());
    for (const auto& side : parts->sides.All()) all.push_back(side->Handle());
    for (const HWND window : all) {
      if (KindOfWindow(TextOf(window)) == GetParam().title && IsWindowVisible(window)) {
        return window;
      }
    }
    return nullptr;
  }
  static std::vector<Place> ControlsOf(HWND parent) {
    std::vector<Place> controls;
    for (const HWND child : ShownChildren(parent)) {
      const std::string kind = ClassOf(child);
      const bool isReadOnly =
          kind == "Edit" && (GetWindowLongA(child, GWL_STYLE) & ES_READONLY) != 0;
      const bool isList = kind == "ComboBox" || kind == WC_LISTVIEWA;
      const bool isWhole = isList || GetWindow(child, GW_CHILD) == nullptr;
      if (isWhole && IsWindowEnabled(child) && !isReadOnly)
        controls.push_back({GetDlgCtrlID(child), kind});
      if (isList) continue;
      for (const Place& place : ControlsOf(child)) controls.push_back(place);
    }
    return controls;
  }
  static HWND Find(HWND parent, const Place& place) {
    for (const HWND child : ShownChildren(parent)) {
      if (GetDlgCtrlID(child) == place.id && ClassOf(child) == place.kind) return child;
      if (const HWND below = Find(child, place)) return below;
    }
    return nullptr;
  }
  HWND Control() const { return at_.kind.empty() ? nullptr : Find(Window(), at_); }

  void Restore() override {
    if (Window() == nullptr) Give(GetParam().opens);
    app->Pump();
    ASSERT_NE(Window(), nullptr);
    const HWND control = Control();
    if (!control) return;
    SetFocus(control);
    if (at_.kind != WC_LISTVIEWA) return;
    ListView_SetItemState(control, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(control, 0, LVIS_FOCUSED, LVIS_FOCUSED);
  }

  void Use() {
    if (at_.kind == "Button") {
      UseButton();
    } else if (at_.kind == "Edit") {
      UseEdit();
    } else if (at_.kind == "ComboBox") {
      UseCombo();
    } else if (at_.kind != "Static" && at_.kind != "#32770") {
      UseKeys();
      UseMouse();
      UseHeader();
    }
  }
  void UseButton() {
    const LONG type = GetWindowLongA(Control(), GWL_STYLE) & BS_TYPEMASK;
    if (type == BS_GROUPBOX) return;
    Act("Click", [&] { SendMessageA(Control(), BM_CLICK, 0, 0); });
    if (Window()) SendMessageA(Window(), WM_CLOSE, 0, 0);
    ForgetOptions();
    PutBack();
  }
  void UseEdit() {
    wait = std::max(GetParam().wait, TYPING);
    const std::wstring before = WindowText(Control());
    const std::pair<const char*, int> typed[] = {
        {"l*t", 0}, {"l*t", VK_ESCAPE}, {"8", VK_RETURN}, {"", VK_RETURN}};
    for (const auto& [text, key] : typed) {
      const char* name = key == 0 ? "" : key == VK_RETURN ? ", Enter" : ", Escape";
      Act(Format("'%s'", text) + name, [&, text = text, key = key] {
        Write(text);
        if (*text == 0) SendMessageA(GetFocus(), WM_CLEAR, 0, 0);
        if (key != 0) Type(GetFocus(), static_cast<WPARAM>(key));
      });
      SetWindowTextW(Control(), before.c_str());
      PutBack();
    }
    wait = GetParam().wait;
    for (const auto& [name, key] :
         {std::pair("Up", VK_UP), {"Down", VK_DOWN}, {"Next", VK_NEXT}, {"F3", VK_F3}}) {
      Act(name, [&, key = key] { Type(Control(), static_cast<WPARAM>(key)); });
    }
  }
  HWND InnerEdit() const { return FindWindowExA(Control(), nullptr, "Edit", nullptr); }
  void UseCombo() {
    wait = std::max(GetParam().wait, TYPING);
    Act("Open", [&] { SendMessageA(Control(), CB_SHOWDROPDOWN, TRUE, 0); });
    SendMessageA(Control(), CB_SHOWDROPDOWN, FALSE, 0);
    for (const auto& [name, key] :
         {std::pair("Down", VK_DOWN), {"End", VK_END}, {"Home", VK_HOME}}) {
      Act(name, [&, key = key] { Type(Control(), static_cast<WPARAM>(key)); });
    }
    for (const char* text : {"l*t", "door"}) {
      if (!InnerEdit()) continue;
      Act(Format("'%s', Enter", text), [&] {
        SetFocus(InnerEdit());
        Write(text);
        Type(GetFocus(), VK_RETURN);
      });
    }
    wait = GetParam().wait;
  }
  void UseKeys() {
    for (const auto& [name, key] : {std::pair("Down", VK_DOWN),
                                    {"Up", VK_UP},
                                    {"End", VK_END},
                                    {"Next", VK_NEXT},
                                    {"Right", VK_RIGHT},
                                    {"Left", VK_LEFT},
                                    {"Space", VK_SPACE},
                                    {"Enter", VK_RETURN},
                                    {"Delete", VK_DELETE},
                                    {"Escape", VK_ESCAPE},
                                    {"Insert", VK_INSERT},
                                    {"F2", VK_F2},
                                    {"F3", VK_F3}}) {
      for (const bool isLast : {false, true}) {
        Act((isLast ? "End, " : "") + std::string(name), [&, key = key] {
          if (isLast) Type(Control(), VK_END);
          if (Control()) Type(Control(), static_cast<WPARAM>(key));
        });
      }
    }
    for (const char letter : {'A', 'C'}) {
      Act(Format("Ctrl+%c", letter), [&] {
        const HeldKey control(VK_CONTROL);
        Type(Control(), static_cast<WPARAM>(letter));
      });
    }
    Act("F2, typed", [&] {
      Type(Control(), VK_F2);
      if (GetFocus() == Control()) return;
      Write("typed");
      Type(GetFocus(), VK_RETURN);
    });
    wait = std::max(GetParam().wait, TYPING);
    Act("'l'", [&] { Post(Control(), WM_CHAR, 'l', 1); });
    wait = GetParam().wait;
  }
  POINT PointAt(int index) const {
    RECT place;
    if (at_.kind == WC_LISTVIEWA) {
      ListView_GetItemRect(Control(), index, &place, LVIR_LABEL);
    } else if (at_.kind == "ListBox") {
      SendMessageA(Control(), LB_GETITEMRECT, static_cast<WPARAM>(index),
                   reinterpret_cast<LPARAM>(&place));
    } else {
      return {40 + 100 * index, 40};
    }
    return {std::min(place.left + 30, place.right - 2), (place.top + place.bottom) / 2};
  }
  void Press(int index, UINT down, WPARAM held = 0) {
    const POINT at = PointAt(index);
    PostMessageW(Control(), down, MK_LBUTTON | held, MAKELPARAM(at.x, at.y));
    SendMouse(Control(), WM_LBUTTONUP, held, at);
  }
  bool HasRow(int index) const {
    if (at_.kind == WC_LISTVIEWA) return index < ListView_GetItemCount(Control());
    return at_.kind != "ListBox" || index < SendMessageA(Control(), LB_GETCOUNT, 0, 0);
  }
  void UseMouse() {
    for (const int index : {0, 1, 2}) {
      if (!HasRow(index)) break;
      const std::string name = Format("%i: ", index + 1);
      Act(name + "Click", [&] { Press(index, WM_LBUTTONDOWN); });
      Act(name + "Ctrl+click", [&] {
        const HeldKey control(VK_CONTROL);
        Press(index, WM_LBUTTONDOWN, MK_CONTROL);
      });
      Act(name + "Shift+click", [&] {
        const HeldKey shift(VK_SHIFT);
        Press(index, WM_LBUTTONDOWN, MK_SHIFT);
      });
      Act(name + "Double click", [&] {
        Press(index, WM_LBUTTONDOWN);
        if (Control()) Press(index, WM_LBUTTONDBLCLK);
      });
      Act(name + "Right click", [&] {
        POINT at = PointAt(index);
        Press(index, WM_LBUTTONDOWN);
        ClientToScreen(Control(), &at);
        SendMessageW(Control(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Control()),
                     MAKELPARAM(at.x, at.y));
      });
    }
    for (const auto& [name, held] : {std::pair("Wheel", 0), {"Ctrl+wheel", MK_CONTROL}}) {
      Act(name, [&, held = held] {
        SendMessageA(Control(), WM_MOUSEWHEEL, MAKEWPARAM(held, -WHEEL_DELTA), 0);
      });
      SendMessageA(Control(), WM_MOUSEWHEEL, MAKEWPARAM(held, WHEEL_DELTA), 0);
      PutBack();
    }
  }
  void UseHeader() {
    const HWND header = at_.kind == WC_LISTVIEWA ? ListView_GetHeader(Control()) : nullptr;
    for (int i = 0; header && i < Header_GetItemCount(header); ++i) {
      Act(Format("Heading %i", i + 1), [&] {
        NMLISTVIEW click{};
        click.hdr = {Control(), static_cast<UINT_PTR>(at_.id), static_cast<UINT>(LVN_COLUMNCLICK)};
        click.iItem = -1;
        click.iSubItem = i;
        SendMessageA(GetParent(Control()), WM_NOTIFY, click.hdr.idFrom,
                     reinterpret_cast<LPARAM>(&click));
      });
    }
  }

  Place at_;
};

TEST_P(ControlUseTest, EveryControlDoesWhatItDidWhenItWasLookedAt) {
  UseAll();
  std::string name = GetParam().title;
  std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
  ExpectLookedAt(lines, "use/" + name + ".txt");
}

INSTANTIATE_TEST_SUITE_P(
    Windows, ControlUseTest,
    testing::Values(UsedWindow{"Layers", Command::LayersList, {0}},
                    UsedWindow{"Entity tree", Command::EntityTree, {2}},
                    UsedWindow{"Textures", Command::TextureBrowser, {0}},
                    UsedWindow{"Check map", Command::CheckMap, {}, 150},
                    UsedWindow{"Properties", Command::Properties, {2}},
                    UsedWindow{"Worldspawn", Command::EditWorldspawn},
                    UsedWindow{"Find entity", Command::FindEntity, {0, 2}},
                    UsedWindow{"Replace texture", Command::ReplaceTexture, {0, 2}},
                    UsedWindow{"WADs", Command::WadManager},
                    UsedWindow{"Map information", Command::GetInfo},
                    UsedWindow{"Class file messages", Command::ClassMessages}));

}  // namespace
}  // namespace ferrowand
