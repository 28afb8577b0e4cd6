// Brushes read from text: the lines between the braces of a brush in a map file.
#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include "base/report.h"
#include "base/text_reader.h"
#include "document/brush.h"
#include "document/face_reader.h"
#include "document/read_log.h"

namespace ferrowand {
namespace {

std::vector<DVec3> CornersOf(std::span<const Plane> planes) {
  SilentSink sink;
  Reporter silent(sink);
  std::vector<DVec3> corners;
  for (std::size_t i = 0; i < planes.size(); ++i) {
    const WindingPtr w = FaceWinding(planes, i, silent);
    if (!w) continue;
    for (const WindingPoint& p : w->Points()) corners.emplace_back(p.Position());
  }
  return corners;
}

// The plane that a face has in its file, where whole points do not carry it.
struct ExactPlane {
  std::size_t face;
  Plane plane;
};

// What was cut off of the points of a brush.
struct Fractions {
  unsigned points = 0;
  std::vector<ExactPlane> planes;
};

// How far the corners moved when the fractions of the points were cut off: from each to the nearest
// that is there now.
double FarthestMove(std::span<const Face> faces, std::span<const ExactPlane> fractional) {
  std::vector<Plane> planes;
  for (const Face& face : faces) planes.push_back(face.plane);
  const std::vector<DVec3> corners = CornersOf(planes);
  for (const ExactPlane& exact : fractional) planes[exact.face] = exact.plane;
  double farthest = 0;
  for (const DVec3& was : CornersOf(planes)) {
    double nearest = 1e300;
    for (const DVec3& is : corners) nearest = std::min(nearest, Dot(was - is, was - is));
    if (nearest < 1e300) farthest = std::max(farthest, std::sqrt(nearest));
  }
  return farthest;
}

void ReadFace(Brush& brush, FaceReader& faces, Fractions& fractions, ReadLog& log,
              const TextReader& reader) {
  const std::optional<PointsRead> points = faces.ReadPoints();
  if (!points) return;
  Face* face = brush.AddFace(points->whole[0], points->whole[1], points->whole[2]);
  if (!face) {
    log.TooManyFaces(reader);
    Face refused;
    return faces.ReadTexture(refused);
  }
  if (points->fractions > 0) {
    fractions.points += points->fractions;
    const auto& [p0, p1, p2] = points->exact;
    fractions.planes.push_back({brush.Faces().size() - 1, PlaneFromPoints(p0, p1, p2)});
  }
  faces.ReadTexture(*face);
}

}  // namespace

void Brush::ReadBody(TextReader& reader, const WadList& wads, ReadLog& log, Reporter& reporter) {
  FaceReader faces(reader, wads, log);
  Fractions fractions;
  for (bool done = false; !done;) {
    reader.SkipWhitespace();
    if (reader.AtEof()) {
      log.EndInBrush();
      break;
    }
    const char c = static_cast<char>(reader.PeekChar());
    if (c == '(') {
      ReadFace(*this, faces, fractions, log, reader);
    } else if (c == '{' || c == '}' || c == '"') {
      done = true;
    } else {
      reader.GetChar();
      if (c == '/' && reader.PeekChar() == '/') {
        log.PassComment(reader);
      } else {
        log.InvalidChar(c, "brush", reader);
      }
    }
  }
  if (fractions.points > 0) {
    log.CountFractions(fractions.points, FarthestMove(faces_, fractions.planes), reader);
  }
  RebuildRead(log, reader, reporter);
}

void Brush::KeepAsFar() {
  std::ranges::move(faces_, std::back_inserter(farFaces_));
  for (Face& face : farFaces_) face.w.reset();
  faces_.clear();
  bounds_ = Bounds();
}

// A damaged file may hold any number of faces without a normal.
void Brush::RebuildRead(ReadLog& log, const TextReader& reader, Reporter& reporter) {
  const bool hadFaces = !faces_.empty();
  const auto flat =
      std::ranges::find_if_not(faces_, [](const Face& face) { return face.plane.HasNormal(); });
  if (flat == faces_.end()) {
    if (MakeWindings(reporter)) {
      DropFacesWithout();
    } else {
      log.TooFar(reader);
      KeepAsFar();
    }
  } else {
    log.NoNormal(flat->plane, reader);
    SilentSink sink;
    Reporter silent(sink);
    Rebuild(silent);
  }
  if (hadFaces && !HasText()) log.Count(Loss::VanishedBrush, reader);
}

}  // namespace ferrowand
