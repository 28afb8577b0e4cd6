// A brush: a convex solid bounded by at most 32 faces, each with its plane, its polygon and its
// texture. Every entity embeds one; it is empty in all but plain brushes.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/winding.h"
#include "platform/colour.h"

namespace ferrowand {

class Brush;
class ReadLog;
class Reporter;
class TextReader;
class TextWriter;
class WadList;
struct Texture;

// How a face without a texture name is written: a word of no letters to the game's tools, where
// nothing at all would push the numbers behind it into its place.
inline constexpr std::string_view NO_TEXTURE_NAME = "\"\"";

struct Face {
  // Whole after reading, and kept while the plane stands: what a save writes where the winding's
  // own points do not lie on the plane. Of a plane that no whole points carry, three winding
  // points.
  std::array<Vec3, 3> planepts;
  Texture* texture = nullptr;    // bound by name; not owned
  float rotation = 0;            // degrees
  float xoff = 0, yoff = 0;      // texels
  float xscale = 0, yscale = 0;  // 0 counts as 1
  std::array<char, 16> name{};   // of the texture, at most 15 characters and a zero byte
  Plane plane;
  WindingPtr w;  // null until the brush is rebuilt
  // A longer name, which is only written back: null unless there is one.
  std::unique_ptr<const std::string> longName;

  std::string_view Name() const { return name.data(); }
  std::string_view WrittenName() const { return longName ? *longName : Name(); }
  // A longer name than 15 characters leaves none to be shown.
  void SetName(std::string_view newName);
  // Name and texture of the other, and how it lies.
  void TakeLook(const Face& other);
  // Whether the first three winding points are there and are numbers. A plane without a normal has
  // none such; its face is known by its plane points alone.
  bool HasShape() const;
  // The plane of the plane points.
  void TakePlane();
  // Whether the plane points are whole and carry the plane; for a face that has a shape.
  bool HasWholePoints() const;
};

// Deep, with its winding.
Face CopyFace(const Face& face);

class Brush {
 public:
  // `outline` is the colour of its edges in the 2D views.
  explicit Brush(Colour outline) : outline_(outline) {}
  Brush(Brush&&) = default;
  Brush& operator=(Brush&&) = default;

  Brush Copy() const;
  // With all that it holds, about.
  std::size_t Bytes() const;

  // `numfaces` of them, in file order. References hold until a face is added or dropped.
  int getNumFaces() const { return static_cast<int>(faces_.size()); }
  Face& face(int index) { return faces_[static_cast<std::size_t>(index)]; }
  const Face& face(int index) const { return faces_[static_cast<std::size_t>(index)]; }
  const std::vector<Face>& Faces() const { return faces_; }
  Colour Outline() const { return outline_; }
  const Bounds& Box() const { return bounds_; }

  // Null for the 33rd. The new face has its points and plane, no texture and no winding.
  Face* AddFace(const Vec3& p0, const Vec3& p1, const Vec3& p2);
  // A face made elsewhere; false for the 33rd.
  bool AddFace(Face face);
  void Clear();

  // Makes every winding from the planes, drops the faces that have none, and grows the bounds by
  // the windings' points (it never shrinks them).
  void Rebuild(Reporter& reporter);
  // Takes the bounds anew from the windings, for whoever has moved their points.
  void UpdateBounds();
  // Makes every winding and the bounds anew from the planes, where that moves no corner by more
  // than the tolerance; false, and nothing done, where it would.
  bool RenewWindings(Reporter& reporter);
  // Moves windings, planes and bounds. Whole plane points move along by whole units; others give
  // way to the winding points.
  void Translate(const Vec3& by);
  // Faces that lie so far out of the world that they have no winding: known by their plane points,
  // never shown, and written as they are. Who moves the others moves these.
  std::vector<Face>& FarFaces() { return farFaces_; }
  const std::vector<Face>& FarFaces() const { return farFaces_; }

  // Whether Translate, there and back, leaves no trace: not where a place would be rounded, or a
  // face does not lie in the plane of whole points.
  bool CanMove(const Vec3& by) const;
  // Whether `from`, translated, is this to the letter, and this, translated back, is `from`.
  bool IsMoved(const Brush& from, const Vec3& by) const;

  // Reads faces from behind the opening brace up to a brace or to a key's quote, which is not
  // consumed, and rebuilds. Of what lies so far out of the world that faces would be lost all are
  // far faces.
  void ReadBody(TextReader& reader, const WadList& wads, ReadLog& log, Reporter& reporter);
  // One line a face, with three points in whole units (document/written_points.h). A face without
  // winding points is a failed assertion and is written by its plane points. Then the far ones.
  void WriteFaces(TextWriter& out, Reporter& reporter) const;
  // Whether WriteFaces writes anything.
  bool HasText() const { return !faces_.empty() || !farFaces_.empty(); }

  void ResolveTextures(const WadList& wads);

 private:
  void RebuildRead(ReadLog& log, const TextReader& reader, Reporter& reporter);
  // False where faces have none because they lie out of the world.
  bool MakeWindings(Reporter& reporter);
  void DropFacesWithout();
  void KeepAsFar();

  Bounds bounds_;
  std::vector<Face> faces_;
  std::vector<Face> farFaces_;
  Colour outline_;
};

inline void Brush::UpdateBounds() {
  bounds_ = Bounds();
  for (const Face& face : faces_) {
    if (!face.w) continue;
    for (const WindingPoint& p : face.w->Points()) bounds_.Add(p.Position());
  }
}

// To the bit: faces, textures, corners, bounds; not what follows from them.
bool IsSame(const Brush& a, const Brush& b);

// Drops repeated points and takes the texture coordinates from the winding; the plane as well where
// the winding has left it, and then, or where they do not carry it, the plane points.
void UpdateFromWinding(Face& face);

}  // namespace ferrowand
