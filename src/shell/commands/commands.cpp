#include "shell/commands/commands.h"

#include <algorithm>

#include "base/path_text.h"
#include "document/action.h"
#include "document/bound_entities.h"
#include "document/classes/template_index.h"
#include "operations/insert.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/frame.h"
#include "shell/frame/load_window.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/side_windows.h"
#include "views/camera/camera.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

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
  if (tool == &tools.faceTool) return Command::FaceEdit;
  if (tool == &tools.pathTool) return Command::LayPath;
  if (tool == &tools.cameraPositioner) return Command::ToolCameraPositioner;
  if (tool == &tools.primitiveTool) return CommandOf(tools.primitiveTool.Kind());
  return {};
}

}  // namespace

const CommandGroup* Commands::GroupOf(Command command) const {
  const auto group =
      std::ranges::find_if(groups_, [command](const auto& g) { return g->Has(command); });
  return group == groups_.end() ? nullptr : group->get();
}

CommandFacts Commands::Facts() const {
  CommandFacts facts;
  facts.options = &context_.options;
  facts.mode = ModeOf(context_.tools);
  facts.selectsFull = context_.tools.boxRule == BoxRule::Full;
  facts.limitedAxes = context_.tools.LimitedAxes();
  if (const Map* map = context_.windows.ActiveMap()) {
    facts.hasMap = true;
    facts.hasSelection = !map->selection.empty();
    facts.hasTemplates = !map->Templates().IsEmpty();
    facts.canUndo = map->undo.CanUndo();
    facts.canRedo = map->undo.CanRedo();
    facts.grid = (map->optionBits() & MAP_GRID) != 0;
    facts.snap = (map->optionBits() & MAP_SNAP) != 0;
    if (const MapMarks* marks = context_.windows.Views().marks.Find(*map)) {
      facts.hasLeak = !marks->leak.empty();
      facts.showsLeak = marks->showsLeak;
      facts.showsPortals = marks->showsPortals;
    }
    if (const Camera* camera = context_.windows.CameraOf(*map)) {
      facts.hasLamp = camera->HasLamp();
      facts.previewsLight = camera->Lighting() == CameraLighting::Preview;
    }
  }
  if (const MapView* view = context_.windows.ActiveView()) {
    facts.hasView = true;
    facts.mapMode = static_cast<std::uint8_t>(view->mapmode);
  }
  return facts;
}

bool Commands::IsAvailable(unsigned id) const {
  const CommandRow* row = FindCommand(id);
  return row && GroupOf(row->command) && row->available(Facts());
}

bool Commands::IsChecked(unsigned id) const {
  const CommandRow* row = FindCommand(id);
  return row && row->checked && row->checked(Facts());
}

void Commands::Execute(unsigned id) {
  // Nothing may touch the documents while one is being read.
  if (context_.progress.IsLoading() || !IsAvailable(id)) return;
  EndDrag();
  context_.sides.FinishTyping();
  if (!IsAvailable(id)) return;
  const CommandRow& row = *FindCommand(id);
  const ActionScope action(context_.data, NameOf(row));
  const MapView* const view = context_.windows.ActiveView();
  const std::string before = view ? view->Status() : "";
  const auto state = StateOfMap();
  GroupOf(row.command)->Run(row.command, id);
  if (row.menu == "Operate" && view && view == context_.windows.ActiveView() &&
      view->Status() == before && StateOfMap() == state) {
    context_.windows.ActiveView()->SetStatus(NameOf(row) + ": nothing was changed");
  }
  if (row.checked && row.menu.starts_with("View")) TellState(row);
}

std::optional<UndoStore::StateId> Commands::StateOfMap() const {
  const Map* map = context_.windows.ActiveMap();
  if (!map) return std::nullopt;
  return map->undo.State();
}

// What is switched makes no step that would tell of itself.
void Commands::TellState(const CommandRow& row) const {
  MapView* view = context_.windows.ActiveView();
  if (view) view->SetStatus(NameOf(row) + (row.checked(Facts()) ? ": on" : ": off"));
}

bool Commands::InsertBoundEntity(unsigned key) {
  const auto& bound = context_.boundEntities.items;
  const auto item = std::ranges::find_if(
      bound, [key](const BoundEntity& b) { return b.key == key && b.prototype; });
  Map* map = context_.windows.ActiveMap();
  if (item == bound.end() || !map || context_.progress.IsLoading()) return false;
  EndDrag();
  const ActionScope action(context_.data, "Insert");
  const EntityClass& asked = map->classSet->FindClass(item->prototype->getClass()->classname);
  const Vec3 place = context_.windows.PlaceForNew(*map).For(asked.SizeBox());
  Conclude(*map, InsertCopy(*map, *item->prototype, place));
  return true;
}

void Commands::Offer(HMENU popup) {
  Execute(context_.dialogs.TrackAtCursor(popup));
}

std::string Commands::ActiveFile() const {
  const Map* map = context_.windows.ActiveMap();
  if (!map) return "";
  const PathParts parts = SplitPath(map->filename);
  return parts.base + parts.extension + (map->modified() ? " *" : "");
}

bool Commands::IsDragging() const {
  return context_.tools.Current()->IsDragging();
}

void Commands::EndDrag() {
  if (IsDragging()) context_.tools.Current()->Cancel();
}

}  // namespace ferrowand
