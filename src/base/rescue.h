// Work that would be lost if the program ended now: its text lies in a file of its own, anywhere,
// and a note in the user's own data folder tells of it. Who has the note keeps it open, so that
// other running programs leave both alone; a program that was ended leaves both to the next one.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/file.h"

namespace ferrowand {

// Both are whole paths.
struct Rescue {
  std::string text;       // the file that holds the work
  std::string original;   // the file that the work is for
  bool withLoss = false;  // not all of the original could be read into it
  // How the original was when the work began; nothing where that is not known.
  std::optional<FileStamp> began = std::nullopt;
};

class RescueNote {
 public:
  // To be taken before the text is written. Nothing when a running program has it, or the folder
  // takes no file; it is made if it is not there. A note that nobody has is taken over.
  static std::optional<RescueNote> Take(const std::string& folder, const Rescue& rescue);
  ~RescueNote() { Release(); }
  RescueNote(RescueNote&& other) noexcept;
  RescueNote& operator=(RescueNote&& other) noexcept;

  const Rescue& About() const { return about_; }
  // The work is safe, or not wanted: text and note go.
  void Discard();

 private:
  RescueNote(std::string name, Rescue about, FileHandle file);
  void Release();

  std::string name_;
  Rescue about_;
  FileHandle file_;
};

// Of programs that have ended. Notes whose text is not there any more are cleared away.
std::vector<Rescue> FindRescues(const std::string& folder);

}  // namespace ferrowand
