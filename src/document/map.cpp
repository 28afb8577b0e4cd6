#include "document/map.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "document/classes/template_index.h"
#include "document/read_log.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

void TouchAll(entity& e) {
  e.Touch();
  for (const EntityPtr& child : e.getEntityList()) TouchAll(*child);
}

}  // namespace

Map::Map(GameData& data, std::size_t undoLevels)
    : entity(data.classes.Default()),
      classSet(&data.classes.Default()),
      classSetName(data.classes.DefaultName()),
      undo(undoLevels),
      data_(data),
      log_(std::make_unique<ReadLog>(data.reporter)),
      templates_(std::make_unique<TemplateIndex>(*this)) {
  state = 0;
  // The game makes a world of nothing else.
  SetKey("classname", "worldspawn");
  AddLayer("layer1");
  SetKey("XMPentityname", "worldspawn");
}

Map::~Map() = default;

entity* Map::AddLayer(const std::string& name) {
  EntityPtr layer = std::make_unique<entity>(*classSet);
  layer->SetKey("classname", "layer");
  layer->SetKey("XMPentityname", name);
  layer->SetKey("XMPstate", "0");
  layer->SetKey("XMPcolourr", "0.8");
  layer->SetKey("XMPcolourg", "0.1");
  layer->SetKey("XMPcolourb", "0.1");
  SetCurrentLayer(InsertChild(std::move(layer), getEntityList().size()));
  return currentLayer_;
}

entity* Map::FirstLayer() const {
  const auto isLayer = [](const EntityPtr& child) {
    const char* classname = child->GetKey("classname");
    return classname && EqualNoCase(classname, "layer");
  };
  const auto layer = std::ranges::find_if(getEntityList(), isLayer);
  return layer == getEntityList().end() ? nullptr : layer->get();
}

// After the current layer has left, another takes its place; without any the map itself does.
entity& Map::NewParent() {
  if (leadingGroup_) return *leadingGroup_;
  if (!currentLayer_) SetCurrentLayer(FirstLayer());
  return currentLayer_ ? *currentLayer_ : *this;
}

entity* Map::AddChild(EntityPtr child) {
  entity& parent = NewParent();
  return parent.InsertChild(std::move(child), parent.getEntityList().size());
}

std::string Map::Name() const {
  const char* message = GetKey("message");
  return message ? message : "Unnamed";
}

std::string Map::Folder() const {
  if (IsUnnamed()) return "";
  const std::string folder = SplitPath(filename).directory;
  return folder.empty() ? CurrentDirectory() : folder;
}

void Map::SetCurrentLayer(entity* layer) {
  if (layer == currentLayer_) return;
  ChangeScope scope(*this);
  currentLayer_ = layer;
  scope.Change().target = true;
}

void Map::SetLeadingGroup(entity* group) {
  if (group == leadingGroup_) return;
  ChangeScope scope(*this);
  leadingGroup_ = group;
  scope.Change().target = true;
}

void Map::SetOptionBits(std::uint8_t bits) {
  if (bits == optionBits_) return;
  optionBits_ = bits;
  AnnounceEverything();
}

void Map::MarkSaved() {
  ChangeScope scope(*this);
  savedState_ = undo.State();
  scope.Change().file = true;
}

void Map::AnnounceEverything() {
  ChangeScope scope(*this);
  scope.Change().everything = true;
}

void Map::BindClassesAnew() {
  ResolveClasses(*classSet);
  // A class may tell something else and be the same object.
  TouchAll(*this);
  templates_->Forget();
  AnnounceEverything();
}

void Map::BindTexturesAnew() {
  ResolveTextures(wads);
  AnnounceEverything();
}

void Map::UseWads(const std::vector<std::string>& names) {
  wads.Clear();
  for (const std::string& name : names) wads.Add(name, data_.wads.Get(name, true, Folder()));
  BindTexturesAnew();
}

void Map::UseClasses(const std::string& name) {
  classSet = &data_.classes.Get(name, true, Folder());
  classSetName = name;
  BindClassesAnew();
}

void Map::Forget(const entity& tree) {
  if (keepsPointers_) return;
  if (currentLayer_ && currentLayer_->IsWithin(tree)) SetCurrentLayer(nullptr);
  if (leadingGroup_ && leadingGroup_->IsWithin(tree)) SetLeadingGroup(nullptr);
  selection.Forget(tree);
  pickedFaces.Forget(tree);
}

void Map::ForgetStrangers() {
  if (currentLayer_ && currentLayer_->Parent() != this) SetCurrentLayer(nullptr);
  if (leadingGroup_ && leadingGroup_->OwningMap() != this) SetLeadingGroup(nullptr);
  selection.ForgetStrangers();
  pickedFaces.ForgetStrangers();
}

PointersKept::PointersKept(Map& map) : map_(map), outer_(std::exchange(map.keepsPointers_, true)) {}

PointersKept::~PointersKept() {
  map_.keepsPointers_ = outer_;
  if (!outer_) map_.ForgetStrangers();
}

void Map::RemoveObserver(MapObserver& observer) {
  std::erase(observers_, &observer);
}

void Map::ShowStatus(const std::string& text) {
  for (MapObserver* observer : observers_) observer->OnStatus(text);
}

}  // namespace ferrowand
