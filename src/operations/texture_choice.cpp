#include "operations/texture_choice.h"

#include <algorithm>

#include "base/options.h"
#include "base/path_text.h"
#include "document/map.h"
#include "operations/face_texture.h"

namespace ferrowand {
namespace {

// The settings keep a list as its words: no name of a texture holds a blank.
std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    if (end > 0) words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

auto Find(const std::vector<std::string>& names, std::string_view name) {
  return std::ranges::find_if(names, [&](const std::string& n) { return EqualNoCase(n, name); });
}

bool HasFace(const entity& e, std::string_view name) {
  return std::ranges::any_of(
             e.brush.Faces(),
             [&](const Face& face) { return EqualNoCase(face.WrittenName(), name); }) ||
         std::ranges::any_of(e.getEntityList(),
                             [&](const EntityPtr& child) { return HasFace(*child, name); });
}

bool HasTexture(const Map& map, std::string_view name) {
  const Texture* texture = map.wads.FindTexture(name);
  return (texture && texture != texture->wad->BadTexture()) || HasFace(map, name);
}

}  // namespace

std::string FirstTextureOf(const Map& map) {
  const auto& wads = map.wads.Items();
  const WadFile& wad = wads.empty() ? map.Data().wads.Default() : *wads.front().wad;
  const auto textures = wad.Textures();
  return std::string((textures.empty() ? *wad.BadTexture() : *textures.front()).Name());
}

const std::string& TextureChoice::Current() const {
  return options_.currentTexture;
}

std::string TextureChoice::For(const Map& map) const {
  const std::string& current = Current();
  return !current.empty() && HasTexture(map, current) ? current : FirstTextureOf(map);
}

void TextureChoice::Choose(std::string_view name) {
  if (!IsTextureName(name) || options_.currentTexture == name) return;
  options_.currentTexture = name;
  Announce();
}

void TextureChoice::NoteUse(std::string_view name) {
  if (!IsTextureName(name)) return;
  std::vector<std::string> names = Recent();
  if (!names.empty() && names.front() == name) return;
  if (const auto old = Find(names, name); old != names.end()) names.erase(old);
  names.insert(names.begin(), std::string(name));
  names.resize(std::min(names.size(), MOST_RECENT));
  options_.recentTextures = Joined(names);
  Announce();
}

std::vector<std::string> TextureChoice::Recent() const {
  return WordsOf(options_.recentTextures);
}

bool TextureChoice::IsFavourite(std::string_view name) const {
  const std::vector<std::string> names = Favourites();
  return Find(names, name) != names.end();
}

void TextureChoice::SetFavourite(std::string_view name, bool on) {
  std::vector<std::string> names = Favourites();
  const auto old = Find(names, name);
  if (on == (old != names.end()) || (on && !IsTextureName(name))) return;
  if (!on) {
    names.erase(old);
  } else if (names.size() < MOST_FAVOURITES) {
    names.emplace_back(name);
  }
  options_.favouriteTextures = Joined(names);
  Announce();
}

std::vector<std::string> TextureChoice::Favourites() const {
  return WordsOf(options_.favouriteTextures);
}

void TextureChoice::Announce() const {
  for (TextureChoiceObserver* observer : observers_) observer->OnTextureChosen();
}

}  // namespace ferrowand
