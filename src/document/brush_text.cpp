// Brushes as text: the lines between the braces of a brush in a map file.
#include <algorithm>
#include <cmath>
#include <string>

#include "base/number_text.h"
#include "base/report.h"
#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/brush.h"
#include "document/written_points.h"
#include "gamedata/wad_library.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXWORD = 200;
// Behind the points of a face: texture name, two offsets, rotation, two scales.
constexpr int WORDS_OF_A_FACE = 6;
// How a face without a texture name is written: a word of no letters to the game's tools, where
// nothing at all would push the numbers behind it into its place.
constexpr std::string_view NO_NAME = "\"\"";

// Reads the faces of one brush.
class FaceReader {
 public:
  FaceReader(TextReader& reader, const WadList& wads) : reader_(reader), wads_(wads) {
    word_.reserve(MAXWORD);
  }

  Vec3 ReadPoint() {
    reader_.SkipWhitespace();
    reader_.Expect('(');
    Vec3 point;
    for (int axis = 0; axis < 3; ++axis) {
      // Whole numbers only: a fraction is cut off, towards zero.
      point[axis] = static_cast<float>(ParseInt(ReadWord()));
    }
    reader_.SkipWhitespace();
    reader_.Expect(')');
    return point;
  }

  void ReadTexture(Face& face) {
    const std::string& name = ReadWord();
    if (name != NO_NAME) face.SetName(name);
    face.texture = wads_.FindTexture(face.Name());
    face.xoff = ReadFloat();
    face.yoff = ReadFloat();
    face.rotation = ReadFloat();
    face.xscale = ReadFloat();
    face.yscale = ReadFloat();
  }

  void SkipTexture() {
    for (int i = 0; i < WORDS_OF_A_FACE; ++i) ReadWord();
  }

 private:
  const std::string& ReadWord() {
    reader_.ReadWord(word_, MAXWORD);
    return word_;
  }

  float ReadFloat() { return static_cast<float>(ParseFloat(ReadWord())); }

  TextReader& reader_;
  const WadList& wads_;
  std::string word_;
};

// For what has been told already.
class SilentSink : public MessageSink {
 public:
  Answer Show(const Message&) override { return Answer::No; }
  void Beep() override {}
  void FatalExit(const std::string&) override {}
  void Exit(int) override {}
};

void PutPoint(TextWriter& out, const WholePoint& p) {
  out.Put("( ");
  for (int axis = 0; axis < 3; ++axis) {
    out.PutInt(static_cast<int>(p[axis]));
    out.Put(' ');
  }
  out.Put(") ");
}

void PutPlanePoints(TextWriter& out, const Face& face) {
  for (const Vec3& p : face.planepts) {
    PutPoint(out, {RoundToInt(p.x), RoundToInt(p.y), RoundToInt(p.z)});
  }
}

void PutPoints(TextWriter& out, const Face& face, Reporter& reporter) {
  const winding* w = face.w.get();
  if (!w || w->numpoints <= 0) reporter.Assert("w->numpoints>0", "brush.cpp", __LINE__);
  if (w && face.HasShape()) {
    for (const WholePoint& p : PointsToWrite(face).points) PutPoint(out, p);
  } else {
    // Nothing that can be written: the face keeps the points that the user gave it.
    PutPlanePoints(out, face);
  }
}

void PutName(TextWriter& out, std::string_view name) {
  if (name.empty()) {
    out.Put(NO_NAME);
    return;
  }
  for (const char c : name) out.Put(c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
}

// All that stands behind the points.
void PutLook(TextWriter& out, const Face& face) {
  PutName(out, face.Name());
  for (const float number : {face.xoff, face.yoff, face.rotation}) {
    out.Put(' ');
    out.PutInt(RoundToInt(number));
  }
  for (const float scale : {face.xscale, face.yscale}) {
    out.Put(' ');
    out.PutFloat(scale);
  }
  out.Put('\n');
}

}  // namespace

unsigned Brush::ReadBody(TextReader& reader, const WadList& wads, unsigned flags,
                         Reporter& reporter) {
  FaceReader faces(reader, wads);
  // Each kind of damage is told once a load.
  const auto firstTime = [&flags](unsigned bit) {
    const bool first = !(flags & bit);
    flags |= bit;
    return first;
  };

  for (bool done = false; !done;) {
    reader.SkipWhitespace();
    if (reader.AtEof()) {
      if (firstTime(READ_END_OF_FILE)) {
        reporter.Parsing(
            "Unexpected end of file in brush definition! Chances are, the end of this file has "
            "been but off, or there are mismatched braces.");
      }
      break;
    }
    const char c = static_cast<char>(reader.PeekChar());
    if (c == '(') {
      const Vec3 p0 = faces.ReadPoint();
      const Vec3 p1 = faces.ReadPoint();
      const Vec3 p2 = faces.ReadPoint();
      if (Face* face = AddFace(p0, p1, p2)) {
        faces.ReadTexture(*face);
        continue;
      }
      if (firstTime(READ_FACES_REPORTED)) {
        reporter.Parsing(
            "At least one brush in this map has too many faces.\n\nThis first occured at line %u.\n"
            " Ferrowand will attempt to continue, but be warned: data will be lost!",
            reader.LineNumber());
      }
      faces.SkipTexture();
    } else if (c == '}' || c == '"') {
      done = true;
    } else {
      reader.GetChar();
      if (c == '/' && reader.PeekChar() == '/') {
        reader.SkipLine();
      } else if (firstTime(READ_CHAR_REPORTED)) {
        reporter.Parsing(
            "An invalid char(%c) was found in brush definition at line:%u.\nThis file may not be a "
            "map file.\n\nFerrowand will attempt to read the rest, but some data may be lost!",
            c, reader.LineNumber());
      }
    }
  }
  // A damaged file may hold any number of faces without a normal.
  const auto flat =
      std::ranges::find_if_not(faces_, [](const Face& face) { return face.plane.HasNormal(); });
  if (flat == faces_.end()) {
    if (MakeWindings(reporter)) {
      DropFacesWithout();
    } else {
      if (firstTime(READ_FAR_REPORTED)) {
        reporter.Parsing(
            "At least one brush in this map lies further than %d units from the origin.\n\nThis "
            "first occurred at line %u.\n It is not shown, but it will be written again as it is.",
            static_cast<int>(WORLD_REACH), reader.LineNumber());
      }
      KeepAsText();
    }
    return flags;
  }
  if (firstTime(READ_PLANE_REPORTED)) BasePolyForPlane(flat->plane, reporter);
  SilentSink sink;
  Reporter silent(sink);
  Rebuild(silent);
  return flags;
}

void Brush::KeepAsText() {
  TextWriter out;
  if (text_) out.Put(*text_);
  for (const Face& face : faces_) {
    out.Put("\t\t");
    PutPlanePoints(out, face);
    PutLook(out, face);
  }
  Clear();
  text_ = std::make_unique<const std::string>(out.Text());
}

void Brush::WriteFaces(TextWriter& out, Reporter& reporter) const {
  for (const Face& face : faces_) {
    out.Put("\t\t");
    PutPoints(out, face, reporter);
    PutLook(out, face);
  }
  if (text_) out.Put(*text_);
}

}  // namespace ferrowand
