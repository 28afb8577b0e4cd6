#include "document/broken_line.h"

#include <string_view>

#include "base/text_reader.h"

namespace ferrowand {

bool StandsAlone(const TextReader& reader) {
  constexpr std::string_view NEIGHBOURS(" \t\r\n\0({}\"/", 10);
  return NEIGHBOURS.find(static_cast<char>(reader.PeekChar())) != NEIGHBOURS.npos;
}

void SkipBrokenLine(TextReader& reader, Quotes quotes) {
  while (!reader.AtEof() && !IsLineEnd(reader.PeekChar())) {
    const std::uint8_t c = reader.GetChar();
    if (c == '"' && quotes == Quotes::StoppedAt) {
      // Two in a row stand for a name.
      if (reader.PeekChar() != '"') return reader.UngetChar();
      reader.GetChar();
    } else if ((c == '{' || c == '}') && StandsAlone(reader)) {
      return reader.UngetChar();
    }
  }
}

}  // namespace ferrowand
