#include "views/tools/face_tool.h"

#include <algorithm>
#include <cmath>

#include "document/map.h"
#include "operations/face_editing.h"
#include "platform/display.h"
#include "views/hit_test.h"
#include "views/map_marks.h"
#include "views/map_view.h"
#include "views/painted_part.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr int EDGE_REACH = 4, HELD_REACH = 4;  // pixels
constexpr Pen PICKED{PICKED_FACE_COLOUR, 3};
constexpr char ESCAPE = '\x1b';

std::vector<Pixel> PixelsOf(const Face& face, const MapView& view) {
  std::vector<Pixel> pixels;
  if (!face.w) return pixels;
  for (const WindingPoint& p : std::as_const(*face.w).Points()) {
    pixels.push_back(view.transform.ToScreen(p.Position()));
  }
  return pixels;
}

// The cosine to the way to the eye.
double Facing(const Face& face, const MapView& view) {
  return Dot(face.plane.normal, TowardsEye(view.transform));
}

bool IsIn(const PixelRect& closed, Pixel p) {
  return p.x >= closed.left && p.x <= closed.right && p.y >= closed.top && p.y <= closed.bottom;
}

}  // namespace

void PickFace(Map& map, const PickedFace& face, bool toggle) {
  const std::vector<PickedFace> one{face};
  if (!toggle) return map.pickedFaces.Set(one);
  if (map.pickedFaces.Contains(*face.brush, face.face)) return map.pickedFaces.Remove(one);
  map.pickedFaces.Add(one);
}

std::vector<PickedFace> FaceTool::FacesAt(const MapView& view, Pixel at) const {
  struct Candidate {
    PickedFace face;
    bool isEdgeOn;
    double distance;
  };
  std::vector<Candidate> candidates;
  const double reach = Scaled(EDGE_REACH);
  for (entity* e : PickableObjects(view.map, PickLevel::Brushes)) {
    const Bounds& box = e->brush.Box();
    if (box.IsEmpty()) continue;
    if (!IsIn(Grown(view.transform.ToScreen(box.mins, box.maxs), Scaled(EDGE_REACH)), at)) continue;
    for (const PickedFace& face : FacesOf(*e)) {
      if (!(Facing(face.Get(), view) >= EDGE_ON)) continue;
      const std::vector<Pixel> corners = PixelsOf(face.Get(), view);
      if (corners.empty()) continue;
      const double distance = DistanceToOutline(corners, at);
      const bool isEdgeOn = Facing(face.Get(), view) < SEEN_FROM_THE_SIDE;
      if (distance <= reach) candidates.push_back({face, isEdgeOn, distance});
    }
  }
  std::ranges::stable_sort(candidates, [](const Candidate& a, const Candidate& b) {
    return a.isEdgeOn != b.isEdgeOn ? a.isEdgeOn : a.distance < b.distance;
  });
  std::vector<PickedFace> faces;
  faces.reserve(candidates.size());
  for (const Candidate& candidate : candidates) faces.push_back(candidate.face);
  return faces;
}

std::vector<PickedFace> FaceTool::FacesIn(const MapView& view, const PixelRect& closed) const {
  std::vector<PickedFace> faces;
  const auto isIn = [&closed](Pixel p) { return IsIn(closed, p); };
  for (const PickedFace& face : FacesInQuestion(view.map)) {
    if (!(Facing(face.Get(), view) >= EDGE_ON)) continue;
    const std::vector<Pixel> corners = PixelsOf(face.Get(), view);
    if (corners.empty()) continue;
    const bool takes = tools_.boxRule == BoxRule::Full ? std::ranges::all_of(corners, isIn)
                                                       : MeetsOutline(closed, corners);
    if (takes) faces.push_back(face);
  }
  return faces;
}

void FaceTool::MouseDown(MapView& view, Pixel at, int button) {
  if (IsDragging()) return Cancel();
  if (button != BUTTON_LEFT) {
    Host().TrackPopup(view, at, ToolPopup::FaceEdit);
    return;
  }
  if (tools_.StartCameraDrag(*this, view, at)) return;
  BeginDrag(view, at);
}

void FaceTool::DoubleClick(MapView& view, Pixel at, int button) {
  if (button != BUTTON_LEFT) return MouseDown(view, at, button);
  const std::vector<PickedFace> there = FacesAt(view, at);
  if (there.empty()) return;
  const std::vector<PickedFace> all = FacesOf(*there.front().brush);
  if (!Host().Keys().control) return view.map.pickedFaces.Set(all);
  view.map.pickedFaces.Add(all);
}

// Again at the same place it is the next face there.
void FaceTool::Click(MapView& view, Pixel at) {
  FaceSelection& picked = view.map.pickedFaces;
  const std::vector<PickedFace> there = FacesAt(view, at);
  const bool toggle = Host().Keys().control;
  if (there.empty()) {
    if (!toggle) picked.Clear();
    return;
  }
  auto next = there.begin();
  if (!toggle && picked.size() == 1) {
    const auto now = std::ranges::find_if(
        there, [&](const PickedFace& face) { return picked.Contains(*face.brush, face.face); });
    if (now != there.end() && now + 1 != there.end()) next = now + 1;
  }
  PickFace(view.map, *next, toggle);
}

void FaceTool::Drag(MapView& view, Pixel at) {
  preview_.Show(view, {RectangleShape(BandTo(at))});
}

void FaceTool::Drop(MapView& view, Pixel at) {
  const std::vector<PickedFace> faces = FacesIn(view, BandTo(at));
  if (!Host().Keys().control) return view.map.pickedFaces.Set(faces);
  view.map.pickedFaces.Add(faces);
}

// Wherever it is: to look for faces below each pixel that the mouse passes would cost too much.
ToolCursor FaceTool::CursorAt(const MapView&, Pixel) const {
  return ToolCursor::Cross;
}

bool FaceTool::KeyOf(Map& map, char c) const {
  switch (c) {
    case 'l':
    case 'L':
      PickAllFaces(map);
      return true;
    case 'i':
    case 'I':
      InvertPickedFaces(map);
      return true;
    case ESCAPE:
      if (map.pickedFaces.empty()) return false;
      map.pickedFaces.Clear();
      return true;
    default:
      return false;
  }
}

bool FaceTool::Key(MapView& view, char c) {
  return ToolBase::Key(view, c) || KeyOf(view.map, c);
}

void FaceTool::PopupCommand(MapView& view, unsigned command) {
  switch (command) {
    case 0:
      return PickAllFaces(view.map);
    case 1:
      return InvertPickedFaces(view.map);
    case 2:
      return tools_.ToggleFaceEdit();
    default:
      return;
  }
}

void FaceTool::DrawOverlay(MapView& view, Canvas& canvas) {
  DrawSelection(view, canvas);
  const int reach = Scaled(HELD_REACH);
  for (const PickedFace& picked : view.map.pickedFaces) {
    std::vector<Pixel> corners = PixelsOf(picked.Get(), view);
    if (corners.empty()) continue;
    if (picked.held >= 0 && picked.held < static_cast<int>(corners.size())) {
      const Pixel p = corners[static_cast<std::size_t>(picked.held)];
      canvas.Rectangle({PICKED.colour, 1}, PICKED.colour,
                       {p.x - reach, p.y - reach, p.x + reach + 1, p.y + reach + 1});
    }
    corners.push_back(corners.front());
    canvas.Polyline(PICKED, corners);
  }
  preview_.Draw(view, canvas);
}

}  // namespace ferrowand
