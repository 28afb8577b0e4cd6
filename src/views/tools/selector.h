// Selecting by a click or a rectangle, and dragging what is selected.
#pragma once

#include "views/tools/tool_base.h"

namespace ferrowand {

class Selector : public ToolBase {
 public:
  using ToolBase::ToolBase;

  void MouseDown(MapView& view, Pixel at, int button) override;
  // With smart selection on, what lies below the selected object at that place. Where nothing else
  // does, its properties.
  void DoubleClick(MapView& view, Pixel at, int button) override;
  // Selects instead what lies behind, or before, the selected one of those there.
  void GoThrough(MapView& view, Pixel at, bool deeper);
  void Select(MapView& view, entity* object, bool add) override;
  void Group(MapView& view) override;
  // The number of a class of the map's set: the selection becomes of that class, brushes by being
  // grouped.
  void PopupCommand(MapView& view, unsigned command) override;

  // The properties of the selected object; several are grouped first, if the user wants that.
  void EditSelected(MapView& view);

  // What a click takes.
  virtual PickLevel Level() const { return PickLevel::Objects; }
  // The rubber band that this tool has started is complete; `moved` is false for a mere click.
  virtual void TakeRectangle(MapView& view, const PixelRect& closed, bool moved);

 protected:
  // Of the selection, as it lies.
  void Drag(MapView& view, Pixel at) override;
  void Drop(MapView& view, Pixel at) override;
  ToolCursor CursorAt(const MapView& view, Pixel at) const override;

  // Whether a selected object is there.
  bool IsOnSelection(const MapView& view, Pixel at) const;
  // Whether a press there, where nothing is, is for the selection all the same.
  virtual bool IsForSelection(const MapView& view, Pixel at) const {
    return (void)view, (void)at, false;
  }
  // Picks what is there, or keeps the selection that is there.
  void Pick(MapView& view, Pixel at);
  // Of the objects each is there once.
  void SelectAll(MapView& view, const std::vector<entity*>& objects, bool add);
  // Those whose bounds are seen in the rectangle, by the rule of the set.
  std::vector<entity*> ObjectsIn(const MapView& view, const PixelRect& closed) const;

 private:
  // All that a click there could take, in map order.
  std::vector<entity*> StackAt(const MapView& view, Pixel at) const;
  ViewPoint DragOffset(const MapView& view, Pixel at) const;
};

class EntitySelector : public Selector {
 public:
  using Selector::Selector;

  std::string Name() const override { return "Entity Selector"; }
  void MouseDown(MapView& view, Pixel at, int button) override;
  void MouseUp(MapView& view, Pixel at, int button) override;

 protected:
  void Hover(MapView& view, Pixel at) override;

 private:
  bool rightPressed_ = false;
};

}  // namespace ferrowand
