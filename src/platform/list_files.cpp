#include <algorithm>
#include <string_view>

#include "platform/directory_names.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool Before(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char x, char y) { return Lower(x) < Lower(y); });
}

bool EndsIn(std::string_view name, std::string_view extension) {
  if (name.size() < extension.size()) return false;
  name.remove_prefix(name.size() - extension.size());
  return !Before(name, extension) && !Before(extension, name);
}

}  // namespace

std::vector<std::string> ListFiles(const std::string& directory, const std::string& extension) {
  std::vector<std::string> names = FileNames(directory);
  std::erase_if(names, [&](const std::string& name) { return !EndsIn(name, extension); });
  std::sort(names.begin(), names.end());
  std::stable_sort(names.begin(), names.end(), Before);
  return names;
}

}  // namespace ferrowand
