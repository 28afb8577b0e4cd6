// Brushes written as text: the lines between the braces of a brush in a map file.
#include <string>

#include "base/number_text.h"
#include "base/report.h"
#include "base/text_writer.h"
#include "document/brush.h"
#include "document/written_points.h"

namespace ferrowand {
namespace {

void PutPoint(TextWriter& out, const WholePoint& p) {
  out.Put("( ");
  for (int axis = 0; axis < 3; ++axis) {
    out.PutInt(static_cast<int>(p[axis]));
    out.Put(' ');
  }
  out.Put(") ");
}

void PutPlanePoints(TextWriter& out, const Face& face) {
  for (const Vec3& p : face.planepts) {
    PutPoint(out, {RoundToInt(p.x), RoundToInt(p.y), RoundToInt(p.z)});
  }
}

void PutPoints(TextWriter& out, const Face& face, Reporter& reporter) {
  const winding* w = face.w.get();
  if (!w || w->numpoints <= 0) reporter.Assert("w->numpoints>0", "brush.cpp", __LINE__);
  if (w && face.HasShape()) {
    for (const WholePoint& p : PointsToWrite(face).points) PutPoint(out, p);
  } else {
    // Nothing that can be written: the face keeps the points that the user gave it.
    PutPlanePoints(out, face);
  }
}

// A name that is too long for a texture stands as it was read.
void PutName(TextWriter& out, const Face& face) {
  const std::string_view name = face.WrittenName();
  if (name.empty() || face.longName) return out.Put(name.empty() ? NO_TEXTURE_NAME : name);
  for (const char c : name) out.Put(c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
}

// All that stands behind the points.
void PutLook(TextWriter& out, const Face& face) {
  PutName(out, face);
  for (const float number : {face.xoff, face.yoff, face.rotation}) {
    out.Put(' ');
    out.PutInt(RoundToInt(number));
  }
  for (const float scale : {face.xscale, face.yscale}) {
    out.Put(' ');
    out.PutFloat(scale);
  }
  out.Put('\n');
}

}  // namespace

void Brush::WriteFaces(TextWriter& out, Reporter& reporter) const {
  for (const Face& face : faces_) {
    out.Put("\t\t");
    PutPoints(out, face, reporter);
    PutLook(out, face);
  }
  for (const Face& face : farFaces_) {
    out.Put("\t\t");
    PutPlanePoints(out, face);
    PutLook(out, face);
  }
}

}  // namespace ferrowand
