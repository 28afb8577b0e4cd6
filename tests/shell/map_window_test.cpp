// A 2D view in its window: what it shows, how keys, mouse and scroll bars move it.
#include <algorithm>
#include <array>
#include <set>

#include "operations/transform_selection.h"
#include "shell/app_fixture.h"
#include "shell/resources/resource.h"
#include "views/tool.h"

namespace ferrowand {
namespace {

class MapWindowTest : public AppTest {
 protected:
  // A new map: nothing of its own in the views.
  void StartNew() {
    ASSERT_TRUE(Start());
    parts->documents.New();
    app->Pump();
    top = &WindowOf(Orientation::Top);
    Activate(*top);
  }
  void TypeChar(char c) { Mouse(WM_CHAR, static_cast<WPARAM>(c)); }
  // With the mouse, or whatever else says where.
  void Mouse(UINT message, WPARAM keys, int x = 0, int y = 0) {
    SendMessageA(top->Drawing(), message, keys, MAKELPARAM(x, y));
  }
  std::string Zoom() const { return TextOf(*top, ID_ZOOM_TEXT); }
  // What stands on the screen.
  static COLORREF PixelOf(const MapWindow& window, int x, int y) {
    UpdateWindow(window.Drawing());
    const HDC dc = GetDC(window.Drawing());
    const COLORREF colour = GetPixel(dc, x, y);
    ReleaseDC(window.Drawing(), dc);
    return colour;
  }
  MapWindow* top = nullptr;
};

TEST_F(MapWindowTest, ANewMapOpensItsThreeViewsInQuartersAroundTheOrigin) {
  StartNew();
  ASSERT_EQ(parts->windows.All().size(), 3u);
  const PixelSize client = parts->frame.ClientSize();
  const auto placeOf = [&](Orientation orientation) {
    RECT place;
    GetWindowRect(WindowOf(orientation).Handle(), &place);
    MapWindowPoints(nullptr, parts->frame.Client(), reinterpret_cast<POINT*>(&place), 2);
    return PixelRect{place.left, place.top, place.right, place.bottom};
  };
  const int w = client.width / 2, h = client.height / 2;
  EXPECT_EQ(placeOf(Orientation::Top), (PixelRect{0, 0, w, h}));
  EXPECT_EQ(placeOf(Orientation::Front), (PixelRect{0, h, w, h + h}));
  EXPECT_EQ(placeOf(Orientation::Side), (PixelRect{w, 0, w + w, h}));
  EXPECT_EQ(TextOf(WindowOf(Orientation::Side).Handle()), "YZView (Side): Unnamed");
  EXPECT_EQ(TextOf(*top, ID_MESSAGE_TEXT), "Ready");
  EXPECT_EQ(Zoom(), "(64x64)S25%");
  const Pixel centre = top->View()->transform.ToScreen({0, 0, 0});
  EXPECT_NEAR(centre.x, top->DrawingArea().width / 2, 1);
  EXPECT_NEAR(centre.y, top->DrawingArea().height / 2, 1);
  char item[200] = "";
  GetMenuStringA(GetMenu(parts->frame.Handle()), ID_FIRST_CHILD + 2, item, sizeof item,
                 MF_BYCOMMAND);
  EXPECT_EQ(std::string(item), "&3 XYView (Top): Unnamed");
}

TEST_F(MapWindowTest, KeysMenusAndButtonsReachEveryViewThatTheyAreFor) {
  StartNew();
  const MapWindow& side = WindowOf(Orientation::Side);
  TypeChar('+');
  EXPECT_EQ(Zoom(), "(64x64)S50%");
  TypeChar('a');
  EXPECT_EQ(Zoom(), "(32x32)S50%");
  EXPECT_EQ(TextOf(side, ID_ZOOM_TEXT), "(64x64)S25%");
  for (int i = 0; i < 20; ++i) Give(Command::ZoomIn);
  EXPECT_EQ(Zoom(), "(32x32)S6400%");
  Give(Command::GridToggle);
  Give(Command::SnapToggle);
  EXPECT_EQ(TextOf(side, ID_ZOOM_TEXT), " 25%");
  EXPECT_FALSE(IsTicked(Command::GridToggle));
  SendDlgItemMessageA(top->Handle(), ID_GRID_SNAP_BUTTON, BM_CLICK, 0, 0);
  EXPECT_EQ(TextOf(side, ID_ZOOM_TEXT), "(64x64)S25%");
  EXPECT_TRUE(IsTicked(Command::SnapToggle));
}

TEST_F(MapWindowTest, ScrollBarsMoveThePicture) {
  StartNew();
  const MapView& view = *top->View();
  const int u = view.transform.originu, v = view.transform.originv;
  Mouse(WM_HSCROLL, SB_LINEDOWN);
  EXPECT_EQ(view.transform.originu, u + 40);
  Mouse(WM_VSCROLL, SB_PAGEUP);
  EXPECT_EQ(view.transform.originv, v + 400);
  EXPECT_EQ(GetScrollPos(top->Drawing(), SB_VERT), 10000 - v - 400);
  EXPECT_EQ(GetScrollPos(top->Drawing(), SB_HORZ), 10000 + u + 40);
}

TEST_F(MapWindowTest, WheelSpaceAndDMoveThePicture) {
  StartNew();
  const MapView& view = *top->View();
  const int u = view.transform.originu, v = view.transform.originv;
  Mouse(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA));
  EXPECT_EQ(view.transform.originv, v + 120);
  POINT at{100, 50};
  const int world = view.transform.ToWorldU(100);
  ClientToScreen(top->Drawing(), &at);
  Mouse(WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, WHEEL_DELTA), at.x, at.y);
  EXPECT_EQ(Zoom(), "(64x64)S50%");
  EXPECT_EQ(view.transform.ToWorldU(100), world);
  Mouse(WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, -WHEEL_DELTA), at.x, at.y);
  EXPECT_EQ(view.transform.originu, u);
  {
    const HeldKey space(VK_SPACE);
    Mouse(WM_MOUSEMOVE, 0, 100, 100);
    Mouse(WM_MOUSEMOVE, 0, 110, 100);
    EXPECT_EQ(view.transform.originu, u - 40);
    EXPECT_EQ(GetCapture(), top->Drawing());
  }
  Mouse(WM_KEYUP, VK_SPACE);
  EXPECT_EQ(view.panx, NO_PAN);
  EXPECT_EQ(GetCapture(), nullptr);
  const int top = view.transform.originv;
  Type(this->top->Drawing(), VK_UP);
  EXPECT_GT(view.transform.originv, top);
  Type(this->top->Drawing(), VK_DOWN);
  Type(this->top->Drawing(), VK_NEXT);
  EXPECT_LT(view.transform.originv, top - 300);
  Type(this->top->Drawing(), VK_PRIOR);
  EXPECT_EQ(view.transform.originv, top);
  const HeldKey d('D');
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 100, 100);
  Mouse(WM_LBUTTONUP, 0, 100, 100);
  EXPECT_EQ(Zoom(), "(64x64)S50%");
}

