#include "document/face_reader.h"

#include <charconv>
#include <cmath>

#include "base/number_text.h"
#include "base/text_reader.h"
#include "document/broken_line.h"
#include "document/brush.h"
#include "document/read_log.h"
#include "gamedata/wad_library.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXWORD = 200;
constexpr std::size_t MAXNAME = 1u << 20;  // of a texture: as long as its word is
constexpr int SURFACE_FLAGS = 3;           // numbers behind the scales, in later games

bool StartsNumber(std::uint8_t c) {
  return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.';
}

bool IsBlank(std::uint8_t c) {
  return c == ' ' || c == '\t';
}

bool EndsWord(std::uint8_t c) {
  return c == 0 || IsBlank(c) || IsLineEnd(c);
}

}  // namespace

FaceReader::FaceReader(TextReader& reader, const WadList& wads, ReadLog& log)
    : reader_(reader), wads_(wads), log_(log) {}

// Counted once a face.
void FaceReader::Damaged() {
  if (!damaged_) log_.Count(Loss::Number, reader_);
  damaged_ = true;
}

std::optional<PointsRead> FaceReader::ReadPoints() {
  start_ = reader_.Offset();
  damaged_ = false;
  PointsRead points;
  bool isWhole = true;
  for (std::size_t i = 0; i < 3 && isWhole; ++i) {
    bool hasFraction = false;
    isWhole = ReadPoint(points.whole[i], points.exact[i], hasFraction);
    points.fractions += hasFraction;
  }
  if (isWhole && !RunsIntoNextFace()) return points;
  SkipLine();
  log_.Count(Loss::Face, reader_);
  return std::nullopt;
}

// Where a fourth point follows, and the three do not stand on one line, that broke off.
bool FaceReader::RunsIntoNextFace() {
  const std::uint32_t end = reader_.Offset();
  reader_.SkipWhitespace();
  if (reader_.PeekChar() != '(') return false;
  reader_.GetChar();
  reader_.SkipWhitespace();
  const bool isMatrix = reader_.PeekChar() == '(';
  reader_.SeekTo(start_);
  bool crosses = false;
  while (reader_.Offset() < end) crosses |= IsLineEnd(reader_.GetChar());
  return crosses && !isMatrix;
}

bool FaceReader::ReadPoint(Vec3& whole, DVec3& exact, bool& hasFraction) {
  if (!PassParenthesis('(')) return false;
  for (int axis = 0; axis < 3; ++axis) {
    if (!ReadCoordinate(whole[axis], exact[axis], hasFraction)) return false;
  }
  return PassParenthesis(')');
}

// Where one is missing what stands in its place is left alone, unless it is a stray sign.
bool FaceReader::PassParenthesis(char c) {
  reader_.SkipWhitespace();
  const std::uint8_t found = reader_.PeekChar();
  if (found == static_cast<std::uint8_t>(c)) {
    reader_.GetChar();
    return true;
  }
  if (reader_.AtEof()) return false;
  if (!damaged_) log_.MissingParenthesis(c, reader_);
  damaged_ = true;
  if (found == '(') return true;
  if (found == ')' || found == '{' || found == '}' || found == '"') return false;
  reader_.GetChar();
  if (EndsWord(reader_.PeekChar())) return true;
  reader_.UngetChar();
  return c == ')' || StartsNumber(found);
}

// A fraction is cut off, towards zero.
bool FaceReader::ReadCoordinate(float& whole, double& exact, bool& hasFraction) {
  if (reader_.ReadNumberWord(word_, MAXWORD) == 0) return false;
  std::int32_t value = 0;
  const char* const end = word_.data() + word_.size();
  const auto [parsed, error] = std::from_chars(word_.data(), end, value);
  if (error == std::errc() && parsed == end) {
    whole = static_cast<float>(value);
    exact = value;
    return true;
  }
  const std::optional<double> number = ReadNumber(word_);
  value = ParseInt(word_);
  whole = static_cast<float>(value);
  exact = number.value_or(value);
  if (!number || std::abs(*number - value) >= 1) {
    Damaged();
  } else {
    hasFraction |= *number != value;
  }
  return true;
}

bool FaceReader::ReadFloat(float& number) {
  if (reader_.ReadNumberWord(word_, MAXWORD) == 0) return false;
  double value = 0;
  const char* const end = word_.data() + word_.size();
  const auto [parsed, error] = std::from_chars(word_.data(), end, value);
  if (error == std::errc() && parsed == end && std::abs(value) < 1e30) {
    number = static_cast<float>(value);
    return true;
  }
  number = static_cast<float>(ParseFloat(word_));
  if (!ReadNumber(word_)) Damaged();
  return true;
}

