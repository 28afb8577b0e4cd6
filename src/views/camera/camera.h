// The 3D camera of a map: where it stands, how it shows the map, and what it picks. It knows no
// window and draws nothing itself: a host shows what it asks for, a renderer draws.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/options.h"
#include "base/progress.h"
#include "document/announcement.h"
#include "document/face_selection.h"
#include "document/picking.h"
#include "views/camera/camera_frustum.h"
#include "views/camera/camera_glide.h"
#include "views/camera/camera_marks.h"
#include "views/camera/camera_renderer.h"
#include "views/camera/camera_scene.h"
#include "views/camera/camera_shapes.h"
#include "views/camera/face_place.h"
#include "views/camera/map_lighting.h"

namespace ferrowand {

class Brush;
struct MapMarks;

// The window of a camera, as the camera sees it.
class CameraHost {
 public:
  virtual ~CameraHost() = default;

  virtual PixelSize DrawingArea() const = 0;
  // Soon, and once for all that asks for it until then.
  virtual void Repaint() = 0;
  virtual void SetCaption(const std::string& caption) = 0;
  // Seconds, of a clock that is never put back.
  virtual double Now() const { return 0; }
  // It stood there before.
  virtual void Moved(const CameraPose& from) { (void)from; }
};

// The light of the map's light entities: none, without their shadows, or as the options want it.
enum class CameraLighting { None, Preview, Quake };

// What a pixel of the camera shows.
struct CameraHit {
  entity* object = nullptr;  // the brush, the point entity or the instance itself, or null
  int face = -1;             // of a brush, its face; -1 for what is no face
  DVec3 point;               // of that face
};

class Camera : public MapObserver {
 public:
  // All outlive it, the renderer aside.
  Camera(Map& map, CameraHost& host, const Options& options,
         std::unique_ptr<CameraRenderer> renderer);
  ~Camera() override;
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;

  Map& GetMap() const { return map_; }
  std::string Caption() const;

  // --- where it stands
  const CameraPose& Pose() const { return pose_; }
  void SetPose(const CameraPose& pose);
  // By the options' way of moving. It stands there at once; the picture follows in so many seconds.
  void Fly(const CameraMove& move, double seconds);
  // To the eyes of who starts there. False, and it stays, where the map has no info_player_start.
  bool GoToStart();
  // Where it stands at first: at the start, or, in a map without one, so that it sees all.
  void GoToOpening();

  // Where something new goes, for want of a view: some steps ahead, in whole units.
  Vec3 PlaceForNew() const;

  // --- how it shows the map
  RenderMode Mode() const { return mode_; }
  void SetMode(RenderMode mode);
  // Brushes of brush entities told apart by a tint.
  bool TintsEntities() const { return tintsEntities_; }
  void SetTintsEntities(bool on);
  // Whether what it draws with knows lamp and light.
  bool CanLight() const { return renderer_->CanLight(); }
  bool HasLamp() const { return hasLamp_; }
  void SetLamp(bool on);
  CameraLighting Lighting() const { return lightingKind_; }
  // With the options as they are now. It follows the map's changes, in no time without shadows.
  void SetLighting(CameraLighting lighting);
  // With the options as they are now.
  void Paint();
  // What the next picture would begin with: counts the faces that are looked at.
  void MakeReady(LoadProgress& progress);
  // All of it, from the map, the palette and the WADs as they are now.
  void Update();
  // Where the selection would come to stand; nothing for none.
  void ShowPreview(const std::optional<Vec3>& by);
  // The box that is being drawn; nothing for none.
  void ShowDraft(const std::optional<Bounds>& box);
  void ShowMarks(const MapMarks& marks);
  // Gives up what can be made again, and shows nothing until Restore.
  void Release();
  void Restore();

  // --- what is picked
  // What it sees now, but for the objects.
  CameraPicture Picture() const;
  // What can be picked at the pixel, the nearest first: the objects themselves, or what a click of
  // that level takes.
  std::vector<entity*> PickAll(Pixel at);
  std::vector<entity*> PickAll(Pixel at, PickLevel level);
  CameraHit Pick(Pixel at);
  // On the nearest face of a brush there, whatever stands before it; none where no brush is.
  std::optional<FacePlace> PlaceAt(Pixel at, const SpaceRules& rules);
  // The face of a brush that lies nearest behind the pixel, whatever else stands before it, held by
  // a corner where that is close.
  std::optional<PickedFace> FaceAt(Pixel at);
  // Of the selected ones.
  CameraHit PickSelected(Pixel at, PickLevel level);
  // Selects what a click takes, as in the 2D views; where nothing is, the selection stays. What is
  // selected already stays as it is.
  void Click(Pixel at, PickLevel level, bool add);
  // Selects instead what lies behind, or before, the selected one of those at the pixel.
  void GoThrough(Pixel at, PickLevel level, bool deeper);

  // --- from the map
  void OnChange(const MapChange& change) override;

 private:
  void Stand(const CameraPose& pose);
  CameraHit HitOf(entity* object, Pixel at) const;
  int CornerAt(const CameraHit& hit) const;
  void FollowScene(LoadProgress& progress);
  ShapeStyle Style() const;
  void ShowCaption();

  Map& map_;
  CameraHost& host_;
  const Options& options_;
  std::unique_ptr<CameraRenderer> renderer_;
  CameraScene scene_;
  CameraPose pose_;
  CameraGlide glide_;
  RenderMode mode_ = RenderMode::Textured;
  bool tintsEntities_ = false;
  std::optional<Vec3> preview_;
  std::optional<Bounds> draft_;
  CameraMarks marks_;
  bool hasLamp_ = false;
  CameraLighting lightingKind_ = CameraLighting::None;
  std::optional<MapLighting> lighting_;
  LoadProgress nobody_;
  bool isReleased_ = false;
  bool knowsScene_ = false;  // else all of it is learned at the next picture
  std::string caption_;      // as the window was told last
};

// The list of a face's brush that the ray meets from outside first; -1 for none.
int FaceOnRay(const Brush& brush, const DVec3& from, const DVec3& direction, DVec3& point);

}  // namespace ferrowand