TEST_F(MapWindowTest, WithAltTheWheelGoesThroughWhatLiesThere) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  entity* const first = map.currentLayer()->getEntityList()[0].get();
  map.selection.Set({first});
  DuplicateSelection(map, {0, 0, 0}, {});
  const Bounds box = first->GetBounds();
  MapWindow& window = WindowOf(Orientation::Top);
  const Pixel at = window.View()->transform.ToScreen((box.mins + box.maxs) * 0.5f);
  POINT screen{at.x, at.y};
  ClientToScreen(window.Drawing(), &screen);
  map.selection.Clear();
  const HeldKey alt(VK_MENU);
  const auto wheel = [&](int notches) {
    SendMessageA(window.Drawing(), WM_MOUSEWHEEL,
                 MAKEWPARAM(0, static_cast<WORD>(notches * WHEEL_DELTA)),
                 MAKELPARAM(screen.x, screen.y));
    return map.selection.empty() ? nullptr : map.selection.front();
  };
  EXPECT_EQ(wheel(-1), first);
  const entity* const behind = wheel(-1);
  EXPECT_NE(behind, first);
  EXPECT_EQ(wheel(-1), behind) << "the last one";
  EXPECT_EQ(wheel(1), first);
}

TEST_F(MapWindowTest, ARefusalStaysInSightUntilTheNextPress) {
  StartNew();
  parts->toolHost.Refuse(*top->View(), "No");
  top->View()->SetStatus("hovering");
  EXPECT_EQ(TextOf(*top, ID_MESSAGE_TEXT), "No");
  Mouse(WM_RBUTTONDOWN, MK_RBUTTON, 5, 5);
  EXPECT_EQ(TextOf(*top, ID_MESSAGE_TEXT), "hovering");
  parts->toolHost.Refuse(*top->View(), "Not again");
  SendMessageA(top->Handle(), WM_TIMER, 1, 0);
  EXPECT_EQ(TextOf(*top, ID_MESSAGE_TEXT), "hovering");
  SendDlgItemMessageA(top->Handle(), ID_CONTROLS, BM_CLICK, 0, 0);
  parts->toolHost.Refuse(*top->View(), "Nowhere to read it");
  EXPECT_EQ(sink.Said(), std::vector<std::string>{"Cannot continue: Nowhere to read it"});
}

