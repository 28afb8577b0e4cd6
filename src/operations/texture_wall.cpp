#include "operations/texture_wall.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "base/path_text.h"
#include "base/report.h"
#include "base/text_pattern.h"
#include "document/map.h"
#include "gamedata/texture_name.h"
#include "operations/texture_use.h"

namespace ferrowand {
namespace {

constexpr char MISSING[] = "Missing: no WAD of the map has these";

// A width or a height; 0 for any. Nothing for what is neither.
std::optional<unsigned> SideOf(std::string_view text) {
  if (text == "*") return 0;
  unsigned side = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
  if (error != std::errc() || end != text.data() + text.size() || side == 0) return std::nullopt;
  return side;
}

struct SizeWord {
  unsigned width, height;  // 0 for any

  bool Matches(const Texture& texture) const {
    return (width == 0 || width == texture.width) && (height == 0 || height == texture.height);
  }
};

std::optional<SizeWord> SizeOfWord(std::string_view word) {
  const std::size_t by = word.find_first_of("xX");
  if (by == word.npos) return std::nullopt;
  const auto width = SideOf(word.substr(0, by)), height = SideOf(word.substr(by + 1));
  if (!width || !height) return std::nullopt;
  return SizeWord{*width, *height};
}

class Filter {
 public:
  explicit Filter(std::string_view text) {
    while (!text.empty()) {
      const std::size_t end = std::min(text.find(' '), text.size());
      const std::string_view word = text.substr(0, end);
      if (!word.empty()) words_.push_back({TextPattern(word), SizeOfWord(word)});
      text.remove_prefix(std::min(end + 1, text.size()));
    }
  }

  bool operator()(const WallItem& item) const {
    return std::ranges::all_of(words_, [&](const Word& word) {
      if (word.size && item.texture && word.size->Matches(*item.texture)) return true;
      return std::ranges::any_of(item.frames,
                                 [&](const std::string& f) { return word.pattern.Matches(f); });
    });
  }

 private:
  struct Word {
    TextPattern pattern;
    std::optional<SizeWord> size;
  };
  std::vector<Word> words_;
};

// Frames in the order of the game: "+0" to "+9", then "+a" to "+j".
bool IsEarlierFrame(const std::string& a, const std::string& b) {
  return CompareNoCase(a, b) < 0;
}

std::vector<WallItem> ItemsOfWads(const Map& map) {
  std::vector<WallItem> items;
  std::unordered_set<std::string> names;
  std::unordered_map<std::string, std::size_t> animations;
  for (const WadList::Item& wad : map.wads.Items()) {
    for (const auto& texture : wad.wad->Textures()) {
      const std::string name(texture->Name());
      if (texture.get() == wad.wad->BadTexture() || !names.insert(TextureKey(name)).second)
        continue;
      const std::string animation = AnimationOf(name);
      const auto known = animations.find(animation);
      if (animation.empty() || known == animations.end()) {
        if (!animation.empty()) animations[animation] = items.size();
        items.push_back({.name = name, .texture = texture.get(), .frames = {name}});
        continue;
      }
      WallItem& item = items[known->second];
      item.frames.push_back(name);
      if (IsEarlierFrame(name, item.name)) {
        item.name = name;
        item.texture = texture.get();
      }
    }
  }
  for (WallItem& item : items) std::ranges::sort(item.frames, IsEarlierFrame);
  return items;
}

std::vector<WallItem> MissingItems(const TextureUses& uses) {
  std::vector<WallItem> items;
  for (const TextureUse* use : uses.Missing()) {
    items.push_back({.name = use->name, .frames = {use->name}});
  }
  return items;
}

// Names in a row, in capitals or not.
class Places {
 public:
  explicit Places(std::span<const std::string> names) : end_(names.size()) {
    for (std::size_t i = 0; i < names.size(); ++i) places_.try_emplace(TextureKey(names[i]), i);
  }

  // Of the first of the item's names that is there.
  std::size_t Of(const WallItem& item) const {
    std::size_t first = end_;
    for (const std::string& frame : item.frames) {
      const auto found = places_.find(TextureKey(frame));
      if (found != places_.end()) first = std::min(first, found->second);
    }
    return first;
  }
  bool Has(const WallItem& item) const { return Of(item) < end_; }

