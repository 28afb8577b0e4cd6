#include "shell/documents/documents.h"

#include "shell/system/win32.h"

#include <algorithm>

#include "base/options.h"
#include "base/path_text.h"
#include "base/report.h"
#include "base/safe_file.h"
#include "base/text_reader.h"
#include "compile/compile_files.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "gamedata/file_kind.h"
#include "platform/file.h"
#include "platform/system.h"
#include "shell/dialogs/dialogs.h"
#include "shell/documents/rescue_form.h"

namespace ferrowand {
namespace {

constexpr char SAVE_FILTER[] =
    "Extended Map (*.xmp)|*.xmp|Quake map (*.map)|*.map|All files (*.*)|*.*|";

std::string FullPath(const std::string& path) {
  std::string full(32768, '\0');
  const DWORD length =
      GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length == 0 || length >= full.size()) return path;
  full.resize(length);
  return full;
}

// What is offered for a map that should not go over its own file.
std::string OtherName(const std::string& name) {
  const PathParts parts = SplitPath(name);
  return parts.directory + parts.base + "-read" + parts.extension;
}

// What the user hears of a file of classes that has been read.
std::string ClassesInWords(const ClassSet& classes) {
  const auto natives =
      std::ranges::count_if(classes.Classes(), &EntityClass::IsNative,
                            [](const auto& c) -> const EntityClass& { return *c; });
  std::string text =
      Format("%u classes in %s",
             static_cast<unsigned>(classes.Classes().size()) - static_cast<unsigned>(natives),
             classes.FileName().c_str());
  if (classes.MessageCount() > 0) {
    text += Format("; %u messages, which Tools / Class file messages lists",
                   static_cast<unsigned>(classes.MessageCount()));
  }
  return text;
}

}  // namespace

Documents::Documents(GameData& data, Options& options, Dialogs& dialogs,
                     DocumentsObserver& observer, std::string dataFolder)
    : data_(data),
      options_(options),
      dialogs_(dialogs),
      observer_(observer),
      kept_(std::move(dataFolder)) {}

Documents::~Documents() = default;

Map& Documents::Adopt(std::unique_ptr<Map> map) {
  Map& adopted = *maps_.emplace_back(std::move(map));
  observer_.OnMapOpened(adopted);
  TellOfCopy();
  return adopted;
}

std::unique_ptr<Map> Documents::NewMap() const {
  auto map = std::make_unique<Map>(data_);
  LimitUndo(*map);
  return map;
}

void Documents::LimitUndo(Map& map) const {
  constexpr std::uint64_t MEGABYTE = 1 << 20;
  const std::uint64_t chosen = options_.undoMegabytes * MEGABYTE;
  map.undo.SetLevels(static_cast<std::size_t>(options_.undoLevels));
  map.undo.SetBudget(chosen > 0 ? chosen : ProcessMemoryBytes() / 8);
}

Map& Documents::New() {
  auto map = NewMap();
  map->wads.Add(data_.wads.DefaultName(), data_.wads.Default());
  return Adopt(std::move(map));
}

SaveSettings Documents::Settings() const {
  return {options_.exportOnlyOneWad != 0, options_.defaultWorldType, options_.defaultSounds,
          options_.backups, kept_.Folder()};
}

// The file at the path, as the map of that name.
std::unique_ptr<Map> Documents::Read(const std::string& path, const std::string& name) const {
  TextReader reader(data_.reporter);
  reader.Open(path);
  if (!reader.IsOpen()) {
    data_.reporter.Show("Cannot continue", "Cannot open file!");
    return nullptr;
  }
  auto map = NewMap();
  map->filename = name;
  const ProgressScope scope(data_.progress, path);
  unsigned flags = 0;
  while (true) {
    flags = map->ReadMap(reader, flags);
    if (map->readProgress() == 0) break;
    data_.progress.Step("Entities: %u", map->readProgress(), reader.Offset(), reader.FileLength());
  }
  return map;
}

Map* Documents::FindOpen(const std::string& path) const {
  const auto open = std::ranges::find_if(
      maps_, [&](const auto& map) { return EqualNoCase(map->filename, path); });
  return open == maps_.end() ? nullptr : open->get();
}

