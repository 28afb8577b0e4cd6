// Text assembled in memory. Numbers are written as the C library's "%i" and "%f" would.
#pragma once

#include <string>
#include <string_view>

namespace ferrowand {

class TextWriter {
 public:
  void Put(char c) { text_.push_back(c); }
  void Put(std::string_view s) { text_.append(s); }
  void PutInt(int value);
  // Six decimals.
  void PutFloat(double value);

  const std::string& Text() const { return text_; }
  void Reserve(std::size_t bytes) { text_.reserve(bytes); }

 private:
  std::string text_;
};

// The number alone, as PutFloat writes it.
std::string FloatText(double value);

}  // namespace ferrowand
