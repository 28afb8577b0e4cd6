#include "document/classes/class_set.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <utility>

#include "base/path_text.h"
#include "base/progress.h"
#include "base/report.h"
#include "document/classes/native_classes.h"
#include "gamedata/class_file.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

constexpr unsigned FIRSTMENUID = 1000;
constexpr std::size_t MAXGROUPS = 50;
constexpr std::size_t MAXGROUPNAME = 50;
constexpr std::size_t NUMOUTLINECOLOURS = 10;
constexpr Colour OUTLINECOLOURS[NUMOUTLINECOLOURS] = {
    {200, 0, 0},   {0, 200, 0},     {0, 0, 200},  {128, 128, 0}, {0, 128, 128},
    {128, 0, 128}, {128, 128, 128}, {64, 0, 200}, {200, 0, 64},  {64, 200, 0}};

}  // namespace

ClassSet::ClassSet(ClassLibrary& library) : library_(library) {
  for (auto& native : MakeNativeClasses(*this)) {
    if (native->Kind() == EntityKind::Unknown) unknown_ = native.get();
    classes_.push_back(std::move(native));
  }
  Finish();
}

ClassSet::~ClassSet() = default;

bool ClassSet::Load(const std::string& path) {
  return Read(path, &library_.Report(), library_.Progress());
}

bool ClassSet::LoadAgain() {
  LoadProgress unseen;
  const std::string name = fileName_;
  const bool worked = !sources_.empty() && Read(sources_[0].path, nullptr, unseen);
  fileName_ = name;
  return worked;
}

bool ClassSet::Read(const std::string& path, Reporter* boxes, LoadProgress& progress) {
  ClassLog log(boxes);
  auto file = ReadClassFile(path, library_.Report(), log, progress);
  if (!file) return false;
  fileName_ = path;
  sources_ = std::move(file->sources);
  messages_ = log.Messages();
  messageCount_ = log.Count();
  Take(std::move(file->classes));
  Finish();
  return true;
}

bool ClassSet::IsStale() const {
  return std::ranges::any_of(
      sources_, [](const ClassSource& source) { return file::Stamp(source.path) != source.stamp; });
}

bool ClassSet::IsOf(const std::string& path) const {
  return !sources_.empty() && file::IsSame(sources_[0].path, path);
}

// Whoever holds a class of the same name holds the new one. Of equal names the last of the file is
// the first of the set, before and after.
void ClassSet::Take(std::vector<ClassRecord> records) {
  std::unordered_map<std::string, std::deque<std::unique_ptr<EntityClass>>> known;
  std::vector<std::unique_ptr<EntityClass>> fresh;
  for (auto& entityClass : classes_) {
    if (entityClass->IsNative()) {
      fresh.push_back(std::move(entityClass));
    } else {
      known[entityClass->classname].push_back(std::move(entityClass));
    }
  }
  std::ranges::reverse(records);
  for (ClassRecord& record : records) {
    auto& same = known[record.classname];
    if (same.empty()) {
      fresh.push_back(std::make_unique<EntityClass>(*this, std::move(record)));
    } else {
      static_cast<ClassRecord&>(*same.front()) = std::move(record);
      fresh.push_back(std::move(same.front()));
      same.pop_front();
    }
  }
  for (auto& [name, left] : known) std::ranges::move(left, std::back_inserter(retired_));
  classes_ = std::move(fresh);
}

EntityClass& ClassSet::FindClass(std::string_view classname) const {
  const auto found = byName_.find(classname);
  return found == byName_.end() ? *unknown_ : *found->second;
}

EntityClass* ClassSet::ClassOfMenuId(unsigned id) const {
  const std::size_t index = id - FIRSTMENUID;
  return id >= FIRSTMENUID && index < classes_.size() ? classes_[index].get() : nullptr;
}

unsigned ClassSet::MenuIdOf(std::string_view classname) const {
  const auto found = std::ranges::find(
      classes_, classname,
      [](const auto& entityClass) -> std::string_view { return entityClass->classname; });
  return found == classes_.end() ? 0
                                 : FIRSTMENUID + static_cast<unsigned>(found - classes_.begin());
}

void ClassSet::Finish() {
  Sort();
  byName_.clear();
  for (const auto& entityClass : classes_) {
    byName_.try_emplace(entityClass->classname, entityClass.get());
  }
  BuildMenu();
}

void ClassSet::Sort() {
  std::stable_sort(classes_.begin(), classes_.end(), [](const auto& a, const auto& b) {
    if (a->IsNative() != b->IsNative()) return a->IsNative();
    const int order = CompareNoCase(a->classname, b->classname);
    return a->IsNative() ? order > 0 : order < 0;
  });
}

