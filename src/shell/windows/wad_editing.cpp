#include "shell/windows/wad_editing.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/path_text.h"
#include "base/safe_file.h"
#include "base/text_pattern.h"
#include "document/map.h"
#include "gamedata/pcx.h"
#include "gamedata/texture_name.h"
#include "operations/wad_changes.h"
#include "shell/dialogs/dialogs.h"
#include "shell/documents/documents.h"
#include "shell/system/picture_file.h"

namespace ferrowand {
namespace {

constexpr char PCX_FILTER[] = "PCX files(*.pcx)|*.pcx|";
constexpr char GAME_FILTER[] =
    "Levels and WADs of games (*.bsp, *.wad)|*.bsp;*.wad|All files (*.*)|*.*|";

constexpr std::array<const char*, 3> FITS{"Scale to multiples of 16", "Crop to multiples of 16",
                                          "Pad to multiples of 16"};
constexpr std::array<PictureFit, 3> FIT_OF{PictureFit::Scale, PictureFit::Crop, PictureFit::Pad};
constexpr std::array<const char*, 2> COLOURS{"Those that shadows darken", "All"};

std::string NameOf(const WadFile& wad) {
  const PathParts parts = SplitPath(wad.FileName());
  return parts.base + parts.extension;
}

// The WADs of the map that are files, each once.
std::vector<WadFile*> WadsOf(const Map& map) {
  std::vector<WadFile*> wads;
  for (const WadList::Item& item : map.wads.Items()) {
    const bool isFile = file::Find(item.wad->FileName()) == FindResult::Found;
    if (isFile && std::ranges::find(wads, item.wad) == wads.end()) wads.push_back(item.wad);
  }
  return wads;
}

// Choices begin with what is chosen at first.
FormRow ChoiceRow(const std::string& label, std::vector<std::string> choices) {
  FormRow row{label, {choices.front()}, std::move(choices)};
  return row;
}

FormRow WadRow(const std::string& label, const std::vector<WadFile*>& wads) {
  std::vector<std::string> names;
  names.reserve(wads.size());
  for (const WadFile* wad : wads) names.push_back(NameOf(*wad));
  return ChoiceRow(label, std::move(names));
}

WadFile& WadNamed(const std::vector<WadFile*>& wads, const std::string& name) {
  const auto found =
      std::ranges::find_if(wads, [&](const WadFile* wad) { return NameOf(*wad) == name; });
  return found == wads.end() ? *wads.front() : **found;
}

FormRow NameRow(const std::string& name) {
  FormRow row{"&Name", {name}, {}};
  row.isText = true;
  return row;
}

FormRow FitRow() {
  return ChoiceRow("&Size", {FITS.begin(), FITS.end()});
}
FormRow ColourRow() {
  return ChoiceRow("&Colours", {COLOURS.begin(), COLOURS.end()});
}

ImportRules RulesOf(const std::string& fit, const std::string& colours) {
  const auto at = static_cast<std::size_t>(std::ranges::find(FITS, fit) - FITS.begin());
  return {at < FIT_OF.size() ? FIT_OF[at] : PictureFit::Scale, colours == COLOURS[1]};
}

std::string SizeText(const Texture& texture) {
  return Format("%u x %u", unsigned{texture.width}, unsigned{texture.height});
}

std::string FramesInWords(const Texture& texture, std::size_t frames) {
  std::string text(texture.Name());
  if (frames == 2) text += " and its other frame";
  if (frames > 2) text += Format(" and its %u other frames", static_cast<unsigned>(frames - 1));
  return text;
}

}  // namespace

void WadEditing::Do(WadEdit edit, Map& map, Texture* chosen) {
  if (IsOfOneTexture(edit) && (!chosen || chosen == chosen->wad->BadTexture())) return;
  switch (edit) {
    case WadEdit::Insert:
      return Insert(map);
    case WadEdit::InsertFromGame:
      return InsertFromGame(map);
    case WadEdit::Alter:
      return Alter(map, *chosen);
    case WadEdit::Export:
      return Export(map, *chosen);
    case WadEdit::Rename:
      return Rename(map, *chosen);
    case WadEdit::Remove:
      return Remove(map, *chosen);
    case WadEdit::Copy:
      return Copy(map, *chosen);
  }
}

void WadEditing::Refuse(const std::string& why) {
  data_.reporter.Show("Cannot continue", why);
}

bool WadEditing::MayName(const WadFile& wad, const std::string& name, const Texture* but) {
  std::string why = WhyNoTextureName(name);
  if (why.empty() && IsTaken(wad, name, but)) {
    why = NameOf(wad) + " has a texture called " + name + " already";
  }
  if (why.empty()) return true;
  Refuse(why);
  return false;
}

// --- in

void WadEditing::Insert(Map& map) {
  if (WadsOf(map).empty()) return Refuse("The map has no WAD that is a file");
  const auto path = dialogs_.ChooseFile(
      {.title = "Insert a texture", .filter = PICTURE_FILTER, .name = "", .extension = ""});
  if (!path) return;
  if (EqualNoCase(SplitPath(*path).extension, ".pcx")) return InsertPcxAs(map, *path);
  InsertPicture(map, *path);
}

bool WadEditing::InsertPcx(Map& map, WadFile& wad, const std::string& path,
                           const std::string& name) {
  auto texture = MakeFromPcx(path, data_.palette);
  if (!texture) {
    Refuse("Invalid PCX file. It must be in 256 colour format!");
    return true;  // no other name would help
  }
  if (!IsPictureSize(texture->width, texture->height)) {
    Refuse(NoSizeText(path));
    return true;
  }
  if (!MayName(wad, name)) return false;
  texture->entry.name = {};
  std::ranges::copy(name, texture->entry.name.begin());
  const std::string size = SizeText(*texture);
  if (!AddToWad(documents_.Maps(), wad, std::move(texture))) return false;
  map.ShowStatus("Inserted " + name + " into " + NameOf(wad) + ": " + size);
  return true;
}

void WadEditing::InsertPcxAs(Map& map, const std::string& path) {
  const std::vector<WadFile*> wads = WadsOf(map);
  dialogs_.Ask({"Insert texture",
                path,
                {NameRow(TextureNameOfFile(path)), WadRow("&WAD", wads)},
                [&](const FormValues& typed) {
                  return InsertPcx(map, WadNamed(wads, typed[1]), path, typed[0]);
                }});
}

void WadEditing::InsertPicture(Map& map, const std::string& path) {
  std::string why;
  const std::optional<Picture> picture = ReadPictureFile(path, why);
  if (!picture) return Refuse(why);
  const std::vector<WadFile*> wads = WadsOf(map);
  const auto accept = [&](const FormValues& typed) {
    WadFile& wad = WadNamed(wads, typed[1]);
    if (!MayName(wad, typed[0])) return false;
    auto texture = MakeTexture(*picture, typed[0], RulesOf(typed[2], typed[3]), data_.palette);
    const std::string size = SizeText(*texture);
    if (!AddToWad(documents_.Maps(), wad, std::move(texture))) return false;
    map.ShowStatus("Inserted " + typed[0] + " into " + NameOf(wad) + ": " + size);
    return true;
  };
  dialogs_.Ask({"Insert texture",
                Format("%d x %d pixels", picture->width, picture->height),
                {NameRow(TextureNameOfFile(path)), WadRow("&WAD", wads), FitRow(), ColourRow()},
                accept});
}

std::string WadEditing::AddAll(WadFile& wad, const std::vector<NamedPicture>& pictures,
                               const std::string& pattern, const ImportRules& rules) {
  const TextPattern wanted(pattern, PatternRule::Whole);
  unsigned there = 0, refused = 0;
  std::vector<std::unique_ptr<Texture>> added;
  for (const NamedPicture& found : pictures) {
    if (!wanted.Matches(found.name)) continue;
    const auto isSame = [&](const auto& t) { return EqualNoCase(t->Name(), found.name); };
    if (IsTaken(wad, found.name) || std::ranges::any_of(added, isSame)) {
      ++there;
    } else if (WhyNoTextureName(found.name).empty()) {
      added.push_back(MakeTexture(found.picture, found.name, rules, data_.palette));
    } else {
      ++refused;
    }
  }
  const auto count = static_cast<unsigned>(added.size());
  if (count > 0 && !AddToWad(documents_.Maps(), wad, std::move(added))) return "";
  std::string text = Format("%u inserted into ", count) + NameOf(wad);
  if (there > 0) text += Format("; %u were there already", there);
  if (refused > 0) text += Format("; %u have names that no map can hold", refused);
  return text;
}

void WadEditing::InsertFromGame(Map& map) {
  const std::vector<WadFile*> wads = WadsOf(map);
  if (wads.empty()) return Refuse("The map has no WAD that is a file");
  const auto path = dialogs_.ChooseFile({.title = "Insert the textures of a level or a WAD",
                                         .filter = GAME_FILTER,
                                         .name = "",
                                         .extension = ""});
  if (!path) return;
  const std::optional<std::string> bytes = FileBytes(*path);
  const auto pictures = bytes ? ReadTexturesOfGames(*bytes) : std::nullopt;
  if (!pictures || pictures->empty()) {
    return Refuse(*path + " is no level and no WAD3 with textures");
  }
  FormRow names{"&Names", {"*"}, {}};
  names.isText = true;
  dialogs_.Ask({"Insert textures",
                Format("%u textures", static_cast<unsigned>(pictures->size())),
                {names, WadRow("&WAD", wads), FitRow(), ColourRow()},
                [&](const FormValues& typed) {
                  const std::string text = AddAll(WadNamed(wads, typed[1]), *pictures, typed[0],
                                                  RulesOf(typed[2], typed[3]));
                  map.ShowStatus(text);
                  return !text.empty();
                }});
}

void WadEditing::Alter(Map& map, Texture& texture) {
  const auto path = dialogs_.ChooseFile({.title = "Alter " + std::string(texture.Name()),
                                         .filter = PCX_FILTER,
                                         .name = "",
                                         .extension = ".pcx"});
  if (!path) return;
  const auto picture = MakeFromPcx(*path, data_.palette);
  if (!picture) return Refuse("Invalid PCX file. It must be in 256 colour format!");
  if (picture->width != texture.width || picture->height != texture.height) {
    return Refuse(
        "Selected file has different dimensions. It can not be used to alter this texture. "
        "Instead, try inserting it.");
  }
  if (!RewriteInWad(documents_.Maps(), texture, picture->pixels)) return;
  map.ShowStatus("Altered " + std::string(texture.Name()) + " in " + NameOf(*texture.wad));
}

// --- out, and within

void WadEditing::Export(Map& map, Texture& texture) {
  const auto path = dialogs_.ChooseFile({.saving = true,
                                         .title = "Export " + std::string(texture.Name()),
                                         .filter = PCX_FILTER,
                                         .name = FileNameOfTexture(texture.Name()) + ".pcx",
                                         .extension = ".pcx"});
  if (!path || !ExportPcx(texture, *path, data_.palette, data_.reporter)) return;
  map.ShowStatus("Exported " + std::string(texture.Name()) + " to " + *path);
}

std::vector<Texture*> WadEditing::AskFrames(Texture& texture, const std::string& what) {
  std::vector<Texture*> frames = FramesOf(texture);
  if (frames.size() < 2) return {&texture};
  const Answer answer = data_.reporter.Show(
      what,
      Format("%s is one of %u frames of an animation, which the game refuses with a gap. %s all of "
             "them?",
             std::string(texture.Name()).c_str(), static_cast<unsigned>(frames.size()),
             what.c_str()),
      Buttons::YesNoCancel, Icon::Question);
  if (answer == Answer::Yes) return frames;
  return answer == Answer::No ? std::vector<Texture*>{&texture} : std::vector<Texture*>();
}

void WadEditing::Rename(Map& map, Texture& texture) {
  const std::vector<Texture*> frames = AskFrames(texture, "Rename");
  if (frames.empty()) return;
  const auto accept = [&](const FormValues& typed) {
    std::vector<TextureRename> renames;
    for (Texture* frame : frames) {
      // A frame of its own may become another one.
      const bool isOne = frames.size() == 1;
      renames.push_back({frame, isOne ? typed[0] : NameOfFrame(frame->Name(), typed[0])});
      if (!MayName(*texture.wad, renames.back().name, frame)) return false;
    }
    const std::string before(texture.Name());
    if (!RenameInWad(documents_.Maps(), *texture.wad, renames)) return false;
    map.ShowStatus("Renamed " + before + " to " + std::string(texture.Name()) + " in " +
                   NameOf(*texture.wad) + " and in the open maps");
    return true;
  };
  dialogs_.Ask({"Rename texture",
                "In the WAD this cannot be undone.",
                {NameRow(std::string(texture.Name()))},
                accept});
}

void WadEditing::Remove(Map& map, Texture& texture) {
  std::vector<Texture*> frames = AskFrames(texture, "Remove");
  if (frames.empty()) return;
  const std::string name = FramesInWords(texture, frames.size()), wad = NameOf(*texture.wad);
  if (FramesOf(texture).size() < 2 &&
      data_.reporter.Show("Remove", "Remove " + name + " from " + wad + "? This cannot be undone.",
                          Buttons::YesNo, Icon::Question) != Answer::Yes) {
    return;
  }
  if (!RemoveFromWad(documents_.Maps(), *texture.wad, frames)) return;
  map.ShowStatus("Removed " + name + " from " + wad);
}

void WadEditing::Copy(Map& map, Texture& texture) {
  std::vector<WadFile*> wads = WadsOf(map);
  std::erase(wads, texture.wad);
  if (wads.empty()) return Refuse("The map has no other WAD that is a file");
  dialogs_.Ask(
      {"Copy " + std::string(texture.Name()),
       "",
       {WadRow("To &WAD", wads)},
       [&](const FormValues& typed) { return CopyTo(map, texture, WadNamed(wads, typed[0])); }});
}

bool WadEditing::MayCopy(const WadFile& from, const WadFile& to) {
  return &from != &to && file::IsWritable(to.FileName());
}

bool WadEditing::CopyTo(Map& map, Texture& texture, WadFile& to) {
  std::vector<Texture*> frames = FramesOf(texture);
  std::erase_if(frames, [&](const Texture* frame) { return IsTaken(to, frame->Name()); });
  // Told by the name of the one that was meant.
  if (frames.empty()) frames = {&texture};
  std::vector<std::unique_ptr<Texture>> copies;
  for (Texture* frame : frames) {
    if (!MayName(to, std::string(frame->Name()))) return false;
    copies.push_back(CopyOf(*frame));
  }
  if (!AddToWad(documents_.Maps(), to, std::move(copies))) return false;
  map.ShowStatus("Copied " + FramesInWords(*frames.front(), frames.size()) + " to " + NameOf(to));
  return true;
}

}  // namespace ferrowand
