// The controls above an entity tree: the text, the kinds of objects, the class and the layer that
// it is filtered by.
#pragma once

#include "shell/system/win32.h"

#include <functional>

#include "operations/entity_tree.h"

namespace ferrowand {

class Dialogs;
class Map;
class PopupMenus;
struct Options;

// What such controls work with. All outlive them.
struct TreeFilterContext {
  Options& options;  // keep which kinds of objects were shown last
  Dialogs& dialogs;
  const PopupMenus& popups;
};

class TreeFilterBar {
 public:
  // Of the parent, which has them told of its timer and of what its controls say.
  static constexpr UINT_PTR TIMER = 1;

  // Controls of the parent, in the order of Tab; the tree shows what the options say. `filtered`
  // hears that the tree has another filter. All outlive it.
  TreeFilterBar(HWND parent, const Map& map, EntityTree& tree, const TreeFilterContext& context,
                std::function<void()> filtered);
  TreeFilterBar(const TreeFilterBar&) = delete;
  TreeFilterBar& operator=(const TreeFilterBar&) = delete;

  // In pixels of the parent's drawing area; where they end, below.
  int Place(int left, int top, int width) const;
  // Whether an object must be one that is looked for, not only of a kind.
  bool IsSearch() const;

  void OnCommand(int id, int notification);
  // What is typed filters now: when the timer is due, or when somebody cannot wait for it.
  void TakeText();
  void ClearText() const;
  // The map's layers may be others.
  void FillLayers() const;

 private:
  void SetFilter(const TreeFilter& filter);
  void ChooseKinds();
  void FillClasses() const;
  void TakeClass();
  void TakeLayer();
  HWND Control(int id) const { return GetDlgItem(parent_, id); }

  HWND parent_;
  const Map& map_;
  EntityTree& tree_;
  const TreeFilterContext context_;
  const std::function<void()> filtered_;
};

}  // namespace ferrowand
