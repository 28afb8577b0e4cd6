// What comes of the mouse and the keys in views and cameras, and of every command, held against
// what came of it when somebody looked at it last.
#include <algorithm>
#include <set>

#include "shell/use_fixture.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

// A press of the mouse with what is held meanwhile.
struct Held {
  const char* name;
  int key = 0;
  WPARAM flag = 0;
};
constexpr Held HELD[] = {
    {""}, {"Ctrl+", VK_CONTROL, MK_CONTROL}, {"Shift+", VK_SHIFT, MK_SHIFT}, {"Alt+", VK_MENU}};

class GestureTest : public UseTest, public testing::WithParamInterface<Command> {
 protected:
  void Restore() override {
    if (GetCapture()) ReleaseCapture();
    const Command mode = Mode();
    if (!IsTicked(mode)) Give(mode);
    for (const auto& side : std::vector(Sides())) DestroyWindow(side);
    SetFocus(Target());
  }
  virtual Command Mode() const { return GetParam(); }
  virtual HWND Target() const = 0;

  std::vector<HWND> Sides() const {
    std::vector<HWND> all;
    for (const auto& side : parts->sides.All()) all.push_back(side->Handle());
    return all;
  }
  // Does it while the keys are held.
  void With(const Held& held, const std::function<void(WPARAM flag)>& act) {
    if (held.key == 0) return act(0);
    const HeldKey key(held.key);
    act(held.flag);
  }
  void Click(POINT at, WPARAM flag) {
    SendMouse(Target(), WM_LBUTTONDOWN, MK_LBUTTON | flag, at);
    SendMouse(Target(), WM_LBUTTONUP, flag, at);
  }
  void Drag(POINT from, POINT to, UINT down, UINT up, WPARAM button, WPARAM flag) {
    SendMouse(Target(), down, button | flag, from);
    SendMouse(Target(), WM_MOUSEMOVE, button | flag, {from.x + 10, from.y + 5});
    SendMouse(Target(), WM_MOUSEMOVE, button | flag, to);
    SendMouse(Target(), up, flag, to);
  }
  void UseMouse(const std::string& name, POINT at, POINT to) {
    for (const Held& held : HELD) {
      where = name + ", " + held.name;
      Act("click", [&] { With(held, [&](WPARAM flag) { Click(at, flag); }); });
      Act("drag", [&] {
        With(held,
             [&](WPARAM flag) { Drag(at, to, WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON, flag); });
      });
      Act("wheel", [&] {
        With(held, [&](WPARAM flag) {
          POINT screen = at;
          ClientToScreen(Target(), &screen);
          SendMessageA(Target(), WM_MOUSEWHEEL, MAKEWPARAM(flag, -WHEEL_DELTA),
                       MAKELPARAM(screen.x, screen.y));
        });
      });
    }
    where = name + ", ";
    Act("double click", [&] {
      Click(at, 0);
      SendMouse(Target(), WM_LBUTTONDBLCLK, MK_LBUTTON, at);
      SendMouse(Target(), WM_LBUTTONUP, 0, at);
    });
    Act("right click", [&] {
      SendMouse(Target(), WM_RBUTTONDOWN, MK_RBUTTON, at);
      SendMouse(Target(), WM_RBUTTONUP, 0, at);
    });
    Act("right drag", [&] { Drag(at, to, WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON, 0); });
    Act("drag, Escape", [&] {
      SendMouse(Target(), WM_LBUTTONDOWN, MK_LBUTTON, at);
      SendMouse(Target(), WM_MOUSEMOVE, MK_LBUTTON, to);
      Type(Target(), VK_ESCAPE);
      SendMouse(Target(), WM_LBUTTONUP, 0, to);
    });
    where.clear();
  }
  void UseKeys() {
    const std::pair<const char*, int> keys[] = {
        {"Left", VK_LEFT},   {"Right", VK_RIGHT},  {"Up", VK_UP},         {"Down", VK_DOWN},
        {"Prior", VK_PRIOR}, {"Next", VK_NEXT},    {"Escape", VK_ESCAPE}, {"Enter", VK_RETURN},
        {"Tab", VK_TAB},     {"Delete", VK_DELETE}};
    for (const auto& [name, key] : keys) {
      for (const Held& held : HELD) {
        if (held.key == VK_MENU) continue;
        Act(held.name + std::string(name), [&, key = key] {
          With(held, [&](WPARAM) { Type(Target(), static_cast<WPARAM>(key)); });
        });
      }
    }
    for (const char letter : std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789")) {
      Act(Format("%c", letter), [&] { Type(Target(), static_cast<WPARAM>(letter)); });
    }
    for (const char sign : std::string("+-[]*/.,?")) {
      Act(Format("'%c'", sign), [&] { Post(Target(), WM_CHAR, static_cast<WPARAM>(sign)); });
    }
  }
};

std::string NameOfMode(Command mode) {
  std::string name = NameOf(*FindCommand(Id(mode)));
  std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
  return name;
}

