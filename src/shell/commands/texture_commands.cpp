// The texture browser, what puts textures on faces, and the WADs that textures come from.
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/face_texture.h"
#include "operations/held_files.h"
#include "operations/texture_choice.h"
#include "shell/commands/command_groups.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/refusal.h"
#include "shell/documents/documents.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/open_files_window.h"
#include "shell/windows/replace_window.h"
#include "shell/windows/wad_manager_window.h"
#include "shell/windows/window_maker.h"

namespace ferrowand {
namespace {

// The one that is open, or a new one; null when the system gave no window.
template <typename Window, typename Make>
Window* WindowOf(SideWindows& sides, const Make& make) {
  if (auto* open = sides.Find<Window>()) return open;
  return static_cast<Window*>(sides.Add(make()));
}

// At the texture of the first picked face.
void ShowBrowser(const TextureContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (map.pickedFaces.empty()) return in.maker.ShowTextures(map);
  in.maker.ShowInBrowser(map, map.pickedFaces.Faces().front().Get().WrittenName());
}

// In face edit never to whole brushes.
void Apply(const TextureContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (map.pickedFaces.empty() && in.commands.IsChecked(Id(Command::FaceEdit))) {
    Conclude(map, EditResult::NothingSelected);
    return;
  }
  const std::string name = in.choice.For(map);
  if (Conclude(map, ApplyTexture(map, name))) in.choice.NoteUse(name);
}

// Of the first picked face; chosen in the browser, if that is where the user is; else what the
// first selected brush has.
std::string TextureAsked(const TextureContext& in, const Map& map) {
  if (!map.pickedFaces.empty()) {
    return std::string(map.pickedFaces.Faces().front().Get().WrittenName());
  }
  if (const auto* browser = dynamic_cast<const TextureBrowser*>(in.windows.ActiveWindow())) {
    return browser->ChosenName();
  }
  for (const entity* object : SelectedRoots(map)) {
    std::string name;
    bool isFound = false;
    ForEachEntity(*object, [&](const entity& e) {
      if (isFound || e.brush.Faces().empty()) return;
      isFound = true;
      name = e.brush.Faces().front().WrittenName();
    });
    if (isFound) return name;
  }
  return in.choice.For(map);
}

template <bool replaces>
void AskTexture(const TextureContext& in, unsigned) {
  const std::string name = TextureAsked(in, *in.windows.ActiveMap());
  auto* window = WindowOf<ReplaceWindow>(in.sides, [&] {
    return std::make_unique<ReplaceWindow>(
        in.sides, ReplaceContext{in.windows, in.maker, in.commands, in.choice, in.options});
  });
  if (window) window->Show(replaces, name);
}

void ShowWads(const TextureContext& in, unsigned) {
  auto* window = WindowOf<WadManagerWindow>(in.sides, [&] {
    return std::make_unique<WadManagerWindow>(
        in.sides,
        WadManagerContext{in.windows, in.documents, in.data, in.dialogs, in.reporter, in.options});
  });
  if (window) window->Show();
}

void Purge(const TextureContext& in, unsigned) {
  const std::string text = PurgedInWords(PurgeWads(in.data, in.documents.Maps()));
  in.windows.ActiveMap()->ShowStatus(text);
}

void ShowOpenFiles(const TextureContext& in, unsigned) {
  const auto* window = WindowOf<OpenFilesWindow>(in.sides, [&] {
    return std::make_unique<OpenFilesWindow>(in.sides, in.frame, in.documents, in.data);
  });
  if (window) SetActiveWindow(window->Handle());
}

constexpr CommandHandler<TextureContext> HANDLERS[] = {
    {Command::TextureBrowser, ShowBrowser},    {Command::ApplyTexture, Apply},
    {Command::FindTexture, AskTexture<false>}, {Command::ReplaceTexture, AskTexture<true>},
    {Command::WadManager, ShowWads},           {Command::PurgeFiles, Purge},
    {Command::OpenFiles, ShowOpenFiles},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeTextureCommands(const TextureContext& context) {
  return std::make_unique<HandlerGroup<TextureContext>>(context, HANDLERS);
}

}  // namespace ferrowand
