// What a damaged map has kept: its objects held against those of the whole one.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "document/map.h"
#include "support/recorder.h"

namespace ferrowand {

// The objects of a map by what they are: brushes by their faces, all else by its keys.
class Objects {
 public:
  explicit Objects(const Map& map);

  std::size_t Count() const { return owners_.size(); }
  // How many of these are not among the others.
  std::size_t LostIn(const Objects& others) const;
  // How many brushes that had one owner are not with most of its brushes any more.
  std::size_t ScatteredIn(const Objects& others) const;

 private:
  using Owner = const entity*;

  void Add(const entity& e, Owner owner);

  std::unordered_multimap<std::uint64_t, Owner> owners_;
  std::unordered_map<Owner, std::vector<std::uint64_t>> brushes_;
};

// What was said during a load: of the boxes that tell the same the most, and the summaries.
struct Boxes {
  explicit Boxes(const MessageRecorder& recorder);

  std::size_t mostOfAKind = 0;
  std::size_t summaries = 0;
};

}  // namespace ferrowand
