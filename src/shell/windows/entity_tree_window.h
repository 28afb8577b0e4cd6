// The window of a map's entity tree: its rows under what they are filtered by, and what is done to
// them.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <string>

#include "operations/entity_tree.h"
#include "shell/windows/entity_tree_list.h"
#include "shell/windows/map_panel.h"
#include "shell/windows/tree_filter_bar.h"

namespace ferrowand {

class CommandTarget;
class Dialogs;
class PopupMenus;
class Reporter;
struct Options;
struct TreeChoice;

inline constexpr char ENTITY_TREE_CLASS[] = "FRWEntityTree";

LRESULT CALLBACK EntityTreeFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What the windows of entity trees work with. All outlive them.
struct EntityTreeContext {
  Options& options;  // keep where such a window stood, and what it showed
  Reporter& reporter;
  Dialogs& dialogs;
  const PopupMenus& popups;
  CommandTarget& commands;
};

class EntityTreeWindow : public MapPanel, public EntityTreeHost {
 public:
  EntityTreeWindow(ChildWindows& windows, const EntityTreeContext& context, Map& map);

  const EntityTree& Tree() const { return tree_; }
  HWND List() const { return list_->Handle(); }

  // --- as a child of the frame
  bool TakesMessage(MSG& message) override;

  // --- from the map
  void OnChange(const MapChange& change) override;

  // --- as the list's host
  void RowsChosen() override;
  void OpenNode(entity& e, bool isOpen) override;
  void Centre(entity& e) override;
  void Rename(entity& e, const std::string& name) override;
  void BeginDrag() override;

 private:
  // --- as a panel
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreate() override;
  void Layout() const override;
  HWND KeyControl() const override { return list_->Handle(); }
  bool IsOwnKey(WPARAM key, bool withControl) const override;
  void OnCommand(int id, int notification) override;
  LRESULT OnNotify(NMHDR& header) override { return list_->OnNotify(header); }
  void OnTimer(UINT_PTR timer) override;

  LRESULT OnDragMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnFiltered();
  void OnEnter();
  void ApplyRows();
  void ShowState() const;

  void OnContextMenu(HWND from, POINT screen);
  void Perform(const TreeChoice& choice, entity& e, const std::vector<entity*>& chosen);
  void SelectObjects(entity& e, const std::vector<entity*>& chosen, bool add);
  void SetAsLeading(entity& e);
  void SelectAlike(const TreeChoice& choice, const entity& e);
  bool MayMoveTo(const entity& holder) const;
  void MoveInto(const std::vector<entity*>& objects, entity& holder);

  entity* HolderUnder(POINT screen) const;
  void DragTo(POINT screen);
  void Drop(POINT screen);
  void EndDrag();

  const EntityTreeContext context_;
  EntityTree tree_;
  std::unique_ptr<TreeFilterBar> filter_;
  std::unique_ptr<EntityTreeList> list_;
  bool rowsChosen_ = false;  // and not applied yet
  bool isDragging_ = false;
};

}  // namespace ferrowand