TEST_F(MapWindowTest, ControlsHideAndShowTheStatusBarAndBothScrollBars) {
  StartNew();
  const PixelSize with = top->DrawingArea();
  const auto isTicked = [&] {
    const HMENU menu = GetSystemMenu(top->Handle(), FALSE);
    return (GetMenuState(menu, ID_CONTROLS, MF_BYCOMMAND) & MF_CHECKED) != 0;
  };
  EXPECT_TRUE(isTicked());
  SendDlgItemMessageA(top->Handle(), ID_CONTROLS, BM_CLICK, 0, 0);
  EXPECT_FALSE(isTicked());
  EXPECT_FALSE(GetWindowLongA(top->Drawing(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL));
  EXPECT_GT(top->DrawingArea().height, with.height + 27);
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(top->Handle(), ID_MESSAGE_TEXT)));
  top->View()->SetStatus("for a sister that has one");
  EXPECT_EQ(TextOf(*top, ID_MESSAGE_TEXT), "Ready");
  SendMessageA(top->Handle(), WM_SYSCOMMAND, ID_CONTROLS, 0);
  EXPECT_TRUE(isTicked());
  EXPECT_EQ(top->DrawingArea(), with);
}

TEST_F(MapWindowTest, TheStatusBarIsLowerWithSmallCaptions) {
  saved.smallCaptions = 1;
  StartNew();
  RECT client;
  GetClientRect(top->Handle(), &client);
  RECT drawing;
  GetWindowRect(top->Drawing(), &drawing);
  EXPECT_EQ(client.bottom - (drawing.bottom - drawing.top), 22);
  EXPECT_TRUE(GetWindowLongA(top->Handle(), GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
}

TEST_F(MapWindowTest, TheActiveViewIsTheFirstAndTheMouseActivatesAsAnOption) {
  StartNew();
  const MapWindow& side = WindowOf(Orientation::Side);
  SendMessageA(side.Drawing(), WM_MOUSEMOVE, 0, MAKELPARAM(10, 10));
  EXPECT_EQ(GetFocus(), top->Drawing());
  EXPECT_EQ(parts->windows.Views().Views().front(), top->View());
  parts->options.trackMouse = 1;
  SendMessageA(side.Drawing(), WM_MOUSEMOVE, 0, MAKELPARAM(10, 10));
  EXPECT_EQ(GetFocus(), top->Drawing()) << "it has not moved";
  SendMessageA(side.Drawing(), WM_MOUSEMOVE, 0, MAKELPARAM(11, 10));
  EXPECT_EQ(GetFocus(), side.Drawing());
  EXPECT_EQ(parts->windows.Views().Views().front(), WindowOf(Orientation::Side).View());
  EXPECT_EQ(parts->windows.ActiveView(), parts->windows.Views().Views().front());
}

TEST_F(MapWindowTest, ArrangementsAndNewViews) {
  StartNew();
  const PixelSize client = parts->frame.ClientSize();
  Give(Command::ArrangeXYLarge);
  RECT place;
  GetWindowRect(top->Handle(), &place);
  EXPECT_EQ(place.bottom - place.top, client.height);
  ShowWindow(top->Handle(), SW_MAXIMIZE);
  Give(Command::ArrangeQuarters);
  GetWindowRect(top->Handle(), &place);
  EXPECT_EQ(place.right - place.left, parts->frame.ClientSize().width / 2);
  Give(Command::NewTopView);
  ASSERT_EQ(parts->windows.All().size(), 4u);
  EXPECT_EQ(TextOf(parts->windows.All().back()->Handle()), "XYView (Top): Unnamed");
  EXPECT_EQ(TextOf(*parts->windows.All().back(), ID_ZOOM_TEXT), "(64x64)S25%");
  const auto leftEdges = [&] {
    std::multiset<LONG> edges;
    for (const auto& window : parts->windows.All()) {
      GetWindowRect(window->Handle(), &place);
      edges.insert(place.left);
    }
    return edges;
  };
  Give(Command::CascadeWindows);
  const auto cascaded = leftEdges();
  EXPECT_EQ(std::set(cascaded.begin(), cascaded.end()).size(), 4u);
  Give(Command::TileWindows);
  const auto tiled = leftEdges();
  EXPECT_EQ(std::set(tiled.begin(), tiled.end()).size(), 2u);
  EXPECT_GE(*tiled.rbegin() - *tiled.begin(), client.width / 3);
}

TEST_F(MapWindowTest, ViewsGoToTheSelectionOrFitTheMap) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  const MapView& view = *WindowOf(Orientation::Top).View();
  const auto middle = [&] {
    const PixelSize area = WindowOf(Orientation::Top).DrawingArea();
    return Pixel{view.transform.ToWorldU(area.width / 2), view.transform.ToWorldV(area.height / 2)};
  };
  const float whole = view.transform.scaleu;
  Give(Command::CentreAndZoom);  // nothing is selected
  EXPECT_EQ(view.transform.scaleu, whole);
  map.selection.Set({map.currentLayer()->getEntityList()[1].get()});
  Give(Command::CentreSelection);
  EXPECT_NEAR(middle().x, 160, 1);
  EXPECT_NEAR(middle().y, 0, 1);
  EXPECT_EQ(view.transform.scaleu, whole);
  WindowOf(Orientation::Top).View()->ZoomOut();
  Give(Command::CentreAndZoom);
  EXPECT_LE(view.transform.scaleu, whole);
  map.selection.Add(*map.currentLayer()->getEntityList()[0].get());
  Give(Command::ZoomToFit);
  EXPECT_EQ(sink.OnlyText(), "Select one brush or group, or select nothing to see the whole map.");
  map.selection.Clear();
  Give(Command::ZoomToFit);
  EXPECT_EQ(view.transform.scaleu, whole);
}

TEST_F(MapWindowTest, KeysReachTheirCommandsButNotOutOfATextBox) {
  StartNew();
  Type(top->Drawing(), 'H');
  EXPECT_EQ(top->View()->mapmode, MapMode::Heights);
  const HWND box = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20,
                                   top->Handle(), nullptr, nullptr, nullptr);
  Type(box, 'N');
  EXPECT_EQ(top->View()->mapmode, MapMode::Heights);
}

