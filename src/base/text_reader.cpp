#include "base/text_reader.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/report.h"
#include "base/winfile.h"

namespace ferrowand {
namespace {

constexpr const char* SOURCE = "..\\winfile.cpp";
constexpr std::uint32_t LOOKBEHIND = 5;  // bytes kept in front of the position by a refill
constexpr std::uint32_t SMALLESTWINDOW = 10;
constexpr std::size_t LINESCANBLOCK = 16384;

constexpr std::uint8_t WHITE = 1;
constexpr std::uint8_t SEPARATOR = 2;  // ends a token
constexpr std::uint8_t WORDEND = 4;
constexpr std::uint8_t NOT_WHITE = 8;
constexpr std::uint8_t BLANK = 16;  // white and not NUL
constexpr std::uint8_t NUL = 32;
constexpr std::uint8_t NUMBEREND = 64;

// Kinds of every byte. NUL is white space and a separator on purpose, and no end of a word.
constexpr std::array<std::uint8_t, 256> KINDS = [] {
  std::array<std::uint8_t, 256> kinds{};
  constexpr std::string_view separators("=![](){}\"/,:;\0 \t\r\n+-*/<>|&.\\", 28);
  for (const char c : separators) kinds[static_cast<std::uint8_t>(c)] |= SEPARATOR;
  for (const char c : {' ', '\r', '\n'}) kinds[static_cast<std::uint8_t>(c)] |= WORDEND;
  for (const char c : {'\0', ' ', '\t', '\r', '\n'}) kinds[static_cast<std::uint8_t>(c)] |= WHITE;
  for (const char c : {'(', ')', '[', ']', '{', '}', '"'}) {
    kinds[static_cast<std::uint8_t>(c)] |= NUMBEREND;
  }
  for (std::uint8_t& kind : kinds) kind |= kind & WHITE ? BLANK | NUMBEREND : NOT_WHITE;
  kinds[0] = WHITE | SEPARATOR | NUL | NUMBEREND;
  return kinds;
}();

void CutAtNul(std::string& text) {
  text.resize(std::min(text.find('\0'), text.size()));
}

}  // namespace

TextReader::~TextReader() {
  if (file_ != INVALID_FILE) file::Close(file_);
}

void TextReader::Close() {
  if (file_ != INVALID_FILE) file::Close(file_);
  file_ = INVALID_FILE;
  isText_ = false;
  position_ = bufferSize_ = windowStart_ = fileSize_ = 0;
  buffer_ = std::make_unique<std::uint8_t[]>(1);
  readFailureReported_ = hasZeroBytes_ = false;
  lineScan_ = {};
}

void TextReader::OpenText(std::string_view text) {
  Close();
  isText_ = true;
  bufferSize_ = fileSize_ = static_cast<std::uint32_t>(text.size());
  buffer_ = std::make_unique<std::uint8_t[]>(text.size() + 1);
  std::ranges::copy(text, buffer_.get());
  hasZeroBytes_ = text.find('\0') != text.npos;
}

void TextReader::Open(const std::string& name, std::uint16_t requestedSize) {
  Close();
  file_ = OpenExisting(name, FileAccess::Read);
  if (!IsOpen()) return;
  fileSize_ = file::Size(file_);
  bufferSize_ = std::min(std::max<std::uint32_t>(SMALLESTWINDOW, requestedSize), fileSize_);
  buffer_ = std::make_unique<std::uint8_t[]>(bufferSize_ + 1);
  Fill(0);
}

// Loads the window so that it starts at or before the offset and ends within the file; how far
// before is the new position, and returned.
std::uint32_t TextReader::Fill(std::uint32_t offset) {
  const std::uint64_t wanted = std::uint64_t{bufferSize_} + offset;
  position_ = wanted > fileSize_ ? static_cast<std::uint32_t>(wanted - fileSize_) : 0;
  windowStart_ = offset - position_;
  if (bufferSize_ == 0 || isText_) return position_;
  Seek(file_, windowStart_, SeekFrom::Begin, reporter_);
  const std::size_t bytesRead = file::Read(file_, buffer_.get(), bufferSize_);
  hasZeroBytes_ |= std::memchr(buffer_.get(), 0, bytesRead) != nullptr;
  std::memset(buffer_.get() + bytesRead, 0, bufferSize_ - bytesRead);
  if (bytesRead < bufferSize_ && !readFailureReported_) {
    readFailureReported_ = true;
    reporter_.Assert("ReadFile(file, buffer, bufferSize, &bytesRead, NULL)", SOURCE, __LINE__);
  }
  return position_;
}

// Brings in what follows the window, if anything does. The absolute offset stays.
void TextReader::RefillForRead() {
  if (windowStart_ + bufferSize_ >= fileSize_) return;
  const std::uint32_t offset = Offset();
  const std::uint32_t kept = offset >= LOOKBEHIND ? LOOKBEHIND : 0;
  position_ = Fill(offset - kept) + kept;
}

bool TextReader::NextWindow() {
  if (AtEof()) return false;
  RefillForRead();
  return true;
}

std::size_t TextReader::Beyond() {
  PassEnd(1);
  return bufferSize_;
}

// Beyond the end only the offset moves, and it never wraps round into the file.
void TextReader::PassEnd(std::uint32_t count) {
  position_ += std::min(count, INVALID_OFFSET - Offset());
}

void TextReader::UngetChar() {
  if (position_ > 0) {
    --position_;
  } else if (windowStart_ == 0) {
    reporter_.Assert("0", SOURCE, 253);
  } else {
    const std::uint32_t offset = windowStart_ - 1;
    const std::uint32_t kept = windowStart_ >= LOOKBEHIND ? LOOKBEHIND - 1 : offset;
    position_ = Fill(offset - kept) + kept;
  }
}

void TextReader::CountLines(std::string_view text) const {
  for (const char c : text) {
    if (c == '\r' || (c == '\n' && !lineScan_.afterCr)) ++lineScan_.line;
    lineScan_.afterCr = c == '\r';
  }
  lineScan_.offset += static_cast<std::uint32_t>(text.size());
}

unsigned TextReader::LineNumber() const {
  if (lineScan_.offset > Offset()) lineScan_ = {};
  std::uint32_t left = std::min(Offset(), fileSize_) - lineScan_.offset;
  if (isText_) {
    const char* const begin = reinterpret_cast<const char*>(buffer_.get());
    CountLines({begin + lineScan_.offset, left});
    return lineScan_.line;
  }
  if (left > 0) Seek(file_, lineScan_.offset, SeekFrom::Begin, reporter_);
  std::array<char, LINESCANBLOCK> block;
  while (left > 0) {
    const std::size_t got =
        file::Read(file_, block.data(), std::min<std::size_t>(left, block.size()));
    if (got == 0) break;
    CountLines({block.data(), got});
    left -= static_cast<std::uint32_t>(got);
  }
  return lineScan_.line;
}

// How many of the next `limit` bytes, inside the window, are of none of the kinds.
std::uint32_t TextReader::RunLength(std::uint8_t stopKinds, std::uint32_t limit) const {
  if (position_ >= bufferSize_) return 0;
  const std::uint8_t* const begin = buffer_.get() + position_;
  const std::uint8_t* const end = begin + std::min(limit, bufferSize_ - position_);
  const std::uint8_t* p = begin;
  while (p < end && !(KINDS[*p] & stopKinds)) ++p;
  return static_cast<std::uint32_t>(p - begin);
}

std::uint32_t TextReader::SkipWhitespace() {
  std::uint32_t skipped = 0;
  do {
    const std::uint32_t run = RunLength(NOT_WHITE, bufferSize_);
    position_ += run;
    skipped += run;
  } while (position_ >= bufferSize_ && NextWindow());
  return skipped;
}

// Appends bytes up to one of the kinds, `max` bytes or the end of the file.
std::size_t TextReader::ReadRun(std::uint8_t stopKinds, std::string& text, std::size_t max) {
  text.clear();
  do {
    const std::size_t room = std::min<std::size_t>(max - text.size(), bufferSize_);
    const std::uint32_t run = RunLength(stopKinds, static_cast<std::uint32_t>(room));
    text.append(reinterpret_cast<const char*>(buffer_.get()) + std::min(position_, bufferSize_),
                run);
    position_ += run;
  } while (position_ >= bufferSize_ && NextWindow() && text.size() < max);
  return text.size();
}

std::size_t TextReader::TakeIfEmpty(std::size_t count, std::string& text) {
  if (count > 0) return count;
  text.assign(1, static_cast<char>(GetChar()));
  return 1;
}

// Nearly all that is read lies whole inside the window: one pass, which the guard stops at the
// latest. False, with nothing done, where a NUL or the window's end is met. With `orOne` a byte
// that would end the text at once is taken for it.
bool TextReader::ReadInWindow(std::uint8_t stopKinds, std::string& text, std::size_t max,
                              bool orOne) {
  if (position_ >= bufferSize_) return false;
  const std::uint8_t* p = buffer_.get() + position_;
  while (KINDS[*p] & BLANK) ++p;
  const std::uint8_t* const begin = p;
  while (!(KINDS[*p] & (stopKinds | NUL))) ++p;
  if (*p == 0) return false;
  if (p == begin && orOne) ++p;
  if (static_cast<std::size_t>(p - begin) > max) p = begin + std::max<std::size_t>(max, orOne);
  if (p == buffer_.get() + bufferSize_) return false;
  text.assign(reinterpret_cast<const char*>(begin), static_cast<std::size_t>(p - begin));
  position_ = static_cast<std::uint32_t>(p - buffer_.get());
  return true;
}

std::size_t TextReader::ReadToken(std::string& text, std::size_t max) {
  if (ReadInWindow(SEPARATOR, text, max, true)) return text.size();
  SkipWhitespace();
  const std::size_t count = TakeIfEmpty(ReadRun(SEPARATOR, text, max), text);
  CutAtNul(text);
  return count;
}

std::size_t TextReader::ReadWord(std::string& text, std::size_t max) {
  if (ReadInWindow(WORDEND, text, max, true)) return text.size();
  SkipWhitespace();
  std::size_t count = ReadRun(WORDEND, text, max);
  if (AtEof() && count < max) {
    // The end of the file is no end of a word: the zeros beyond it belong to it up to the limit.
    PassEnd(static_cast<std::uint32_t>(std::min<std::size_t>(max - count, INVALID_OFFSET)));
    count = max;
  }
  count = TakeIfEmpty(count, text);
  CutAtNul(text);
  return count;
}

std::size_t TextReader::ReadField(std::uint8_t stopKinds, std::string& text, std::size_t max) {
  if (ReadInWindow(stopKinds, text, max, false)) return text.size();
  SkipWhitespace();
  return ReadRun(stopKinds, text, max);
}

std::size_t TextReader::ReadPlainWord(std::string& text, std::size_t max) {
  return ReadField(WHITE, text, max);
}

std::size_t TextReader::ReadNumberWord(std::string& text, std::size_t max) {
  return ReadField(NUMBEREND, text, max);
}

// Moves behind the next c and adds the number of bytes before it; false when there is none.
bool TextReader::SkipBehind(char c, std::uint32_t& before) {
  do {
    if (AtEof()) return false;
    const std::uint8_t* const begin = buffer_.get() + position_;
    const std::size_t length = bufferSize_ - position_;
    const void* const found = std::memchr(begin, c, length);
    const auto run = static_cast<std::uint32_t>(
        found ? static_cast<const std::uint8_t*>(found) - begin : length);
    before += run;
    position_ += run + (found ? 1 : 0);
    if (found) {
      if (position_ >= bufferSize_) NextWindow();
      return true;
    }
  } while (NextWindow());
  return false;
}

std::uint32_t TextReader::SkipLine() {
  std::uint32_t before = 0;
  SkipBehind('\n', before);
  return before;
}

std::uint32_t TextReader::SkipPast(char c, bool consume) {
  std::uint32_t before = 0;
  SkipBehind(c, before);
  // Meant also at the end of the file, where there was no c.
  if (!consume) UngetChar();
  return before;
}

void TextReader::Expect(char c) {
  if (GetChar() != static_cast<std::uint8_t>(c)) reporter_.Assert("c==chr", SOURCE, 346);
}

std::size_t TextReader::ReadUntil(char c, std::string& text, std::size_t max, bool consume) {
  text.clear();
  while (text.size() < max && !AtEof()) {
    const char next = static_cast<char>(GetChar());
    if (next == c) break;
    text.push_back(next);
  }
  if (!consume) UngetChar();
  const std::size_t count = text.size();
  CutAtNul(text);
  return count;
}

std::size_t TextReader::ReadUntilAny(std::string_view set, std::string& text, std::size_t max,
                                     bool consume) {
  text.clear();
  while (text.size() < max && !AtEof() && set.find(static_cast<char>(PeekChar())) == set.npos)
    text.push_back(static_cast<char>(GetChar()));
  std::size_t count = text.size();
  if (AtEof() && set.find('\0') == set.npos) {
    PassEnd(static_cast<std::uint32_t>(std::min<std::size_t>(max - count, INVALID_OFFSET)));
    count = max;
  }
  // The delimiter was only looked at: going back lands on the last byte stored. That is meant.
  if (!consume) UngetChar();
  CutAtNul(text);
  return count;
}

int TextReader::FindWord(std::string_view word) {
  std::string token;
  for (;;) {
    ReadToken(token, 50);
    if (AtEof()) return 2;  // even if the last token is the word
    if (token == word) return 1;
  }
}

void TextReader::ReadBytes(void* target, std::uint32_t count) {
  auto* out = static_cast<std::uint8_t*>(target);
  while (count > 0 && !AtEof()) {
    const std::uint32_t run = std::min(count, bufferSize_ - position_);
    std::memcpy(out, buffer_.get() + position_, run);
    position_ += run;
    out += run;
    count -= run;
    if (position_ >= bufferSize_) NextWindow();
  }
  std::memset(out, 0, count);
  PassEnd(count);
}

void TextReader::SeekTo(std::uint32_t offset) {
  if (offset >= windowStart_ && offset - windowStart_ < bufferSize_)
    position_ = offset - windowStart_;
  else
    Fill(offset);
}

}  // namespace ferrowand
