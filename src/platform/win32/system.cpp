#include "platform/system.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <memory>

#include "platform/directory_names.h"

namespace ferrowand {
namespace {

// Calls `get(size, buffer)` of the system's kind: the length, or the size that it wants; 0 fails.
template <typename Get>
std::string TextOf(Get get) {
  std::string text(MAX_PATH, '\0');
  DWORD length = get(static_cast<DWORD>(text.size()), text.data());
  if (length >= text.size()) {
    text.resize(length + 1);
    length = get(static_cast<DWORD>(text.size()), text.data());
  }
  text.resize(length < text.size() ? length : 0);
  return text;
}

// "c:\dir" of "c:\dir\name", "c:\" of "c:\name".
std::string FolderOf(const std::string& path) {
  const std::size_t separator = path.find_last_of("\\/");
  if (separator == std::string::npos) return "";
  const bool root = separator == 0 || path[separator - 1] == ':';
  return path.substr(0, separator + (root ? 1 : 0));
}

}  // namespace

std::string CurrentDirectory() {
  return TextOf([](DWORD size, char* buffer) { return GetCurrentDirectoryA(size, buffer); });
}

std::string ProgramDirectory() {
  char path[32768];  // the longest there is; the call cannot tell how much it needs
  const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
  return FolderOf(std::string(path, length));
}

std::string UserDataDirectory() {
  char folder[MAX_PATH] = "";
  const HRESULT found =
      SHGetFolderPathA(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
  return SUCCEEDED(found) ? std::string(folder) + "\\Ferrowand" : "";
}

std::optional<std::string> FindOnSystemPath(const std::string& fileName) {
  const std::string found = TextOf([&](DWORD size, char* buffer) {
    return SearchPathA(nullptr, fileName.c_str(), nullptr, size, buffer, nullptr);
  });
  if (found.empty()) return std::nullopt;
  return FolderOf(found);
}

std::uint64_t PhysicalMemoryBytes() {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  return GlobalMemoryStatusEx(&status) ? status.ullTotalPhys : 0;
}

std::uint64_t ProcessMemoryBytes() {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  if (!GlobalMemoryStatusEx(&status)) return 0;
  return std::min(status.ullTotalPhys, status.ullTotalVirtual);
}

std::vector<std::string> FileNames(const std::string& directory) {
  const std::string pattern = directory.empty() ? "*" : directory + "\\*";
  std::vector<std::string> names;
  WIN32_FIND_DATAA found;
  const HANDLE search = FindFirstFileA(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  const std::unique_ptr<void, decltype(&FindClose)> closer(search, &FindClose);
  do {
    if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) names.emplace_back(found.cFileName);
  } while (FindNextFileA(search, &found));
  return names;
}

std::string ShortPath(const std::string& path) {
  const std::string name = TextOf(
      [&](DWORD size, char* buffer) { return GetShortPathNameA(path.c_str(), buffer, size); });
  return name.empty() ? path : name;
}

Processor MachineProcessor() {
  SYSTEM_INFO info{};
  GetSystemInfo(&info);
  const auto kind = [&info] {
    switch (info.wProcessorArchitecture) {
      case PROCESSOR_ARCHITECTURE_INTEL:
        return ProcessorKind::Intel;
      case PROCESSOR_ARCHITECTURE_MIPS:
        return ProcessorKind::Mips;
      case PROCESSOR_ARCHITECTURE_ALPHA:
        return ProcessorKind::Alpha;
      case PROCESSOR_ARCHITECTURE_PPC:
        return ProcessorKind::PowerPc;
      default:
        return ProcessorKind::Other;
    }
  };
  return {kind(), info.wProcessorLevel, info.wProcessorRevision};
}

char PathSeparator() {
  return '\\';
}

}  // namespace ferrowand
