// Keys and values out of the text of a map: two quoted texts, on one line as a rule. There is no
// escaping, and no limit to their length.
#pragma once

#include <cstdint>
#include <string>

namespace ferrowand {

class ReadLog;
class TextReader;

class KeyReader {
 public:
  KeyReader(TextReader& reader, ReadLog& log) : reader_(reader), log_(log) {}

  // From the opening quote of the key to behind the closing one of the value. A value that does not
  // end where it should is cut off with its line; false, and the line passed over, when there is no
  // telling the two apart. Both are told.
  bool Read();

  std::string name, value;  // as read last; a zero byte ends each

 private:
  bool ReadQuoted(std::string& text);
  bool FindValue(bool& onNextLine);
  bool ReadValue(bool onNextLine);
  unsigned QuotesToLineEnd();
  void CutAtNul(std::string& text);
  bool Fail();

  TextReader& reader_;
  ReadLog& log_;
};

}  // namespace ferrowand
