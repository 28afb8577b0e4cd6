#include "operations/wad_changes.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/path_text.h"
#include "document/action.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "gamedata/texture_name.h"

namespace ferrowand {
namespace {

constexpr std::size_t FRAME_SIGNS = 2;  // in front of the name of an animation

void BindAnew(MapSpan maps) {
  for (const auto& map : maps) map->BindTexturesAnew();
}

using NewNames = std::unordered_map<const Texture*, std::string>;

void RenameOnFaces(Map& map, const NewNames& names) {
  const auto shows = [&names](const Face& face) { return names.contains(face.texture); };
  std::vector<entity*> users;
  ForEachEntity(map, [&](const entity& e) {
    const bool isUser = std::ranges::any_of(e.brush.Faces(), shows) ||
                        std::ranges::any_of(e.brush.FarFaces(), shows);
    if (isUser) users.push_back(const_cast<entity*>(&e));
  });
  if (users.empty()) return;
  const ActionScope action(map.Data(), "Rename texture");
  EditStep step(map);
  const auto rename = [&names](Face& face) {
    const auto known = names.find(face.texture);
    if (known != names.end()) face.SetName(known->second);
  };
  for (entity* e : users) {
    step.ChangeKeys(*e);
    for (int i = 0; i < e->brush.getNumFaces(); ++i) rename(e->brush.face(i));
    std::ranges::for_each(e->brush.FarFaces(), rename);
  }
}

}  // namespace

std::vector<Texture*> FramesOf(Texture& texture) {
  const std::string animation = AnimationOf(texture.Name());
  if (animation.empty()) return {&texture};
  std::vector<Texture*> frames;
  for (const auto& other : texture.wad->Textures()) {
    if (AnimationOf(other->Name()) == animation) frames.push_back(other.get());
  }
  return frames;
}

std::string NameOfFrame(std::string_view frame, std::string_view newName) {
  if (AnimationOf(frame).empty() || AnimationOf(newName).empty()) return std::string(newName);
  return std::string(frame.substr(0, FRAME_SIGNS)) + std::string(newName.substr(FRAME_SIGNS));
}

bool IsTaken(const WadFile& wad, std::string_view name, const Texture* but) {
  return std::ranges::any_of(wad.Textures(), [&](const std::unique_ptr<Texture>& texture) {
    return texture.get() != but && EqualNoCase(texture->Name(), name);
  });
}

std::unique_ptr<Texture> CopyOf(Texture& texture) {
  auto copy = std::make_unique<Texture>();
  copy->width = texture.width;
  copy->height = texture.height;
  copy->pixels = texture.wad->WholeImage(texture);
  copy->entry.name = texture.entry.name;
  return copy;
}

// Bound anew whatever the edit has come to: before it the file may have been read again.

bool AddToWad(MapSpan maps, WadFile& wad, std::unique_ptr<Texture> texture) {
  std::vector<std::unique_ptr<Texture>> one;
  one.push_back(std::move(texture));
  return AddToWad(maps, wad, std::move(one));
}

bool AddToWad(MapSpan maps, WadFile& wad, std::vector<std::unique_ptr<Texture>> textures) {
  const bool worked = wad.AddTextures(std::move(textures));
  BindAnew(maps);
  return worked;
}

bool RemoveFromWad(MapSpan maps, WadFile& wad, std::span<Texture* const> textures) {
  const bool worked = wad.RemoveTextures(textures);
  BindAnew(maps);
  return worked;
}

bool RewriteInWad(MapSpan maps, Texture& texture, std::span<const std::uint8_t> pixels) {
  const bool worked = texture.wad->RewriteTexture(texture, pixels);
  BindAnew(maps);
  return worked;
}

bool RenameInWad(MapSpan maps, WadFile& wad, std::span<const TextureRename> renames) {
  const bool worked = wad.RenameTextures(renames);
  NewNames names;
  for (const auto& [texture, name] : renames) names[texture] = name;
  if (worked) {
    for (const auto& map : maps) RenameOnFaces(*map, names);
  }
  BindAnew(maps);
  return worked;
}

}  // namespace ferrowand
