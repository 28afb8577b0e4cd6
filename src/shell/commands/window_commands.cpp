// The Window menu.
#include "shell/commands/command_groups.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/popup_menus.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/window_maker.h"

namespace ferrowand {
namespace {

void Tile(const WindowContext& in, unsigned) {
  in.windows.Tile();
}
void Cascade(const WindowContext& in, unsigned) {
  in.windows.Cascade();
}

template <Arrangement arrangement>
void Arrange(const WindowContext& in, unsigned) {
  if (const Map* map = in.windows.ActiveMap()) in.windows.Arrange(*map, arrangement);
}

void RefreshActive(const WindowContext& in, unsigned) {
  in.windows.ActiveMap()->AnnounceEverything();
}

void ToggleToolbar(const WindowContext& in, unsigned) {
  in.options.showToolbar = in.options.showToolbar == 0;
  in.frame.ShowToolbar(in.options.showToolbar != 0);
}

template <Orientation orientation>
void NewView(const WindowContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  ChildWindow* window = in.maker.AddView(map, orientation);
  if (!window) return;
  const Bounds box = map.GetBounds();
  if (!box.IsEmpty()) window->View()->CentreOn((box.mins + box.maxs) * 0.5f);
}

void ChooseNewView(const WindowContext& in, unsigned) {
  in.commands.Offer(in.popups.Get(ID_POPUP_NEW_VIEW));
}

constexpr CommandHandler<WindowContext> HANDLERS[] = {
    {Command::TileWindows, Tile},
    {Command::CascadeWindows, Cascade},
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

std::unique_ptr<CommandGroup> MakeWindowCommands(const WindowContext& context) {
  return std::make_unique<HandlerGroup<WindowContext>>(context, HANDLERS);
}

}  // namespace ferrowand