 private:
  std::unordered_map<std::string, std::size_t> places_;
  std::size_t end_;
};

bool IsShown(const WallItem& item, WallShows shows, const Places& recent) {
  switch (shows) {
    case WallShows::Full:
      return true;
    case WallShows::Recent:
      return recent.Has(item);
    case WallShows::Used:
      return item.faces > 0;
    case WallShows::Favourites:
      return item.isFavourite;
    case WallShows::Cached:
      return item.texture && !item.texture->pixels.empty();
  }
  return false;
}

bool IsByName(const WallItem& a, const WallItem& b) {
  return CompareNoCase(a.name, b.name) < 0;
}

unsigned TexelsOf(const WallItem& item) {
  return unsigned{item.texture->width} * item.texture->height;
}

// The items of each WAD stand together.
void SortWithinWads(std::vector<WallItem>& items) {
  for (auto first = items.begin(); first != items.end();) {
    const auto last = std::find_if(first, items.end(), [&](const WallItem& item) {
      return item.texture->wad != first->texture->wad;
    });
    std::stable_sort(first, last, IsByName);
    first = last;
  }
}

void Sort(std::vector<WallItem>& items, WallOrder order) {
  if (order == WallOrder::Wad) return SortWithinWads(items);
  std::ranges::stable_sort(items, IsByName);
  if (order == WallOrder::Size) {
    std::ranges::stable_sort(items, [](const WallItem& a, const WallItem& b) {
      return TexelsOf(a) != TexelsOf(b) ? TexelsOf(a) < TexelsOf(b)
                                        : a.texture->height < b.texture->height;
    });
  } else if (order == WallOrder::Use) {
    std::ranges::stable_sort(items, std::greater{}, &WallItem::faces);
  }
}

std::string TitleOf(const Map& map, const WadFile& wad) {
  for (const WadList::Item& item : map.wads.Items()) {
    if (item.wad == &wad && !IsMissing(item)) return item.name;
  }
  return wad.FileName();
}

void AddGroup(TextureWall& wall, std::vector<WallItem> items, std::string title,
              WadFile* wad = nullptr) {
  if (items.empty()) return;
  const std::size_t begin = wall.items.size();
  std::ranges::move(items, std::back_inserter(wall.items));
  wall.groups.push_back({std::move(title), begin, wall.items.size(), wad});
}

void AddGroupsOfWads(TextureWall& wall, std::vector<WallItem> items, const Map& map) {
  for (auto first = items.begin(); first != items.end();) {
    WadFile& wad = *first->texture->wad;
    const auto last = std::find_if(first, items.end(),
                                   [&](const WallItem& item) { return item.texture->wad != &wad; });
    AddGroup(wall, {std::make_move_iterator(first), std::make_move_iterator(last)},
             TitleOf(map, wad), &wad);
    first = last;
  }
}

}  // namespace

std::size_t TextureWall::Find(std::string_view name) const {
  const auto stands = [&](const WallItem& item) {
    return std::ranges::any_of(item.frames,
                               [&](const std::string& f) { return EqualNoCase(f, name); });
  };
  return static_cast<std::size_t>(std::ranges::find_if(items, stands) - items.begin());
}

TextureWall WallOf(const Map& map, const TextureUses& uses, const WallQuery& query) {
  TextureWall wall;
  std::vector<WallItem> missing = MissingItems(uses), items = ItemsOfWads(map);
  wall.numTextures = missing.size() + items.size();
  const Places recent(query.recent), favourites(query.favourites);
  const Filter filter(query.text);
  for (auto* list : {&missing, &items}) {
    for (WallItem& item : *list) {
      item.faces = 0;
      for (const std::string& frame : item.frames) item.faces += uses.Of(frame).faces;
      item.isFavourite = favourites.Has(item);
    }
    std::erase_if(*list, [&](const WallItem& item) {
      return !IsShown(item, query.shows, recent) || !filter(item);
    });
  }
  const bool hasOthers = !missing.empty();
  AddGroup(wall, std::move(missing), MISSING);
  if (query.shows == WallShows::Recent) {
    std::ranges::stable_sort(items, {}, [&](const WallItem& item) { return recent.Of(item); });
  } else {
    Sort(items, query.order);
    if (query.order == WallOrder::Wad) {
      AddGroupsOfWads(wall, std::move(items), map);
      return wall;
    }
  }
  AddGroup(wall, std::move(items), hasOthers ? "In the WADs" : "");
  return wall;
}

}  // namespace ferrowand
