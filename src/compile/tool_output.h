// What the tools of a run have printed, in lines, and what this program says beside it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "geometry/vec.h"

namespace ferrowand {

enum class LineKind : std::uint8_t { Plain, Heading, Warning, Error };

// What a line names; each where it does. Numbers as the tools count: in the order of the Quake map.
struct NamedPlace {
  std::optional<int> entity;
  std::optional<int> brush;  // of that entity, or of the world
  std::optional<Vec3> point;

  bool IsNone() const { return !entity && !brush && !point; }
};
NamedPlace PlaceIn(std::string_view line);

class ToolOutput {
 public:
  static constexpr std::size_t MAXBYTES = std::size_t{16} << 20;  // then the oldest lines go
  static constexpr std::size_t MAXLINE = 1000;  // a longer one goes on in the next

  struct Line {
    std::string text;
    LineKind kind = LineKind::Plain;
  };

  // Any bytes, as they come: a line may come in pieces. A carriage return alone begins its line
  // anew, as tools that count do; colours and other commands to a terminal are left out.
  void Append(std::string_view bytes);
  // The line under way ends, if there is one; the next tool is not read on from it.
  void EndTool();
  // A line of this program's own.
  void Say(LineKind kind, std::string text);

  // With the one under way.
  std::size_t size() const { return lines_.size() + (open_.empty() ? 0 : 1); }
  std::size_t Finished() const { return lines_.size(); }
  Line At(std::size_t index) const;
  // Lines that went; the first one says so then.
  std::size_t Dropped() const { return dropped_; }
  // Every line, each with its end.
  std::string Text() const;

 private:
  enum class Escape : std::uint8_t { None, Begun, Command, Title };

  void Put(char c);
  bool IsPartOfCommand(char c);
  void Close();
  void Keep(Line line);
  LineKind KindOf(std::string_view text);

  std::deque<Line> lines_;
  std::string open_;
  bool returns_ = false;       // a carriage return came, and nothing since
  bool errorFollows_ = false;  // the line before was a heading of stars
  Escape escape_ = Escape::None;
  std::size_t bytes_ = 0;
  std::size_t dropped_ = 0;
};

}  // namespace ferrowand
