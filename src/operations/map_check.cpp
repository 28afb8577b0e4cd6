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

void CheckMap(entity& e, std::vector<Problem>& list, const WadList& wads, double tolerance) {
  Brush& brush = e.brush;
  const int faces = brush.getNumFaces();
  const auto add = [&](int face, CheckCode code) {
    if (code == CheckCode::None) return;
    list.push_back({&e, static_cast<std::uint8_t>(face), code});
  };
  for (int i = 0; i < faces; ++i) UpdateFromWinding(brush.face(i));
  e.Touch();
  for (int i = 0; i < faces; ++i) {
    add(i, FaceCheck(brush.face(i), tolerance));
    if (IsPlaceholder(brush.face(i).texture, wads)) add(i, CheckCode::UnknownTexture);
  }
  add(NO_FACE, CheckFaceCount(faces));
  if (!IsBrushConvex(brush)) add(NO_FACE, CheckCode::NonConvex);
  if (faces > 0 && e.GetKey("origin")) add(NO_FACE, CheckCode::BrushAndOrigin);
  for (const EntityPtr& child : e.getEntityList()) CheckMap(*child, list, wads, tolerance);
}

std::string ReportLine(const Problem& problem) {
  const std::string& classname = problem.e->getClass()->classname;
  const char* name = problem.e->GetKey("XMPentityname");
  std::string line = CheckName(problem.code);
  line += name ? ", " + classname + " named: " + name : ", Unnamed " + classname;
  if (problem.face != NO_FACE) line += ", face " + std::to_string(problem.face);
  return line;
}

}  // namespace ferrowand
