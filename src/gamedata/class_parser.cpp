#include "gamedata/class_parser.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/report.h"
#include "base/text_parts.h"
#include "base/text_reader.h"
#include "gamedata/class_help.h"
#include "gamedata/class_log.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXTOKEN = 50;
constexpr std::size_t MAXWORD = 100;
constexpr std::size_t MAXFLAGTEXT = 100;

// What does not fit into 16 bits wraps.
std::int16_t ToCoordinate(float value) {
  return static_cast<std::int16_t>(
      static_cast<std::int32_t>(std::clamp<double>(value, INT32_MIN, INT32_MAX)));
}

}  // namespace

std::optional<ClassRecord> ClassParser::Next() {
  std::string token;
  bool isAfterStar = false;  // where a slash ends a comment
  while (!reader_.AtEof()) {
    reader_.ReadToken(token, MAXTOKEN);
    const bool closes = std::exchange(isAfterStar, token == "*");
    if (token != "/") continue;
    // Meant: every other comment of the file is complained of.
    if (!TakeToken("*", "/")) {
      if (!closes) PassLineComment();
    } else if (TakeToken("QUAKED", "/*")) {
      ClassRecord record;
      ParseHeader(record);
      record.keys = KeysOfHelp(record.description, record.flags);
      return record;
    } else {
      isAfterStar = true;
    }
  }
  return std::nullopt;
}

bool ClassParser::TakeToken(const char* text, const char* after) {
  const std::uint32_t begin = reader_.Offset();
  std::string token;
  reader_.ReadToken(token, MAXTOKEN);
  if (token == text) return true;
  Complain(Format("Expecting '%s' after '%s'", text, after), ".qc file");
  reader_.SeekTo(begin);
  return false;
}

// Of the two slashes that open one the second opens nothing: "//*QUAKED" is no class.
void ClassParser::PassLineComment() {
  if (reader_.PeekChar() == '/') reader_.GetChar();
}

void ClassParser::ParseHeader(ClassRecord& record) {
  record.classname = ReadWord();
  if (NextChar() != '(') {
    Complain("Expecting Colour triad after classname");
    return;
  }
  ParseColour(record);
  ParseBox(record);
  ParseFlags(record);
  ParseTilde(record);
  ParseDescription(record);
}

void ClassParser::ParseColour(ClassRecord& record) {
  const Triad colour = ReadTriad("colour");
  record.red = colour[0];
  record.green = colour[1];
  record.blue = colour[2];
}

void ClassParser::ParseBox(ClassRecord& record) {
  const auto complain = [this] { Complain("Expecting bounding box or ? after colour triad"); };
  const char opening = NextChar();
  // The box that every class begins with is that of brush classes.
  record.isMadeOfBrushes = opening == '?';
  if (record.isMadeOfBrushes) return;
  if (opening != '(') {
    complain();
    return;
  }
  const Triad minimum = ReadTriad("minimum");
  record.minx = ToCoordinate(minimum[0]);
  record.miny = ToCoordinate(minimum[1]);
  record.minz = ToCoordinate(minimum[2]);
  // Meant: the same words once more, and the maximum is read all the same.
  if (NextChar() != '(') complain();
  const Triad maximum = ReadTriad("maximum");
  record.maxx = ToCoordinate(maximum[0]);
  record.maxy = ToCoordinate(maximum[1]);
  record.maxz = ToCoordinate(maximum[2]);
}

// Meant: only blanks part the names.
void ClassParser::ParseFlags(ClassRecord& record) {
  const std::string text = ReadHeaderLine();
  for (std::size_t begin = 0; (begin = text.find_first_not_of(' ', begin)) != text.npos;) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    record.flags.push_back(text.substr(begin, end - begin));
    begin = end;
  }
}