Map* Documents::Open(const std::string& path) {
  const std::string full = FullPath(path);
  if (Map* open = FindOpen(full)) {
    options_.AddRecentMap(full);
    observer_.OnMapWanted(*open);
    return open;
  }
  if (file::Find(full) != FindResult::Found) {
    data_.reporter.Show("File Error - cannot continue",
                        Format("Can't find requested map: %s", path.c_str()));
    return nullptr;
  }
  if (const std::string refusal = OtherKindText(full); !refusal.empty()) {
    data_.reporter.Show("Cannot continue", refusal);
    return nullptr;
  }
  std::vector<Rescue> rescues = FindRescues(kept_.Folder());
  std::erase_if(rescues, [&](const Rescue& r) { return !EqualNoCase(r.original, full); });
  for (const std::string& left : LeftBeside(full)) rescues.push_back({left, full});
  if (Map* rescued = Rescued(rescues)) return rescued;
  const std::optional<FileStamp> stamp = file::Stamp(full);
  std::unique_ptr<Map> map = Read(full, full);
  if (!map) return nullptr;
  map->MarkSaved();
  known_.NoteRead(*map, full, stamp);
  options_.AddRecentMap(full);
  return &Adopt(std::move(map));
}

void Documents::OfferRescues() {
  Rescued(FindRescues(kept_.Folder()));
}

// The last one that the user wants to see.
Map* Documents::Rescued(const std::vector<Rescue>& rescues) {
  if (rescues.empty()) return nullptr;
  Map* last = nullptr;
  const std::vector<RescueChoice> choices = AskWhatToRescue(dialogs_, rescues);
  for (std::size_t i = 0; i < rescues.size(); ++i) {
    if (choices[i] == RescueChoice::Open) {
      if (Map* map = OpenRescue(rescues[i])) last = map;
    } else if (choices[i] == RescueChoice::Delete) {
      if (auto note = RescueNote::Take(kept_.Folder(), rescues[i])) note->Discard();
    }
  }
  return last;
}

// A modified map of the file that the work was for. What that has got since the work began is a
// stranger's; a save that was ended has left its text there or nothing.
Map* Documents::OpenRescue(const Rescue& rescue) {
  const std::optional<FileStamp> kept = file::Stamp(rescue.text);
  const std::optional<FileStamp> original = file::Stamp(rescue.original);
  std::unique_ptr<Map> map = Read(rescue.text, rescue.original);
  if (!map) return nullptr;
  if (rescue.withLoss) map->RememberLoss();
  kept_.Adopt(*map, rescue);
  const bool isAsBegun =
      rescue.began ? rescue.began == original : original && kept && original->time <= kept->time;
  if (isAsBegun || FileBytes(rescue.original) == FileBytes(rescue.text)) {
    known_.NoteRead(*map, rescue.original, original);
  } else {
    known_.NoteOther(*map, rescue.original);
  }
  if (!map->IsUnnamed()) options_.AddRecentMap(rescue.original);
  return &Adopt(std::move(map));
}

void Documents::KeepAll() {
  for (const auto& map : maps_) {
    if (!kept_.Keep(*map, Settings(), known_.StampOf(*map, map->filename))) {
      map->ShowStatus("What is not saved of this map could not be kept against a crash");
    }
  }
}

std::string Documents::KeepForTheEnd() {
  KeepAll();
  std::string files;
  for (const auto& map : maps_) {
    if (const std::string file = kept_.FileOf(*map); !file.empty()) files += "\n" + file;
  }
  const std::string end = "Ferrowand has met an error that it cannot survive, and ends now.\n\n";
  if (files.empty()) return end + "Nothing was left to be saved.";
  return end + "What was not saved lies here, and is offered at the next start:\n" + files;
}

void Documents::OfferReloads() {
  std::vector<Map*> changed;
  for (const auto& map : maps_) {
    if (!map->IsUnnamed() && known_.TakeChange(*map, map->filename)) changed.push_back(map.get());
  }
  for (Map* map : changed) {
    std::string question = map->filename + " has been changed by another program. Read it again?";
    if (map->modified()) question += "\n\nWhat was changed here and is not saved is lost then.";
    if (data_.reporter.Show("Ferrowand asks", question, Buttons::YesNo, Icon::Question) ==
        Answer::Yes) {
      Reload(*map);
    }
  }
}

