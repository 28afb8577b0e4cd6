// Find Texture and Replace Texture: what is asked for the active map, how much there is of it, and
// what takes its place. It stands beside the program's other windows, and is out of sight rather
// than gone when it is closed.
#pragma once

#include "shell/system/win32.h"

#include <cstdint>
#include <string>

#include "operations/texture_choice.h"
#include "operations/texture_search.h"
#include "shell/windows/map_dialog.h"

namespace ferrowand {

class CommandTarget;
class WindowMaker;
struct Options;

// What the window works with. All outlive it.
struct ReplaceContext {
  ChildWindows& windows;
  WindowMaker& maker;
  CommandTarget& commands;
  TextureChoice& choice;
  Options& options;
};

class ReplaceWindow : public MapDialog, public TextureChoiceObserver {
 public:
  // Handle() is null when the system gave no window.
  ReplaceWindow(SideWindows& sides, const ReplaceContext& context);
  ~ReplaceWindow() override;

  // In front, for the active map: to find, or to replace that texture.
  void Show(bool replaces, const std::string& name);

  // --- from the map and the choice
  void OnChange(const MapChange& change) override;
  void OnTextureChosen() override;

 private:
  // --- as a dialog
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool OnInit() override;
  void OnCommand(int id, int notification) override;
  void OnTimer() override { Count(); }
  void OnClose() override { Hide(); }
  void OnOtherMap() override;

  void DrawPicture(const DRAWITEMSTRUCT& draw) const;
  void FillNames(int id) const;

  void SetText(int id, const std::string& text) const;
  TextureQuery Query() const;
  TextureScope Scope() const;
  // Faces, where that is wanted, turn face edit on.
  FoundAs SelectsAs() const;
  void KeepFlags() const;
  void CountSoon() const;
  void Count();
  // What is said of what is found, unless a replacement has just said what it did.
  std::string CountText() const;
  void ShowState();

  void GoTo(bool forward);
  void SelectAll();
  void Replace();
  void ShowInBrowser() const;

  const ReplaceContext context_;
  FoundFaces found_;
  bool isStale_ = true;  // what is found may be another by now
  bool isReplacing_ = false;
  std::string done_;      // what the last replacement has done
  std::string followed_;  // the current texture, as it went into the box last
};

}  // namespace ferrowand
