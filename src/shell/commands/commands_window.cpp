// The Window menu.
#include "shell/app/app.h"
#include "shell/commands/commands.h"
#include "shell/resources/resource.h"

namespace ferrowand {
namespace {

template <UINT message, WPARAM how>
void Mdi(App& app, unsigned) {
  SendMessageA(app.frame.Client(), message, how, 0);
}

template <Arrangement arrangement>
void Arrange(App& app, unsigned) {
  if (const Map* map = app.ActiveMap()) app.Arrange(*map, arrangement);
}

void RefreshActive(App& app, unsigned) {
  app.RefreshMap(*app.ActiveMap());
}

void ToggleToolbar(App& app, unsigned) {
  app.options.showToolbar = app.options.showToolbar == 0;
  app.frame.ShowToolbar(app.options.showToolbar != 0);
}

template <Orientation orientation>
void NewView(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  ChildWindow* window = app.AddView(map, orientation);
  if (!window) return;
  window->SetTitle();
  const Bounds box = map.GetBounds();
  if (!box.IsEmpty()) window->View()->CentreOn((box.mins + box.maxs) * 0.5f);
}

void ChooseNewView(App& app, unsigned) {
  app.TrackCommandPopup(app.Popup(ID_POPUP_NEW_VIEW));
}

constexpr CommandHandler HANDLERS[] = {
    {Command::TileWindows, Mdi<WM_MDITILE, MDITILE_VERTICAL>},
    {Command::CascadeWindows, Mdi<WM_MDICASCADE, 0>},
    {Command::ArrangeQuarters, Arrange<Arrangement::Quarters>},
    {Command::ArrangeXYLarge, Arrange<Arrangement::XYLarge>},
    {Command::Arrange3DLarge, Arrange<Arrangement::ThreeDLarge>},
    {Command::RefreshAll, RefreshActive},
    {Command::ShowToolbar, ToggleToolbar},
    {Command::NewTopView, NewView<Orientation::Top>},
    {Command::NewSideView, NewView<Orientation::Side>},
    {Command::NewFrontView, NewView<Orientation::Front>},
    {Command::ToolNewWindow, ChooseNewView},
};

}  // namespace

std::span<const CommandHandler> WindowCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
