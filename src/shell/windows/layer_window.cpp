#include "shell/windows/layer_window.h"

#include <algorithm>
#include <array>

#include "base/command_table.h"
#include "base/report.h"
#include "document/action.h"
#include "document/classes/native_classes.h"
#include "document/picking.h"
#include "operations/layers.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/popup_menus.h"
#include "shell/dialogs/refusal.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/frame/command_target.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/text_box.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int WIDTH = 470, HEIGHT = 320;
constexpr int MARGIN = 6, GAP = 4, BUTTON_HEIGHT = 23, SMALLEST_BUTTON = 106, SMALLEST_LIST = 80;

constexpr int BUTTONS = ID_LAYER_PROPERTIES - ID_LAYER_ADD + 1;

// The items of the popup.
enum PopupItem : unsigned {
  SHOW_VIEWPOINT = 1000,
  ZOOM_AND_CENTRE,
  SELECT,
  ADD_TO_SELECTION,
  SET_AS_LEADING,
  PROPERTIES
};

bool HoldsReachable(const entity& layer) {
  return layer.IsVisible() && layer.IsEnabled() &&
         std::ranges::any_of(layer.getEntityList(),
                             [](const EntityPtr& object) { return IsReachable(*object); });
}

const char* NameOf(LayerAction action, const entity& layer) {
  switch (action) {
    case LayerAction::ToggleVisible:
      return layer.IsVisible() ? "Hide" : "Show";
    case LayerAction::ToggleEnabled:
      return layer.IsEnabled() ? "Disable" : "Enable";
    case LayerAction::MakeCurrent:
      return "Make current";
    case LayerAction::ChooseColour:
      return "Colour";
    case LayerAction::Remove:
      return "Delete layer";
  }
  return "";
}

// Full rows only.
int ButtonsPerRow(int width) {
  int count = BUTTONS;
  const int gap = Scaled(GAP);
  while (count > 1 && width < count * (Scaled(SMALLEST_BUTTON) + gap) - gap) count /= 2;
  return count;
}

}  // namespace

LRESULT CALLBACK LayerFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

LayerWindow::LayerWindow(ChildWindows& windows, const LayerWindowContext& context, Map& map)
    : MapPanel(windows, map, {LAYER_CLASS, "Layers", WIDTH, HEIGHT}), context_(context) {
  Open();
}

void LayerWindow::OnCreate() {
  dialog_ = CreateDialogParamA(frame_.Instance(), MAKEINTRESOURCEA(ID_LAYERS), Handle(),
                               LayerDialogFunc, reinterpret_cast<LPARAM>(this));
  list_ = std::make_unique<LayerList>(dialog_, ID_LAYER_LIST, map_, *this);
  Layout();
  OnChange({});
}

INT_PTR CALLBACK LayerWindow::LayerDialogFunc(HWND dialog, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetObject(dialog, reinterpret_cast<void*>(lParam));
    return FALSE;  // the list takes the focus
  }
  auto* window = ObjectOf<LayerWindow>(dialog);
  if (!window || message != WM_COMMAND || HIWORD(wParam) != BN_CLICKED) return FALSE;
  window->OnButton(LOWORD(wParam));
  return TRUE;
}

void LayerWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  MoveWindow(dialog_, 0, 0, area.right, area.bottom, TRUE);
  const int margin = Scaled(MARGIN), gap = Scaled(GAP);
  const int width = std::max(static_cast<int>(area.right) - 2 * margin, 1);
  const int perRow = ButtonsPerRow(width);
  const int buttonsHeight = BUTTONS / perRow * (Scaled(BUTTON_HEIGHT) + gap) - gap + margin;
  const int height = std::max(static_cast<int>(area.bottom) - 2 * margin, 1);
  // In a low window the list is what counts: popup and keys do what the buttons do.
  const bool hasButtons = height >= Scaled(SMALLEST_LIST) + buttonsHeight;
  const int listHeight = hasButtons ? height - buttonsHeight : height;
  MoveWindow(list_->Handle(), margin, margin, width, listHeight, TRUE);
  for (int i = 0; i < BUTTONS; ++i) {
    ShowWindow(GetDlgItem(dialog_, ID_LAYER_ADD + i), hasButtons ? SW_SHOWNA : SW_HIDE);
  }
  LayOutButtons(margin, 2 * margin + listHeight, width, perRow);
}