class ViewGestureTest : public GestureTest {
 protected:
  void OpenView() {
    OpenMap({0});
    view_ = &WindowOf(Orientation::Top);
    kept_ = view_->View()->transform;
    Activate(*view_);
    PutBack();
  }
  void Restore() override {
    if (!view_) return;
    view_->View()->transform = kept_;
    Activate(*view_);
    GestureTest::Restore();
  }
  HWND Target() const override { return view_->Drawing(); }
  POINT At(const Vec3& point) const {
    const Pixel pixel = kept_.ToScreen(point);
    return {pixel.x, pixel.y};
  }

 private:
  MapWindow* view_ = nullptr;
  ViewTransform kept_;
};

TEST_P(ViewGestureTest, MouseAndKeysDoWhatTheyDidWhenTheyWereLookedAt) {
  OpenView();
  UseMouse("in the box", At({5, 8, 0}), At({53, 40, 0}));
  UseMouse("on its edge", At({-32, 8, 0}), At({-64, 8, 0}));
  UseMouse("on its corner", At({32, 32, 0}), At({80, 64, 0}));
  UseMouse("on the lamp", At({80, 0, 0}), At({80, 64, 0}));
  UseMouse("beside", At({-96, -96, 0}), At({64, 160, 0}));
  if (GetParam() == Command::ModeBrush) UseKeys();
  ExpectLookedAt(lines, "use/view" + NameOfMode(GetParam()) + ".txt");
}

INSTANTIATE_TEST_SUITE_P(Modes, ViewGestureTest,
                         testing::Values(Command::ModeBrush, Command::ModeEntity,
                                         Command::BrushHandles, Command::SelectMultiple,
                                         Command::LayPath, Command::FaceEdit, Command::TouchUp,
                                         Command::CreateCuboid));

class CameraGestureTest : public GestureTest {
 protected:
  void OpenCamera() {
    OpenMap({0});
    Give(Command::NewGLCamera);
    app->Pump();
    camera_ = AnyCamera();
    ASSERT_NE(camera_, nullptr);
    Fit(*camera_, camera_->Handle());
    PutBack();
  }
  void Restore() override {
    if (!camera_) return;
    CameraPose pose;
    pose.eye = {40, -250, 20};
    pose.LookAt({40, 0, 0});
    camera_->GetCamera()->SetPose(pose);
    Activate(*camera_);
    GestureTest::Restore();
  }
  HWND Target() const override { return camera_->Handle(); }
  POINT Part(int x, int y) const {
    const PixelSize area = camera_->DrawingArea();
    return {area.width * x / 100, area.height * y / 100};
  }

 private:
  CameraWindow* camera_ = nullptr;
};

TEST_P(CameraGestureTest, MouseAndKeysDoWhatTheyDidWhenTheyWereLookedAt) {
  OpenCamera();
  UseMouse("left", Part(40, 55), Part(48, 45));
  UseMouse("in the middle", Part(50, 50), Part(60, 60));
  UseMouse("right", Part(80, 55), Part(70, 65));
  UseKeys();
  ExpectLookedAt(lines, "use/camera" + NameOfMode(GetParam()) + ".txt");
}

INSTANTIATE_TEST_SUITE_P(Modes, CameraGestureTest,
                         testing::Values(Command::ModeBrush, Command::ModeEntity, Command::FaceEdit,
                                         Command::CreateCuboid));

class CommandUseTest : public UseTest,
                       public testing::WithParamInterface<std::vector<std::size_t>> {
 protected:
  void OpenWindows() {
    OpenMap(GetParam());
    for (const auto& window : parts->windows.All()) first_.insert(window->Handle());
    PutBack();
  }
  void Restore() override {
    if (first_.empty()) return;
    while (parts->documents.Maps().size() > 1) {
      for (const auto& other : parts->documents.Maps()) {
        if (other.get() == map) continue;
        parts->documents.Close(*other);
        break;
      }
    }
    std::vector<HWND> more;
    for (const auto& side : parts->sides.All()) more.push_back(side->Handle());
    for (const HWND side : more) DestroyWindow(side);
    more.clear();
    for (const auto& window : parts->windows.All()) {
      if (!first_.contains(window->Handle())) more.push_back(window->Handle());
    }
    for (const HWND window : more) SendMessageA(window, WM_CLOSE, 0, 0);
    if (!IsTicked(Command::ModeBrush)) Give(Command::ModeBrush);
    const MapWindow& top = WindowOf(Orientation::Top);
    Activate(top);
    Fit(top, top.Drawing());
  }

 private:
  std::set<HWND> first_;
};

TEST_P(CommandUseTest, EveryCommandDoesWhatItDidWhenItWasLookedAt) {
  OpenWindows();
  for (const auto& rows : {MainMenuCommands(), OtherCommands()}) {
    for (const CommandRow& row : rows) {
      // There is no way back from these.
      if (row.command == Command::Exit || row.command == Command::FileSave ||
          row.command == Command::FileSaveAs) {
        continue;
      }
      Act(std::string(row.text.empty() ? NameOf(row) : row.text), [&] { Give(row.command); });
    }
  }
  ExpectLookedAt(lines, Format("use/commands%i.txt", static_cast<int>(GetParam().size())));
}

using Selected = std::vector<std::size_t>;
INSTANTIATE_TEST_SUITE_P(Selections, CommandUseTest,
                         testing::Values(Selected{}, Selected{0, 2, 4}));

}  // namespace
}  // namespace ferrowand
