// The View menu.
#include "base/report.h"
#include "document/map.h"
#include "document/picking.h"
#include "shell/commands/command_groups.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/popup_menus.h"
#include "shell/documents/documents.h"
#include "shell/resources/resource.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

// The menu stands in for the key.
template <char key>
void Type(const ViewContext& in, unsigned) {
  in.windows.ActiveView()->OnCharacter(key, false);
}

void ExplainZoomTo(const ViewContext& in, unsigned) {
  in.reporter.Show("Ferrowand says",
                   "Hold down D and click a position on a 2d map to zoom in on it. Hold down "
                   "Shift+D and click a position to zoom out.");
}

template <void (MapView::*operation)()>
void OnView(const ViewContext& in, unsigned) {
  (in.windows.ActiveView()->*operation)();
}

void GridSmaller(const ViewContext& in, unsigned) {
  in.windows.ActiveView()->GridSmaller(false);
}
void GridLarger(const ViewContext& in, unsigned) {
  in.windows.ActiveView()->GridLarger(false);
}

template <MapMode mode>
void SetMode(const ViewContext& in, unsigned) {
  in.windows.ActiveView()->SetMapMode(mode);
}

void ChooseMode(const ViewContext& in, unsigned) {
  in.commands.Offer(in.popups.Get(ID_POPUP_MAP_MODE));
}

template <std::uint8_t Options::*option>
void Toggle(const ViewContext& in, unsigned) {
  in.options.*option = in.options.*option == 0;
  in.documents.FollowOptions();
}

void ZoomToFit(const ViewContext& in, unsigned) {
  const Map& map = *in.windows.ActiveMap();
  if (map.selection.size() > 1) {
    in.reporter.Show("Cannot continue",
                     "Select one brush or group, or select nothing to see the whole map.");
    return;
  }
  const Bounds box = map.selection.empty() ? map.GetBounds() : SelectionBounds(map);
  for (MapView* view : in.windows.Views().ViewsOf(map)) view->ZoomTo(box);
}

void CentreSelection(const ViewContext& in, unsigned) {
  const Map& map = *in.windows.ActiveMap();
  in.windows.CentreOn(map, SelectionBounds(map));
}

void CentreAndZoom(const ViewContext& in, unsigned) {
  const Map& map = *in.windows.ActiveMap();
  const Bounds box = SelectionBounds(map);
  for (MapView* view : in.windows.Views().ViewsOf(map)) view->ZoomTo(box);
}

constexpr CommandHandler<ViewContext> HANDLERS[] = {
    {Command::ZoomIn, Type<'+'>},
    {Command::ZoomOut, Type<'-'>},
    {Command::ZoomTo, ExplainZoomTo},
    {Command::GridToggle, OnView<&MapView::ToggleGrid>},
    {Command::SnapToggle, OnView<&MapView::ToggleSnap>},
    {Command::ToggleGridAndSnap, OnView<&MapView::ToggleGridAndSnap>},
    {Command::GridSmaller, GridSmaller},
    {Command::GridLarger, GridLarger},
    {Command::ModeNormal, SetMode<MapMode::Normal>},
    {Command::ModeOneMip, SetMode<MapMode::OneMip>},
    {Command::ModeHeights, SetMode<MapMode::Heights>},
    {Command::ModeLayerColour, SetMode<MapMode::LayerColour>},
    {Command::ToolMapMode, ChooseMode},
    {Command::DrawClassnames, Toggle<&Options::entityNames>},
    {Command::DrawLightRadius, Toggle<&Options::drawLightRadius>},
    {Command::DrawTemplates, Toggle<&Options::drawTemplates>},
    {Command::RenderPointEntities, Toggle<&Options::renderPointEntities>},
    {Command::PaleOthers, Toggle<&Options::paleOthers>},
    {Command::CentreSelection, CentreSelection},
    {Command::CentreAndZoom, CentreAndZoom},
    {Command::ZoomToFit, ZoomToFit},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeViewCommands(const ViewContext& context) {
  return std::make_unique<HandlerGroup<ViewContext>>(context, HANDLERS);
}

}  // namespace ferrowand
