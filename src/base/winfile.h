// Unbuffered helpers on a file handle, each failure reported as a failed assertion of this unit.
// Processing goes on with whatever the call left.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

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

// Puts `text` into the file `name` in one step: it is written beside it and takes its place only
// when it is whole, so that a full disk or a lost connection leaves the old file as it was. Every
// failure is reported; false then.
bool ReplaceFileText(const std::string& name, std::string_view text, Reporter& reporter);

}  // namespace ferrowand
