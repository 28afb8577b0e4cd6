// Where reading goes on behind a line of a map that makes no sense.
#pragma once

#include <cstdint>

namespace ferrowand {

class TextReader;

inline bool IsLineEnd(std::uint8_t c) {
  return c == '\r' || c == '\n';
}

// Whether a brace or quote in front of the reader's place would be one of the map's own, not a part
// of a word.
bool StandsAlone(const TextReader& reader);

enum class Quotes { PassedOver, StoppedAt };

// Moves to the end of the line, or to a brace in it that stands alone, or to a quote if it is to
// stop there.
void SkipBrokenLine(TextReader& reader, Quotes quotes);

}  // namespace ferrowand