void ClassSet::BuildMenu() {
  menu_.clear();
  std::unordered_map<std::string, std::size_t> groups;  // indices into menu_
  const auto prefixOf = [](const auto& entityClass) {
    return entityClass->Prefix().substr(0, MAXGROUPNAME);
  };
  for (std::size_t i = 0; i < classes_.size(); ++i) {
    const std::string prefix = prefixOf(classes_[i]);
    const bool hasSibling = i + 1 < classes_.size() && prefixOf(classes_[i + 1]) == prefix;
    auto group = groups.find(prefix);
    if (group == groups.end() && hasSibling && groups.size() < MAXGROUPS) {
      group = groups.emplace(prefix, menu_.size()).first;
      menu_.push_back({prefix, 0, {}});
    }
    auto& items = group == groups.end() ? menu_ : menu_[group->second].items;
    items.push_back({classes_[i]->classname, FIRSTMENUID + static_cast<unsigned>(i), {}});
  }
}

ClassLibrary::ClassLibrary(const SearchPath& path, Reporter& reporter, LoadProgress& progress)
    : path_(path),
      reporter_(reporter),
      progress_(progress),
      native_(std::make_unique<ClassSet>(*this)),
      default_(native_.get()) {}

ClassSet& ClassLibrary::Get(const std::string& name, bool quiet, const std::string& folder) {
  if (isForAll_) return *default_;
  if (ClassSet* set = FindOrLoad(name)) return *set;
  if (ClassSet* set = FindOrLoadAround(folder, name)) return *set;
  if (!quiet) {
    reporter_.Show("Error", Format("Could not load .qc file \"%s\", using default", name.c_str()));
  }
  return *native_;
}

ClassSet* ClassLibrary::Choose(const std::string& path) {
  const auto loaded = std::ranges::find_if(sets_, [&](const auto& set) { return set->IsOf(path); });
  if (loaded == sets_.end()) return FindOrLoad(path);
  const ProgressScope scope(progress_, path);
  ClassSet& set = **loaded;
  const std::string name = set.FileName();
  if (!set.Load(path)) return nullptr;
  set.SetFileName(name);
  return &set;
}

std::vector<ClassSet*> ClassLibrary::LoadChanged() {
  std::vector<ClassSet*> loaded;
  for (const auto& set : sets_) {
    if (set->IsStale() && set->LoadAgain()) loaded.push_back(set.get());
  }
  return loaded;
}

void ClassLibrary::LoadDefault(const std::string& name) {
  defaultName_ = name;
  ClassSet* set = FindOrLoad(name);
  default_ = set ? set : native_.get();
  if (set) return;
  reporter_.Show("Error", Format("Could not load default .qc file %s! Set the default in Options.",
                                 name.c_str()));
}

void ClassLibrary::LoadForAll(const std::string& name) {
  LoadDefault(name);
  isForAll_ = true;
}

ClassSet* ClassLibrary::Find(const std::string& fileName) const {
  for (const auto& set : sets_) {
    if (EqualNoCase(set->FileName(), fileName)) return set.get();
  }
  return nullptr;
}

ClassSet* ClassLibrary::FindOrLoad(const std::string& name) {
  if (ClassSet* set = Find(name)) return set;
  const ProgressScope scope(progress_, name);
  auto set = std::make_unique<ClassSet>(*this);
  if (!path_.Offer(name, [&](const std::string& path) { return set->Load(path); })) return nullptr;
  // Asked for again it goes by this name, wherever it was found.
  set->SetFileName(name);
  return sets_.emplace_back(std::move(set)).get();
}

// Known by its whole path: what lies beside one map is not what another map means by that name.
ClassSet* ClassLibrary::FindOrLoadAround(const std::string& folder, const std::string& name) {
  for (const std::string& place : PlacesAround(folder, name)) {
    if (ClassSet* set = Find(place)) return set;
    if (file::Find(place) != FindResult::Found) continue;
    const ProgressScope scope(progress_, name);
    auto set = std::make_unique<ClassSet>(*this);
    if (set->Load(place)) return sets_.emplace_back(std::move(set)).get();
  }
  return nullptr;
}

Colour ClassLibrary::NextOutlineColour() {
  outlineSeed_ = outlineSeed_ * 1664525u + 1013904223u;
  return OUTLINECOLOURS[(outlineSeed_ >> 16) % NUMOUTLINECOLOURS];
}

}  // namespace ferrowand
