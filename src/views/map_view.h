// One 2D orthographic view of one map: its mapping, grid, map mode, scrolling, zooming and panning.
// It knows no window: a host shows what it asks for, and tells it of sizes, keys and the mouse.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/options.h"
#include "document/map.h"
#include "operations/map_statistics.h"
#include "platform/canvas.h"
#include "views/child_boxes.h"
#include "views/draw_context.h"
#include "views/map_marks.h"
#include "views/view_transform.h"

namespace ferrowand {

class Camera;
class MapView;
class Tool;
struct CameraPose;

enum class Orientation { Top, Front, Side };
enum class MapMode : std::uint8_t { Normal = 0, OneMip = 1, Heights = 2, LayerColour = 3 };
enum class Arrangement { Quarters, XYLarge, ThreeDLarge };
// The three texts of the status bar.
enum class ViewText { Message, Coordinates, ZoomAndGrid };

// Of the origins, world units; a map that reaches further has its own, up to the other.
inline constexpr int WORLD_LIMIT = 10000, LARGEST_WORLD_LIMIT = static_cast<int>(WORLD_REACH);
inline constexpr int NO_PAN = -10000;
inline constexpr std::uint8_t MIN_GRID = 1, MAX_GRID = 12;  // exponents: 2 .. 4096 units

struct ScrollBar {
  int page = 0;      // world units
  int position = 0;  // 0 .. range
  int range = 2 * WORLD_LIMIT;

  friend bool operator==(const ScrollBar&, const ScrollBar&) = default;
};

// The window of a view, as the view sees it.
class ViewHost {
 public:
  virtual ~ViewHost() = default;

  virtual PixelSize DrawingArea() const = 0;
  // Repaint all, or the part. Nothing is erased first.
  virtual void Invalidate() = 0;
  virtual void Invalidate(const PixelRect& part) = 0;
  // Moves the picture and repaints what that uncovers, and those parts of what has been moved.
  virtual void ScrollPicture(Pixel by, std::span<const PixelRect> anew) = 0;
  virtual void SetScrollBars(const ScrollBar& horizontal, const ScrollBar& vertical) = 0;
  virtual void SetText(ViewText which, const std::string& text) = 0;
  virtual bool StatusBarShown() const = 0;
  virtual void SetCaption(const std::string& caption) = 0;
  // In the font of names.
  virtual PixelSize MeasureLabel(std::string_view text) = 0;
  // The main frame's window and the place of the cursor, both in pixels of the drawing area.
  virtual PixelRect Frame() const = 0;
  virtual void MoveCursor(Pixel to) = 0;
  // While captured, the view gets what the mouse does anywhere. A tool that drags keeps the mouse.
  virtual void CaptureMouse(bool on) = 0;
  // To the rectangle of the frame's client area.
  virtual void MoveWindow(const PixelRect& to) = 0;
};

// All open views, the most recently activated first, and the cameras, which views show. Not owned.
class ViewList {
 public:
  void Add(MapView& view);
  void Remove(MapView& view);
  void BringToFront(MapView& view);
  const std::vector<MapView*>& Views() const { return views_; }
  std::vector<MapView*> ViewsOf(const Map& map) const;

  void Add(Camera& camera);
  void Remove(Camera& camera);
  // Null when the map has none.
  Camera* CameraOf(const Map& map) const;
  // It stood there before.
  void CameraMoved(const Camera& camera, const CameraPose& from) const;

  // Of all maps that they show.
  void ClearPickedFaces() const;

  // Of the map as it is, for the status: counted when it is asked for after a change.
  const MapFigures& FiguresOf(const Map& map);

  // That they draw over the maps.
  MarksOfMaps marks;

 private:
  std::vector<MapView*> views_;
  std::vector<Camera*> cameras_;
  MapFigures figures_;
  std::pair<const Map*, std::uint32_t> counted_{};  // the map, and its revision then
};

class MapView : public MapObserver {
 public:
  // Enters itself into the list and observes the map; leaves both when destroyed. `tool` is where
  // the program keeps its current tool, which may be null.
  MapView(Map& map_, ViewHost& host, ViewList& list, const Options& options, Tool* const& tool);
  ~MapView() override;
  MapView(const MapView&) = delete;
  MapView& operator=(const MapView&) = delete;

  Map& map;
  ViewTransform transform;  // orienu, orienv, originu, originv, scaleu, scalev
  std::uint8_t gridu = 6, gridv = 6;
  MapMode mapmode = MapMode::Normal;
  std::uint8_t axismask = 7;  // bit n: this view edits world axis n
  int heightlo = 0, heighthi = 0;
  int panx = NO_PAN, pany = NO_PAN;   // where the cursor was at the last step of a pan
  std::int16_t snapx = 0, snapy = 0;  // the anchor of a drag on the view's axes, world units
  std::uint8_t rotationStep;          // degrees
  bool centreDots = false;            // in the middle of every brush

  void SetOrientation(Orientation orientation);
  std::string Caption() const;