void Documents::Reload(Map& map) {
  const std::optional<FileStamp> stamp = file::Stamp(map.filename);
  std::unique_ptr<Map> fresh = Read(map.filename, map.filename);
  if (!fresh) return;
  fresh->MarkSaved();
  known_.NoteRead(*fresh, fresh->filename, stamp);
  observer_.OnMapReplaced(map, *fresh);
  kept_.Discard(map);
  known_.Forget(map);
  *std::ranges::find_if(maps_, [&](const auto& open) { return open.get() == &map; }) =
      std::move(fresh);
}

bool Documents::Write(Map& map, const std::string& name) {
  if (!map.Save(name, 0, Settings())) {
    // No other program has done what it has left there.
    if (name == map.filename) known_.NoteRead(map, name, file::Stamp(name));
    return false;
  }
  known_.NoteWritten(map, map.filename);
  kept_.Discard(map);
  options_.AddRecentMap(map.filename);
  return true;
}

std::optional<std::string> Documents::AskSaveName(const Map& map) {
  FileChoice choice;
  choice.saving = true;
  choice.title = "Save map";
  choice.filter = SAVE_FILTER;
  choice.extension = "xmp";
  if (!map.IsUnnamed()) {
    choice.name = map.readWithLoss() ? OtherName(map.filename) : map.filename;
    if (EqualNoCase(SplitPath(map.filename).extension, ".map")) choice.filterIndex = 2;
  }
  return dialogs_.ChooseFile(choice);
}

// What could not be read is in the file alone.
Documents::LossAnswer Documents::AskAboutLoss(const Map& map, const std::string& target) const {
  if (!map.readWithLoss() || !EqualNoCase(map.filename, target)) return LossAnswer::WriteHere;
  const std::string question = Format(
      "Not all of %s could be read, and what could not would be lost for good. Save the map under "
      "another name?",
      target.c_str());
  switch (data_.reporter.Show("Confirm", question, Buttons::YesNoCancel, Icon::Warning)) {
    case Answer::Yes:
      return LossAnswer::OtherName;
    case Answer::No:
      return LossAnswer::WriteHere;
    default:
      return LossAnswer::WriteNothing;
  }
}

bool Documents::Save(Map& map) {
  if (map.IsUnnamed()) return SaveAs(map);
  const LossAnswer answer = AskAboutLoss(map, map.filename);
  if (answer == LossAnswer::OtherName) return SaveAs(map);
  return answer == LossAnswer::WriteHere && MayOverwrite(map) && Write(map, map.filename);
}

bool Documents::MayOverwrite(const Map& map) const {
  if (known_.IsAsKnown(map, map.filename)) return true;
  const std::string question = map.filename +
                               " has been changed by another program since it was read. "
                               "Overwrite what is there now?";
  return data_.reporter.Show("Confirm", question, Buttons::YesNo, Icon::Warning) == Answer::Yes;
}

bool Documents::SaveAs(Map& map) {
  const auto name = AskSaveName(map);
  return name && Write(map, FullPath(*name));
}

// What this map has not written there itself may be somebody's only copy.
bool Documents::MayExport(const Map& map, const std::string& target) const {
  if (file::Find(target) == FindResult::NotFound) return true;
  const bool isOwn = IsOwnQuakeMap(target);
  if (isOwn && known_.IsAsWritten(map, target)) return true;
  const std::string question =
      target + (isOwn ? " is not as this map has written it last. Replace it?"
                      : " is there already, and was not made by Ferrowand. Replace it?");
  return data_.reporter.Show("Confirm", question, Buttons::YesNo, Icon::Warning) == Answer::Yes;
}

bool Documents::ExportQuakeMap(Map& map) {
  std::optional<std::string> name = map.filename;
  if (map.IsUnnamed()) name = AskSaveName(map);
  if (!name) return false;
  const PathParts parts = SplitPath(FullPath(*name));
  const std::string target = parts.directory + parts.base + ".map";
  const LossAnswer answer = AskAboutLoss(map, target);
  if (answer == LossAnswer::OtherName) return SaveAs(map);
  if (answer == LossAnswer::WriteNothing) return false;
  if (!MayExport(map, target) || !map.Export(target, 0, Settings())) return false;
  known_.NoteWritten(map, target);
  return true;
}

