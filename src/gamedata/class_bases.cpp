#include "gamedata/class_bases.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/text_parts.h"
#include "gamedata/class_log.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXBASES = 200;                        // of one class
constexpr std::size_t MAXINHERITED = std::size_t{64} << 20;  // bytes, of all classes of a file
constexpr float UNTOLDCOLOUR[] = {0.86f, 0.12f, 0.86f};      // of a class whose file names none

std::size_t BytesOf(const KeyDefinition& key) {
  std::size_t bytes =
      sizeof key + key.name.size() + key.caption.size() + key.help.size() + key.defaultValue.size();
  for (const KeyChoice& choice : key.choices) {
    bytes += sizeof choice + choice.value.size() + choice.caption.size();
  }
  return bytes;
}

void TakeColour(ClassRecord& to, const ClassRecord& from) {
  to.red = from.red;
  to.green = from.green;
  to.blue = from.blue;
}

void TakeBox(ClassRecord& to, const ClassRecord& from) {
  to.minx = from.minx;
  to.miny = from.miny;
  to.minz = from.minz;
  to.maxx = from.maxx;
  to.maxy = from.maxy;
  to.maxz = from.maxz;
}

// A class while its bases are added: what is there already stays.
class WholeClass {
 public:
  explicit WholeClass(const ClassDefinition& own)
      : hasColour_(own.hasColour), hasBox_(own.hasBox), flagHelp_(own.flagHelp) {
    record = own.record;
    for (const KeyDefinition& key : record.keys) known_.insert(LowerCase(key.name));
    flagHelp_.resize(record.flags.size());
  }

  // What that costs, in bytes: looking through the keys counts too.
  std::size_t Add(const ClassDefinition& base);
  void Finish();

  ClassRecord record;

 private:
  void AddFlags(const ClassDefinition& base);

  bool hasColour_, hasBox_;
  std::vector<std::string> flagHelp_;
  std::unordered_set<std::string> known_;  // keys, in lower case
};

std::size_t WholeClass::Add(const ClassDefinition& base) {
  std::size_t bytes = 0;
  for (const KeyDefinition& key : base.record.keys) {
    bytes += sizeof key;
    if (!known_.insert(LowerCase(key.name)).second) continue;
    bytes += BytesOf(key);
    record.keys.push_back(key);
  }
  AddFlags(base);
  if (!hasColour_ && base.hasColour) TakeColour(record, base.record);
  if (!hasBox_ && base.hasBox) TakeBox(record, base.record);
  hasColour_ |= base.hasColour;
  hasBox_ |= base.hasBox;
  return bytes;
}

void WholeClass::AddFlags(const ClassDefinition& base) {
  const std::vector<std::string>& flags = base.record.flags;
  if (record.flags.size() < flags.size()) record.flags.resize(flags.size());
  flagHelp_.resize(record.flags.size());
  for (std::size_t bit = 0; bit < flags.size(); ++bit) {
    if (flags[bit].empty() || !record.flags[bit].empty()) continue;
    record.flags[bit] = flags[bit];
    record.flagDefaults |= base.record.flagDefaults & 1u << bit;
    if (bit < base.flagHelp.size()) flagHelp_[bit] = base.flagHelp[bit];
  }
}

void WholeClass::Finish() {
  if (!hasColour_) {
    record.red = UNTOLDCOLOUR[0];
    record.green = UNTOLDCOLOUR[1];
    record.blue = UNTOLDCOLOUR[2];
  }
  bool isFirst = true;
  for (std::size_t bit = 0; bit < flagHelp_.size(); ++bit) {
    if (flagHelp_[bit].empty()) continue;
    if (isFirst) record.description += record.description.empty() ? "Flags:" : "\r\n\r\nFlags:";
    record.description += "\r\n" + record.flags[bit] + "  " + flagHelp_[bit];
    isFirst = false;
  }
}

class BaseResolver {
 public:
  BaseResolver(std::vector<ClassDefinition> definitions, ClassLog& log)
      : definitions_(std::move(definitions)), log_(log) {
    for (std::size_t i = 0; i < definitions_.size(); ++i) {
      byName_[definitions_[i].record.classname].push_back(i);
      byLowerName_[LowerCase(definitions_[i].record.classname)].push_back(i);
    }
  }

  std::vector<ClassRecord> Resolve();

