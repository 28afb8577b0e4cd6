#include "operations/map_check.h"

#include <algorithm>

#include "document/classes/entity_class.h"
#include "document/entity.h"
#include "gamedata/wad_library.h"

namespace ferrowand {
namespace {

bool IsPlaceholder(const Texture* texture, const WadList& wads) {
  return texture && std::ranges::any_of(wads.Items(), [texture](const WadList::Item& item) {
           return item.wad->BadTexture() == texture;
         });
}

CheckCode CheckFaceCount(int faces) {
  if (faces >= 64) return CheckCode::Faces64;
  if (faces >= 32) return CheckCode::Faces32;
  return faces >= 16 ? CheckCode::Faces16 : CheckCode::None;
}

}  // namespace

void CheckObject(entity& e, std::vector<Problem>& list, const WadList& wads, double tolerance) {
  const auto add = [&](int face, CheckCode code) {
    if (code == CheckCode::None) return;
    list.push_back({&e, static_cast<std::uint8_t>(face), code});
  };
  Brush brush = e.brush.Copy();
  const int faces = brush.getNumFaces();
  for (int i = 0; i < faces; ++i) UpdateFromWinding(brush.face(i));
  for (int i = 0; i < faces; ++i) {
    add(i, FaceCheck(brush.face(i), tolerance));
    if (IsPlaceholder(brush.face(i).texture, wads)) add(i, CheckCode::UnknownTexture);
  }
  add(NO_FACE, CheckFaceCount(faces));
  if (!IsBrushConvex(brush)) add(NO_FACE, CheckCode::NonConvex);
  if (faces > 0 && e.GetKey("origin")) add(NO_FACE, CheckCode::BrushAndOrigin);
}

void CheckMap(entity& e, std::vector<Problem>& list, const WadList& wads, double tolerance) {
  CheckObject(e, list, wads, tolerance);
  for (const EntityPtr& child : e.getEntityList()) CheckMap(*child, list, wads, tolerance);
}

std::string ReportLine(const std::string& what, const entity& e, std::uint8_t face) {
  const std::string& classname = e.getClass()->classname;
  const char* name = e.GetKey("XMPentityname");
  std::string line = what;
  line += name ? ", " + classname + " named: " + name : ", Unnamed " + classname;
  if (face != NO_FACE) line += ", face " + std::to_string(face);
  return line;
}

std::string ReportLine(const Problem& problem) {
  return ReportLine(CheckName(problem.code), *problem.e, problem.face);
}

}  // namespace ferrowand
