// The wall of a texture browser: pictures of textures that scroll, one of them the chosen one. It
// shows what it is given; what the user wants goes to whoever holds it.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <optional>
#include <string>

#include "operations/texture_wall.h"
#include "shell/system/gdi_canvas.h"
#include "shell/windows/texture_drawing.h"
#include "views/wall_layout.h"

namespace ferrowand {

inline constexpr char TEXTURE_LIST_CLASS[] = "FRWTextureList";

LRESULT CALLBACK TextureListFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class TextureListHost {
 public:
  virtual ~TextureListHost() = default;

  // By click or key.
  virtual void Choose(std::size_t item) = 0;
  // The chosen one is to be put on what is selected.
  virtual void Apply() = 0;
  virtual void SelectUsers(std::size_t item) = 0;
  virtual void ShowPopup(POINT screen) = 0;
  virtual void Type(wchar_t letter) = 0;
  // In steps of zoom.
  virtual void Zoom(int steps) = 0;
  // Whether the chosen one can be dropped at the pixel of the screen; that it has been; and, at the
  // end of each drag, that nothing is dragged any more.
  virtual bool MayDrop(POINT screen) = 0;
  virtual void Drop(POINT screen) = 0;
  virtual void DragEnded() = 0;
  // What is said of it beside the large picture.
  virtual std::string Describe(std::size_t item) const = 0;
};

class TextureList {
 public:
  struct Look {
    int zoom = 100;  // per cent
    bool hasNames = true;

    friend bool operator==(const Look&, const Look&) = default;
  };
  static constexpr std::size_t NONE = static_cast<std::size_t>(-1);

  // A control of the parent, gone with it. All outlive it; Refresh tells of another wall.
  TextureList(HWND parent, int id, const TextureWall& wall, const Palette& palette,
              TextureListHost& host);
  ~TextureList();
  TextureList(const TextureList&) = delete;
  TextureList& operator=(const TextureList&) = delete;

  // Null when the system gave none.
  HWND Handle() const { return window_; }
  // The wall is another, or to be drawn otherwise. What is seen stays where it can.
  void Refresh(const Look& look);
  // The pictures are others.
  void DrawAnew();
  // NONE for none of the wall.
  std::size_t Chosen() const { return chosen_; }
  void SetChosen(std::size_t item, bool reveal);
  void Move(WallStep step);
  bool IsDragging() const { return drags_; }
  void EndDrag();

  // Whose heading shows at the pixel of the screen.
  std::optional<std::size_t> HeadingUnder(POINT screen) const;
  const WallLayout& Layout() const { return layout_; }
  int Top() const { return top_; }
  bool ShowsTip() const { return tip_ && tip_->IsShown(); }

 private:
  friend LRESULT CALLBACK TextureListFunc(HWND, UINT, WPARAM, LPARAM);

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  bool OnMouse(UINT message, WPARAM wParam, LPARAM lParam);
  bool OnKey(WPARAM key);
  PixelSize Area() const;
  void PlaceAll();
  void ShowScroll() const;
  void ScrollTo(int top);
  void OnScroll(int code);
  void OnWheel(int turned, bool zooms);
  void Reveal(std::size_t item);

  void OnPaint();
  void Draw(HDC screen);
  void DrawStripe(int top, int bottom) const;
  void DrawItem(HDC dc, std::size_t item) const;
  void DrawCaption(HDC dc, const WallItem& item, RECT place) const;
  void RedrawItem(std::size_t item) const;

  void OnPress(Pixel at, bool selectsUsers);
  void OnMove(Pixel at, bool isHeld);
  void OnHover(Pixel at);
  void OnContextMenu(POINT screen);
  void ForgetDrag();
  std::optional<std::size_t> ItemAt(Pixel at) const;
  POINT ToScreen(Pixel at) const;

  const TextureWall& wall_;
  const Palette& palette_;
  TextureListHost& host_;
  HWND window_ = nullptr;
  Look look_;
  WallLayout layout_;
  std::size_t chosen_ = NONE;
  int top_ = 0;  // of what is seen, in pixels of the wall
  BackBuffer buffer_;
  bool isDrawn_ = false;  // what is seen, in the buffer, from this top
  int drawnTop_ = 0;
  std::unique_ptr<TextureTip> tip_;
  std::size_t hovered_ = NONE;
  bool isTracked_ = false;  // the system will tell when the mouse rests or leaves
  std::optional<Pixel> press_;
  bool drags_ = false;
  int wheelRest_ = 0;
};

}  // namespace ferrowand
