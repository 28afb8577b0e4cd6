// The reader beneath every text parser: a window of bytes onto a file, read in large pieces, with a
// few bytes of look-behind so that a character can always be put back. Beyond the end of the file
// every byte reads as 0.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/number_text.h"
#include "platform/file.h"

namespace ferrowand {

class Reporter;

class TextReader {
 public:
  static constexpr std::uint16_t WINDOW = 32768;  // what every caller asks for

  explicit TextReader(Reporter& reporter) : reporter_(reporter) {}
  ~TextReader();
  TextReader(const TextReader&) = delete;
  TextReader& operator=(const TextReader&) = delete;

  // Test IsOpen afterwards: nothing is reported here.
  void Open(const std::string& name, std::uint16_t requestedSize = WINDOW);
  // A text in memory instead of a file.
  void OpenText(std::string_view text);
  bool IsOpen() const { return isText_ || file_ != INVALID_FILE; }

  std::uint8_t GetChar() {
    if (position_ + 1u >= bufferSize_) RefillForRead();
    return buffer_[position_ < bufferSize_ ? position_++ : Beyond()];
  }
  std::uint8_t PeekChar() const {
    return buffer_[position_ < bufferSize_ ? position_ : bufferSize_];
  }
  void UngetChar();
  bool AtEof() const { return Offset() >= fileSize_; }
  std::uint32_t Offset() const { return windowStart_ + position_; }
  std::uint32_t FileLength() const { return fileSize_; }
  // Whether there was one in what has been read so far.
  bool HasZeroBytes() const { return hasZeroBytes_; }
  // For messages: counts from the start of the file, where CR, LF and CR LF each end a line.
  unsigned LineNumber() const;

  // NUL is white space here, as are blank, tab, CR and LF.
  std::uint32_t SkipWhitespace();
  std::uint32_t SkipLine();
  // The texts below end at a NUL byte that the file holds among them; the counts do not.
  // Up to `max` bytes, to the next of the 28 separators; a separator alone is a token.
  std::size_t ReadToken(std::string& text, std::size_t max);
  // Up to `max` bytes, to the next blank, CR or LF only: a tab is part of a word.
  std::size_t ReadWord(std::string& text, std::size_t max);
  // What is closer than a word: up to `max` bytes, to the next white space; and a number, which no
  // parenthesis, bracket, brace or quote belongs to either. Nothing is read in front of such a
  // byte.
  std::size_t ReadPlainWord(std::string& text, std::size_t max);
  std::size_t ReadNumberWord(std::string& text, std::size_t max);
  // Any other byte is a failed assertion, and consumed.
  void Expect(char c);
  std::uint32_t SkipPast(char c, bool consume);
  std::size_t ReadUntil(char c, std::string& text, std::size_t max, bool consume);
  std::size_t ReadUntilAny(std::string_view set, std::string& text, std::size_t max, bool consume);
  // 1 found, 2 end of file.
  int FindWord(std::string_view word);
  void ReadBytes(void* target, std::uint32_t count);
  void SeekTo(std::uint32_t offset);

 private:
  struct LineScan {
    std::uint32_t offset = 0;
    unsigned line = 1;
    bool afterCr = false;
  };

  void Close();
  void CountLines(std::string_view text) const;
  std::uint32_t Fill(std::uint32_t offset);
  void RefillForRead();
  bool NextWindow();
  std::size_t Beyond();
  void PassEnd(std::uint32_t count);
  std::uint32_t RunLength(std::uint8_t stopKinds, std::uint32_t limit) const;
  std::size_t ReadRun(std::uint8_t stopKinds, std::string& text, std::size_t max);
  bool ReadInWindow(std::uint8_t stopKinds, std::string& text, std::size_t max, bool orOne);
  std::size_t ReadField(std::uint8_t stopKinds, std::string& text, std::size_t max);
  std::size_t TakeIfEmpty(std::size_t count, std::string& text);
  bool SkipBehind(char c, std::uint32_t& before);

  Reporter& reporter_;
  // bufferSize_ bytes and a guard of 0. Inside the file position_ is always below bufferSize_.
  std::unique_ptr<std::uint8_t[]> buffer_ = std::make_unique<std::uint8_t[]>(1);
  std::uint32_t position_ = 0;
  std::uint32_t bufferSize_ = 0;
  std::uint32_t windowStart_ = 0;
  std::uint32_t fileSize_ = 0;
  FileHandle file_ = INVALID_FILE;
  bool isText_ = false;  // which is in the window as a whole
  bool readFailureReported_ = false;
  bool hasZeroBytes_ = false;
  mutable LineScan lineScan_;  // how far lines are counted, so that many messages stay cheap
};

}  // namespace ferrowand
