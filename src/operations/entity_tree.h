// The objects of a map as the rows of a tree: layers, groups, brush entities, entities, templates,
// embedded maps. It is a list, in the order of the map, of what is not folded away and passes the
// filter, so that a window can show any part of it at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/text_pattern.h"
#include "document/announcement.h"

namespace ferrowand {

struct TreeFilter {
  std::string text{};             // words, each part of the name, the class or a name of a link
  std::string classname{};        // empty: of any class
  const entity* layer = nullptr;  // null: in any layer
  bool hidden = true;             // shows what cannot be seen ...
  bool disabled = true;           // ... or not be reached
  bool onlyPoints = false;
  bool onlyNamed = false;
  bool brushes = false;  // shows brushes that have no name

  friend bool operator==(const TreeFilter&, const TreeFilter&) = default;
};

struct TreeRow {
  entity* e;
  std::uint16_t depth;  // 0 for what stands in the map itself
  bool canOpen;         // there are rows below it
  bool isOpen;

  friend bool operator==(const TreeRow&, const TreeRow&) = default;
};

enum class TreeUpdate {
  None,
  Texts,  // the rows are the same and may say something else
  Rows
};

class EntityTree {
 public:
  explicit EntityTree(Map& map);

  // Their objects are in the map until it announces something.
  const std::vector<TreeRow>& Rows() const { return rows_; }
  std::optional<std::size_t> RowOf(const entity& e) const;
  // How many rows there are of what passes the filter: what only holds objects is not counted, nor
  // is what is shown for the sake of what it holds.
  std::size_t NumFound() const { return numFound_; }

  // To be told of every change of the map.
  TreeUpdate Follow(const MapChange& change);

  const TreeFilter& Filter() const { return filter_; }
  void SetFilter(TreeFilter filter);
  void SetOpen(const entity& e, bool isOpen);
  // Opens what holds the object. Whether it has a row.
  bool Reveal(const entity& e);
  // The row from there on, and then from the beginning, whose label begins so, in any case.
  std::optional<std::size_t> Find(std::string_view beginning, std::size_t from) const;

 private:
  void Build();
  bool Add(entity& e, std::uint16_t depth);
  void AddBelow(entity& e, std::uint16_t depth);
  bool IsWanted(const entity& e) const;
  bool IsSwitchedOff(const entity& e) const;
  bool Passes(const entity& e) const;
  bool IsNodeOpen(const entity& e) const;

  Map& map_;
  TreeFilter filter_;
  std::vector<TextPattern> words_;
  bool restricts_ = false;  // the filter wants some objects only, wherever they are
  // By address alone: layers are open unless they are here, all else is folded unless it is. What
  // is found by a filter is open unless folded since.
  std::unordered_set<const entity*> turned_, folded_;
  std::vector<TreeRow> rows_;
  std::size_t numFound_ = 0;
};

// Most objects of a map: brushes that nobody has given a name.
bool IsNamelessBrush(const entity& e);
// The class of the object; of what is hidden the one that it will have again.
std::string_view ShownClass(const entity& e);
// Its name, or else its class.
std::string_view TreeLabel(const entity& e);
// What lists of objects say of each in their columns.
enum class ObjectColumn {
  Name,    // or else the class
  Class,   // unless that stands for the name
  Links,   // what it is called and what it targets: "door1", "-> door2"
  State,   // "hidden", "disabled", "current", "leading", "opened"; in brackets what holds it is so
  Details  // how much it holds, or where it stands
};
std::string CellText(const entity& e, ObjectColumn column);
// Whether objects may be put into it: layers, groups, brush entities, templates.
bool HoldsObjects(const entity& e);

}  // namespace ferrowand