void LayerWindow::LayOutButtons(int left, int top, int width, int perRow) const {
  const int gap = Scaled(GAP), height = Scaled(BUTTON_HEIGHT);
  for (int i = 0; i < BUTTONS; ++i) {
    const int column = i % perRow, row = i / perRow;
    const int from = column * (width + gap) / perRow, to = (column + 1) * (width + gap) / perRow;
    MoveWindow(GetDlgItem(dialog_, ID_LAYER_ADD + i), left + from, top + row * (height + gap),
               to - from - gap, height, TRUE);
  }
}

// Rows and buttons compare before they draw: a look at all of them costs less than to tell what of
// a change concerns them.
void LayerWindow::OnChange(const MapChange&) {
  ShowName();
  list_->Refresh();
  SelectedLayerChanged();
}

void LayerWindow::SelectedLayerChanged() {
  const entity* layer = list_ ? list_->Selected() : nullptr;
  const auto enable = [&](int id, bool on) {
    const HWND button = GetDlgItem(dialog_, id);
    if ((IsWindowEnabled(button) != FALSE) == on) return;
    if (!on && GetFocus() == button) list_->TakeFocus();
    EnableWindow(button, on);
  };
  for (const int id : {ID_LAYER_RENAME, ID_LAYER_COLOUR, ID_LAYER_PROPERTIES}) enable(id, layer);
  enable(ID_LAYER_REMOVE, layer && LayersOf(map_).size() > 1);
  enable(ID_LAYER_MAKE_CURRENT, layer && !ReceivesObjects(*layer));
  enable(ID_LAYER_SELECT, layer && HoldsReachable(*layer));
  enable(ID_LAYER_MOVE_IN, layer && !map_.selection.empty());
}

bool LayerWindow::ReceivesObjects(const entity& layer) const {
  return &layer == map_.currentLayer() && !map_.leadingGroup();
}

bool LayerWindow::IsOwnKey(WPARAM key, bool withControl) const {
  constexpr std::array KEYS{VK_TAB,   VK_SPACE, VK_RETURN, VK_ESCAPE, VK_UP,   VK_DOWN,   VK_LEFT,
                            VK_RIGHT, VK_HOME,  VK_END,    VK_PRIOR,  VK_NEXT, VK_DELETE, VK_F2};
  return !withControl && std::ranges::find(KEYS, static_cast<int>(key)) != KEYS.end();
}

// A letter that is no command is for no button either.
bool LayerWindow::TakesMessage(MSG& message) {
  const bool isLetter = message.message == WM_CHAR && message.wParam > VK_SPACE;
  return (!isLetter || IsTextBox(message.hwnd)) && MapPanel::TakesMessage(message);
}

void LayerWindow::OnButton(int id) {
  if (id == ID_LAYER_ADD) return context_.commands.Execute(Id(Command::InsertLayer));
  entity* layer = list_->Selected();
  if (layer) Edit(*layer, id);
}

void LayerWindow::Edit(entity& layer, int id) {
  switch (id) {
    case ID_LAYER_RENAME:
      return list_->BeginRename();
    case ID_LAYER_COLOUR:
      return Perform(LayerAction::ChooseColour, layer);
    case ID_LAYER_REMOVE:
      return Perform(LayerAction::Remove, layer);
    case ID_LAYER_MAKE_CURRENT:
    case IDOK:  // Enter, in the list
      return Perform(LayerAction::MakeCurrent, layer);
    case ID_LAYER_SELECT:
      return SelectObjectsOf(layer, false);
    case ID_LAYER_MOVE_IN:
      return MoveSelectionTo(layer);
    case ID_LAYER_PROPERTIES:
      return EditProperties(layer);
  }
}

