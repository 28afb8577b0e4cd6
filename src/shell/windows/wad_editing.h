// What the texture browser does to the WADs of its map: pictures in and out, names, textures that
// go. Everything asks what it needs, and says what it did in the map's status.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "gamedata/picture_import.h"
#include "shell/dialogs/form_dialog.h"

namespace ferrowand {

class Dialogs;
class Documents;
class Map;
struct GameData;
struct NamedPicture;
struct Texture;

enum class WadEdit { Insert, InsertFromGame, Alter, Export, Rename, Remove, Copy };
// Whether it needs a texture that is chosen.
constexpr bool IsOfOneTexture(WadEdit edit) {
  return edit != WadEdit::Insert && edit != WadEdit::InsertFromGame;
}

class WadEditing {
 public:
  // All outlive it.
  WadEditing(GameData& data, Dialogs& dialogs, const Documents& documents)
      : data_(data), dialogs_(dialogs), documents_(documents) {}

  // `chosen` is one of the map's WADs', or null where that needs none.
  void Do(WadEdit edit, Map& map, Texture* chosen);
  // Whether textures of that WAD can be copied to the other one, which may be written.
  static bool MayCopy(const WadFile& from, const WadFile& to);
  // With all frames of its animation that the WAD lacks. False when the user has been told why not.
  bool CopyTo(Map& map, Texture& texture, WadFile& to);

 private:
  void Insert(Map& map);
  bool InsertPcx(Map& map, WadFile& wad, const std::string& path, const std::string& name);
  void InsertPcxAs(Map& map, const std::string& path);
  void InsertPicture(Map& map, const std::string& path);
  void InsertFromGame(Map& map);
  std::string AddAll(WadFile& wad, const std::vector<NamedPicture>& pictures,
                     const std::string& pattern, const ImportRules& rules);
  void Alter(Map& map, Texture& texture);
  void Export(Map& map, Texture& texture);
  void Rename(Map& map, Texture& texture);
  void Remove(Map& map, Texture& texture);
  void Copy(Map& map, Texture& texture);

  // Whether a new texture of the WAD may be called so; else the user has been told.
  bool MayName(const WadFile& wad, const std::string& name, const Texture* but = nullptr);
  // That one, or all of its animation, as the user wants it; none for neither.
  std::vector<Texture*> AskFrames(Texture& texture, const std::string& what);
  void Refuse(const std::string& why);

  GameData& data_;
  Dialogs& dialogs_;
  const Documents& documents_;
};

}  // namespace ferrowand
