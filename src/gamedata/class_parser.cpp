#include "gamedata/class_parser.h"

#include <algorithm>
#include <cstdint>

#include "base/report.h"
#include "base/text_reader.h"

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
  while (!reader_.AtEof()) {
    if (!NextTokenIs("/")) continue;
    // Meant: every other comment of the file is complained of.
    if (!NextTokenIs("*")) {
      reporter_.Parsing("Expecting '*' after '/' in .qc file at line %lu", Line());
    } else if (!NextTokenIs("QUAKED")) {
      reporter_.Parsing("Expecting 'QUAKED' after '/*' in .qc file at line %lu", Line());
    } else {
      ClassRecord record;
      ParseHeader(record);
      return record;
    }
  }
  return std::nullopt;
}

void ClassParser::ParseHeader(ClassRecord& record) {
  record.classname = ReadWord();
  if (NextChar() != '(') {
    reporter_.Parsing("Expecting Colour triad after classname in QC file at line %lu", Line());
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
  const auto complain = [this] {
    reporter_.Parsing("Expecting bounding box or ? after colour triad in QC file at line %lu",
                      Line());
  };
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

// Meant: only a CR ends the names and only blanks part them. In a file with bare line feeds they
// run on into the description.
void ClassParser::ParseFlags(ClassRecord& record) {
  std::string text;
  reader_.ReadUntil('\r', text, MAXFLAGTEXT, true);
  for (std::size_t begin = 0; (begin = text.find_first_not_of(' ', begin)) != text.npos;) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    record.flags.push_back(text.substr(begin, end - begin));
    begin = end;
  }
}

void ClassParser::ParseTilde(ClassRecord& record) {
  reader_.SkipWhitespace();
  if (reader_.PeekChar() != '~') return;
  reader_.GetChar();
  record.hasTilde = true;
  record.tildeValue = ParseInt(ReadWord());
  reader_.SkipWhitespace();
}

// Up to the end of the file where the comment is not closed.
void ClassParser::ParseDescription(ClassRecord& record) {
  const std::uint32_t begin = reader_.Offset();
  bool closed = false;
  // Meant: the byte behind a star is never the star of the end, so "**/" does not close.
  while (!closed && !reader_.AtEof()) {
    reader_.SkipPast('*', true);
    closed = !reader_.AtEof() && reader_.GetChar() == '/';
  }
  const std::uint32_t behind = closed ? reader_.Offset() : reader_.FileLength();
  const std::uint32_t end = closed ? behind - 2 : behind;
  record.description.resize(end - std::min(begin, end));
  reader_.SeekTo(begin);
  reader_.ReadBytes(record.description.data(),
                    static_cast<std::uint32_t>(record.description.size()));
  reader_.SeekTo(behind);
}

ClassParser::Triad ClassParser::ReadTriad(const char* name) {
  Triad values;
  for (std::size_t i = 0; i < values.size(); ++i) {
    std::string word = ReadWord();
    if (i == values.size() - 1) {
      if (!word.ends_with(')')) {
        reporter_.Parsing("Expecting ')' to close %s triad in QC file at line %lu", name, Line());
      }
      // Meant: the last byte goes, whether it was the bracket or not.
      if (!word.empty()) word.pop_back();
    }
    values[i] = static_cast<float>(ParseFloat(word));
  }
  return values;
}

bool ClassParser::NextTokenIs(const char* text) {
  std::string token;
  reader_.ReadToken(token, MAXTOKEN);
  return token == text;
}

char ClassParser::NextChar() {
  reader_.SkipWhitespace();
  return static_cast<char>(reader_.GetChar());
}

std::string ClassParser::ReadWord() {
  std::string word;
  reader_.ReadWord(word, MAXWORD);
  return word;
}

unsigned long ClassParser::Line() const {
  return reader_.LineNumber();
}

}  // namespace ferrowand
