#include "document/key_reader.h"

#include <algorithm>
#include <string_view>

#include "base/text_reader.h"
#include "document/broken_line.h"
#include "document/read_log.h"

namespace ferrowand {
namespace {

constexpr std::string_view LINE_ENDS = "\r\n";

// Whether a line of the text, behind its first one, is a brace and nothing else.
bool HasLineOfABrace(std::string_view text) {
  constexpr std::string_view BLANKS = " \t";
  for (std::size_t end = text.find_first_of(LINE_ENDS); end != text.npos;) {
    text.remove_prefix(end + 1);
    end = text.find_first_of(LINE_ENDS);
    const std::string_view line = text.substr(0, end);
    const std::size_t first = line.find_first_not_of(BLANKS);
    if (first == line.npos || (line[first] != '{' && line[first] != '}')) continue;
    if (line.find_last_not_of(BLANKS) == first) return true;
  }
  return false;
}

}  // namespace

bool KeyReader::Read() {
  const std::uint32_t start = reader_.Offset();
  reader_.GetChar();
  bool onNextLine = false;
  const bool isRead = ReadQuoted(name) && name.find_first_of(LINE_ENDS) == name.npos &&
                      FindValue(onNextLine) && ReadValue(onNextLine);
  if (!isRead) {
    reader_.SeekTo(start);
    log_.Count(Loss::Key, reader_);
    SkipBrokenLine(reader_, Quotes::PassedOver);
    return false;
  }
  CutAtNul(name);
  CutAtNul(value);
  return true;
}

// False at the end of the file.
bool KeyReader::ReadQuoted(std::string& text) {
  text.clear();
  while (!reader_.AtEof()) {
    const char c = static_cast<char>(reader_.GetChar());
    if (c == '"') return true;
    text.push_back(c);
  }
  return false;
}

void KeyReader::CutAtNul(std::string& text) {
  const std::size_t end = text.find('\0');
  if (end == text.npos) return;
  log_.Count(Loss::Key, reader_);
  text.resize(end);
}

unsigned KeyReader::QuotesToLineEnd() {
  const std::uint32_t offset = reader_.Offset();
  unsigned quotes = 0;
  while (!reader_.AtEof() && !IsLineEnd(reader_.PeekChar())) quotes += reader_.GetChar() == '"';
  reader_.SeekTo(offset);
  return quotes;
}

// Moves behind the opening quote of the value. What stands in front of it is passed over when it is
// a comment, or when the rest of the line is the value.
bool KeyReader::FindValue(bool& onNextLine) {
  for (;;) {
    while (!reader_.AtEof() && !IsLineEnd(reader_.PeekChar()) && reader_.PeekChar() <= ' ') {
      reader_.GetChar();
    }
    if (reader_.AtEof()) return false;
    const std::uint8_t c = reader_.PeekChar();
    if (IsLineEnd(c)) {
      onNextLine = true;
      reader_.SkipWhitespace();
      continue;
    }
    reader_.GetChar();
    if (c == '"') return true;
    if (c == '/' && reader_.PeekChar() == '/') {
      log_.PassComment(reader_);
    } else {
      if (onNextLine || QuotesToLineEnd() != 2) return false;
      reader_.SkipPast('"', true);
      return true;
    }
  }
}

// Where a quote is missing the next one is that of the next key, and text follows it at once.
bool KeyReader::ReadValue(bool onNextLine) {
  const std::uint32_t start = reader_.Offset();
  const bool isClosed = ReadQuoted(value);
  if (onNextLine && (!isClosed || QuotesToLineEnd() > 0)) return false;
  const std::size_t line = value.find_first_of(LINE_ENDS);
  if (isClosed && (line == value.npos || (StandsAlone(reader_) && !HasLineOfABrace(value))))
    return true;
  value.resize(std::min(line, value.size()));
  reader_.SeekTo(start + static_cast<std::uint32_t>(value.size()));
  log_.Count(Loss::Key, reader_);
  return true;
}

}  // namespace ferrowand