TEST_F(MapWindowTest, AScrolledPictureIsWhatAWholeRepaintGives) {
  ASSERT_TRUE(Start());
  Map& map = OpenTwoBrushes();
  map.selection.Set({map.currentLayer()->getEntityList()[0].get()});
  RotateSelection(map, 0, 1, 30, {}, {});
  Give(Command::ModeBrush);
  MapWindow& window = WindowOf(Orientation::Top);
  const auto picture = [&] { return PictureOf(window); };
  const auto scroll = [&](UINT bar, WPARAM request) {
    SendMessageA(window.Drawing(), bar, request, 0);
    const auto scrolled = picture();
    window.Invalidate();
    EXPECT_EQ(scrolled, picture()) << bar << ' ' << request;
  };
  ViewTransform& transform = window.View()->transform;
  transform.scaleu = 4;
  transform.scalev = -4;
  for (int beside = 0; beside < 4; ++beside) {
    SCOPED_TRACE(beside);
    transform.originu = static_cast<std::int16_t>(10 + beside);
    transform.originv = static_cast<std::int16_t>(30 + beside);
    window.Invalidate();
    picture();
    scroll(WM_HSCROLL, SB_LINEUP);
    scroll(WM_HSCROLL, SB_PAGEUP);
    scroll(WM_VSCROLL, SB_PAGEUP);
    scroll(WM_HSCROLL, SB_PAGEDOWN);
    scroll(WM_VSCROLL, SB_LINEDOWN);
  }
}