  // --- painting
  // The background, the grid, the map, then what the tool draws over it; all of it within `update`.
  void Paint(Canvas& canvas, const PixelRect& update);
  // Picture, zoom text and scroll bars.
  void Refresh();
  void Repaint() { host_.Invalidate(); }
  void Repaint(const PixelRect& part) { host_.Invalidate(part); }
  // Where a camera is or was shown.
  void RepaintCamera(const CameraPose& pose);
  PixelSize DrawingArea() const { return host_.DrawingArea(); }
  PixelSize MeasureLabel(std::string_view text) const { return host_.MeasureLabel(text); }
  // For hit tests in the map.
  ChildBoxes& Boxes() const { return *boxes_; }
  // What is learned anew at the next hit or paint.
  void ReleaseDrawingData() { *boxes_ = ChildBoxes(); }
  // The bounds of what is or was selected last in the map; empty where nothing has been.
  const Bounds& LastSelected() const { return lastSelected_; }
  // For drawing parts of the map as this view does.
  DrawContext Context(Canvas& canvas, const PixelRect& visible) const;

  // --- mapping
  int SnapU(int world) const;
  int SnapV(int world) const;
  // The point comes to the middle of the drawing area, as near as the limits of the origins allow.
  void CentreOn(const Vec3& point);
  // Nothing happens unless the box has an extent on all three axes.
  void ZoomTo(const Bounds& box);
  // Both keep what is in the middle. Down to 1/64 unit a pixel, up to WorldLimit() units across.
  void ZoomIn();
  void ZoomOut();
  // Keeps what is at that pixel.
  void ZoomAt(Pixel at, bool out);
  int ZoomPercent() const;
  // Where something new goes: under the cursor, else in the middle of the view; on the grid when
  // snap is on; as deep as the middle of the selection.
  Vec3 PlaceForNew() const;

  // --- grid. `everyView`: also the other views of the map.
  void GridSmaller(bool everyView);
  void GridLarger(bool everyView);
  // These flags are the map's: every view of it refreshes.
  void ToggleGrid();
  void ToggleSnap();
  void ToggleGridAndSnap();
  void SetMapMode(MapMode mode);

  // --- scrolling and panning; the origins never leave -WorldLimit() .. WorldLimit()
  int WorldLimit() const { return worldLimit_; }
  void ScrollBy(double u, double v);  // world units
  void ScrollToThumb(bool vertical, int position);
  void ScrollLines(bool vertical, int lines);  // 10 pixels each
  void ScrollPages(bool vertical, int pages);  // 100 pixels each
  // A step of dragging the map; the mouse is captured from the first one to the end. Near the edge
  // of the frame the cursor is sent back to the middle.
  void Pan(Pixel cursor);
  void EndPan();
  // The drawing area has another size: what is seen stays within the world.
  void OnResize();

  // --- input, from the host
  // Whether the key was one of the view's or the tool's. With Shift a grid key is for every view of
  // the map.
  bool OnCharacter(char c, bool shift);
  // `button`: BUTTON_LEFT or BUTTON_RIGHT. `zoomKey`: the press zooms and the tool sees nothing.
  void OnMouseDown(Pixel at, int button, bool zoomKey, bool shift);
  void OnMouseMove(Pixel at, int buttons, bool panKey);
  void OnMouseLeave() { cursor_.reset(); }
  void OnMouseUp(Pixel at, int button);
  void OnDoubleClick(Pixel at, int button);
  void OnActivate();

  // --- from the map
  // Repaints what the change may have made different, and tells the window what it is called now.
  void OnChange(const MapChange& change) override;

  // --- words
  // Where this view's status bar is hidden, to the first other view of the map that shows its own.
  void SetStatus(const std::string& text);
  // What it was last told to say.
  const std::string& Status() const { return status_; }
  void OnStatus(const std::string& text) override { SetStatus(text); }
  std::string ZoomText() const;
  void ShowZoomText();
  void ShowCoordinates();
  void TellSelection();

  // Where this view goes in a frame whose client area has that size.
  PixelRect ArrangedPlace(Arrangement arrangement, PixelSize frame) const;

 private:
  double ExtentU() const;  // of the drawing area, world units
  double ExtentV() const;  // negative, as the scale is
  void SetOrigin(double u, double v);
  bool ReachTo(const Bounds& box);
  void ScaleBy(double factor);
  bool MayScaleBy(double factor) const;
  void WrapCursor(Pixel cursor);
  void CopyGridToOthers();
  void UpdateScrollBars();

  const DrawPens& Pens() const;
  void DrawGrid(Canvas& canvas, const PixelRect& update) const;
  void DrawAxes(Canvas& canvas, const PixelRect& update) const;
  void DrawCamera(Canvas& canvas) const;
  // The ends of the shaded depth: of the selection, or of the whole map.
  std::pair<int, int> Heights() const;
  // Whether all but the selection is drawn paler.
  bool IsPale() const;
  void ShowCaption();
  void RememberSelected();
  unsigned DrawFlags() const;

  ViewHost& host_;
  ViewList& list_;
  const Options& options_;
  Tool* const& tool_;
  std::string caption_;          // as the window was told last
  std::optional<Pixel> cursor_;  // while it is over the drawing area
  std::string status_;
  int worldLimit_ = WORLD_LIMIT;
  std::unique_ptr<ChildBoxes> boxes_;
  Bounds lastSelected_;
  bool wasPale_ = false;  // at the map's last announcement
  int zoomPresses_ = 0;   // buttons whose press was a zoom: their releases are swallowed
};

// The same of a map's camera.
PixelRect CameraPlace(Arrangement arrangement, PixelSize frame);

// Round half up to a multiple of 2^exponent; below 0 too, so that steps are equally long.
int SnapToGrid(int world, std::uint8_t exponent);

// -1 for a key that makes the grid smaller, 1 for one that makes it larger, 0 for any other.
int GridStepOf(char c);

// The pens for a black or a white background.
const DrawPens& PensFor(bool blackBackground);

}  // namespace ferrowand