std::optional<std::string> Documents::WriteForTools(Map& map, unsigned option) {
  if (map.IsUnnamed() && !SaveAs(map)) return std::nullopt;
  const std::string target = ToolsMapPath(map, option);
  const bool isOwnFile = EqualNoCase(target, map.filename);
  const bool isThere = file::Find(target) == FindResult::Found;
  // What was read from there, or saved there, is what the tools are to read.
  if (isOwnFile && isThere && !map.modified() && known_.IsAsKnown(map, target)) return target;
  if (isOwnFile ? !MayOverwrite(map) : !MayExport(map, target)) return std::nullopt;
  // The user has not asked for a save: the version before is there still.
  SaveSettings settings = Settings();
  settings.backups = isOwnFile ? std::max(settings.backups, 1u) : 0;
  const bool isWritten = map.WriteForTools(target, option, settings);
  if (isWritten) known_.NoteWritten(map, target);
  if (!isWritten && isOwnFile) known_.NoteRead(map, target, file::Stamp(target));
  return isWritten ? std::optional(target) : std::nullopt;
}

void Documents::WriteAutoback(const Map& map) const {
  ReplaceFile("autoback.xmp", map.ExtendedText(Settings()), {}, nullptr);
}

// The question before it has no way back: what was changed is kept once more, and offered like work
// that a crash has left.
void Documents::Close(Map& map) {
  if (map.modified()) {
    if (!kept_.Keep(map, Settings(), known_.StampOf(map, map.filename)) && !MayLose(map)) return;
    leftCopy_ = kept_.FileOf(map);
    kept_.Leave(map);
  } else {
    kept_.Discard(map);
  }
  observer_.OnMapClosing(map);
  known_.Forget(map);
  std::erase_if(maps_, [&](const auto& open) { return open.get() == &map; });
  TellOfCopy();
}

bool Documents::MayLose(const Map& map) const {
  const std::string question =
      "What is not saved of " + map.Name() + " cannot be kept either. Lose it?";
  return data_.reporter.Show("Confirm", question, Buttons::YesNo, Icon::Warning) == Answer::Yes;
}

void Documents::TellOfCopy() {
  if (leftCopy_.empty() || maps_.empty()) return;
  for (const auto& open : maps_) open->ShowStatus("What was not saved is kept in " + leftCopy_);
  leftCopy_.clear();
}

bool Documents::MayQuit() {
  for (const auto& map : maps_) {
    if (!map->modified()) continue;
    const std::string question = Format(
        "Map %s has been modified and not saved. Save before quitting?", map->Name().c_str());
    const Answer answer =
        data_.reporter.Show("Continue?", question, Buttons::YesNoCancel, Icon::Question);
    if (answer == Answer::Cancel) return false;
    if (answer == Answer::Yes && !Save(*map)) return false;
  }
  return true;
}

void Documents::ChooseClasses(Map& map, const std::string& path) {
  const ClassSet* classes = data_.classes.Choose(path);
  if (!classes) {
    data_.reporter.Show("Cannot continue", "Cannot open file!");
    return;
  }
  BindAnew(*classes);
  {
    EditStep step(map);
    step.ChooseClasses(classes->FileName());
  }
  map.ShowStatus(ClassesInWords(*classes));
}

void Documents::FollowClassFiles() {
  for (const ClassSet* classes : data_.classes.LoadChanged()) BindAnew(*classes);
}

void Documents::FollowWads() {
  if (data_.wads.ReadChanged().empty()) return;
  for (const auto& map : maps_) map->BindTexturesAnew();
}

void Documents::BindAnew(const ClassSet& classes) const {
  for (const auto& map : maps_) {
    if (map->classSet != &classes) continue;
    map->BindClassesAnew();
    map->ShowStatus("Read again: " + ClassesInWords(classes));
  }
}

void Documents::FollowOptions() {
  data_.shown = {options_.renderPointEntities != 0, options_.drawTemplates != 0};
  for (const auto& map : maps_) {
    LimitUndo(*map);
    map->AnnounceEverything();
  }
}

void Documents::Clear() {
  for (const auto& map : maps_) kept_.Discard(*map);
  maps_.clear();
}

}  // namespace ferrowand
