#include "platform/file.h"

#include <windows.h>

#include <algorithm>

namespace ferrowand {
namespace {

constexpr std::int64_t LASTOFFSET = INVALID_OFFSET - 1;
constexpr std::size_t LARGESTPIECE = std::size_t{1} << 30;  // one call moves at most 32 bits

HANDLE Handle(FileHandle handle) {
  return reinterpret_cast<HANDLE>(handle);
}

FileHandle OpenAs(const std::string& name, DWORD access, DWORD share, DWORD disposition) {
  // A file that was there and is created anew leaves a code although the call worked.
  const HANDLE file = CreateFileA(name.c_str(), access, share, nullptr, disposition,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return INVALID_FILE;
  // Only plain files: "COM1" or a pipe could make the program wait for ever.
  if (GetFileType(file) != FILE_TYPE_DISK) {
    CloseHandle(file);
    SetLastError(ERROR_FILE_NOT_FOUND);
    return INVALID_FILE;
  }
  SetLastError(ERROR_SUCCESS);
  return reinterpret_cast<FileHandle>(file);
}

// A call that works leaves the code of an earlier failure alone; this takes it away first.
template <typename Call>
auto Fresh(Call call) {
  SetLastError(ERROR_SUCCESS);
  return call();
}

}  // namespace

std::uint32_t LastError() {
  return GetLastError();
}

namespace file {

FindResult Find(const std::string& name) {
  WIN32_FIND_DATAA found;
  const HANDLE search = Fresh([&] { return FindFirstFileA(name.c_str(), &found); });
  if (search != INVALID_HANDLE_VALUE) {
    FindClose(search);
    return FindResult::Found;
  }
  return GetLastError() == ERROR_FILE_NOT_FOUND ? FindResult::NotFound : FindResult::Failed;
}

FileHandle Open(const std::string& name, FileAccess access) {
  const DWORD rights =
      access == FileAccess::Read ? GENERIC_READ : DWORD{GENERIC_READ} | DWORD{GENERIC_WRITE};
  return OpenAs(name, rights, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
}

FileHandle Create(const std::string& name) {
  return OpenAs(name, DWORD{GENERIC_READ} | DWORD{GENERIC_WRITE}, 0, CREATE_ALWAYS);
}

bool IsHeld(const std::string& name) {
  const FileHandle file = Open(name, FileAccess::Read);
  if (file == INVALID_FILE) return GetLastError() == ERROR_SHARING_VIOLATION;
  Close(file);
  return false;
}

bool Close(FileHandle handle) {
  return Fresh([&] { return CloseHandle(Handle(handle)); }) != 0;
}

std::size_t Read(FileHandle handle, void* buffer, std::size_t count) {
  SetLastError(ERROR_SUCCESS);
  std::size_t done = 0;
  while (done < count) {
    const DWORD piece = static_cast<DWORD>(std::min(count - done, LARGESTPIECE));
    DWORD moved = 0;
    if (!ReadFile(Handle(handle), static_cast<char*>(buffer) + done, piece, &moved, nullptr) ||
        moved == 0)
      break;
    done += moved;
  }
  return done;
}

bool Write(FileHandle handle, const void* buffer, std::size_t count) {
  SetLastError(ERROR_SUCCESS);
  std::size_t done = 0;
  while (done < count) {
    const DWORD piece = static_cast<DWORD>(std::min(count - done, LARGESTPIECE));
    DWORD moved = 0;
    if (!WriteFile(Handle(handle), static_cast<const char*>(buffer) + done, piece, &moved,
                   nullptr) ||
        moved == 0)
      return false;
    done += moved;
  }
  return true;
}

std::uint32_t Seek(FileHandle handle, std::int64_t distance, SeekFrom from) {
  SetLastError(ERROR_SUCCESS);
  LARGE_INTEGER base{}, reached{};
  if (from == SeekFrom::End) base.QuadPart = Size(handle);
  if (from == SeekFrom::Current && !SetFilePointerEx(Handle(handle), {}, &base, FILE_CURRENT))
    return INVALID_OFFSET;
  base.QuadPart = std::min<std::int64_t>(base.QuadPart + distance, LASTOFFSET);
  if (!SetFilePointerEx(Handle(handle), base, &reached, FILE_BEGIN)) return INVALID_OFFSET;
  return static_cast<std::uint32_t>(reached.QuadPart);
}

std::uint32_t Size(FileHandle handle) {
  LARGE_INTEGER size{};
  if (!Fresh([&] { return GetFileSizeEx(Handle(handle), &size); })) return 0;
  return static_cast<std::uint32_t>(std::min<std::int64_t>(size.QuadPart, LASTOFFSET));
}

bool Truncate(FileHandle handle) {
  return Fresh([&] { return SetEndOfFile(Handle(handle)); }) != 0;
}

bool Flush(FileHandle handle) {
  return Fresh([&] { return FlushFileBuffers(Handle(handle)); }) != 0;
}

bool Replace(const std::string& from, const std::string& to) {
  return Fresh([&] {
           return MoveFileExA(from.c_str(), to.c_str(),
                              MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
         }) != 0;
}

bool FlushName(const std::string&) {
  SetLastError(ERROR_SUCCESS);
  return true;  // Replace has written through
}

bool Link(const std::string& existing, const std::string& name) {
  return Fresh([&] { return CreateHardLinkA(name.c_str(), existing.c_str(), nullptr); }) != 0;
}

bool Delete(const std::string& name) {
  return Fresh([&] { return DeleteFileA(name.c_str()); }) != 0;
}

bool IsWritable(const std::string& name) {
  const DWORD attributes = GetFileAttributesA(name.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY)) {
    SetLastError(ERROR_ACCESS_DENIED);  // the mark counts, whatever the rights of the user
    return false;
  }
  const FileHandle file =
      OpenAs(name, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  return file != INVALID_FILE && Close(file);
}

std::optional<FileStamp> Stamp(const std::string& name) {
  WIN32_FILE_ATTRIBUTE_DATA facts;
  if (!Fresh([&] { return GetFileAttributesExA(name.c_str(), GetFileExInfoStandard, &facts); }) ||
      (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
    return std::nullopt;
  }
  constexpr std::int64_t TICKS_TO_1970 = 116'444'736'000'000'000, NANOSECONDS = 100;
  const auto whole = [](DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; };
  const auto ticks = static_cast<std::int64_t>(
      whole(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime));
  return FileStamp{(ticks - TICKS_TO_1970) * NANOSECONDS,
                   whole(facts.nFileSizeHigh, facts.nFileSizeLow)};
}

bool IsSame(const std::string& name, const std::string& other) {
  // Both are held open meanwhile: an index is only one file's as long as the file is open.
  BY_HANDLE_FILE_INFORMATION facts, others;
  const auto look = [](FileHandle file, BY_HANDLE_FILE_INFORMATION& into) {
    return file != INVALID_FILE && GetFileInformationByHandle(Handle(file), &into);
  };
  const FileHandle file = Open(name, FileAccess::Read), second = Open(other, FileAccess::Read);
  const bool isSame = look(file, facts) && look(second, others) &&
                      facts.dwVolumeSerialNumber == others.dwVolumeSerialNumber &&
                      facts.nFileIndexHigh == others.nFileIndexHigh &&
                      facts.nFileIndexLow == others.nFileIndexLow;
  for (const FileHandle opened : {file, second}) {
    if (opened != INVALID_FILE) CloseHandle(Handle(opened));
  }
  return isSame;
}

bool MakeFolder(const std::string& name) {
  for (std::size_t end = name.find_first_of("\\/"); end != name.npos;
       end = name.find_first_of("\\/", end + 1)) {
    CreateDirectoryA(name.substr(0, end).c_str(), nullptr);
  }
  if (Fresh([&] { return CreateDirectoryA(name.c_str(), nullptr); })) return true;
  const DWORD attributes = GetFileAttributesA(name.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace file
}  // namespace ferrowand
