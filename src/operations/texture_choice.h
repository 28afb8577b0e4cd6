// The texture that is put on faces, those that were put there last, and those that the user likes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

class Map;
struct Options;

class TextureChoiceObserver {
 public:
  virtual ~TextureChoiceObserver() = default;
  virtual void OnTextureChosen() = 0;
};

// One for all maps, kept in the settings. Names count as one in capitals or not.
class TextureChoice {
 public:
  static constexpr std::size_t MOST_RECENT = 32;
  static constexpr std::size_t MOST_FAVOURITES = 1000;

  // The options outlive it.
  explicit TextureChoice(Options& options) : options_(options) {}
  TextureChoice(const TextureChoice&) = delete;
  TextureChoice& operator=(const TextureChoice&) = delete;

  // Chosen last; empty at first.
  const std::string& Current() const;
  // The current one where a WAD of the map, or a face, has it; else the first of the first WAD.
  std::string For(const Map& map) const;
  // What no file can hold (no name, blanks, 16 letters) is not taken.
  void Choose(std::string_view name);

  // It has been put on faces.
  void NoteUse(std::string_view name);
  std::vector<std::string> Recent() const;  // the newest first

  bool IsFavourite(std::string_view name) const;
  void SetFavourite(std::string_view name, bool on);
  std::vector<std::string> Favourites() const;  // in the order of choosing

  void AddObserver(TextureChoiceObserver& observer) { observers_.push_back(&observer); }
  void RemoveObserver(TextureChoiceObserver& observer) { std::erase(observers_, &observer); }

 private:
  void Announce() const;

  Options& options_;
  std::vector<TextureChoiceObserver*> observers_;
};

// The first of the map's first WAD: of new faces that follow no choice.
std::string FirstTextureOf(const Map& map);

}  // namespace ferrowand
