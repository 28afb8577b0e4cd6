#include "document/read_log.h"

#include <algorithm>
#include <utility>

#include "base/report.h"
#include "base/text_reader.h"
#include "geometry/winding.h"

namespace ferrowand {
namespace {

constexpr std::pair<Loss, const char*> LOSS_TEXTS[] = {
    {Loss::Character, "characters that belong nowhere"},
    {Loss::Key, "keys or values that do not end on their line"},
    {Loss::Face, "faces without three points, left out"},
    {Loss::Number, "faces with a sign, number or name missing or damaged"},
    {Loss::ExtraFace, "faces beyond the 32 of a brush, left out"},
    {Loss::FlatFace, "brushes with a face whose points make no plane"},
    {Loss::Fraction, "plane points with fractions, which are cut off"},
    {Loss::VanishedBrush, "brushes of which nothing is left"},
    {Loss::MissingBrace, "braces missing"},
    {Loss::ExtraBrace, "closing braces too many"},
    {Loss::Depth, "objects nested too deep, set side by side"},
    {Loss::ZeroByte, "zero bytes, as after a power cut"},
    {Loss::NoClass, "objects with keys and no classname"},
    {Loss::SecondWorld, "more worldspawns, joined with the first, whose own keys stay"},
    {Loss::ValveAxes, "faces with texture axes of their own"},
    {Loss::SurfaceFlags, "faces with surface flags"},
    {Loss::BrushPrimitive, "faces with a texture matrix"},
    {Loss::Patch, "curves and other shapes that are no brushes, left out"},
    {Loss::QuarkTexture, "comments of QuArK"},
};

}  // namespace

bool ReadLog::FirstTime(unsigned bit) {
  const bool first = !(flags & bit);
  flags |= bit;
  return first;
}

void ReadLog::InvalidChar(char c, const char* part, const TextReader& reader) {
  Count(Loss::Character, reader);
  if (!FirstTime(READ_CHAR_REPORTED)) return;
  reporter_->Parsing(
      "An invalid char(%c) was found in %s definition at line:%u.\nThis file may not be a map "
      "file.\n\nFerrowand will attempt to read the rest, but some data may be lost!",
      c, part, reader.LineNumber());
}

void ReadLog::TooManyFaces(const TextReader& reader) {
  Count(Loss::ExtraFace, reader);
  if (!FirstTime(READ_FACES_REPORTED)) return;
  reporter_->Parsing(
      "At least one brush in this map has too many faces.\n\nThis first occured at line %u.\n "
      "Ferrowand will attempt to continue, but be warned: data will be lost!",
      reader.LineNumber());
}

void ReadLog::EndInBrush() {
  if (!FirstTime(READ_END_OF_FILE)) return;
  reporter_->Parsing(
      "Unexpected end of file in brush definition! Chances are, the end of this file has been but "
      "off, or there are mismatched braces.");
}

void ReadLog::NoNormal(const Plane& plane, const TextReader& reader) {
  Count(Loss::FlatFace, reader);
  if (FirstTime(READ_PLANE_REPORTED)) BasePolyForPlane(plane, *reporter_);
}

// It is kept, and so no loss.
void ReadLog::TooFar(const TextReader& reader) {
  if (!FirstTime(READ_FAR_REPORTED)) return;
  reporter_->Parsing(
      "At least one brush in this map lies further than %d units from the origin.\n\nThis first "
      "occurred at line %u.\n It is not shown, but it will be written again as it is.",
      static_cast<int>(WORLD_REACH), reader.LineNumber());
}

void ReadLog::MissingParenthesis(char c, TextReader& reader) {
  Count(Loss::Number, reader);
  if (!FirstTime(READ_PARENTHESIS_REPORTED)) return;
  reader.Expect(c);
  reader.UngetChar();
}

void ReadLog::PassComment(TextReader& reader) {
  std::string text;
  while (!reader.AtEof() && reader.PeekChar() != '\r' && reader.PeekChar() != '\n') {
    text += static_cast<char>(reader.GetChar());
  }
  if (text == "/TX1" || text == "/TX2" || text.find("QuArK") != std::string::npos) {
    Count(Loss::QuarkTexture, reader);
  }
}

// The number of a line is worth looking for once a kind.
void ReadLog::Count(Loss kind, const TextReader& reader) {
  Counter& counter = counts_[static_cast<std::size_t>(kind)];
  if (counter.met++ == 0) counter.firstLine = reader.LineNumber();
}

void ReadLog::CountFractions(unsigned points, double moved, const TextReader& reader) {
  Count(Loss::Fraction, reader);
  counts_[static_cast<std::size_t>(Loss::Fraction)].met += points - 1;
  farthest_ = std::max(farthest_, moved);
}

void ReadLog::CountZeroBytes(TextReader& reader) {
  reader.SeekTo(0);
  while (reader.Offset() + 1 < reader.FileLength()) {
    if (reader.GetChar() == 0) Count(Loss::ZeroByte, reader);
  }
}

void ReadLog::CountFace(bool hasPathName) {
  ++faces_;
  facesWithPaths_ += hasPathName;
}

// Its textures are files in folders; here they have plain names.
bool ReadLog::IsOfOtherGame() const {
  return facesWithPaths_ > 0 && 2 * facesWithPaths_ >= faces_;
}

// A face without a plane is kept with its points.
bool ReadLog::HasLoss() const {
  return fileHasMore || IsOfOtherGame() || Met(Loss::NoMap) > 0 ||
         std::ranges::any_of(LOSS_TEXTS, [this](const auto& text) {
           return text.first != Loss::FlatFace && Met(text.first) > 0;
         });
}

// What the file is, where it is no Quake map, and what it has that a Quake map has not.
std::string ReadLog::OtherFormat() const {
  if (Met(Loss::NoMap)) return "There is no map in this file.";
  if (Met(Loss::NothingAtAll)) return "There is nothing in this file.";
  if (Met(Loss::ValveAxes)) {
    return "This is a map in the Valve 220 format. Its texture axes are not kept: textures lie as "
           "in a Quake map.";
  }
  if (Met(Loss::Patch) || Met(Loss::BrushPrimitive)) {
    return "This is a map for Quake 3 or a later game. Its curves, its texture matrices (brush "
           "primitives) and its surface flags are not kept.";
  }
  if (Met(Loss::SurfaceFlags)) {
    return "This is a map for Quake 2 or Quake 3. The surface flags of its faces are not kept.";
  }
  if (IsOfOtherGame()) {
    return "This is a map for Quake 2 or Quake 3. Its textures are files in folders, which no WAD "
           "holds.";
  }
  if (Met(Loss::QuarkTexture)) {
    return "This map was written by QuArK. Its comments are not kept, nor the exact places "
           "of textures that stand in them.";
  }
  return "";
}

std::string ReadLog::Line(Loss kind, const char* text) const {
  const Counter& counter = counts_[static_cast<std::size_t>(kind)];
  if (counter.met == 0) return "";
  std::string line = Format("\n%u %s, the first in line %u", counter.met, text, counter.firstLine);
  if (kind == Loss::Fraction) line += Format("; a corner moved by up to %.2f units", farthest_);
  return line;
}

// What was met once and had a box needs no second one.
bool ReadLog::AllWasShown() const {
  for (std::size_t kind = 0; kind < LOSSES; ++kind) {
    const bool hasBox = kind == static_cast<std::size_t>(Loss::Character) ||
                        kind == static_cast<std::size_t>(Loss::ExtraFace) ||
                        kind == static_cast<std::size_t>(Loss::FlatFace);
    if (counts_[kind].met > (hasBox ? 1u : 0u)) return false;
  }
  return !IsOfOtherGame();
}

void ReadLog::ShowSummary() const {
  if (AllWasShown()) return;
  std::string text = OtherFormat();
  std::string losses;
  for (const auto& [kind, name] : LOSS_TEXTS) losses += Line(kind, name);
  if (!losses.empty()) {
    if (!text.empty()) text += "\n\n";
    text += "Not all of this file could be read as it stands:\n" + losses;
  }
  if (HasLoss()) text += "\n\nSaving the map over its file would lose this for good.";
  const std::string names = Line(Loss::LongName, "texture names longer than 15 characters");
  if (!names.empty()) {
    text += (text.empty() ? "" : "\n") + names + ". Such faces show no texture; the name is kept.";
  }
  reporter_->Show("Parsing Error", text.substr(text.find_first_not_of('\n')));
}

}  // namespace ferrowand
