// What a user does in a texture browser, and with what is dragged out of it.
#include <algorithm>
#include <string>
#include <vector>

#include "base/command_table.h"
#include "base/options.h"
#include "base/path_text.h"
#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "operations/entity_search.h"
#include "operations/face_texture.h"
#include "operations/texture_search.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/command_target.h"
#include "shell/resources/resource.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/side_windows.h"
#include "shell/windows/texture_browser.h"
#include "shell/windows/texture_popup.h"
#include "shell/windows/wad_manager_window.h"
#include "views/camera/camera.h"

namespace ferrowand {

// --- what the user does

void TextureBrowser::Choose(std::size_t item) {
  chosen_ = wall_.items[item].name;
  list_->SetChosen(item, true);
  context_.choice.Choose(chosen_);
  ShowState();
}

void TextureBrowser::Apply() {
  const std::size_t item = wall_.Find(chosen_);
  if (item < wall_.items.size()) context_.choice.Choose(wall_.items[item].name);
  context_.commands.Execute(Id(Command::ApplyTexture));
}

void TextureBrowser::SelectUsers(std::size_t item) {
  const FoundFaces found = FacesWith(map_, wall_.items[item].frames);
  const bool asFaces = context_.commands.IsChecked(Id(Command::FaceEdit));
  SelectFound(map_, found, asFaces ? FoundAs::Faces : FoundAs::Brushes);
  const std::size_t count = asFaces ? map_.pickedFaces.size() : map_.selection.size();
  map_.ShowStatus(Format("%u selected", static_cast<unsigned>(count)) +
                  UnreachedInWords(found.unreached));
}

void TextureBrowser::ShowPopup(POINT screen) {
  const std::size_t item = wall_.Find(chosen_);
  TexturePopupState state{.shows = static_cast<WallShows>(context_.options.texturesShown)};
  if (item < wall_.items.size()) {
    state.hasChosen = IsTextureName(wall_.items[item].name);
    state.isFavourite = wall_.items[item].isFavourite;
    state.isUsed = wall_.items[item].faces > 0;
  }
  state.isOfWad = ChosenTexture() != nullptr;
  const TexturePopup popup(context_.popups, state);
  Perform(popup.ChoiceOf(context_.dialogs.TrackPopup(Handle(), popup.Menu(), screen)));
}

void TextureBrowser::Perform(const TexturePopupChoice& choice) {
  const std::size_t item = wall_.Find(chosen_);
  const bool hasItem = item < wall_.items.size();
  switch (choice.kind) {
    case TexturePopupChoice::Favourite:
      if (hasItem) {
        // All its names, so that it is none any more whatever frame was chosen.
        const bool on = !wall_.items[item].isFavourite;
        const std::vector<std::string> frames = wall_.items[item].frames;
        for (const std::string& frame : frames) {
          if (!on || frame == frames.front()) context_.choice.SetFavourite(frame, on);
        }
      }
      return;
    case TexturePopupChoice::Show:
      context_.options.texturesShown = static_cast<std::uint8_t>(choice.shows);
      ShowControls();
      return Fill();
    case TexturePopupChoice::Apply:
      return Apply();
    case TexturePopupChoice::SelectUsers:
      if (hasItem) SelectUsers(item);
      return;
    case TexturePopupChoice::Replace:
      return context_.commands.Execute(Id(Command::ReplaceTexture));
    case TexturePopupChoice::EditWad:
      return context_.wads.Do(choice.edit, map_, ChosenTexture());
    case TexturePopupChoice::Nothing:
      return;
  }
}

Texture* TextureBrowser::ChosenTexture() const {
  Texture* const texture = chosen_.empty() ? nullptr : map_.wads.FindTexture(chosen_);
  return texture && EqualNoCase(texture->Name(), chosen_) ? texture : nullptr;
}

// --- keys

// A letter typed on the wall goes to what is found, behind what is there.
void TextureBrowser::Type(wchar_t letter) {
  if (letter < L' ' && letter != VK_BACK) return;
  const HWND find = GetDlgItem(Handle(), ID_TEXTURES_FIND);
  SetFocus(find);
  const auto end = static_cast<WPARAM>(GetWindowTextLengthW(find));
  SendMessageW(find, EM_SETSEL, end, static_cast<LPARAM>(end));
  SendMessageW(find, WM_CHAR, letter, 0);
}

// In the text: to the wall, to the first that was found unless the chosen one is there. On the
// wall: applies.
void TextureBrowser::Enter() {
  if (GetFocus() == list_->Handle()) {
    const std::size_t item = list_->Chosen();
    if (item == TextureList::NONE) return;
    if (GetKeyState(VK_SHIFT) < 0) return SelectUsers(item);
    return Apply();
  }
  Fill();
  if (list_->Chosen() == TextureList::NONE && !wall_.items.empty()) Choose(0);
  SetFocus(list_->Handle());
}

void TextureBrowser::Escape() {
  SetDlgItemTextW(Handle(), ID_TEXTURES_FIND, L"");
  Fill();
  list_->SetChosen(wall_.Find(chosen_), true);
  SetFocus(list_->Handle());
}

// --- what is dragged out of the wall

ChildWindow* TextureBrowser::CameraUnder(POINT screen) const {
  for (const auto& window : windows_.All()) {
    if (window->GetMap() == &map_ && window->HitUnder(screen).face >= 0) return window.get();
  }
  return nullptr;
}

WadManagerWindow* TextureBrowser::WadManager() const {
  return context_.sides.Find<WadManagerWindow>();
}

// A row of the WAD manager, or a heading of the wall.
WadFile* TextureBrowser::WadUnder(POINT screen) const {
  const WadManagerWindow* manager = WadManager();
  WadFile* const wad = manager ? manager->WadUnder(screen) : nullptr;
  if (wad) return wad;
  const auto heading = list_->HeadingUnder(screen);
  return heading ? wall_.groups[*heading].wad : nullptr;
}

bool TextureBrowser::MayDrop(POINT screen) {
  const WadFile* const wad = WadUnder(screen);
  const Texture* const texture = ChosenTexture();
  const bool mayCopy = wad && texture && WadEditing::MayCopy(*texture->wad, *wad);
  if (WadManagerWindow* manager = WadManager()) manager->Mark(mayCopy ? wad : nullptr);
  return mayCopy || (!wad && IsTextureName(chosen_) && CameraUnder(screen));
}

void TextureBrowser::DragEnded() {
  if (WadManagerWindow* manager = WadManager()) manager->Mark(nullptr);
}

void TextureBrowser::Drop(POINT screen) {
  if (!MayDrop(screen)) return;
  DragEnded();
  if (WadFile* const wad = WadUnder(screen)) {
    context_.wads.CopyTo(map_, *ChosenTexture(), *wad);
  } else {
    Paint(CameraUnder(screen)->HitUnder(screen));
  }
}

void TextureBrowser::Paint(const CameraHit& hit) {
  if (!hit.object) return;
  const bool ofBrush = GetKeyState(VK_CONTROL) < 0;
  const ActionScope action(map_.Data(), "Paint " + chosen_);
  const EditResult result = ofBrush ? PaintBrush(map_, *hit.object, chosen_)
                                    : PaintFace(map_, *hit.object, hit.face, chosen_);
  if (Conclude(map_, result)) context_.choice.NoteUse(chosen_);
}

}  // namespace ferrowand
