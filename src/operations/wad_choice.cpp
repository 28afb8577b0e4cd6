#include "operations/wad_choice.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/path_text.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "operations/texture_use.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

using WadNames = std::vector<std::string>;

void Choose(Map& map, const WadNames& names) {
  EditStep step(map);
  step.ChooseWads(names);
}

std::string WithSlashes(std::string path) {
  std::ranges::replace(path, '\\', '/');
  return path;
}

// Whether the map's list can hold it, and the library has that very file under it.
EditResult Check(const Map& map, const std::string& name, const std::string& path) {
  if (name.find_first_of(";\"\r\n") != name.npos) return EditResult::NotAWadName;
  WadFile& wad = map.Data().wads.Get(name, true, map.Folder());
  if (IsMissing({name, &wad})) return EditResult::CannotOpen;
  return file::IsSame(wad.FileName(), path) ? EditResult::Done : EditResult::OtherWadOpen;
}

bool HasWadOfName(const Map& map, const std::string& path, std::size_t except) {
  const auto& items = map.wads.Items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i != except && IsSameFileName(items[i].name, path)) return true;
  }
  return false;
}

// The name of the file in the list; nothing, and why, where it cannot be there.
EditResult NameFor(Map& map, const std::string& path, std::size_t except, std::string& name) {
  if (HasWadOfName(map, path, except)) return EditResult::WadTaken;
  name = WadNameOf(map, path);
  EditResult result = Check(map, name, path);
  if (result == EditResult::CannotOpen && name != WithSlashes(path)) {
    name = WithSlashes(path);
    result = Check(map, name, path);
  }
  return result;
}

}  // namespace

std::vector<WadRow> WadRows(const Map& map, const TextureUses& uses) {
  std::unordered_map<std::string, const WadFile*> holders;  // of a name; null where several are
  std::unordered_map<const WadFile*, std::size_t> rowOf;
  std::vector<WadRow> rows;
  for (const WadList::Item& item : map.wads.Items()) {
    WadRow row{.name = item.name};
    if (!IsMissing(item)) {
      row.file = item.wad->FileName();
      row.textures = item.wad->Textures().size();
      for (const auto& texture : item.wad->Textures()) {
        const auto [known, isNew] = holders.try_emplace(TextureKey(texture->Name()), item.wad);
        if (!isNew && known->second != item.wad) known->second = nullptr;
      }
      rowOf[item.wad] = rows.size();
    }
    rows.push_back(std::move(row));
  }
  for (const auto& [wad, index] : rowOf) {
    WadRow& row = rows[index];
    for (const auto& texture : wad->Textures()) {
      const std::string name(texture->Name());
      if (!holders[TextureKey(name)]) row.shared.push_back(name);
      const TextureUse& use = uses.Of(name);
      if (use.faces == 0 || map.wads.FindTexture(name) != texture.get()) continue;
      ++row.used;
      row.faces += use.faces;
    }
  }
  return rows;
}

std::string WadNameOf(const Map& map, const std::string& path) {
  std::vector<std::string> folders = map.Data().searchPath.Entries();
  folders.push_back(map.Folder());
  const std::string whole = WithSlashes(path);
  std::string shortest = whole;
  for (const std::string& entry : folders) {
    std::string folder = WithSlashes(entry);
    if (folder.empty()) continue;
    if (folder.back() != '/') folder += '/';
    if (whole.size() <= folder.size()) continue;
    if (!EqualNoCase(std::string_view(whole).substr(0, folder.size()), folder)) continue;
    const std::string rest = whole.substr(folder.size());
    if (rest.size() < shortest.size()) shortest = rest;
  }
  return shortest;
}

EditResult AddWad(Map& map, const std::string& path) {
  WadNames names = map.wads.ItemNames();
  std::string name;
  const EditResult result = NameFor(map, path, names.size(), name);
  if (result != EditResult::Done) return result;
  names.push_back(name);
  Choose(map, names);
  return EditResult::Done;
}

EditResult RemoveWad(Map& map, std::size_t index) {
  WadNames names = map.wads.ItemNames();
  if (index >= names.size()) return EditResult::NothingSelected;
  if (names.size() == 1) return EditResult::LastWad;
  names.erase(names.begin() + static_cast<std::ptrdiff_t>(index));
  Choose(map, names);
  return EditResult::Done;
}

EditResult MoveWad(Map& map, std::size_t from, std::size_t to) {
  WadNames names = map.wads.ItemNames();
  if (from >= names.size() || to >= names.size() || from == to) return EditResult::NothingSelected;
  std::string name = std::move(names[from]);
  names.erase(names.begin() + static_cast<std::ptrdiff_t>(from));
  names.insert(names.begin() + static_cast<std::ptrdiff_t>(to), std::move(name));
  Choose(map, names);
  return EditResult::Done;
}

EditResult ExchangeWad(Map& map, std::size_t index, const std::string& path) {
  WadNames names = map.wads.ItemNames();
  if (index >= names.size()) return EditResult::NothingSelected;
  std::string name;
  const EditResult result = NameFor(map, path, index, name);
  if (result != EditResult::Done) return result;
  names[index] = name;
  Choose(map, names);
  return EditResult::Done;
}

std::size_t FindMissingWads(Map& map) {
  const auto missing = [&map] {
    return static_cast<std::size_t>(std::ranges::count_if(map.wads.Items(), IsMissing));
  };
  const std::size_t before = missing();
  if (before == 0) return 0;
  map.UseWads(map.wads.ItemNames());
  return before - missing();
}

}  // namespace ferrowand
