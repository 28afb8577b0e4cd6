// The rows of a layer window, one a layer: colour, name, how much it holds and its switches. It
// shows what the map says and changes nothing: what the user wants goes to whoever holds it.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <string>
#include <vector>

#include "platform/colour.h"

namespace ferrowand {

class Map;
class entity;

inline constexpr char LAYER_LIST_CLASS[] = "FRWLayerListClass";

LRESULT CALLBACK LayerListFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

enum class LayerAction { ToggleVisible, ToggleEnabled, MakeCurrent, ChooseColour, Remove };

class LayerListHost {
 public:
  virtual ~LayerListHost() = default;

  virtual void Perform(LayerAction action, entity& layer) = 0;
  virtual void Rename(entity& layer, const std::string& name) = 0;
  virtual void ShowPopup(entity& layer, POINT screen) = 0;
  virtual void SelectedLayerChanged() = 0;
};

class LayerList {
 public:
  struct Row {
    entity* layer;
    std::string name;
    Colour colour;
    bool visible, enabled, current;
    std::size_t objects;

    friend bool operator==(const Row&, const Row&) = default;
  };

  // A control of the dialog, gone with it.
  LayerList(HWND dialog, int id, const Map& map, LayerListHost& host);
  ~LayerList();
  LayerList(const LayerList&) = delete;
  LayerList& operator=(const LayerList&) = delete;

  // Null when the system gave none.
  HWND Handle() const { return window_; }
  // The system's list in it, which has the keys.
  HWND Control() const { return rows_; }
  const std::vector<Row>& Rows() const { return shown_; }
  // Null when there is none.
  entity* Selected() const;
  void Select(const entity* layer);
  // What the map says by now. The row that was selected stays so as long as its layer is there.
  void Refresh();
  void TakeFocus() const { SetFocus(rows_); }
  // In its row.
  void BeginRename();

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnNotify(NMHDR& header);
  LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
  void OnCreate();
  void AddColumns();
  void FitColumns() const;
  std::vector<Row> ReadRows() const;
  void GiveText(LVITEMA& item) const;
  void DrawRow(HDC dc, int index) const;
  void OnClick(const NMITEMACTIVATE& click, bool twice);
  void OnSelected();
  bool MayRename() const;
  void OnKey(WORD key);
  void OnContextMenu(WPARAM wParam, LPARAM lParam);
  void OnRenamed(const LVITEMA& item);
  void DropRename();
  int SelectedIndex() const;
  // Of one of the map's layers by now.
  entity* LayerAt(int index) const;
  RECT CellOf(int index, int column) const;

  const Map& map_;
  LayerListHost& host_;
  HWND window_ = nullptr;
  HWND rows_ = nullptr;
  std::vector<Row> shown_;
  int switch_;                        // the column that the space bar acts on
  int clicked_;                       // the column that was clicked last
  bool renameEnds_ = false;           // and is not to end once more
  bool renames_ = false;              // by the user's wish, not by a click
  const entity* selected_ = nullptr;  // to compare only
  LONG selectedAt_ = 0;               // milliseconds of the system, as messages are told
  LONG clickedAt_ = 0;

  friend LRESULT CALLBACK LayerListFunc(HWND, UINT, WPARAM, LPARAM);
};

}  // namespace ferrowand
