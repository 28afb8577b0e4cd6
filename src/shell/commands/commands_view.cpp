// The View menu.
#include "shell/app/app.h"
#include "shell/commands/commands.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

// The menu stands in for the key.
template <char key>
void Type(App& app, unsigned) {
  app.ActiveView()->OnCharacter(key, false);
}

void ExplainZoomTo(App& app, unsigned) {
  app.reporter.Show("Ferrowand says",
                    "Hold down D and click a position on a 2d map to zoom in on it. Hold down "
                    "Shift+D and click a position to zoom out.");
}

template <void (MapView::*operation)()>
void OnView(App& app, unsigned) {
  (app.ActiveView()->*operation)();
}

void GridSmaller(App& app, unsigned) {
  app.ActiveView()->GridSmaller(false);
}
void GridLarger(App& app, unsigned) {
  app.ActiveView()->GridLarger(false);
}

template <MapMode mode>
void SetMode(App& app, unsigned) {
  app.ActiveView()->SetMapMode(mode);
}

void ChooseMode(App& app, unsigned) {
  app.TrackCommandPopup(app.Popup(ID_POPUP_MAP_MODE));
}

template <std::uint8_t Options::*option>
void Toggle(App& app, unsigned) {
  app.options.*option = app.options.*option == 0;
  app.RefreshAll();
}

Bounds BoundsOfSelection(const Map& map) {
  Bounds box;
  for (const entity* selected : map.selection) box.Add(selected->GetBounds());
  return box;
}

void ZoomToFit(App& app, unsigned) {
  const Map& map = *app.ActiveMap();
  if (map.selection.size() > 1) {
    app.reporter.Show("Cannot continue",
                      "Select one brush or group, or select nothing to see the whole map.");
    return;
  }
  const Bounds box = map.selection.empty() ? map.GetBounds() : BoundsOfSelection(map);
  for (MapView* view : app.views.ViewsOf(map)) view->ZoomTo(box);
}

void CentreSelection(App& app, unsigned) {
  const Map& map = *app.ActiveMap();
  const Bounds box = BoundsOfSelection(map);
  if (box.IsEmpty()) return;
  for (MapView* view : app.views.ViewsOf(map)) view->CentreOn((box.mins + box.maxs) * 0.5f);
}

void CentreAndZoom(App& app, unsigned) {
  const Map& map = *app.ActiveMap();
  const Bounds box = BoundsOfSelection(map);
  for (MapView* view : app.views.ViewsOf(map)) view->ZoomTo(box);
}

constexpr CommandHandler HANDLERS[] = {
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
    {Command::CentreSelection, CentreSelection},
    {Command::CentreAndZoom, CentreAndZoom},
    {Command::ZoomToFit, ZoomToFit},
};

}  // namespace

std::span<const CommandHandler> ViewCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
