// One face after the other out of the text of a map: three points, a texture's name and how it
// lies. A face takes nothing that belongs to what follows: no brace, no quote, and when its line
// breaks off nothing of the next line.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "geometry/vec.h"

namespace ferrowand {

class ReadLog;
class TextReader;
class WadList;
struct Face;

struct PointsRead {
  std::array<Vec3, 3> whole;
  std::array<DVec3, 3> exact;
  unsigned fractions = 0;  // points that are not whole
};

class FaceReader {
 public:
  FaceReader(TextReader& reader, const WadList& wads, ReadLog& log);

  // Nothing when the face cannot be known: told, and the reader is behind its line.
  std::optional<PointsRead> ReadPoints();
  // What is missing keeps what a new face has.
  void ReadTexture(Face& face);

 private:
  bool ReadPoint(Vec3& whole, DVec3& exact, bool& hasFraction);
  bool RunsIntoNextFace();
  bool PassParenthesis(char c);
  bool ReadCoordinate(float& whole, double& exact, bool& hasFraction);
  bool ReadFloat(float& number);
  bool ReadName(std::string& name);
  bool IsBraceOfName();
  bool ReadAxes(Face& face);
  bool ReadPlacing(Face& face);
  bool SkipMatrix();
  void ReadSurfaceFlags();
  bool NumberOnLine();
  void Damaged();
  void BreakOff();
  void SkipLine();

  TextReader& reader_;
  const WadList& wads_;
  ReadLog& log_;
  std::string word_;
  std::uint32_t start_ = 0;  // offset of the face
  bool damaged_ = false;     // of which that has been counted
};

}  // namespace ferrowand
