#include "base/winfile.h"

#include "base/report.h"

namespace ferrowand {
namespace {

constexpr const char* SOURCE = "..\\winfile.cpp";

}  // namespace

bool FileExists(const std::string& name, Reporter& reporter) {
  const FindResult result = file::Find(name);
  if (result == FindResult::Failed)
    reporter.Assert("GetLastError()==ERROR_FILE_NOT_FOUND", SOURCE, 36);
  return result == FindResult::Found;
}

FileHandle CreateForWrite(const std::string& name, Reporter& reporter) {
  const FileHandle file = file::Create(name);
  if (file == INVALID_FILE) reporter.Assert("file!=INVALID_HANDLE_VALUE", SOURCE, 50);
  return file;
}

FileHandle OpenExisting(const std::string& name, FileAccess access) {
  return file::Open(name, access);
}

std::uint8_t ReadByte(FileHandle file, Reporter& reporter) {
  std::uint8_t byte = 0;
  // Nothing read at the end of the file is no failure.
  if (file::Read(file, &byte, 1) == 0 && LastError() != 0)
    reporter.Assert("ReadFile(file, &chr, 1, &bytesRead, NULL)", SOURCE, 65);
  return byte;
}

std::uint8_t PeekByte(FileHandle file, Reporter& reporter) {
  const std::uint8_t byte = ReadByte(file, reporter);
  // Also where nothing was read: at the end of the file a peek goes back by one. That is meant.
  Seek(file, -1, SeekFrom::Current, reporter);
  return byte;
}

void WriteByte(FileHandle file, std::uint8_t byte, Reporter& reporter) {
  if (!file::Write(file, &byte, 1)) reporter.Assert("ret", SOURCE, 85);
}

void Seek(FileHandle file, std::int64_t distance, SeekFrom from, Reporter& reporter) {
  if (file::Seek(file, distance, from) == INVALID_OFFSET)
    reporter.Assert("SetFilePointer(file, distance, NULL, from)!=0xFFFFFFFF", SOURCE, 91);
}

std::uint32_t Tell(FileHandle file, Reporter& reporter) {
  const std::uint32_t offset = file::Seek(file, 0, SeekFrom::Current);
  if (offset == INVALID_OFFSET) reporter.Assert("ret!=0xFFFFFFFF", SOURCE, 100);
  return offset;
}

bool AtEndOfFile(FileHandle file, Reporter& reporter) {
  return file::Size(file) == Tell(file, reporter);
}

}  // namespace ferrowand