void LayerWindow::Perform(LayerAction action, entity& layer) {
  const ActionScope scope(map_.Data(), NameOf(action, layer));
  switch (action) {
    case LayerAction::ToggleVisible:
      return SetLayerState(map_, layer, layer.IsVisible(), !layer.IsEnabled());
    case LayerAction::ToggleEnabled:
      return SetLayerState(map_, layer, !layer.IsVisible(), layer.IsEnabled());
    case LayerAction::MakeCurrent:
      return MakeLayerCurrent(map_, layer);
    case LayerAction::ChooseColour:
      if (const auto colour = context_.dialogs.ChooseColour(LayerColour(layer))) {
        RecolourLayer(map_, layer, *colour);
      }
      return;
    case LayerAction::Remove:
      Conclude(map_, RemoveLayer(map_, layer));
      return;
  }
}

void LayerWindow::Rename(entity& layer, const std::string& name) {
  const char* const before = layer.GetKey("XMPentityname");
  if (before && name == AsUtf8(before)) return;
  const ActionScope action(map_.Data(), "Rename");
  RenameLayer(map_, layer, name);
}

void LayerWindow::EditProperties(entity& layer) {
  const char* name = layer.GetKey("XMPentityname");
  const std::string before = name ? name : "";
  const Colour colour = LayerColour(layer);
  const auto accept = [&](const FormValues& typed) {
    constexpr std::array PARTS = {"Red", "Green", "Blue"};
    std::array<std::uint8_t, 3> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
      const auto part = WholeNumberOf(context_.reporter, typed[1 + i], PARTS[i], 0, 255);
      if (!part) return false;
      parts[i] = static_cast<std::uint8_t>(*part);
    }
    const ActionScope action(map_.Data(), "Properties");
    // A name that is left alone stays to the byte, whatever its letters.
    const bool renames = typed.front() != AsUtf8(before);
    DescribeLayer(map_, layer, renames ? typed.front() : before, {parts[0], parts[1], parts[2]});
    return true;
  };
  context_.dialogs.Ask({"Layer properties",
                        "",
                        {{"Name", {before}, {}},
                         {"Red (0 to 255)", {std::to_string(colour.red)}, {}},
                         {"Green", {std::to_string(colour.green)}, {}},
                         {"Blue", {std::to_string(colour.blue)}, {}}},
                        accept});
}

void LayerWindow::MoveSelectionTo(entity& layer) {
  const bool isOpen = layer.IsVisible() && layer.IsEnabled();
  if (!isOpen && context_.reporter.Show(
                     "Ferrowand asks", "The layer is hidden or disabled. Move the selection to it?",
                     Buttons::YesNo, Icon::Question) != Answer::Yes) {
    return;
  }
  const ActionScope action(map_.Data(), "Move to layer");
  Conclude(map_, MoveSelectionToLayer(map_, layer));
}

void LayerWindow::SelectObjectsOf(entity& layer, bool add) {
  SelectMembers(map_, layer, add);
}

void LayerWindow::ZoomTo(const entity& layer) {
  const Bounds box = layer.GetBounds();
  for (MapView* view : windows_.Views().ViewsOf(map_)) {
    view->CentreOn((box.mins + box.maxs) * 0.5f);
    view->ZoomTo(box);
  }
}

void LayerWindow::ShowPopup(entity& layer, POINT screen) {
  const HMENU menu = context_.popups.Get(ID_POPUP_LAYER);
  const auto enable = [&](PopupItem item, bool on) {
    EnableMenuItem(menu, item, MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED));
  };
  enable(SHOW_VIEWPOINT, false);  // there is no camera to take there
  enable(ZOOM_AND_CENTRE, !layer.GetBounds().IsEmpty());
  enable(SELECT, HoldsReachable(layer));
  enable(ADD_TO_SELECTION, HoldsReachable(layer));
  enable(SET_AS_LEADING, !ReceivesObjects(layer));
  switch (context_.dialogs.TrackPopup(Handle(), menu, screen)) {
    case ZOOM_AND_CENTRE:
      return ZoomTo(layer);
    case SELECT:
      return SelectObjectsOf(layer, false);
    case ADD_TO_SELECTION:
      return SelectObjectsOf(layer, true);
    case SET_AS_LEADING:
      return Perform(LayerAction::MakeCurrent, layer);
    case PROPERTIES:
      return EditProperties(layer);
  }
}

}  // namespace ferrowand
