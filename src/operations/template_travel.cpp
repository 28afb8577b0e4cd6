#include "operations/template_travel.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "base/path_text.h"
#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/classes/template_index.h"
#include "document/map.h"
#include "document/reach.h"
#include "document/read_log.h"

namespace ferrowand {
namespace {

bool IsTemplate(const entity& e) {
  return e.getClass()->Kind() == EntityKind::TemplateClass;
}

std::string NameOf(const entity& templateClass) {
  const char* name = templateClass.GetKey("XMPentityname");
  return name ? name : "";
}

template <typename Visit>
void ForEachBelow(const entity& tree, const Visit& visit) {
  for (const EntityPtr& child : tree.getEntityList()) {
    visit(*child);
    ForEachBelow(*child, visit);
  }
}

// In map order: what lies within another stands behind it.
std::vector<entity*> TemplatesIn(const entity& tree) {
  std::vector<entity*> found;
  ForEachBelow(tree, [&](entity& e) {
    if (IsTemplate(e)) found.push_back(&e);
  });
  return found;
}

EntityPtr ClosedCopy(const entity& templateClass) {
  EntityPtr copy = templateClass.Copy();
  PutBack(*copy);
  return copy;
}

// Numbers for what templates hold, the same for the same: of any maps whose objects have been read,
// since what is read may be written otherwise than what was made.
class ContentNumbers {
 public:
  int Of(const entity& templateClass) {
    if (const auto known = known_.find(&templateClass); known != known_.end()) return known->second;
    // One that shows itself is told by the way back to it.
    const auto open = std::ranges::find(open_, &templateClass);
    if (open != open_.end()) return static_cast<int>(open - open_.end());
    open_.push_back(&templateClass);
    TextWriter out;
    PutInside(templateClass, out);
    open_.pop_back();
    const int next = static_cast<int>(numbers_.size());
    const int number = numbers_.try_emplace(std::string(out.Text()), next).first->second;
    return known_[&templateClass] = number;
  }

 private:
  void PutInside(const entity& e, TextWriter& out) {
    e.brush.WriteFaces(out, e.getClass()->Set().Library().Report());
    for (const EntityPtr& child : e.getEntityList()) {
      if (!IsTemplate(*child)) Put(*child, out);
    }
  }
  // Keys in one order, and the origin as the number that it is.
  void Put(const entity& e, TextWriter& out) {
    std::set<std::string> keys;
    for (int i = 0; i < e.numkeys(); ++i) {
      std::string value = e.KeyValue(i);
      if (EqualNoCase(e.KeyName(i), "origin")) {
        value.clear();
        for (int axis = 0; axis < 3; ++axis) value += ' ' + FloatText(e.Origin()[axis]);
      }
      if (EqualNoCase(e.KeyName(i), "XMPclass") && IsInstance(e)) {
        if (const entity* shown = FindTemplateClass(e)) value = '"' + std::to_string(Of(*shown));
      }
      keys.insert(e.KeyName(i) + '"' + value);
    }
    out.Put('{');
    for (const std::string& key : keys) {
      out.Put(key);
      out.Put('\n');
    }
    PutInside(e, out);
    out.Put('}');
  }

  std::map<std::string, int> numbers_;
  std::unordered_map<const entity*, int> known_;
  std::vector<const entity*> open_;
};

// The templates of a map as they would be read, alone in a map.
std::unique_ptr<Map> TemplatesAsRead(const Map& map) {
  TextWriter out;
  out.Put("{\n");
  for (const entity* e : TemplatesIn(map)) ClosedCopy(*e)->WriteExtended(out);
  out.Put("}\n");
  TextReader reader(map.Data().reporter);
  reader.OpenText(out.Text());
  return ReadFor(map, reader);
}

// By which name the templates that come are to be known.
class Arrival {
 public:
  Arrival(const Map& read, const Map& into) : into_(into) {
    for (entity* e : TemplatesIn(read)) {
      PutBack(*e);
      taken_.insert(NameOf(*e));
    }
    for (const entity* e : TemplatesIn(into)) taken_.insert(NameOf(*e));
  }

  // False when the map has it already.
  bool IsNew(const entity& templateClass) {
    const std::string name = NameOf(templateClass);
    if (!name.empty() && !into_.Templates().Find(name)) return true;
    if (!there_) there_ = TemplatesAsRead(into_);
    if (const std::string same = SameThere(templateClass); !same.empty()) {
      if (same != name) names_[name] = same;
      return false;
    }
    names_[name] = FreeName(name.empty() ? "template" : name);
    return true;
  }
  const std::map<std::string, std::string>& Names() const { return names_; }

