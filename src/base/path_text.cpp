#include "base/path_text.h"

#include <algorithm>

#include "platform/system.h"

namespace ferrowand {
namespace {

bool IsSeparator(char c) {
  return c == '\\' || c == '/';
}

int Lower(char c) {
  return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : static_cast<unsigned char>(c);
}

bool IsWholePath(std::string_view path) {
  return !path.empty() && (IsSeparator(path[0]) || (path.size() > 1 && path[1] == ':'));
}

}  // namespace

PathParts SplitPath(std::string_view path) {
  std::size_t name = path.size();
  while (name > 0 && !IsSeparator(path[name - 1])) --name;
  if (name == 0 && path.size() >= 2 && path[1] == ':') name = 2;
  const std::size_t dot = path.rfind('.');
  const std::size_t extension = dot == path.npos || dot < name ? path.size() : dot;
  return {std::string(path.substr(0, name)), std::string(path.substr(name, extension - name)),
          std::string(path.substr(extension))};
}

std::string InFolder(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.empty() && !IsSeparator(path.back())) path += PathSeparator();
  return path.append(name);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

int CompareNoCase(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i)
    if (const int difference = Lower(a[i]) - Lower(b[i])) return difference;
  return a.size() < b.size() ? -1 : a.size() > b.size();
}

std::string StripCommonPrefix(std::string_view path, std::string_view directory) {
  const auto end = std::mismatch(path.begin(), path.end(), directory.begin(), directory.end());
  std::size_t run = static_cast<std::size_t>(end.first - path.begin());
  if (run > 0 && run < path.size() && IsSeparator(path[run])) ++run;
  return std::string(path.substr(run));
}

std::vector<std::string> PlacesAround(std::string_view folder, std::string_view name) {
  if (folder.empty() || name.empty()) return {};
  const std::string start = IsWholePath(folder)
                                ? InFolder(folder, "")
                                : InFolder(CurrentDirectory(), InFolder(folder, ""));
  const PathParts parts = SplitPath(name);
  std::vector<std::string> names;
  if (!IsWholePath(name)) names.emplace_back(name);
  if (!parts.directory.empty()) names.push_back(parts.base + parts.extension);
  std::vector<std::string> places;
  for (const std::string& wanted : names) {
    for (std::size_t end = start.size(); end > 0; --end) {
      if (IsSeparator(start[end - 1])) places.push_back(start.substr(0, end) + wanted);
    }
  }
  return places;
}

void SearchPath::Add(std::string_view folder) {
  if (entries_.size() == MAXENTRIES) return;
  entries_.push_back(InFolder(folder, ""));
}

bool SearchPath::Offer(const std::string& name,
                       const std::function<bool(const std::string&)>& take) const {
  return take(StripCommonPrefix(name, CurrentDirectory())) ||
         std::any_of(entries_.begin(), entries_.end(),
                     [&](const std::string& folder) { return take(folder + name); });
}

}  // namespace ferrowand
