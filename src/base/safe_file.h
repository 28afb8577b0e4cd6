// Replacing a file so that whatever happens on the way leaves the old text or the new one: the new
// text is written beside it, goes to the disk, and takes its place in one step.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

class Reporter;

struct ReplaceRules {
  unsigned backups = 0;  // how many earlier versions stay beside the file (see backups.h)
  // Where the text goes first when the file's folder takes no new file, and the file itself has to
  // be written over; a rescue (see rescue.h) tells of it until that is done. Empty: it is not done.
  std::string copyFolder;
};

struct ReplaceResult {
  bool written = false;
  bool hasBackup = true;  // or needed none
  std::string copy;       // not empty: the file is not whole, and this one has all of the text

  explicit operator bool() const { return written; }
};

// Failures are told to the reporter, if there is one.
ReplaceResult ReplaceFile(const std::string& name, std::string_view text, const ReplaceRules& rules,
                          Reporter* reporter);
// The same without earlier versions, and only in folders that take the new text beside the old.
bool ReplaceFileText(const std::string& name, std::string_view text, Reporter& reporter);

// What a program that was ended in the middle of it has left beside the file: the new text, or the
// beginning of it. Whole paths.
std::vector<std::string> LeftBeside(const std::string& name);

// All of it, or no more than so many bytes from its beginning; nothing where it cannot be read.
std::optional<std::string> FileBytes(const std::string& name, std::size_t most = -1);

}  // namespace ferrowand
