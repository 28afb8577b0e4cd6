#include "class_files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ferrowand::CheckClassFile("input.def", data, size);
  return 0;
}
