#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/path_text.h"
#include "base/text_reader.h"
#include "document/map.h"

namespace ferrowand {
namespace {

constexpr unsigned BLOCKS_A_CALL = 50;

// More bits of the flags of a load, of this file only: what comes again is said only once.
constexpr unsigned READ_VERSION_REPORTED = 64;
constexpr unsigned READ_HAD_WADS = 128;
constexpr unsigned READ_HAD_CLASSES = 256;

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
void SkipLeadingComments(TextReader& reader) {
  for (;;) {
    reader.SkipWhitespace();
    if (reader.AtEof() || reader.PeekChar() != '/') return;
    reader.GetChar();
    if (reader.PeekChar() != '/') {
      reader.UngetChar();
      return;
    }
    reader.SkipLine();
  }
}

}  // namespace

unsigned Map::ReadMap(TextReader& reader, unsigned flags) {
  if (readProgress_ == 0) {
    SkipByteOrderMark(reader);
    SkipLeadingComments(reader);
    if (!reader.AtEof() && reader.PeekChar() == '{') reader.GetChar();
    if (!(flags & READ_MERGE) || wads.Items().empty()) {
      wads.Clear();
      wads.Add(data_.wads.DefaultName(), data_.wads.Default());
    }
    undo.Clear();
    TakeChildren();
    staleBindings_ = false;
  }
  if (!ReadWorldspawn(reader, flags)) return flags;

  readProgress_ = 0;
  FinishWorldspawn();
  flags = Read(reader, wads, flags);
  if (!GetKey("XMPentityname")) SetKey("XMPentityname", "worldspawn");
  AnnounceEverything();
  return flags;
}

// True when the worldspawn has ended, false when there is enough for one call.
bool Map::ReadWorldspawn(TextReader& reader, unsigned& flags) {
  KeyText text;
  for (unsigned blocks = 0; blocks < BLOCKS_A_CALL;) {
    reader.SkipWhitespace();
    if (reader.AtEof()) return true;
    const char c = static_cast<char>(reader.PeekChar());
    if (c == '(') {
      flags = ReadFaces(reader, wads, flags);
      continue;
    }
    reader.GetChar();
    if (c == '"') {
      flags = ReadWorldspawnKey(reader, text, flags);
    } else if (c == '{') {
      entity* child = InsertChild(std::make_unique<entity>(*classSet), getEntityList().size());
      flags = child->Read(reader, wads, flags);
      ++blocks;
      ++readProgress_;
    } else if (c == '}') {
      return true;
    } else if (c == '/' && reader.PeekChar() == '/') {
      reader.SkipLine();
    } else {
      flags = ReportChar(c, "worldspawn", reader, flags);
    }
  }
  return false;
}

unsigned Map::ReadWorldspawnKey(TextReader& reader, KeyText& text, unsigned flags) {
  ReadKey(reader, text);
  const std::string& key = text.name;
  const std::string& value = text.value;
  const bool merging = flags & READ_MERGE;
  if (EqualNoCase(key, "wad")) {
    if (!merging) LoadWads(value, flags & READ_HAD_WADS);
    flags |= READ_HAD_WADS;
  } else if (key == "XMPqc") {
    if (!merging) LoadClassSet(value, flags & READ_HAD_CLASSES);
    flags |= READ_HAD_CLASSES;
  } else if (key == "XMPversion" && VersionKey(value) > VersionKey("1.01") &&
             !(flags & READ_VERSION_REPORTED)) {
    Report().Show(
        "Warning",
        "This map was created with a version of Ferrowand more advanced than this one. It "
        "may contain information which may be corrupted by this version. This you are not "
        "sure, save the map with a new filename.",
        Buttons::Ok, Icon::Warning);
    flags |= READ_VERSION_REPORTED;
  }
  return flags;
}

void Map::LoadWads(const std::string& names, bool quiet) {
  wads.Clear();
  std::string_view rest = names;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = rest.find(';');
    const std::string name(rest.substr(0, end));
    const bool named = std::ranges::any_of(
        wads.Items(), [&](const WadList::Item& item) { return item.name == name; });
    wads.Add(name, data_.wads.Get(name, quiet || named, Folder()));
    if (end != std::string_view::npos) rest.remove_prefix(end + 1);
  }
  staleBindings_ |= !getEntityList().empty() || brush.getNumFaces() > 0;
}

void Map::LoadClassSet(const std::string& name, bool quiet) {
  classSet = &data_.classes.Get(name, quiet, Folder());
  classSetName = name;
  const char* classname = GetKey("classname");
  SetClass(&classSet->FindClass(classname ? classname : "unknown"));
  staleBindings_ |= !getEntityList().empty();
}

void Map::FinishWorldspawn() {
  if (staleBindings_) {
    ResolveClasses(*classSet);
    ResolveTextures(wads);
  }
  SetCurrentLayer(FirstLayer());
  if (!currentLayer_) {
    std::vector<EntityPtr> children = TakeChildren();
    AddLayer("import");
    for (EntityPtr& child : children) AddChild(std::move(child));
  }
  wads.RemoveDuplicates();
}

std::unique_ptr<Map> LoadMap(GameData& data, const std::string& name, std::size_t undoLevels,
                             unsigned* flags) {
  TextReader reader(data.reporter);
  reader.Open(name);
  if (!reader.IsOpen()) return nullptr;

  const ProgressScope scope(data.progress, name);
  auto map = std::make_unique<Map>(data, undoLevels);
  map->filename = name;
  unsigned read = 0;
  do {
    read = map->ReadMap(reader, read);
    data.progress.Step("Entities: %u", map->readProgress(), reader.Offset(), reader.FileLength());
  } while (map->readProgress() != 0);
  map->MarkSaved();
  if (flags) *flags = read;
  return map;
}

}  // namespace ferrowand
