// Templates go along with the instances that are copied, and come with those that are pasted.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "document/entity.h"

namespace ferrowand {

class TextReader;

// All of a text, in a map of its own that has the WADs and the classes of the other one.
std::unique_ptr<Map> ReadFor(const Map& map, TextReader& reader);

// Closed copies of what the instances in the trees, of which none lies within another, show, and of
// what those in turn show: each template once. None that lies in the trees.
std::vector<EntityPtr> TemplatesOf(std::span<entity* const> trees);

struct ArrivingTemplates {
  std::vector<EntityPtr> added;  // for the map to take
  // What they were called, and what they are called here: the map had another of that name.
  std::vector<std::pair<std::string, std::string>> renamed;
};

// Takes all templates out of what has been read for the map `into`, with groups that held nothing
// else. One that the map has already, by all that it shows, is not added again. The instances that
// were read name what is theirs in that map. What no instance could find goes.
ArrivingTemplates TakeTemplates(Map& read, const Map& into);

// Out of a tree that is in no map.
void DropTemplates(entity& tree);

}  // namespace ferrowand
