// The seam to the system's files: unbuffered calls on a handle, nothing else. Names are as the
// user typed them; on a system with '/' a '\' in a name is taken as '/', so that maps made on
// Windows find their files. No call reports: each says by its result whether it worked, and
// LastError() tells why the last one did not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace ferrowand {

using FileHandle = std::intptr_t;
inline constexpr FileHandle INVALID_FILE = -1;

enum class FileAccess { Read, ReadWrite };
enum class SeekFrom { Begin, Current, End };
enum class FindResult { Found, NotFound, Failed };

// The value of Seek when the system refuses.
inline constexpr std::uint32_t INVALID_OFFSET = 0xFFFFFFFF;

// What changes of a file when somebody writes it.
struct FileStamp {
  std::int64_t time = 0;  // of the last change, nanoseconds since 1970, UTC
  std::uint64_t size = 0;

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

// The system's code of the last call's failure; 0 when that call worked.
std::uint32_t LastError();

namespace file {

FindResult Find(const std::string& name);

// An existing file only; others may read and write it meanwhile.
FileHandle Open(const std::string& name, FileAccess access);
// Read and write access, shared with nobody while it is open; an existing file is truncated.
FileHandle Create(const std::string& name);
// Whether a running program has the file open from Create.
bool IsHeld(const std::string& name);
// False when the system could not keep what was written.
bool Close(FileHandle handle);

// Bytes really moved; 0 on failure and, for reading, at the end of the file.
std::size_t Read(FileHandle handle, void* buffer, std::size_t count);
// True when all of count was written.
bool Write(FileHandle handle, const void* buffer, std::size_t count);
// The new position. Files end at 4 GiB - 2 as far as this program is concerned.
std::uint32_t Seek(FileHandle handle, std::int64_t distance, SeekFrom from);
std::uint32_t Size(FileHandle handle);
// Cuts the file at the current position.
bool Truncate(FileHandle handle);
// What has been written outlasts a power cut from here on.
bool Flush(FileHandle handle);

// Puts `from` in the place of `to` in one step; `to` need not exist. False leaves both as they are.
bool Replace(const std::string& from, const std::string& to);
// What has been done to the name (made, replaced, deleted) outlasts a power cut from here on, as
// far as the disk can promise that.
bool FlushName(const std::string& name);
// Another name for the same file, until one of the two is replaced. False where the disk has no
// such thing, or `name` is there.
bool Link(const std::string& existing, const std::string& name);
bool Delete(const std::string& name);
// Whether an existing file may be written, asked without touching it.
bool IsWritable(const std::string& name);
// Nothing for what is no file.
std::optional<FileStamp> Stamp(const std::string& name);
// Whether both name one file that is there, by links, other letters or another way to its folder.
bool IsSame(const std::string& name, const std::string& other);
// With the folders above it; true also when it is there.
bool MakeFolder(const std::string& name);

}  // namespace file
}  // namespace ferrowand
