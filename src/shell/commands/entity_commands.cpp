// What entities are: their properties, their links, which brushes are theirs.
#include <algorithm>

#include "base/report.h"
#include "document/action.h"
#include "document/classes/class_set.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/class_change.h"
#include "operations/entity_keys.h"
#include "operations/groups.h"
#include "operations/links.h"
#include "operations/transform_selection.h"
#include "shell/commands/command_groups.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/frame.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/face_window.h"
#include "shell/windows/properties_window.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

// The one that follows the selection, or that of the map's world, comes to the front.
void ShowWindow(const EntityContext& in, Map& map, PropertiesOf of) {
  const auto isIt = [&](const PropertiesWindow& open) {
    return open.Of() == of &&
           (of == PropertiesOf::World ? open.GetMap() == &map : !open.IsPinned());
  };
  if (const auto* open = in.sides.Find<PropertiesWindow>(isIt)) {
    SetActiveWindow(open->Handle());
    return;
  }
  in.sides.Add(std::make_unique<PropertiesWindow>(
      in.sides,
      PropertiesContext{in.windows, in.frame, in.dialogs, in.reporter, in.commands, in.options},
      map, of));
}

// Of several objects the user is asked first. In face edit those of the picked faces.
void ShowProperties(const EntityContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  if (in.tools.IsFaceEdit()) {
    ShowFaceWindow(in.sides, {in.windows, in.tools, in.options}, true);
    return;
  }
  if (map.selection.empty()) {
    in.reporter.Show("Cannot continue", "Cannot group with this tool");
    return;
  }
  if (map.selection.size() > 1) {
    if (in.reporter.Show("Ferrowand asks", "Cannot edit multiple entities. Group then edit?",
                         Buttons::YesNo, Icon::Question) != Answer::Yes) {
      return;
    }
    if (!Conclude(map, GroupSelection(map))) return;
  }
  ShowWindow(in, map, PropertiesOf::Selection);
}

void EditWorldspawn(const EntityContext& in, unsigned) {
  ShowWindow(in, *in.windows.ActiveMap(), PropertiesOf::World);
}

// Where the ends are called differently the user chooses.
void Connect(const EntityContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const std::vector<std::string> names = NamesToConnect(map);
  if (names.size() < 2) {
    Conclude(map, ConnectSelection(map, names.empty() ? "" : names.front()));
    return;
  }
  const auto accept = [&](const FormValues& typed) {
    const auto name = std::ranges::find_if(
        names, [&](const std::string& n) { return AsUtf8(n) == typed.front(); });
    return name != names.end() && Conclude(map, ConnectSelection(map, *name));
  };
  in.dialogs.Ask({"Connect",
                  "They are called differently. All will be called so:",
                  {{"Name", {}, names}},
                  accept});
}

template <bool forward>
void FollowLinks(const EntityContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const std::vector<entity*> ends = LinkedWithSelection(map, forward);
  if (ends.empty()) {
    map.ShowStatus(forward ? "It points to nothing" : "Nothing points to it");
    return;
  }
  Select(map, ends, false);
  in.windows.CentreOn(map, SelectionBounds(map));
  map.ShowStatus(InWords(std::vector<const entity*>(ends.begin(), ends.end())));
}

void DuplicateWithLinks(const EntityContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  MultiDuplicate how;
  how.namesLinksAnew = true;
  if (const MapView* view = in.windows.ActiveView()) {
    how.offset[view->transform.orienu] = static_cast<float>(1 << view->gridu);
    how.offset[view->transform.orienv] = -static_cast<float>(1 << view->gridv);
  }
  Conclude(map, DuplicateSelection(map, how, in.tools.HowToTransform()));
}

// What brushes of the class look like as a rule, if the user wants that.
Texture* TextureFor(const EntityContext& in, const Map& map, const EntityClass& chosen) {
  Texture* const texture = UsualTextureIn(map, chosen);
  if (!texture) return nullptr;
  const std::string question =
      "Give its faces the texture \"" + std::string(texture->Name()) + "\"?";
  const bool isWanted =
      in.reporter.Show("Ferrowand asks", question, Buttons::YesNo, Icon::Question) == Answer::Yes;
  return isWanted ? texture : nullptr;
}

void TieToNew(const EntityContext& in, Map& map) {
  std::vector<std::string> choices;
  for (const auto& known : map.classSet->Classes()) {
    const bool isForBrushes = known->isMadeOfBrushes && !IsWorldspawn(known->classname);
    if (isForBrushes && !known->IsNative()) choices.push_back(known->classname);
  }
  if (choices.empty()) {
    in.reporter.Show("Cannot continue", "No class of this map is made of brushes");
    return;
  }
  const auto accept = [&](const FormValues& typed) {
    const EntityClass& chosen = map.classSet->FindClass(typed.front());
    return Conclude(map, GroupSelectionAs(map, chosen, TextureFor(in, map, chosen)));
  };
  in.dialogs.Ask({"Tie to entity",
                  "The brushes become those of a new entity.",
                  {{"Class", {}, choices}},
                  accept});
}

void TieToEntity(const EntityContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const std::vector<entity*> roots = SelectedRoots(map);
  if (std::ranges::none_of(roots, [](const entity* e) { return HoldsBrushes(*e); })) {
    in.reporter.Show("Cannot continue", "Select some brushes first");
    return;
  }
  entity* const to = SelectedToTieTo(map);
  if (!to) return TieToNew(in, map);
  Conclude(map, TieToEntity(map, *to, TextureFor(in, map, *to->getClass())));
}

void TieToTheWorld(const EntityContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  Conclude(map, TieToWorld(map));
}

constexpr CommandHandler<EntityContext> HANDLERS[] = {
    {Command::Properties, ShowProperties},
    {Command::EditWorldspawn, EditWorldspawn},
    {Command::Connect, Connect},
    {Command::FollowLinks, FollowLinks<true>},
    {Command::FollowLinksBack, FollowLinks<false>},
    {Command::DuplicateLinks, DuplicateWithLinks},
    {Command::TieToEntity, TieToEntity},
    {Command::TieToWorld, TieToTheWorld},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeEntityCommands(const EntityContext& context) {
  return std::make_unique<HandlerGroup<EntityContext>>(context, HANDLERS);
}

}  // namespace ferrowand
