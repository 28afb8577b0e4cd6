#include "base/safe_file.h"

#include <algorithm>

#include "base/backups.h"
#include "base/path_text.h"
#include "base/report.h"
#include "base/rescue.h"
#include "platform/directory_names.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

constexpr char SOURCE[] = "..\\winfile.cpp";
constexpr char NEIGHBOUR[] = ".saving";
constexpr int TRIES = 100;

// A name that nothing has yet; nothing when all that are tried are taken.
std::optional<std::string> FreeName(const std::string& name) {
  for (int i = 0; i < TRIES; ++i) {
    std::string free = name + (i == 0 ? "" : std::to_string(i));
    if (file::Find(free) == FindResult::NotFound) return free;
  }
  return std::nullopt;
}

bool Holds(const std::string& name, std::string_view text) {
  const std::optional<FileStamp> stamp = file::Stamp(name);
  return stamp && stamp->size == text.size() && FileBytes(name) == text;
}

class Replacing {
 public:
  Replacing(const std::string& name, std::string_view text, const ReplaceRules& rules,
            Reporter* reporter)
      : name_(name), text_(text), rules_(rules), reporter_(reporter) {}

  ReplaceResult Run() {
    exists_ = file::Find(name_) != FindResult::NotFound;
    if (exists_ && !file::IsWritable(name_)) return CannotCreate();
    const std::optional<std::string> neighbour = FreeName(name_ + NEIGHBOUR);
    const FileHandle file = neighbour ? file::Create(*neighbour) : INVALID_FILE;
    if (file == INVALID_FILE) return exists_ ? WriteOver() : CannotCreate();
    result_.written = Fill(file) && Exchange(*neighbour);
    if (!result_.written) file::Delete(*neighbour);
    return result_;
  }

 private:
  bool Fail(const char* call, unsigned line) {
    if (reporter_) reporter_->Assert(call, SOURCE, line);
    return false;
  }

  ReplaceResult CannotCreate() {
    Fail("file!=INVALID_HANDLE_VALUE", 50);
    return result_;
  }

  // The whole text and nothing behind it, to the disk; closes the file.
  bool Fill(FileHandle file) {
    bool worked = file::Write(file, text_.data(), text_.size()) ||
                  Fail("WriteFile(file, text, count, &bytesWritten, NULL)", __LINE__);
    worked = worked && (file::Truncate(file) || Fail("SetEndOfFile(file)", __LINE__));
    worked = worked && (file::Flush(file) || Fail("FlushFileBuffers(file)", __LINE__));
    return (file::Close(file) || (worked && Fail("CloseHandle(file)", __LINE__))) && worked;
  }

  bool Exchange(const std::string& neighbour) {
    if (rules_.backups > 0 && exists_ && !Holds(name_, text_)) {
      result_.hasBackup = KeepBackup(name_, rules_.backups);
    }
    if (!file::Replace(neighbour, name_)) return Fail("MoveFileEx(neighbour, name)", __LINE__);
    return file::FlushName(name_) || Fail("FlushFileBuffers(folder)", __LINE__);
  }

  // The old text goes with the first byte: all of the new one lies elsewhere by then.
  ReplaceResult WriteOver() {
    std::optional<RescueNote> note = CopyElsewhere();
    const FileHandle file = note ? file::Open(name_, FileAccess::ReadWrite) : INVALID_FILE;
    if (file == INVALID_FILE) {
      if (note) note->Discard();
      return CannotCreate();
    }
    result_.hasBackup = rules_.backups == 0;
    result_.written = Fill(file);
    if (result_.written) {
      note->Discard();
    } else {
      result_.copy = note->About().text;
    }
    return result_;
  }

  std::optional<RescueNote> CopyElsewhere() {
    if (rules_.copyFolder.empty()) return std::nullopt;
    const PathParts parts = SplitPath(name_);
    const auto copy =
        FreeName(InFolder(rules_.copyFolder, parts.base + parts.extension + NEIGHBOUR));
    if (!copy) return std::nullopt;
    std::optional<RescueNote> note =
        RescueNote::Take(rules_.copyFolder, {*copy, name_, false, file::Stamp(name_)});
    const FileHandle file = note ? file::Create(*copy) : INVALID_FILE;
    if (file != INVALID_FILE && Fill(file) && file::FlushName(*copy)) return note;
    if (note) note->Discard();
    return std::nullopt;
  }

  const std::string& name_;
  const std::string_view text_;
  const ReplaceRules& rules_;
  Reporter* const reporter_;
  bool exists_ = false;
  ReplaceResult result_;
};

bool IsNeighbourOf(const std::string& name, std::string_view file) {
  std::string_view rest = file;
  for (const std::string_view part : {std::string_view(name), std::string_view(NEIGHBOUR)}) {
    if (!EqualNoCase(rest.substr(0, part.size()), part)) return false;
    rest.remove_prefix(part.size());
  }
  return std::ranges::all_of(rest, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

ReplaceResult ReplaceFile(const std::string& name, std::string_view text, const ReplaceRules& rules,
                          Reporter* reporter) {
  return Replacing(name, text, rules, reporter).Run();
}

bool ReplaceFileText(const std::string& name, std::string_view text, Reporter& reporter) {
  return ReplaceFile(name, text, {}, &reporter).written;
}

std::vector<std::string> LeftBeside(const std::string& name) {
  const PathParts parts = SplitPath(name);
  std::vector<std::string> left;
  for (const std::string& file : FileNames(parts.directory)) {
    const std::string path = parts.directory + file;
    if (IsNeighbourOf(parts.base + parts.extension, file) && !file::IsHeld(path)) {
      left.push_back(path);
    }
  }
  return left;
}

std::optional<std::string> FileBytes(const std::string& name, std::size_t most) {
  const FileHandle file = file::Open(name, FileAccess::Read);
  if (file == INVALID_FILE) return std::nullopt;
  std::string bytes(std::min<std::size_t>(file::Size(file), most), '\0');
  bytes.resize(file::Read(file, bytes.data(), bytes.size()));
  file::Close(file);
  return bytes;
}

}  // namespace ferrowand
