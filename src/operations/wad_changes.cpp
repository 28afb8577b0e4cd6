#include "operations/wad_changes.h"

#include <algorithm>
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

bool Shows(const entity& e, const Texture& texture) {
  return std::ranges::any_of(e.brush.Faces(),
                             [&](const Face& face) { return face.texture == &texture; });
}

void RenameOnFaces(Map& map, const Texture& texture, std::string_view newName) {
  std::vector<entity*> users;
  ForEachEntity(map, [&](const entity& e) {
    if (Shows(e, texture)) users.push_back(const_cast<entity*>(&e));
  });
  if (users.empty()) return;
  const ActionScope action(map.Data(), "Rename texture");
  EditStep step(map);
  for (entity* e : users) {
    step.ChangeKeys(*e);
    for (int i = 0; i < e->brush.getNumFaces(); ++i) {
      Face& face = e->brush.face(i);
      if (face.texture == &texture) face.SetName(newName);
    }
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

bool AddToWad(MapSpan maps, WadFile& wad, std::unique_ptr<Texture> texture) {
  if (!wad.AddTexture(std::move(texture))) return false;
  BindAnew(maps);
  return true;
}

bool AddToWad(MapSpan maps, WadFile& wad, std::vector<std::unique_ptr<Texture>> textures) {
  if (!wad.AddTextures(std::move(textures))) return false;
  BindAnew(maps);
  return true;
}

bool RemoveFromWad(MapSpan maps, Texture& texture) {
  if (!texture.wad->RemoveTexture(texture)) return false;
  BindAnew(maps);
  return true;
}

bool RenameInWad(MapSpan maps, Texture& texture, std::string_view newName) {
  const std::string name(newName);
  if (!texture.wad->RenameTexture(texture, name)) return false;
  for (const auto& map : maps) RenameOnFaces(*map, texture, name);
  BindAnew(maps);
  return true;
}

}  // namespace ferrowand
