// Unbuffered helpers on a file handle, each failure reported as a failed assertion of this unit.
// Processing goes on with whatever the call left.
#pragma once

#include <cstdint>
#include <string>

#include "platform/file.h"

namespace ferrowand {

class Reporter;

bool FileExists(const std::string& name, Reporter& reporter);
FileHandle CreateForWrite(const std::string& name, Reporter& reporter);
FileHandle OpenExisting(const std::string& name, FileAccess access);
// 0 after a failure.
std::uint8_t ReadByte(FileHandle file, Reporter& reporter);
std::uint8_t PeekByte(FileHandle file, Reporter& reporter);
void WriteByte(FileHandle file, std::uint8_t byte, Reporter& reporter);
void Seek(FileHandle file, std::int64_t distance, SeekFrom from, Reporter& reporter);
std::uint32_t Tell(FileHandle file, Reporter& reporter);
bool AtEndOfFile(FileHandle file, Reporter& reporter);

}  // namespace ferrowand
