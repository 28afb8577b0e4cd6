// What views draw over a map that is no part of it: the way out through which it leaks, the
// openings between its rooms, a face that a list tells of. Kept for each open map; not saved.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "geometry/vec.h"
#include "platform/canvas.h"

namespace ferrowand {

class Map;
class ViewList;
struct ViewTransform;

// Readable on either background, and none of the map's own colours.
inline constexpr Colour LEAK_COLOUR{255, 32, 32}, PORTAL_COLOUR{0, 160, 96};
inline constexpr Colour MARKED_FACE_COLOUR{255, 128, 0}, PICKED_FACE_COLOUR{0, 160, 255};

struct MapMarks {
  std::vector<Vec3> leak = {};  // from an entity of the level into the void; world units
  bool showsLeak = false;
  std::size_t at = 0;  // the point of it that the user has walked to
  std::vector<std::vector<Vec3>> portals = {};
  bool showsPortals = false;
  std::vector<Vec3> face = {};  // its corners; empty for none

  bool IsShown() const { return showsLeak || showsPortals || !face.empty(); }
};

class MarksOfMaps {
 public:
  // Null for a map that has none.
  const MapMarks* Find(const Map& map) const;
  MapMarks& Of(const Map& map) { return marks_[&map]; }
  void Forget(const Map& map) { marks_.erase(&map); }

 private:
  std::unordered_map<const Map*, MapMarks> marks_;
};

void DrawMarks(const MapMarks& marks, const ViewTransform& transform, Canvas& canvas);

// --- what a user does to them; the views of the map show it

// Of a level that has just been made, or of files that the user names. What cannot be read is not
// there. In words: what is shown now.
std::string LoadLeak(ViewList& views, const Map& map, const std::string& ptsPath);
std::string LoadPortals(ViewList& views, const Map& map, const std::string& prtPath);
void ShowLeak(ViewList& views, const Map& map, bool isShown);
void ShowPortals(ViewList& views, const Map& map, bool isShown);
void MarkFace(ViewList& views, const Map& map, std::vector<Vec3> corners);
// To the next point (1) or the one before (-1), round and round; the views go there. In words.
std::string WalkLeak(ViewList& views, const Map& map, int step);

}  // namespace ferrowand
