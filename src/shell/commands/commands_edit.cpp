// The Edit menu, and the entities that keys insert.
#include <algorithm>

#include "document/classes/class_set.h"
#include "document/picking.h"
#include "operations/arrange.h"
#include "operations/clipboard.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "shell/app/app.h"
#include "shell/commands/commands.h"

namespace ferrowand {
namespace {

template <void (UndoStore::*operation)()>
void Step(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  (map.undo.*operation)();
  map.modified = true;
  Conclude(app, map, EditResult::Done);
}

bool Put(App& app, const std::string& text) {
  if (app.clipboard.SetText(app.frame.Handle(), text)) return true;
  app.reporter.Show("Cannot continue", "Another program keeps the clipboard");
  return false;
}

// Cut takes nothing out that has not arrived on the clipboard.
template <bool cut>
void Take(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  const std::string text = SelectionText(map);
  if (text.empty()) {
    Conclude(app, map, EditResult::NothingSelected);
    return;
  }
  if (Put(app, text) && cut) Conclude(app, map, DeleteSelection(map));
}

void Paste(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  Conclude(app, map, PasteText(map, app.clipboard.Text(app.frame.Handle())));
}

void Clear(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  Conclude(app, map, DeleteSelection(map));
}

void SelectNothing(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  SelectNone(map);
  app.RefreshMap(map);
}

// To the right and down by one step of the grid, so that the copy is seen.
void Duplicate(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  Vec3 offset;
  if (const MapView* view = app.ActiveView()) {
    offset[view->transform.orienu] = static_cast<float>(1 << view->gridu);
    offset[view->transform.orienv] = -static_cast<float>(1 << view->gridv);
  }
  Conclude(app, map, DuplicateSelection(map, offset, app.tools.HowToArrange()));
}

void DuplicateMany(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  if (!RequireSelection(app)) return;
  const auto accept = [&](const FormValues& typed) {
    const auto count = WholeNumberOf(app, typed[0], "The number of copies", 1, MAXCOPIES);
    if (!count) return false;
    const auto numbers = NumbersOf(app, std::span(typed).subspan(1));
    if (!numbers) return false;
    MultiDuplicate how{.count = *count, .offset = {}, .turn = {}};
    for (std::size_t i = 0; i < 3; ++i) {
      how.offset[static_cast<int>(i)] = static_cast<float>((*numbers)[i]);
      how.turn[static_cast<int>(i)] = (*numbers)[3 + i];
    }
    return Conclude(app, map, DuplicateSelection(map, how, app.tools.HowToArrange()));
  };
  FormRow offset = AxisRow("Offset of each", "0");
  offset.values.front() = "64";
  app.dialogs.Ask(app.frame.Handle(),
                  {"Multi Dupe",
                   "Each copy is moved and turned against the one before.",
                   {{"Copies", {"1"}, {}}, offset, AxisRow("Degrees about", "0")},
                   accept});
}

// The letter to type stands where the names of a group begin to differ.
std::string WithMnemonic(const std::string& name, bool inGroup) {
  const std::size_t bar = inGroup ? name.find('_') : std::string::npos;
  const std::size_t letter = bar == std::string::npos ? 0 : bar + 1;
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (i == letter || name[i] == '&') text += '&';
    text += name[i];
  }
  return text;
}

HMENU MakeClassMenu(const std::vector<ClassMenuItem>& items, bool inGroup) {
  const HMENU menu = CreatePopupMenu();
  for (const ClassMenuItem& item : items) {
    const bool isGroup = !item.items.empty();
    AppendMenuA(menu, isGroup ? MF_POPUP : MF_STRING,
                isGroup ? reinterpret_cast<UINT_PTR>(MakeClassMenu(item.items, true)) : item.id,
                WithMnemonic(item.text, inGroup).c_str());
  }
  return menu;
}

void Insert(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  // Before the menu draws the cursor away.
  const Vec3 place = PlaceForNew(app, map);
  const OwnedMenu menu(MakeClassMenu(map.classSet->Menu(), false));
  POINT at;
  GetCursorPos(&at);
  // Owned by the view: the frame would take the numbers of classes for commands.
  const unsigned id = app.dialogs.TrackPopup(app.ActiveWindow()->Handle(), menu.get(), at);
  const EntityClass* chosen = map.classSet->ClassOfMenuId(id);
  if (!chosen) return;
  const bool isPoint = chosen->HasSizeBox() && !chosen->isMadeOfBrushes;
  Conclude(app, map, isPoint ? InsertEntity(map, *chosen, place) : GroupSelectionAs(map, *chosen));
}

}  // namespace

bool InsertBoundEntity(App& app, unsigned key) {
  const auto& bound = app.boundEntities.items;
  const auto item = std::ranges::find_if(
      bound, [key](const BoundEntity& b) { return b.key == key && b.prototype; });
  Map* map = app.ActiveMap();
  if (item == bound.end() || !map || app.progress.IsLoading()) return false;
  app.EndDrag();
  Conclude(app, *map, InsertCopy(*map, *item->prototype, PlaceForNew(app, *map)));
  app.frame.RefreshToolbar();
  return true;
}

namespace {

constexpr CommandHandler HANDLERS[] = {
    {Command::Undo, Step<&UndoStore::Undo>},
    {Command::Redo, Step<&UndoStore::Redo>},
    {Command::Insert, Insert},
    {Command::Cut, Take<true>},
    {Command::Copy, Take<false>},
    {Command::Paste, Paste},
    {Command::Clear, Clear},
    {Command::SelectNone, SelectNothing},
    {Command::Duplicate, Duplicate},
    {Command::MultiDuplicate, DuplicateMany},
};

}  // namespace

std::span<const CommandHandler> EditCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