 private:
  using Places = std::unordered_map<std::string, std::vector<std::size_t>>;

  std::vector<std::size_t> BasesOf(std::size_t index);
  std::optional<std::size_t> FindBase(const std::string& name, std::size_t of) const;
  WholeClass Whole(std::size_t index);
  void AddOther(WholeClass& whole, std::size_t index);
  std::optional<std::size_t> LastOf(const std::vector<std::size_t>& places, ClassKind kind) const;

  std::vector<ClassDefinition> definitions_;
  ClassLog& log_;
  Places byName_, byLowerName_;
  std::size_t inherited_ = 0;  // bytes
};

// The last of that name. A class that is defined anew on top of what it was is its own base: the
// one before it then.
std::optional<std::size_t> BaseResolver::FindBase(const std::string& name, std::size_t of) const {
  auto found = byName_.find(name);
  if (found == byName_.end()) {
    found = byLowerName_.find(LowerCase(name));
    if (found == byLowerName_.end()) return std::nullopt;
  }
  const std::vector<std::size_t>& places = found->second;
  if (definitions_[of].record.classname != definitions_[places.back()].record.classname) {
    return places.back();
  }
  const auto own = std::ranges::lower_bound(places, of);
  return own == places.begin() ? std::nullopt : std::optional(*std::prev(own));
}

// Nearest first: those that it names, then those that these name. Each once.
std::vector<std::size_t> BaseResolver::BasesOf(std::size_t index) {
  std::vector<std::size_t> order{index};
  std::unordered_set<std::size_t> seen{index};
  for (std::size_t i = 0; i < order.size() && order.size() <= MAXBASES; ++i) {
    const std::size_t of = order[i];
    for (const std::string& name : definitions_[of].bases) {
      const auto base = FindBase(name, of);
      if (base && seen.insert(*base).second) order.push_back(*base);
      if (!base && of == index) {
        log_.Add("Unknown base class", definitions_[of].place, definitions_[of].line, name);
      }
    }
  }
  order.erase(order.begin());
  return order;
}

WholeClass BaseResolver::Whole(std::size_t index) {
  const ClassDefinition& own = definitions_[index];
  WholeClass whole(own);
  if (own.bases.empty()) return whole;
  if (inherited_ >= MAXINHERITED) {
    log_.Add("Too much in base classes for class", own.place, own.line, own.record.classname);
    return whole;
  }
  for (const std::size_t base : BasesOf(index)) inherited_ += whole.Add(definitions_[base]);
  return whole;
}

std::optional<std::size_t> BaseResolver::LastOf(const std::vector<std::size_t>& places,
                                                ClassKind kind) const {
  const auto last = std::find_if(places.rbegin(), places.rend(), [&](std::size_t place) {
    return definitions_[place].kind == kind;
  });
  return last == places.rend() ? std::nullopt : std::optional(*last);
}

std::vector<ClassRecord> BaseResolver::Resolve() {
  std::vector<ClassRecord> records;
  for (std::size_t i = 0; i < definitions_.size(); ++i) {
    if (definitions_[i].kind == ClassKind::Base) continue;
    const std::vector<std::size_t>& places = byName_.at(definitions_[i].record.classname);
    const auto point = LastOf(places, ClassKind::Point), brush = LastOf(places, ClassKind::Brush);
    if (std::max(point, brush) != i) continue;  // not the last
    WholeClass whole = Whole(i);
    if (point && brush) AddOther(whole, i == *point ? *brush : *point);
    whole.Finish();
    whole.record.isMadeOfBrushes = brush.has_value();
    whole.record.isPointToo = point && brush;
    if (!point) TakeBox(whole.record, {});
    records.push_back(std::move(whole.record));
  }
  return records;
}

// Of a class that is both: the box is the point class's.
void BaseResolver::AddOther(WholeClass& whole, std::size_t index) {
  ClassDefinition other = definitions_[index];
  other.record = Whole(index).record;
  const bool isPoint = other.kind == ClassKind::Point;
  inherited_ += whole.Add(other);
  if (isPoint) TakeBox(whole.record, other.record);
  if (whole.record.description.empty()) whole.record.description = other.record.description;
}

}  // namespace

std::vector<ClassRecord> WithBases(std::vector<ClassDefinition> definitions, ClassLog& log) {
  return BaseResolver(std::move(definitions), log).Resolve();
}

}  // namespace ferrowand
