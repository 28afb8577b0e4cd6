// The windows in the frame's client area: which there are, which of them is active and what it
// shows, how they stand, and what their closing closes.
#pragma once

#include <memory>
#include <vector>

#include "shell/windows/child_window.h"
#include "views/map_view.h"

namespace ferrowand {

class Documents;
class Frame;
class Reporter;
struct Options;

// Where something new goes.
struct NewPlace {
  Vec3 point;
  std::optional<FacePlace> face;  // that it stands on

  // For what takes up that box where its origin is the world's.
  Vec3 For(const Bounds& box) const { return face ? face->WayFor(box) : point; }
};

class ChildWindows {
 public:
  // All outlive it.
  ChildWindows(Frame& frame, Documents& documents, Reporter& reporter, const Options& options);
  ChildWindows(const ChildWindows&) = delete;
  ChildWindows& operator=(const ChildWindows&) = delete;

  Frame& GetFrame() const { return frame_; }
  const Options& GetOptions() const { return options_; }
  ViewList& Views() { return views_; }
  const ViewList& Views() const { return views_; }
  // In the order of opening.
  const std::vector<std::unique_ptr<ChildWindow>>& All() const { return windows_; }
  std::vector<ChildWindow*> WindowsOf(const Map& map) const;

  // Lives until its window goes. Null, and it is gone, when the system gave it none.
  ChildWindow* Add(std::unique_ptr<ChildWindow> window);
  void BringToFront(const ChildWindow& window);
  // Asks when it is the last one of a modified map, which it closes with it.
  void Close(ChildWindow& window);
  // Asks nothing.
  void CloseWindowsOf(const Map& map);
  // The window is gone.
  void Forget(const ChildWindow& window);

  ChildWindow* ActiveWindow() const;
  Map* ActiveMap() const;
  // Its view, or the last one that was active of the map it shows in another way.
  MapView* ActiveView() const;
  // Null when none is open.
  Camera* CameraOf(const Map& map) const;
  // Under the mouse on a face that the map's camera shows; else in the active view, or in the last
  // used one when a window of another kind is active; before the camera of a map that has no view.
  // To be asked before a menu or a box draws the cursor away.
  NewPlace PlaceForNew(const Map& map) const;
  // In the middle of all its views; nowhere else if it is nowhere.
  void CentreOn(const Map& map, const Bounds& box) const;

  void OptionsChanged();
  // Since a window last saw it, in pixels of the screen.
  bool MouseHasMoved(POINT to);
  void Arrange(const Map& map, Arrangement arrangement);
  void Tile();
  void Cascade();

 private:
  void Destroy(const ChildWindow& window);

  Frame& frame_;
  Documents& documents_;
  Reporter& reporter_;
  const Options& options_;
  ViewList views_;  // outlives the windows, which are in it
  std::vector<std::unique_ptr<ChildWindow>> windows_;
  POINT mouse_{};
};

}  // namespace ferrowand
