#include "platform/file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace ferrowand {
namespace {

constexpr std::int64_t LASTOFFSET = INVALID_OFFSET - 1;

thread_local int lastError = 0;

// Notes how a call went, as the other system does by itself.
bool Note(bool worked) {
  lastError = worked ? 0 : errno;
  return worked;
}

std::string SystemName(std::string name) {
  std::replace(name.begin(), name.end(), '\\', '/');
  return name;
}

// Only plain files: a pipe could make the program wait for ever, a folder or a device has no size.
FileHandle OpenPlain(const std::string& name, int mode) {
  const int file = open(SystemName(name).c_str(), mode | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (!Note(file >= 0)) return INVALID_FILE;
  struct stat facts;
  if (Note(fstat(file, &facts) == 0) && S_ISREG(facts.st_mode)) return file;
  close(file);
  if (lastError == 0) lastError = EISDIR;
  return INVALID_FILE;
}

int Fd(FileHandle handle) {
  return static_cast<int>(handle);
}

}  // namespace

std::uint32_t LastError() {
  return static_cast<std::uint32_t>(lastError);
}

namespace file {

FindResult Find(const std::string& name) {
  struct stat facts;
  if (Note(stat(SystemName(name).c_str(), &facts) == 0)) return FindResult::Found;
  return lastError == ENOENT ? FindResult::NotFound : FindResult::Failed;
}

FileHandle Open(const std::string& name, FileAccess access) {
  return OpenPlain(name, access == FileAccess::Read ? O_RDONLY : O_RDWR);
}

FileHandle Create(const std::string& name) {
  const int file = open(SystemName(name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666);
  if (!Note(file >= 0)) return INVALID_FILE;
  // A disk that knows no locks has them all free.
  const bool held = flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  if (Note(!held && ftruncate(file, 0) == 0)) return file;
  close(file);
  return INVALID_FILE;
}

bool IsHeld(const std::string& name) {
  const FileHandle file = OpenPlain(name, O_RDONLY);
  if (file == INVALID_FILE) return false;
  const bool held = flock(Fd(file), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  Close(file);
  return held;
}

bool Close(FileHandle handle) {
  return Note(close(Fd(handle)) == 0);
}

std::size_t Read(FileHandle handle, void* buffer, std::size_t count) {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t moved = read(Fd(handle), static_cast<char*>(buffer) + done, count - done);
    if (moved < 0 && errno == EINTR) continue;
    if (!Note(moved >= 0) || moved == 0) return done;
    done += static_cast<std::size_t>(moved);
  }
  return done;
}

bool Write(FileHandle handle, const void* buffer, std::size_t count) {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t moved = write(Fd(handle), static_cast<const char*>(buffer) + done, count - done);
    if (moved < 0 && errno == EINTR) continue;
    if (!Note(moved >= 0)) return false;
    done += static_cast<std::size_t>(moved);
  }
  return Note(true);
}

std::uint32_t Seek(FileHandle handle, std::int64_t distance, SeekFrom from) {
  std::int64_t base = 0;
  if (from == SeekFrom::End) base = Size(handle);
  if (from == SeekFrom::Current) base = lseek(Fd(handle), 0, SEEK_CUR);
  if (!Note(base >= 0)) return INVALID_OFFSET;
  const off_t reached = lseek(Fd(handle), std::min(base + distance, LASTOFFSET), SEEK_SET);
  return Note(reached >= 0) ? static_cast<std::uint32_t>(reached) : INVALID_OFFSET;
}

std::uint32_t Size(FileHandle handle) {
  struct stat facts;
  if (!Note(fstat(Fd(handle), &facts) == 0)) return 0;
  return static_cast<std::uint32_t>(std::min<std::int64_t>(facts.st_size, LASTOFFSET));
}

bool Truncate(FileHandle handle) {
  const off_t here = lseek(Fd(handle), 0, SEEK_CUR);
  return Note(here >= 0 && ftruncate(Fd(handle), here) == 0);
}

bool Flush(FileHandle handle) {
  return Note(fsync(Fd(handle)) == 0);
}

bool Replace(const std::string& from, const std::string& to) {
  const std::string source = SystemName(from);
  std::string target = SystemName(to);
  struct stat old;
  if (stat(target.c_str(), &old) == 0) {
    // The new file stands for the old one: same permissions, and behind the same link.
    (void)chmod(source.c_str(), old.st_mode & 07777);
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(target.c_str(), nullptr),
                                                           &std::free);
    if (real && std::rename(source.c_str(), real.get()) == 0) return Note(true);
    if (errno != EXDEV) return Note(false);
  }
  return Note(std::rename(source.c_str(), target.c_str()) == 0);
}

bool FlushName(const std::string& name) {
  const std::string path = SystemName(name);
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                         &std::free);
  std::string folder = real ? real.get() : path;
  const std::size_t separator = folder.rfind('/');
  folder = separator == std::string::npos ? "." : folder.substr(0, separator + 1);
  const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // Who may write into a folder need not be able to read it.
  if (!Note(file >= 0)) return errno == EACCES;
  const bool flushed = Note(fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP);
  close(file);
  return flushed;
}

bool Link(const std::string& existing, const std::string& name) {
  return Note(linkat(AT_FDCWD, SystemName(existing).c_str(), AT_FDCWD, SystemName(name).c_str(),
                     AT_SYMLINK_FOLLOW) == 0);
}

bool Delete(const std::string& name) {
  return Note(unlink(SystemName(name).c_str()) == 0);
}

bool IsWritable(const std::string& name) {
  const FileHandle file = OpenPlain(name, O_WRONLY);
  return file != INVALID_FILE && Close(file);
}

std::optional<FileStamp> Stamp(const std::string& name) {
  struct stat facts;
  if (!Note(stat(SystemName(name).c_str(), &facts) == 0) || !S_ISREG(facts.st_mode)) {
    return std::nullopt;
  }
  constexpr std::int64_t NANOSECONDS = 1'000'000'000;
  return FileStamp{facts.st_mtim.tv_sec * NANOSECONDS + facts.st_mtim.tv_nsec,
                   static_cast<std::uint64_t>(facts.st_size)};
}

bool IsSame(const std::string& name, const std::string& other) {
  struct stat facts, others;
  return Note(stat(SystemName(name).c_str(), &facts) == 0) &&
         Note(stat(SystemName(other).c_str(), &others) == 0) && facts.st_dev == others.st_dev &&
         facts.st_ino == others.st_ino;
}

bool MakeFolder(const std::string& name) {
  const std::string path = SystemName(name);
  for (std::size_t end = path.find('/', 1); end != path.npos; end = path.find('/', end + 1)) {
    mkdir(path.substr(0, end).c_str(), 0777);
  }
  struct stat facts;
  return Note(mkdir(path.c_str(), 0777) == 0 ||
              (stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode)));
}

}  // namespace file
}  // namespace ferrowand
