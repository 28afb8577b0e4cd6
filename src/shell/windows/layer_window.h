// The window of a map's layers: their list over the buttons that act on the selected one.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <string>

#include "operations/edit_result.h"
#include "shell/windows/layer_list.h"
#include "shell/windows/map_panel.h"

namespace ferrowand {

class CommandTarget;
class Dialogs;
class PopupMenus;
class Reporter;

inline constexpr char LAYER_CLASS[] = "FRWLayerClass";

LRESULT CALLBACK LayerFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What the windows of layers work with. All outlive them.
struct LayerWindowContext {
  Reporter& reporter;
  Dialogs& dialogs;
  PopupMenus& popups;
  CommandTarget& commands;
};

class LayerWindow : public MapPanel, public LayerListHost {
 public:
  LayerWindow(ChildWindows& windows, const LayerWindowContext& context, Map& map);

  // --- as a child of the frame
  bool TakesMessage(MSG& message) override;

  // --- from the map
  void OnChange(const MapChange& change) override;

  HWND Dialog() const override { return dialog_; }
  const LayerList& List() const { return *list_; }

  // --- as the list's host
  void Perform(LayerAction action, entity& layer) override;
  void Rename(entity& layer, const std::string& name) override;
  void ShowPopup(entity& layer, POINT screen) override;
  void SelectedLayerChanged() override;

 private:
  static INT_PTR CALLBACK LayerDialogFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

  // --- as a panel
  void OnCreate() override;
  void Layout() const override;
  HWND KeyControl() const override { return list_->Control(); }
  bool IsOwnKey(WPARAM key, bool withControl) const override;

  void OnButton(int id);
  void LayOutButtons(int left, int top, int width, int perRow) const;
  void Edit(entity& layer, int id);
  void EditProperties(entity& layer);
  void MoveSelectionTo(entity& layer);
  void SelectObjectsOf(entity& layer, bool add);
  void ZoomTo(const entity& layer);
  bool ReceivesObjects(const entity& layer) const;

  const LayerWindowContext context_;
  HWND dialog_ = nullptr;
  std::unique_ptr<LayerList> list_;
};

}  // namespace ferrowand
