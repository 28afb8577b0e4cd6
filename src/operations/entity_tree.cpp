#include "operations/entity_tree.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "operations/layers.h"
#include "operations/links.h"

namespace ferrowand {
namespace {

constexpr const char* NAME_KEY = "XMPentityname";

EntityKind KindOf(const entity& e) {
  return e.getClass()->Kind();
}

bool IsNamed(const entity& e) {
  const char* name = e.GetKey(NAME_KEY);
  return name && *name;
}

// A template is kept out of sight, which nobody calls hidden.
bool IsHidden(const entity& e) {
  return KindOf(e) != EntityKind::TemplateClass && !e.IsVisible();
}

bool IsDisabled(const entity& e) {
  const EntityKind kind = KindOf(e);
  return kind != EntityKind::TemplateClass && kind != EntityKind::Hidden && !e.IsEnabled();
}

bool AnyAbove(const entity& e, bool (*is)(const entity&)) {
  const entity* at = e.Parent();
  while (at && at->Parent() && !is(*at)) at = at->Parent();
  return at && at->Parent();
}

// Of its name, its class or its links.
bool Tells(const entity& e, const TextPattern& word) {
  if (word.Matches(ShownClass(e))) return true;
  const EntityClass& own = *e.getClass();
  for (int i = 0; i < e.numkeys(); ++i) {
    const std::string& key = e.KeyName(i);
    const bool counts = EqualNoCase(key, NAME_KEY) || IsNameKey(own, key) || IsLinkKey(own, key);
    if (counts && word.Matches(e.KeyValue(i))) return true;
  }
  return false;
}

void AddWord(std::string& text, std::string_view word) {
  if (!text.empty()) text += ", ";
  text += word;
}

std::string LinksInWords(const entity& e) {
  std::string names, targets;
  for (int i = 0; i < e.numkeys(); ++i) {
    if (e.KeyValue(i).empty()) continue;
    if (IsNameKey(*e.getClass(), e.KeyName(i))) names += e.KeyValue(i) + " ";
    if (IsLinkKey(*e.getClass(), e.KeyName(i))) targets += "-> " + e.KeyValue(i) + " ";
  }
  std::string text = names + targets;
  if (!text.empty()) text.pop_back();
  return text;
}

std::string StateInWords(const entity& e) {
  const Map& map = *e.OwningMap();
  std::string text;
  if (IsHidden(e)) {
    AddWord(text, "hidden");
  } else if (AnyAbove(e, IsHidden)) {
    AddWord(text, "(hidden)");
  }
  if (IsDisabled(e)) {
    AddWord(text, "disabled");
  } else if (AnyAbove(e, IsDisabled)) {
    AddWord(text, "(disabled)");
  }
  const bool isTemplate = KindOf(e) == EntityKind::TemplateClass;
  if (isTemplate && IsOpened(e)) AddWord(text, "opened");
  if (&e == map.leadingGroup()) AddWord(text, "leading");
  if (&e == map.currentLayer() && !map.leadingGroup()) AddWord(text, "current");
  return text;
}

std::string DetailsInWords(const entity& e) {
  if (HoldsObjects(e)) {
    const std::size_t count = e.getEntityList().size();
    return std::to_string(count) + (count == 1 ? " object" : " objects");
  }
  const char* place = e.HasOrigin() ? e.GetKey("origin") : nullptr;
  return place ? place : "";
}

}  // namespace

bool IsNamelessBrush(const entity& e) {
  if (!e.getEntityList().empty() || e.HasOrigin()) return false;
  const EntityKind kind = KindOf(e);
  if (kind != EntityKind::Brush && kind != EntityKind::Hidden) return false;
  if (kind == EntityKind::Hidden && ShownClass(e) != "brush") return false;
  return e.brush.HasText() && !IsNamed(e);
}

std::string_view ShownClass(const entity& e) {
  const char* name = e.GetKey("classname");
  if (KindOf(e) == EntityKind::Hidden) {
    name = e.GetKey("XMPoldclassname");
    if (!name) name = "brush";
  }
  return name ? name : "unknown";
}

std::string_view TreeLabel(const entity& e) {
  const char* name = e.GetKey(NAME_KEY);
  if (name && *name) return name;
  const bool isGroup = KindOf(e) == EntityKind::Brush && !e.getEntityList().empty();
  return isGroup ? "group" : ShownClass(e);
}

bool HoldsObjects(const entity& e) {
  return OnlyHolds(e) || !e.getEntityList().empty();
}

std::string CellText(const entity& e, ObjectColumn column) {
  switch (column) {
    case ObjectColumn::Name:
      return std::string(TreeLabel(e));
    case ObjectColumn::Class:
      return TreeLabel(e) == ShownClass(e) ? "" : std::string(ShownClass(e));
    case ObjectColumn::Links:
      return LinksInWords(e);
    case ObjectColumn::State:
      return StateInWords(e);
    case ObjectColumn::Details:
      return DetailsInWords(e);
  }
  return "";
}

EntityTree::EntityTree(Map& map) : map_(map) {
  Build();
}

std::optional<std::size_t> EntityTree::RowOf(const entity& e) const {
  const auto row = std::ranges::find(rows_, &e, &TreeRow::e);
  if (row == rows_.end()) return std::nullopt;
  return static_cast<std::size_t>(row - rows_.begin());
}

// A brush that was dragged along is in `changed` alone.
TreeUpdate EntityTree::Follow(const MapChange& change) {
  const bool others = change.everything || !change.came.empty() || !change.went.empty() ||
                      !change.moved.empty() || !change.before.empty();
  if (!others) return change.target ? TreeUpdate::Texts : TreeUpdate::None;
  const std::vector<entity*> layers = LayersOf(map_);
  const bool hasLayer =
      std::ranges::any_of(layers, [this](const entity* layer) { return layer == filter_.layer; });
  if (!hasLayer) filter_.layer = nullptr;
  const std::vector<TreeRow> before = std::move(rows_);
  Build();
  return rows_ == before ? TreeUpdate::Texts : TreeUpdate::Rows;
}

void EntityTree::SetFilter(TreeFilter filter) {
  if (filter == filter_) return;
  filter_ = std::move(filter);
  words_ = PatternsOfWords(filter_.text);
  restricts_ =
      !words_.empty() || !filter_.classname.empty() || filter_.onlyPoints || filter_.onlyNamed;
  folded_.clear();
  Build();
}

bool EntityTree::IsNodeOpen(const entity& e) const {
  if (restricts_) return !folded_.contains(&e);
  return (KindOf(e) == EntityKind::Layer) != turned_.contains(&e);
}

void EntityTree::SetOpen(const entity& e, bool isOpen) {
  if (IsNodeOpen(e) == isOpen) return;
  auto& set = restricts_ ? folded_ : turned_;
  if (set.erase(&e) == 0) set.insert(&e);
  Build();
}

bool EntityTree::Reveal(const entity& e) {
  for (const entity* at = e.Parent(); at && at->Parent(); at = at->Parent()) {
    if (IsNodeOpen(*at)) continue;
    auto& set = restricts_ ? folded_ : turned_;
    if (set.erase(at) == 0) set.insert(at);
  }
  const std::optional<std::size_t> row = RowOf(e);
  if (row) return true;
  Build();
  return RowOf(e).has_value();
}

std::optional<std::size_t> EntityTree::Find(std::string_view beginning, std::size_t from) const {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const std::size_t row = (from + i) % rows_.size();
    if (EqualNoCase(TreeLabel(*rows_[row].e).substr(0, beginning.size()), beginning)) return row;
  }
  return std::nullopt;
}

