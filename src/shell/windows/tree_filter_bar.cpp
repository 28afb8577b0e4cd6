#include "shell/windows/tree_filter_bar.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/options.h"
#include "document/map.h"
#include "operations/entity_search.h"
#include "operations/layers.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/popup_menus.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int GAP = 4, ROW_HEIGHT = 22, TEXT_DROP = 4;
constexpr int LABEL_WIDTH = 36, BUTTON_WIDTH = 66, LIST_HEIGHT = 200;

// Milliseconds. What is typed goes first: timers wait until no key is left to be read.
constexpr UINT DELAY = 10;

constexpr wchar_t ALL_CLASSES[] = L"All classes", ALL_LAYERS[] = L"All layers";

// Items of the popup and bits of the setting, in the same order.
constexpr unsigned FIRST_SWITCH = 1000;
constexpr std::array<bool TreeFilter::*, 5> SWITCHES{&TreeFilter::hidden, &TreeFilter::disabled,
                                                     &TreeFilter::onlyPoints,
                                                     &TreeFilter::onlyNamed, &TreeFilter::brushes};

TreeFilter FilterOf(std::uint8_t bits) {
  TreeFilter filter;
  for (std::size_t i = 0; i < SWITCHES.size(); ++i) filter.*SWITCHES[i] = (bits >> i & 1) != 0;
  return filter;
}

std::uint8_t BitsOf(const TreeFilter& filter) {
  unsigned bits = 0;
  for (std::size_t i = 0; i < SWITCHES.size(); ++i) bits |= (filter.*SWITCHES[i] ? 1u : 0u) << i;
  return static_cast<std::uint8_t>(bits);
}

std::wstring NameOf(const entity& layer) {
  const char* name = layer.GetKey("XMPentityname");
  return ToWide(name ? name : "Unnamed");
}

// The first where none is.
std::size_t ChosenItem(HWND combo) {
  const LRESULT item = SendMessageW(combo, CB_GETCURSEL, 0, 0);
  return item < 0 ? 0 : static_cast<std::size_t>(item);
}

}  // namespace

TreeFilterBar::TreeFilterBar(HWND parent, const Map& map, EntityTree& tree,
                             const TreeFilterContext& context, std::function<void()> filtered)
    : parent_(parent), map_(map), tree_(tree), context_(context), filtered_(std::move(filtered)) {
  tree_.SetFilter(FilterOf(context_.options.entityTreeShows));
  constexpr DWORD LIST = WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;
  AddControl(parent, L"STATIC", L"F&ilter:", SS_LEFTNOWORDWRAP, ID_TREE_LABEL);
  AddControl(parent, L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, ID_TREE_FILTER, WS_EX_CLIENTEDGE);
  AddControl(parent, L"BUTTON", L"&Show...", WS_TABSTOP, ID_TREE_SHOW);
  AddChoice(AddControl(parent, L"COMBOBOX", L"", LIST, ID_TREE_CLASS), ALL_CLASSES);
  AddChoice(AddControl(parent, L"COMBOBOX", L"", LIST, ID_TREE_LAYER), ALL_LAYERS);
  for (const int id : {ID_TREE_CLASS, ID_TREE_LAYER}) {
    SendMessageW(Control(id), CB_SETCURSEL, 0, 0);
  }
}

int TreeFilterBar::Place(int left, int top, int width) const {
  const int gap = Scaled(GAP), row = Scaled(ROW_HEIGHT), drop = Scaled(TEXT_DROP);
  const int label = Scaled(LABEL_WIDTH), button = Scaled(BUTTON_WIDTH), half = (width - gap) / 2;
  PlaceControl(parent_, ID_TREE_LABEL, left, top + drop, label, row - drop);
  PlaceControl(parent_, ID_TREE_FILTER, left + label, top, width - label - button - gap, row);
  PlaceControl(parent_, ID_TREE_SHOW, left + width - button, top, button, row);
  const int second = top + row + gap;
  PlaceControl(parent_, ID_TREE_CLASS, left, second, half, Scaled(LIST_HEIGHT));
  PlaceControl(parent_, ID_TREE_LAYER, left + width - half, second, half, Scaled(LIST_HEIGHT));
  RECT combo;
  GetWindowRect(Control(ID_TREE_CLASS), &combo);
  return second + static_cast<int>(combo.bottom - combo.top);
}

