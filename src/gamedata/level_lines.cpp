#include "gamedata/level_lines.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "base/safe_file.h"
#include "base/text_parts.h"
#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXFILE = std::size_t{64} << 20;  // bytes that are looked at
constexpr std::size_t MAXPOINTS = 1'000'000;
constexpr int MAXCORNERS = 64;

// The next number of the line, parentheses passed over.
std::optional<double> TakeNumber(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(" \t\r()"), line.size()));
  const std::size_t end = std::min(line.find_first_of(" \t\r()"), line.size());
  const std::optional<double> number = ReadNumber(line.substr(0, end));
  line.remove_prefix(end);
  return number;
}

// Within what can be computed with.
std::optional<Vec3> TakePoint(std::string_view& line) {
  Vec3 point;
  for (int axis = 0; axis < 3; ++axis) {
    const std::optional<double> number = TakeNumber(line);
    if (!number || std::fabs(*number) > WHOLE_LIMIT) return std::nullopt;
    point[axis] = static_cast<float>(*number);
  }
  return point;
}

bool IsStraight(const Vec3& from, const Vec3& by, const Vec3& to) {
  const DVec3 whole = DVec3(to) - DVec3(from), part = DVec3(by) - DVec3(from);
  const double length = Length(whole);
  if (length == 0) return false;
  return Length(Cross(whole, part)) <= ON_EPSILON * length && Dot(whole, part) >= 0 &&
         Dot(part, part) <= length * length;
}

std::optional<Polyline> TakePortal(std::string_view line) {
  const std::optional<double> corners = TakeNumber(line);
  if (!corners || *corners < 3 || *corners > MAXCORNERS) return std::nullopt;
  line.remove_prefix(std::min(line.find('('), line.size()));  // past the rooms
  Polyline portal;
  while (static_cast<double>(portal.size()) < *corners) {
    const std::optional<Vec3> point = TakePoint(line);
    if (!point) return std::nullopt;
    portal.push_back(*point);
  }
  return portal;
}

}  // namespace

Polyline ParseLeakLine(std::string_view text) {
  Polyline line;
  while (!text.empty() && line.size() < MAXPOINTS) {
    std::string_view row = TakeLine(text);
    const std::optional<Vec3> point = TakePoint(row);
    if (!point || (!line.empty() && line.back() == *point)) continue;
    const std::size_t count = line.size();
    if (count >= 2 && IsStraight(line[count - 2], line[count - 1], *point)) line.pop_back();
    line.push_back(*point);
  }
  return line;
}

std::optional<std::vector<Polyline>> ParsePortals(std::string_view text) {
  if (!text.starts_with("PRT")) return std::nullopt;
  std::vector<Polyline> portals;
  std::size_t points = 0;
  while (!text.empty() && points < MAXPOINTS) {
    const std::string_view line = TakeLine(text);
    if (line.find('(') == line.npos) continue;  // the head
    std::optional<Polyline> portal = TakePortal(line);
    if (!portal) break;
    points += portal->size();
    portals.push_back(std::move(*portal));
  }
  return portals;
}

std::optional<Polyline> ReadLeakLine(const std::string& path) {
  const std::optional<std::string> text = FileBytes(path, MAXFILE);
  if (!text) return std::nullopt;
  return ParseLeakLine(*text);
}

std::optional<std::vector<Polyline>> ReadPortals(const std::string& path) {
  const std::optional<std::string> text = FileBytes(path, MAXFILE);
  return text ? ParsePortals(*text) : std::nullopt;
}

}  // namespace ferrowand
