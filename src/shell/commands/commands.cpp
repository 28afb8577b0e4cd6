// The way of a command from its number to its handler.
#include "shell/commands/commands.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "shell/app/app.h"

namespace ferrowand {
namespace {

const CommandHandler* HandlerOf(Command command) {
  for (const auto handlers : {FileCommands(), EditCommands(), ModeCommands(), OperateCommands(),
                              InsertCommands(), ViewCommands(), WindowCommands()}) {
    const auto handler = std::ranges::find(handlers, command, &CommandHandler::command);
    if (handler != handlers.end()) return &*handler;
  }
  return nullptr;
}

Command CommandOf(PrimitiveKind kind) {
  switch (kind) {
    case PrimitiveKind::Cuboid:
      return Command::CreateCuboid;
    case PrimitiveKind::Wedge:
      return Command::CreateWedge;
    case PrimitiveKind::Column:
      return Command::CreateColumn;
    case PrimitiveKind::Pyramid:
      return Command::CreatePyramid;
    case PrimitiveKind::Sphere:
      return Command::CreateSphere;
    case PrimitiveKind::Hemisphere:
      return Command::CreateHemisphere;
  }
  return {};
}

// The mode that the current tool stands for.
Command ModeOf(const ToolSet& tools) {
  const Tool* tool = tools.Current();
  if (tool == &tools.entitySelector) return Command::ModeEntity;
  if (tool == &tools.brushSelector) return Command::ModeBrush;
  if (tool == &tools.brushTool) return Command::BrushHandles;
  if (tool == &tools.multiSelector) return Command::SelectMultiple;
  if (tool == &tools.vertexTool) return Command::TouchUp;
  if (tool == &tools.primitiveTool) return CommandOf(tools.primitiveTool.Kind());
  return {};
}

}  // namespace

bool Conclude(App& app, Map& map, EditResult result) {
  if (const char* reason = Reason(result); *reason) app.reporter.Show("Cannot continue", reason);
  app.RefreshMap(map);
  app.SetTitles(map);
  return result == EditResult::Done;
}

bool RequireSelection(App& app, const char* title, const char* text) {
  if (!app.ActiveMap()->selection.empty()) return true;
  app.reporter.Show(title, text);
  return false;
}

Vec3 PlaceForNew(const App& app, const Map& map) {
  const MapView* view = app.ActiveView();
  return (view ? view : app.views.ViewsOf(map).front())->PlaceForNew();
}

std::optional<std::vector<double>> NumbersOf(App& app, std::span<const std::string> typed) {
  std::vector<double> numbers;
  for (const std::string& text : typed) {
    const std::optional<double> number = ReadNumber(text);
    if (!number) {
      app.reporter.Show("Cannot continue", Format("\"%s\" is not a number", text.c_str()));
      return std::nullopt;
    }
    numbers.push_back(*number);
  }
  return numbers;
}

std::optional<int> WholeNumberOf(App& app, const std::string& typed, const char* what, int least,
                                 int most) {
  const std::optional<double> number = ReadNumber(typed);
  if (number && *number >= least && *number <= most && *number == std::floor(*number)) {
    return static_cast<int>(*number);
  }
  app.reporter.Show("Cannot continue",
                    Format("%s must be a whole number from %i to %i", what, least, most));
  return std::nullopt;
}

CommandFacts App::Facts() const {
  CommandFacts facts;
  facts.options = &options;
  facts.mode = ModeOf(tools);
  facts.selectsFull = tools.boxRule == BoxRule::Full;
  facts.limitedAxes = tools.LimitedAxes();
  if (const Map* map = ActiveMap()) {
    facts.hasMap = true;
    facts.canUndo = map->undo.CanUndo();
    facts.canRedo = map->undo.CanRedo();
    facts.grid = (map->optionBits & MAP_GRID) != 0;
    facts.snap = (map->optionBits & MAP_SNAP) != 0;
  }
  if (const MapView* view = ActiveView()) {
    facts.hasView = true;
    facts.mapMode = static_cast<std::uint8_t>(view->mapmode);
  }
  return facts;
}

bool App::IsAvailable(unsigned id) const {
  const CommandRow* row = FindCommand(id);
  return row && HandlerOf(row->command) && row->available(Facts());
}

bool App::IsChecked(unsigned id) const {
  const CommandRow* row = FindCommand(id);
  return row && row->checked && row->checked(Facts());
}

void App::Execute(unsigned id) {
  // Nothing may touch the documents while one is being read.
  if (progress.IsLoading() || !IsAvailable(id)) return;
  EndDrag();
  HandlerOf(FindCommand(id)->command)->run(*this, id);
  frame.RefreshToolbar();
}

void App::EndDrag() {
  if (tools.Current()->IsDragging()) tools.Current()->Cancel();
}

HMENU App::Popup(unsigned resource) const {
  const auto popup = popups.find(resource);
  return popup == popups.end() ? nullptr : GetSubMenu(popup->second.get(), 0);
}

void App::TrackCommandPopup(HMENU menu) {
  POINT at;
  GetCursorPos(&at);
  Execute(dialogs.TrackPopup(frame.Handle(), menu, at));
}

}  // namespace ferrowand
