// What the wall of a texture browser holds: the textures of a map's WADs, filtered, sorted and in
// groups, and those that the map has and no WAD.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

class Map;
class TextureUses;
class WadFile;
struct Texture;

enum class WallShows : std::uint8_t { Full, Recent, Used, Favourites, Cached };
enum class WallOrder : std::uint8_t { Name, Size, Use, Wad };

struct WallItem {
  std::string name{};
  Texture* texture = nullptr;  // null for one that is missing
  // All names that it stands for, its own first: an animation is shown once.
  std::vector<std::string> frames{};
  unsigned faces = 0;  // that have it
  bool isFavourite = false;

  friend bool operator==(const WallItem&, const WallItem&) = default;
};

// Items in a row, from one place up to another. The only one may have no title.
struct WallGroup {
  std::string title;
  std::size_t begin = 0, end = 0;
  WadFile* wad = nullptr;  // that it is of; null where it is not of one

  friend bool operator==(const WallGroup&, const WallGroup&) = default;
};

struct WallQuery {
  WallShows shows = WallShows::Full;
  WallOrder order = WallOrder::Name;
  // Words, all of which an item answers to: a pattern that stands in its name, or, as "64x64" or
  // "*x128", its size.
  std::string text{};
  std::span<const std::string> recent{};  // the newest first; shown in that order
  std::span<const std::string> favourites{};
};

struct TextureWall {
  std::vector<WallItem> items;
  std::vector<WallGroup> groups;  // the missing ones first; all items are in one
  std::size_t numTextures = 0;    // that could be shown, missing ones and all

  // The place of the item that stands for the name; the number of items for none.
  std::size_t Find(std::string_view name) const;
  friend bool operator==(const TextureWall&, const TextureWall&) = default;
};

// Of equal names the one of the WAD further in front is shown, as it is the one that faces get.
TextureWall WallOf(const Map& map, const TextureUses& uses, const WallQuery& query);

}  // namespace ferrowand
