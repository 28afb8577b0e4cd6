// What a load has met that a map cannot keep. A few kinds have a box of their own, shown at the
// first; how often each kind was met stands in one summary at the end of the load.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace ferrowand {

class Reporter;
class TextReader;
struct Plane;

// Bits of the flag word of a load: how to read, and what has been said already.
inline constexpr unsigned READ_MERGE = 1;           // keep the document's WADs and class set
inline constexpr unsigned READ_FACES_REPORTED = 4;  // "too many faces"
inline constexpr unsigned READ_CHAR_REPORTED = 8;   // "invalid char"
inline constexpr unsigned READ_END_OF_FILE = 16;
inline constexpr unsigned READ_VERSION_REPORTED = 64;
inline constexpr unsigned READ_HAD_WADS = 128;
inline constexpr unsigned READ_HAD_CLASSES = 256;
inline constexpr unsigned READ_PLANE_REPORTED = 512;         // "no axis found"
inline constexpr unsigned READ_PARENTHESIS_REPORTED = 1024;  // "c==chr"
inline constexpr unsigned READ_KEYS_REPORTED = 2048;         // "(numkeys+1)<MAXKEYS"
inline constexpr unsigned READ_FAR_REPORTED = 4096;          // "further from the origin"

enum class Loss : std::uint8_t {
  Character,
  Key,
  Face,
  Number,
  ExtraFace,
  FlatFace,
  Fraction,
  VanishedBrush,
  MissingBrace,
  ExtraBrace,
  Depth,
  ZeroByte,
  NoClass,
  SecondWorld,
  NoMap,
  NothingAtAll,  // no byte: no loss
  // Of files that were written for other games or by other programs.
  ValveAxes,
  SurfaceFlags,
  BrushPrimitive,
  Patch,
  QuarkTexture,
  // Kept as they were read, but nothing shows them.
  LongName,
};
inline constexpr std::size_t LOSSES = static_cast<std::size_t>(Loss::LongName) + 1;

class ReadLog {
 public:
  explicit ReadLog(Reporter& reporter, unsigned flags = 0) : flags(flags), reporter_(&reporter) {}

  // True at the first call for the bit.
  bool FirstTime(unsigned bit);

  // Each with its box.
  void InvalidChar(char c, const char* part, const TextReader& reader);
  void TooManyFaces(const TextReader& reader);
  void EndInBrush();
  void NoNormal(const Plane& plane, const TextReader& reader);
  void TooFar(const TextReader& reader);
  // The byte in front of the reader should have been c. It is not consumed.
  void MissingParenthesis(char c, TextReader& reader);

  // From behind the first slash of a comment to the end of its line.
  void PassComment(TextReader& reader);

  void Count(Loss kind, const TextReader& reader);
  // Plane points with fractions, which are cut off, of a brush; how far that moved a corner of it.
  void CountFractions(unsigned points, double moved, const TextReader& reader);
  void CountFace(bool hasPathName);
  // All but one at the very end, which some programs write. The reader goes through the text again.
  void CountZeroBytes(TextReader& reader);
  unsigned Met(Loss kind) const { return counts_[static_cast<std::size_t>(kind)].met; }

  // Whether writing the map over its file would take away what was there.
  bool HasLoss() const;
  void ShowSummary() const;

  unsigned flags;
  // What the map is saved over has more in it, whatever was met here.
  bool fileHasMore = false;
  // The text has keys of the editor: objects may lie in each other to any depth. In a Quake map
  // only brushes lie in entities.
  bool isExtended = false;

 private:
  struct Counter {
    unsigned met = 0;
    unsigned firstLine = 0;
  };

  bool IsOfOtherGame() const;
  std::string OtherFormat() const;
  std::string Line(Loss kind, const char* text) const;
  bool AllWasShown() const;

  Reporter* reporter_;
  std::array<Counter, LOSSES> counts_{};
  double farthest_ = 0;  // that a corner moved because of a fraction
  unsigned faces_ = 0;
  unsigned facesWithPaths_ = 0;
};

}  // namespace ferrowand
