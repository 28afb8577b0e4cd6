#include "document/classes/class_set.h"
#include "support.h"

using namespace ferrowand;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Desk desk;
  ClassLibrary library(desk.path, desk.reporter, desk.progress);
  ClassSet& set = library.Get(Scratch().Write("input.qc", data, size));
  Require(&set != &library.Native() && desk.user.assertions == 0);
  unsigned id = 1000;
  for (const auto& entityClass : set.Classes()) {
    Require(set.FindClass(entityClass->classname).classname == entityClass->classname);
    Require(set.ClassOfMenuId(id++) == entityClass.get());
    entityClass->ClassColour();
  }
  return 0;
}
