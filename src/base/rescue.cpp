#include "base/rescue.h"

#include <cstdint>
#include <cstdio>
#include <sstream>
#include <utility>

#include "base/path_text.h"
#include "base/safe_file.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

constexpr char EXTENSION[] = ".note";
const std::string LOSS = "losses", BEGAN = "began";  // first words of lines

// One name for each text, so that two programs cannot both have it.
std::string NoteName(const std::string& folder, const std::string& text) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  char digits[17];
  std::snprintf(digits, sizeof digits, "%08lx%08lx", static_cast<unsigned long>(hash >> 32),
                static_cast<unsigned long>(hash & 0xFFFFFFFF));
  return InFolder(folder, digits) + EXTENSION;
}

// A line each.
std::string NoteText(const Rescue& rescue) {
  std::string note = rescue.text + '\n' + rescue.original + '\n';
  if (rescue.withLoss) note += LOSS + '\n';
  if (rescue.began) {
    const auto& [time, size] = *rescue.began;
    note += BEGAN + ' ' + std::to_string(time) + ' ' + std::to_string(size) + '\n';
  }
  return note;
}

// Nothing for one that is not whole: it was taken, but nothing had been written yet.
std::optional<Rescue> Parse(const std::string& note) {
  std::istringstream lines(note);
  Rescue rescue;
  if (!note.ends_with('\n') || !std::getline(lines, rescue.text) ||
      !std::getline(lines, rescue.original)) {
    return std::nullopt;
  }
  for (std::string word; lines >> word;) {
    rescue.withLoss |= word == LOSS;
    FileStamp stamp;
    if (word == BEGAN && lines >> stamp.time >> stamp.size) rescue.began = stamp;
  }
  return rescue;
}

void DeleteLeftBeside(const std::string& text) {
  for (const std::string& left : LeftBeside(text)) file::Delete(left);
}

}  // namespace

std::optional<RescueNote> RescueNote::Take(const std::string& folder, const Rescue& rescue) {
  const std::string name = NoteName(folder, rescue.text);
  const std::string bytes = NoteText(rescue);
  if (!file::MakeFolder(folder)) return std::nullopt;
  const FileHandle file = file::Create(name);
  if (file == INVALID_FILE) return std::nullopt;
  RescueNote note(name, rescue, file);
  if (file::Write(file, bytes.data(), bytes.size()) && file::Flush(file) && file::FlushName(name)) {
    return note;
  }
  note.Release();
  file::Delete(name);
  return std::nullopt;
}

RescueNote::RescueNote(std::string name, Rescue about, FileHandle file)
    : name_(std::move(name)), about_(std::move(about)), file_(file) {}

RescueNote::RescueNote(RescueNote&& other) noexcept
    : name_(std::move(other.name_)),
      about_(std::move(other.about_)),
      file_(std::exchange(other.file_, INVALID_FILE)) {}

RescueNote& RescueNote::operator=(RescueNote&& other) noexcept {
  std::swap(name_, other.name_);
  std::swap(about_, other.about_);
  std::swap(file_, other.file_);
  return *this;
}

void RescueNote::Release() {
  if (file_ != INVALID_FILE) file::Close(std::exchange(file_, INVALID_FILE));
}

// The text first: a note without one is cleared away, a text without a note would stay for ever.
void RescueNote::Discard() {
  file::Delete(about_.text);
  DeleteLeftBeside(about_.text);
  Release();
  file::Delete(name_);
}

std::vector<Rescue> FindRescues(const std::string& folder) {
  std::vector<Rescue> found;
  if (folder.empty()) return found;
  for (const std::string& name : ListFiles(folder, EXTENSION)) {
    const std::string path = InFolder(folder, name);
    if (file::IsHeld(path)) continue;
    const std::optional<std::string> bytes = FileBytes(path);
    const std::optional<Rescue> rescue = bytes ? Parse(*bytes) : std::nullopt;
    const FindResult text = rescue ? file::Find(rescue->text) : FindResult::NotFound;
    if (text == FindResult::Found) found.push_back(*rescue);
    if (text != FindResult::NotFound) continue;  // a folder that is not there now may come back
    if (rescue) DeleteLeftBeside(rescue->text);
    file::Delete(path);
  }
  return found;
}

}  // namespace ferrowand
