// What is promised of every file of classes.
#pragma once

#include "document/classes/class_set.h"
#include "support.h"

namespace ferrowand {

// The input as a file of that name: its classes are found by name and by number, a damage is told
// once of its kind, and loaded again all is the same.
inline void CheckClassFile(const char* name, const std::uint8_t* data, std::size_t size) {
  Desk desk;
  ClassLibrary library(desk.path, desk.reporter, desk.progress);
  ClassSet& set = library.Get(Scratch().Write(name, data, size));
  Require(&set != &library.Native() && desk.user.assertions == 0);
  unsigned id = 1000;
  std::string names;
  for (const auto& entityClass : set.Classes()) {
    Require(set.FindClass(entityClass->classname).classname == entityClass->classname);
    Require(set.ClassOfMenuId(id++) == entityClass.get());
    entityClass->ClassColour();
    names += entityClass->classname + '\n';
  }
  const std::size_t said = set.MessageCount();
  Require(set.LoadAgain() && set.MessageCount() == said);
  for (const auto& entityClass : set.Classes()) {
    Require(names.starts_with(entityClass->classname + '\n'));
    names.erase(0, entityClass->classname.size() + 1);
  }
  Require(names.empty());
}

}  // namespace ferrowand
