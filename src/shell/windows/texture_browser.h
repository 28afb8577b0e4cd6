// The texture browser of a map: the wall of what its WADs hold, what it is filtered and sorted by,
// and what is known of the chosen texture.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "operations/texture_choice.h"
#include "operations/texture_use.h"
#include "operations/texture_wall.h"
#include "shell/windows/map_panel.h"
#include "shell/windows/texture_list.h"

namespace ferrowand {

class CommandTarget;
class Dialogs;
class PopupMenus;
class SideWindows;
class WadManagerWindow;
struct Options;
struct TexturePopupChoice;
class WadEditing;

inline constexpr char TEXTURE_BROWSER_CLASS[] = "FRWTextureBrowser";

LRESULT CALLBACK TextureBrowserFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What texture browsers work with. All outlive them.
struct TextureBrowserContext {
  Options& options;  // keep where such a window stood, and what it showed
  Dialogs& dialogs;
  const PopupMenus& popups;
  CommandTarget& commands;
  TextureChoice& choice;
  WadEditing& wads;
  const SideWindows& sides;  // of which the WAD manager takes what is dragged there
};

class TextureBrowser : public MapPanel, public TextureListHost, public TextureChoiceObserver {
 public:
  TextureBrowser(ChildWindows& windows, const TextureBrowserContext& context, Map& map);
  ~TextureBrowser() override;

  // Makes it the chosen one and brings it into sight: what is filtered gives way to that.
  void ShowInBrowser(std::string_view name);
  // Of the chosen one; empty also for faces without a name.
  const std::string& ChosenName() const { return chosen_; }

  const TextureWall& Wall() const { return wall_; }
  const TextureList& List() const { return *list_; }

  // --- as a child of the frame
  bool TakesMessage(MSG& message) override;
  void OptionsChanged() override;

  // --- from the map and the choice
  void OnChange(const MapChange& change) override;
  void OnTextureChosen() override;

  // --- as the list's host
  void Choose(std::size_t item) override;
  void Apply() override;
  void SelectUsers(std::size_t item) override;
  void ShowPopup(POINT screen) override;
  void Type(wchar_t letter) override;
  void Zoom(int steps) override;
  bool MayDrop(POINT screen) override;
  void Drop(POINT screen) override;
  void DragEnded() override;
  std::string Describe(std::size_t item) const override;

 private:
  // --- as a panel
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreate() override;
  void Layout() const override;
  HWND KeyControl() const override { return list_->Handle(); }
  bool IsOwnKey(WPARAM key, bool withControl) const override;
  void OnCommand(int id, int notification) override;
  void OnTimer(UINT_PTR) override { Fill(); }

  void AddChoices(int id, std::span<const wchar_t* const> texts) const;
  int LabelWidth(int id) const;

  // Once the messages under way are done.
  void RefreshSoon();
  void Refresh();
  void Fill();
  TextureList::Look Look() const;
  WallQuery Query(const std::string& text) const;
  std::string FindText() const;
  void ShowControls() const;
  void ShowState() const;
  void Enter();
  void Escape();
  void Perform(const TexturePopupChoice& choice);
  // As the map's WADs have it; null for a missing one.
  Texture* ChosenTexture() const;
  // What is dragged is over these; null for none.
  ChildWindow* CameraUnder(POINT screen) const;
  WadFile* WadUnder(POINT screen) const;
  WadManagerWindow* WadManager() const;
  void Paint(const CameraHit& hit);

  const TextureBrowserContext context_;
  TextureUses uses_;
  std::vector<std::string> recent_, favourites_;
  TextureWall wall_;
  std::string chosen_;
  std::unique_ptr<TextureList> list_;
  bool refreshes_ = false;  // soon
  bool isStale_ = true;     // the uses are to be counted anew
};

}  // namespace ferrowand
