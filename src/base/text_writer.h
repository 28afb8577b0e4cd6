// Text assembled in memory. Numbers are written as the C library's "%i" and "%f" would.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace ferrowand {

class TextWriter {
 public:
  void Put(char c) {
    *Room(1) = c;
    ++size_;
  }
  void Put(std::string_view s) { size_ += s.copy(Room(s.size()), s.size()); }
  void PutInt(int value);
  // Six decimals.
  void PutFloat(double value);

  // Until something more is put.
  std::string_view Text() const { return {text_.get(), size_}; }
  void Reserve(std::size_t bytes) { Room(bytes); }

 private:
  // Behind the text, for so many characters at least.
  char* Room(std::size_t bytes) {
    if (capacity_ - size_ < bytes) Grow(bytes);
    return text_.get() + size_;
  }
  void Grow(std::size_t bytes);

  // No string: numbers are written right where they stay, and no end is kept behind each character.
  std::unique_ptr<char[]> text_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

// The number alone, as PutFloat writes it.
std::string FloatText(double value);

}  // namespace ferrowand