 private:
  // First of all the one of the same name.
  std::string SameThere(const entity& templateClass) {
    std::string name = NameOf(templateClass);
    const int number = contents_.Of(templateClass);
    const entity* namesake = there_->Templates().Find(name);
    if (!name.empty() && namesake && contents_.Of(*namesake) == number) return name;
    for (const entity* e : TemplatesIn(*there_)) {
      std::string other = NameOf(*e);
      if (other.empty() || there_->Templates().Find(other) != e) continue;
      if (contents_.Of(*e) == number) return other;
    }
    return {};
  }
  std::string FreeName(const std::string& name) {
    const std::string stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
    for (int number = 1;; ++number) {
      std::string next = (stem.empty() ? "template" : stem) + std::to_string(number);
      if (taken_.insert(next).second) return next;
    }
  }

  const Map& into_;
  std::unique_ptr<Map> there_;  // what `into` has
  ContentNumbers contents_;
  std::set<std::string> taken_;
  std::map<std::string, std::string> names_;  // here by the name there
};

// With the groups around it that held nothing else.
EntityPtr Take(entity& e) {
  entity* from = e.Parent();
  EntityPtr taken = from->TakeChild(from->IndexOf(e));
  while (!OnlyHolds(*from) && from->getEntityList().empty() && !from->brush.HasText() &&
         !from->HasOrigin()) {
    entity* const above = from->Parent();
    above->TakeChild(above->IndexOf(*from));
    from = above;
  }
  return taken;
}

void CollectShown(const entity& tree, std::vector<const entity*>& found,
                  std::unordered_set<const entity*>& known) {
  ForEachEntity(tree, [&](const entity& e) {
    const entity* shown = IsInstance(e) ? FindTemplateClass(e) : nullptr;
    if (shown && known.insert(shown).second) found.push_back(shown);
  });
}

}  // namespace

std::unique_ptr<Map> ReadFor(const Map& map, TextReader& reader) {
  auto read = std::make_unique<Map>(map.Data());
  read->wads = map.wads;
  read->classSet = map.classSet;
  unsigned flags = READ_MERGE;
  do {
    flags = read->ReadMap(reader, flags);
  } while (read->readProgress() != 0);
  return read;
}

std::vector<EntityPtr> TemplatesOf(std::span<entity* const> trees) {
  std::vector<const entity*> found;
  std::unordered_set<const entity*> known;
  for (const entity* tree : trees) CollectShown(*tree, found, known);
  for (std::size_t i = 0; i < found.size(); ++i) CollectShown(*found[i], found, known);
  std::vector<EntityPtr> copies;
  for (const entity* e : found) {
    const auto holds = [e](const entity* tree) { return e->IsWithin(*tree); };
    if (std::ranges::any_of(trees, holds)) continue;
    copies.push_back(ClosedCopy(*e));
    DropTemplates(*copies.back());
  }
  return copies;
}

ArrivingTemplates TakeTemplates(Map& read, const Map& into) {
  const std::vector<entity*> all = TemplatesIn(read);
  if (all.empty()) return {};
  Arrival arrival(read, into);
  std::vector<entity*> comes;
  for (entity* e : all) {
    if (read.Templates().Find(NameOf(*e)) == e && arrival.IsNew(*e)) comes.push_back(e);
  }

  // All at once: one may come by the name that another had.
  ArrivingTemplates arriving;
  std::vector<std::pair<entity*, std::string>> changes;
  const auto& names = arrival.Names();
  ForEachBelow(read, [&](entity& e) {
    const entity* shown = IsInstance(e) ? FindTemplateClass(e) : nullptr;
    const auto name = shown ? names.find(NameOf(*shown)) : names.end();
    if (name != names.end()) changes.emplace_back(&e, name->second);
  });
  for (entity* e : comes) {
    const auto name = names.find(NameOf(*e));
    if (name == names.end()) continue;
    arriving.renamed.emplace_back(name->first, name->second);
    changes.emplace_back(e, name->second);
  }
  for (const auto& [e, name] : changes) {
    const char* const key = IsTemplate(*e) ? "XMPentityname" : "XMPclass";
    e->RemoveKeys(key);
    e->SetKey(key, name);
  }

  for (auto e = all.rbegin(); e != all.rend(); ++e) {
    EntityPtr taken = Take(**e);
    const bool isNew = std::ranges::find(comes, *e) != comes.end();
    if (isNew) arriving.added.push_back(std::move(taken));
  }
  std::ranges::reverse(arriving.added);
  return arriving;
}

void DropTemplates(entity& tree) {
  for (std::size_t i = tree.getEntityList().size(); i-- > 0;) {
    entity& child = *tree.getEntityList()[i];
    if (IsTemplate(child)) {
      tree.TakeChild(i);
    } else {
      DropTemplates(child);
    }
  }
}

}  // namespace ferrowand
