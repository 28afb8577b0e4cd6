#include "operations/clipboard.h"

#include <memory>
#include <utility>
#include <vector>

#include "base/path_text.h"
#include "base/report.h"
#include "base/safe_file.h"
#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "gamedata/file_kind.h"
#include "operations/blocks.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/links.h"
#include "operations/new_entity.h"
#include "operations/template_travel.h"
#include "operations/transformation.h"

namespace ferrowand {
namespace {

bool LooksLikeMap(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  return start != std::string_view::npos &&
         (text[start] == '{' || text.substr(start).starts_with("//"));
}

bool OnlyHoldsObjects(std::string_view classname, const ClassSet& classes) {
  const EntityKind kind = classes.FindClass(classname).Kind();
  return IsWorldspawn(classname) || kind == EntityKind::Layer || kind == EntityKind::TemplateClass;
}

// The world of a text may be an object itself: who copies a single entity or brush out of a text
// file has it in the outermost braces.
EntityPtr TakeWorldAsObject(Map& read) {
  const char* classname = read.GetKey("classname");
  const bool isWorld = !classname || OnlyHoldsObjects(classname, *read.classSet);
  if (isWorld && !read.brush.HasText()) return nullptr;
  EntityPtr object = NewEntity(read, isWorld ? "brush" : classname);
  for (int i = 0; i < read.numkeys() && !isWorld; ++i) {
    if (read.KeyValue(i) != "worldspawn") object->SetKey(read.KeyName(i), read.KeyValue(i));
  }
  object->ResolveClasses(*read.classSet);
  std::swap(object->brush, read.brush);
  return object;
}

// Out of layers, and out of a second world.
void TakeObjects(entity& holder, std::vector<EntityPtr>& objects) {
  for (EntityPtr& child : holder.TakeChildren()) {
    const EntityClass& own = *child->getClass();
    if (own.Kind() == EntityKind::Layer || IsWorldspawn(own.classname)) {
      TakeObjects(*child, objects);
    } else {
      objects.push_back(std::move(child));
    }
  }
}

struct Arriving {
  std::vector<EntityPtr> objects;
  ArrivingTemplates templates;

  bool IsNothing() const { return objects.empty() && templates.added.empty(); }
};

Arriving ReadObjects(const Map& map, TextReader& reader) {
  const std::unique_ptr<Map> read = ReadFor(map, reader);
  Arriving arriving;
  arriving.templates = TakeTemplates(*read, map);
  std::vector<EntityPtr>& objects = arriving.objects;
  EntityPtr world = TakeWorldAsObject(*read);
  std::vector<EntityPtr> found;
  TakeObjects(*read, found);
  for (EntityPtr& object : found) {
    const bool isPart = world && world->IsOwnBlock() && object->brush.HasText();
    if (isPart) {
      world->AddChild(std::move(object));
    } else {
      objects.push_back(std::move(object));
    }
  }
  if (world) objects.push_back(std::move(world));
  return arriving;
}

EditResult CheckObjects(const Arriving& arriving, const entity& parent, int levels) {
  if (arriving.IsNothing()) return EditResult::NotAMap;
  std::vector<const entity*> all;
  for (const EntityPtr& object : arriving.objects) all.push_back(object.get());
  for (const EntityPtr& added : arriving.templates.added) all.push_back(added.get());
  if (!FitsBelow(parent, all, levels)) return EditResult::TooDeep;
  return MayAddTo(parent) ? EditResult::Done : EditResult::Declined;
}

// First of all: what else is new may have to keep out of one of them.
void AddTemplates(EditStep& step, ArrivingTemplates& templates) {
  entity& layer = LayerAround(step.map().NewParent());
  for (EntityPtr& added : templates.added) AddTo(step, std::move(added), layer);
}

// Textures go along.
EditResult MoveTogether(std::span<entity* const> objects, const PasteWay& way) {
  Bounds box;
  for (const entity* object : objects) box.Add(SeenBounds(*object));
  if (box.IsEmpty()) return EditResult::Done;
  const Transformation move(way(box));
  for (entity* object : objects) {
    if (const EditResult result = TransformObject(*object, move, true); result != EditResult::Done)
      return result;
  }
  return EditResult::Done;
}

void TellRenamed(Map& map, const ArrivingTemplates& templates) {
  std::string text;
  for (const auto& [there, here] : templates.renamed) {
    text += text.empty() ? "This map has other templates of these names: " : ", ";
    text.append(there).append(" is ").append(here).append(" here");
  }
  if (!text.empty()) map.ShowStatus(text);
}

}  // namespace

std::string SelectionText(const Map& map) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return {};
  TextWriter out;
  out.Put("{\n");
  WriteKey(out, "classname", "worldspawn");
  WriteKey(out, "wad", map.wads.Names());
  WriteKey(out, "XMPqc", map.classSetName);
  WriteKey(out, "XMPversion", "1.01");
  for (const EntityPtr& copy : TemplatesOf(roots)) copy->WriteExtended(out);
  for (const entity* root : roots) root->WriteExtended(out);
  out.Put("}\n");
  return std::string(out.Text());
}

EditResult CutSelection(Map& map, std::string& text) {
  text = SelectionText(map);
  return DeleteSelection(map);
}

EditResult PasteText(Map& map, std::string_view text, const PasteWay& way) {
  if (!LooksLikeMap(text)) return EditResult::NotAMap;
  TextReader reader(map.Data().reporter);
  reader.OpenText(text);
  Arriving arriving = ReadObjects(map, reader);
  EditResult result = CheckObjects(arriving, map.NewParent(), 0);
  if (result != EditResult::Done) return result;
  {
    std::vector<entity*> added;
    added.reserve(arriving.objects.size());
    EditStep step(map);
    AddTemplates(step, arriving.templates);
    RenameInnerLinks(map, arriving.objects);
    for (EntityPtr& object : arriving.objects) {
      added.push_back(&AddTo(step, std::move(object), map.NewParent()));
    }
    if (way) result = MoveTogether(added, way);
    if (result != EditResult::Done) {
      step.Cancel();
      return result;
    }
    Select(map, added, false);
  }
  TellRenamed(map, arriving.templates);
  return result;
}

EditResult InsertGroup(Map& map, const std::string& filename) {
  if (const std::string refusal = OtherKindText(filename); !refusal.empty()) {
    map.Data().reporter.Show("Cannot continue", refusal);
    return EditResult::Declined;
  }
  TextReader reader(map.Data().reporter);
  reader.Open(filename);
  if (!reader.IsOpen()) return EditResult::CannotOpen;
  Arriving arriving = ReadObjects(map, reader);
  const EditResult result = CheckObjects(arriving, map.NewParent(), 1);
  if (result != EditResult::Done) return result;
  {
    EditStep step(map);
    AddTemplates(step, arriving.templates);
    RenameInnerLinks(map, arriving.objects);
    if (!arriving.objects.empty()) {
      EntityPtr group = NewGroup(map, SplitPath(filename).base);
      for (EntityPtr& object : arriving.objects) group->AddChild(std::move(object));
      Select(map, &AddTo(step, std::move(group), map.NewParent()), false);
    }
  }
  TellRenamed(map, arriving.templates);
  return result;
}

EditResult SaveGroup(const Map& map, const std::string& filename) {
  const std::string text = SelectionText(map);
  if (text.empty()) return EditResult::NothingSelected;
  const bool named = SplitPath(filename).extension.size() >= 2;
  return ReplaceFileText(named ? filename : filename + ".xmp", text, map.Data().reporter)
             ? EditResult::Done
             : EditResult::CannotWrite;
}

}  // namespace ferrowand
