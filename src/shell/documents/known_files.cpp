#include "shell/documents/known_files.h"

namespace ferrowand {

void KnownFiles::NoteRead(const Map& map, const std::string& path,
                          const std::optional<FileStamp>& stamp) {
  files_[{&map, path}] = {stamp, false, std::nullopt};
}

void KnownFiles::NoteWritten(const Map& map, const std::string& path) {
  files_[{&map, path}] = {file::Stamp(path), true, std::nullopt};
}

void KnownFiles::NoteOther(const Map& map, const std::string& path) {
  files_[{&map, path}] = {std::nullopt, false, file::Stamp(path)};
}

void KnownFiles::Forget(const Map& map) {
  std::erase_if(files_, [&](const auto& file) { return file.first.first == &map; });
}

const KnownFiles::Known* KnownFiles::Find(const Map& map, const std::string& path) const {
  const auto file = files_.find({&map, path});
  return file == files_.end() ? nullptr : &file->second;
}

bool KnownFiles::IsAsKnown(const Map& map, const std::string& path) const {
  const std::optional<FileStamp> now = file::Stamp(path);
  const Known* known = Find(map, path);
  return !now || (known && known->stamp == now);
}

bool KnownFiles::IsAsWritten(const Map& map, const std::string& path) const {
  const Known* known = Find(map, path);
  return known && known->written && IsAsKnown(map, path);
}

std::optional<FileStamp> KnownFiles::StampOf(const Map& map, const std::string& path) const {
  const Known* known = Find(map, path);
  return known ? known->stamp : std::nullopt;
}

bool KnownFiles::TakeChange(const Map& map, const std::string& path) {
  if (IsAsKnown(map, path)) return false;
  Known& known = files_[{&map, path}];
  const std::optional<FileStamp> now = file::Stamp(path);
  if (known.told == now) return false;
  known.told = now;
  return true;
}

}  // namespace ferrowand
