// What finds objects: the entity tree, and Find Entity.
#include <algorithm>

#include "shell/commands/command_groups.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/find_window.h"
#include "shell/windows/window_maker.h"

namespace ferrowand {
namespace {

void ShowEntityTree(const FindContext& in, unsigned) {
  in.maker.ShowEntityTree(*in.windows.ActiveMap());
}

// Null when the system gave no window.
FindWindow* Finder(const FindContext& in) {
  if (auto* open = in.sides.Find<FindWindow>()) return open;
  return static_cast<FindWindow*>(
      in.sides.Add(std::make_unique<FindWindow>(in.sides, in.windows, in.options)));
}

void ShowFinder(const FindContext& in, unsigned) {
  if (FindWindow* finder = Finder(in)) finder->Show();
}

template <bool forward>
void FindNext(const FindContext& in, unsigned) {
  FindWindow* finder = Finder(in);
  if (finder && !finder->FindNext(forward)) finder->Show();
}

constexpr CommandHandler<FindContext> HANDLERS[] = {
    {Command::EntityTree, ShowEntityTree},
    {Command::FindEntity, ShowFinder},
    {Command::FindNext, FindNext<true>},
    {Command::FindPrevious, FindNext<false>},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeFindCommands(const FindContext& context) {
  return std::make_unique<HandlerGroup<FindContext>>(context, HANDLERS);
}

}  // namespace ferrowand