// --- the rows

void EntityTree::Build() {
  rows_.clear();
  numFound_ = 0;
  for (const EntityPtr& child : map_.getEntityList()) {
    if (!filter_.layer || child.get() == filter_.layer) Add(*child, 0);
  }
}

bool EntityTree::IsWanted(const entity& e) const {
  return filter_.brushes || !IsNamelessBrush(e);
}

bool EntityTree::IsSwitchedOff(const entity& e) const {
  return (!filter_.hidden && IsHidden(e)) || (!filter_.disabled && IsDisabled(e));
}

bool EntityTree::Passes(const entity& e) const {
  if (!filter_.classname.empty() && ShownClass(e) != filter_.classname) return false;
  if (filter_.onlyNamed && !IsNamed(e)) return false;
  if (filter_.onlyPoints && !e.HasOrigin()) return false;
  return std::ranges::all_of(words_, [&](const TextPattern& word) { return Tells(e, word); });
}

bool EntityTree::Add(entity& e, std::uint16_t depth) {
  if (!IsWanted(e) || IsSwitchedOff(e)) return false;
  const std::size_t row = rows_.size();
  const bool passes = !restricts_ || Passes(e);
  rows_.push_back({&e, depth, false, IsNodeOpen(e)});
  if (passes && !OnlyHolds(e)) ++numFound_;
  AddBelow(e, depth);
  if (passes || rows_[row].canOpen) return true;
  rows_.pop_back();
  return false;
}

void EntityTree::AddBelow(entity& e, std::uint16_t depth) {
  const std::size_t row = rows_.size() - 1;
  const auto& children = e.getEntityList();
  const bool isOpen = rows_[row].isOpen;
  if (!isOpen && !restricts_) {
    rows_[row].canOpen = std::ranges::any_of(children, [this](const EntityPtr& child) {
      return IsWanted(*child) && !IsSwitchedOff(*child);
    });
    return;
  }
  bool any = false;
  for (const EntityPtr& child : children) {
    if (Add(*child, static_cast<std::uint16_t>(depth + 1))) any = true;
  }
  // What is found is counted, folded away or not.
  if (!isOpen) rows_.resize(row + 1);
  rows_[row].canOpen = any;
  rows_[row].isOpen = isOpen && any;
}

}  // namespace ferrowand