bool TreeFilterBar::IsSearch() const {
  return tree_.Filter() != FilterOf(BitsOf(tree_.Filter()));
}

void TreeFilterBar::SetFilter(const TreeFilter& filter) {
  tree_.SetFilter(filter);
  context_.options.entityTreeShows = BitsOf(filter);
  filtered_();
}

void TreeFilterBar::TakeText() {
  KillTimer(parent_, TIMER);
  TreeFilter filter = tree_.Filter();
  filter.text = FromWide(WindowText(Control(ID_TREE_FILTER)));
  SetFilter(filter);
}

void TreeFilterBar::ClearText() const {
  SetWindowTextW(Control(ID_TREE_FILTER), L"");
}

void TreeFilterBar::ChooseKinds() {
  const HMENU menu = context_.popups.Get(ID_POPUP_TREE_FILTER);
  TreeFilter filter = tree_.Filter();
  for (unsigned i = 0; i < SWITCHES.size(); ++i) {
    CheckMenuItem(menu, FIRST_SWITCH + i,
                  MF_BYCOMMAND | (filter.*SWITCHES[i] ? MF_CHECKED : MF_UNCHECKED));
  }
  RECT button;
  GetWindowRect(Control(ID_TREE_SHOW), &button);
  const unsigned chosen =
      context_.dialogs.TrackPopup(parent_, menu, {button.left, button.bottom}) - FIRST_SWITCH;
  if (chosen >= SWITCHES.size()) return;
  filter.*SWITCHES[chosen] = !(filter.*SWITCHES[chosen]);
  SetFilter(filter);
}

// When the list drops down: until then nobody needs to know which there are.
void TreeFilterBar::FillClasses() const {
  auto classes = ClassesIn(map_);
  const std::string& shown = tree_.Filter().classname;
  if (!shown.empty()) classes.insert(shown);
  const HWND combo = Control(ID_TREE_CLASS);
  SendMessageW(combo, CB_RESETCONTENT, 0, 0);
  AddChoice(combo, ALL_CLASSES);
  for (const std::string& name : classes) AddChoice(combo, ToWide(name));
  const auto place = std::distance(classes.begin(), classes.find(shown));
  SendMessageW(combo, CB_SETCURSEL, shown.empty() ? 0 : static_cast<WPARAM>(place + 1), 0);
}

void TreeFilterBar::FillLayers() const {
  const HWND combo = Control(ID_TREE_LAYER);
  SendMessageW(combo, CB_RESETCONTENT, 0, 0);
  AddChoice(combo, ALL_LAYERS);
  SendMessageW(combo, CB_SETCURSEL, 0, 0);
  WPARAM place = 0;
  for (const entity* layer : LayersOf(map_)) {
    AddChoice(combo, NameOf(*layer));
    ++place;
    if (layer == tree_.Filter().layer) SendMessageW(combo, CB_SETCURSEL, place, 0);
  }
}

void TreeFilterBar::TakeClass() {
  const HWND combo = Control(ID_TREE_CLASS);
  const std::size_t item = ChosenItem(combo);
  std::wstring text(static_cast<std::size_t>(SendMessageW(combo, CB_GETLBTEXTLEN, item, 0)), L' ');
  SendMessageW(combo, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
  TreeFilter filter = tree_.Filter();
  filter.classname = item == 0 ? "" : FromWide(text);
  SetFilter(filter);
}

void TreeFilterBar::TakeLayer() {
  const std::size_t item = ChosenItem(Control(ID_TREE_LAYER));
  const std::vector<entity*> layers = LayersOf(map_);
  TreeFilter filter = tree_.Filter();
  filter.layer = item > 0 && item <= layers.size() ? layers[item - 1] : nullptr;
  SetFilter(filter);
}

void TreeFilterBar::OnCommand(int id, int notification) {
  switch (id) {
    case ID_TREE_FILTER:
      if (notification == EN_CHANGE) SetTimer(parent_, TIMER, DELAY, nullptr);
      return;
    case ID_TREE_SHOW:
      if (notification == BN_CLICKED) ChooseKinds();
      return;
    case ID_TREE_CLASS:
      if (notification == CBN_DROPDOWN) FillClasses();
      if (notification == CBN_SELCHANGE) TakeClass();
      return;
    case ID_TREE_LAYER:
      if (notification == CBN_DROPDOWN) FillLayers();
      if (notification == CBN_SELCHANGE) TakeLayer();
      return;
  }
}

}  // namespace ferrowand
