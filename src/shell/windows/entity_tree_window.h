// The window of a map's entity tree: its rows under what they are filtered by.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <string>

#include "document/announcement.h"
#include "operations/edit_result.h"
#include "operations/entity_tree.h"
#include "shell/windows/child_window.h"
#include "shell/windows/entity_tree_list.h"

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

class EntityTreeWindow : public ChildWindow, public EntityTreeHost, public MapObserver {
 public:
  EntityTreeWindow(ChildWindows& windows, const EntityTreeContext& context, Map& map);
  ~EntityTreeWindow() override;

  const EntityTree& Tree() const { return tree_; }
  HWND List() const { return list_->Handle(); }

  // --- as a child of the frame
  Map* GetMap() const override { return &map_; }
  bool TakesMessage(MSG& message) override;
  void OptionsChanged() override;

  // --- from the map
  void OnChange(const MapChange& change) override;

  // --- as the list's host
  void RowsChosen() override;
  void OpenNode(entity& e, bool isOpen) override;
  void Centre(entity& e) override;
  void Rename(entity& e, const std::string& name) override;
  void BeginDrag() override;

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnDragMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnCreate();
  HWND AddControl(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id);
  void Place(int id, int left, int top, int width, int height) const;
  void Layout() const;
  void OnCommand(int id, int notification);
  void OnTimer(UINT_PTR id);
  void ApplyRows();

  void SetFilter(const TreeFilter& filter);
  void ChooseWhatIsShown();
  void FillClasses() const;
  void FillLayers() const;
  void TakeClass();
  void TakeLayer();
  void EndFilterText();
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
  Map& map_;
  EntityTree tree_;
  std::unique_ptr<EntityTreeList> list_;
  bool rowsChosen_ = false;  // and not applied yet
  bool isDragging_ = false;
};

}  // namespace ferrowand
