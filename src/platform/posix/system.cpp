#include "platform/system.h"

#include <dirent.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/directory_names.h"
#include "platform/file.h"

namespace ferrowand {

std::string CurrentDirectory() {
  char path[PATH_MAX];
  return getcwd(path, sizeof path) ? path : "";
}

std::string ProgramDirectory() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return CurrentDirectory();
  const std::string_view whole(path, static_cast<std::size_t>(length));
  return std::string(whole.substr(0, std::max<std::size_t>(whole.rfind('/'), 1)));
}

std::string UserDataDirectory() {
  if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data == '/') {
    return std::string(data) + "/ferrowand";
  }
  const char* home = std::getenv("HOME");
  return home && *home ? std::string(home) + "/.local/share/ferrowand" : "";
}

std::optional<std::string> FindOnSystemPath(const std::string& fileName) {
  const char* path = std::getenv("PATH");
  std::string folders =
      ProgramDirectory() + ':' + CurrentDirectory() + ':' + (path ? path : "") + ':';
  while (!folders.empty()) {
    const std::size_t end = folders.find(':');
    const std::string folder = folders.substr(0, end);
    folders.erase(0, end + 1);
    if (!folder.empty() && file::Find((folder + '/').append(fileName)) == FindResult::Found)
      return folder;
  }
  return std::nullopt;
}

std::uint64_t PhysicalMemoryBytes() {
  return static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
         static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

std::uint64_t ProcessMemoryBytes() {
  rlimit limit{};
  const bool isLimited = getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
  return isLimited ? std::min<std::uint64_t>(PhysicalMemoryBytes(), limit.rlim_cur)
                   : PhysicalMemoryBytes();
}

std::vector<std::string> FileNames(const std::string& directory) {
  std::string folder = directory.empty() ? "." : directory;
  std::replace(folder.begin(), folder.end(), '\\', '/');
  std::vector<std::string> names;
  const auto close = [](DIR* dir) { closedir(dir); };
  const std::unique_ptr<DIR, decltype(close)> open(opendir(folder.c_str()));
  if (!open) return names;
  while (const dirent* entry = readdir(open.get())) {
    struct stat facts;
    const std::string whole = folder + '/' + entry->d_name;
    if (stat(whole.c_str(), &facts) == 0 && !S_ISDIR(facts.st_mode))
      names.emplace_back(entry->d_name);
  }
  return names;
}

std::string ShortPath(const std::string& path) {
  return path;
}

Processor MachineProcessor() {
  return {};
}

char PathSeparator() {
  return '/';
}

}  // namespace ferrowand
