#include "operations/clipboard.h"

#include <memory>
#include <utility>
#include <vector>

#include "base/path_text.h"
#include "base/safe_file.h"
#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/classes/class_set.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "document/read_log.h"
#include "gamedata/file_kind.h"
#include "operations/blocks.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

bool LooksLikeMap(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  return start != std::string_view::npos &&
         (text[start] == '{' || text.substr(start).starts_with("//"));
}

// A layer or a world.
bool OnlyHoldsObjects(std::string_view classname, const ClassSet& classes) {
  return IsWorldspawn(classname) || classes.FindClass(classname).Kind() == EntityKind::Layer;
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

std::vector<EntityPtr> ReadObjects(const Map& map, TextReader& reader) {
  Map read(map.Data());
  read.wads = map.wads;
  read.classSet = map.classSet;
  unsigned flags = READ_MERGE;
  do {
    flags = read.ReadMap(reader, flags);
  } while (read.readProgress() != 0);

  EntityPtr world = TakeWorldAsObject(read);
  std::vector<EntityPtr> found, objects;
  TakeObjects(read, found);
  for (EntityPtr& object : found) {
    const bool isPart = world && world->IsOwnBlock() && object->brush.HasText();
    if (isPart) {
      world->AddChild(std::move(object));
    } else {
      objects.push_back(std::move(object));
    }
  }
  if (world) objects.push_back(std::move(world));
  return objects;
}

EditResult CheckObjects(const std::vector<EntityPtr>& objects, const entity& parent, int levels) {
  if (objects.empty()) return EditResult::NotAMap;
  std::vector<const entity*> all;
  all.reserve(objects.size());
  for (const EntityPtr& object : objects) all.push_back(object.get());
  if (!FitsBelow(parent, all, levels)) return EditResult::TooDeep;
  return MayAddTo(parent) ? EditResult::Done : EditResult::Declined;
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
  for (const entity* root : roots) root->WriteExtended(out);
  out.Put("}\n");
  return std::string(out.Text());
}

EditResult CutSelection(Map& map, std::string& text) {
  text = SelectionText(map);
  return DeleteSelection(map);
}

EditResult PasteText(Map& map, std::string_view text) {
  if (!LooksLikeMap(text)) return EditResult::NotAMap;
  TextReader reader(map.Data().reporter);
  reader.OpenText(text);
  std::vector<EntityPtr> objects = ReadObjects(map, reader);
  const EditResult result = CheckObjects(objects, map.NewParent(), 0);
  if (result != EditResult::Done) return result;
  std::vector<entity*> added;
  added.reserve(objects.size());
  EditStep step(map);
  for (EntityPtr& object : objects) {
    added.push_back(&AddTo(step, std::move(object), map.NewParent()));
  }
  Select(map, added, false);
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
  std::vector<EntityPtr> objects = ReadObjects(map, reader);
  const EditResult result = CheckObjects(objects, map.NewParent(), 1);
  if (result != EditResult::Done) return result;
  EntityPtr group = NewGroup(map, SplitPath(filename).base);
  for (EntityPtr& object : objects) group->AddChild(std::move(object));
  EditStep step(map);
  Select(map, &AddTo(step, std::move(group), map.NewParent()), false);
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
