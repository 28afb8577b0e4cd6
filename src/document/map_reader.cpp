#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/path_text.h"
#include "base/text_reader.h"
#include "document/key_reader.h"
#include "document/map.h"
#include "document/object_reader.h"
#include "document/read_log.h"
#include "document/structure_repair.h"

namespace ferrowand {
namespace {

constexpr unsigned BLOCKS_A_CALL = 50;

// The characters but the full stop, most significant first and each with its sign. Beyond the end
// of the text they are 0, so that "1.1" is newer than "1.01".
std::uint32_t VersionKey(std::string_view version) {
  std::uint32_t key = 0;
  for (const std::size_t place : {0u, 2u, 3u, 4u}) {
    const auto c = static_cast<signed char>(place < version.size() ? version[place] : 0);
    key = (key << 8) + static_cast<std::uint32_t>(c);
  }
  return key;
}

// What some text editors put in front of a file.
void SkipByteOrderMark(TextReader& reader) {
  for (const int expected : {0xEF, 0xBB, 0xBF}) {
    if (reader.GetChar() != expected) {
      reader.SeekTo(0);
      return;
    }
  }
}

// And the blank lines around them, or the world's brace would be taken for that of an entity.
void SkipLeadingComments(TextReader& reader, ReadLog& log) {
  for (;;) {
    reader.SkipWhitespace();
    if (reader.AtEof() || reader.PeekChar() != '/') return;
    reader.GetChar();
    if (reader.PeekChar() != '/') {
      reader.UngetChar();
      return;
    }
    log.PassComment(reader);
  }
}

// Whether the keys behind the brace in front of the reader say so. Nothing is consumed.
bool IsWorldspawnNext(TextReader& reader, Reporter& reporter) {
  const std::uint32_t offset = reader.Offset();
  ReadLog unsaid(reporter);
  KeyReader keys(reader, unsaid);
  bool isWorld = false;
  reader.GetChar();
  for (reader.SkipWhitespace(); reader.PeekChar() == '"'; reader.SkipWhitespace()) {
    if (!keys.Read() || !EqualNoCase(keys.name, "classname")) continue;
    isWorld = keys.value == "worldspawn";
    break;
  }
  reader.SeekTo(offset);
  return isWorld;
}

// Of those that a semicolon stands between, the empty ones too.
template <typename Visit>
void ForEachName(std::string_view names, const Visit& visit) {
  for (std::size_t end = 0; end != names.npos; names.remove_prefix(std::min(end, names.size()))) {
    end = names.find(';');
    visit(std::string(names.substr(0, end)));
    if (end != names.npos) ++end;
  }
}

bool IsNamed(const WadList& wads, std::string_view name) {
  return std::ranges::any_of(wads.Items(),
                             [name](const WadList::Item& item) { return item.name == name; });
}

const char* ClassnameOf(const entity& e) {
  const char* classname = e.GetKey("classname");
  return classname ? classname : "";
}

}  // namespace

unsigned Map::ReadMap(TextReader& reader, unsigned flags) {
  if (readProgress_ == 0) {
    *log_ = ReadLog(Report(), flags);
    world_ = {};
    SkipByteOrderMark(reader);
    SkipLeadingComments(reader, *log_);
    if (!reader.AtEof() && reader.PeekChar() == '{') {
      reader.GetChar();
      world_.isOpened = true;
    }
    if (!(flags & READ_MERGE) || wads.Items().empty()) {
      wads.Clear();
      wads.Add(data_.wads.DefaultName(), data_.wads.Default());
    }
    undo.Clear();
    TakeChildren();
    staleBindings_ = false;
  }
  if (!ReadWorldspawn(reader)) return log_->flags;

  readProgress_ = 0;
  FinishWorldspawn();
  ReadBehindWorldspawn(reader);
  RepairStructure(*this, *log_);
  if (log_->Met(Loss::SecondWorld) > 0 && IsWorldspawn(ClassnameOf(*this))) {
    const PointersKept kept(*this);
    JoinOtherWorlds(*this);
  }
  if (!GetKey("XMPentityname")) SetKey("XMPentityname", "worldspawn");
  BindAnew();
  if (reader.HasZeroBytes()) log_->CountZeroBytes(reader);
  log_->ShowSummary();
  AnnounceEverything();
  return log_->flags;
}

bool Map::readWithLoss() const {
  return log_->HasLoss();
}

void Map::RememberLoss() {
  log_->fileHasMore = true;
}

// True when the worldspawn has ended, false when there is enough for one call.
bool Map::ReadWorldspawn(TextReader& reader) {
  ObjectReader objects(reader, wads, *log_);
  const unsigned enough = readProgress_ + BLOCKS_A_CALL;
  while (readProgress_ < enough) {
    reader.SkipWhitespace();
    if (reader.AtEof()) {
      if (world_.isOpened) log_->Count(Loss::MissingBrace, reader);
      // As where a power cut left nothing but zeros.
      if (world_.isBlank && !world_.isOpened) {
        log_->Count(reader.FileLength() > 0 ? Loss::NoMap : Loss::NothingAtAll, reader);
      }
      return true;
    }
    const std::uint8_t c = reader.PeekChar();
    if (c == '{') {
      OpenInWorldspawn(reader, objects);
      continue;
    }
    if (c == '}') {
      reader.GetChar();
      const bool isStray = world_.isBlank && !world_.isOpened;
      if (!world_.isOpened) log_->Count(isStray ? Loss::ExtraBrace : Loss::MissingBrace, reader);
      if (isStray) continue;
      return true;
    }
    if (c != '(' && c != '"') {
      objects.PassOther("worldspawn");
      continue;
    }
    if (c == '(') {
      objects.ReadFaces(*this);
    } else if (objects.ReadKey()) {
      ReadWorldspawnKey(objects);
    }
    world_.isBlank = false;
  }
  return false;
}

// The first brace is the world's own, and so is a second one before the keys of the world.
void Map::OpenInWorldspawn(TextReader& reader, ObjectReader& objects) {
  if (world_.isBlank && (!world_.isOpened || IsWorldspawnNext(reader, Report()))) {
    if (world_.isOpened) log_->Count(Loss::ExtraBrace, reader);
    reader.GetChar();
    world_.isOpened = true;
    return;
  }
  reader.GetChar();
  world_.isBlank = false;
  objects.Read(*InsertChild(std::make_unique<entity>(*classSet), getEntityList().size()));
  ++readProgress_;
}

// A second classname is that of an object whose brace is missing.
void Map::ReadWorldspawnKey(ObjectReader& objects) {
  const bool isClass = EqualNoCase(objects.Key(), "classname");
  if (isClass && world_.hasClass && objects.Value() != ClassnameOf(*this)) {
    entity* child = InsertChild(std::make_unique<entity>(*classSet), getEntityList().size());
    return objects.ReadUnopened(*child, true);
  }
  world_.hasClass |= isClass;
  objects.SetKey(*this);
  TakeWorldspawnKey(objects.Key(), objects.Value());
}

// What the map itself makes of a key of its.
void Map::TakeWorldspawnKey(const std::string& key, const std::string& value) {
  const bool merging = log_->flags & READ_MERGE;
  if (EqualNoCase(key, "wad")) {
    const bool isFirst = log_->FirstTime(READ_HAD_WADS);
    if (!merging) LoadWads(value, !isFirst);
  } else if (key == "XMPqc") {
    const bool isFirst = log_->FirstTime(READ_HAD_CLASSES);
    if (!merging) LoadClassSet(value, !isFirst);
  } else if (key == "XMPversion" && VersionKey(value) > VersionKey("1.01") &&
             log_->FirstTime(READ_VERSION_REPORTED)) {
    Report().Show(
        "Warning",
        "This map was created with a version of Ferrowand more advanced than this one. It "
        "may contain information which may be corrupted by this version. This you are not "
        "sure, save the map with a new filename.",
        Buttons::Ok, Icon::Warning);
  }
}

// Blocks with a class of their own are the entities of a Quake map. All else shows that a brace
// further up was missing or too many, and goes on with what was closed last.
void Map::ReadBehindWorldspawn(TextReader& reader) {
  ObjectReader objects(reader, wads, *log_);
  entity* last = this;
  for (reader.SkipWhitespace(); !reader.AtEof(); reader.SkipWhitespace()) {
    const std::uint8_t c = reader.PeekChar();
    if (c == '{') {
      last = OpenBehindWorldspawn(reader, objects, last);
    } else if (c == '}') {
      reader.GetChar();
      log_->Count(Loss::ExtraBrace, reader);
      MakeBrushOfFaces(*last);
    } else if (c == '"' || c == '(') {
      last = ReadUnopened(objects, last);
    } else {
      objects.PassOther("entity");
    }
  }
  log_->flags |= READ_END_OF_FILE;
}

// A brush without an entity is one of the last entity, if that has brushes, or of the world.
entity* Map::OpenBehindWorldspawn(TextReader& reader, ObjectReader& objects, entity* last) {
  reader.GetChar();
  reader.SkipWhitespace();
  const bool isBrush = reader.PeekChar() == '(';
  if (isBrush) MakeBrushOfFaces(*last);
  const bool isOfLast = isBrush && last != this && !last->HasOrigin();
  entity* parent = isOfLast ? last : this;
  entity* child = parent->AddChild(std::make_unique<entity>(*classSet));
  objects.Read(*child);
  return isBrush ? last : child->Parent()->getEntityList().back().get();
}

// Keys or faces without an opening brace: with a class they are another entity.
entity* Map::ReadUnopened(ObjectReader& objects, entity* last) {
  entity* child = AddChild(std::make_unique<entity>(*classSet));
  objects.ReadUnopened(*child, false);
  const std::string_view classname = ClassnameOf(*child);
  const bool isBrush = classname == "brush";
  if (!isBrush && classname != "worldspawn") {
    log_->Count(Loss::MissingBrace, objects.Reader());
    return child;
  }
  log_->Count(Loss::ExtraBrace, objects.Reader());
  if (last == this) {
    JoinWorldspawn(*child);
  } else {
    Join(*last, *child);
  }
  return last;
}

void Map::JoinWorldspawn(entity& object) {
  for (int i = 0; i < object.numkeys(); ++i) {
    TakeWorldspawnKey(object.KeyName(i), object.KeyValue(i));
  }
  Join(*this, object);
}

// The game makes a world of the first one alone. What the others hold stays where it stands.
void Map::JoinOtherWorlds(entity& parent) {
  for (std::size_t i = 0; i < parent.getEntityList().size(); ++i) {
    entity& child = *parent.getEntityList()[i];
    JoinOtherWorlds(child);
    if (!IsWorldspawn(ClassnameOf(child))) continue;
    MakeBrushOfFaces(child);
    TakeMissingKeys(child);
    ReplaceByChildren(parent, i--);
  }
}

// Of what both have the map's own stays; WADs that only the other has come behind.
void Map::TakeMissingKeys(const entity& world) {
  for (int i = 0; i < world.numkeys(); ++i) {
    const std::string &name = world.KeyName(i), &value = world.KeyValue(i);
    if (!GetKey(name)) {
      SetKey(name, value);
      TakeWorldspawnKey(name, value);
    } else if (EqualNoCase(name, "wad") && !(log_->flags & READ_MERGE)) {
      ForEachName(value, [&](const std::string& wad) {
        if (!IsNamed(wads, wad)) wads.Add(wad, data_.wads.Get(wad, false, Folder()));
      });
      staleBindings_ = true;
    }
  }
}

void Map::LoadWads(const std::string& names, bool quiet) {
  wads.Clear();
  ForEachName(names, [&](const std::string& name) {
    wads.Add(name, data_.wads.Get(name, quiet || IsNamed(wads, name), Folder()));
  });
  staleBindings_ |= !getEntityList().empty() || brush.getNumFaces() > 0;
}

void Map::LoadClassSet(const std::string& name, bool quiet) {
  classSet = &data_.classes.Get(name, quiet, Folder());
  classSetName = name;
  const char* classname = GetKey("classname");
  SetClass(&classSet->FindClass(classname ? classname : "unknown"));
  staleBindings_ |= !getEntityList().empty();
}

// WADs or classes came after what uses them.
void Map::BindAnew() {
  if (!std::exchange(staleBindings_, false)) return;
  ResolveClasses(*classSet);
  ResolveTextures(wads);
}

void Map::FinishWorldspawn() {
  BindAnew();
  SetCurrentLayer(FirstLayer());
  if (!currentLayer_) {
    std::vector<EntityPtr> children = TakeChildren();
    AddLayer("import");
    for (EntityPtr& child : children) AddChild(std::move(child));
  }
  wads.RemoveDuplicates();
}

std::unique_ptr<Map> LoadMap(GameData& data, const std::string& name, std::size_t undoLevels) {
  TextReader reader(data.reporter);
  reader.Open(name);
  if (!reader.IsOpen()) return nullptr;

  const ProgressScope scope(data.progress, name);
  auto map = std::make_unique<Map>(data, undoLevels);
  map->filename = name;
  unsigned flags = 0;
  do {
    flags = map->ReadMap(reader, flags);
    data.progress.Step("Entities: %u", map->readProgress(), reader.Offset(), reader.FileLength());
  } while (map->readProgress() != 0);
  map->MarkSaved();
  return map;
}

}  // namespace ferrowand
