#include "operations/map_findings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

#include "base/path_text.h"
#include "base/report.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/written_points.h"

namespace ferrowand {
namespace {

// Of the first tools, in bytes; what has so many is refused or cut off.
constexpr std::size_t KEY_LIMIT = 32, VALUE_LIMIT = 1024, WORD_LIMIT = 128, TEXTURE_LIMIT = 16;
// Units from the origin on each axis.
constexpr float CLASSIC_REACH = 4096;

constexpr const char* NAMES[] = {
    "Key too long for the tools",
    "Value too long for the tools",
    "Texture name too long for the tools",
    "Texture name is cut off",
    "Faces are moved by a save",
    "Faces are lost by a save",
    "Brush too far out",
    "Brush beyond 4096 units",
    "Mixed contents in one brush",
    "Duplicate brush",
    "Target names nothing",
    "No player start",
    "Entity outside the world's brushes",
};

// Most brushes and many entities have no name: the place tells which one is meant.
std::string At(const Vec3& place) {
  return Format("at %g %g %g", double{place.x}, double{place.y}, double{place.z});
}

void FindInKeys(entity& e, std::vector<Finding>& list) {
  for (int i = 0; i < e.numkeys(); ++i) {
    const std::string& name = e.KeyName(i);
    if (IsEditorKey(name)) continue;
    if (name.size() >= KEY_LIMIT) list.push_back({&e, NO_FACE, FindingKind::LongKey, name});
    if (e.KeyValue(i).size() >= VALUE_LIMIT) {
      list.push_back({&e, NO_FACE, FindingKind::LongValue, name});
    }
  }
}

// What the tools make of a brush by the name of a texture.
enum class Contents : std::uint8_t { Solid, Water, Slime, Lava, Sky, Clip };

bool BeginsWith(std::string_view name, std::string_view start) {
  return EqualNoCase(name.substr(0, start.size()), start);
}

Contents ContentsOf(std::string_view name) {
  if (BeginsWith(name, "*lava")) return Contents::Lava;
  if (BeginsWith(name, "*slime")) return Contents::Slime;
  if (BeginsWith(name, "*")) return Contents::Water;
  if (BeginsWith(name, "sky")) return Contents::Sky;
  return EqualNoCase(name, "clip") ? Contents::Clip : Contents::Solid;
}

void FindInNames(entity& e, std::vector<Finding>& list) {
  const std::vector<Face>& faces = e.brush.Faces();
  for (std::size_t i = 0; i < faces.size(); ++i) {
    const std::string_view name = faces[i].WrittenName();
    if (name.size() < TEXTURE_LIMIT) continue;
    const FindingKind kind =
        name.size() >= WORD_LIMIT ? FindingKind::LongWord : FindingKind::LongTextureName;
    list.push_back({&e, static_cast<std::uint8_t>(i), kind, std::string(name)});
  }
  const auto other = std::ranges::find_if(faces, [&](const Face& face) {
    return ContentsOf(face.WrittenName()) != ContentsOf(faces.front().WrittenName());
  });
  if (other == faces.end()) return;
  const auto index = static_cast<std::uint8_t>(other - faces.begin());
  list.push_back(
      {&e, index, FindingKind::MixedContents,
       std::string(faces.front().WrittenName()) + " and " + std::string(other->WrittenName())});
}

bool ReachesBeyond(const Bounds& box, float limit) {
  if (box.IsEmpty()) return false;
  for (int axis = 0; axis < 3; ++axis) {
    if (box.mins[axis] < -limit || box.maxs[axis] > limit) return true;
  }
  return false;
}

void FindInShape(entity& e, std::vector<Finding>& list) {
  const Brush& brush = e.brush;
  if (!brush.FarFaces().empty()) list.push_back({&e, NO_FACE, FindingKind::FarBrush, ""});
  if (ReachesBeyond(brush.Box(), CLASSIC_REACH)) {
    list.push_back({&e, NO_FACE, FindingKind::BeyondClassic, At(brush.Box().mins)});
  }
  if (!std::ranges::all_of(brush.Faces(), &Face::HasShape)) return;
  SilentSink silent;
  Reporter reporter(silent);
  const SavedShape shape = ShapeInFile(brush, reporter);
  if (shape.movedFaces > 0) {
    list.push_back({&e, NO_FACE, FindingKind::MovedFaces,
                    Format("%d by up to %.2f units", shape.movedFaces, shape.farthest)});
  }
  if (shape.lostFaces > 0) {
    list.push_back({&e, NO_FACE, FindingKind::LostFaces, std::to_string(shape.lostFaces)});
  }
}

// --- of the whole map

// Templates stand for themselves: what they hold lies nowhere.
template <typename Visit>
void ForEachInGame(entity& root, const Visit& visit) {
  if (root.getClass()->Kind() == EntityKind::TemplateClass) return;
  visit(root);
  for (const EntityPtr& child : root.getEntityList()) ForEachInGame(*child, visit);
}

// The same for two brushes of the same planes, in whatever order their faces stand.
using PlaneKey = std::array<double, 4>;
std::vector<PlaneKey> PlanesKey(const Brush& brush) {
  std::vector<PlaneKey> planes;
  for (const Face& face : brush.Faces()) {
    constexpr double PARTS = 1000;  // of a unit
    const auto whole = [](double value) { return std::round(value * PARTS) + 0.0; };
    const DVec3& n = face.plane.normal;
    planes.push_back({whole(n.x), whole(n.y), whole(n.z), whole(face.plane.dist)});
  }
  std::ranges::sort(planes);
  return planes;
}

void FindDuplicates(Map& map, std::vector<Finding>& list) {
  std::set<std::vector<PlaneKey>> seen;
  ForEachInGame(map, [&](entity& e) {
    const std::vector<Face>& faces = e.brush.Faces();
    const auto hasNormal = [](const Face& face) { return face.plane.HasNormal(); };
    if (faces.empty() || !std::ranges::all_of(faces, hasNormal)) return;
    if (seen.insert(PlanesKey(e.brush)).second) return;
    list.push_back({&e, NO_FACE, FindingKind::DuplicateBrush, At(e.brush.Box().mins)});
  });
}

void FindTargets(Map& map, std::vector<Finding>& list) {
  std::set<std::string_view> names;
  ForEachEntity(map, [&](const entity& e) {
    if (const char* name = e.GetKey("targetname")) names.insert(name);
  });
  ForEachInGame(map, [&](entity& e) {
    for (const char* key : {"target", "killtarget"}) {
      const char* name = e.GetKey(key);
      if (!name || !*name || names.contains(name)) continue;
      list.push_back({&e, NO_FACE, FindingKind::NamelessTarget, name});
    }
  });
}

void FindStart(Map& map, std::vector<Finding>& list) {
  bool isThere = false;
  ForEachInGame(map, [&](const entity& e) {
    const char* classname = e.GetKey("classname");
    isThere |= classname && std::string_view(classname) == "info_player_start";
  });
  if (!isThere) list.push_back({&map, NO_FACE, FindingKind::NoPlayerStart, ""});
}

bool IsPointEntity(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  return (kind == EntityKind::Entity || kind == EntityKind::Unknown) && e.HasOrigin() &&
         e.getEntityList().empty() && !e.brush.HasText();
}

bool IsInside(const Bounds& box, const Vec3& point) {
  for (int axis = 0; axis < 3; ++axis) {
    if (!(point[axis] >= box.mins[axis] && point[axis] <= box.maxs[axis])) return false;
  }
  return true;
}

void FindOutside(Map& map, std::vector<Finding>& list) {
  Bounds world;
  ForEachInGame(map, [&](const entity& e) {
    const bool isInstance = e.getClass()->Kind() == EntityKind::TemplateInstance;
    world.Add(isInstance ? e.GetBounds() : e.brush.Box());
  });
  ForEachInGame(map, [&](entity& e) {
    if (!IsPointEntity(e) || IsInside(world, e.Origin())) return;
    list.push_back({&e, NO_FACE, FindingKind::OutsideWorld, At(e.Origin())});
  });
}

}  // namespace

void FindInObject(entity& e, std::vector<Finding>& list) {
  FindInKeys(e, list);
  if (!e.brush.HasText()) return;
  FindInNames(e, list);
  FindInShape(e, list);
}

void FindInMap(Map& map, std::vector<Finding>& list) {
  FindDuplicates(map, list);
  FindTargets(map, list);
  FindOutside(map, list);
  FindStart(map, list);
}

void FindInTree(entity& e, std::vector<Finding>& list) {
  FindInObject(e, list);
  for (const EntityPtr& child : e.getEntityList()) FindInTree(*child, list);
}

std::string ReportLine(const Finding& finding) {
  std::string what = NAMES[static_cast<std::size_t>(finding.kind)];
  if (!finding.detail.empty()) what += " (" + finding.detail + ")";
  return ReportLine(what, *finding.e, finding.face);
}

}  // namespace ferrowand
