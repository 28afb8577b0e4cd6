#include "base/backups.h"

#include <optional>

#include "base/safe_file.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

// What cannot be asked is not taken for free.
bool IsFree(const std::string& name) {
  return file::Find(name) == FindResult::NotFound;
}

// After a save that did not come to its end the newest version is the file itself.
bool IsSame(const std::string& name, const std::string& other) {
  const std::optional<FileStamp> stamp = file::Stamp(name), otherStamp = file::Stamp(other);
  return stamp && otherStamp && stamp->size == otherStamp->size &&
         FileBytes(name) == FileBytes(other);
}

// A disk without links gets a copy.
bool LinkOrCopy(const std::string& name, const std::string& to) {
  if (file::Link(name, to)) return true;
  if (!IsFree(to)) return false;
  const std::optional<std::string> bytes = FileBytes(name);
  return bytes && ReplaceFile(to, *bytes, {}, nullptr);
}

}  // namespace

std::string BackupName(const std::string& name, unsigned number) {
  return name + "." + std::to_string(number) + ".bak";
}

bool KeepBackup(const std::string& name, unsigned count) {
  if (IsSame(name, BackupName(name, 1))) return true;
  unsigned free = 1;  // the first number that no version has, else the last one
  while (free < count && !IsFree(BackupName(name, free))) ++free;
  for (; free > 1; --free) {
    if (!file::Replace(BackupName(name, free - 1), BackupName(name, free))) return false;
  }
  if (count == 1) file::Delete(BackupName(name, 1));
  return LinkOrCopy(name, BackupName(name, 1));
}

}  // namespace ferrowand