// What is left of it, and no more than so much: a longer line goes on in the description. A comment
// that ends on the line ends it.
std::string ClassParser::ReadHeaderLine() {
  std::string text;
  while (text.size() < MAXFLAGTEXT && !reader_.AtEof()) {
    const char c = static_cast<char>(reader_.GetChar());
    if (c == '\r' || c == '\n') break;
    const char next = static_cast<char>(reader_.PeekChar());
    if ((c == '*' && next == '/') || (c == '/' && next == '*')) {
      reader_.UngetChar();
      break;
    }
    text.push_back(c);
  }
  text.resize(std::min(text.find('\0'), text.size()));
  return text;
}

void ClassParser::ParseTilde(ClassRecord& record) {
  reader_.SkipWhitespace();
  if (reader_.PeekChar() != '~') return;
  reader_.GetChar();
  record.hasTilde = true;
  record.tildeValue = ParseInt(ReadWord());
  reader_.SkipWhitespace();
}

// Up to the next class, or the end of the file, where the comment is not closed.
void ClassParser::ParseDescription(ClassRecord& record) {
  const std::uint32_t begin = reader_.Offset();
  // Meant: the byte behind a star is never the star of the end, so "**/" does not close.
  while (!reader_.AtEof()) {
    reader_.SkipPast('*', true);
    if (OpensClass()) {
      const std::string text = TextBetween(begin, reader_.Offset());
      record.description = WithCrLf(std::string_view(text).substr(0, text.find("*/")));
      return;
    }
    if (!reader_.AtEof() && reader_.GetChar() == '/') {
      record.description = WithCrLf(TextBetween(begin, reader_.Offset() - 2));
      return;
    }
  }
  record.description = WithCrLf(TextBetween(begin, reader_.FileLength()));
}

// Behind a star: whether it is that of another class's "/*QUAKED". The reader is in front of that
// then, else where it was.
bool ClassParser::OpensClass() {
  const std::uint32_t behind = reader_.Offset();
  if (behind < 2) return false;
  reader_.SeekTo(behind - 2);
  bool opens = reader_.GetChar() == '/' && reader_.GetChar() == '*';
  if (opens) {
    std::string token;
    reader_.ReadToken(token, MAXTOKEN);
    opens = token == "QUAKED";
  }
  reader_.SeekTo(opens ? behind - 2 : behind);
  return opens;
}

// The reader stays where it is.
std::string ClassParser::TextBetween(std::uint32_t begin, std::uint32_t end) {
  const std::uint32_t place = reader_.Offset();
  std::string text(end - std::min(begin, end), '\0');
  reader_.SeekTo(begin);
  reader_.ReadBytes(text.data(), static_cast<std::uint32_t>(text.size()));
  reader_.SeekTo(place);
  return text;
}

ClassParser::Triad ClassParser::ReadTriad(const char* name) {
  Triad values;
  for (std::size_t i = 0; i < values.size(); ++i) {
    std::string word = ReadWord();
    if (i == values.size() - 1) {
      if (!word.ends_with(')')) {
        Complain(Format("Expecting ')' to close %s triad", name));
      }
      // Meant: the last byte goes, whether it was the bracket or not.
      if (!word.empty()) word.pop_back();
    }
    values[i] = static_cast<float>(ParseFloat(word));
  }
  return values;
}

// What a comment may end or begin with is left where it is.
char ClassParser::NextChar() {
  reader_.SkipWhitespace();
  const char c = static_cast<char>(reader_.PeekChar());
  if (c != '*' && c != '/') reader_.GetChar();
  return c;
}

// Where a comment ends or begins within it, the word ends there.
std::string ClassParser::ReadWord() {
  reader_.SkipWhitespace();
  const std::uint32_t begin = reader_.Offset();
  std::string word;
  reader_.ReadWord(word, MAXWORD);
  const std::size_t end = std::min(word.find("*/"), word.find("/*"));
  if (end < word.size()) {
    word.resize(end);
    reader_.SeekTo(begin + static_cast<std::uint32_t>(end));
  }
  return word;
}

void ClassParser::Complain(const std::string& what, const char* place) {
  log_.Add(what, place, reader_.LineNumber());
}

}  // namespace ferrowand