// Some textures, those with holes, have a brace in front of their name; a number follows it.
bool FaceReader::IsBraceOfName() {
  const std::uint32_t offset = reader_.Offset();
  const bool isName = reader_.ReadPlainWord(word_, MAXNAME) > 1 && NumberOnLine();
  reader_.SeekTo(offset);
  return isName;
}

bool FaceReader::ReadName(std::string& name) {
  reader_.SkipWhitespace();
  const std::uint8_t first = reader_.PeekChar();
  if (reader_.AtEof() || first == '(' || first == ')') return false;
  if ((first == '{' || first == '}') && !IsBraceOfName()) return false;
  const std::uint32_t offset = reader_.Offset();
  const std::size_t length = reader_.ReadPlainWord(name, MAXNAME);
  const bool isComment = name.starts_with("//");
  if (isComment || (first == '"' && name != NO_TEXTURE_NAME)) {
    reader_.SeekTo(offset);
    return false;
  }
  return length > 0;
}

// Two of four numbers each; the last one is the offset, the others are not kept.
bool FaceReader::ReadAxes(Face& face) {
  for (float* const offset : {&face.xoff, &face.yoff}) {
    reader_.SkipWhitespace();
    if (reader_.GetChar() != '[') return false;
    for (int i = 0; i < 4; ++i) {
      if (!ReadFloat(*offset)) return false;
    }
    reader_.SkipWhitespace();
    if (reader_.GetChar() != ']') return false;
  }
  log_.Count(Loss::ValveAxes, reader_);
  return true;
}

bool FaceReader::ReadPlacing(Face& face) {
  if (ReadFloat(face.xoff)) {
    if (!ReadFloat(face.yoff)) return false;
  } else if (reader_.PeekChar() != '[' || !ReadAxes(face)) {
    return false;
  }
  return ReadFloat(face.rotation) && ReadFloat(face.xscale) && ReadFloat(face.yscale);
}

// In front of the name, in double parentheses, where a face of a later game has its placing.
bool FaceReader::SkipMatrix() {
  reader_.SkipWhitespace();
  if (reader_.PeekChar() != '(') return false;
  const std::uint32_t offset = reader_.Offset();
  reader_.GetChar();
  reader_.SkipWhitespace();
  if (reader_.PeekChar() != '(') {
    reader_.SeekTo(offset);
    return false;
  }
  for (int open = 1; open > 0 && !reader_.AtEof() && !IsLineEnd(reader_.PeekChar());) {
    const std::uint8_t c = reader_.GetChar();
    open += c == '(' ? 1 : c == ')' ? -1 : 0;
  }
  log_.Count(Loss::BrushPrimitive, reader_);
  return true;
}

bool FaceReader::NumberOnLine() {
  while (IsBlank(reader_.PeekChar())) reader_.GetChar();
  return StartsNumber(reader_.PeekChar());
}

void FaceReader::ReadSurfaceFlags() {
  const std::uint8_t first = NumberOnLine() ? reader_.PeekChar() : 0;
  int flags = 0;
  while (flags < SURFACE_FLAGS && NumberOnLine()) {
    reader_.ReadNumberWord(word_, MAXWORD);
    ++flags;
  }
  if (flags == SURFACE_FLAGS) {
    log_.Count(Loss::SurfaceFlags, reader_);
  } else if (flags > 0) {
    log_.InvalidChar(static_cast<char>(first), "brush", reader_);
  }
}

void FaceReader::ReadTexture(Face& face) {
  face.xscale = face.yscale = 1;
  const bool hasMatrix = SkipMatrix();
  if (!ReadName(word_)) return BreakOff();
  if (word_ != NO_TEXTURE_NAME) face.SetName(word_);
  if (face.longName) log_.Count(Loss::LongName, reader_);
  log_.CountFace(word_.find('/') != std::string::npos);
  face.texture = wads_.FindTexture(face.Name());
  if (!hasMatrix && !ReadPlacing(face)) return BreakOff();
  if (IsBlank(reader_.PeekChar())) ReadSurfaceFlags();
}

void FaceReader::BreakOff() {
  SkipLine();
  Damaged();
}

void FaceReader::SkipLine() {
  reader_.SeekTo(start_);
  SkipBrokenLine(reader_, Quotes::StoppedAt);
}

}  // namespace ferrowand
