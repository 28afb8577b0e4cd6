#include "gamedata/file_kind.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/file.h"

namespace ferrowand {
namespace {

constexpr std::size_t HEAD = 16;  // bytes that tell

struct Kind {
  std::string_view head;
  const char* name;
  const char* content;  // what saving a map over the file would destroy
};

constexpr const char* COMPILED = "its compiled geometry, lighting and textures";

constexpr const char* UTF16 = "a text in UTF-16";

constexpr Kind KINDS[] = {
    {{"\x1d\0\0\0", 4}, "a compiled Quake map (BSP)", COMPILED},
    {{"\x1e\0\0\0", 4}, "a compiled Half-Life map (BSP)", COMPILED},
    {"BSP2", "a compiled map (BSP2)", COMPILED},
    {"2PSB", "a compiled map (2PSB)", COMPILED},
    {"IBSP", "a compiled Quake 2 or Quake 3 map (BSP)", COMPILED},
    {"WAD2", "a WAD of textures (WAD2)", "its textures"},
    {"WAD3", "a Half-Life WAD of textures (WAD3)", "its textures"},
    {"IWAD", "a Doom WAD (IWAD)", "its maps and graphics"},
    {"PWAD", "a Doom WAD (PWAD)", "its maps and graphics"},
    {"PACK", "an archive of game files (PAK)", "the files in it"},
    {{"PK\3\4", 4}, "an archive (ZIP or PK3)", "the files in it"},
    {"IDPO", "a Quake model (MDL)", "the model"},
    {"IDP2", "a Quake 2 model (MD2)", "the model"},
    {"IDP3", "a Quake 3 model (MD3)", "the model"},
    {"IDSP", "a sprite (SPR)", "the sprite"},
    {"QQRKSRC1", "a file of QuArK (QRK)", "its tree of maps, models and settings"},
    {"\x89PNG", "a picture (PNG)", "the picture"},
    {"GIF8", "a picture (GIF)", "the picture"},
    {"\xff\xd8\xff", "a picture (JPEG)", "the picture"},
    {"RIFF", "a sound or film (RIFF)", "what it plays"},
    {{"MZ\x90\0", 4}, "a program", "the program"},
    {"\xff\xfe", UTF16, "its text"},
    {"\xfe\xff", UTF16, "its text"},
};
constexpr Kind PCX{{}, "a picture (PCX)", "the picture"};
constexpr Kind BMP{{}, "a picture (BMP)", "the picture"};

std::string HeadOf(const std::string& name) {
  std::string head(HEAD, '\0');
  const FileHandle file = file::Open(name, FileAccess::Read);
  if (file == INVALID_FILE) return "";
  head.resize(file::Read(file, head.data(), head.size()));
  file::Close(file);
  return head;
}

// Nothing when the bytes are of no kind that is known.
const Kind* KindOf(std::string_view head) {
  const auto* found =
      std::ranges::find_if(KINDS, [head](const Kind& kind) { return head.starts_with(kind.head); });
  if (found != std::end(KINDS)) return found;
  if (head.size() < HEAD) return nullptr;
  // Maker, version up to 5, run lengths.
  if (head[0] == '\x0a' && head[1] >= 0 && head[1] <= 5 && head[2] == 1) return &PCX;
  // Behind the size four bytes are reserved.
  if (head.starts_with("BM") && head.substr(6, 4) == std::string_view("\0\0\0\0", 4)) return &BMP;
  return nullptr;
}

}  // namespace

std::string OtherKindText(const std::string& name) {
  const Kind* kind = KindOf(HeadOf(name));
  if (!kind) return "";
  return name + " is " + kind->name +
         ", not a map. Nothing in it can be edited here, and it was not opened: a map saved over "
         "it "
         "would destroy " +
         kind->content + ".";
}

std::string NoWadText(const std::string& name) {
  const std::string head = HeadOf(name);
  if (head.empty() || head.starts_with("WAD2")) return "";
  const Kind* kind = KindOf(head);
  return name + (kind ? std::string(" is ") + kind->name + ", not" : std::string(" is not")) +
         " a WAD2 file of Quake textures.";
}

}  // namespace ferrowand