// Draws a frame by inverting, as tools do while something is dragged.
class FrameTool : public Tool {
 public:
  std::string Name() const override { return "Frame"; }
  void DrawOverlay(MapView&, Canvas& canvas) override {
    canvas.SetXor(true);
    canvas.Lines({}, std::array{PixelLine{{20, at}, {120, at}}});
    canvas.Text(FontFace::Label, {}, {45, at - 19}, "64 x 128");
    canvas.SetXor(false);
  }
  int at = 30;
};

TEST_F(MapWindowTest, WhatAToolInvertsSurvivesRepaintsAndLeavesNoTrace) {
  StartNew();
  Give(Command::GridToggle);
  FrameTool tool;
  parts->tools.Use(tool);
  top->Invalidate();
  const auto row = [&](int y) { return PixelOf(*top, 60, y); };
  EXPECT_EQ(row(30), RGB(0, 0, 0));
  for (int i = 0; i < 3; ++i) {
    top->Invalidate(PixelRect{40, 10, 80, 31 + i});
    EXPECT_EQ(row(30), RGB(0, 0, 0));
  }
  EXPECT_EQ(PixelOf(*top, 120, 30), RGB(0, 0, 0)) << "the last pixel belongs to the line";
  EXPECT_EQ(PixelOf(*top, 121, 30), RGB(255, 255, 255));
  const auto kept = PictureOf(*top);
  EXPECT_GT(std::ranges::count(kept, RGB(0, 0, 0)), 5) << "of the letters, in two rows";
  top->Invalidate();
  EXPECT_EQ(kept, PictureOf(*top));
  tool.at = 35;
  top->Invalidate();
  EXPECT_EQ(row(30), RGB(255, 255, 255));
  EXPECT_EQ(row(35), RGB(0, 0, 0));
  parts->tools.Use(parts->tools.entitySelector);
}

// Notes what reaches the tool.
class NotingTool : public Tool {
 public:
  std::string Name() const override { return "Noting"; }
  void MouseDown(MapView&, Pixel at, int button) override { Note("down", at, button); }
  void MouseUp(MapView&, Pixel at, int button) override { Note("up", at, button); }
  void MouseMove(MapView&, Pixel at, int buttons) override { Note("move", at, buttons); }
  void DoubleClick(MapView&, Pixel at, int button) override { Note("double", at, button); }
  void Note(const char* what, Pixel at, int button) {
    log += Format("%s %i,%i %i;", what, at.x, at.y, button);
  }
  std::string log;
};

TEST_F(MapWindowTest, MouseWorkReachesTheToolWithTheMiddleButtonAsTheRightOne) {
  StartNew();
  NotingTool tool;
  parts->tools.Use(tool);
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 5, 6);
  EXPECT_EQ(GetCapture(), top->Drawing());
  Mouse(WM_MOUSEMOVE, MK_LBUTTON, -7, 6);
  EXPECT_EQ(TextOf(*top, ID_COORDINATES_TEXT), Format("%ix%i", top->View()->transform.ToWorldU(-7),
                                                      top->View()->transform.ToWorldV(6)));
  Mouse(WM_LBUTTONUP, 0, -7, 6);
  EXPECT_EQ(GetCapture(), nullptr);
  Mouse(WM_MBUTTONDOWN, MK_MBUTTON, 1, 2);
  Mouse(WM_MBUTTONUP, 0, 1, 2);
  Mouse(WM_LBUTTONDBLCLK, MK_LBUTTON, 3, 4);
  Mouse(WM_LBUTTONUP, 0, 3, 4);
  EXPECT_EQ(tool.log,
            "down 5,6 1;move -7,6 1;up -7,6 1;down 1,2 2;up 1,2 2;double 3,4 1;up 3,4 1;");
  parts->tools.Use(parts->tools.entitySelector);
}

}  // namespace
}  // namespace ferrowand
