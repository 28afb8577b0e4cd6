// What comes into a map as a whole: layers and their list, instances of templates, embedded maps,
// and groups, which go to files too.
#include <algorithm>
#include <cmath>

#include "base/report.h"
#include "document/action.h"
#include "document/picking.h"
#include "operations/clipboard.h"
#include "operations/layers.h"
#include "operations/new_entity.h"
#include "operations/templates.h"
#include "platform/system.h"
#include "shell/commands/command_groups.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/group_popup.h"
#include "shell/dialogs/refusal.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/window_maker.h"

namespace ferrowand {
namespace {

Vec3 ToVec3(const std::vector<double>& numbers) {
  return {static_cast<float>(numbers[0]), static_cast<float>(numbers[1]),
          static_cast<float>(numbers[2])};
}

void AddLayer(const InsertContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    InsertLayer(map, typed.front());
    return Conclude(map, EditResult::Done);
  };
  in.dialogs.Ask({"Insert layer", "", {{"Name", {UnusedName(map, "layer")}, {}}}, accept});
}

void ShowLayers(const InsertContext& in, unsigned) {
  in.maker.ShowLayers(*in.windows.ActiveMap());
}

constexpr char NEW_TEMPLATE[] = "(new, of the selection)";

// Around the middle of the selection: an instance inserted while it is selected stands as deep.
bool AddTemplate(const InsertContext& in, Map& map, const std::string& name) {
  if (std::ranges::count(TemplateNames(map), name) != 0) {
    in.reporter.Show("Cannot continue", "This map has a template of that name");
    return false;
  }
  const Bounds box = SelectionBounds(map);
  Vec3 pivot;
  for (int axis = 0; axis < 3; ++axis) {
    pivot[axis] = std::round((box.mins[axis] + box.maxs[axis]) / 2);
  }
  return Conclude(map, MakeTemplate(map, name, pivot));
}

void AddInstance(const InsertContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  std::vector<std::string> choices = TemplateNames(map);
  if (!map.selection.empty()) choices.emplace_back(NEW_TEMPLATE);
  const Vec3 place = in.windows.PlaceForNew(map).point;
  const auto accept = [&](const FormValues& typed) {
    if (typed[0] == NEW_TEMPLATE) return AddTemplate(in, map, typed[1]);
    const auto angle = WholeNumberOf(in.reporter, typed[2], "The angle", -360, 360);
    if (!angle) return false;
    const auto scale = NumbersOf(in.reporter, std::span(typed).subspan(3));
    if (!scale) return false;
    const InstanceSettings settings{
        .templateName = typed[0], .angle = *angle, .scale = ToVec3(*scale)};
    return Conclude(map, InsertInstance(map, settings, place));
  };
  in.dialogs.Ask({"Insert template instance",
                  "",
                  {{"Template", {}, std::move(choices)},
                   {"Name of a new one", {UnusedName(map, "template")}, {}, true},
                   {"Degrees", {"0"}, {}},
                   AxisRow("Scale", "1")},
                  accept});
}

// Of the size that its map is to fit.
void AddEmbed(const InsertContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  const Vec3 place = in.windows.PlaceForNew(map).point;
  FileChoice choice;
  choice.title = "Embed";
  choice.filter = MAP_FILTER;
  const auto path = in.dialogs.ChooseFile(choice);
  if (!path) return;
  const auto accept = [&](const FormValues& typed) {
    const auto size = NumbersOf(in.reporter, typed);
    if (!size) return false;
    if (std::ranges::any_of(*size, [](double extent) { return extent <= 0; })) {
      in.reporter.Show("Cannot continue", "Every size must be greater than 0");
      return false;
    }
    const Vec3 half = ToVec3(*size) * 0.5f;
    return Conclude(map, InsertEmbed(map, *path, {-half, half}, place));
  };
  in.dialogs.Ask(
      {"Embed", "The map is made to fit a box.", {AxisRow("Size of the box", "128")}, accept});
}

void AddGroupFile(const InsertContext& in, Map& map, const std::string& path) {
  const EditResult result = InsertGroup(map, path);
  if (result == EditResult::Done) in.options.AddRecentGroup(path);
  Conclude(map, result);
}

void ChooseGroupFile(const InsertContext& in, Map& map) {
  FileChoice choice;
  choice.title = "Insert group";
  choice.filter = MAP_FILTER;
  if (const auto path = in.dialogs.ChooseFile(choice)) {
    AddGroupFile(in, map, *path);
  }
}

// The popup's own "Another..." has the number of the command that opens it.
void ShowGroups(const InsertContext& in, unsigned) {
  const OwnedMenu menu = MakeGroupPopup(in.options);
  const unsigned chosen = in.dialogs.TrackAtCursor(menu.get());
  Map* map = in.windows.ActiveMap();
  if (chosen == Id(Command::InsertGroup)) {
    if (map) ChooseGroupFile(in, *map);
  } else {
    in.commands.Execute(chosen);
  }
}

void AddRecentGroup(const InsertContext& in, unsigned id) {
  // By value: it becomes the first of the list.
  const std::string path = in.options.previousGroups[id - Id(Command::RecentGroup)];
  if (!path.empty()) AddGroupFile(in, *in.windows.ActiveMap(), path);
}

void AddListedGroup(const InsertContext& in, unsigned id) {
  const std::vector<std::string> files = GroupFiles(in.options);
  const std::size_t index = id - Id(Command::GroupFile);
  if (index >= files.size()) return;
  AddGroupFile(in, *in.windows.ActiveMap(),
               in.options.groupsDirectory + PathSeparator() + files[index]);
}

void SaveSelection(const InsertContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  FileChoice choice;
  choice.saving = true;
  choice.title = "Save group";
  choice.filter = "Extended Map (*.xmp)|*.xmp|";
  choice.extension = "xmp";
  const auto path = in.dialogs.ChooseFile(choice);
  if (!path) return;
  const EditResult result = SaveGroup(map, *path);
  if (result == EditResult::Done) {
    in.options.AddRecentGroup(*path);
    map.ShowStatus("Save Group: " + InWords(map.selection.Objects()) + " to " + *path);
  }
  if (result != EditResult::CannotWrite) Conclude(map, result);
}

constexpr CommandHandler<InsertContext> HANDLERS[] = {
    {Command::InsertTemplate, AddInstance}, {Command::Embed, AddEmbed},
    {Command::InsertLayer, AddLayer},       {Command::InsertGroup, ShowGroups},
    {Command::RecentGroup, AddRecentGroup}, {Command::GroupFile, AddListedGroup},
    {Command::SaveGroup, SaveSelection},    {Command::LayersList, ShowLayers},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeInsertCommands(const InsertContext& context) {
  return std::make_unique<HandlerGroup<InsertContext>>(context, HANDLERS);
}

}  // namespace ferrowand
