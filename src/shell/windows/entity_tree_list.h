// The rows of an entity tree in a list of the system's: it asks for those that it shows. The rows
// that are chosen and the map's selection follow each other.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "operations/entity_tree.h"

namespace ferrowand {

class Map;
class entity;

class EntityTreeHost {
 public:
  virtual ~EntityTreeHost() = default;

  // Other rows are chosen, by the user: once the message under way is over, ApplyRows is to be
  // called.
  virtual void RowsChosen() = 0;
  virtual void OpenNode(entity& e, bool isOpen) = 0;
  virtual void Centre(entity& e) = 0;
  virtual void Rename(entity& e, const std::string& name) = 0;
  // The mouse begins to drag the chosen rows.
  virtual void BeginDrag() = 0;
};

class EntityTreeList {
 public:
  // A control of the parent, which hands it its notifications. All outlive it.
  EntityTreeList(HWND parent, int id, Map& map, EntityTree& tree, EntityTreeHost& host);
  ~EntityTreeList();
  EntityTreeList(const EntityTreeList&) = delete;
  EntityTreeList& operator=(const EntityTreeList&) = delete;

  HWND Handle() const { return list_; }
  LRESULT OnNotify(NMHDR& header);
  void FitColumns() const;

  // The tree, or what its rows say, is another.
  void Refresh(TreeUpdate update);
  // The map's selection is another: its rows are chosen, and what was chosen here is forgotten. The
  // first of them is shown where it stood folded away or out of sight.
  void ShowSelection();
  // What was chosen since has not been meant.
  void MarkRows();
  // What is chosen is selected, as far as it can be; the rest stays chosen here.
  void ApplyRows();

  // The objects of the chosen rows, from above.
  std::vector<entity*> Chosen() const;
  // Null for none.
  entity* Focused() const;
  entity* At(POINT screen) const;
  // The row under the place, to drop there; null for none.
  void MarkTarget(const entity* e);
  void ChooseOnly(std::size_t row);
  // In its row, if it has one.
  void BeginRename(const entity& e);

 private:
  static LRESULT CALLBACK ListFunc(HWND list, UINT message, WPARAM wParam, LPARAM lParam);
  void AddColumns() const;
  void FocusRow(int row) const;
  void DropRename();
  entity* AtRow(int row) const;
  std::vector<int> ChosenRows() const;
  // Those that are to be chosen and are not, or the other way round.
  std::vector<std::pair<int, bool>> RowsToMark() const;
  void GiveRow(LVITEMW& item);
  LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
  void OnItemChanged(const NMLISTVIEW& change);
  void OnKey(WORD key);
  bool PressNode(POINT at) const;
  LRESULT OnRenamed(const LVITEMW& item);
  int FindRow(const NMLVFINDITEMW& find) const;

  Map& map_;
  EntityTree& tree_;
  EntityTreeHost& host_;
  HWND list_;
  WNDPROC ownFunc_;                        // of the system's list
  std::wstring text_;                      // the cell that the system was given last
  std::unordered_set<const entity*> own_;  // chosen here, and nothing that can be selected
  const entity* focused_ = nullptr;        // to compare only
  const entity* target_ = nullptr;         // likewise
  bool isMarking_ = false;                 // the rows are chosen by us
  bool isApplying_ = false;                // the map's selection comes from here
  bool renames_ = false;                   // by the user's wish
  bool renameEnds_ = false;                // and is not to end once more
};

}  // namespace ferrowand
